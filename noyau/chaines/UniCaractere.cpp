#include "noyau/chaines/UniCaractere.h"

#include "noyau/chaines/InfoUniCaractere.h"

bool UniCaractere::DecompositionLigature(char16_t c, char16_t* sortie, unsigned long capacite,
                                         unsigned long* nbEcrites) noexcept
{
    if (nbEcrites != nullptr) {
        *nbEcrites = 0;
    }
    if (!(gInfoUniCaractere[c][kInfoMarques] & kMarqueLigature)) {
        return false;
    }
    for (unsigned long l = 0; l < gNbInfosLigature; ++l) {
        if (gInfosLigature[l].ligature != c) {
            continue;
        }
        unsigned long n = 0;
        for (char16_t lettre : gInfosLigature[l].lettres) {
            if (lettre == 0 || n == capacite) {
                break;
            }
            sortie[n++] = lettre;
        }
        if (n < capacite) {
            sortie[n] = 0;
        }
        if (nbEcrites != nullptr) {
            *nbEcrites = n;
        }
        return true;
    }
    return false;
}
