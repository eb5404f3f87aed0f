#include "noyau/lexique/detail/EnregistrementTrie.h"

#include "noyau/chaines/detail/UTF8.h"
#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/Serialiseur.h"
#include "noyau/flux/VarElias.h"
#include "noyau/lexique/TableChaineNoyau.h"
#include "noyau/lexique/detail/LanceTableNonValide.h"

#include <algorithm>
#include <cstring>
#include <memory>

namespace sdd::detail {

namespace {

unsigned char const* LisLien(unsigned char const* p, unsigned char const* fin,
                             std::uint32_t longueurZone, bool compact, std::uint32_t* lien)
{
    if (compact) {
        p += VarElias::Lis(p, fin, lien);
    } else {
        if (fin - p < 4) {
            LanceTableNonValide(kEnregistrementTronque);
        }
        *lien = std::uint32_t(p[0]) | std::uint32_t(p[1]) << 8 | std::uint32_t(p[2]) << 16 |
                std::uint32_t(p[3]) << 24;
        p += 4;
    }
    VerifiePosition(*lien, longueurZone);
    return p;
}

} // namespace

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
    VerifiePosition(e.racine, e.longueur);
    return e;
}

void VerifiePosition(std::uint32_t position, std::uint32_t longueurZone)
{
    if (position >= longueurZone) {
        LanceTableNonValide(kPositionHorsZone);
    }
}

EnregistrementNoeud LisEnregistrement(unsigned char const* debut, unsigned char const* fin,
                                      std::uint32_t longueurZone, bool positionsCompactes)
{
    auto const* const zero =
        debut < fin
            ? static_cast<unsigned char const*>(std::memchr(debut, 0, std::size_t(fin - debut)))
            : nullptr;
    if (zero == nullptr || zero + 1 == fin) { // sans zéro, ou sans octet de drapeaux
        LanceTableNonValide(kEnregistrementTronque);
    }
    EnregistrementNoeud e{};
    e.cars = debut;
    e.nbOctets = std::size_t(zero - debut);
    e.drapeaux = zero[1];
    unsigned char const* p = zero + 2;
    if (e.drapeaux & TableChaineNoyau::Noeud::kAEnfant) {
        p = LisLien(p, fin, longueurZone, positionsCompactes, &e.enfant);
    }
    if (e.drapeaux & TableChaineNoyau::Noeud::kASuivant) {
        p = LisLien(p, fin, longueurZone, positionsCompactes, &e.suivant);
    }
    e.taille = std::size_t(p - debut);
    return e;
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
    std::size_t const n = DecodeUTF8(reinterpret_cast<char const*>(cars + i), reste, unites);
    if (n > place || !std::equal(unites, unites + n, clef.begin() + i)) {
        return -1;
    }
    return std::ptrdiff_t(i + n);
}

} // namespace sdd::detail
