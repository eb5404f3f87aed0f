#include "noyau/algorithmes/Entiers.h"

#include <charconv>

namespace {

template <typename Entier> int EcrisDecimal(Entier valeur, char* tampon) noexcept
{
    // 20 chiffres et un signe au plus : std::to_chars ne peut pas manquer de place.
    char* const fin = std::to_chars(tampon, tampon + 20, valeur).ptr;
    *fin = '\0';
    return static_cast<int>(fin - tampon);
}

} // namespace

int mon_itoa(std::int32_t valeur, char* tampon) noexcept
{
    return EcrisDecimal(valeur, tampon);
}

int mon_itoa_ent4ss(std::uint32_t valeur, char* tampon) noexcept
{
    return EcrisDecimal(valeur, tampon);
}

int mon_itoa_ent8(std::int64_t valeur, char* tampon) noexcept
{
    return EcrisDecimal(valeur, tampon);
}

int mon_itoa_ent8ss(std::uint64_t valeur, char* tampon) noexcept
{
    return EcrisDecimal(valeur, tampon);
}
