// Lecture d'une table de chaînes (avec une donnée d'un octet) depuis des octets quelconques :
// réussie ou non, la table reste cohérente ; réussie, elle se réécrit et se relit à l'identique.

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
    bool lue = true;
    try {
        S::Lis(flux, &table);
    } catch (sdd::exceptions::Exception const&) {
        lue = false;
    }
    auto const chaines = Chaines(table);
    if (chaines.size() != table.Taille()) {
        std::abort();
    }
    if (lue) {
        sdd::TamponMemoire ecrite(16);
        S::Ecris(ecrite, table);
        ecrite.PositionneAuDebut();
        Table relue;
        S::Lis(ecrite, &relue);
        if (Chaines(relue) != chaines) {
            std::abort();
        }
    }
    return 0;
}
