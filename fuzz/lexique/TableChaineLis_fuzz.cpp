// Lecture d'une table de chaînes (avec une donnée d'un octet) depuis des octets quelconques :
// réussie ou non, ce qui a été lu se parcourt, se réécrit et se relit à l'identique.

#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/TamponMemoire.h"
#include "noyau/lexique/SerialiseurTableChaine.h"
#include "noyau/lexique/TableChaineT.h"

#include <cstdlib>
#include <string>
#include <vector>

namespace {

using Table = sdd::TableChaineT<std::uint8_t>;
using S = sdd::Serialiseur<sdd::TableChaineNoyau>;

std::vector<std::u16string> Chaines(Table const& table)
{
    std::vector<std::u16string> chaines;
    sdd::TableChaineNoyau::__Iterateur it(table);
    while (it.Prochain()) {
        sdd::ChaineN const& c = it.Clef();
        chaines.emplace_back(c.PreteUniCString() ? c.PreteUniCString() : u"", c.Longueur());
    }
    return chaines;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(unsigned char const* donnees, std::size_t taille)
{
    sdd::TamponMemoire flux(const_cast<char*>(reinterpret_cast<char const*>(donnees)),
                            static_cast<int>(taille), false);
    Table table;
    try {
        S::Lis(flux, &table);
    } catch (sdd::exceptions::Exception const&) {
    }
    sdd::TamponMemoire ecrite(16);
    S::Ecris(ecrite, table);
    ecrite.PositionneAuDebut();
    Table relue;
    S::Lis(ecrite, &relue);
    if (Chaines(relue) != Chaines(table) || relue.Taille() != table.Taille()) {
        std::abort();
    }
    return 0;
}
