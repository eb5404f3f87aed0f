#include "noyau/lexique/SerialiseurTableChaine.h"

#include "noyau/chaines/ConvertisseurChaineN.h"
#include "noyau/chaines/detail/UTF8.h"
#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/TamponMemoire.h"
#include "noyau/flux/VarElias.h"
#include "noyau/lexique/detail/EnregistrementTrie.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace sdd {

using Noeud = TableChaineNoyau::Noeud;

namespace {

// La zone entière, lue par morceaux : une longueur annoncée démesurée n'alloue pas plus que ce
// que le flux contient vraiment.
std::vector<unsigned char> LisZone(FluxEntree& flux, std::uint32_t longueur)
{
    constexpr std::size_t kMorceau = 1 << 16;
    std::vector<unsigned char> zone;
    while (zone.size() < longueur) {
        std::size_t const debut = zone.size();
        std::size_t const n = std::min<std::size_t>(longueur - debut, std::max(debut, kMorceau));
        zone.resize(debut + n);
        if (flux.Donne(static_cast<unsigned int>(n), zone.data() + debut) != n) {
            throw exceptions::TableNonValide(UniChaine(detail::kZoneTropLongue));
        }
    }
    return zone;
}

} // namespace

unsigned int Serialiseur<TableChaineNoyau>::Ecris(FluxSortie& flux, TableChaineNoyau const& table)
{
    unsigned int const debut = flux.DonnePosition();
    TamponMemoire zone(256);
    std::uint32_t racine = 0;
    if (table._racine != nullptr) {
        racine = SerialiseDansTampon(*table._racine, zone);
    } else { // garde : table sans racine, écrite comme une racine vide
        zone.Mets(0);
        zone.Mets(0);
    }
    std::uint32_t const longueur = zone.DonneTaille();
    if (longueur > VarElias::kValeurMax) { // avant d'écrire quoi que ce soit
        exceptions::LanceIndexHorsBorne(longueur, 0, VarElias::kValeurMax);
    }
    Serialiseur<std::uint16_t>::Ecris(flux, TableChaineNoyau::kVersionTableTrie);
    Serialiseur<std::uint32_t>::Ecris(flux, table._nombre);
    VarElias::Ecris(flux, racine);
    VarElias::Ecris(flux, longueur);
    flux.Mets(zone.DonneDonnees(), longueur);
    return debut;
}

unsigned int Serialiseur<TableChaineNoyau>::SerialiseDansTampon(Noeud& noeud, FluxSortie& zone)
{
    // Ordre postfixe sans récursion : chaque cadre attend le sous-arbre de son enfant, puis la
    // chaîne de ses frères suivants.
    struct Cadre
    {
        Noeud* noeud;
        int etape;
        std::uint32_t enfant;
    };
    std::vector<Cadre> pile{{&noeud, 0, 0}};
    std::uint32_t rendue = 0; // position du dernier enregistrement écrit
    while (!pile.empty()) {
        Cadre& c = pile.back();
        Noeud* const n = c.noeud;
        if (c.etape == 0) {
            c.etape = 1;
            if (n->_premierEnfant != nullptr) {
                pile.push_back({n->_premierEnfant, 0, 0});
                continue;
            }
        }
        if (c.etape == 1) {
            c.etape = 2;
            c.enfant = rendue;
            if (n->_suivant != nullptr) {
                pile.push_back({n->_suivant, 0, 0});
                continue;
            }
        }
        rendue = _EcrisEnregistrement(*n, zone, c.enfant, rendue);
        pile.pop_back();
    }
    return rendue;
}

unsigned int Serialiseur<TableChaineNoyau>::_EcrisEnregistrement(Noeud& n, FluxSortie& zone,
                                                                 std::uint32_t enfant,
                                                                 std::uint32_t suivant)
{
    // Les drapeaux du nœud en mémoire sont réécrits, les autres bits effacés : volontaire.
    n._drapeaux = (n._drapeaux & Noeud::kTerminal) | (n._premierEnfant ? Noeud::kAEnfant : 0) |
                  (n._suivant ? Noeud::kASuivant : 0);
    unsigned int const position = zone.DonnePosition();
    std::u16string_view const cars = n.Cars();
    ConvertisseurChaineN::DonnePourCodage(ChaineN::kUTF8).EcrisUnites(zone, cars.data(),
                                                                       cars.size());
    zone.Mets(0);
    zone.Mets(static_cast<unsigned char>(n._drapeaux));
    if (n._premierEnfant != nullptr) {
        VarElias::Ecris(zone, enfant);
    }
    if (n._suivant != nullptr) {
        VarElias::Ecris(zone, suivant);
    }
    if (n.EstTerminal()) {
        n.EcrisDonnees(zone);
    }
    return position;
}

void Serialiseur<TableChaineNoyau>::Lis(FluxEntree& flux, TableChaineNoyau* table)
{
    auto const entete = detail::LisEnTeteTrie(flux);
    std::vector<unsigned char> octets = LisZone(flux, entete.longueur);
    TamponMemoire zone(reinterpret_cast<char*>(octets.data()), static_cast<int>(octets.size()),
                       false);
    Noeud* const racine = table->CreeNoeud(kChaineNNulle);
    delete table->_racine;
    table->_racine = racine;
    table->_nombre = 0;
    unsigned int lues = 0;
    try {
        DeserialiseDuTampon(*racine, zone, entete.racine, entete.positionsCompactes, &lues);
    } catch (...) {
        table->_nombre = lues;
        throw;
    }
    table->_nombre = lues;
    if (lues != entete.nombre) {
        throw exceptions::TableNonValide(UniChaine("Nombre de chaines incohérent"));
    }
}

// Les enregistrements lus ne peuvent ensemble dépasser la zone : c'est vrai de tout arbre
// écrit, et cela borne le travail sur une zone dont les liens bouclent ou se recoupent.
struct Serialiseur<TableChaineNoyau>::_Lecture
{
    TamponMemoire& zone;
    bool compactes;
    std::uint64_t lus = 0;
    std::u16string unites = {};

    void Consomme(std::size_t octets)
    {
        lus += octets;
        if (lus > zone.DonneTaille()) {
            throw exceptions::TableNonValide(UniChaine(detail::kBoucle));
        }
    }
};

void Serialiseur<TableChaineNoyau>::DeserialiseDuTampon(Noeud& noeud, TamponMemoire& zone,
                                                        unsigned long position,
                                                        bool positionsCompactes,
                                                        unsigned int* nombre)
{
    // Ordre préfixe sans récursion : un nœud, le sous-arbre de son enfant, puis ses frères.
    struct Tache
    {
        unsigned long position;
        Noeud** lien;
    };
    std::vector<Tache> pile;
    auto const empile = [&pile](Noeud& n, detail::EnregistrementNoeud const& e) {
        if (e.drapeaux & Noeud::kASuivant) {
            pile.push_back({e.suivant, &n._suivant});
        }
        if (e.drapeaux & Noeud::kAEnfant) {
            pile.push_back({e.enfant, &n._premierEnfant});
        }
    };
    _Lecture lecture{zone, positionsCompactes};
    auto const compte = [nombre](Noeud const& n) { *nombre += n.EstTerminal() ? 1 : 0; };
    auto const e = _Remplis(noeud, lecture, position);
    compte(noeud);
    empile(noeud, e);
    while (!pile.empty()) {
        Tache const t = pile.back();
        pile.pop_back();
        std::unique_ptr<Noeud> n(noeud.NouveauNoeud());
        auto const en = _Remplis(*n, lecture, t.position);
        *t.lien = n.release(); // rattaché seulement une fois lu en entier
        compte(**t.lien);
        empile(**t.lien, en);
    }
}

detail::EnregistrementNoeud Serialiseur<TableChaineNoyau>::_Remplis(Noeud& n, _Lecture& lecture,
                                                                   unsigned long position)
{
    std::uint32_t const longueur = lecture.zone.DonneTaille();
    if (position >= longueur) {
        throw exceptions::TableNonValide(UniChaine(detail::kPositionHorsZone));
    }
    unsigned char const* const octets = lecture.zone.DonneDonnees();
    auto const e =
        detail::LisEnregistrement(octets + position, octets + longueur, longueur, lecture.compactes);
    lecture.Consomme(e.taille);
    lecture.unites.resize(e.nbOctets);
    lecture.unites.resize(detail::DecodeUTF8(reinterpret_cast<char const*>(e.cars), e.nbOctets,
                                             lecture.unites.data()));
    n._MetsCars(lecture.unites);
    if (e.drapeaux & Noeud::kTerminal) {
        auto const debut = static_cast<unsigned int>(position + e.taille);
        lecture.zone.Positionne(debut);
        n.LisDonnees(lecture.zone);
        lecture.Consomme(std::max(lecture.zone.DonnePosition(), debut) - debut);
    }
    n._drapeaux = e.drapeaux; // terminal seulement avec sa donnée lue
    return e;
}

} // namespace sdd
