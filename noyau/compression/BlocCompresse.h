#pragma once

#include <cstdint>

namespace sdd {

// Type des blocs, écrit sur un octet dans l'en-tête de la zone.
enum eTypeCompression : std::uint8_t
{
    kSansCompression = 0,
    kCompressionZlib = 1
};

// Où retrouver un élément : le bloc (position dans la sortie de l'encodeur, en-tête compris)
// et le décalage dans le bloc décomprimé.
struct _typPositionEncodageBloc
{
    unsigned int positionBloc;
    unsigned int decalage;
};

} // namespace sdd
