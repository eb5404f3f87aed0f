// ChaineN : comparaisons et recherches.

#include "noyau/chaines/ChaineN.h"

#include "noyau/algorithmes/ExpressionReguliere.h"
#include "noyau/chaines/detail/Bornes.h"
#include "noyau/chaines/detail/Recherches.h"

namespace sdd {

// Comparaisons

int ChaineN::Compare(ChaineN const& autre) const noexcept
{
    int const c = _Etendue().compare(autre._Etendue());
    return (c > 0) - (c < 0);
}

bool ChaineN::Egal(ChaineN const& autre, Malgray m) const noexcept
{
    if (_texte == autre._texte) {
        return true; // un même texte reste égal à lui-même sous toute tolérance
    }
    if (m & MalgrayLigatures) {
        return detail::Egales(_Etendue(), autre._Etendue(), m & _kMalgrayPermis);
    }
    // Chemin le plus fréquent des recherches du lexique : sans détour.
    std::u16string_view const a = _Etendue();
    std::u16string_view const b = autre._Etendue();
    return a.size() == b.size() &&
           detail::MemesUnites(a.data(), b.data(), a.size(), m & _kMalgrayPermis);
}

bool ChaineN::Egal(char16_t const* texte, unsigned long longueur, Malgray m) const noexcept
{
    if (texte == nullptr) {
        longueur = 0;
    } else if (longueur == kJusquAuZero) {
        longueur = std::char_traits<char16_t>::length(texte);
    }
    return detail::Egales(_Etendue(), {texte, longueur}, m & _kMalgrayPermis);
}

bool ChaineN::ContientALaPos(ChaineN const& autre, unsigned long pos, Malgray m) const
{
    detail::VerifiePosition(pos, Longueur());
    return detail::CorrespondEn(_Etendue(), pos, autre._Etendue(), m & _kMalgrayPermis) !=
           detail::npos;
}

bool ChaineN::CommencePar(ChaineN const& debut, Malgray m) const noexcept
{
    return detail::CorrespondEn(_Etendue(), 0, debut._Etendue(), m & _kMalgrayPermis) !=
           detail::npos;
}

bool ChaineN::TerminePar(ChaineN const& fin, Malgray m) const noexcept
{
    return detail::TerminePar(_Etendue(), fin._Etendue(), m & _kMalgrayPermis);
}

unsigned long ChaineN::LongueurPrefixeCommun(ChaineN const& autre, Malgray m) const noexcept
{
    return detail::PrefixeCommun(_Etendue(), autre._Etendue(), m & _kMalgrayPermis);
}

unsigned long ChaineN::LongueurSuffixeCommun(ChaineN const& autre, Malgray m) const noexcept
{
    return detail::SuffixeCommun(_Etendue(), autre._Etendue(), m & _kMalgrayPermis);
}

// Recherches

bool ChaineN::Contient(ChaineN const& motif, unsigned long* pos, unsigned long depuis,
                       Malgray m) const
{
    detail::VerifiePosition(depuis, Longueur());
    return detail::Rends(detail::Trouve(_Etendue(), depuis, motif._Etendue(), m & _kMalgrayPermis),
                         pos);
}

bool ChaineN::Contient(char16_t c, unsigned long* pos, unsigned long depuis, Malgray m) const
{
    detail::VerifiePosition(depuis, Longueur());
    return detail::Rends(detail::TrouveUnite(_Etendue(), depuis, c, m & _kMalgrayPermis), pos);
}

bool ChaineN::Contient(char16_t const* texte, char16_t c, unsigned long* pos, Malgray m) noexcept
{
    return texte != nullptr &&
           Contient(texte, std::char_traits<char16_t>::length(texte), c, pos, m);
}

bool ChaineN::Contient(char16_t const* texte, unsigned long longueur, char16_t c,
                       unsigned long* pos, Malgray m) noexcept
{
    if (texte == nullptr) {
        return false;
    }
    return detail::Rends(detail::TrouveUnite({texte, longueur}, 0, c, m & _kMalgrayPermis), pos);
}

unsigned long ChaineN::_Avant(unsigned long avant) const
{
    if (avant == kJusquAuZero) {
        return Longueur();
    }
    detail::VerifiePosition(avant, Longueur());
    return avant;
}

bool ChaineN::TrouveDernier(ChaineN const& motif, unsigned long* pos, unsigned long avant,
                            Malgray m) const
{
    return detail::Rends(
        detail::TrouveDernier(_Etendue(), _Avant(avant), motif._Etendue(), m & _kMalgrayPermis),
        pos);
}

bool ChaineN::TrouveDernier(char16_t c, unsigned long* pos, unsigned long avant, Malgray m) const
{
    return detail::Rends(
        detail::TrouveDerniereUnite(_Etendue(), _Avant(avant), c, m & _kMalgrayPermis), pos);
}

bool ChaineN::ContientMotEntier(ChaineN const& mot, unsigned long* pos, unsigned long depuis,
                                Malgray m) const
{
    detail::VerifiePosition(depuis, Longueur());
    return detail::Rends(
        detail::TrouveMotEntier(_Etendue(), depuis, mot._Etendue(), m & _kMalgrayPermis), pos);
}

bool ChaineN::ContientUnCarDe(ChaineN const& cars, unsigned long* pos, unsigned long depuis) const
{
    detail::VerifiePosition(depuis, Longueur());
    return detail::Rends(detail::TrouveUnDe(_Etendue(), depuis, cars._Etendue()), pos);
}

bool ChaineN::TrouveUnCarDeVersLArriere(ChaineN const& cars, unsigned long* pos,
                                        unsigned long depuis) const
{
    return detail::Rends(detail::TrouveDernierUnDe(_Etendue(), _Avant(depuis), cars._Etendue()),
                         pos);
}

bool ChaineN::ContientRegex(ExpressionReguliere const& expression, ListeC<Intervalle>* resultats,
                            unsigned long depuis) const
{
    detail::VerifiePosition(depuis, Longueur());
    return expression.TrouveTout(PreteUniCString(), Longueur(), depuis, resultats);
}

bool ChaineN::ContientRegex(ChaineN const& motif, ListeC<Intervalle>* resultats,
                            unsigned long depuis) const
{
    detail::VerifiePosition(depuis, Longueur());
    return ContientRegex(ExpressionReguliere(motif), resultats, depuis);
}

} // namespace sdd
