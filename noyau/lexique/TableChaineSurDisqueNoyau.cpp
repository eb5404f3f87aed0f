#include "noyau/lexique/TableChaineSurDisqueNoyau.h"

#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/Flux.h"
#include "noyau/flux/VarElias.h"
#include "noyau/lexique/TableChaineNoyau.h"
#include "noyau/lexique/detail/EnregistrementTrie.h"
#include "noyau/lexique/detail/LanceTableNonValide.h"

#include <limits>

namespace sdd {

using Noeud = TableChaineNoyau::Noeud;

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
    std::uint64_t const base = flux->DonnePosition();
    auto* const memoire = dynamic_cast<FluxEntreeMemoire*>(flux);
    std::uint64_t const limite =
        memoire ? memoire->DonneTaille() : std::numeric_limits<unsigned int>::max();
    if (base + entete.longueur > limite) {
        detail::LanceTableNonValide(detail::kZoneTropLongue);
    }
    _flux = flux;
    _memoire = memoire;
    _base = static_cast<std::uint32_t>(base);
    _nombre = entete.nombre;
    _longueur = entete.longueur;
    _racine = entete.racine;
    _positionsCompactes = entete.positionsCompactes;
}

bool TableChaineSurDisqueNoyau::PlacePourChaine(ChaineN const& chaine,
                                                unsigned long position) const
{
    if (_flux == nullptr) {
        throw exceptions::OperationInvalide();
    }
    unsigned char const* zone = nullptr;
    if (_memoire != nullptr) {
        // Reprise à chaque question : le flux a pu changer de bloc depuis Init.
        if (std::uint64_t(_base) + _longueur > _memoire->DonneTaille()) {
            detail::LanceTableNonValide(detail::kZoneTropLongue);
        }
        _memoire->Positionne(_base);
        zone = _memoire->Ptr();
    }
    std::u16string_view clef(chaine.PreteUniCString(), chaine.Longueur());
    // Garde contre les liens qui bouclent : un chemin dans un arbre écrit ne lit jamais plus
    // d'octets que la zone n'en a. Le coût est une addition par enregistrement.
    std::uint64_t lus = 0;
    for (;;) {
        if (position >= _longueur) {
            detail::LanceTableNonValide(detail::kPositionHorsZone);
        }
        auto const p = static_cast<std::uint32_t>(position);
        auto const e = zone ? detail::LisEnregistrement(zone + p, zone + _longueur, _longueur,
                                                        _positionsCompactes)
                            : _LisDuFlux(p);
        lus += e.taille;
        if (lus > _longueur) {
            detail::LanceTableNonValide(detail::kBoucle);
        }
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
    }
}

// Copie l'enregistrement depuis le flux, sans dépasser la zone : la suite jusqu'à son zéro,
// puis de quoi contenir les drapeaux et deux liens.
detail::EnregistrementNoeud TableChaineSurDisqueNoyau::_LisDuFlux(std::uint32_t position) const
{
    constexpr unsigned int kApresSuite = 1 + 2 * VarElias::kLongueurMax;
    _flux->Positionne(_base + position);
    std::uint32_t reste = _longueur - position;
    _enregistrement.clear();
    bool zero = false;
    while (reste > 0 && !zero && !_flux->EstALaFin()) {
        _enregistrement.push_back(_flux->Donne());
        zero = _enregistrement.back() == 0;
        --reste;
    }
    for (unsigned int i = 0; i < kApresSuite && reste > 0 && !_flux->EstALaFin(); ++i, --reste) {
        _enregistrement.push_back(_flux->Donne());
    }
    unsigned char const* const debut = _enregistrement.data();
    return detail::LisEnregistrement(debut, debut + _enregistrement.size(), _longueur,
                                     _positionsCompactes);
}

} // namespace sdd
