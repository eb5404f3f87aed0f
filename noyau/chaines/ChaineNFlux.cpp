// ChaineN dans les flux d'octets.

#include "noyau/chaines/ChaineN.h"
#include "noyau/chaines/ConvertisseurChaineN.h"
#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/Flux.h"

#include <algorithm>
#include <string>

namespace sdd {

unsigned int ChaineN::Ecris(FluxSortie& flux, Codage codage) const
{
    static constexpr char16_t kZero = 0;
    auto const& convertisseur = ConvertisseurChaineN::DonnePourCodage(codage);
    // Rien ne s'écrit qui ne se relirait pas unité pour unité : ni zéro, qui termine la
    // forme écrite, ni ce que le codage ne sait pas dire (demi-codet seul en UTF-8, unité
    // absente d'une page de code).
    std::string octets(convertisseur.MaxOctetsPourUnites(Longueur()), '\0');
    octets.resize(
        convertisseur.DepuisUTF16(PreteUniCString(), Longueur(), octets.data(), octets.size()));
    std::u16string relu(convertisseur.MaxUnitesPourOctets(octets.size()), u'\0');
    relu.resize(convertisseur.VersUTF16(octets.data(), octets.size(), relu.data()));
    if (relu != _Etendue() || relu.find(kZero) != std::u16string::npos) {
        throw exceptions::OperationInvalide();
    }
    unsigned int const debut = flux.DonnePosition();
    constexpr std::size_t kTranche = std::size_t(1) << 20;
    for (std::size_t i = 0; i < octets.size(); i += kTranche) {
        std::size_t const n = std::min(kTranche, octets.size() - i);
        flux.Mets(reinterpret_cast<unsigned char const*>(octets.data() + i),
                  static_cast<unsigned int>(n));
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
