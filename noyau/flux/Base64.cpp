#include "noyau/flux/Base64.h"

#include "noyau/chaines/UniChaine.h"
#include "noyau/flux/TamponMemoire.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <memory>
#include <new>

namespace sdd {

namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// Valeur de chaque caractère ; 0 hors de l'alphabet.
constexpr std::array<unsigned char, 256> TableInverse()
{
    std::array<unsigned char, 256> table{};
    for (unsigned char i = 0; i < 64; ++i) {
        table[static_cast<unsigned char>(kAlphabet[i])] = i;
    }
    return table;
}

constexpr std::array<unsigned char, 256> kValeur = TableInverse();

unsigned int OctetsValides(TamponMemoire const& tampon)
{
    return std::min(tampon.DonneTaille(), tampon.DonneCapacite());
}

std::size_t EncodeOctets(unsigned char const* s, std::size_t n, unsigned char* d)
{
    unsigned char* const debut = d;
    std::size_t i = 0;
    for (; i + 3 <= n; i += 3) {
        unsigned int const bloc = unsigned(s[i]) << 16 | unsigned(s[i + 1]) << 8 | s[i + 2];
        *d++ = kAlphabet[bloc >> 18];
        *d++ = kAlphabet[(bloc >> 12) & 0x3F];
        *d++ = kAlphabet[(bloc >> 6) & 0x3F];
        *d++ = kAlphabet[bloc & 0x3F];
    }
    if (i < n) {
        bool const deux = i + 1 < n;
        unsigned int const bloc = unsigned(s[i]) << 16 | (deux ? unsigned(s[i + 1]) << 8 : 0);
        *d++ = kAlphabet[bloc >> 18];
        *d++ = kAlphabet[(bloc >> 12) & 0x3F];
        *d++ = deux ? kAlphabet[(bloc >> 6) & 0x3F] : '=';
        *d++ = '=';
    }
    return static_cast<std::size_t>(d - debut);
}

std::size_t DecodeCaracteres(unsigned char const* s, std::size_t n, unsigned char* d)
{
    unsigned char* const debut = d;
    std::size_t i = 0;
    // Groupes complets sans « = » : le chemin rapide.
    for (; i + 4 <= n && s[i + 2] != '=' && s[i + 3] != '='; i += 4) {
        unsigned int const bloc = unsigned(kValeur[s[i]]) << 18 |
                                  unsigned(kValeur[s[i + 1]]) << 12 |
                                  unsigned(kValeur[s[i + 2]]) << 6 | kValeur[s[i + 3]];
        *d++ = static_cast<unsigned char>(bloc >> 16);
        *d++ = static_cast<unsigned char>(bloc >> 8);
        *d++ = static_cast<unsigned char>(bloc);
    }
    if (i < n) {
        // Dernier groupe, ou groupe qui porte un « = » : un caractère absent vaut 0.
        std::size_t const reste = std::min<std::size_t>(n - i, 4);
        auto const valeur = [&](std::size_t k) {
            return k < reste ? unsigned(kValeur[s[i + k]]) : 0u;
        };
        unsigned int const bloc = valeur(0) << 18 | valeur(1) << 12 | valeur(2) << 6 | valeur(3);
        *d++ = static_cast<unsigned char>(bloc >> 16);
        if (reste > 2 && s[i + 2] != '=') {
            *d++ = static_cast<unsigned char>(bloc >> 8);
            if (reste > 3 && s[i + 3] != '=') {
                *d++ = static_cast<unsigned char>(bloc);
            }
        }
    }
    return static_cast<std::size_t>(d - debut);
}

} // namespace

namespace {

// Vrai quand les octets de la source sont dans le bloc de la cible (la cible elle-même, ou un
// tampon qui lui emprunte son bloc).
bool DansLeBloc(unsigned char const* octets, std::size_t n, TamponMemoire const& cible)
{
    auto const debut = reinterpret_cast<std::uintptr_t>(cible.DonneDonnees());
    auto const p = reinterpret_cast<std::uintptr_t>(octets);
    return n != 0 && p < debut + cible.DonneCapacite() && debut < p + n;
}

// Code les octets valides de la source à la position de la cible, place faite d'avance pour
// au plus maxEcrits(n) octets. Une source prise dans le bloc de la cible est d'abord copiée :
// la place faite pourrait déplacer ce bloc, et l'écriture recouvrir ce qui reste à lire.
template <typename Codeur, typename Maximum>
void Transcode(TamponMemoire const& source, TamponMemoire& cible, Codeur codeur, Maximum maxEcrits)
{
    std::size_t const n = OctetsValides(source);
    std::unique_ptr<unsigned char[]> copie;
    unsigned char const* entree = source.DonneDonnees();
    if (DansLeBloc(entree, n, cible)) {
        copie.reset(new unsigned char[n]);
        std::copy_n(entree, n, copie.get());
        entree = copie.get();
    }
    std::uint64_t const place = maxEcrits(n);
    if (place > std::numeric_limits<unsigned int>::max()) {
        throw std::bad_alloc();
    }
    unsigned char* const zone = cible.PreteZoneEcriture(static_cast<unsigned int>(place));
    cible.ValideEcriture(static_cast<unsigned int>(codeur(entree, n, zone)));
}

} // namespace

void Base64::Encode(TamponMemoire const& source, TamponMemoire& cible)
{
    Transcode(source, cible, EncodeOctets, [](std::uint64_t n) { return (n + 2) / 3 * 4; });
}

void Base64::Decode(TamponMemoire const& source, TamponMemoire& cible)
{
    Transcode(source, cible, DecodeCaracteres, [](std::uint64_t n) { return (n + 3) / 4 * 3; });
}

UniChaine Base64::EncodeNombreSimple(unsigned long nombre)
{
    unsigned char octets[sizeof nombre];
    for (unsigned char& octet : octets) {
        octet = static_cast<unsigned char>(nombre);
        nombre >>= 8;
    }
    char texte[(sizeof nombre + 2) / 3 * 4];
    std::size_t const n =
        EncodeOctets(octets, sizeof octets, reinterpret_cast<unsigned char*>(texte));
    return UniChaine(texte, UniChaine::kUTF8, static_cast<int>(n));
}

} // namespace sdd
