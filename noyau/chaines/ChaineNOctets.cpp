// ChaineN : formes en octets, échappement, jonction et hachage.

#include "noyau/chaines/ChaineN.h"

#include "noyau/chaines/ConvertisseurChaineN.h"
#include "noyau/chaines/detail/Pourcent.h"
#include "noyau/chaines/detail/TablesCodages.h"
#include "noyau/chaines/detail/UTF8.h"

#include <cstring>
#include <ostream>
#include <string>

namespace sdd {

char* ChaineN::_TamponDeConversion(std::size_t taille) const
{
    // Le cache garde sa taille en tête et resert tant qu'elle suffit.
    std::size_t capacite = 0;
    if (_convertisseur) {
        std::memcpy(&capacite, _convertisseur.get(), sizeof capacite);
    }
    if (capacite < taille) {
        _convertisseur.reset(new char[sizeof taille + taille]);
        std::memcpy(_convertisseur.get(), &taille, sizeof taille);
    }
    return _convertisseur.get() + sizeof taille;
}

char const* ChaineN::PreteCString(Codage codage, unsigned long taille, char* tampon) const
{
    std::u16string_view const texte = _Etendue();
    // Les chaînes vides partagées sont lues de tous les fils : rien ne s'écrit en elles.
    static constexpr char kVide[2] = {0, 0};
    if (tampon == nullptr && texte.empty()) {
        return kVide;
    }
    auto const& convertisseur = ConvertisseurChaineN::DonnePourCodage(codage);
    std::size_t const terminateur = convertisseur.TailleTerminateur();
    if (tampon == nullptr) {
        taille = convertisseur.MaxOctetsPourUnites(texte.size()) + terminateur;
        tampon = _TamponDeConversion(taille);
    } else if (taille < terminateur) {
        return nullptr;
    }
    std::size_t const n =
        convertisseur.DepuisUTF16(texte.data(), texte.size(), tampon, taille - terminateur);
    std::memset(tampon + n, 0, terminateur);
    return tampon;
}

char* ChaineN::CreeCString(Codage codage) const
{
    auto const& convertisseur = ConvertisseurChaineN::DonnePourCodage(codage);
    std::size_t const taille =
        convertisseur.MaxOctetsPourUnites(Longueur()) + convertisseur.TailleTerminateur();
    char* tampon = new char[taille];
    PreteCString(codage, taille, tampon);
    return tampon;
}

std::string ChaineN::DonneStdString(Codage codage) const
{
    auto const& convertisseur = ConvertisseurChaineN::DonnePourCodage(codage);
    std::string octets(convertisseur.MaxOctetsPourUnites(Longueur()), '\0');
    octets.resize(
        convertisseur.DepuisUTF16(PreteUniCString(), Longueur(), octets.data(), octets.size()));
    return octets;
}

std::ostream& operator<<(std::ostream& flux, ChaineN const& chaine)
{
    return flux << chaine.DonneStdString(ChaineN::kUTF8);
}

// Échappement

ChaineN ChaineN::DonneChaineEchappayPourcent(ChaineN const& garder, ChaineN const& forcer) const
{
    if (EstVide()) {
        return kChaineNNulle;
    }
    std::u16string const texte = detail::EchappePourcent(
        _Etendue(), garder._Etendue(), forcer._Etendue(), [](std::u16string_view unites) {
            std::string octets(detail::LongueurUTF8(unites.data(), unites.size()), '\0');
            detail::EncodeUTF8(unites.data(), unites.size(), octets.data(), octets.size());
            return octets;
        });
    return ChaineN(texte.data(), texte.size());
}

ChaineN ChaineN::DonneChaineDesechappeePourcent() const
{
    if (EstVide()) {
        return kChaineNNulle;
    }
    return ChaineN(detail::DesechappePourcent(_Unites(), Longueur()), kUTF8);
}

// Jonction

namespace {

template <typename Parties> ChaineN JoinsParties(ChaineN const& separateur, Parties const& parties)
{
    ChaineN resultat;
    bool premiere = true;
    for (ChaineN const& partie : parties) {
        if (!premiere) {
            resultat.AjouteFin(separateur);
        }
        resultat.AjouteFin(partie);
        premiere = false;
    }
    return resultat;
}

} // namespace

ChaineN ChaineN::Joindre(std::vector<ChaineN> const& parties) const
{
    return JoinsParties(*this, parties);
}

ChaineN ChaineN::Joindre(ListeC<ChaineN> const& parties) const
{
    return JoinsParties(*this, parties);
}

ChaineN ChaineN::Joindre(ListeT<ChaineN, 2, 1, unsigned long> const& parties) const
{
    return JoinsParties(*this, parties);
}

// Divers

std::uint64_t ChaineN::hash() const noexcept
{
    std::uint64_t h = 0;
    char16_t const* unites = PreteUniCString();
    for (unsigned long i = 0; i < Longueur(); ++i) {
        h = (h >> 28) ^ (h << 4) ^ unites[i]; // pas une rotation 32 bits : voulu
    }
    return h;
}

char16_t ChaineN::DonneUniCarPourCarMacRoman(char c) noexcept
{
    return detail::gTableMacRoman[static_cast<unsigned char>(c)];
}

char ChaineN::DonneCarMacRomanPourUniCar(char16_t c)
{
    auto const& macRoman = static_cast<ConvertisseurChaineNCodageUnOctet const&>(
        ConvertisseurChaineN::DonnePourCodage(kMacRoman));
    return static_cast<char>(macRoman.DonneOctet(c));
}

void ChaineN::LibereConvertisseurPourCodage() noexcept
{
    ConvertisseurChaineN::LibereTous();
}

} // namespace sdd