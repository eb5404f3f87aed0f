#include "noyau/lexique/SerialiseurTableTriee.h"

#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/VarElias.h"
#include "noyau/lexique/detail/LanceTableNonValide.h"

#include <utility>
#include <vector>

namespace sdd {

namespace {

using Noeud = TableTrieeNoyau::NoeudRNNoyau;

enum Indicateurs : unsigned char
{
    kNoir = 1,
    kFilsGauche = 2,
    kFilsDroit = 4,
};

// Un nœud en cours de lecture : ses indicateurs sont lus, puis son sous-arbre gauche, son
// sous-arbre droit, enfin ses données, comme dans une lecture récursive.
struct NoeudEnLecture
{
    Noeud* noeud;
    unsigned char indicateurs = 0;
    int etape = 0;
};

} // namespace

SerialiseurNoeudRNNoyau::~SerialiseurNoeudRNNoyau() = default;
DeserialiseurNoeudRNNoyau::~DeserialiseurNoeudRNNoyau() = default;

unsigned int Serialiseur<TableTrieeNoyau>::Ecris(FluxSortie& flux, TableTrieeNoyau const& table,
                                                 SerialiseurNoeudRNNoyau* ecrivain)
{
    // Sans racine, pas d'arbre à écrire : un compte lu trop grand, resté après la suppression
    // du dernier nœud, s'écrit 0 pour que la forme reste lisible.
    std::uint32_t const nombre = table._racine != nullptr ? table._nombre : 0;
    if (nombre > VarElias::kValeurMax) { // avant d'écrire quoi que ce soit
        exceptions::LanceIndexHorsBorne(nombre, 0, VarElias::kValeurMax);
    }
    unsigned int const debut = flux.DonnePosition();
    Serialiseur<std::uint16_t>::Ecris(flux, kVersion);
    VarElias::Ecris(flux, nombre);
    if (nombre != 0) {
        SerialiseDansTampon(table._racine, flux, ecrivain);
    }
    return debut;
}

// Sans récursion : un arbre lu peut avoir la profondeur de son nombre de nœuds.
void Serialiseur<TableTrieeNoyau>::SerialiseDansTampon(Noeud const* noeud, FluxSortie& flux,
                                                       SerialiseurNoeudRNNoyau* ecrivain)
{
    std::vector<std::pair<Noeud const*, bool>> pile{{noeud, false}};
    while (!pile.empty()) {
        auto const [courant, sousArbresFaits] = pile.back();
        pile.pop_back();
        if (sousArbresFaits) {
            ecrivain->EcrisNoeud(courant, flux);
            continue;
        }
        unsigned char const indicateurs = (courant->EstNoir() ? kNoir : 0) |
                                          (courant->_gauche != nullptr ? kFilsGauche : 0) |
                                          (courant->_droite != nullptr ? kFilsDroit : 0);
        flux.Mets(indicateurs);
        pile.emplace_back(courant, true);
        if (courant->_droite != nullptr) {
            pile.emplace_back(courant->_droite, false);
        }
        if (courant->_gauche != nullptr) {
            pile.emplace_back(courant->_gauche, false);
        }
    }
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
    // Le compte est gardé tel qu'écrit, jamais recompté : NbEnfants sert à le comparer.
    table->_nombre = VarElias::Lis(flux);
    if (table->_nombre != 0) {
        table->_racine = table->CreeNoeudVide();
        DeserialiseDuTampon(table->_racine, flux, nullptr, lecteur);
    }
}

// Les nœuds sont rattachés à mesure qu'ils sont créés : un échec laisse à la table ce qui a
// été lu, et son destructeur le libère. Les bits d'indicateurs inconnus sont ignorés.
void Serialiseur<TableTrieeNoyau>::DeserialiseDuTampon(Noeud* noeud, FluxEntree& flux,
                                                       Noeud* parent,
                                                       DeserialiseurNoeudRNNoyau* lecteur)
{
    noeud->MetsParent(parent);
    std::vector<NoeudEnLecture> pile{{noeud}};
    while (!pile.empty()) {
        NoeudEnLecture& cadre = pile.back();
        Noeud* const courant = cadre.noeud;
        Noeud** enfant = nullptr;
        switch (cadre.etape++) {
        case 0:
            detail::LisOctets(flux, &cadre.indicateurs, 1);
            if ((cadre.indicateurs & kNoir) != 0) {
                courant->MetsEstNoir();
            }
            enfant = (cadre.indicateurs & kFilsGauche) != 0 ? &courant->_gauche : nullptr;
            break;
        case 1:
            enfant = (cadre.indicateurs & kFilsDroit) != 0 ? &courant->_droite : nullptr;
            break;
        default:
            pile.pop_back();
            lecteur->LisNoeud(courant, flux);
            continue;
        }
        if (enfant != nullptr) {
            *enfant = courant->NouveauNoeud();
            // Son parent est posé dès sa création : même lu à moitié, l'arbre reste cohérent.
            (*enfant)->MetsParent(courant);
            pile.push_back({*enfant});
        }
    }
}

} // namespace sdd
