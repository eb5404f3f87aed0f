// Codes VarElias lus d'octets quelconques : la forme en mémoire et la forme en flux doivent
// donner les mêmes valeurs, ou la même erreur au même endroit.

#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/TamponMemoire.h"
#include "noyau/flux/VarElias.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(unsigned char const* donnees, std::size_t taille)
{
    sdd::TamponMemoire flux(const_cast<char*>(reinterpret_cast<char const*>(donnees)),
                            static_cast<int>(taille), false);
    unsigned char const* p = donnees;
    unsigned char const* const fin = donnees + taille;
    while (p < fin) {
        std::uint32_t enMemoire = 0, enFlux = 0;
        bool erreurMemoire = false, erreurFlux = false;
        try {
            p += sdd::VarElias::Lis(p, fin, &enMemoire);
        } catch (sdd::exceptions::ErreurDeserialisation const&) {
            erreurMemoire = true;
        }
        try {
            enFlux = sdd::VarElias::Lis(flux);
        } catch (sdd::exceptions::ErreurDeserialisation const&) {
            erreurFlux = true;
        }
        if (erreurMemoire != erreurFlux || enMemoire != enFlux) {
            std::abort();
        }
        if (erreurMemoire) {
            break;
        }
        unsigned char code[sdd::VarElias::kLongueurMax];
        if (enMemoire > sdd::VarElias::kValeurMax ||
            sdd::VarElias::Ecris(code, enMemoire) != sdd::VarElias::Longueur(enMemoire)) {
            std::abort();
        }
    }
    return 0;
}
