// UniChaine : questions, comparaisons et recherches.

#include "noyau/chaines/UniChaine.h"

#include "noyau/chaines/detail/Bornes.h"
#include "noyau/chaines/detail/CodecsUniChaine.h"
#include "noyau/chaines/detail/Recherches.h"
#include "noyau/chaines/detail/Retouches.h"
#include "noyau/chaines/detail/UnitesQString.h"

#include <QHash>

#include <algorithm>

using sdd::detail::EtendueDe;
using sdd::detail::npos;

namespace {

bool AClasse(QString const& texte, int i, std::uint16_t bits) noexcept
{
    return i >= 0 && i < texte.size() &&
           (sdd::detail::Mot(texte[i].unicode(), kInfoClassePonctuation) & bits) != 0;
}

} // namespace

int UniChaine::Longueur(Codage codage) const
{
    return sdd::detail::EncodeUnites(PreteUniCString(), std::size_t(_texte.size()), codage).size();
}

char16_t UniChaine::operator[](int i) const
{
    sdd::detail::VerifieIndex(static_cast<unsigned long>(i),
                              static_cast<unsigned long>(_texte.size()));
    return _texte[i].unicode();
}

// Borne d'une recherche vers l'arrière : -1 vaut la fin.
std::size_t UniChaine::_Avant(int avant) const
{
    if (avant == -1) {
        return std::size_t(_texte.size());
    }
    _VerifiePosition(avant);
    return std::size_t(avant);
}

bool UniChaine::Contient(UniChaine const& autre, int* pos, int depuis, Malgray m) const
{
    _VerifiePosition(depuis);
    return sdd::detail::Rends(
        sdd::detail::Trouve(EtendueDe(_texte), std::size_t(depuis), EtendueDe(autre._texte), m),
        pos);
}

bool UniChaine::Contient(char16_t c, int* pos, int depuis, Malgray m) const
{
    _VerifiePosition(depuis);
    return sdd::detail::Rends(
        sdd::detail::TrouveUnite(EtendueDe(_texte), std::size_t(depuis), c, m), pos);
}

bool UniChaine::TrouveDernier(UniChaine const& autre, int* pos, int avant, Malgray m) const
{
    return sdd::detail::Rends(
        sdd::detail::TrouveDernier(EtendueDe(_texte), _Avant(avant), EtendueDe(autre._texte), m),
        pos);
}

bool UniChaine::TrouveDernier(char16_t c, int* pos, int avant, Malgray m) const
{
    return sdd::detail::Rends(
        sdd::detail::TrouveDerniereUnite(EtendueDe(_texte), _Avant(avant), c, m), pos);
}

bool UniChaine::ContientUnCarDe(UniChaine const& cars, int* pos, int depuis) const
{
    _VerifiePosition(depuis);
    return sdd::detail::Rends(
        sdd::detail::TrouveUnDe(EtendueDe(_texte), std::size_t(depuis), EtendueDe(cars._texte)),
        pos);
}

bool UniChaine::ContientMotEntier(UniChaine const& mot, int* pos, int depuis, Malgray m) const
{
    _VerifiePosition(depuis);
    return sdd::detail::Rends(sdd::detail::TrouveMotEntier(EtendueDe(_texte), std::size_t(depuis),
                                                           EtendueDe(mot._texte), m),
                              pos);
}

bool UniChaine::ContientMalgrayLigature(UniChaine const& autre, int depuis, Malgray m, int* pos,
                                        int* longueur) const
{
    _VerifiePosition(depuis);
    std::size_t couvert = 0;
    std::size_t const trouve =
        sdd::detail::Trouve(EtendueDe(_texte), std::size_t(depuis), EtendueDe(autre._texte),
                            m | MalgrayLigatures, &couvert);
    if (trouve != npos && longueur != nullptr) {
        *longueur = static_cast<int>(couvert);
    }
    return sdd::detail::Rends(trouve, pos);
}

bool UniChaine::CommencePar(UniChaine const& autre, Malgray m) const
{
    return sdd::detail::CorrespondEn(EtendueDe(_texte), 0, EtendueDe(autre._texte), m) != npos;
}

bool UniChaine::TerminePar(UniChaine const& autre, Malgray m) const
{
    return sdd::detail::TerminePar(EtendueDe(_texte), EtendueDe(autre._texte), m);
}

bool UniChaine::Egal(UniChaine const& autre, Malgray m) const
{
    return sdd::detail::Egales(EtendueDe(_texte), EtendueDe(autre._texte), m);
}

int UniChaine::Compare(UniChaine const& autre) const noexcept
{
    int const r = _texte.compare(autre._texte);
    return (r > 0) - (r < 0);
}

int UniChaine::LongueurPrefixeCommun(UniChaine const& autre, Malgray m) const
{
    return static_cast<int>(
        sdd::detail::PrefixeCommun(EtendueDe(_texte), EtendueDe(autre._texte), m));
}

int UniChaine::LongueurSuffixeCommun(UniChaine const& autre, Malgray m) const
{
    return static_cast<int>(
        sdd::detail::SuffixeCommun(EtendueDe(_texte), EtendueDe(autre._texte), m));
}

unsigned int UniChaine::hash() const noexcept
{
    return qHash(_texte, 0);
}

bool UniChaine::AUnSeparateurDeMot(int i) const noexcept
{
    return i >= 0 && i < _texte.size() && sdd::detail::EstSeparateurDeMot(_texte[i].unicode());
}

bool UniChaine::AUnSeparateurDePhrase(int i) const noexcept
{
    return AClasse(_texte, i, kPoncFinDePhrase);
}

bool UniChaine::AUnRetourDeChariot(int i) const noexcept
{
    return AClasse(_texte, i, kPoncFinDeLigne);
}

bool UniChaine::ContientUnSeparateurDeMot() const noexcept
{
    auto const texte = EtendueDe(_texte);
    return std::any_of(texte.begin(), texte.end(), sdd::detail::EstSeparateurDeMot);
}

bool UniChaine::PossedeCaractereAlphaNumeriqueAbsent(char& c) const noexcept
{
    bool present[128] = {};
    for (QChar q : _texte) {
        if (q.unicode() < 128) {
            present[q.unicode()] = true;
        }
    }
    static constexpr char kCandidats[] =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
    for (char candidat : kCandidats) {
        if (candidat != 0 && !present[static_cast<unsigned char>(candidat)]) {
            c = candidat;
            return true;
        }
    }
    return false;
}

bool UniChaine::ContientUnCaractereAccentuayNonBaseUniCode() const noexcept
{
    return sdd::detail::PorteClasse(EtendueDe(_texte), kCarMarqueCombinante);
}
