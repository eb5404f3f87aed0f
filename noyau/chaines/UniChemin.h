#pragma once

#include "noyau/Export.h"
#include "noyau/chaines/UniChaine.h"

// Chemin du système de fichiers : une UniChaine, séparateur « / ».
class NOYAU_EXPORT UniChemin : public UniChaine
{
public:
    UniChemin() noexcept = default;
    UniChemin(char const* texte, Codage codage = kUTF8, int longueur = -1);
    UniChemin(std::string const& texte, Codage codage);
    UniChemin(UniChaine const& texte);
    UniChemin(char16_t const* texte, int longueur = -1);
    UniChemin(QString const& texte);

    // Ajoute « / » si le chemin n'est pas vide et n'en finit pas déjà par un, puis le
    // composant privé de ses « / » de tête.
    UniChemin& AjouteComposantChemin(UniChemin const& composant);
    UniChemin DonneChaineEnAjoutantComposantChemin(UniChemin const& composant) const;
};
