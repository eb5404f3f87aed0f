// Table triée lue d'octets quelconques : lue en entier ou en partie (un échec garde les nœuds
// déjà lus), elle doit rester sûre à parcourir, modifier, réécrire et relire, quelles que
// soient sa forme, ses couleurs et son compte.

#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/TamponMemoire.h"
#include "noyau/lexique/TableTriee.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

using Table = sdd::TableTriee<sdd::ChaineN, std::uint16_t>;

long Parcourt(Table const& table)
{
    long vus = 0;
    for (Table::Iterateur it(table); it.Prochain();) {
        ++vus;
    }
    return vus;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(unsigned char const* donnees, std::size_t taille)
{
    sdd::TamponMemoire flux(const_cast<char*>(reinterpret_cast<char const*>(donnees)),
                            static_cast<int>(taille), false);
    Table table;
    try {
        table.Lis(flux);
    } catch (sdd::exceptions::Exception const&) {
    }
    if (Parcourt(table) != table.NbEnfants()) {
        std::abort();
    }
    // Les clés peuvent être dans le désordre et les couleurs quelconques : les opérations
    // restent sûres.
    Table::Iterateur it(table);
    if (it.Prochain()) {
        sdd::ChaineN const premiere = it.Clef();
        table.Supprime(premiere);
    }
    for (std::size_t i = 0; i < taille && i < 64; ++i) {
        sdd::ChaineN const clef(static_cast<char16_t>(u'a' + donnees[i] % 8));
        if (donnees[i] & 0x80) {
            table.Supprime(clef);
        } else {
            table.Insere(clef, std::uint16_t(i));
        }
    }
    if (Parcourt(table) != table.NbEnfants()) {
        std::abort();
    }
    try {
        sdd::TamponMemoire sortie(16);
        table.Ecris(sortie);
        sortie.PositionneAuDebut();
        Table relue;
        relue.Lis(sortie);
        // Une forme écrite se relit et se réécrit à l'identique.
        sdd::TamponMemoire reecrite(16);
        relue.Ecris(reecrite);
        if (reecrite.DonneTaille() != sortie.DonneTaille() ||
            std::memcmp(reecrite.DonneDonnees(), sortie.DonneDonnees(),
                        std::size_t(sortie.DonneTaille())) != 0) {
            std::abort();
        }
    } catch (sdd::exceptions::Exception const&) {
        // Un compte qui ne s'écrit pas (passé sous zéro, ou au-delà du code) : IndexHorsBorne.
    }
    return 0;
}
