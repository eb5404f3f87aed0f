#pragma once

#include "noyau/chaines/EgaliteCaracteres.h"

#include <cstddef>
#include <string>
#include <string_view>

// Comparaisons et recherches sur des étendues d'unités, communes aux deux classes de
// chaînes. Les positions sont vérifiées par l'appelant ; npos : rien trouvé.
//
// m porte tous les bits : sdd::ChaineN enlève MalgrayEspaces avant d'appeler, UniChaine le
// garde. Avec MalgrayLigatures, une occurrence peut compter plus ou moins d'unités que le
// motif : sa longueur dans le texte est rendue à part.
namespace sdd::detail {

using Etendue = std::u16string_view;
constexpr std::size_t npos = Etendue::npos;

// Rend la position trouvée dans *pos (quand pos n'est pas nul) ; vrai si trouvée.
template <typename Position> bool Rends(std::size_t trouve, Position* pos) noexcept
{
    if (trouve == npos) {
        return false;
    }
    if (pos != nullptr) {
        *pos = static_cast<Position>(trouve);
    }
    return true;
}

// Égalité de deux unités sous les replis de m (accents, casse, typographie, espaces).
inline bool UnitesEgales(char16_t a, char16_t b, Malgray m) noexcept
{
    constexpr Malgray kReplis = MalgrayAccents | MalgrayCasse | MalgrayTypographie | MalgrayEspaces;
    return a == b || ((m & kReplis) != 0 &&
                      ReplieSelonMalgray(a, m & kReplis) == ReplieSelonMalgray(b, m & kReplis));
}

// Deux étendues de même longueur, unité à unité ; une boucle par combinaison de replis.
bool MemesUnites(char16_t const* a, char16_t const* b, std::size_t n, Malgray m) noexcept;

// Les deux étendues sont égales sous m (ligatures comprises).
bool Egales(Etendue a, Etendue b, Malgray m) noexcept;

// Le motif commence-t-il en pos dans le texte ? Rend le nombre d'unités du texte qu'il
// couvre, ou npos.
std::size_t CorrespondEn(Etendue texte, std::size_t pos, Etendue motif, Malgray m) noexcept;

// Première occurrence depuis depuis ; *longueur reçoit ses unités dans le texte.
std::size_t Trouve(Etendue texte, std::size_t depuis, Etendue motif, Malgray m,
                   std::size_t* longueur = nullptr) noexcept;
// Dernière occurrence commençant au plus en avant.
std::size_t TrouveDernier(Etendue texte, std::size_t avant, Etendue motif, Malgray m) noexcept;
// Le texte finit-il par le motif ?
bool TerminePar(Etendue texte, Etendue motif, Malgray m) noexcept;

std::size_t TrouveUnite(Etendue texte, std::size_t depuis, char16_t c, Malgray m) noexcept;
// Dernière unité égale à c en avant ou avant (avant < longueur).
std::size_t TrouveDerniereUnite(Etendue texte, std::size_t avant, char16_t c, Malgray m) noexcept;

// Première (dernière) unité qui figure dans cars, exactement.
std::size_t TrouveUnDe(Etendue texte, std::size_t depuis, Etendue cars) noexcept;
std::size_t TrouveDernierUnDe(Etendue texte, std::size_t avant, Etendue cars) noexcept;

// Unités communes en tête, comptées dans a (ligatures comprises), et en queue.
std::size_t PrefixeCommun(Etendue a, Etendue b, Malgray m) noexcept;
std::size_t SuffixeCommun(Etendue a, Etendue b, Malgray m) noexcept;

// Séparateur de mots : le bit de séparation sans celui de fin de ligne.
bool EstSeparateurDeMot(char16_t c) noexcept;

// Occurrence bordée de séparateurs de mots ou des extrémités ; un mot vide ne se trouve pas.
std::size_t TrouveMotEntier(Etendue texte, std::size_t depuis, Etendue mot, Malgray m,
                            std::size_t* longueur = nullptr) noexcept;

// Chaque occurrence de ancien depuis depuis, de gauche à droite et sans chevauchement
// (bordée de séparateurs quand motEntier), devient nouveau ; le texte obtenu va dans
// *resultat. Faux quand rien ne change (ancien vide compris).
bool RemplaceOccurrences(Etendue texte, std::size_t depuis, Etendue ancien, Etendue nouveau,
                         Malgray m, bool motEntier, std::u16string* resultat);

} // namespace sdd::detail
