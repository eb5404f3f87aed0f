#include "noyau/chaines/detail/Retouches.h"

#include "noyau/chaines/UniCaractere.h"

#include <algorithm>

namespace sdd::detail {

char16_t SansAccents(char16_t c) noexcept
{
    if (Mot(c, kInfoClasseLettre) & kCarBlanc) {
        return c;
    }
    // Quelques pas suffisent : aucune lettre ne porte plus de trois accents.
    for (int pas = 0; pas < 8; ++pas) {
        char16_t const base = Mot(c, kInfoSansAccent);
        if (base == c) {
            break;
        }
        c = base;
    }
    return c;
}

bool PorteClasse(Etendue texte, std::uint16_t bits) noexcept
{
    return std::any_of(texte.begin(), texte.end(),
                       [bits](char16_t c) { return (Mot(c, kInfoClasseLettre) & bits) != 0; });
}

Etendue SansBlancsAuxBords(Etendue texte) noexcept
{
    while (!texte.empty() && EstBlanc(texte.front())) {
        texte.remove_prefix(1);
    }
    while (!texte.empty() && EstBlanc(texte.back())) {
        texte.remove_suffix(1);
    }
    return texte;
}

bool ConsolideBlancs(Etendue texte, std::u16string* resultat)
{
    std::size_t const n = texte.size();
    bool change = false;
    std::size_t i = 0;
    while (i + 1 < n) {
        char16_t const c = texte[i];
        if (!EstBlanc(c) || (c == u' ' && !EstBlanc(texte[i + 1]))) {
            if (change) {
                resultat->push_back(c);
            }
            ++i;
            continue;
        }
        if (!change) {
            resultat->assign(texte.substr(0, i));
            change = true;
        }
        // La suite s'arrête avant la dernière unité, qui est recopiée telle quelle.
        while (i + 1 < n && EstBlanc(texte[i])) {
            ++i;
        }
        resultat->push_back(u' ');
    }
    if (change) {
        resultat->append(texte.substr(i));
    }
    return change;
}

bool Deligature(Etendue texte, std::u16string* resultat)
{
    std::size_t i = 0;
    while (i < texte.size() && !(Mot(texte[i], kInfoMarques) & kMarqueLigature)) {
        ++i;
    }
    if (i == texte.size()) {
        return false;
    }
    resultat->assign(texte.substr(0, i));
    for (; i < texte.size(); ++i) {
        char16_t lettres[4];
        unsigned long n = 0;
        if (UniCaractere::DecompositionLigature(texte[i], lettres, 4, &n)) {
            resultat->append(lettres, n);
        } else {
            resultat->push_back(texte[i]);
        }
    }
    return true;
}

std::size_t PremiereLettre(Etendue texte) noexcept
{
    for (std::size_t i = 0; i < texte.size(); ++i) {
        if (Mot(texte[i], kInfoProprietes) & kPropAlphanumerique) {
            return (Mot(texte[i], kInfoClasseLettre) & kCarLettre) ? i : texte.size();
        }
    }
    return texte.size();
}

} // namespace sdd::detail
