// Chaînes comprimées de TamponMemoire : deux longueurs VarElias puis le flux zlib du texte UTF-8.

#include "noyau/chaines/ChaineN.h"
#include "noyau/chaines/UniChaine.h"
#include "noyau/compression/detail/Zlib.h"
#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/TamponMemoire.h"
#include "noyau/flux/VarElias.h"
#include "noyau/flux/detail/LectureExacte.h"

#include <zlib.h>

#include <algorithm>
#include <string>
#include <vector>

namespace sdd {

namespace {

std::string EnUTF8(ChaineN const& texte)
{
    return texte.DonneStdString(ChaineN::kUTF8);
}

std::string EnUTF8(UniChaine const& texte)
{
    return texte.DonneQString().toStdString();
}

template <typename Chaine> Chaine DepuisUTF8(char const* octets, std::size_t n);

template <> ChaineN DepuisUTF8<ChaineN>(char const* octets, std::size_t n)
{
    return ChaineN(octets, ChaineN::kUTF8, n);
}

template <> UniChaine DepuisUTF8<UniChaine>(char const* octets, std::size_t n)
{
    return UniChaine(octets, UniChaine::kUTF8, static_cast<int>(n));
}

} // namespace

template <typename Chaine>
unsigned int TamponMemoire::CompresseChaine(FluxSortie& flux, Chaine const& texte)
{
    std::string const utf8 = EnUTF8(texte);
    uLongf longueur = compressBound(utf8.size());
    std::vector<Bytef> donnees(longueur);
    if (compress(donnees.data(), &longueur, reinterpret_cast<Bytef const*>(utf8.data()),
                 utf8.size()) != Z_OK) {
        LanceException(-1);
    }
    // Les deux longueurs sont vérifiées avant d'écrire quoi que ce soit.
    std::uint64_t const plusLongue = std::max<std::uint64_t>(longueur, utf8.size());
    if (plusLongue > VarElias::kValeurMax) {
        exceptions::LanceIndexHorsBorne(plusLongue, 0, VarElias::kValeurMax);
    }
    unsigned int const debut = flux.DonnePosition();
    VarElias::Ecris(flux, static_cast<std::uint32_t>(longueur));
    VarElias::Ecris(flux, static_cast<std::uint32_t>(utf8.size()));
    flux.Mets(donnees.data(), static_cast<unsigned int>(longueur));
    return debut;
}

template <typename Chaine> Chaine TamponMemoire::DecompresseChaine(FluxEntree& flux)
{
    std::uint32_t const longueurComprimee = VarElias::Lis(flux);
    std::uint32_t const longueurTexte = VarElias::Lis(flux);
    TamponMemoire donnees(1);
    if (!detail::LisParTranches(flux, longueurComprimee, donnees)) {
        LanceException(-1);
    }
    // Garde : une longueur de texte mensongère n'alloue pas plus que zlib ne peut produire.
    uLongf longueur = static_cast<uLongf>(
        std::min<std::uint64_t>(longueurTexte, detail::kExpansionMaxZlib * longueurComprimee));
    std::vector<char> texte(std::max<uLongf>(longueur, 1));
    if (uncompress(reinterpret_cast<Bytef*>(texte.data()), &longueur, donnees.DonneDonnees(),
                   donnees.DonneTaille()) != Z_OK) {
        LanceException(-1);
    }
    return DepuisUTF8<Chaine>(texte.data(), longueur);
}

unsigned int TamponMemoire::CompresseUniChaine(FluxSortie& flux, UniChaine const& texte)
{
    return CompresseChaine(flux, texte);
}

unsigned int TamponMemoire::CompresseChaineN(FluxSortie& flux, ChaineN const& texte)
{
    return CompresseChaine(flux, texte);
}

UniChaine TamponMemoire::DecompresseUniChaine(FluxEntree& flux)
{
    return DecompresseChaine<UniChaine>(flux);
}

ChaineN TamponMemoire::DecompresseChaineN(FluxEntree& flux)
{
    return DecompresseChaine<ChaineN>(flux);
}

} // namespace sdd
