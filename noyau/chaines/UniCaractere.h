#pragma once

#include "noyau/Export.h"
#include "noyau/chaines/InfoLigature.h"

namespace sdd {
// Défini dans noyau/conteneurs/ListeT.h, qui dépend des exceptions, donc des chaînes.
template <typename T> class ListeC;
} // namespace sdd

// Nombre d'ensembles de caractères typographiques (fins de ligne, espaces, espaces
// insécables, traits d'union, tirets longs, tirets courts, dans cet ordre).
constexpr unsigned long kNbEnsemblesTypographiques = 6;

// Une unité UTF-16, et ce que la bibliothèque sait des caractères en général.
class NOYAU_EXPORT UniCaractere
{
public:
    constexpr UniCaractere(char16_t c = 0) noexcept : _c(c) {}
    constexpr operator char16_t() const noexcept { return _c; }

    // Lettres d'une ligature (mot 9, bit kMarqueLigature) écrites dans sortie, suivies d'un
    // zéro s'il reste de la place ; faux pour tout autre caractère. *nbEcrites reçoit le
    // nombre de lettres écrites.
    static bool DecompositionLigature(char16_t c, char16_t* sortie, unsigned long capacite,
                                      unsigned long* nbEcrites = nullptr) noexcept;

    // Index de la fiche de c dans gInfoExpansionUniCaractere, ou -1.
    static long _TrouveInfoExpansion(char16_t c) noexcept;
    // Les autres casses de c (sans c lui-même) : pour une minuscule, sa liste de casses ;
    // sinon sa minuscule puis les casses de celle-ci.
    static sdd::ListeC<char16_t> DonneCarsCassesEquivalentes(char16_t c);
    // Les caractères qui ne diffèrent de c que par un accent (sans c lui-même) : sa lettre
    // de base d'abord quand c est accentué, puis les variantes accentuées de cette base.
    static sdd::ListeC<char16_t> DonneCarsAccentsEquivalents(char16_t c);

    static bool EstTiretLong(char16_t c) noexcept;
    static bool EstTiretCourt(char16_t c) noexcept;
    // ASCII et Latin-1 imprimables, écriture latine (mot 7), ponctuation générale et
    // symboles (U+2000..U+26FF) ; etendu : aussi Latin étendu A et B, Latin étendu
    // additionnel.
    static bool EstCaractereLatin(char16_t c, bool etendu) noexcept;

    static const InfoLigature<char16_t> gInfosLigature[];
    static const unsigned long gNbInfosLigature;

    static const UniCaractere sFinsDeLigne[];
    static const UniCaractere sEspaces[];
    static const UniCaractere sEspacesInsecables[];
    static const UniCaractere sTraitsDUnion[];
    static const UniCaractere sTiretsLongs[];
    static const UniCaractere sTiretsCourts[];
    // Les six ensembles ci-dessus, dans l'ordre, et leurs tailles.
    static const UniCaractere* const sCarsARemplacer[kNbEnsemblesTypographiques];
    static const unsigned long sNbCarsARemplacer[kNbEnsemblesTypographiques];

    // Symboles Latin-1 absents de Mac OS Roman (² ³ ¹ ¼ ½ ¾ ×).
    static const UniCaractere sSymbolesLatin1NonMac[7];

private:
    char16_t _c;
};
