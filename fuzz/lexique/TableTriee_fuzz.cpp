// Table triée lue d'octets quelconques : refus par une exception de la bibliothèque, ou un
// arbre rouge-noir valide dont le compte est juste, qu'on peut modifier et réécrire.

#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/TamponMemoire.h"
#include "noyau/lexique/TableTriee.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(unsigned char const* donnees, std::size_t taille)
{
    sdd::TamponMemoire flux(const_cast<char*>(reinterpret_cast<char const*>(donnees)),
                            static_cast<int>(taille), false);
    sdd::TableTriee<sdd::ChaineN, std::uint16_t> table;
    try {
        table.Lis(flux);
    } catch (sdd::exceptions::Exception const&) {
        if (table.Taille() != 0) {
            std::abort();
        }
        return 0;
    }
    if (table.NbEnfants() != long(table.Taille()) || !table.EstArbreValide()) {
        std::abort();
    }
    // Les clés peuvent être dans le désordre : les opérations restent sûres.
    sdd::TableTriee<sdd::ChaineN, std::uint16_t>::Iterateur it(table);
    if (it.Prochain()) {
        sdd::ChaineN const premiere = it.Clef();
        table.Supprime(premiere);
    }
    table.Insere(sdd::ChaineN(u"fuzz"), 1);
    sdd::TamponMemoire sortie(16);
    table.Ecris(sortie);
    return 0;
}
