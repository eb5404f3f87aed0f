#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace sdd {
class FluxEntree;
class FluxEntreeMemoire;
class FluxSortie;
} // namespace sdd

// Forme sérialisée d'une table de chaînes, commune à l'écriture, à la lecture en mémoire et à
// la consultation sur disque : mêmes enregistrements, mêmes contrôles, mêmes erreurs.
namespace sdd::detail {

// Explications des exceptions levées sur une forme abîmée. Une structure fausse lève
// TableNonValide ; des octets qui manquent, ErreurDeserialisation comme tout flux trop court,
// sauf une suite sans son zéro, qui lève OperationInvalide comme ChaineN::Lis.
inline constexpr char kVersionNonGeree[] = "Version non gérée";
inline constexpr char kBoucle[] = "Boucle dans la structure de chaines";
inline constexpr char kTropPartagee[] = "Structure de chaines trop partagée pour sa taille";
inline constexpr char kCheminTropLong[] = "Chemin trop long dans la structure de chaines";
inline constexpr char kEnregistrementTronque[] =
    "Enregistrement tronqué dans la structure de chaines";
inline constexpr char kZoneTropLongue[] = "La structure de chaines dépasse la fin des données";

// Lève ErreurDeserialisation avec cette explication.
[[noreturn]] void LanceOctetsManquants(char const* explication);

struct EnTeteTrie
{
    bool positionsCompactes; // version 110 : liens en VarElias ; 100 : sur quatre octets
    std::uint32_t nombre;
    std::uint32_t racine;
    std::uint32_t longueur; // de la zone des enregistrements, qui suit l'en-tête
};

// Lit l'en-tête ; seule la version est contrôlée.
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

// Lit les enregistrements d'une forme : en place quand le flux est en mémoire, sinon copiés
// un à un dans copie. Les positions comptent depuis base ; aucun octet n'est lu au-delà des
// données du flux. Un enregistrement lu reste valide jusqu'au suivant.
class LecteurEnregistrements
{
public:
    // memoire : le même flux vu comme un bloc en mémoire, ou nul.
    LecteurEnregistrements(FluxEntree& flux, FluxEntreeMemoire* memoire, std::uint32_t base,
                           bool positionsCompactes, std::vector<unsigned char>& copie);

    EnregistrementNoeud Lis(std::uint64_t position);
    // Met le flux sur la donnée qui suit l'enregistrement lu à cette position.
    void PositionneSurDonnee(std::uint64_t position, EnregistrementNoeud const& e);

private:
    EnregistrementNoeud _CopieDuFlux(std::uint64_t debut);

    FluxEntree& _flux;
    bool _enPlace;
    unsigned char const* _octets = nullptr; // en place : les données depuis base
    std::uint64_t _taille = 0;
    std::uint32_t _base;
    bool _compactes;
    std::vector<unsigned char>& _copie;
};

// Écrit la suite d'un nœud : UTF-8, une demi-paire isolée sur ses trois octets, puis un zéro.
void EcrisSuite(FluxSortie& flux, std::u16string_view cars);
// Les unités de la suite d'un enregistrement, comme EcrisSuite les a écrites.
void DecodeSuite(EnregistrementNoeud const& e, std::u16string& unites);

// Nombre d'unités de la suite quand elle est un préfixe de clef, égalité comprise ; -1 sinon.
std::ptrdiff_t UnitesSiPrefixe(unsigned char const* cars, std::size_t nbOctets,
                               std::u16string_view clef);

} // namespace sdd::detail
