#pragma once

#include "noyau/Export.h"
#include "noyau/chaines/UniChaine.h"

// Routines de plate-forme qui s'appuient sur Qt.
class NOYAU_EXPORT RoutinesGeneralesQt
{
public:
    // Nom de l'application (celui que Qt connaît, « Pelimore 9 » à défaut), suivi d'une
    // espace et de la décoration quand elle n'est pas vide.
    static UniChaine DonneNomApplicationDecoray(UniChaine const& decoration);
};
