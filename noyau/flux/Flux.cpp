#include "noyau/flux/Flux.h"

namespace sdd {

Flux::~Flux() = default;

bool FluxEntree::DonneFluxSortie(FluxSortie& sortie, unsigned int n)
{
    unsigned int copies = 0;
    bool fin = EstALaFin();
    while (!fin && (n == kTout || copies < n)) {
        sortie.Mets(Donne());
        ++copies;
        fin = EstALaFin();
    }
    return fin;
}

bool FluxSortie::MetsFluxEntree(FluxEntree& entree, unsigned int n)
{
    return entree.DonneFluxSortie(*this, n);
}

} // namespace sdd
