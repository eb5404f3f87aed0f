#pragma once

#include "noyau/Export.h"

class UniChemin;

// Routines de fichiers du système.
class NOYAU_EXPORT RoutinesFichier
{
public:
    // Ce que DetruisFichier a le droit de détruire : des bits à combiner. Un répertoire ne
    // l'est jamais.
    enum : int
    {
        kFichiersOrdinaires = 1, // fichiers ordinaires et spéciaux (tubes, sockets)
        kLiensSymboliques = 2,   // le lien lui-même, jamais sa cible
        kFichiersEtLiens = kFichiersOrdinaires | kLiensSymboliques
    };

    // Détruit le fichier si sa nature est admise par genres ; vrai quand il a été détruit.
    static bool DetruisFichier(UniChemin const& chemin, int genres);
};
