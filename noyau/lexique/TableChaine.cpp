#include "noyau/lexique/TableChaine.h"

namespace sdd {

namespace {

class NoeudSansDonnee final : public TableChaineNoyau::Noeud
{
public:
    using Noeud::Noeud;

    void VideDonnees() override {}
    void PrendsDonnees(Noeud const&) override {}
    Noeud* NouveauNoeud() const override { return new NoeudSansDonnee; }
    void LisDonnees(FluxEntree&) override {}
    void EcrisDonnees(FluxSortie&) const override {}
};

} // namespace

TableChaine::~TableChaine() = default;

TableChaineNoyau::Noeud* TableChaine::CreeNoeud(ChaineN const& cars) const
{
    return new NoeudSansDonnee(cars);
}

} // namespace sdd
