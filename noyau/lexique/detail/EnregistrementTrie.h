#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace sdd {
class FluxEntree;
}

// Lecture de la forme sérialisée d'une table de chaînes, commune à la lecture en mémoire et à
// la consultation sur disque : mêmes contrôles, mêmes erreurs.
namespace sdd::detail {

// Explications des TableNonValide levées sur une structure abîmée.
inline constexpr char kVersionNonGeree[] = "Version non gérée";
inline constexpr char kBoucle[] = "Boucle dans la structure de chaines";
inline constexpr char kPositionHorsZone[] = "Position hors de la structure de chaines";
inline constexpr char kEnregistrementTronque[] = "Enregistrement tronqué dans la structure de chaines";
inline constexpr char kZoneTropLongue[] = "La structure de chaines dépasse la fin des données";

struct EnTeteTrie
{
    bool positionsCompactes; // version 110 : liens en VarElias ; 100 : sur quatre octets
    std::uint32_t nombre;
    std::uint32_t racine;
    std::uint32_t longueur; // de la zone des enregistrements, qui suit l'en-tête
};

// Lit et vérifie l'en-tête (version, racine dans la zone).
EnTeteTrie LisEnTeteTrie(FluxEntree& flux);

// Un enregistrement de nœud, vu dans les octets qui le portent.
struct EnregistrementNoeud
{
    unsigned char const* cars; // la suite en UTF-8, sans son zéro
    std::size_t nbOctets;
    unsigned char drapeaux;
    std::uint32_t enfant;  // selon le drapeau 0x04
    std::uint32_t suivant; // selon le drapeau 0x08
    std::size_t taille;    // jusqu'à la donnée, exclue
};

// Lève TableNonValide quand la position n'est pas dans la zone.
void VerifiePosition(std::uint32_t position, std::uint32_t longueurZone);

// L'enregistrement qui commence à debut ; rien n'est lu à partir de fin. Les liens doivent
// tomber dans la zone.
EnregistrementNoeud LisEnregistrement(unsigned char const* debut, unsigned char const* fin,
                                      std::uint32_t longueurZone, bool positionsCompactes);

// Nombre d'unités de la suite (octets UTF-8 décodés comme ChaineN::Lis) quand elle est un
// préfixe de clef, égalité comprise ; -1 sinon.
std::ptrdiff_t UnitesSiPrefixe(unsigned char const* cars, std::size_t nbOctets,
                               std::u16string_view clef);

} // namespace sdd::detail
