#include "noyau/chaines/EgaliteCaracteres.h"

#include "noyau/chaines/UniCaractere.h"
#include "noyau/chaines/detail/Recherches.h"

namespace sdd {

namespace {

// Les quatre ligatures que la comparaison d'étendues développe ; ß ne l'est pas, exprès.
struct LigatureDeuxLettres
{
    char16_t ligature;
    char16_t premiere;
    char16_t seconde;
};
constexpr LigatureDeuxLettres kLigaturesDeveloppees[] = {
    {u'œ', u'o', u'e'}, {u'Œ', u'O', u'E'}, {u'æ', u'a', u'e'}, {u'Æ', u'A', u'E'}};

// La ligature x vaut-elle y[0] y[1] sous m ? (y a au moins deux unités)
bool LigatureContrePaire(char16_t x, char16_t const* y, Malgray m) noexcept
{
    for (auto const& l : kLigaturesDeveloppees) {
        if (x == l.ligature) {
            return detail::UnitesEgales(y[0], l.premiere, m) &&
                   detail::UnitesEgales(y[1], l.seconde, m);
        }
    }
    return false;
}

constexpr unsigned long kMaxDeveloppement = 10;

bool EstJokerUneLettre(char16_t u) noexcept
{
    return u == u'?' || u == u'_';
}

} // namespace

bool UniCarPtrEgalOption(char16_t const* a, unsigned long debutA, unsigned long longueurA,
                         char16_t const* b, unsigned long debutB, unsigned long longueurB,
                         Malgray m) noexcept
{
    if (longueurA != longueurB) {
        return false;
    }
    return detail::MemesUnites(a + debutA, b + debutB, longueurA,
                               m & (MalgrayAccents | MalgrayCasse | MalgrayTypographie));
}

bool DeligatureEgalOption(char16_t ligature, char16_t const* texte, unsigned long longueur,
                          Malgray m, unsigned long* nbUtilises) noexcept
{
    if (nbUtilises != nullptr) {
        *nbUtilises = 0;
    }
    char16_t lettres[kMaxDeveloppement];
    unsigned long nbLettres = 0;
    if (!UniCaractere::DecompositionLigature(ligature, lettres, kMaxDeveloppement, &nbLettres)) {
        return false;
    }
    for (unsigned long k = 0; k < nbLettres; ++k) {
        if (k >= longueur || !UniCarEgalOption(lettres[k], texte[k], m)) {
            return false;
        }
        if (nbUtilises != nullptr) {
            ++*nbUtilises;
        }
    }
    return true;
}

bool DeligatureEgalOptionPourJoker(char16_t ligature, char16_t const* motif, unsigned long longueur,
                                   Malgray m, unsigned long* nbUtilises,
                                   bool premiereConsommee) noexcept
{
    if (nbUtilises != nullptr) {
        *nbUtilises = 0;
    }
    char16_t lettres[kMaxDeveloppement];
    unsigned long nbLettres = 0;
    if (!UniCaractere::DecompositionLigature(ligature, lettres, kMaxDeveloppement, &nbLettres)) {
        return false;
    }
    unsigned long k = 0;
    unsigned long p = 0;
    while (k < nbLettres && p < longueur) {
        char16_t const u = motif[p];
        if (u == u'*' && p > 0) {
            return true;
        }
        if (!EstJokerUneLettre(u) && u != u'*') {
            if (premiereConsommee) {
                premiereConsommee = false;
                ++k;
                continue;
            }
            auto const classe = gInfoUniCaractere[lettres[k]][kInfoClasseLettre];
            // « # » et « & » ne valent jamais une lettre de ligature ici, car aucune lettre
            // ne se replie sur eux : c'est voulu (« ? », « _ » ou la lettre elle-même).
            if ((u == u'#' && !(classe & kCarConsonne)) || (u == u'&' && !(classe & kCarVoyelle)) ||
                !UniCarEgalOption(u, lettres[k], m)) {
                return false;
            }
        }
        ++k;
        ++p;
        if (nbUtilises != nullptr) {
            ++*nbUtilises;
        }
    }
    return k == nbLettres;
}

void AvanceAvecLigatures(char16_t const* a, unsigned long finA, unsigned long* i, char16_t const* b,
                         unsigned long finB, unsigned long* j, Malgray m) noexcept
{
    unsigned long x = *i;
    unsigned long y = *j;
    while (x < finA && y < finB) {
        if (y + 1 < finB && LigatureContrePaire(a[x], b + y, m)) {
            x += 1;
            y += 2;
        } else if (x + 1 < finA && LigatureContrePaire(b[y], a + x, m)) {
            x += 2;
            y += 1;
        } else if (detail::UnitesEgales(a[x], b[y], m)) {
            ++x;
            ++y;
        } else {
            break;
        }
    }
    *i = x;
    *j = y;
}

} // namespace sdd
