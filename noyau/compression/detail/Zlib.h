#pragma once

#include <cstdint>

struct z_stream_s;

namespace sdd::detail {

// Au plus 1032 octets sortent d'un octet de flux deflate (258 octets pour 2 bits) : borne de
// ce qu'une longueur annoncée peut vraiment donner.
constexpr std::uint64_t kExpansionMaxZlib = 1032;

// Flux zlib gardés d'un appel à l'autre : chaque usage ne coûte qu'une remise à zéro, sans
// allouer les tables de zlib à chaque fois. std::bad_alloc quand zlib ne peut les créer.
z_stream_s* NouveauDeflate();
void LibereDeflate(z_stream_s* flux);
z_stream_s* NouvelInflate();
void LibereInflate(z_stream_s* flux);

// Ce que donnerait compress (niveau par défaut, format zlib), au plus *longueur octets ;
// *longueur reçoit les octets écrits. Faux quand la place n'a pas suffi.
bool Comprime(z_stream_s& flux, unsigned char* dest, std::uint64_t* longueur,
              unsigned char const* source, std::uint64_t n);

enum class FinInflate
{
    Complete,    // le flux zlib est décodé en entier
    PlaceManque, // la destination est pleine avant la fin du flux
    Interrompue  // le flux est coupé ou abîmé : seul ce qui précède a été décodé
};

// Décode source dans au plus *longueur octets ; *longueur reçoit les octets décodés, ceux
// d'avant la coupure quand le flux est interrompu (ce que rapporte uncompress).
FinInflate Decomprime(z_stream_s& flux, unsigned char* dest, std::uint64_t* longueur,
                      unsigned char const* source, std::uint64_t n);

} // namespace sdd::detail
