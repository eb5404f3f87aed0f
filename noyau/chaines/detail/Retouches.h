#pragma once

#include "noyau/chaines/InfoUniCaractere.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// Transformations de texte communes aux deux classes de chaînes, sur des étendues d'unités.
// Celles qui rendent un texte neuf le mettent dans *resultat et disent s'il diffère : un
// texte inchangé garde ainsi son bloc partagé.
namespace sdd::detail {

using Etendue = std::u16string_view;

inline std::uint16_t Mot(char16_t c, MotInfoUniCaractere mot) noexcept
{
    return gInfoUniCaractere[c][mot];
}

inline bool EstBlanc(char16_t c) noexcept
{
    return Mot(c, kInfoClassePonctuation) & kPoncBlanc;
}

inline char16_t EnMajuscule(char16_t c) noexcept
{
    return Mot(c, kInfoMajuscule);
}

// La colonne minuscule replie commandes et insécable sur l'espace, pour les comparaisons ;
// un changement de casse les garde.
inline char16_t EnMinuscule(char16_t c) noexcept
{
    char16_t const m = Mot(c, kInfoMinuscule);
    return m == u' ' ? c : m;
}

// Apostrophe droite et tout ce que la colonne typographique replie sur elle.
inline bool EstApostrophe(char16_t c) noexcept
{
    return Mot(c, kInfoClassePonctuation) & kPoncApostrophe;
}

// Tous les accents : la colonne n'en ôte qu'un à la fois (Ǖ → Ü → U). Les blancs restent.
char16_t SansAccents(char16_t c) noexcept;

// Première unité que repli change, ou la longueur.
template <typename Repli> std::size_t PremierChangement(Etendue texte, Repli repli)
{
    std::size_t i = 0;
    while (i < texte.size() && repli(texte[i]) == texte[i]) {
        ++i;
    }
    return i;
}

// Une unité au moins porte l'un des bits du mot 6.
bool PorteClasse(Etendue texte, std::uint16_t bits) noexcept;

// Le texte sans ses blancs de tête et de queue.
Etendue SansBlancsAuxBords(Etendue texte) noexcept;

// Chaque suite de blancs devient une espace, sauf une espace seule devant un non-blanc ;
// la dernière unité reste telle quelle, blanche ou non (voulu).
bool ConsolideBlancs(Etendue texte, std::u16string* resultat);

// Chaque ligature devient ses lettres (ß : « sz »).
bool Deligature(Etendue texte, std::u16string* resultat);

// Index de la première lettre, après blancs et ponctuation ; la longueur quand le premier
// alphanumérique est un chiffre ou qu'il n'y en a pas.
std::size_t PremiereLettre(Etendue texte) noexcept;

} // namespace sdd::detail
