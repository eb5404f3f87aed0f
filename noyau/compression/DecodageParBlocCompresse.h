#pragma once

#include "noyau/Export.h"
#include "noyau/chaines/ChaineN.h"
#include "noyau/compression/BlocCompresse.h"
#include "noyau/flux/TamponMemoire.h"

#include <cstdint>
#include <memory>
#include <optional>

struct z_stream_s;

namespace sdd {

class FluxEntree;
class FluxEntreeMemoire;

// Relit les éléments écrits par EncodageParBlocCompresse : seul le bloc de l'élément est lu
// et décomprimé ; le dernier bloc décodé reste en cache.
//
// Un bloc comprimé coupé ou abîmé se lit jusqu'à la coupure. Une zone abîmée (longueur
// au-delà du flux, position, décalage ou compte au-delà des données) lève
// ErreurDeserialisation ; une chaîne sans fin dans le bloc, OperationInvalide comme
// ChaineN::Lis. Rien n'est lu hors des données.
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
    // Taille de l'entrée quand elle la connaît, sinon la plus grande position.
    std::uint64_t _Limite() const;
    void _PlaceTamponSelonPosition(_typPositionEncodageBloc const& position);
    void _LisBloc(unsigned int positionBloc);
    void _Decomprime();

    FluxEntree* _entree;
    FluxEntreeMemoire* _entreeMemoire; // la même entrée quand sa taille est connue, sinon nul
    unsigned long _debut;
    unsigned int _tailleBloc = 0;
    TamponMemoire _blocLu{256};
    // Position du bloc en cache ; vide quand il n'y en a pas (aucune position n'en tient lieu :
    // un enregistrement abîmé peut nommer la position 0).
    std::optional<unsigned int> _positionCourante;
    TamponMemoire _blocDecode{256};
    eTypeCompression _type = kSansCompression;
    // Flux inflate gardé d'un bloc à l'autre : chaque bloc ne coûte qu'une remise à zéro.
    std::unique_ptr<z_stream_s, void (*)(z_stream_s*)> _inflate;
};

} // namespace sdd
