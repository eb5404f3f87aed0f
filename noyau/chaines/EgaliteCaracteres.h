#pragma once

#include "noyau/Export.h"
#include "noyau/chaines/InfoUniCaractere.h"

namespace sdd {

// Tolérances de comparaison ; 0 : comparaison exacte.
using Malgray = unsigned int;
constexpr Malgray MalgrayLigatures = 0x01;   // œ Œ æ Æ valent leurs deux lettres
constexpr Malgray MalgrayAccents = 0x02;     // lettre de base (mot 2)
constexpr Malgray MalgrayCasse = 0x04;       // minuscule (mot 1)
constexpr Malgray MalgrayTypographie = 0x08; // espaces, tirets, apostrophes (mot 4)
constexpr Malgray MalgrayEspaces = 0x10;     // espaces seules (mot 5) ; UniChaine uniquement

// Forme d'un caractère après les replis choisis, appliqués dans l'ordre des bits.
inline char16_t ReplieSelonMalgray(char16_t c, Malgray m) noexcept
{
    if (m & MalgrayAccents) {
        c = gInfoUniCaractere[c][kInfoSansAccent];
    }
    if (m & MalgrayCasse) {
        c = gInfoUniCaractere[c][kInfoMinuscule];
    }
    if (m & MalgrayTypographie) {
        c = gInfoUniCaractere[c][kInfoTypographie];
    }
    if (m & MalgrayEspaces) {
        c = gInfoUniCaractere[c][kInfoEspaces];
    }
    return c;
}

// Égalité de deux caractères sous les tolérances de sdd::ChaineN (bits 0x02 à 0x08 ; les
// ligatures ne jouent qu'entre suites de caractères).
inline bool UniCarEgalOption(char16_t a, char16_t b, Malgray m) noexcept
{
    constexpr Malgray kBitsChaineN = MalgrayAccents | MalgrayCasse | MalgrayTypographie;
    return a == b || ((m & kBitsChaineN) != 0 && ReplieSelonMalgray(a, m & kBitsChaineN) ==
                                                     ReplieSelonMalgray(b, m & kBitsChaineN));
}

// Égalité de deux étendues de même longueur, caractère à caractère.
NOYAU_EXPORT bool UniCarPtrEgalOption(char16_t const* a, unsigned long debutA,
                                      unsigned long longueurA, char16_t const* b,
                                      unsigned long debutB, unsigned long longueurB,
                                      Malgray m) noexcept;

// La ligature contre le début du texte : vrai quand toutes ses lettres y sont, dans
// l'ordre, sous m ; *nbUtilises reçoit le nombre d'unités du texte lues.
NOYAU_EXPORT bool DeligatureEgalOption(char16_t ligature, char16_t const* texte,
                                       unsigned long longueur, Malgray m,
                                       unsigned long* nbUtilises) noexcept;

// Même chose contre un motif à jokers : « ? » et « _ » valent une lettre, « * » aussi en
// tête et termine sinon, « # » exige une consonne et « & » une voyelle. premiereConsommee :
// l'appelant a déjà lu la première lettre de la ligature.
NOYAU_EXPORT bool DeligatureEgalOptionPourJoker(char16_t ligature, char16_t const* motif,
                                                unsigned long longueur, Malgray m,
                                                unsigned long* nbUtilises,
                                                bool premiereConsommee) noexcept;

// Comparaison qui tient œ Œ æ Æ pour leurs deux lettres, d'un côté comme de l'autre ; les
// unités se comparent sous tous les bits de m, MalgrayEspaces compris (sdd::ChaineN l'ôte).
// Avance les curseurs *i dans a et *j dans b tant que les deux étendues s'accordent ;
// elles sont égales quand les deux curseurs atteignent ensemble leur fin.
NOYAU_EXPORT void AvanceAvecLigatures(char16_t const* a, unsigned long finA, unsigned long* i,
                                      char16_t const* b, unsigned long finB, unsigned long* j,
                                      Malgray m) noexcept;

inline bool EgalAvecLigatures(char16_t const* a, unsigned long longueurA, char16_t const* b,
                              unsigned long longueurB, Malgray m) noexcept
{
    unsigned long i = 0;
    unsigned long j = 0;
    AvanceAvecLigatures(a, longueurA, &i, b, longueurB, &j, m);
    return i == longueurA && j == longueurB;
}

} // namespace sdd
