// ChaineN::Lis sur des octets quelconques, dans chaque codage : le premier octet choisit le
// codage. En UTF-8, le texte lu doit être celui que donne le convertisseur.

#include "noyau/chaines/ChaineN.h"
#include "noyau/chaines/ConvertisseurChaineN.h"
#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/TamponMemoire.h"

#include <cstdlib>
#include <cstring>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(unsigned char const* donnees, std::size_t taille)
{
    if (taille == 0) {
        return 0;
    }
    auto const codage = static_cast<sdd::ChaineN::Codage>(donnees[0] % 7);
    auto const octets = reinterpret_cast<char const*>(donnees + 1);
    std::size_t const n = taille - 1;
    sdd::TamponMemoire flux(const_cast<char*>(octets), static_cast<int>(n), false);
    sdd::ChaineN texte(u"avant");
    while (!flux.EstALaFin()) {
        sdd::ChaineN const avant = texte;
        try {
            texte.Lis(flux, codage);
        } catch (sdd::exceptions::OperationInvalide const&) {
            if (!(texte == avant)) { // un échec laisse le texte d'avant
                std::abort();
            }
            break;
        }
    }
    if (codage == sdd::ChaineN::kUTF8) {
        // Première chaîne : les octets jusqu'au premier zéro.
        void const* const zero = std::memchr(octets, 0, n);
        if (zero != nullptr) {
            std::size_t const longueur = static_cast<char const*>(zero) - octets;
            std::u16string attendu(longueur, u'\0');
            attendu.resize(sdd::ConvertisseurChaineN::DonnePourCodage(codage).VersUTF16(
                octets, longueur, attendu.data()));
            sdd::TamponMemoire relu(const_cast<char*>(octets), static_cast<int>(n), false);
            sdd::ChaineN premiere;
            premiere.Lis(relu, codage);
            if (!(premiere == sdd::ChaineN(attendu.data(), attendu.size()))) {
                std::abort();
            }
        }
    }
    return 0;
}
