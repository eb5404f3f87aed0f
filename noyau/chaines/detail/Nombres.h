#pragma once

#include <string>
#include <type_traits>

// Nombres en texte, communs aux deux classes de chaînes.
namespace sdd::detail {

// Complète à largeur : devant le texte entier, signe compris (-5 sur 4 zéros donne
// « 00-5 », voulu), ou derrière quand aGauche.
void Complete(std::u16string& texte, unsigned long largeur, bool zeros, bool aGauche);

// Chiffres majuscules dans une base de 2 à 16 (sinon IndexHorsBorne(base, 2, 16)).
std::u16string EcrisEntier(bool negatif, unsigned long long valeur, unsigned long base,
                           unsigned long largeur, bool zeros, bool aGauche);

template <typename Entier>
std::u16string EcrisEntier(Entier valeur, unsigned long base, unsigned long largeur, bool zeros,
                           bool aGauche)
{
    using NonSigne = std::make_unsigned_t<Entier>;
    bool const negatif = valeur < 0;
    NonSigne const absolue =
        negatif ? NonSigne(0) - static_cast<NonSigne>(valeur) : static_cast<NonSigne>(valeur);
    return EcrisEntier(negatif, absolue, base, largeur, zeros, aGauche);
}

// Notation fixe avec un point, sans locale, au plus 64 décimales.
std::u16string EcrisReel(double valeur, unsigned long decimales, unsigned long largeur, bool zeros,
                         bool aGauche);

} // namespace sdd::detail
