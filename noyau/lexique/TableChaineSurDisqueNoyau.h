#pragma once

#include "noyau/Export.h"
#include "noyau/chaines/ChaineN.h"

#include <cstdint>
#include <vector>

namespace sdd {

class FluxEntree;
class FluxEntreeMemoire;

// Consultation d'une table de chaînes sérialisée sans la charger : chaque question suit les
// liens de la forme écrite, un enregistrement à la fois. Sur un flux en mémoire (tampon,
// projection de fichier), les enregistrements sont lus en place.
//
// Le flux n'appartient pas à la table et doit vivre autant qu'elle ; une question déplace sa
// position : une table (ou son flux) ne sert qu'à un fil à la fois.
class NOYAU_EXPORT TableChaineSurDisqueNoyau
{
public:
    TableChaineSurDisqueNoyau() = default;
    TableChaineSurDisqueNoyau(FluxEntree* flux, unsigned long position);

    // Lit l'en-tête de la forme qui commence à cette position du flux ; seule la version y est
    // contrôlée. En cas d'échec, la table reste comme elle était.
    void Init(FluxEntree* flux, unsigned long position);

    // La chaîne est-elle dans le sous-arbre dont l'enregistrement est à cette position ?
    bool PlacePourChaine(ChaineN const& chaine, unsigned long position) const;
    bool Possede(ChaineN const& chaine) const { return PlacePourChaine(chaine, _racine); }

    unsigned int Taille() const noexcept { return _nombre; }
    unsigned long DonnePositionRacine() const noexcept { return _racine; }

private:
    FluxEntree* _flux = nullptr;
    std::uint32_t _base = 0; // début de la zone des enregistrements dans le flux
    std::uint32_t _nombre = 0;
    std::uint32_t _longueur = 0;
    std::uint32_t _racine = 0;
    bool _positionsCompactes = true;
    FluxEntreeMemoire* _memoire = nullptr; // le même flux, quand ses octets sont en mémoire
    mutable std::vector<unsigned char> _enregistrement; // copie de travail, hors mémoire
};

} // namespace sdd
