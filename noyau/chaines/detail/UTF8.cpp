#include "noyau/chaines/detail/UTF8.h"

#include <cstdint>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace sdd::detail {

namespace {

constexpr char16_t kRemplacement = 0xFFFD;

// Décode une séquence non ASCII commençant à p ; avance p d'au moins un octet.
inline char16_t* DecodeSequence(unsigned char const*& p, unsigned char const* fin, char16_t* d,
                                DemiPaires demiPaires) noexcept
{
    unsigned char const tete = *p++;
    std::size_t const longueur = LongueurSelonTete(tete);
    if (longueur == 0) {
        *d++ = kRemplacement;
        return d;
    }
    unsigned char min, max;
    BornesDeuxiemeOctet(tete, min, max);
    if (tete == 0xED && demiPaires == DemiPaires::Gardees) {
        max = 0xBF; // ED A0 à ED BF : une demi-paire seule
    }
    std::uint32_t code = tete & (0xFF >> (longueur + 1));
    for (std::size_t i = 1; i < longueur; ++i) {
        if (p == fin || *p < min || *p > max) {
            *d++ = kRemplacement; // la sous-partie lue est remplacée, l'octet fautif relu
            return d;
        }
        code = (code << 6) | (*p++ & 0x3F);
        min = 0x80;
        max = 0xBF;
    }
    if (code >= 0x10000) {
        code -= 0x10000;
        *d++ = static_cast<char16_t>(0xD800 + (code >> 10));
        *d++ = static_cast<char16_t>(0xDC00 + (code & 0x3FF));
    } else {
        *d++ = static_cast<char16_t>(code);
    }
    return d;
}

} // namespace

std::size_t DecodeUTF8(char const* octets, std::size_t n, char16_t* dest,
                       DemiPaires demiPaires) noexcept
{
    auto p = reinterpret_cast<unsigned char const*>(octets);
    auto const fin = p + n;
    char16_t* d = dest;
    while (p < fin) {
#ifdef __SSE2__
        // ASCII par paquets de 16 octets ; un paquet mêlé donne au moins son début ASCII.
        while (fin - p >= 16) {
            __m128i const bloc = _mm_loadu_si128(reinterpret_cast<__m128i const*>(p));
            __m128i const zero = _mm_setzero_si128();
            _mm_storeu_si128(reinterpret_cast<__m128i*>(d), _mm_unpacklo_epi8(bloc, zero));
            _mm_storeu_si128(reinterpret_cast<__m128i*>(d + 8), _mm_unpackhi_epi8(bloc, zero));
            int const nonAscii = _mm_movemask_epi8(bloc);
            int const nbAscii = nonAscii == 0 ? 16 : __builtin_ctz(static_cast<unsigned>(nonAscii));
            p += nbAscii;
            d += nbAscii;
            if (nbAscii < 16) {
                break;
            }
        }
        if (p == fin) {
            break;
        }
#endif
        if (*p < 0x80) {
            *d++ = *p++;
        } else {
            d = DecodeSequence(p, fin, d, demiPaires);
        }
    }
    return static_cast<std::size_t>(d - dest);
}

namespace {

inline bool EstPremiereDemiPaire(char16_t u) noexcept
{
    return u >= 0xD800 && u <= 0xDBFF;
}
inline bool EstSecondeDemiPaire(char16_t u) noexcept
{
    return u >= 0xDC00 && u <= 0xDFFF;
}

} // namespace

std::size_t EncodeUTF8(char16_t const* unites, std::size_t n, char* dest, std::size_t taille,
                       DemiPaires demiPaires) noexcept
{
    auto d = reinterpret_cast<unsigned char*>(dest);
    auto const finDest = d + taille;
    std::size_t i = 0;
    while (i < n) {
#ifdef __SSE2__
        while (n - i >= 16 && finDest - d >= 16) {
            __m128i const a = _mm_loadu_si128(reinterpret_cast<__m128i const*>(unites + i));
            __m128i const b = _mm_loadu_si128(reinterpret_cast<__m128i const*>(unites + i + 8));
            _mm_storeu_si128(reinterpret_cast<__m128i*>(d), _mm_packus_epi16(a, b));
            // Unités ASCII : aucun bit au-dessus des 7 premiers (packus seul confondrait les
            // unités >= 0x8000, négatives pour lui, avec 0).
            __m128i const horsAscii = _mm_set1_epi16(static_cast<short>(0xFF80));
            __m128i const zero = _mm_setzero_si128();
            __m128i const asciiA = _mm_cmpeq_epi16(_mm_and_si128(a, horsAscii), zero);
            __m128i const asciiB = _mm_cmpeq_epi16(_mm_and_si128(b, horsAscii), zero);
            int const nonAscii = ~_mm_movemask_epi8(_mm_packs_epi16(asciiA, asciiB)) & 0xFFFF;
            int const nbAscii = nonAscii == 0 ? 16 : __builtin_ctz(static_cast<unsigned>(nonAscii));
            i += nbAscii;
            d += nbAscii;
            if (nbAscii < 16) {
                break;
            }
        }
        if (i == n) {
            break;
        }
#endif
        if (unites[i] < 0x80 && d < finDest) {
            *d++ = static_cast<unsigned char>(unites[i++]);
            continue;
        }
        std::uint32_t code = unites[i];
        std::size_t consommees = 1;
        if (EstPremiereDemiPaire(unites[i]) && i + 1 < n && EstSecondeDemiPaire(unites[i + 1])) {
            code = 0x10000 + ((code - 0xD800) << 10) + (unites[i + 1] - 0xDC00);
            consommees = 2;
        } else if (code >= 0xD800 && code <= 0xDFFF && demiPaires == DemiPaires::Remplacees) {
            code = kRemplacement;
        }
        std::size_t const longueur = code < 0x80 ? 1 : code < 0x800 ? 2 : code < 0x10000 ? 3 : 4;
        if (static_cast<std::size_t>(finDest - d) < longueur) {
            break;
        }
        switch (longueur) {
        case 1:
            *d++ = static_cast<unsigned char>(code);
            break;
        case 2:
            *d++ = static_cast<unsigned char>(0xC0 | (code >> 6));
            *d++ = static_cast<unsigned char>(0x80 | (code & 0x3F));
            break;
        case 3:
            *d++ = static_cast<unsigned char>(0xE0 | (code >> 12));
            *d++ = static_cast<unsigned char>(0x80 | ((code >> 6) & 0x3F));
            *d++ = static_cast<unsigned char>(0x80 | (code & 0x3F));
            break;
        default:
            *d++ = static_cast<unsigned char>(0xF0 | (code >> 18));
            *d++ = static_cast<unsigned char>(0x80 | ((code >> 12) & 0x3F));
            *d++ = static_cast<unsigned char>(0x80 | ((code >> 6) & 0x3F));
            *d++ = static_cast<unsigned char>(0x80 | (code & 0x3F));
            break;
        }
        i += consommees;
    }
    return static_cast<std::size_t>(d - reinterpret_cast<unsigned char*>(dest));
}

std::size_t LongueurUTF8(char16_t const* unites, std::size_t n) noexcept
{
    std::size_t longueur = 0;
    for (std::size_t i = 0; i < n; ++i) {
        char16_t const u = unites[i];
        if (u < 0x80) {
            longueur += 1;
        } else if (u < 0x800) {
            longueur += 2;
        } else if (EstPremiereDemiPaire(u) && i + 1 < n && EstSecondeDemiPaire(unites[i + 1])) {
            longueur += 4;
            ++i;
        } else {
            longueur += 3;
        }
    }
    return longueur;
}

} // namespace sdd::detail
