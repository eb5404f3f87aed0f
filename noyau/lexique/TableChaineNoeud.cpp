#include "noyau/erreurs/Exceptions.h"
#include "noyau/lexique/TableChaineNoyau.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>
#include <vector>

namespace sdd {

using Noeud = TableChaineNoyau::Noeud;

Noeud::Noeud(ChaineN const& cars)
{
    MetsCars(cars);
}

Noeud::~Noeud()
{
    _LibereCars();
    // Les nœuds à détruire forment une seule liste par leurs liens de frère, où chaque chaîne
    // de frères entre telle quelle : aucune récursion, quelle que soit la forme de l'arbre.
    Noeud* aDetruire = nullptr;
    auto const ajoute = [&aDetruire](Noeud* chaine) {
        if (chaine == nullptr) {
            return;
        }
        Noeud* dernier = chaine;
        while (dernier->_suivant != nullptr) {
            dernier = dernier->_suivant;
        }
        dernier->_suivant = aDetruire;
        aDetruire = chaine;
    };
    ajoute(_suivant);
    ajoute(_premierEnfant);
    while (aDetruire != nullptr) {
        Noeud* const n = aDetruire;
        aDetruire = n->_suivant;
        ajoute(n->_premierEnfant);
        n->_suivant = nullptr;
        n->_premierEnfant = nullptr;
        delete n;
    }
}

void Noeud::_MetsCars(std::u16string_view debut, std::u16string_view fin)
{
    _PoseCars(debut, fin, _AlloueCars(debut.size() + fin.size()));
}

std::unique_ptr<char16_t[]> Noeud::_AlloueCars(std::size_t n)
{
    if (n > std::numeric_limits<std::uint32_t>::max()) {
        exceptions::LanceIndexHorsBorne(n, 0, std::numeric_limits<std::uint32_t>::max());
    }
    return std::unique_ptr<char16_t[]>(n > kCourt ? new char16_t[n] : nullptr);
}

void Noeud::_PoseCars(std::u16string_view debut, std::u16string_view fin,
                      std::unique_ptr<char16_t[]> tas) noexcept
{
    std::size_t const n = debut.size() + fin.size();
    // Les unités sont copiées avant de libérer l'ancienne suite, dont elles peuvent venir.
    char16_t court[kCourt];
    char16_t* const dest = tas ? tas.get() : court;
    std::copy(debut.begin(), debut.end(), dest);
    std::copy(fin.begin(), fin.end(), dest + debut.size());
    _LibereCars();
    if (n > kCourt) {
        _long = tas.release();
    } else {
        std::copy_n(court, n, _court);
    }
    _longueur = static_cast<std::uint32_t>(n);
}

void Noeud::_CoupeCars(unsigned long n) noexcept
{
    if (n >= _longueur) {
        return;
    }
    if (_longueur > kCourt && n <= kCourt) {
        char16_t* const ancien = _long;
        std::copy_n(ancien, n, _court);
        delete[] ancien;
    }
    // Plus longue que kCourt, la suite garde son bloc, un peu trop grand.
    _longueur = static_cast<std::uint32_t>(n);
}

void Noeud::_LibereCars() noexcept
{
    if (_longueur > kCourt) {
        delete[] _long;
    }
    _longueur = 0;
}

Noeud* Noeud::Clone() const
{
    struct Tache
    {
        Noeud const* source;
        Noeud** lien;
    };
    Noeud* copie = nullptr;
    std::vector<Tache> pile{{this, &copie}};
    try {
        while (!pile.empty()) {
            Tache const t = pile.back();
            pile.pop_back();
            Noeud* const n = t.source->NouveauNoeud();
            *t.lien = n; // rattaché d'abord : une exception n'en perd aucun
            n->_MetsCars(t.source->Cars());
            n->_drapeaux = t.source->_drapeaux;
            n->PrendsDonnees(*t.source);
            if (t.source->_suivant != nullptr) {
                pile.push_back({t.source->_suivant, &n->_suivant});
            }
            if (t.source->_premierEnfant != nullptr) {
                pile.push_back({t.source->_premierEnfant, &n->_premierEnfant});
            }
        }
    } catch (...) {
        delete copie;
        throw;
    }
    return copie;
}

void Noeud::TransfereFeuilles(Noeud& o)
{
    _drapeaux = o._drapeaux;
    PrendsDonnees(o);
    o.VideDonnees();
    o._drapeaux = 0;
}

void Noeud::RappatrieEnfant()
{
    Noeud* const enfant = _premierEnfant;
    if (enfant == nullptr || enfant->_suivant != nullptr) { // garde : pas d'enfant unique
        return;
    }
    // Tout ce qui peut échouer d'abord : l'allocation de la suite, puis la copie de la donnée.
    std::unique_ptr<char16_t[]> tas = _AlloueCars(std::size_t(_longueur) + enfant->_longueur);
    PrendsDonnees(*enfant);
    _PoseCars(Cars(), enfant->Cars(), std::move(tas));
    _drapeaux = enfant->_drapeaux;
    _premierEnfant = enfant->_premierEnfant;
    enfant->_premierEnfant = nullptr;
    delete enfant;
}

} // namespace sdd
