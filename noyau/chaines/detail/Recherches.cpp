#include "noyau/chaines/detail/Recherches.h"

#include "noyau/chaines/InfoUniCaractere.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace sdd::detail {

namespace {

template <Malgray M> bool MemesUnitesSelon(char16_t const* a, char16_t const* b, std::size_t n)
{
    for (std::size_t k = 0; k < n; ++k) {
        if (a[k] != b[k] && ReplieSelonMalgray(a[k], M) != ReplieSelonMalgray(b[k], M)) {
            return false;
        }
    }
    return true;
}

// Choisit, selon les quatre bits de repli (0x02 à 0x10), la boucle faite pour eux ; un
// appel direct, que le compilateur met en ligne, plutôt qu'une table de pointeurs.
template <std::size_t... I>
bool MemesUnitesSelonBits(Malgray replis, char16_t const* a, char16_t const* b, std::size_t n,
                          std::index_sequence<I...>)
{
    bool egal = false;
    static_cast<void>(
        ((replis == I && (egal = MemesUnitesSelon<Malgray(I << 1)>(a, b, n), true)) || ...));
    return egal;
}

} // namespace

bool MemesUnites(char16_t const* a, char16_t const* b, std::size_t n, Malgray m) noexcept
{
    Malgray const replis = (m >> 1) & 0xF;
    if (replis == 0) {
        return n == 0 || std::memcmp(a, b, n * sizeof(char16_t)) == 0;
    }
    return MemesUnitesSelonBits(replis, a, b, n, std::make_index_sequence<16>());
}

bool Egales(Etendue a, Etendue b, Malgray m) noexcept
{
    if (m & MalgrayLigatures) {
        return EgalAvecLigatures(a.data(), a.size(), b.data(), b.size(), m);
    }
    return a.size() == b.size() && MemesUnites(a.data(), b.data(), a.size(), m);
}

std::size_t CorrespondEn(Etendue texte, std::size_t pos, Etendue motif, Malgray m) noexcept
{
    if (pos > texte.size()) {
        return npos;
    }
    if (m & MalgrayLigatures) {
        unsigned long i = 0;
        unsigned long j = pos;
        AvanceAvecLigatures(motif.data(), motif.size(), &i, texte.data(), texte.size(), &j, m);
        return i == motif.size() ? j - pos : npos;
    }
    bool const egal = motif.size() <= texte.size() - pos &&
                      MemesUnites(texte.data() + pos, motif.data(), motif.size(), m);
    return egal ? motif.size() : npos;
}

std::size_t Trouve(Etendue texte, std::size_t depuis, Etendue motif, Malgray m,
                   std::size_t* longueur) noexcept
{
    std::size_t trouve = npos;
    std::size_t couvert = motif.size();
    if (m == 0) {
        trouve = texte.find(motif, depuis);
    } else {
        for (std::size_t p = depuis; p <= texte.size() && trouve == npos; ++p) {
            couvert = CorrespondEn(texte, p, motif, m);
            if (couvert != npos) {
                trouve = p;
            }
        }
    }
    if (trouve != npos && longueur != nullptr) {
        *longueur = couvert;
    }
    return trouve;
}

std::size_t TrouveDernier(Etendue texte, std::size_t avant, Etendue motif, Malgray m) noexcept
{
    if (m == 0) {
        return texte.rfind(motif, avant);
    }
    for (std::size_t p = std::min(avant, texte.size()) + 1; p-- > 0;) {
        if (CorrespondEn(texte, p, motif, m) != npos) {
            return p;
        }
    }
    return npos;
}

bool TerminePar(Etendue texte, Etendue motif, Malgray m) noexcept
{
    std::size_t const n = texte.size();
    std::size_t const nm = motif.size();
    if (!(m & MalgrayLigatures)) {
        return nm <= n && MemesUnites(texte.data() + n - nm, motif.data(), nm, m);
    }
    // Avec les ligatures, la fin occupe de nm / 2 à 2 nm unités du texte.
    for (std::size_t pos = n > 2 * nm ? n - 2 * nm : 0; pos <= n; ++pos) {
        std::size_t const couvert = CorrespondEn(texte, pos, motif, m);
        if (couvert != npos && pos + couvert == n) {
            return true;
        }
    }
    return false;
}

std::size_t TrouveUnite(Etendue texte, std::size_t depuis, char16_t c, Malgray m) noexcept
{
    if (m == 0) {
        return texte.find(c, depuis);
    }
    for (std::size_t i = depuis; i < texte.size(); ++i) {
        if (UnitesEgales(texte[i], c, m)) {
            return i;
        }
    }
    return npos;
}

std::size_t TrouveDerniereUnite(Etendue texte, std::size_t avant, char16_t c, Malgray m) noexcept
{
    if (m == 0) {
        return texte.rfind(c, avant);
    }
    if (texte.empty()) {
        return npos;
    }
    for (std::size_t i = std::min(avant, texte.size() - 1) + 1; i-- > 0;) {
        if (UnitesEgales(texte[i], c, m)) {
            return i;
        }
    }
    return npos;
}

std::size_t TrouveUnDe(Etendue texte, std::size_t depuis, Etendue cars) noexcept
{
    return cars.empty() ? npos : texte.find_first_of(cars, depuis);
}

std::size_t TrouveDernierUnDe(Etendue texte, std::size_t avant, Etendue cars) noexcept
{
    return cars.empty() ? npos : texte.find_last_of(cars, avant);
}

std::size_t PrefixeCommun(Etendue a, Etendue b, Malgray m) noexcept
{
    if (m & MalgrayLigatures) {
        unsigned long i = 0;
        unsigned long j = 0;
        AvanceAvecLigatures(a.data(), a.size(), &i, b.data(), b.size(), &j, m);
        return i;
    }
    std::size_t const n = std::min(a.size(), b.size());
    std::size_t k = 0;
    while (k < n && UnitesEgales(a[k], b[k], m)) {
        ++k;
    }
    return k;
}

std::size_t SuffixeCommun(Etendue a, Etendue b, Malgray m) noexcept
{
    std::size_t k = 0;
    while (k < a.size() && k < b.size() &&
           UnitesEgales(a[a.size() - 1 - k], b[b.size() - 1 - k], m)) {
        ++k;
    }
    return k;
}

bool EstSeparateurDeMot(char16_t c) noexcept
{
    auto const classe = gInfoUniCaractere[c][kInfoClassePonctuation];
    return (classe & kPoncSeparateurDeMot) && !(classe & kPoncFinDeLigne);
}

std::size_t TrouveMotEntier(Etendue texte, std::size_t depuis, Etendue mot, Malgray m,
                            std::size_t* longueur) noexcept
{
    if (mot.empty()) {
        return npos;
    }
    std::size_t couvert = 0;
    for (std::size_t p = Trouve(texte, depuis, mot, m, &couvert); p != npos;
         p = Trouve(texte, p + 1, mot, m, &couvert)) {
        std::size_t const fin = p + couvert;
        if ((p == 0 || EstSeparateurDeMot(texte[p - 1])) &&
            (fin == texte.size() || EstSeparateurDeMot(texte[fin]))) {
            if (longueur != nullptr) {
                *longueur = couvert;
            }
            return p;
        }
    }
    return npos;
}

bool RemplaceOccurrences(Etendue texte, std::size_t depuis, Etendue ancien, Etendue nouveau,
                         Malgray m, bool motEntier, std::u16string* resultat)
{
    if (ancien.empty()) {
        return false;
    }
    bool change = false;
    std::size_t copie = 0; // début de ce qui reste à recopier
    std::size_t couvert = 0;
    // Une occurrence couvre au moins une unité : la boucle avance toujours.
    for (std::size_t p = depuis; p <= texte.size(); p = copie) {
        std::size_t const pos = motEntier ? TrouveMotEntier(texte, p, ancien, m, &couvert)
                                          : Trouve(texte, p, ancien, m, &couvert);
        if (pos == npos) {
            break;
        }
        if (!change) {
            resultat->clear();
            change = true;
        }
        resultat->append(texte.substr(copie, pos - copie)).append(nouveau);
        copie = pos + couvert;
    }
    if (change) {
        resultat->append(texte.substr(copie));
    }
    return change;
}

} // namespace sdd::detail
