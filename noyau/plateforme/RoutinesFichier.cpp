#include "noyau/plateforme/RoutinesFichier.h"

#include "noyau/chaines/UniChemin.h"

#include <QFile>
#include <QFileInfo>

bool RoutinesFichier::DetruisFichier(UniChemin const& chemin, int genres)
{
    QFileInfo const info(chemin);
    bool const lien = info.isSymLink();
    // Un lien dont la cible manque n'« existe » pas pour Qt, mais se détruit.
    if (!lien && (!info.exists() || info.isDir())) {
        return false;
    }
    int const genre = lien ? kLiensSymboliques : kFichiersOrdinaires;
    return (genres & genre) != 0 && QFile::remove(chemin);
}
