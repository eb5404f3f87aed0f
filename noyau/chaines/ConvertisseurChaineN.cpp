#include "noyau/chaines/ConvertisseurChaineN.h"

#include "noyau/chaines/UniCaractere.h"
#include "noyau/chaines/detail/TablesCodages.h"
#include "noyau/chaines/detail/UTF8.h"
#include "noyau/flux/Flux.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <memory>

namespace sdd {

namespace {

constexpr int kNbCodages = 7;
constexpr unsigned char kOctetInconnu = '?';
constexpr char16_t kLosange = 0x25CA; // ◊, en Mac OS Roman à la place des symboles absents
constexpr char16_t kRemplacement = 0xFFFD;
constexpr std::size_t kUnitesParTranche = 1024;

std::unique_ptr<ConvertisseurChaineN> gConvertisseurs[kNbCodages];

std::unique_ptr<ConvertisseurChaineN> CreeConvertisseur(int codage)
{
    switch (codage) {
    case 1:
        return std::make_unique<ConvertisseurChaineNLatin9>();
    case 2:
        return std::make_unique<ConvertisseurChaineNWinLatin1>();
    case 3:
        return std::make_unique<ConvertisseurChaineNDOS>();
    case 4:
        return std::make_unique<ConvertisseurChaineNUTF8>();
    case 5:
        return std::make_unique<ConvertisseurChaineNUTF16LE>();
    case 6:
        return std::make_unique<ConvertisseurChaineNUTF16BE>();
    default:
        return std::make_unique<ConvertisseurChaineNMacRoman>();
    }
}

} // namespace

ConvertisseurChaineN::~ConvertisseurChaineN() = default;
ConvertisseurChaineNCodageUnOctet::~ConvertisseurChaineNCodageUnOctet() = default;
ConvertisseurChaineNMacRoman::~ConvertisseurChaineNMacRoman() = default;
ConvertisseurChaineNLatin9::~ConvertisseurChaineNLatin9() = default;
ConvertisseurChaineNWinLatin1::~ConvertisseurChaineNWinLatin1() = default;
ConvertisseurChaineNDOS::~ConvertisseurChaineNDOS() = default;
ConvertisseurChaineNUTF8::~ConvertisseurChaineNUTF8() = default;
ConvertisseurChaineNUTF16::~ConvertisseurChaineNUTF16() = default;
ConvertisseurChaineNUTF16LE::~ConvertisseurChaineNUTF16LE() = default;
ConvertisseurChaineNUTF16BE::~ConvertisseurChaineNUTF16BE() = default;

ConvertisseurChaineN const& ConvertisseurChaineN::DonnePourCodage(int codage)
{
    if (codage < 0 || codage >= kNbCodages) {
        codage = 0;
    }
    auto& emplacement = gConvertisseurs[codage];
    if (!emplacement) {
        emplacement = CreeConvertisseur(codage);
    }
    return *emplacement;
}

void ConvertisseurChaineN::EcrisUnites(FluxSortie& flux, char16_t const* unites,
                                       std::size_t n) const
{
    std::array<char, detail::kMaxOctetsUTF8ParUnite * kUnitesParTranche> octets;
    while (n > 0) {
        std::size_t tranche = std::min(n, kUnitesParTranche);
        if (tranche < n && unites[tranche - 1] >= 0xD800 && unites[tranche - 1] <= 0xDBFF) {
            --tranche; // la paire passe entière dans la tranche suivante
        }
        std::size_t const nbOctets = DepuisUTF16(unites, tranche, octets.data(), octets.size());
        flux.Mets(reinterpret_cast<unsigned char const*>(octets.data()),
                  static_cast<unsigned int>(nbOctets));
        unites += tranche;
        n -= tranche;
    }
}

std::size_t ConvertisseurChaineN::OctetsAvantLeZero(char const* octets) const noexcept
{
    if (TailleTerminateur() == 1) {
        return std::strlen(octets);
    }
    std::size_t n = 0;
    while (octets[n] != 0 || octets[n + 1] != 0) {
        n += 2;
    }
    return n;
}

void ConvertisseurChaineN::LibereTous() noexcept
{
    for (auto& emplacement : gConvertisseurs) {
        emplacement.reset();
    }
}

ConvertisseurChaineNCodageUnOctet::ConvertisseurChaineNCodageUnOctet(char16_t const (&table)[256])
    : _table(table)
{
    for (int octet = 0x80; octet < 0x100; ++octet) {
        _inverse.push_back({table[octet], static_cast<unsigned char>(octet)});
    }
    // Tri stable : pour une unité présente deux fois, l'octet le plus bas l'emporte.
    std::stable_sort(_inverse.begin(), _inverse.end(),
                     [](Correspondance a, Correspondance b) { return a.unite < b.unite; });
}

void ConvertisseurChaineNCodageUnOctet::RemplaceAbsente(char16_t unite, unsigned char octet)
{
    auto const place = std::lower_bound(_inverse.begin(), _inverse.end(), unite,
                                        [](Correspondance a, char16_t u) { return a.unite < u; });
    if (place == _inverse.end() || place->unite != unite) {
        _inverse.insert(place, {unite, octet});
    }
}

unsigned char ConvertisseurChaineNCodageUnOctet::DonneOctet(char16_t unite) const noexcept
{
    // Les quatre tables gardent l'ASCII à sa place.
    if (unite < 0x80) {
        return static_cast<unsigned char>(unite);
    }
    auto const place = std::lower_bound(_inverse.begin(), _inverse.end(), unite,
                                        [](Correspondance a, char16_t u) { return a.unite < u; });
    return place != _inverse.end() && place->unite == unite ? place->octet : kOctetInconnu;
}

std::size_t ConvertisseurChaineNCodageUnOctet::VersUTF16(char const* octets, std::size_t n,
                                                         char16_t* dest) const noexcept
{
    for (std::size_t i = 0; i < n; ++i) {
        dest[i] = _table[static_cast<unsigned char>(octets[i])];
    }
    return n;
}

std::size_t ConvertisseurChaineNCodageUnOctet::DepuisUTF16(char16_t const* unites, std::size_t n,
                                                           char* dest,
                                                           std::size_t taille) const noexcept
{
    std::size_t const nb = std::min(n, taille);
    for (std::size_t i = 0; i < nb; ++i) {
        dest[i] = static_cast<char>(DonneOctet(unites[i]));
    }
    return nb;
}

bool ConvertisseurChaineNCodageUnOctet::LisUnite(FluxEntree& flux, EtatLecture&,
                                                 char16_t* unite) const
{
    if (flux.EstALaFin()) {
        return false;
    }
    *unite = _table[flux.Donne()];
    return true;
}

ConvertisseurChaineNMacRoman::ConvertisseurChaineNMacRoman()
    : ConvertisseurChaineNCodageUnOctet(detail::gTableMacRoman)
{
    unsigned char const losange = DonneOctet(kLosange);
    for (char16_t symbole : UniCaractere::sSymbolesLatin1NonMac) {
        RemplaceAbsente(symbole, losange);
    }
}

ConvertisseurChaineNLatin9::ConvertisseurChaineNLatin9()
    : ConvertisseurChaineNCodageUnOctet(detail::gTableLatin9)
{
}

ConvertisseurChaineNWinLatin1::ConvertisseurChaineNWinLatin1()
    : ConvertisseurChaineNCodageUnOctet(detail::gTableWinLatin1)
{
}

ConvertisseurChaineNDOS::ConvertisseurChaineNDOS()
    : ConvertisseurChaineNCodageUnOctet(detail::gTableDOS)
{
}

std::size_t ConvertisseurChaineNUTF8::VersUTF16(char const* octets, std::size_t n,
                                                char16_t* dest) const noexcept
{
    return detail::DecodeUTF8(octets, n, dest);
}

std::size_t ConvertisseurChaineNUTF8::DepuisUTF16(char16_t const* unites, std::size_t n, char* dest,
                                                  std::size_t taille) const noexcept
{
    return detail::EncodeUTF8(unites, n, dest, taille);
}

bool ConvertisseurChaineNUTF8::LisUnite(FluxEntree& flux, EtatLecture& etat, char16_t* unite) const
{
    if (etat.unite >= 0) {
        *unite = static_cast<char16_t>(etat.unite);
        etat.unite = -1;
        return true;
    }
    unsigned char tete;
    if (etat.octet >= 0) {
        tete = static_cast<unsigned char>(etat.octet);
        etat.octet = -1;
    } else if (flux.EstALaFin()) {
        return false;
    } else {
        tete = flux.Donne();
    }
    std::size_t const longueur = detail::LongueurSelonTete(tete);
    if (tete < 0x80 || longueur == 0) {
        *unite = tete < 0x80 ? tete : kRemplacement;
        return true;
    }
    // Mêmes règles que VersUTF16 : la sous-partie lue devient U+FFFD et l'octet fautif
    // commence l'unité suivante.
    unsigned char min, max;
    detail::BornesDeuxiemeOctet(tete, min, max);
    std::uint32_t code = tete & (0xFF >> (longueur + 1));
    for (std::size_t i = 1; i < longueur; ++i) {
        if (flux.EstALaFin()) {
            *unite = kRemplacement;
            return true;
        }
        unsigned char const octet = flux.Donne();
        if (octet < min || octet > max) {
            etat.octet = octet;
            *unite = kRemplacement;
            return true;
        }
        code = (code << 6) | (octet & 0x3F);
        min = 0x80;
        max = 0xBF;
    }
    if (code >= 0x10000) {
        code -= 0x10000;
        etat.unite = static_cast<int>(0xDC00 + (code & 0x3FF));
        *unite = static_cast<char16_t>(0xD800 + (code >> 10));
    } else {
        *unite = static_cast<char16_t>(code);
    }
    return true;
}

std::size_t ConvertisseurChaineNUTF16::VersUTF16(char const* octets, std::size_t n,
                                                 char16_t* dest) const noexcept
{
    auto const o = reinterpret_cast<unsigned char const*>(octets);
    std::size_t const nb = n / 2;
    for (std::size_t i = 0; i < nb; ++i) {
        unsigned const a = o[2 * i];
        unsigned const b = o[2 * i + 1];
        dest[i] = static_cast<char16_t>(_grosBoutiste ? (a << 8 | b) : (b << 8 | a));
    }
    if (n % 2 != 0) {
        dest[nb] = 0xFFFD;
        return nb + 1;
    }
    return nb;
}

std::size_t ConvertisseurChaineNUTF16::DepuisUTF16(char16_t const* unites, std::size_t n,
                                                   char* dest, std::size_t taille) const noexcept
{
    std::size_t nb = std::min(n, taille / 2);
    if (nb < n && nb > 0 && unites[nb - 1] >= 0xD800 && unites[nb - 1] <= 0xDBFF) {
        --nb; // une paire de demi-codets ne se coupe pas
    }
    for (std::size_t i = 0; i < nb; ++i) {
        auto const fort = static_cast<char>(unites[i] >> 8);
        auto const faible = static_cast<char>(unites[i] & 0xFF);
        dest[2 * i] = _grosBoutiste ? fort : faible;
        dest[2 * i + 1] = _grosBoutiste ? faible : fort;
    }
    return 2 * nb;
}

bool ConvertisseurChaineNUTF16::LisUnite(FluxEntree& flux, EtatLecture&, char16_t* unite) const
{
    if (flux.EstALaFin()) {
        return false;
    }
    unsigned int const a = flux.Donne();
    if (flux.EstALaFin()) {
        *unite = kRemplacement; // octet impair final, comme VersUTF16
        return true;
    }
    unsigned int const b = flux.Donne();
    *unite = static_cast<char16_t>(_grosBoutiste ? (a << 8 | b) : (b << 8 | a));
    return true;
}

} // namespace sdd
