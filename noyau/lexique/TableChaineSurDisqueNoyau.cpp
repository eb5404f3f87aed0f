#include "noyau/lexique/TableChaineSurDisqueNoyau.h"

#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/Flux.h"
#include "noyau/lexique/TableChaineNoyau.h"
#include "noyau/lexique/detail/EnregistrementTrie.h"
#include "noyau/lexique/detail/LanceTableNonValide.h"

#include <algorithm>
#include <limits>
#include <string_view>

namespace sdd {

using Noeud = TableChaineNoyau::Noeud;

namespace {

// Gardes d'un chemin de consultation.
// - Boucle : le chemin est fixé par son état (position, longueur du reste de la clef) ; un
//   état qui revient, et il ne finirait pas. Détection de Brent : l'état est comparé à un
//   repère déplacé à chaque puissance de deux pas ; une boucle est vue peu après qu'on y est
//   entré, sans fausse alerte.
// - Longueur : dans un arbre écrit, un chemin lit chaque enregistrement une fois au plus, soit
//   moins d'octets que l'étendue lue. Un chemin qui repasse par les mêmes enregistrements en
//   raccourcissant la clef finit, mais peut relire la forme entière par unité de la clef : il
//   est refusé dès qu'il a lu plus que l'étendue plus kOctetsParUnite par unité de la clef
//   (ce qu'un enregistrement enfant de lui-même lit pour chaque unité qu'il consomme).
class GardeChemin
{
public:
    GardeChemin(std::uint64_t position, std::size_t reste)
        : _repere(position), _reste(reste), _permis(kOctetsParUnite * (std::uint64_t(reste) + 1))
    {
    }

    void Pas(std::uint64_t position, std::size_t reste)
    {
        if (position == _repere && reste == _reste) {
            detail::LanceTableNonValide(detail::kBoucle);
        }
        if (++_pas == _palier) {
            _repere = position;
            _reste = reste;
            _palier *= 2;
            _pas = 0;
        }
    }

    void Lu(std::uint64_t position, std::size_t taille)
    {
        _etendue = std::max(_etendue, position + taille);
        _lus += taille;
        if (_lus > _etendue + _permis) {
            detail::LanceTableNonValide(detail::kCheminTropLong);
        }
    }

private:
    // Suite d'une unité (trois octets au plus), zéro, drapeaux et deux liens.
    static constexpr std::uint64_t kOctetsParUnite = 13;

    std::uint64_t _repere;
    std::size_t _reste;
    std::uint64_t _pas = 0;
    std::uint64_t _palier = 1;
    std::uint64_t const _permis;
    std::uint64_t _etendue = 0;
    std::uint64_t _lus = 0;
};

} // namespace

TableChaineSurDisqueNoyau::TableChaineSurDisqueNoyau(FluxEntree* flux, unsigned long position)
{
    Init(flux, position);
}

void TableChaineSurDisqueNoyau::Init(FluxEntree* flux, unsigned long position)
{
    if (flux == nullptr || position > std::numeric_limits<unsigned int>::max()) {
        throw exceptions::OperationInvalide();
    }
    flux->Positionne(static_cast<unsigned int>(position));
    auto const entete = detail::LisEnTeteTrie(*flux);
    _flux = flux;
    _memoire = dynamic_cast<FluxEntreeMemoire*>(flux);
    _base = flux->DonnePosition();
    _nombre = entete.nombre;
    _longueur = entete.longueur;
    _racine = entete.racine;
    _positionsCompactes = entete.positionsCompactes;
}

bool TableChaineSurDisqueNoyau::PlacePourChaine(ChaineN const& chaine, unsigned long position) const
{
    if (_flux == nullptr) {
        throw exceptions::OperationInvalide();
    }
    detail::LecteurEnregistrements lecteur(*_flux, _memoire, _base, _positionsCompactes,
                                           _enregistrement);
    std::u16string_view clef(chaine.PreteUniCString(), chaine.Longueur());
    GardeChemin garde(position, clef.size());
    for (;;) {
        auto const e = lecteur.Lis(position);
        garde.Lu(position, e.taille);
        std::ptrdiff_t const unites = detail::UnitesSiPrefixe(e.cars, e.nbOctets, clef);
        if (unites >= 0 && std::size_t(unites) == clef.size()) {
            return (e.drapeaux & Noeud::kTerminal) != 0;
        }
        // Une descente est définitive : les frères ne sont pas essayés ensuite.
        if (unites >= 0 && (e.drapeaux & Noeud::kAEnfant)) {
            clef.remove_prefix(std::size_t(unites));
            position = e.enfant;
        } else if (e.drapeaux & Noeud::kASuivant) {
            position = e.suivant;
        } else {
            return false;
        }
        garde.Pas(position, clef.size());
    }
}

} // namespace sdd
