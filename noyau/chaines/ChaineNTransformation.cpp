// ChaineN : transformations caractère à caractère et casse, selon la table des caractères.

#include "noyau/chaines/ChaineN.h"

#include "noyau/chaines/UniCaractere.h"
#include "noyau/chaines/detail/Retouches.h"

#include <algorithm>
#include <string>

namespace sdd {

// Remplace le texte par celui que produit la retouche, s'il diffère.
template <typename Retouche> ChaineN& ChaineN::_Remets(Retouche retouche)
{
    std::u16string resultat;
    if (retouche(_Etendue(), &resultat)) {
        *this = ChaineN(resultat.data(), resultat.size());
    }
    return *this;
}

// Transformations

template <typename Repli> ChaineN& ChaineN::_Transforme(Repli repli)
{
    unsigned long const longueur = Longueur();
    unsigned long i = detail::PremierChangement(_Etendue(), repli);
    if (i == longueur) {
        return *this; // rien ne change : le bloc reste partagé
    }
    _Assure(longueur);
    char16_t* d = _UnitesModifiables();
    for (; i < longueur; ++i) {
        d[i] = repli(d[i]);
    }
    return *this;
}

template <typename Garder> ChaineN& ChaineN::_Filtre(Garder garder)
{
    unsigned long const longueur = Longueur();
    unsigned long i = 0;
    while (i < longueur && garder(_Unites()[i])) {
        ++i;
    }
    if (i == longueur) {
        return *this;
    }
    _Assure(longueur);
    char16_t* d = _UnitesModifiables();
    unsigned long n = i;
    for (; i < longueur; ++i) {
        if (garder(d[i])) {
            d[n++] = d[i];
        }
    }
    _MetsLongueur(n);
    return *this;
}

ChaineN& ChaineN::Majusculise()
{
    return _Transforme(detail::EnMajuscule);
}

ChaineN& ChaineN::Minusculise()
{
    return _Transforme(detail::EnMinuscule);
}

ChaineN& ChaineN::Desaccentue()
{
    return _Transforme(detail::SansAccents);
}

ChaineN& ChaineN::MinusculiseSansAccent()
{
    return _Transforme([](char16_t c) { return detail::EnMinuscule(detail::SansAccents(c)); });
}

ChaineN& ChaineN::NormaliseApostrophe(char16_t apostrophe)
{
    return _Transforme(
        [apostrophe](char16_t c) { return detail::EstApostrophe(c) ? apostrophe : c; });
}

ChaineN& ChaineN::MajusculisePremiereLettre()
{
    unsigned long const i = detail::PremiereLettre(_Etendue());
    return i == Longueur() ? *this : MetsCarAIndex(detail::EnMajuscule(_Unites()[i]), i);
}

ChaineN& ChaineN::MinusculisePremiereLettre()
{
    unsigned long const i = detail::PremiereLettre(_Etendue());
    return i == Longueur() ? *this : MetsCarAIndex(detail::EnMinuscule(_Unites()[i]), i);
}

ChaineN& ChaineN::MinusculiseDeuxiemeLettre()
{
    return Longueur() < 2 ? *this : MetsCarAIndex(detail::EnMinuscule(_Unites()[1]), 1);
}

ChaineN& ChaineN::EnleveCarNonAlpha()
{
    return _Filtre(
        [](char16_t c) { return (detail::Mot(c, kInfoClasseLettre) & kCarLettre) != 0; });
}

ChaineN& ChaineN::Deligature()
{
    return _Remets(detail::Deligature);
}

ChaineN& ChaineN::Ligature()
{
    // Seules les ligatures de voyelles (œ Œ æ Æ) sont reformées : « sz » reste « sz ».
    auto const ligaturePour = [](char16_t a, char16_t b) -> char16_t {
        for (unsigned long l = 0; l < UniCaractere::gNbInfosLigature; ++l) {
            auto const& info = UniCaractere::gInfosLigature[l];
            if (info.lettres[0] == a && info.lettres[1] == b && info.lettres[2] == 0 &&
                (detail::Mot(info.ligature, kInfoClasseLettre) & kCarVoyelle)) {
                return info.ligature;
            }
        }
        return 0;
    };
    unsigned long const longueur = Longueur();
    ChaineN resultat;
    bool change = false;
    for (unsigned long i = 0; i < longueur; ++i) {
        char16_t const ligature =
            i + 1 < longueur ? ligaturePour(_Unites()[i], _Unites()[i + 1]) : 0;
        if (ligature != 0) {
            resultat.AjouteFin(ligature);
            ++i;
            change = true;
        } else {
            resultat.AjouteFin(_Unites()[i]);
        }
    }
    return change ? *this = std::move(resultat) : *this;
}

ChaineN& ChaineN::Inverse()
{
    unsigned long const longueur = Longueur();
    if (longueur < 2) {
        return *this;
    }
    _Assure(longueur);
    char16_t* d = _UnitesModifiables();
    std::reverse(d, d + longueur);
    // Les paires de demi-codets gardent leur ordre.
    for (unsigned long i = 0; i + 1 < longueur; ++i) {
        if (d[i] >= 0xDC00 && d[i] <= 0xDFFF && d[i + 1] >= 0xD800 && d[i + 1] <= 0xDBFF) {
            std::swap(d[i], d[i + 1]);
            ++i;
        }
    }
    return *this;
}

ChaineN& ChaineN::NettoieBlancs()
{
    detail::Etendue const reste = detail::SansBlancsAuxBords(_Etendue());
    return SousChaine(static_cast<unsigned long>(reste.data() - _Etendue().data()), reste.size());
}

ChaineN& ChaineN::ConsolideBlancs()
{
    return _Remets(detail::ConsolideBlancs);
}

ChaineN& ChaineN::ConsolideBlancsMemeTypes()
{
    unsigned long const longueur = Longueur();
    auto const doublon = [this](unsigned long i) {
        return i > 0 && _Unites()[i] == _Unites()[i - 1] && detail::EstBlanc(_Unites()[i]);
    };
    unsigned long i = 0;
    while (i < longueur && !doublon(i)) {
        ++i;
    }
    if (i == longueur) {
        return *this;
    }
    ChaineN resultat(_Unites(), i);
    for (; i < longueur; ++i) {
        if (!doublon(i)) {
            resultat.AjouteFin(_Unites()[i]);
        }
    }
    return *this = std::move(resultat);
}

// Casse

namespace {

// Majuscules et lettres de titre comptent comme capitales.
constexpr std::uint16_t kMajusculeOuTitre = kCarMajuscule | kCarCasseTitre;
constexpr std::uint16_t kMinusculeOuTitre = kCarMinuscule | kCarCasseTitre;

} // namespace

bool ChaineN::EstToutEnMinuscules() const noexcept
{
    return !detail::PorteClasse(_Etendue(), kMajusculeOuTitre);
}

bool ChaineN::EstToutEnMajuscules() const noexcept
{
    return !detail::PorteClasse(_Etendue(), kMinusculeOuTitre);
}

bool ChaineN::EstToutEnMajusculesSaufDerniereLettre() const noexcept
{
    return Longueur() >= 2 &&
           !detail::PorteClasse(_Etendue().substr(0, Longueur() - 1), kMinusculeOuTitre) &&
           ContientMajuscule();
}

bool ChaineN::ContientMajuscule() const noexcept
{
    return detail::PorteClasse(_Etendue(), kMajusculeOuTitre);
}

bool ChaineN::CommenceParMajuscule() const noexcept
{
    return !EstVide() && (detail::Mot(_Unites()[0], kInfoClasseLettre) & kMajusculeOuTitre);
}

} // namespace sdd
