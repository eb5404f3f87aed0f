// ChaineN : nombres et mise en forme.

#include "noyau/chaines/ChaineN.h"

#include "noyau/chaines/detail/Formatage.h"
#include "noyau/chaines/detail/Nombres.h"
#include "noyau/chaines/detail/Retouches.h"

#include <algorithm>
#include <charconv>
#include <string>

namespace sdd {

namespace {

template <typename Entier>
ChaineN EcrisEntier(Entier valeur, unsigned long base, unsigned long largeur, bool zeros,
                    bool aGauche)
{
    std::u16string const texte = detail::EcrisEntier(valeur, base, largeur, zeros, aGauche);
    return ChaineN(texte.data(), texte.size());
}

} // namespace

ChaineN ChaineN::DepuisNombre(int v, unsigned long b, unsigned long l, bool z, bool g)
{
    return EcrisEntier(v, b, l, z, g);
}
ChaineN ChaineN::DepuisNombre(unsigned int v, unsigned long b, unsigned long l, bool z, bool g)
{
    return EcrisEntier(v, b, l, z, g);
}
ChaineN ChaineN::DepuisNombre(long v, unsigned long b, unsigned long l, bool z, bool g)
{
    return EcrisEntier(v, b, l, z, g);
}
ChaineN ChaineN::DepuisNombre(unsigned long v, unsigned long b, unsigned long l, bool z, bool g)
{
    return EcrisEntier(v, b, l, z, g);
}
ChaineN ChaineN::DepuisNombre(long long v, unsigned long b, unsigned long l, bool z, bool g)
{
    return EcrisEntier(v, b, l, z, g);
}
ChaineN ChaineN::DepuisNombre(unsigned long long v, unsigned long b, unsigned long l, bool z,
                              bool g)
{
    return EcrisEntier(v, b, l, z, g);
}

ChaineN ChaineN::DepuisNombre(double valeur, unsigned long decimales, unsigned long largeur,
                              bool zeros, bool aGauche)
{
    std::u16string const texte = detail::EcrisReel(valeur, decimales, largeur, zeros, aGauche);
    return ChaineN(texte.data(), texte.size());
}

namespace {

// Début ASCII de la chaîne, blancs initiaux et « + » sautés, pour from_chars.
std::string DebutNumerique(char16_t const* unites, unsigned long n)
{
    unsigned long i = 0;
    while (i < n && detail::EstBlanc(unites[i])) {
        ++i;
    }
    if (i < n && unites[i] == u'+') {
        ++i;
    }
    std::string ascii;
    for (; i < n && unites[i] < 0x80 && ascii.size() < 400; ++i) {
        ascii.push_back(static_cast<char>(unites[i]));
    }
    return ascii;
}

} // namespace

long long ChaineN::DonneEntier() const noexcept
{
    try {
        std::string const ascii = DebutNumerique(PreteUniCString(), Longueur());
        long long valeur = 0;
        std::from_chars(ascii.data(), ascii.data() + ascii.size(), valeur);
        return valeur;
    } catch (...) {
        return 0;
    }
}

double ChaineN::DonneDouble() const noexcept
{
    try {
        std::string const ascii = DebutNumerique(PreteUniCString(), Longueur());
        double valeur = 0;
        std::from_chars(ascii.data(), ascii.data() + ascii.size(), valeur);
        return valeur;
    } catch (...) {
        return 0;
    }
}

ChaineN ChaineN::Format(ChaineN format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    sdd::detail::FinArguments fin{arguments};
    return vFormat(format, arguments);
}

ChaineN ChaineN::vFormat(ChaineN const& format, va_list arguments)
{
    va_list copie; // un va_list reçu en paramètre ne se passe pas par adresse
    va_copy(copie, arguments);
    detail::FinArguments fin{copie};
    std::u16string const texte = detail::Formate(format._Etendue(), &copie);
    return ChaineN(texte.data(), texte.size());
}

} // namespace sdd
