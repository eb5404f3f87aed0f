#pragma once

#include "noyau/Export.h"
#include "noyau/flux/Associations.h"
#include "noyau/flux/Flux.h"

#include <cstdint>
#include <type_traits>

class UniChaine;

namespace sdd {

class ChaineN;

// Écriture et lecture d'un type dans les flux : chaque spécialisation offre
//   static unsigned int Ecris(FluxSortie&, T const&) : renvoie la position du début ;
//   static void Lis(FluxEntree&, T*) : remplace le contenu de l'objet.
template <typename T> class Serialiseur;

namespace detail {

// Lit exactement n octets ; un flux trop court lève ErreurDeserialisation.
NOYAU_EXPORT void LisOctets(FluxEntree& flux, unsigned char* dest, unsigned int n);

// Entiers de largeur fixe, petit-boutistes.
template <typename Entier> class SerialiseurEntier
{
public:
    static unsigned int Ecris(FluxSortie& flux, Entier const& valeur)
    {
        unsigned int const debut = flux.DonnePosition();
        auto v = static_cast<std::make_unsigned_t<Entier>>(valeur);
        unsigned char octets[sizeof(Entier)];
        for (unsigned char& octet : octets) {
            octet = static_cast<unsigned char>(v);
            v = static_cast<decltype(v)>(v >> 8);
        }
        flux.Mets(octets, sizeof octets);
        return debut;
    }
    static void Lis(FluxEntree& flux, Entier* valeur)
    {
        unsigned char octets[sizeof(Entier)];
        LisOctets(flux, octets, sizeof octets);
        std::make_unsigned_t<Entier> v = 0;
        for (unsigned int i = sizeof octets; i-- > 0;) {
            v = static_cast<decltype(v)>((v << 8) | octets[i]);
        }
        *valeur = static_cast<Entier>(v);
    }
};

} // namespace detail

template <> class Serialiseur<std::int8_t> : public detail::SerialiseurEntier<std::int8_t>
{
};
template <> class Serialiseur<std::uint8_t> : public detail::SerialiseurEntier<std::uint8_t>
{
};
template <> class Serialiseur<std::int16_t> : public detail::SerialiseurEntier<std::int16_t>
{
};
template <> class Serialiseur<std::uint16_t> : public detail::SerialiseurEntier<std::uint16_t>
{
};
template <> class Serialiseur<std::int32_t> : public detail::SerialiseurEntier<std::int32_t>
{
};
template <> class Serialiseur<std::uint32_t> : public detail::SerialiseurEntier<std::uint32_t>
{
};
template <> class Serialiseur<std::int64_t> : public detail::SerialiseurEntier<std::int64_t>
{
};
template <> class Serialiseur<std::uint64_t> : public detail::SerialiseurEntier<std::uint64_t>
{
};

// Un octet, 0 ou 1 ; à la lecture, tout octet non nul vaut vrai.
template <> class NOYAU_EXPORT Serialiseur<bool>
{
public:
    static unsigned int Ecris(FluxSortie& flux, bool const& valeur);
    static void Lis(FluxEntree& flux, bool* valeur);
};

// Les octets UTF-8 puis un zéro (ChaineN::Ecris).
template <> class NOYAU_EXPORT Serialiseur<ChaineN>
{
public:
    static unsigned int Ecris(FluxSortie& flux, ChaineN const& texte);
    static void Lis(FluxEntree& flux, ChaineN* texte);
};

// La même forme que ChaineN.
template <> class NOYAU_EXPORT Serialiseur<UniChaine>
{
public:
    static unsigned int Ecris(FluxSortie& flux, UniChaine const& texte);
    static void Lis(FluxEntree& flux, UniChaine* texte);
};

// Un octet N, puis les N valeurs dans l'ordre des clés (255 : vide).
template <> class NOYAU_EXPORT Serialiseur<Associations>
{
public:
    static unsigned int Ecris(FluxSortie& flux, Associations const& associations);
    static void Lis(FluxEntree& flux, Associations* associations);
};

} // namespace sdd
