// Zone de blocs comprimés d'octets quelconques, lue à des positions quelconques : seules
// ErreurDeserialisation et, pour une chaîne sans fin, OperationInvalide peuvent sortir.

#include "noyau/compression/DecodageParBlocCompresse.h"
#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/TamponMemoire.h"

#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(unsigned char const* donnees, std::size_t taille)
{
    // Les 9 premiers octets : position du bloc, décalage, codage ; la zone suit.
    if (taille < 9) {
        return 0;
    }
    sdd::_typPositionEncodageBloc position;
    std::memcpy(&position.positionBloc, donnees, 4);
    std::memcpy(&position.decalage, donnees + 4, 4);
    position.positionBloc %= 1u << 16;
    auto const codage = static_cast<sdd::ChaineN::Codage>(donnees[8] % 7);
    sdd::TamponMemoire zone(const_cast<char*>(reinterpret_cast<char const*>(donnees + 9)),
                            static_cast<int>(taille - 9), false);
    try {
        sdd::DecodageParBlocCompresse decodeur(&zone, 0);
        sdd::ChaineN chaine;
        try {
            decodeur.DecodeChaine(position, chaine, codage);
        } catch (sdd::exceptions::ErreurDeserialisation const&) {
        } catch (sdd::exceptions::OperationInvalide const&) {
        }
        char octets[16];
        decodeur.DecodeOctets(position, donnees[8] % sizeof octets, octets);
    } catch (sdd::exceptions::ErreurDeserialisation const&) {
    }
    return 0;
}
