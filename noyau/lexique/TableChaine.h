#pragma once

#include "noyau/Export.h"
#include "noyau/lexique/TableChaineNoyau.h"

namespace sdd {

// Table de chaînes sans donnée : ses nœuds n'écrivent ni ne lisent rien de plus que la forme
// commune.
class NOYAU_EXPORT TableChaine : public TableChaineNoyau
{
public:
    TableChaine() { Vide(); }
    TableChaine(TableChaine const&) = default;
    TableChaine& operator=(TableChaine const&) = default;
    ~TableChaine() override;

protected:
    Noeud* CreeNoeud(ChaineN const& cars) const override;
};

} // namespace sdd
