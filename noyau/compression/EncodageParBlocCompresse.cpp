#include "noyau/compression/EncodageParBlocCompresse.h"

#include "noyau/compression/detail/Zlib.h"
#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/Flux.h"
#include "noyau/flux/VarElias.h"

#include <zlib.h>

#include <algorithm>

namespace sdd {

namespace {

[[noreturn]] void LanceTypeInconnu()
{
    throw exceptions::ErreurDeserialisation(UniChaine("Type de compression inconnu"));
}

} // namespace

EncodageParBlocCompresse::EncodageParBlocCompresse(FluxSortie* sortie, unsigned int tailleBloc,
                                                   eTypeCompression type)
    : _sortie(sortie), _tailleBloc(tailleBloc), _tailleTravail(0), _type(type),
      _deflate(nullptr, detail::LibereDeflate)
{
    VarElias::Ecris(*_sortie, _tailleBloc);
    _sortie->Mets(static_cast<unsigned char>(_type));
}

EncodageParBlocCompresse::~EncodageParBlocCompresse() = default;

_typPositionEncodageBloc EncodageParBlocCompresse::_PlacePour(std::uint64_t n)
{
    // Garde : la longueur d'un bloc non comprimé doit tenir dans un VarElias.
    if (n > VarElias::kValeurMax) {
        exceptions::LanceIndexHorsBorne(static_cast<unsigned long>(n), 0, VarElias::kValeurMax);
    }
    // Volontaire : un bloc vide est écrit quand l'élément dépasse à lui seul la taille.
    if (_tailleBloc < n + _blocCourant.DonneTaille()) {
        _VideBlocCourant();
    }
    return {_sortie->DonnePosition(), _blocCourant.DonneTaille()};
}

_typPositionEncodageBloc EncodageParBlocCompresse::EncodeOctets(char const* octets, unsigned long n)
{
    _typPositionEncodageBloc const position = _PlacePour(n);
    _blocCourant.Mets(octets, static_cast<unsigned int>(n));
    return position;
}

_typPositionEncodageBloc EncodageParBlocCompresse::EncodeChaine(ChaineN chaine,
                                                                ChaineN::Codage codage)
{
    _chaine.Vide();
    chaine.Ecris(_chaine, codage);
    unsigned int const zero = (codage == ChaineN::kUTF16LE || codage == ChaineN::kUTF16BE) ? 2 : 1;
    std::uint32_t const longueur = _chaine.DonneTaille() - zero;
    // Volontaire : la place comptée est celle d'une longueur VarElias, pas celle du zéro
    // réellement écrit ; c'est elle qui décide où les blocs sont coupés.
    _typPositionEncodageBloc const position =
        _PlacePour(std::uint64_t(longueur) + VarElias::Longueur(longueur));
    _blocCourant.Mets(_chaine.DonneDonnees(), _chaine.DonneTaille());
    return position;
}

void EncodageParBlocCompresse::TermineEncodage()
{
    _VideBlocCourant();
}

void EncodageParBlocCompresse::_VideBlocCourant()
{
    unsigned char const* stockes = _blocCourant.DonneDonnees();
    uLongf longueur = _blocCourant.DonneTaille();
    switch (_type) {
    case kSansCompression:
        break;
    case kCompressionZlib: {
        // Fait au premier bloc : compressBound(taille de bloc), pour qu'un bloc qui ne se
        // comprime pas garde toute sa forme comprimée ; plus pour un élément hors taille.
        uLong const borne = compressBound(std::max<uLong>(longueur, _tailleBloc));
        if (borne > _tailleTravail) {
            _travail.reset(new unsigned char[borne]);
            _tailleTravail = borne;
        }
        if (_deflate == nullptr) {
            _deflate.reset(detail::NouveauDeflate());
        }
        std::uint64_t comprimes = _tailleTravail;
        if (!detail::Comprime(*_deflate, _travail.get(), &comprimes, stockes,
                              _blocCourant.DonneTaille())) {
            throw exceptions::ErreurDeserialisation(UniChaine("Échec de la compression d’un bloc"));
        }
        longueur = static_cast<uLongf>(comprimes);
        stockes = _travail.get();
        break;
    }
    default:
        LanceTypeInconnu();
    }
    VarElias::Ecris(*_sortie, static_cast<std::uint32_t>(longueur));
    _sortie->Mets(stockes, static_cast<unsigned int>(longueur));
    _blocCourant.Vide();
}

} // namespace sdd
