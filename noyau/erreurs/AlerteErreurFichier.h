#pragma once

#include "noyau/Export.h"
#include "noyau/erreurs/DAlerteInfo.h"

// Textes des erreurs de fichier, par code : 0 indéfinie, 1 espace insuffisant, 2 création,
// 3 ouverture, 4 destruction, 5 écriture, 6 lecture. Hors de 0..6 : la chaîne nulle.
NOYAU_EXPORT UniChaine DonneTexteErreurFichier(int code);

// Alerte (type 4) dont le message et l'explication sont les textes des deux codes. famille
// vaut 3 partout et n'est pas lue.
NOYAU_EXPORT DAlerteInfoErreur CreeAlerteErreurFichier(int famille, int codeMessage,
                                                       int codeExplication, int numeroErreur,
                                                       int detail1, int detail2);
