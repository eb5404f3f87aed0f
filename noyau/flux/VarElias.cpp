#include "noyau/flux/VarElias.h"

#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/Flux.h"

namespace sdd {

namespace {

// Première valeur de chaque longueur (indice : longueur - 1).
constexpr std::uint32_t kDecalage[VarElias::kLongueurMax] = {0, 128, 16512, 2113664};

[[noreturn]] void LanceValeurZero()
{
    throw exceptions::ErreurDeserialisation(UniChaine("VarElias : valeur 0"));
}

[[noreturn]] void LanceCodeTropLong()
{
    throw exceptions::ErreurDeserialisation(UniChaine("VarElias : code de plus de quatre octets"));
}

[[noreturn]] void LanceCodeTronque()
{
    throw exceptions::ErreurDeserialisation(
        UniChaine("VarElias : les données s’arrêtent au milieu d’un code"));
}

// Longueur annoncée par le premier octet (non nul) : un de plus que ses bits nuls de tête.
unsigned int LongueurSelonTete(unsigned char tete)
{
    if (tete == 0) {
        LanceValeurZero();
    }
    unsigned int const longueur = unsigned(__builtin_clz(tete)) - 24 + 1;
    if (longueur > VarElias::kLongueurMax) {
        LanceCodeTropLong();
    }
    return longueur;
}

// Valeur d'un code complet de longueur k dont les octets suivants sont déjà assemblés.
std::uint32_t Valeur(unsigned char tete, unsigned int k, std::uint32_t suite)
{
    std::uint32_t const bitsTete = tete & (0x7Fu >> (k - 1)); // sans le bit marqueur
    return ((bitsTete << (8 * (k - 1))) | suite) + kDecalage[k - 1];
}

} // namespace

unsigned int VarElias::Longueur(std::uint32_t valeur) noexcept
{
    unsigned int k = 1;
    while (k < kLongueurMax && valeur >= kDecalage[k]) {
        ++k;
    }
    return k;
}

unsigned int VarElias::Ecris(unsigned char* dest, std::uint32_t valeur)
{
    if (valeur > kValeurMax) {
        exceptions::LanceIndexHorsBorne(valeur, 0, kValeurMax);
    }
    unsigned int const k = Longueur(valeur);
    std::uint32_t const reste = valeur - kDecalage[k - 1];
    for (unsigned int i = k; i-- > 1;) {
        dest[i] = static_cast<unsigned char>(reste >> (8 * (k - 1 - i)));
    }
    dest[0] = static_cast<unsigned char>((0x80u >> (k - 1)) | (reste >> (8 * (k - 1))));
    return k;
}

void VarElias::Ecris(FluxSortie& flux, std::uint32_t valeur)
{
    unsigned char octets[kLongueurMax];
    flux.Mets(octets, Ecris(octets, valeur));
}

unsigned int VarElias::Lis(unsigned char const* debut, unsigned char const* fin,
                           std::uint32_t* valeur)
{
    if (debut >= fin) {
        LanceCodeTronque();
    }
    unsigned int const k = LongueurSelonTete(debut[0]);
    if (static_cast<std::size_t>(fin - debut) < k) {
        LanceCodeTronque();
    }
    std::uint32_t suite = 0;
    for (unsigned int i = 1; i < k; ++i) {
        suite = (suite << 8) | debut[i];
    }
    *valeur = Valeur(debut[0], k, suite);
    return k;
}

std::uint32_t VarElias::Lis(FluxEntree& flux)
{
    if (flux.EstALaFin()) {
        LanceCodeTronque();
    }
    unsigned char const tete = flux.Donne();
    unsigned int const k = LongueurSelonTete(tete);
    std::uint32_t suite = 0;
    for (unsigned int i = 1; i < k; ++i) {
        if (flux.EstALaFin()) {
            LanceCodeTronque();
        }
        suite = (suite << 8) | flux.Donne();
    }
    return Valeur(tete, k, suite);
}

} // namespace sdd
