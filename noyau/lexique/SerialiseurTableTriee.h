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
// bit 2 fils droit), ses sous-arbres, enfin ses données. Les couleurs sont relues telles
// quelles, sans rééquilibrage.
template <> class NOYAU_EXPORT Serialiseur<TableTrieeNoyau>
{
public:
    static constexpr std::uint16_t kVersion = 100;

    // Renvoie la position du flux avant l'écriture.
    static unsigned int Ecris(FluxSortie& flux, TableTrieeNoyau const& table,
                              SerialiseurNoeudRNNoyau* ecrivain);
    // Vide la table puis la relit. Une forme abîmée lève TableNonValide ou
    // ErreurDeserialisation et laisse la table vide.
    static void Lis(FluxEntree& flux, TableTrieeNoyau* table, DeserialiseurNoeudRNNoyau* lecteur);

private:
    struct Lecture;
    using Noeud = TableTrieeNoyau::NoeudRNNoyau;

    static void SerialiseDansTampon(Noeud const* noeud, FluxSortie& flux,
                                    SerialiseurNoeudRNNoyau* ecrivain);
    // Renvoie la hauteur noire du sous-arbre lu (une feuille absente compte 1).
    static unsigned int DeserialiseDuTampon(Noeud* noeud, Noeud* parent, Lecture& lecture,
                                            unsigned int profondeur);
};

} // namespace sdd
