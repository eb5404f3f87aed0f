#pragma once

#include "noyau/Export.h"
#include "noyau/flux/Serialiseur.h"
#include "noyau/lexique/TableChaineNoyau.h"

namespace sdd {

class TamponMemoire;

namespace detail {
struct EnregistrementNoeud;
}

// Forme sérialisée d'une table de chaînes (voir docs/formats.md) : version, nombre de chaînes,
// position de la racine et longueur de la zone, puis la zone des enregistrements, écrits en
// ordre postfixe (tout lien désigne un enregistrement antérieur).
template <> class NOYAU_EXPORT Serialiseur<TableChaineNoyau>
{
public:
    using Noeud = TableChaineNoyau::Noeud;

    // Écrit la version 110. Réécrit au passage les drapeaux des nœuds (voir
    // SerialiseDansTampon).
    static unsigned int Ecris(FluxSortie& flux, TableChaineNoyau const& table);
    // Lit la version 110 ou 100. Un en-tête refusé laisse la table intacte ; une zone abîmée
    // laisse dans la table les nœuds déjà lus, comptés par Taille().
    static void Lis(FluxEntree& flux, TableChaineNoyau* table);

    // Écrit le sous-arbre du nœud (enfants, puis frères suivants, puis le nœud) dans la zone ;
    // renvoie la position de l'enregistrement du nœud.
    static unsigned int SerialiseDansTampon(Noeud& noeud, FluxSortie& zone);
    // Remplit le nœud et ses descendants depuis l'enregistrement à cette position de la zone ;
    // *nombre compte au fur et à mesure les nœuds terminaux remplis.
    static void DeserialiseDuTampon(Noeud& noeud, TamponMemoire& zone, unsigned long position,
                                    bool positionsCompactes, unsigned int* nombre);

private:
    struct _Lecture;

    static detail::EnregistrementNoeud _Remplis(Noeud& n, _Lecture& lecture,
                                                unsigned long position);
    static unsigned int _EcrisEnregistrement(Noeud& noeud, FluxSortie& zone,
                                             std::uint32_t enfant, std::uint32_t suivant);
};

} // namespace sdd
