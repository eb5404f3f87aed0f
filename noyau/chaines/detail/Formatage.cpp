#include "noyau/chaines/detail/Formatage.h"

#include "noyau/chaines/detail/UTF8.h"

#include <QString>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <type_traits>

namespace sdd::detail {

namespace {

// Une directive « %[drapeaux][largeur][.précision][taille]conversion », largeur et
// précision lues dans les arguments quand elles valent « * ».
struct Directive
{
    std::string drapeaux;
    int largeur = 0;
    int precision = -1;
    std::string taille;
    char conversion = 0;
    std::size_t fin = 0; // unité qui suit la directive

    bool AGauche() const { return drapeaux.find('-') != std::string::npos; }

    // La directive pour Qt, largeur et précision écrites en chiffres, avec la taille donnée.
    std::string PourQt(char const* tailleQt, char conversionQt) const
    {
        std::string s = "%" + drapeaux;
        if (largeur > 0) {
            s += std::to_string(largeur);
        }
        if (precision >= 0) {
            s += "." + std::to_string(precision);
        }
        return s + tailleQt + conversionQt;
    }
};

// Largeurs et précisions au-delà ne sont pas prises : elles ne serviraient qu'à épuiser la
// mémoire ou le temps.
constexpr int kPlusGrandeLargeur = 1000;

bool EstParmi(char16_t u, char const* liste)
{
    return u != 0 && u < 0x80 && std::strchr(liste, static_cast<char>(u)) != nullptr;
}

int LisNombre(std::u16string_view format, std::size_t& i)
{
    int n = 0;
    while (i < format.size() && format[i] >= u'0' && format[i] <= u'9') {
        n = std::min(n * 10 + (format[i] - u'0'), kPlusGrandeLargeur);
        ++i;
    }
    return n;
}

Directive LisDirective(std::u16string_view format, std::size_t i, va_list* arguments)
{
    Directive d;
    while (i < format.size() && EstParmi(format[i], "-+ #0")) {
        d.drapeaux += static_cast<char>(format[i++]);
    }
    if (i < format.size() && format[i] == u'*') {
        ++i;
        int const largeur = va_arg(*arguments, int);
        if (largeur < 0) {
            d.drapeaux += '-'; // largeur négative : à gauche, comme en C
        }
        d.largeur = largeur == INT_MIN
                        ? kPlusGrandeLargeur
                        : std::min(largeur < 0 ? -largeur : largeur, kPlusGrandeLargeur);
    } else {
        d.largeur = LisNombre(format, i);
    }
    if (i < format.size() && format[i] == u'.') {
        ++i;
        if (i < format.size() && format[i] == u'*') {
            ++i;
            int const precision = va_arg(*arguments, int);
            d.precision = precision < 0 ? -1 : std::min(precision, kPlusGrandeLargeur);
        } else {
            d.precision = LisNombre(format, i);
        }
    }
    while (i < format.size() && EstParmi(format[i], "hlLqjzt")) {
        d.taille += static_cast<char>(format[i++]);
    }
    if (i < format.size() && format[i] < 0x80) {
        d.conversion = static_cast<char>(format[i++]);
    }
    d.fin = i;
    return d;
}

// Appelle action avec un zéro du type entier signé que désigne le modificateur de taille.
template <typename Action> void SelonTaille(std::string const& taille, Action action)
{
    if (taille == "hh") {
        action(static_cast<signed char>(0));
    } else if (taille == "h") {
        action(static_cast<short>(0));
    } else if (taille == "l") {
        action(0L);
    } else if (taille == "ll" || taille == "q") {
        action(0LL);
    } else if (taille == "j") {
        action(std::intmax_t(0));
    } else if (taille == "z" || taille == "t") {
        action(std::ptrdiff_t(0));
    } else {
        action(0);
    }
}

// Un entier de type T, lu sous le type que lui donne la promotion des arguments variables.
template <typename T> T LisEntier(va_list* arguments)
{
    using Promu = std::conditional_t<(sizeof(T) < sizeof(int)),
                                     std::conditional_t<std::is_signed_v<T>, int, unsigned>, T>;
    return static_cast<T>(va_arg(*arguments, Promu));
}

// Les entiers sont écrits par le C, exact sur les drapeaux et sans locale pour eux.
template <typename Entier> void AjouteEntier(std::u16string& resultat, Directive const& d, Entier v)
{
    char zone[2 * kPlusGrandeLargeur + 64];
    int const n = std::snprintf(zone, sizeof zone, d.PourQt("ll", d.conversion).c_str(), v);
    resultat.append(zone, zone + std::max(0, std::min(n, int(sizeof zone) - 1)));
}

void AjouteQString(std::u16string& resultat, QString const& texte)
{
    resultat.append(reinterpret_cast<char16_t const*>(texte.utf16()), std::size_t(texte.size()));
}

// Texte d'une chaîne ou d'un caractère, complété à la largeur.
void AjouteTexte(std::u16string& resultat, Directive const& d, std::u16string const& texte)
{
    std::size_t const largeur = std::size_t(d.largeur);
    std::size_t const remplissage = largeur > texte.size() ? largeur - texte.size() : 0;
    if (!d.AGauche()) {
        resultat.append(remplissage, u' ');
    }
    resultat += texte;
    if (d.AGauche()) {
        resultat.append(remplissage, u' ');
    }
}

// Chaîne UTF-8 ; la précision compte des octets, comme en C : rien n'est lu au-delà, et un
// caractère qu'elle couperait est laissé entier dehors.
std::u16string DepuisUTF8(char const* octets, int precision)
{
    if (octets == nullptr) {
        return std::u16string();
    }
    std::size_t n = precision < 0 ? std::strlen(octets) : strnlen(octets, std::size_t(precision));
    if (precision >= 0 && n == std::size_t(precision)) {
        std::size_t tete = n;
        while (tete > 0 && n - tete < 4 &&
               (static_cast<unsigned char>(octets[tete - 1]) & 0xC0) == 0x80) {
            --tete;
        }
        if (tete > 0 &&
            LongueurSelonTete(static_cast<unsigned char>(octets[tete - 1])) > n - tete + 1) {
            n = tete - 1;
        }
    }
    std::u16string texte(n, u'\0');
    texte.resize(DecodeUTF8(octets, n, texte.data()));
    return texte;
}

// Chaîne UTF-16 ; la précision compte des unités et ne coupe pas une paire.
std::u16string DepuisUTF16(char16_t const* unites, int precision)
{
    std::u16string texte;
    for (std::size_t i = 0;
         unites != nullptr && (precision < 0 || i < std::size_t(precision)) && unites[i] != 0;
         ++i) {
        texte += unites[i];
    }
    if (precision >= 0 && texte.size() == std::size_t(precision) && !texte.empty() &&
        texte.back() >= 0xD800 && texte.back() <= 0xDBFF) {
        texte.pop_back();
    }
    return texte;
}

// %lc : un point de code (wint_t), en une unité ou une paire ; U+FFFD s'il n'en est pas un.
std::u16string DepuisPointDeCode(std::uint32_t c)
{
    if (c >= 0x10000 && c <= 0x10FFFF) {
        c -= 0x10000;
        return {char16_t(0xD800 + (c >> 10)), char16_t(0xDC00 + (c & 0x3FF))};
    }
    return std::u16string(1, c > 0x10FFFF ? u'\uFFFD' : char16_t(c));
}

// Écrit la directive d et rend vrai ; faux pour une conversion inconnue.
bool AjouteDirective(std::u16string& resultat, Directive const& d, va_list* arguments)
{
    switch (d.conversion) {
    case '%':
        resultat += u'%';
        return true;
    case 'd':
    case 'i':
        SelonTaille(d.taille, [&](auto zero) {
            AjouteEntier(resultat, d, static_cast<long long>(LisEntier<decltype(zero)>(arguments)));
        });
        return true;
    case 'u':
    case 'o':
    case 'x':
    case 'X':
        SelonTaille(d.taille, [&](auto zero) {
            using NonSigne = std::make_unsigned_t<decltype(zero)>;
            AjouteEntier(resultat, d,
                         static_cast<unsigned long long>(LisEntier<NonSigne>(arguments)));
        });
        return true;
    case 'f':
    case 'F':
    case 'e':
    case 'E':
    case 'g':
    case 'G':
    case 'a':
    case 'A': {
        double const x = d.taille == "L" ? static_cast<double>(va_arg(*arguments, long double))
                                         : va_arg(*arguments, double);
        AjouteQString(resultat, QString::asprintf(d.PourQt("", d.conversion).c_str(), x));
        return true;
    }
    case 'c': {
        int const c = va_arg(*arguments, int);
        // %lc : un point de code ; %c : un octet Latin-1.
        AjouteTexte(resultat, d,
                    d.taille == "l" ? DepuisPointDeCode(static_cast<std::uint32_t>(c))
                                    : std::u16string(1, char16_t(static_cast<unsigned char>(c))));
        return true;
    }
    case 's':
        AjouteTexte(resultat, d,
                    d.taille == "l" ? DepuisUTF16(va_arg(*arguments, char16_t const*), d.precision)
                                    : DepuisUTF8(va_arg(*arguments, char const*), d.precision));
        return true;
    case 'S':
        AjouteTexte(resultat, d, DepuisUTF16(va_arg(*arguments, char16_t const*), d.precision));
        return true;
    case 'p':
        AjouteQString(resultat,
                      QString::asprintf(d.PourQt("", 'p').c_str(), va_arg(*arguments, void*)));
        return true;
    case 'n':
        // Le nombre d'unités écrites, dans l'entier de la taille demandée ; rien sans adresse.
        SelonTaille(d.taille, [&](auto zero) {
            using Entier = decltype(zero);
            if (auto* const adresse = va_arg(*arguments, Entier*)) {
                *adresse = static_cast<Entier>(resultat.size());
            }
        });
        return true;
    default:
        return false;
    }
}

} // namespace

std::u16string Formate(std::u16string_view format, va_list* arguments)
{
    std::u16string resultat;
    resultat.reserve(format.size() + 16);
    std::size_t i = 0;
    while (i < format.size()) {
        std::size_t const pourcent = format.find(u'%', i);
        resultat.append(format.substr(i, pourcent - i));
        if (pourcent == std::u16string_view::npos) {
            break;
        }
        Directive const d = LisDirective(format, pourcent + 1, arguments);
        if (!AjouteDirective(resultat, d, arguments)) {
            // Conversion inconnue : la directive reste telle quelle dans le texte.
            resultat.append(format.substr(pourcent, d.fin - pourcent));
        }
        i = d.fin;
    }
    return resultat;
}

} // namespace sdd::detail
