#pragma once

#include "noyau/Export.h"
#include "noyau/conteneurs/ListeT.h"
#include "noyau/flux/Serialiseur.h"
#include "noyau/lexique/TableChaineNoyau.h"

namespace sdd {

// Forme sérialisée d'une table de chaînes (voir docs/formats.md) : version, nombre de chaînes,
// position de la racine et longueur de la zone, puis la zone des enregistrements, écrits en
// ordre postfixe (tout lien désigne un enregistrement antérieur).
template <> class NOYAU_EXPORT Serialiseur<TableChaineNoyau>
{
public:
    using Noeud = TableChaineNoyau::Noeud;

    // Écrit la version 110. Réécrit au passage les drapeaux des nœuds de la table (voir
    // SerialiseDansTampon) : l'écriture demande donc l'accès exclusif à la table.
    static unsigned int Ecris(FluxSortie& flux, TableChaineNoyau& table);
    // Lit la version 110 ou 100. Un en-tête ou une zone illisibles laissent la table intacte ;
    // au-delà, la table prend le nombre annoncé et, sur une zone abîmée, garde les nœuds déjà
    // lus.
    static void Lis(FluxEntree& flux, TableChaineNoyau* table);

    // Écrit le sous-arbre du nœud (enfants, puis frères suivants, puis le nœud) dans la zone ;
    // renvoie la position de l'enregistrement du nœud.
    static unsigned int SerialiseDansTampon(Noeud& noeud, FluxSortie& zone);
    // Remplit le nœud et ses descendants depuis l'enregistrement à cette position de la zone.
    // positions porte les positions en cours de lecture (ancêtres et frères aînés) : y revenir
    // est une boucle. Elle est rendue comme elle a été reçue.
    static void DeserialiseDuTampon(Noeud& noeud, FluxEntree& zone, unsigned long position,
                                    bool positionsCompactes, ListeC<unsigned long>& positions);

private:
    class _Lecture;

    static unsigned int _EcrisEnregistrement(Noeud& noeud, FluxSortie& zone, std::uint32_t enfant,
                                             std::uint32_t suivant);
};

} // namespace sdd
