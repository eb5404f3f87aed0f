#pragma once

#include <string>

// Fichier de 100 Mio de mots français, un par ligne, écrit une fois dans un dossier temporaire
// détruit à la sortie ; et un chemin voisin pour les écritures.
std::string const& DonneFichierMots();
std::string const& DonneCheminEcriture();
// Les mots du fichier, bout à bout avec leurs fins de ligne : ce qu'on y écrit.
std::string const& DonneTexteMots();
