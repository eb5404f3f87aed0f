#include "noyau/erreurs/Profilage.h"

#include "noyau/plateforme/Temps.h"

std::map<int, std::int64_t> gPileTemps;

bool DonneSiPeutProfiler() noexcept
{
    return false;
}

void DebuteTempsPourProfilage(int id)
{
    if (DonneSiPeutProfiler()) {
        gPileTemps[id] = DonneTempsAbsolu(1000);
    }
}

std::int64_t TermineTempsPourProfilage(int id)
{
    if (!DonneSiPeutProfiler()) {
        return -1;
    }
    auto const debut = gPileTemps.find(id);
    if (debut == gPileTemps.end()) {
        return -1;
    }
    std::int64_t const ecoule = DonneTempsAbsolu(1000) - debut->second;
    gPileTemps.erase(debut);
    return ecoule;
}
