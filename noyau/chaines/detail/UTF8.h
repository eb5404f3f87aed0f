#pragma once

#include <cstddef>

// Conversions UTF-8 ↔ UTF-16 communes aux deux classes de chaînes.
namespace sdd::detail {

// Sort des demi-paires isolées. Remplacees : U+FFFD à l'écriture, séquence invalide à la
// lecture. Gardees : chacune s'écrit sur trois octets comme un caractère (ED A0 80 à
// ED BF BF) et se relit telle quelle, pour les formes qui doivent rendre chaque unité.
enum class DemiPaires : bool
{
    Remplacees,
    Gardees
};

// Décode n octets vers dest, qui a place pour n unités (jamais plus ne sont écrites).
// Chaque séquence invalide, au sens de la plus longue sous-partie valide, devient U+FFFD.
// Renvoie le nombre d'unités écrites.
std::size_t DecodeUTF8(char const* octets, std::size_t n, char16_t* dest,
                       DemiPaires demiPaires = DemiPaires::Remplacees) noexcept;

// Encode n unités dans dest, qui a place pour taille octets ; s'arrête avant un caractère
// qui ne tiendrait pas entier. Une paire entière fait quatre octets.
// Renvoie le nombre d'octets écrits ; 3 octets par unité suffisent toujours.
std::size_t EncodeUTF8(char16_t const* unites, std::size_t n, char* dest, std::size_t taille,
                       DemiPaires demiPaires = DemiPaires::Remplacees) noexcept;

// Nombre d'octets qu'écrirait EncodeUTF8 sans limite de place.
std::size_t LongueurUTF8(char16_t const* unites, std::size_t n) noexcept;

constexpr std::size_t kMaxOctetsUTF8ParUnite = 3;

// Bornes du deuxième octet selon l'octet de tête (exclut les formes trop longues, les
// demi-paires codées et ce qui dépasse U+10FFFF).
inline void BornesDeuxiemeOctet(unsigned char tete, unsigned char& min, unsigned char& max) noexcept
{
    min = 0x80;
    max = 0xBF;
    if (tete == 0xE0) {
        min = 0xA0;
    } else if (tete == 0xED) {
        max = 0x9F;
    } else if (tete == 0xF0) {
        min = 0x90;
    } else if (tete == 0xF4) {
        max = 0x8F;
    }
}

// Longueur d'une séquence d'après son octet de tête ; 0 pour un octet qui n'en commence pas.
inline std::size_t LongueurSelonTete(unsigned char tete) noexcept
{
    if (tete >= 0xC2 && tete <= 0xDF) {
        return 2;
    }
    if (tete >= 0xE0 && tete <= 0xEF) {
        return 3;
    }
    if (tete >= 0xF0 && tete <= 0xF4) {
        return 4;
    }
    return 0;
}

} // namespace sdd::detail
