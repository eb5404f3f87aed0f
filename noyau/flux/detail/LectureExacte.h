#pragma once

#include <cstdint>

namespace sdd {

class FluxEntree;
class TamponMemoire;

namespace detail {

// n octets exactement dans dest ; faux quand le flux s'arrête avant. Une projection, qui
// refuse de lire au-delà de sa fin (IndexHorsBorne), compte alors comme un flux trop court :
// tous les lecteurs signalent ainsi les données tronquées de la même façon, quelle que soit
// la source.
bool LisExactement(FluxEntree& flux, unsigned char* dest, unsigned int n);

// Remplace le contenu de dest par les n octets suivants du flux, lus par tranches de 1 Mio :
// une longueur mensongère n'alloue guère plus que ce qui arrive vraiment. Faux quand le flux
// s'arrête avant.
bool LisParTranches(FluxEntree& flux, std::uint32_t n, TamponMemoire& dest);

} // namespace detail
} // namespace sdd
