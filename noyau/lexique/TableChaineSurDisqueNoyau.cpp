#include "noyau/lexique/TableChaineSurDisqueNoyau.h"

#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/Flux.h"
#include "noyau/lexique/TableChaineNoyau.h"
#include "noyau/lexique/detail/EnregistrementTrie.h"
#include "noyau/lexique/detail/LanceTableNonValide.h"

#include <limits>
#include <string_view>

namespace sdd {

using Noeud = TableChaineNoyau::Noeud;

namespace {

// Un chemin de consultation est fixé par son état (position, longueur du reste de la clef) :
// un état qui revient, et le chemin ne finirait pas. Détection de Brent : l'état est comparé à
// un repère, déplacé à chaque puissance de deux pas ; une boucle est vue en peu de pas de plus
// qu'il n'en faut pour y entrer et en faire le tour, sans fausse alerte, pour le prix d'une
// comparaison par enregistrement.
class GardeBoucle
{
public:
    GardeBoucle(std::uint64_t position, std::size_t reste) : _position(position), _reste(reste) {}

    void Pas(std::uint64_t position, std::size_t reste)
    {
        if (position == _position && reste == _reste) {
            detail::LanceTableNonValide(detail::kBoucle);
        }
        if (++_pas == _palier) {
            _position = position;
            _reste = reste;
            _palier *= 2;
            _pas = 0;
        }
    }

private:
    std::uint64_t _position;
    std::size_t _reste;
    std::uint64_t _pas = 0;
    std::uint64_t _palier = 1;
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
    GardeBoucle garde(position, clef.size());
    for (;;) {
        auto const e = lecteur.Lis(position);
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
