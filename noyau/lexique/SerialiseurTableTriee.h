#pragma once

#include "noyau/Export.h"
#include "noyau/flux/Serialiseur.h"
#include "noyau/lexique/TableTrieeNoyau.h"

#include <cstdint>

namespace sdd {

// Écrit la clé et la valeur d'un nœud ; fourni par qui connaît leurs types.
class NOYAU_EXPORT SerialiseurNoeudRNNoyau
{
public:
    virtual ~SerialiseurNoeudRNNoyau();
    virtual void EcrisNoeud(TableTrieeNoyau::NoeudRNNoyau const* noeud, FluxSortie& flux) = 0;
};

// Lit la clé et la valeur dans un nœud vide.
class NOYAU_EXPORT DeserialiseurNoeudRNNoyau
{
public:
    virtual ~DeserialiseurNoeudRNNoyau();
    virtual void LisNoeud(TableTrieeNoyau::NoeudRNNoyau* noeud, FluxEntree& flux) = 0;
};

// Forme écrite : version 100 sur deux octets petit-boutistes, nombre d'entrées en VarElias,
// puis l'arbre : pour chaque nœud un octet d'indicateurs (bit 0 noir, bit 1 fils gauche,
// bit 2 fils droit), ses sous-arbres, enfin ses données. La lecture reprend tout tel quel :
// compte, forme et couleurs, sans rien vérifier ni rééquilibrer.
template <> class NOYAU_EXPORT Serialiseur<TableTrieeNoyau>
{
public:
    static constexpr std::uint16_t kVersion = 100;

    // Renvoie la position du flux avant l'écriture.
    static unsigned int Ecris(FluxSortie& flux, TableTrieeNoyau const& table,
                              SerialiseurNoeudRNNoyau* ecrivain);
    // Vide la table puis la relit. Une autre version lève TableNonValide et laisse la table
    // vide ; un échec plus loin (flux épuisé, données illisibles) laisse le compte lu et
    // les nœuds lus jusque-là, rattachés à la table.
    static void Lis(FluxEntree& flux, TableTrieeNoyau* table, DeserialiseurNoeudRNNoyau* lecteur);

    // Le sous-arbre de noeud : indicateurs en préordre, données en postordre.
    static void SerialiseDansTampon(TableTrieeNoyau::NoeudRNNoyau const* noeud, FluxSortie& flux,
                                    SerialiseurNoeudRNNoyau* ecrivain);
    // Lit dans noeud, rattaché à parent, un sous-arbre écrit par SerialiseDansTampon ; chaque
    // enfant est créé par NouveauNoeud et rattaché avant d'être lu.
    static void DeserialiseDuTampon(TableTrieeNoyau::NoeudRNNoyau* noeud, FluxEntree& flux,
                                    TableTrieeNoyau::NoeudRNNoyau* parent,
                                    DeserialiseurNoeudRNNoyau* lecteur);
};

} // namespace sdd
