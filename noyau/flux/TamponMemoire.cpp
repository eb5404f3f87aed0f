#include "noyau/flux/TamponMemoire.h"

#include "noyau/algorithmes/Entiers.h"
#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/Fichier.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <locale>
#include <new>
#include <sstream>

namespace sdd {

namespace {

constexpr std::uint64_t kCapaciteMax = std::numeric_limits<unsigned int>::max();

unsigned int TailleNonNegative(int taille)
{
    if (taille < 0) {
        exceptions::LanceIndexHorsBorne(static_cast<unsigned long>(taille), 0,
                                        std::numeric_limits<int>::max());
    }
    return static_cast<unsigned int>(taille);
}

} // namespace

TamponMemoire::TamponMemoire(unsigned int capacite)
    : _capacite(capacite), _donnees(new unsigned char[capacite]()) // bloc neuf à zéro
{
}

TamponMemoire::TamponMemoire(TamponMemoire const& autre)
    : Flux(), FluxEntree(), FluxEntreeMemoire(), FluxSortie(), _position(autre._position),
      _taille(autre._taille), _capacite(autre._capacite), _donnees(new unsigned char[_capacite])
{
    std::copy_n(autre._donnees, _capacite, _donnees);
}

TamponMemoire::TamponMemoire(char* bloc, int taille, bool prendPossession)
    : TamponMemoire(reinterpret_cast<unsigned char*>(bloc), TailleNonNegative(taille),
                    prendPossession)
{
}

TamponMemoire::TamponMemoire(unsigned char* bloc, unsigned int taille, bool prendPossession)
    : _taille(taille), _capacite(taille), _donnees(bloc), _emprunte(!prendPossession)
{
}

TamponMemoire::TamponMemoire(UniChemin const& chemin)
{
    _donnees = reinterpret_cast<unsigned char*>(Fichier::DonneToutLeTexte(chemin, _taille));
    _capacite = _taille;
}

TamponMemoire::TamponMemoire(unsigned char* bloc, unsigned int taille, unsigned int capacite)
    : _taille(taille), _capacite(capacite), _donnees(bloc), _emprunte(true)
{
}

TamponMemoire::~TamponMemoire()
{
    if (!_emprunte) {
        delete[] _donnees;
    }
}

// Lecture

unsigned int TamponMemoire::Donne(unsigned int n, unsigned char* dest)
{
    if (_position >= _taille) {
        return 0;
    }
    n = std::min(n, _taille - _position);
    // Comme Donne() octet par octet : ce qui dépasse le bloc se lit comme des zéros.
    unsigned int const dansLeBloc = _position < _capacite ? std::min(n, _capacite - _position) : 0;
    std::memcpy(dest, _donnees + _position, dansLeBloc);
    std::memset(dest + dansLeBloc, 0, n - dansLeBloc);
    _position += n;
    return n;
}

unsigned char const* TamponMemoire::PtrEtAvance(unsigned int n)
{
    // Aucun contrôle : les lecteurs rapides ont vérifié la taille eux-mêmes.
    unsigned char const* const p = _donnees + _position;
    _position += n;
    return p;
}

TamponMemoire* TamponMemoire::TamponEnPretantDonnees()
{
    return new TamponMemoire(_donnees, _taille, _capacite);
}

void TamponMemoire::Vide()
{
    _position = 0;
    _taille = 0;
}

char* TamponMemoire::DonneCString()
{
    _Assure(std::uint64_t(_position) + 1); // garde : le zéro tombe toujours dans le bloc
    _donnees[_position] = 0;
    return reinterpret_cast<char*>(_donnees);
}

char* TamponMemoire::CreeCString()
{
    char const* const texte = DonneCString();
    char* const copie = new char[std::size_t(_position) + 1];
    std::memcpy(copie, texte, std::size_t(_position) + 1);
    return copie;
}

bool TamponMemoire::DonneLigne(char* dest, int max)
{
    if (EstALaFin() || max < 1) { // garde : sans place, pas même pour le zéro
        return false;
    }
    int n = 0;
    while (n < max - 1 && !EstALaFin()) {
        unsigned char const c = Donne();
        if (c == '\n') {
            break;
        }
        if (c == '\r') {
            // Le LF d'un CR LF est pris sans contrôle de fin, volontairement.
            if (_OctetA(_position) == '\n') {
                ++_position;
            }
            break;
        }
        dest[n++] = static_cast<char>(c);
    }
    dest[n] = 0;
    return true;
}

bool TamponMemoire::DonneLigne(TamponMemoire& ligne)
{
    ligne.Vide();
    if (EstALaFin()) {
        return false;
    }
    while (!EstALaFin()) {
        unsigned char const c = Donne();
        if (c == '\n') {
            break;
        }
        if (c == '\r') {
            if (_OctetA(_position) == '\n') { // sans contrôle de fin, comme ci-dessus
                ++_position;
            }
            break;
        }
        ligne.Mets(c);
    }
    return true;
}

// Écriture

void TamponMemoire::_AgrandirPourUnOctet()
{
    // Garde : une capacité nulle doublée resterait nulle.
    if (2 * std::uint64_t(_capacite) >= std::uint64_t(_position) + 2) {
        Agrandir();
    } else {
        _Assure(std::uint64_t(_position) + 2);
    }
}

unsigned int TamponMemoire::_CapacitePourBloc(std::uint64_t fin) const
{
    if (fin >= kCapaciteMax) {
        throw std::bad_alloc();
    }
    // Garde : les doublements partent de 1 quand la capacité est nulle.
    std::uint64_t capacite = std::max(_capacite, 1u);
    while (capacite <= fin) {
        capacite *= 2;
    }
    return static_cast<unsigned int>(std::min(capacite, kCapaciteMax));
}

void TamponMemoire::_MetsEnAgrandissant(char const* octets, unsigned int n)
{
    std::uint64_t const fin = std::uint64_t(_position) + n;
    // L'ancien bloc n'est lâché qu'après la copie : octets peut pointer dedans.
    auto const ancien = _RemplaceBloc(_CapacitePourBloc(fin));
    std::memcpy(_donnees + _position, octets, n);
    _taille = _position = static_cast<unsigned int>(fin);
}

unsigned char* TamponMemoire::PreteZoneEcriture(unsigned int n)
{
    // Plus l'octet de réserve que laisse toute écriture.
    std::uint64_t const fin = std::uint64_t(_position) + n;
    if (fin >= _capacite) {
        _RemplaceBloc(_CapacitePourBloc(fin));
    }
    return _donnees + _position;
}

void TamponMemoire::ValideEcriture(unsigned int n)
{
    std::uint64_t const fin = std::uint64_t(_position) + n;
    if (fin > _capacite) {
        exceptions::LanceIndexHorsBorne(static_cast<unsigned long>(fin), 0, _capacite);
    }
    _taille = _position = static_cast<unsigned int>(fin);
}

TamponMemoire& TamponMemoire::operator<<(char const* texte)
{
    Mets(texte, static_cast<unsigned int>(std::strlen(texte)));
    return *this;
}

template <typename Entier, typename Ecrivain>
TamponMemoire& TamponMemoire::_EcrisEntier(Entier valeur, unsigned int place, Ecrivain ecrivain)
{
    _Assure(std::uint64_t(_position) + place);
    _position += ecrivain(valeur, reinterpret_cast<char*>(_donnees + _position));
    return *this;
}

TamponMemoire& TamponMemoire::operator<<(int valeur)
{
    return _EcrisEntier(valeur, 12, mon_itoa);
}

TamponMemoire& TamponMemoire::operator<<(unsigned int valeur)
{
    return _EcrisEntier(valeur, 11, mon_itoa_ent4ss);
}

TamponMemoire& TamponMemoire::operator<<(long long valeur)
{
    return _EcrisEntier(valeur, 22, mon_itoa_ent8);
}

TamponMemoire& TamponMemoire::operator<<(unsigned long long valeur)
{
    return _EcrisEntier(valeur, 21, mon_itoa_ent8ss);
}

TamponMemoire& TamponMemoire::operator<<(double valeur)
{
    std::ostringstream texte;
    texte.imbue(std::locale::classic()); // le point décimal, quelle que soit la locale globale
    texte << valeur;
    return *this << texte.str().c_str();
}

TamponMemoire& TamponMemoire::operator<<(float valeur)
{
    return *this << static_cast<double>(valeur);
}

void TamponMemoire::Reserve(int capacite)
{
    if (capacite > 0) {
        _Assure(static_cast<unsigned int>(capacite));
    }
}

void TamponMemoire::_Assure(std::uint64_t n)
{
    if (_capacite < n) {
        if (n > kCapaciteMax) {
            throw std::bad_alloc();
        }
        Agrandir(static_cast<unsigned int>(n));
    }
}

void TamponMemoire::Agrandir()
{
    Agrandir(2 * _capacite);
}

void TamponMemoire::Agrandir(unsigned int capacite)
{
    _RemplaceBloc(capacite);
}

std::unique_ptr<unsigned char[]> TamponMemoire::_RemplaceBloc(unsigned int capacite)
{
    auto* const bloc = new unsigned char[capacite];
    std::copy_n(_donnees, std::min(_capacite, capacite), bloc);
    // Un bloc emprunté reste à son propriétaire (projection de fichier, autre tampon) : le
    // tampon passe à sa propre copie, qu'il libérera.
    std::unique_ptr<unsigned char[]> ancien(_emprunte ? nullptr : _donnees);
    _donnees = bloc;
    _capacite = capacite;
    _emprunte = false;
    return ancien;
}

void TamponMemoire::MetsPosition(unsigned int position)
{
    // Un tampon qui emprunte ne se recopie pas pour un simple déplacement (au bout d'une
    // projection, par exemple) : au-delà du bloc, la lecture rend 0.
    if (_capacite <= position && !_emprunte) {
        // Facteur 1,3 en double, tronqué ; garde : borné à la plus grande capacité possible.
        double const capacite = position * 1.3;
        Agrandir(capacite >= double(kCapaciteMax) ? static_cast<unsigned int>(kCapaciteMax)
                                                  : static_cast<unsigned int>(capacite));
    }
    _position = position;
}

bool TamponMemoire::operator==(TamponMemoire const& autre) const
{
    if (_taille != autre._taille) {
        return false;
    }
    // Une taille portée au-delà du bloc (MetsTaille) se lit comme des zéros, ainsi que Donne().
    unsigned int const a = std::min(_taille, _capacite);
    unsigned int const b = std::min(_taille, autre._capacite);
    unsigned int const commun = std::min(a, b);
    auto const nul = [](unsigned char o) { return o == 0; };
    return std::memcmp(_donnees, autre._donnees, commun) == 0 &&
           std::all_of(_donnees + commun, _donnees + a, nul) &&
           std::all_of(autre._donnees + commun, autre._donnees + b, nul);
}

} // namespace sdd
