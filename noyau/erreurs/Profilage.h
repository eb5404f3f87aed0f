#pragma once

#include "noyau/Export.h"

#include <cstdint>
#include <map>

// Mesures par identifiant. Le profilage n'est pas permis dans cette version : les débuts
// ne sont pas notés et TermineTempsPourProfilage rend toujours -1.
NOYAU_EXPORT bool DonneSiPeutProfiler() noexcept;
// Note l'instant (en millisecondes, DonneTempsAbsolu(1000)) sous id, en remplaçant un
// début précédent.
NOYAU_EXPORT void DebuteTempsPourProfilage(int id);
// Millisecondes depuis le début noté sous id, qui est oublié ; -1 sans début ou sans
// profilage.
NOYAU_EXPORT std::int64_t TermineTempsPourProfilage(int id);

// Débuts en cours : identifiant vers instant en millisecondes.
extern NOYAU_EXPORT std::map<int, std::int64_t> gPileTemps;
