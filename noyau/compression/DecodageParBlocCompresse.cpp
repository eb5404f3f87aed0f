#include "noyau/compression/DecodageParBlocCompresse.h"

#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/Flux.h"
#include "noyau/flux/VarElias.h"

#include <zlib.h>

#include <algorithm>
#include <cstring>
#include <new>

namespace sdd {

namespace {

// Réserve faite d'avance pour le bloc décodé ; au-delà, il grandit à la demande (une taille
// de bloc mensongère dans l'en-tête n'alloue rien).
constexpr unsigned int kReserveMax = 1u << 20;
// Les octets stockés sont lus par tranches : une longueur mensongère n'alloue que ce qui
// arrive vraiment.
constexpr unsigned int kTranche = 1u << 20;
// Au plus 1032 octets sortent d'un octet de flux deflate.
constexpr std::uint64_t kExpansionMaxZlib = 1032;

[[noreturn]] void LanceZoneAbimee(char const* explication)
{
    throw exceptions::ErreurDeserialisation(UniChaine(explication));
}

void LibereInflate(z_stream_s* flux)
{
    if (flux != nullptr) {
        inflateEnd(flux);
        delete flux;
    }
}

// Ce que ferait uncompress, sur un flux déjà prêt : Z_OK, Z_BUF_ERROR quand la place manque,
// une autre erreur quand les données sont abîmées ou incomplètes.
int Decomprime(z_stream& flux, unsigned char* dest, uLongf* longueur, unsigned char const* source,
               uLong n)
{
    inflateReset(&flux);
    flux.next_in = const_cast<unsigned char*>(source);
    flux.avail_in = static_cast<uInt>(n);
    flux.next_out = dest;
    flux.avail_out = static_cast<uInt>(*longueur);
    int const code = inflate(&flux, Z_FINISH);
    *longueur = flux.total_out;
    if (code == Z_STREAM_END) {
        return Z_OK;
    }
    return code == Z_BUF_ERROR && flux.avail_out == 0 ? Z_BUF_ERROR : Z_DATA_ERROR;
}

} // namespace

DecodageParBlocCompresse::DecodageParBlocCompresse(FluxEntree* entree, unsigned long debut)
    : _entree(entree), _entreeMemoire(dynamic_cast<FluxEntreeMemoire*>(entree)), _debut(debut),
      _inflate(nullptr, LibereInflate)
{
    std::uint64_t const limite =
        _entreeMemoire != nullptr ? _entreeMemoire->DonneTaille() : std::uint64_t(0xFFFFFFFFu);
    if (debut > limite) {
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
    if (position.decalage > _blocDecode.DonneTaille()) {
        LanceZoneAbimee("Chaîne au-delà du bloc");
    }
    _blocDecode.Positionne(position.decalage);
    try {
        chaine.Lis(_blocDecode, codage);
    } catch (exceptions::OperationInvalide const&) {
        LanceZoneAbimee("Chaîne sans fin dans le bloc");
    }
}

void DecodageParBlocCompresse::_PlaceTamponSelonPosition(_typPositionEncodageBloc const& position)
{
    if (position.positionBloc == _positionCourante) {
        return;
    }
    if (_type != kSansCompression && _type != kCompressionZlib) {
        LanceZoneAbimee("Type de compression inconnu");
    }
    // Le cache ne vaut qu'une fois le bloc décodé en entier.
    _positionCourante = 0;
    _LisBloc(position.positionBloc);
    _Decomprime();
    _positionCourante = position.positionBloc;
}

void DecodageParBlocCompresse::_LisBloc(unsigned int positionBloc)
{
    std::uint64_t const ou = std::uint64_t(positionBloc) + _debut;
    // Garde : se placer hors d'un tampon l'agrandirait ; on s'arrête avant.
    std::uint64_t const limite =
        _entreeMemoire != nullptr ? _entreeMemoire->DonneTaille() : std::uint64_t(0xFFFFFFFFu);
    if (ou >= limite) {
        LanceZoneAbimee("Bloc au-delà des données");
    }
    _entree->Positionne(static_cast<unsigned int>(ou));
    std::uint32_t const n = VarElias::Lis(*_entree);
    // Une projection refuse de lire au-delà de sa fin par IndexHorsBorne : on le dit avant.
    if (_entreeMemoire != nullptr &&
        n > std::uint64_t(_entreeMemoire->DonneTaille()) - _entreeMemoire->DonnePosition()) {
        LanceZoneAbimee("Bloc tronqué");
    }
    _blocLu.Vide();
    while (_blocLu.DonneTaille() < n) {
        unsigned int const deja = _blocLu.DonneTaille();
        unsigned int const voulus = std::min(n - deja, kTranche);
        _blocLu.Reserve(static_cast<int>(deja + voulus));
        if (_entree->Donne(voulus, _blocLu.DonneDonnees() + deja) < voulus) {
            LanceZoneAbimee("Bloc tronqué");
        }
        _blocLu.MetsTaille(deja + voulus);
    }
}

void DecodageParBlocCompresse::_Decomprime()
{
    unsigned int const n = _blocLu.DonneTaille();
    uLongf decode = n;
    if (_type == kSansCompression) {
        _blocDecode.Reserve(static_cast<int>(n));
        std::memcpy(_blocDecode.DonneDonnees(), _blocLu.DonneDonnees(), n);
    } else {
        if (_inflate == nullptr) {
            auto flux = std::make_unique<z_stream>();
            if (inflateInit(flux.get()) != Z_OK) {
                throw std::bad_alloc();
            }
            _inflate.reset(flux.release());
        }
        // Un bloc plus grand que la taille annoncée (élément hors taille) fait grandir le
        // tampon, dans la limite de ce que n octets comprimés peuvent donner.
        std::uint64_t const plafond = std::min<std::uint64_t>(kExpansionMaxZlib * n + 64,
                                                              std::uint64_t(VarElias::kValeurMax));
        for (;;) {
            decode = _blocDecode.DonneCapacite();
            int const code = Decomprime(*_inflate, _blocDecode.DonneDonnees(), &decode,
                                        _blocLu.DonneDonnees(), n);
            if (code == Z_OK) {
                break;
            }
            if (code != Z_BUF_ERROR || _blocDecode.DonneCapacite() >= plafond) {
                LanceZoneAbimee("Bloc comprimé illisible");
            }
            _blocDecode.Agrandir(static_cast<unsigned int>(
                std::min<std::uint64_t>(2 * std::uint64_t(_blocDecode.DonneCapacite()), plafond)));
        }
    }
    _blocDecode.MetsTaille(static_cast<unsigned int>(decode));
    _blocDecode.Positionne(static_cast<unsigned int>(decode));
}

} // namespace sdd
