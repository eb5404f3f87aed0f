// Consultation sur disque d'octets quelconques : en place sur un tampon et octet par octet sur
// un flux séquentiel, l'ouverture et chaque question reçoivent la même réponse ou la même
// erreur. Les questions sont tirées des octets eux-mêmes.

#include "noyau/chaines/ChaineN.h"
#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/TamponMemoire.h"
#include "noyau/lexique/TableChaineSurDisqueNoyau.h"
#include "tests/lexique/FluxSequentiel.h"

#include <QString>

#include <cstdlib>
#include <string>
#include <typeinfo>

namespace {

// La réponse, ou le nom de l'erreur suivi de son explication.
template <typename Question> std::string Reponse(Question question)
{
    try {
        return question() ? "oui" : "non";
    } catch (sdd::exceptions::Exception const& e) {
        return std::string(typeid(e).name()) + QString(e.Explication()).toStdString();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(unsigned char const* donnees, std::size_t taille)
{
    sdd::TamponMemoire memoire(const_cast<char*>(reinterpret_cast<char const*>(donnees)),
                               static_cast<int>(taille), false);
    aide::FluxSequentiel sequentiel(donnees, taille);
    sdd::TableChaineSurDisqueNoyau enPlace, parOctets;
    std::string const a = Reponse([&] {
        enPlace.Init(&memoire, 0);
        return true;
    });
    std::string const b = Reponse([&] {
        parOctets.Init(&sequentiel, 0);
        return true;
    });
    if (a != b) {
        std::abort();
    }
    if (a != "oui") {
        return 0;
    }
    // Questions : la chaîne vide, puis des morceaux UTF-8 de la fin des données.
    for (std::size_t debut = taille; debut + 12 >= taille && debut <= taille; --debut) {
        sdd::ChaineN const question(reinterpret_cast<char const*>(donnees + debut),
                                    sdd::ChaineN::kUTF8, taille - debut);
        if (Reponse([&] { return enPlace.Possede(question); }) !=
            Reponse([&] { return parOctets.Possede(question); })) {
            std::abort();
        }
        if (debut == 0) {
            break;
        }
    }
    return 0;
}
