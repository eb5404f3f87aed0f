#pragma once

#include <cstdint>

#include "noyau/Export.h"

namespace sdd::detail {

// Fiche d'une unité pour la composition canonique ; 16 octets. Une unité sans
// décomposition se répète dans les deux cases, une décomposition en une seule unité
// laisse 0 dans la seconde. Une unité sans fiche est sa propre décomposition,
// de classe 0 et de réponse 'Y'.
struct FicheNFC
{
    char16_t unite;
    char16_t decomposition[2];
    std::uint16_t zero;
    std::uint32_t classeCombinaison;
    char reponseNFC; // 'Y', 'N' ou 'M' (oui, non, peut-être)
    char bourrage[3];
};
static_assert(sizeof(FicheNFC) == 16, "fiche NFC de 16 octets");

// Paire (premier, second) → composé ; 8 octets. exclue vaut 1 pour une paire qu'on ne
// compose jamais (singleton, exclusion de composition).
struct PaireCompositionNFC
{
    char16_t premier;
    char16_t second;
    char16_t compose;
    std::uint8_t exclue;
    std::uint8_t bourrage;
};
static_assert(sizeof(PaireCompositionNFC) == 8, "paire de composition de 8 octets");

// Triées par unité, pour une recherche dichotomique.
extern NOYAU_EXPORT const FicheNFC gFichesNFC[];
extern NOYAU_EXPORT const unsigned long gNbFichesNFC;
// Triées par (premier, second).
extern NOYAU_EXPORT const PaireCompositionNFC gPairesCompositionNFC[];
extern NOYAU_EXPORT const unsigned long gNbPairesCompositionNFC;

} // namespace sdd::detail
