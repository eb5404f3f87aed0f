// Chaînes comprimées lues d'octets quelconques : seuls ErreurDeserialisation et l'entier -1
// peuvent sortir.

#include "noyau/chaines/ChaineN.h"
#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/TamponMemoire.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(unsigned char const* donnees, std::size_t taille)
{
    sdd::TamponMemoire flux(const_cast<char*>(reinterpret_cast<char const*>(donnees)),
                            static_cast<int>(taille), false);
    try {
        sdd::TamponMemoire::DecompresseChaineN(flux);
    } catch (sdd::exceptions::ErreurDeserialisation const&) {
    } catch (int code) {
        if (code != -1) {
            std::abort();
        }
    }
    return 0;
}
