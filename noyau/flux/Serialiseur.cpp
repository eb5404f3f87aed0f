#include "noyau/flux/Serialiseur.h"

#include "noyau/chaines/ChaineN.h"
#include "noyau/chaines/UniChaine.h"
#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/detail/LectureExacte.h"

namespace sdd {

void detail::LisOctets(FluxEntree& flux, unsigned char* dest, unsigned int n)
{
    if (!LisExactement(flux, dest, n)) {
        throw exceptions::ErreurDeserialisation(
            UniChaine("Les données s’arrêtent avant la fin d’une valeur"));
    }
}

unsigned int Serialiseur<bool>::Ecris(FluxSortie& flux, bool const& valeur)
{
    unsigned int const debut = flux.DonnePosition();
    flux.Mets(static_cast<unsigned char>(valeur ? 1 : 0));
    return debut;
}

void Serialiseur<bool>::Lis(FluxEntree& flux, bool* valeur)
{
    unsigned char octet;
    detail::LisOctets(flux, &octet, 1);
    *valeur = octet != 0;
}

unsigned int Serialiseur<ChaineN>::Ecris(FluxSortie& flux, ChaineN const& texte)
{
    return texte.Ecris(flux);
}

void Serialiseur<ChaineN>::Lis(FluxEntree& flux, ChaineN* texte)
{
    texte->Lis(flux);
}

unsigned int Serialiseur<UniChaine>::Ecris(FluxSortie& flux, UniChaine const& texte)
{
    return texte.DonneChaineN().Ecris(flux);
}

void Serialiseur<UniChaine>::Lis(FluxEntree& flux, UniChaine* texte)
{
    ChaineN lue;
    lue.Lis(flux);
    *texte = UniChaine(lue);
}

unsigned int Serialiseur<Associations>::Ecris(FluxSortie& flux, Associations const& associations)
{
    unsigned int const debut = flux.DonnePosition();
    flux.Mets(associations._nombre);
    if (associations._nombre != 0) {
        flux.Mets(associations._valeurs.get(), associations._nombre);
    }
    return debut;
}

void Serialiseur<Associations>::Lis(FluxEntree& flux, Associations* associations)
{
    // Tout est lu avant de remplacer la table : un flux trop court la laisse intacte.
    unsigned char nombre;
    detail::LisOctets(flux, &nombre, 1);
    std::unique_ptr<unsigned char[]> valeurs(new unsigned char[nombre]);
    detail::LisOctets(flux, valeurs.get(), nombre);
    associations->_valeurs = std::move(valeurs);
    associations->_nombre = nombre;
}

} // namespace sdd
