// Fichier texte d'octets quelconques (marque d'ordre des octets comprise), lu ligne par
// ligne avec et sans tampon : aucune exception ne doit sortir, les deux lectures s'accordent.

#include "noyau/flux/FichierAvecTampon.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

// Fichier de travail, un par processus, enlevé à la sortie.
struct FichierDeTravail
{
    std::string const chemin = "/tmp/FichierLignes_fuzz." + std::to_string(getpid());
    ~FichierDeTravail() { std::remove(chemin.c_str()); }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(unsigned char const* donnees, std::size_t taille)
{
    static FichierDeTravail const travail;
    std::string const& chemin = travail.chemin;
    if (std::FILE* f = std::fopen(chemin.c_str(), "wb")) {
        std::fwrite(donnees, 1, taille, f);
        std::fclose(f);
    }
    sdd::Fichier sans;
    sans.OuvreEnLectureSeule(UniChemin(chemin.c_str()));
    sdd::FichierAvecTampon avec;
    avec.Ouvre(UniChemin(chemin.c_str()), sdd::Fichier::kLecture, sans.DonneCodageChaineN());
    avec.Positionne(sans.DonnePosition());
    UniChaine a, b;
    for (;;) {
        bool const lueSans = sans.DonneLigne(a);
        bool const lueAvec = avec.DonneLigne(b);
        if (lueSans != lueAvec || a != b) {
            std::abort();
        }
        if (!lueSans) {
            break;
        }
    }
    return 0;
}
