#include "noyau/lexique/detail/EnregistrementTrie.h"

#include "noyau/chaines/detail/UTF8.h"
#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/Flux.h"
#include "noyau/flux/Serialiseur.h"
#include "noyau/flux/VarElias.h"
#include "noyau/lexique/TableChaineNoyau.h"
#include "noyau/lexique/detail/LanceTableNonValide.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>

namespace sdd::detail {

namespace {

using Noeud = TableChaineNoyau::Noeud;

unsigned char const* LisLien(unsigned char const* p, unsigned char const* fin, bool compact,
                             std::uint32_t* lien)
{
    if (compact) {
        return p + VarElias::Lis(p, fin, lien);
    }
    if (fin - p < 4) {
        LanceOctetsManquants(kEnregistrementTronque);
    }
    *lien = std::uint32_t(p[0]) | std::uint32_t(p[1]) << 8 | std::uint32_t(p[2]) << 16 |
            std::uint32_t(p[3]) << 24;
    return p + 4;
}

// L'enregistrement qui commence à debut ; rien n'est lu à partir de fin.
EnregistrementNoeud Analyse(unsigned char const* debut, unsigned char const* fin, bool compact)
{
    auto const* const zero =
        static_cast<unsigned char const*>(std::memchr(debut, 0, std::size_t(fin - debut)));
    if (zero == nullptr) {
        throw exceptions::OperationInvalide(); // comme ChaineN::Lis au bout du flux
    }
    if (zero + 1 == fin) {
        LanceOctetsManquants(kEnregistrementTronque);
    }
    EnregistrementNoeud e{};
    e.cars = debut;
    e.nbOctets = std::size_t(zero - debut);
    e.drapeaux = zero[1];
    unsigned char const* p = zero + 2;
    if (e.drapeaux & Noeud::kAEnfant) {
        p = LisLien(p, fin, compact, &e.enfant);
    }
    if (e.drapeaux & Noeud::kASuivant) {
        p = LisLien(p, fin, compact, &e.suivant);
    }
    e.taille = std::size_t(p - debut);
    return e;
}

} // namespace

void LanceOctetsManquants(char const* explication)
{
    throw exceptions::ErreurDeserialisation(UniChaine(explication));
}

EnTeteTrie LisEnTeteTrie(FluxEntree& flux)
{
    std::uint16_t version;
    Serialiseur<std::uint16_t>::Lis(flux, &version);
    if (version != TableChaineNoyau::kVersionTableTrie && version != 100) {
        LanceTableNonValide(kVersionNonGeree);
    }
    EnTeteTrie e;
    e.positionsCompactes = version > 109;
    Serialiseur<std::uint32_t>::Lis(flux, &e.nombre);
    e.racine = VarElias::Lis(flux);
    e.longueur = VarElias::Lis(flux);
    return e;
}

LecteurEnregistrements::LecteurEnregistrements(FluxEntree& flux, FluxEntreeMemoire* memoire,
                                               std::uint32_t base, bool positionsCompactes,
                                               std::vector<unsigned char>& copie)
    : _flux(flux), _enPlace(memoire != nullptr), _base(base), _compactes(positionsCompactes),
      _copie(copie)
{
    if (memoire != nullptr) {
        // Repris à chaque consultation : le flux a pu changer de bloc depuis.
        std::uint32_t const taille = memoire->DonneTaille();
        memoire->Positionne(std::min(base, taille));
        _octets = memoire->Ptr();
        _taille = base < taille ? taille - base : 0;
    }
}

EnregistrementNoeud LecteurEnregistrements::Lis(std::uint64_t position)
{
    if (!_enPlace) {
        return _CopieDuFlux(_base + position);
    }
    if (position >= _taille) {
        throw exceptions::OperationInvalide(); // une suite lue au bout du flux
    }
    return Analyse(_octets + position, _octets + _taille, _compactes);
}

// La suite jusqu'à son zéro, puis de quoi contenir les drapeaux et deux liens : ce qu'en lirait
// l'analyse en place, le flux ayant la même fin.
EnregistrementNoeud LecteurEnregistrements::_CopieDuFlux(std::uint64_t debut)
{
    constexpr unsigned int kApresSuite = 1 + 2 * VarElias::kLongueurMax;
    if (debut > std::numeric_limits<unsigned int>::max()) {
        throw exceptions::OperationInvalide();
    }
    _flux.Positionne(static_cast<unsigned int>(debut));
    if (_flux.EstALaFin()) {
        throw exceptions::OperationInvalide();
    }
    _copie.clear();
    do {
        _copie.push_back(_flux.Donne());
    } while (_copie.back() != 0 && !_flux.EstALaFin());
    for (unsigned int i = 0; i < kApresSuite && !_flux.EstALaFin(); ++i) {
        _copie.push_back(_flux.Donne());
    }
    return Analyse(_copie.data(), _copie.data() + _copie.size(), _compactes);
}

void LecteurEnregistrements::PositionneSurDonnee(std::uint64_t position,
                                                 EnregistrementNoeud const& e)
{
    // L'enregistrement a été lu : sa fin est une position du flux.
    _flux.Positionne(static_cast<unsigned int>(_base + position + e.taille));
}

void EcrisSuite(FluxSortie& flux, std::u16string_view cars)
{
    constexpr std::size_t kLocal = 64;
    std::size_t const place = kMaxOctetsUTF8ParUnite * cars.size() + 1;
    char local[kMaxOctetsUTF8ParUnite * kLocal + 1];
    std::unique_ptr<char[]> tas(cars.size() > kLocal ? new char[place] : nullptr);
    char* const octets = tas ? tas.get() : local;
    std::size_t const n = EncodeUTF8(cars.data(), cars.size(), octets, place, DemiPaires::Gardees);
    octets[n] = 0;
    flux.Mets(reinterpret_cast<unsigned char const*>(octets), static_cast<unsigned int>(n + 1));
}

void DecodeSuite(EnregistrementNoeud const& e, std::u16string& unites)
{
    unites.resize(e.nbOctets);
    unites.resize(DecodeUTF8(reinterpret_cast<char const*>(e.cars), e.nbOctets, unites.data(),
                             DemiPaires::Gardees));
}

std::ptrdiff_t UnitesSiPrefixe(unsigned char const* cars, std::size_t nbOctets,
                               std::u16string_view clef)
{
    // Un octet ASCII est une unité entière : comparaison directe tant qu'il en vient.
    std::size_t i = 0;
    for (; i < nbOctets && cars[i] < 0x80; ++i) {
        if (i == clef.size() || clef[i] != cars[i]) {
            return -1;
        }
    }
    if (i == nbOctets) {
        return std::ptrdiff_t(i);
    }
    // Le reste se décode ; trois octets au plus font une unité, d'où une borne sans décoder.
    std::size_t const reste = nbOctets - i;
    std::size_t const place = clef.size() - i;
    if (reste > 3 * place) {
        return -1;
    }
    constexpr std::size_t kLocal = 64;
    char16_t local[kLocal];
    std::unique_ptr<char16_t[]> tas(reste > kLocal ? new char16_t[reste] : nullptr);
    char16_t* const unites = tas ? tas.get() : local;
    std::size_t const n =
        DecodeUTF8(reinterpret_cast<char const*>(cars + i), reste, unites, DemiPaires::Gardees);
    if (n > place || !std::equal(unites, unites + n, clef.begin() + i)) {
        return -1;
    }
    return std::ptrdiff_t(i + n);
}

} // namespace sdd::detail
