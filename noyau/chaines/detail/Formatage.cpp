#include "noyau/chaines/detail/Formatage.h"

#include "noyau/chaines/detail/UTF8.h"

#include <QString>

#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstring>

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

bool EstParmi(char16_t u, char const* liste)
{
    return u != 0 && u < 0x80 && std::strchr(liste, static_cast<char>(u)) != nullptr;
}

int LisNombre(std::u16string_view format, std::size_t& i)
{
    int n = 0;
    while (i < format.size() && format[i] >= u'0' && format[i] <= u'9') {
        n = n < 100000 ? n * 10 + (format[i] - u'0') : n; // largeurs absurdes bornées
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
        d.largeur = va_arg(*arguments, int);
        if (d.largeur < 0) {
            d.drapeaux += '-'; // largeur négative : à gauche, comme en C
            d.largeur = d.largeur == INT_MIN ? 0 : -d.largeur;
        }
    } else {
        d.largeur = LisNombre(format, i);
    }
    if (i < format.size() && format[i] == u'.') {
        ++i;
        if (i < format.size() && format[i] == u'*') {
            ++i;
            d.precision = va_arg(*arguments, int);
            d.precision = d.precision < 0 ? -1 : d.precision;
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

long long EntierSigne(Directive const& d, va_list* arguments)
{
    if (d.taille == "hh") {
        return static_cast<signed char>(va_arg(*arguments, int));
    }
    if (d.taille == "h") {
        return static_cast<short>(va_arg(*arguments, int));
    }
    if (d.taille == "l") {
        return va_arg(*arguments, long);
    }
    if (d.taille == "ll" || d.taille == "q") {
        return va_arg(*arguments, long long);
    }
    if (d.taille == "j") {
        return va_arg(*arguments, std::intmax_t);
    }
    if (d.taille == "z" || d.taille == "t") {
        return va_arg(*arguments, std::ptrdiff_t);
    }
    return va_arg(*arguments, int);
}

unsigned long long EntierNonSigne(Directive const& d, va_list* arguments)
{
    if (d.taille == "hh") {
        return static_cast<unsigned char>(va_arg(*arguments, unsigned));
    }
    if (d.taille == "h") {
        return static_cast<unsigned short>(va_arg(*arguments, unsigned));
    }
    if (d.taille == "l") {
        return va_arg(*arguments, unsigned long);
    }
    if (d.taille == "ll" || d.taille == "q") {
        return va_arg(*arguments, unsigned long long);
    }
    if (d.taille == "j") {
        return va_arg(*arguments, std::uintmax_t);
    }
    if (d.taille == "z" || d.taille == "t") {
        return va_arg(*arguments, std::size_t);
    }
    return va_arg(*arguments, unsigned);
}

void AjouteQString(std::u16string& resultat, QString const& texte)
{
    resultat.append(reinterpret_cast<char16_t const*>(texte.utf16()), std::size_t(texte.size()));
}

// Texte d'une chaîne ou d'un caractère, coupé à la précision et complété à la largeur.
void AjouteTexte(std::u16string& resultat, Directive const& d, std::u16string texte)
{
    if (d.precision >= 0 && texte.size() > std::size_t(d.precision)) {
        texte.resize(std::size_t(d.precision));
    }
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

std::u16string DepuisUTF8(char const* octets)
{
    std::size_t const n = octets == nullptr ? 0 : std::strlen(octets);
    std::u16string texte(n, u'\0');
    texte.resize(DecodeUTF8(octets, n, texte.data()));
    return texte;
}

std::u16string DepuisUTF16(char16_t const* unites)
{
    return unites == nullptr ? std::u16string() : std::u16string(unites);
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
        AjouteQString(resultat, QString::asprintf(d.PourQt("ll", d.conversion).c_str(),
                                                  EntierSigne(d, arguments)));
        return true;
    case 'u':
    case 'o':
    case 'x':
    case 'X':
        AjouteQString(resultat, QString::asprintf(d.PourQt("ll", d.conversion).c_str(),
                                                  EntierNonSigne(d, arguments)));
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
        // %lc : une unité UTF-16 ; %c : un octet Latin-1.
        char16_t const unite =
            d.taille == "l" ? char16_t(c) : char16_t(static_cast<unsigned char>(c));
        AjouteTexte(resultat, d, std::u16string(1, unite));
        return true;
    }
    case 's':
        AjouteTexte(resultat, d,
                    d.taille == "l" ? DepuisUTF16(va_arg(*arguments, char16_t const*))
                                    : DepuisUTF8(va_arg(*arguments, char const*)));
        return true;
    case 'S':
        AjouteTexte(resultat, d, DepuisUTF16(va_arg(*arguments, char16_t const*)));
        return true;
    case 'p':
        AjouteQString(resultat,
                      QString::asprintf(d.PourQt("", 'p').c_str(), va_arg(*arguments, void*)));
        return true;
    case 'n':
        *va_arg(*arguments, int*) = static_cast<int>(resultat.size());
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
