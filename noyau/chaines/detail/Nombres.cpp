#include "noyau/chaines/detail/Nombres.h"

#include "noyau/erreurs/Exceptions.h"

#include <algorithm>
#include <charconv>

namespace sdd::detail {

void Complete(std::u16string& texte, unsigned long largeur, bool zeros, bool aGauche)
{
    if (largeur <= texte.size()) {
        return; // un texte déjà assez large n'est pas coupé
    }
    std::u16string const remplissage(largeur - texte.size(), zeros ? u'0' : u' ');
    texte = aGauche ? texte + remplissage : remplissage + texte;
}

std::u16string EcrisEntier(bool negatif, unsigned long long valeur, unsigned long base,
                           unsigned long largeur, bool zeros, bool aGauche)
{
    if (base < 2 || base > 16) {
        exceptions::LanceIndexHorsBorne(base, 2, 16);
    }
    static constexpr char16_t kChiffres[] = u"0123456789ABCDEF";
    char16_t zone[100];
    char16_t* debut = zone + 100;
    do {
        *--debut = kChiffres[valeur % base];
        valeur /= base;
    } while (valeur != 0);
    if (negatif) {
        *--debut = u'-';
    }
    std::u16string texte(debut, zone + 100);
    Complete(texte, largeur, zeros, aGauche);
    return texte;
}

std::u16string EcrisReel(double valeur, unsigned long decimales, unsigned long largeur, bool zeros,
                         bool aGauche)
{
    constexpr unsigned long kMaxDecimales = 64;
    char zone[400];
    char const* const fin =
        std::to_chars(zone, zone + sizeof zone, valeur, std::chars_format::fixed,
                      static_cast<int>(std::min(decimales, kMaxDecimales)))
            .ptr;
    std::u16string texte(static_cast<char const*>(zone), fin); // que de l'ASCII
    Complete(texte, largeur, zeros, aGauche);
    return texte;
}

} // namespace sdd::detail
