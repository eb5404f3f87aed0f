// Fichier texte d'octets quelconques (marque d'ordre des octets comprise), lu ligne par
// ligne avec et sans tampon : aucune exception ne doit sortir des lignes décodées, et les deux
// lectures s'accordent, lignes d'octets bornées comprises (mêmes lignes, mêmes échecs).

#include "noyau/flux/FichierAvecTampon.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

// Fichier de travail, un par processus, enlevé à la sortie.
struct FichierDeTravail
{
    std::string const chemin = "/tmp/FichierLignes_fuzz." + std::to_string(getpid());
    ~FichierDeTravail() { std::remove(chemin.c_str()); }
};

// Résultat d'un appel de DonneLigne(char*, int) : -1 pour un échec levé, sinon vrai ou faux
// suivi de la ligne lue.
std::string Appel(sdd::Fichier& fichier, std::vector<char>& ligne)
{
    try {
        bool const lue = fichier.DonneLigne(ligne.data(), int(ligne.size()));
        return std::to_string(lue) + ligne.data();
    } catch (std::runtime_error const&) {
        return "-1";
    }
}

void LignesBornees(std::string const& chemin, std::size_t place)
{
    sdd::Fichier sans(UniChemin(chemin.c_str()), sdd::Fichier::kLecture, sdd::ChaineN::kUTF8, true);
    sdd::FichierAvecTampon avec(UniChemin(chemin.c_str()), sdd::Fichier::kLecture, UniChaine::kUTF8,
                                true);
    std::vector<char> a(place), b(place);
    for (int i = 0; i < 4096; ++i) {
        std::string const ra = Appel(sans, a);
        if (ra != Appel(avec, b)) {
            std::abort();
        }
        if (ra[0] != '1') {
            break;
        }
    }
}

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
    LignesBornees(chemin, taille == 0 ? 1 : 1 + donnees[0] % 64);
    return 0;
}
