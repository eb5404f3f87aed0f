#include "noyau/erreurs/AlerteErreurFichier.h"

#include <iterator>

namespace {

// Textes tels quels : la traduction viendra avec les langues.
char const* const kTextes[] = {
    "Une erreur de type indéfini s’est produite (code 0).",
    "Espace insuffisant. Opération annulée.",
    "Erreur à la création du fichier.",
    "Erreur à l’ouverture du fichier.",
    "Erreur à la destruction du fichier.",
    "Erreur à l’écriture du fichier.",
    "Erreur à la lecture du fichier.",
};

} // namespace

UniChaine DonneTexteErreurFichier(int code)
{
    if (code < 0 || code >= int(std::size(kTextes))) {
        return UniChaine();
    }
    return UniChaine(kTextes[code]);
}

DAlerteInfoErreur CreeAlerteErreurFichier(int, int codeMessage, int codeExplication,
                                          int numeroErreur, int detail1, int detail2)
{
    return DAlerteInfoErreur(DAlerteInfo::kAlerte, DonneTexteErreurFichier(codeMessage),
                             DonneTexteErreurFichier(codeExplication), numeroErreur, UniChaine(),
                             detail1, detail2);
}
