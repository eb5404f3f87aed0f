#include "noyau/chaines/UniCaractere.h"

#include "noyau/chaines/InfoUniCaractere.h"
#include "noyau/conteneurs/ListeT.h"

#include <algorithm>

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

long UniCaractere::_TrouveInfoExpansion(char16_t c) noexcept
{
    auto const debut = gInfoExpansionUniCaractere;
    auto const fin = debut + kNbInfoExpansionUniCaractere;
    auto const place = std::lower_bound(
        debut, fin, c, [](InfoExpansionUniCaractere const& f, char16_t u) { return f.car < u; });
    return place != fin && place->car == c ? static_cast<long>(place - debut) : -1;
}

namespace {

constexpr unsigned long kCapaciteEquivalents = 16;

// Ajoute les membres de la liste qui commence à debut, sauf exclu.
void AjouteListe(sdd::ListeC<char16_t>& liste, std::uint16_t debut, char16_t exclu)
{
    if (debut == 0) {
        return;
    }
    for (char16_t const* p = gListesCaracteresInfoExpansion + debut; *p != 0; ++p) {
        if (*p != exclu) {
            liste.Ajoute(*p);
        }
    }
}

bool EstDans(char16_t c, UniCaractere const* ensemble, unsigned long taille) noexcept
{
    return std::find(ensemble, ensemble + taille, UniCaractere(c)) != ensemble + taille;
}

} // namespace

sdd::ListeC<char16_t> UniCaractere::DonneCarsCassesEquivalentes(char16_t c)
{
    sdd::ListeC<char16_t> liste(kCapaciteEquivalents);
    if (gInfoUniCaractere[c][kInfoClasseLettre] & kCarMinuscule) {
        long const i = _TrouveInfoExpansion(c);
        if (i >= 0) {
            AjouteListe(liste, gInfoExpansionUniCaractere[i].casses, c);
        }
        return liste;
    }
    char16_t const minuscule = gInfoUniCaractere[c][kInfoMinuscule];
    long const i = _TrouveInfoExpansion(minuscule);
    if (i >= 0) {
        if (minuscule != c) {
            liste.Ajoute(minuscule);
        }
        AjouteListe(liste, gInfoExpansionUniCaractere[i].casses, c);
    }
    return liste;
}

sdd::ListeC<char16_t> UniCaractere::DonneCarsAccentsEquivalents(char16_t c)
{
    sdd::ListeC<char16_t> liste(kCapaciteEquivalents);
    char16_t const base = gInfoUniCaractere[c][kInfoSansAccent];
    long const i = _TrouveInfoExpansion(base);
    if (i < 0) {
        return liste;
    }
    // c accentué figure dans la liste de sa base : on y met la base à sa place.
    if (base != c) {
        liste.Ajoute(base);
    }
    AjouteListe(liste, gInfoExpansionUniCaractere[i].accents, c);
    return liste;
}

bool UniCaractere::EstTiretLong(char16_t c) noexcept
{
    return EstDans(c, sTiretsLongs, sNbCarsARemplacer[4]);
}

bool UniCaractere::EstTiretCourt(char16_t c) noexcept
{
    return EstDans(c, sTiretsCourts, sNbCarsARemplacer[5]);
}

bool UniCaractere::EstCaractereLatin(char16_t c, bool etendu) noexcept
{
    if ((c >= 0x0020 && c <= 0x007F) || (c >= 0x00A0 && c <= 0x00FF) ||
        (gInfoUniCaractere[c][kInfoClassePonctuation] & kPoncLatin) ||
        (c >= 0x2000 && c <= 0x26FF)) {
        return true;
    }
    return etendu && ((c >= 0x0100 && c <= 0x024F) || (c >= 0x1E00 && c <= 0x1EFF));
}
