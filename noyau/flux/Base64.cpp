#include "noyau/flux/Base64.h"

#include "noyau/chaines/UniChaine.h"
#include "noyau/flux/TamponMemoire.h"

#include <algorithm>
#include <array>

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

void Base64::Encode(TamponMemoire const& source, TamponMemoire& cible)
{
    std::size_t const n = OctetsValides(source);
    std::uint64_t const position = cible.DonnePosition();
    // Une réserve d'un octet après les données, comme si chaque caractère passait par Mets.
    cible._Assure(position + (n + 2) / 3 * 4 + 1);
    std::size_t const ecrits = EncodeOctets(source.DonneDonnees(), n, cible._donnees + position);
    cible._position = static_cast<unsigned int>(position + ecrits);
    cible._taille = cible._position;
}

void Base64::Decode(TamponMemoire const& source, TamponMemoire& cible)
{
    std::size_t const n = OctetsValides(source);
    std::uint64_t const position = cible.DonnePosition();
    cible._Assure(position + (n + 3) / 4 * 3 + 1);
    std::size_t const ecrits =
        DecodeCaracteres(source.DonneDonnees(), n, cible._donnees + position);
    cible._position = static_cast<unsigned int>(position + ecrits);
    cible._taille = cible._position;
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
