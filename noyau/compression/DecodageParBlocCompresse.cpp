#include "noyau/compression/DecodageParBlocCompresse.h"

#include "noyau/compression/detail/Zlib.h"
#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/Flux.h"
#include "noyau/flux/VarElias.h"
#include "noyau/flux/detail/LectureExacte.h"

#include <algorithm>
#include <cstring>

namespace sdd {

namespace {

// Réserve faite d'avance pour le bloc décodé ; au-delà, il grandit à la demande (une taille
// de bloc mensongère dans l'en-tête n'alloue rien).
constexpr unsigned int kReserveMax = 1u << 20;

[[noreturn]] void LanceZoneAbimee(char const* explication)
{
    throw exceptions::ErreurDeserialisation(UniChaine(explication));
}

} // namespace

DecodageParBlocCompresse::DecodageParBlocCompresse(FluxEntree* entree, unsigned long debut)
    : _entree(entree), _entreeMemoire(dynamic_cast<FluxEntreeMemoire*>(entree)), _debut(debut),
      _inflate(nullptr, detail::LibereInflate)
{
    if (debut > _Limite()) {
        LanceZoneAbimee("Début de la zone au-delà des données");
    }
    _entree->Positionne(static_cast<unsigned int>(debut));
    _tailleBloc = VarElias::Lis(*_entree);
    _blocDecode.Reserve(static_cast<int>(std::min(_tailleBloc, kReserveMax)));
    if (_entree->EstALaFin()) {
        LanceZoneAbimee("Type de compression absent");
    }
    _type = static_cast<eTypeCompression>(_entree->Donne());
}

DecodageParBlocCompresse::~DecodageParBlocCompresse() = default;

void DecodageParBlocCompresse::DecodeOctets(_typPositionEncodageBloc const& position,
                                            unsigned long n, char* dest)
{
    _PlaceTamponSelonPosition(position);
    if (position.decalage > _blocDecode.DonneTaille() ||
        n > _blocDecode.DonneTaille() - position.decalage) {
        LanceZoneAbimee("Octets au-delà du bloc");
    }
    std::memcpy(dest, _blocDecode.DonneDonnees() + position.decalage, n);
}

void DecodageParBlocCompresse::DecodeChaine(_typPositionEncodageBloc const& position,
                                            ChaineN& chaine, ChaineN::Codage codage)
{
    _PlaceTamponSelonPosition(position);
    // Une chaîne que la fin du bloc (ou sa coupure) atteint lève ce que lève ChaineN::Lis,
    // sans que le tampon soit placé hors de ses données.
    if (position.decalage > _blocDecode.DonneTaille()) {
        throw exceptions::OperationInvalide();
    }
    _blocDecode.Positionne(position.decalage);
    chaine.Lis(_blocDecode, codage);
}

std::uint64_t DecodageParBlocCompresse::_Limite() const
{
    // Se placer au-delà d'un tampon l'agrandirait, et une projection y refuse toute lecture :
    // on s'arrête avant. Une autre entrée ne dit pas sa taille.
    return _entreeMemoire != nullptr ? _entreeMemoire->DonneTaille() : std::uint64_t(0xFFFFFFFFu);
}

void DecodageParBlocCompresse::_PlaceTamponSelonPosition(_typPositionEncodageBloc const& position)
{
    if (_positionCourante == position.positionBloc) {
        return;
    }
    if (_type != kSansCompression && _type != kCompressionZlib) {
        LanceZoneAbimee("Type de compression inconnu");
    }
    // Le cache ne vaut qu'une fois le bloc décodé en entier.
    _positionCourante.reset();
    _LisBloc(position.positionBloc);
    _Decomprime();
    _positionCourante = position.positionBloc;
}

void DecodageParBlocCompresse::_LisBloc(unsigned int positionBloc)
{
    // Aucun bloc ne commence dans l'en-tête (taille de bloc, puis type).
    if (positionBloc < VarElias::Longueur(_tailleBloc) + 1) {
        LanceZoneAbimee("Bloc dans l’en-tête de la zone");
    }
    std::uint64_t const ou = std::uint64_t(positionBloc) + _debut;
    if (ou >= _Limite()) {
        LanceZoneAbimee("Bloc au-delà des données");
    }
    _entree->Positionne(static_cast<unsigned int>(ou));
    std::uint32_t const n = VarElias::Lis(*_entree);
    if (!detail::LisParTranches(*_entree, n, _blocLu)) {
        LanceZoneAbimee("Bloc tronqué");
    }
}

void DecodageParBlocCompresse::_Decomprime()
{
    unsigned int const n = _blocLu.DonneTaille();
    std::uint64_t decode = n;
    if (_type == kSansCompression) {
        _blocDecode.Reserve(static_cast<int>(n));
        std::memcpy(_blocDecode.DonneDonnees(), _blocLu.DonneDonnees(), n);
    } else {
        if (_inflate == nullptr) {
            _inflate.reset(detail::NouvelInflate());
        }
        // Un bloc plus grand que la taille annoncée (élément hors taille) fait grandir le
        // tampon, dans la limite de ce que n octets comprimés peuvent donner.
        std::uint64_t const plafond = std::min<std::uint64_t>(detail::kExpansionMaxZlib * n + 64,
                                                              std::uint64_t(VarElias::kValeurMax));
        for (;;) {
            decode = _blocDecode.DonneCapacite();
            detail::FinInflate const fin = detail::Decomprime(*_inflate, _blocDecode.DonneDonnees(),
                                                              &decode, _blocLu.DonneDonnees(), n);
            // Un bloc coupé à la limite par les programmes qui l'ont écrit (ou abîmé) donne ce
            // qui précède la coupure, comme zlib le rapporte : les éléments entiers se relisent.
            if (fin != detail::FinInflate::PlaceManque || _blocDecode.DonneCapacite() >= plafond) {
                break;
            }
            _blocDecode.Agrandir(static_cast<unsigned int>(
                std::min<std::uint64_t>(2 * std::uint64_t(_blocDecode.DonneCapacite()), plafond)));
        }
    }
    _blocDecode.MetsTaille(static_cast<unsigned int>(decode));
    _blocDecode.Positionne(static_cast<unsigned int>(decode));
}

} // namespace sdd
