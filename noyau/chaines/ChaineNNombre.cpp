// ChaineN : nombres et mise en forme.

#include "noyau/chaines/ChaineN.h"

#include "noyau/chaines/detail/Formatage.h"
#include "noyau/chaines/detail/Retouches.h"
#include "noyau/erreurs/Exceptions.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <type_traits>

namespace sdd {

namespace {

template <typename Entier>
ChaineN EcrisEntier(Entier valeur, unsigned long base, unsigned long largeur, bool zeros,
                    bool aGauche)
{
    if (base < 2 || base > 16) {
        exceptions::LanceIndexHorsBorne(base, 2, 16);
    }
    static constexpr char16_t kChiffres[] = u"0123456789ABCDEF";
    using NonSigne = std::make_unsigned_t<Entier>;
    bool const negatif = valeur < 0;
    NonSigne reste =
        negatif ? NonSigne(0) - static_cast<NonSigne>(valeur) : static_cast<NonSigne>(valeur);
    char16_t zone[100];
    char16_t* debut = zone + 100;
    do {
        *--debut = kChiffres[reste % base];
        reste /= base;
    } while (reste != 0);
    if (negatif) {
        *--debut = u'-';
    }
    unsigned long const n = static_cast<unsigned long>(zone + 100 - debut);
    ChaineN texte(debut, n);
    if (largeur > n) {
        // Le remplissage précède le signe : -5 sur 4 zéros donne « 00-5 », voulu.
        ChaineN remplissage;
        remplissage.AjouteFin(zeros ? u'0' : u' ', largeur - n);
        aGauche ? texte.AjouteFin(remplissage) : texte.AjouteDebut(remplissage);
    }
    return texte;
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
    constexpr unsigned long kMaxDecimales = 64;
    char zone[400];
    auto const fin = std::to_chars(zone, zone + sizeof zone, valeur, std::chars_format::fixed,
                                   static_cast<int>(std::min(decimales, kMaxDecimales)))
                         .ptr;
    ChaineN texte(zone, kUTF8, static_cast<unsigned long>(fin - zone));
    if (largeur > texte.Longueur()) {
        ChaineN remplissage;
        remplissage.AjouteFin(zeros ? u'0' : u' ', largeur - texte.Longueur());
        aGauche ? texte.AjouteFin(remplissage) : texte.AjouteDebut(remplissage);
    }
    return texte;
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
