#include "noyau/lexique/SerialiseurTableTriee.h"

#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/VarElias.h"
#include "noyau/lexique/detail/LanceTableNonValide.h"

#include <memory>

namespace sdd {

namespace {

enum Indicateurs : unsigned char {
    kNoir = 1,
    kFilsGauche = 2,
    kFilsDroit = 4,
};

// Un arbre rouge-noir valide de moins de 2^32 nœuds a moins de 64 niveaux : au-delà, la
// forme est fausse et la pile ne doit pas en souffrir.
constexpr unsigned int kProfondeurMax = 64;

} // namespace

SerialiseurNoeudRNNoyau::~SerialiseurNoeudRNNoyau() = default;
DeserialiseurNoeudRNNoyau::~DeserialiseurNoeudRNNoyau() = default;

struct Serialiseur<TableTrieeNoyau>::Lecture
{
    FluxEntree& flux;
    DeserialiseurNoeudRNNoyau* lecteur;
    std::uint32_t attendus;
    std::uint32_t lus;
};

unsigned int Serialiseur<TableTrieeNoyau>::Ecris(FluxSortie& flux, TableTrieeNoyau const& table,
                                                 SerialiseurNoeudRNNoyau* ecrivain)
{
    unsigned int const debut = flux.DonnePosition();
    Serialiseur<std::uint16_t>::Ecris(flux, kVersion);
    VarElias::Ecris(flux, table._nombre);
    if (table._nombre != 0) {
        SerialiseDansTampon(table._racine, flux, ecrivain);
    }
    return debut;
}

void Serialiseur<TableTrieeNoyau>::SerialiseDansTampon(Noeud const* noeud, FluxSortie& flux,
                                                       SerialiseurNoeudRNNoyau* ecrivain)
{
    // Indicateurs avant les sous-arbres, données après : l'ordre du format.
    unsigned char const indicateurs = (noeud->EstNoir() ? kNoir : 0) |
                                      (noeud->_gauche != nullptr ? kFilsGauche : 0) |
                                      (noeud->_droite != nullptr ? kFilsDroit : 0);
    flux.Mets(indicateurs);
    if (noeud->_gauche != nullptr) {
        SerialiseDansTampon(noeud->_gauche, flux, ecrivain);
    }
    if (noeud->_droite != nullptr) {
        SerialiseDansTampon(noeud->_droite, flux, ecrivain);
    }
    ecrivain->EcrisNoeud(noeud, flux);
}

void Serialiseur<TableTrieeNoyau>::Lis(FluxEntree& flux, TableTrieeNoyau* table,
                                       DeserialiseurNoeudRNNoyau* lecteur)
{
    table->Vide();
    std::uint16_t version;
    Serialiseur<std::uint16_t>::Lis(flux, &version);
    if (version != kVersion) {
        detail::LanceTableNonValide("Version non gérée");
    }
    Lecture lecture{flux, lecteur, VarElias::Lis(flux), 0};
    if (lecture.attendus == 0) {
        return;
    }
    // L'arbre n'est rattaché qu'entier et vérifié : un échec laisse la table vide.
    std::unique_ptr<Noeud> racine(table->CreeNoeudVide());
    DeserialiseDuTampon(racine.get(), nullptr, lecture, 0);
    if (racine->EstRouge()) {
        detail::LanceTableNonValide("Racine rouge");
    }
    if (lecture.lus != lecture.attendus) {
        detail::LanceTableNonValide("Nombre d’entrées différent du nombre de nœuds");
    }
    table->_racine = racine.release();
    table->_nombre = lecture.attendus;
}

unsigned int Serialiseur<TableTrieeNoyau>::DeserialiseDuTampon(Noeud* noeud, Noeud* parent,
                                                                Lecture& lecture,
                                                                unsigned int profondeur)
{
    if (profondeur >= kProfondeurMax) {
        detail::LanceTableNonValide("Arbre trop profond");
    }
    if (++lecture.lus > lecture.attendus) {
        detail::LanceTableNonValide("Nombre d’entrées différent du nombre de nœuds");
    }
    unsigned char indicateurs;
    detail::LisOctets(lecture.flux, &indicateurs, 1);
    if ((indicateurs & ~(kNoir | kFilsGauche | kFilsDroit)) != 0) {
        detail::LanceTableNonValide("Indicateurs de nœud inconnus");
    }
    noeud->MetsParent(parent);
    if ((indicateurs & kNoir) != 0) {
        noeud->MetsEstNoir();
    }
    unsigned int hauteurGauche = 1;
    unsigned int hauteurDroite = 1;
    if ((indicateurs & kFilsGauche) != 0) {
        noeud->_gauche = noeud->NouveauNoeud();
        hauteurGauche = DeserialiseDuTampon(noeud->_gauche, noeud, lecture, profondeur + 1);
    }
    if ((indicateurs & kFilsDroit) != 0) {
        noeud->_droite = noeud->NouveauNoeud();
        hauteurDroite = DeserialiseDuTampon(noeud->_droite, noeud, lecture, profondeur + 1);
    }
    // Les opérations supposent un arbre rouge-noir : une forme qui ne l'est pas est refusée.
    if (hauteurGauche != hauteurDroite) {
        detail::LanceTableNonValide("Hauteurs noires différentes");
    }
    if (noeud->EstRouge() && (TableTrieeNoyau::NoeudRNEstRouge(noeud->_gauche) ||
                              TableTrieeNoyau::NoeudRNEstRouge(noeud->_droite))) {
        detail::LanceTableNonValide("Nœud rouge à enfant rouge");
    }
    lecture.lecteur->LisNoeud(noeud, lecture.flux);
    return hauteurGauche + (noeud->EstNoir() ? 1 : 0);
}

} // namespace sdd
