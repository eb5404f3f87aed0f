#include "noyau/erreurs/BoiteNoire.h"

#include <memory>
#include <mutex>

namespace {

std::mutex gVerrouBoiteNoire;
std::unique_ptr<JournalAbs> gBoiteNoire;

} // namespace

JournalAbs* PreteBoiteNoire()
{
    std::lock_guard<std::mutex> verrou(gVerrouBoiteNoire);
    if (!gBoiteNoire) {
        gBoiteNoire.reset(JournalAbs::CreeJournal(UniChaine(), false));
    }
    return gBoiteNoire.get();
}

bool InitBoiteNoireViaRegistres(UniChemin const& dossier, UniChaine const& nomFichier,
                                UniChaine const& entete, bool const& remiseAZero)
{
    std::lock_guard<std::mutex> verrou(gVerrouBoiteNoire);
    gBoiteNoire.reset();
    try {
        gBoiteNoire.reset(
            JournalAbs::CreeJournalAvecPreference(dossier, nomFichier, entete, remiseAZero));
    } catch (...) {
        // Sans journal, le programme continue : la boîte noire reste vide.
    }
    return true;
}

void DetruitBoiteNoire()
{
    std::lock_guard<std::mutex> verrou(gVerrouBoiteNoire);
    gBoiteNoire.reset();
}

int InitBoiteNoireAvecContournement()
{
    return 0;
}

int InitBoiteNoireAvecContournementSurBureau()
{
    return 0;
}

int InitBoiteNoireEnForcant(UniChemin const&, bool)
{
    return 0;
}

bool InitBoiteNoireViaRegistresSurBureau(UniChemin const&, UniChaine const&, UniChaine const&,
                                         bool const&)
{
    return true;
}

bool InitBoiteNoireAvecChemin(UniChaine const&, UniChaine const&, bool resultat)
{
    return resultat;
}
