#pragma once

#include "noyau/Export.h"
#include "noyau/chaines/ChaineN.h"
#include "noyau/compression/BlocCompresse.h"
#include "noyau/flux/TamponMemoire.h"

#include <memory>

struct z_stream_s;

namespace sdd {

class FluxSortie;

// Écrit une suite de petits éléments (octets, chaînes) par blocs bornés, comprimés ou non ;
// chaque élément se relit seul par DecodageParBlocCompresse grâce à sa position.
class NOYAU_EXPORT EncodageParBlocCompresse
{
public:
    // Écrit l'en-tête : taille de bloc en VarElias, puis l'octet du type. La position 0 de
    // sortie doit être le début de la zone.
    EncodageParBlocCompresse(FluxSortie* sortie, unsigned int tailleBloc, eTypeCompression type);
    EncodageParBlocCompresse(EncodageParBlocCompresse const&) = delete;
    EncodageParBlocCompresse& operator=(EncodageParBlocCompresse const&) = delete;
    // N'écrit rien : TermineEncodage doit avoir été appelé.
    ~EncodageParBlocCompresse();

    _typPositionEncodageBloc EncodeOctets(char const* octets, unsigned long n);
    // La chaîne dans le codage, suivie de son zéro final (ChaineN::Ecris).
    _typPositionEncodageBloc EncodeChaine(ChaineN chaine, ChaineN::Codage codage);
    // Écrit le dernier bloc, même vide.
    void TermineEncodage();

private:
    // Vide le bloc courant si n octets de plus dépassent la taille de bloc, puis rend la
    // position du prochain élément.
    _typPositionEncodageBloc _PlacePour(std::uint64_t n);
    void _VideBlocCourant();

    FluxSortie* _sortie;
    unsigned int _tailleBloc;
    TamponMemoire _blocCourant{256};
    TamponMemoire _chaine{256}; // forme codée de la dernière chaîne
    // Type 1 seulement, fait au premier bloc : au moins compressBound(taille de bloc) octets.
    std::unique_ptr<unsigned char[]> _travail;
    unsigned long _tailleTravail;
    eTypeCompression _type;
    // Flux deflate gardé d'un bloc à l'autre : la sortie est celle de compress, sans
    // l'allocation de ses tables à chaque bloc.
    std::unique_ptr<z_stream_s, void (*)(z_stream_s*)> _deflate;
};

} // namespace sdd
