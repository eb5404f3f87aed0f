// ChaineN dans les flux d'octets.

#include "noyau/chaines/ChaineN.h"
#include "noyau/chaines/ConvertisseurChaineN.h"
#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/Flux.h"

#include <string>

namespace sdd {

unsigned int ChaineN::Ecris(FluxSortie& flux, Codage codage) const
{
    static constexpr char16_t kZero = 0;
    // Le zéro termine la forme écrite : un texte qui en contient ne se relirait pas.
    if (_Etendue().find(kZero) != std::u16string_view::npos) {
        throw exceptions::OperationInvalide();
    }
    auto const& convertisseur = ConvertisseurChaineN::DonnePourCodage(codage);
    unsigned int const debut = flux.DonnePosition();
    if (!EstVide()) {
        convertisseur.EcrisUnites(flux, _Unites(), Longueur());
    }
    convertisseur.EcrisUnites(flux, &kZero, 1); // le zéro final, dans le codage
    return debut;
}

ChaineN& ChaineN::Lis(FluxEntree& flux, Codage codage)
{
    auto const& convertisseur = ConvertisseurChaineN::DonnePourCodage(codage);
    ConvertisseurChaineN::EtatLecture etat;
    std::u16string lu; // la chaîne ne change qu'une fois le zéro final lu
    char16_t unite;
    while (convertisseur.LisUnite(flux, etat, &unite)) {
        if (unite == 0) {
            return *this = ChaineN(lu.data(), lu.size());
        }
        lu.push_back(unite);
    }
    throw exceptions::OperationInvalide();
}

} // namespace sdd
