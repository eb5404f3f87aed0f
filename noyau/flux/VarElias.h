#pragma once

#include "noyau/Export.h"

#include <cstdint>

namespace sdd {

class FluxEntree;
class FluxSortie;

// Entier non signé de 1 à 4 octets, gros-boutiste et auto-délimité : le premier octet
// commence par k - 1 bits nuls puis un bit 1 (k octets en tout), chaque longueur reprenant
// où la précédente s'arrête. Sert à toutes les longueurs et à tous les comptes écrits.
class NOYAU_EXPORT VarElias
{
public:
    static constexpr std::uint32_t kValeurMax = 270549119; // 2113664 + 2^28 - 1
    static constexpr unsigned int kLongueurMax = 4;

    // Une valeur au-delà de kValeurMax lève IndexHorsBorne, rien n'est écrit.
    static void Ecris(FluxSortie& flux, std::uint32_t valeur);
    // Un premier octet nul, un code de plus de quatre octets ou un flux qui finit trop tôt
    // lèvent ErreurDeserialisation ; rien n'est lu au-delà de la fin du flux.
    static std::uint32_t Lis(FluxEntree& flux);
    // Nombre d'octets du code, de 1 à 4.
    static unsigned int Longueur(std::uint32_t valeur) noexcept;

    // Formes en mémoire. Ecris : dest a place pour kLongueurMax octets ; renvoie les octets
    // écrits. Lis : ne lit rien à partir de fin ; renvoie les octets consommés.
    static unsigned int Ecris(unsigned char* dest, std::uint32_t valeur);
    static unsigned int Lis(unsigned char const* debut, unsigned char const* fin,
                            std::uint32_t* valeur);
};

} // namespace sdd
