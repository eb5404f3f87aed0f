#pragma once

#include "noyau/Export.h"
#include "noyau/chaines/ChaineN.h"
#include "noyau/compression/BlocCompresse.h"
#include "noyau/flux/TamponMemoire.h"

#include <memory>

struct z_stream_s;

namespace sdd {

class FluxEntree;
class FluxEntreeMemoire;

// Relit les éléments écrits par EncodageParBlocCompresse : seul le bloc de l'élément est lu
// et décomprimé ; le dernier bloc décodé reste en cache.
//
// Une zone abîmée (flux zlib invalide, longueur au-delà du flux, décalage ou compte au-delà
// du bloc, chaîne sans fin) lève ErreurDeserialisation ; rien n'est lu hors des données.
class NOYAU_EXPORT DecodageParBlocCompresse
{
public:
    // Lit l'en-tête à debut. Un type inconnu n'est signalé qu'à la première lecture.
    DecodageParBlocCompresse(FluxEntree* entree, unsigned long debut);
    DecodageParBlocCompresse(DecodageParBlocCompresse const&) = delete;
    DecodageParBlocCompresse& operator=(DecodageParBlocCompresse const&) = delete;
    ~DecodageParBlocCompresse();

    void DecodeOctets(_typPositionEncodageBloc const& position, unsigned long n, char* dest);
    void DecodeChaine(_typPositionEncodageBloc const& position, ChaineN& chaine,
                      ChaineN::Codage codage);

    unsigned int DonneTailleBloc() const noexcept { return _tailleBloc; }
    eTypeCompression DonneType() const noexcept { return _type; }

private:
    void _PlaceTamponSelonPosition(_typPositionEncodageBloc const& position);
    void _LisBloc(unsigned int positionBloc);
    void _Decomprime();

    FluxEntree* _entree;
    FluxEntreeMemoire* _entreeMemoire; // la même entrée quand sa taille est connue, sinon nul
    unsigned long _debut;
    unsigned int _tailleBloc = 0;
    TamponMemoire _blocLu{256};
    unsigned int _positionCourante = 0; // 0 : aucun bloc en cache (l'en-tête occupe 0)
    TamponMemoire _blocDecode{256};
    eTypeCompression _type = kSansCompression;
    // Flux inflate gardé d'un bloc à l'autre : chaque bloc ne coûte qu'une remise à zéro.
    std::unique_ptr<z_stream_s, void (*)(z_stream_s*)> _inflate;
};

} // namespace sdd
