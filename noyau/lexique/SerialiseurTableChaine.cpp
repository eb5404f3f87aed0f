#include "noyau/lexique/SerialiseurTableChaine.h"

#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/TamponMemoire.h"
#include "noyau/flux/VarElias.h"
#include "noyau/lexique/detail/EnregistrementTrie.h"
#include "noyau/lexique/detail/LanceTableNonValide.h"

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
            detail::LanceOctetsManquants(detail::kZoneTropLongue);
        }
    }
    return zone;
}

} // namespace

unsigned int Serialiseur<TableChaineNoyau>::Ecris(FluxSortie& flux, TableChaineNoyau& table)
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
    detail::EcrisSuite(zone, n.Cars());
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
    table->_nombre = entete.nombre; // tel qu'annoncé, sans recompter
    ListeC<unsigned long> positions;
    DeserialiseDuTampon(*racine, zone, entete.racine, entete.positionsCompactes, positions);
}

// Lecture en ordre préfixe sans récursion : chaque cadre attend le sous-arbre de son enfant,
// puis la chaîne de ses frères suivants, comme le ferait la lecture récursive dont il garde la
// liste des positions en cours.
//
// Gardes : revenir à une position en cours est une boucle. Un enregistrement atteint par deux
// chemins est lu deux fois ; chaque nœud construit compte les octets qu'il a lus (enregistrement
// et donnée), et le total reste borné par kLusParOctet fois l'étendue de la forme vue. Un arbre
// écrit lit chaque octet une fois au plus : seule une forme dont le partage se multiplie
// atteint la borne, qui tient aussi la mémoire (suites comprises) proportionnelle à la forme.
class Serialiseur<TableChaineNoyau>::_Lecture
{
public:
    _Lecture(FluxEntree& zone, bool compactes, ListeC<unsigned long>& positions)
        : _zone(zone),
          _enregistrements(zone, dynamic_cast<FluxEntreeMemoire*>(&zone), 0, compactes, _copie),
          _positions(positions), _recues(positions.Taille())
    {
    }

    void Lis(Noeud& racine, unsigned long position)
    {
        try {
            _Entre(racine, position);
            while (!_pile.empty()) {
                _Avance();
            }
        } catch (...) {
            while (_positions.Taille() > _recues) {
                _positions.Enleve(_positions.Taille() - 1);
            }
            throw;
        }
    }

private:
    static constexpr std::uint64_t kLusParOctet = 16;

    struct Cadre
    {
        Noeud* noeud;
        unsigned long position;
        detail::EnregistrementNoeud e;
        int etape;
    };

    bool _EnCours(unsigned long position) const
    {
        if (position < _enCours.size() && _enCours[position]) {
            return true;
        }
        auto const recues = _positions.begin() + static_cast<std::ptrdiff_t>(_recues);
        return std::find(_positions.begin(), recues, position) != recues;
    }

    void _MetsEnCours(unsigned long position, bool oui)
    {
        if (position >= _enCours.size()) { // la position a été lue : le flux va jusque-là
            _enCours.resize(position + 1);
        }
        _enCours[position] = oui;
    }

    void _Entre(Noeud& n, unsigned long position)
    {
        if (_EnCours(position)) {
            detail::LanceTableNonValide(detail::kBoucle);
        }
        auto const e = _enregistrements.Lis(position);
        _Remplis(n, position, e);
        _Compte(position, e);
        _positions.Ajoute(position);
        _MetsEnCours(position, true);
        _pile.push_back({&n, position, e, 0});
    }

    // La suite, la donnée, puis les drapeaux : un nœud n'est terminal qu'avec sa donnée lue.
    void _Remplis(Noeud& n, unsigned long position, detail::EnregistrementNoeud const& e)
    {
        detail::DecodeSuite(e, _unites);
        n._MetsCars(_unites);
        if (e.drapeaux & Noeud::kTerminal) {
            _enregistrements.PositionneSurDonnee(position, e);
            n.LisDonnees(_zone);
        }
        n._drapeaux = e.drapeaux;
    }

    void _Compte(unsigned long position, detail::EnregistrementNoeud const& e)
    {
        std::uint64_t fin = position + e.taille;
        if (e.drapeaux & Noeud::kTerminal) {
            fin = std::max<std::uint64_t>(fin, _zone.DonnePosition());
        }
        _etendue = std::max(_etendue, fin);
        _lus += fin - position;
        if (_lus > kLusParOctet * _etendue) {
            detail::LanceTableNonValide(detail::kTropPartagee);
        }
    }

    void _Avance()
    {
        Cadre& c = _pile.back();
        Noeud& n = *c.noeud;
        if (c.etape == 0) {
            c.etape = 1;
            if (c.e.drapeaux & Noeud::kAEnfant) {
                n._premierEnfant = n.NouveauNoeud(); // rattaché avant d'être lu
                _Entre(*n._premierEnfant, c.e.enfant);
                return;
            }
        }
        if (c.etape == 1) {
            c.etape = 2;
            if (c.e.drapeaux & Noeud::kASuivant) {
                n._suivant = n.NouveauNoeud();
                _Entre(*n._suivant, c.e.suivant);
                return;
            }
        }
        _MetsEnCours(c.position, false);
        _positions.Enleve(_positions.Taille() - 1);
        _pile.pop_back();
    }

    FluxEntree& _zone;
    std::vector<unsigned char> _copie;
    detail::LecteurEnregistrements _enregistrements;
    ListeC<unsigned long>& _positions;
    unsigned long const _recues; // positions reçues de l'appelant
    std::vector<bool> _enCours;
    std::vector<Cadre> _pile;
    std::u16string _unites;
    std::uint64_t _lus = 0;     // octets lus par tous les nœuds construits
    std::uint64_t _etendue = 0; // fin du plus lointain octet lu
};

void Serialiseur<TableChaineNoyau>::DeserialiseDuTampon(Noeud& noeud, FluxEntree& zone,
                                                        unsigned long position,
                                                        bool positionsCompactes,
                                                        ListeC<unsigned long>& positions)
{
    _Lecture(zone, positionsCompactes, positions).Lis(noeud, position);
}

} // namespace sdd
