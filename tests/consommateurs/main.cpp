// Consommateur de Noyau : chaque domaine vérifie ses classes exportées ; le programme rend 0
// seulement quand toutes les vérifications passent.

#include "verif.h"

#include <QCoreApplication>
#include <QTemporaryDir>

int gEchecs = 0;

int main(int argc, char** argv)
{
    // Sur le fil principal : la file principale et les messagers ont besoin de sa boucle.
    QCoreApplication application(argc, argv);
    QTemporaryDir temporaire; // retiré, contenu compris, à la destruction
    if (!temporaire.isValid()) {
        std::printf("ÉCHEC : pas de dossier temporaire\n");
        return 1;
    }
    UniChemin const dossier(temporaire.path());

    VerifieDefautThunk();
    VerifieChaines();
    VerifieFlux(dossier);
    VerifieLexique(dossier);
    VerifieFils();
    VerifieErreurs();
    VerifiePlateforme(dossier);

    if (gEchecs != 0) {
        std::printf("%d vérification(s) en échec\n", gEchecs);
    }
    return gEchecs == 0 ? 0 : 1;
}
