#include "noyau/plateforme/FichierQt.h"

#include "noyau/erreurs/ExceptionCode.h"
#include "noyau/noyau.h"

#include "../flux/AideCheminsSpeciaux.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <string>

namespace {

// Message de l'alerte portée par l'exception de f (code 0 : erreur indéfinie), ou « rien ».
template <typename F> std::string MessageAlerte(F f)
{
    try {
        f();
    } catch (ExceptionCode const& e) {
        std::string const message = QString(e.DonneAlerte().DonneMessage()).toStdString();
        EXPECT_EQ(e.DonneAlerte().DonneTypeDialogue(), DAlerteInfo::kAlerte);
        EXPECT_EQ(e.what(), message + " Une erreur de type indéfini s’est produite (code 0).");
        return message;
    }
    return "rien";
}

} // namespace

TEST(FichierQt, OuverturesEtErreurs)
{
    QTemporaryDir dossier;
    Fichier f(UniChemin(dossier.filePath("f.txt")));
    EXPECT_FALSE(f.Existe());
    EXPECT_EQ(MessageAlerte([&] { f.OuvreEnLecture(); }), "Erreur à l’ouverture du fichier.");
    try {
        f.DonneToutLeContenu();
        FAIL();
    } catch (int code) {
        EXPECT_EQ(code, -1);
    }
    f.Cree();
    EXPECT_TRUE(f.Existe());
    EXPECT_FALSE(f.EstOuvert());

    f.OuvreEnEcriture();
    EXPECT_EQ(f.Ecris("bonjour", 7), 7);
    f.Purge();
    f.Ferme();
    EXPECT_EQ(f.DonneToutLeContenu(), QByteArray("bonjour"));

    f.OuvreEnLectureEcriture();
    char lu[4] = {};
    EXPECT_EQ(f.Lis(lu, 3), 3);
    EXPECT_STREQ(lu, "bon");
    f.Ferme();

    // Une copie, fermée, désigne le même fichier.
    UniChemin const cible(dossier.filePath("g.txt"));
    EXPECT_TRUE(Fichier(f).CopieVers(cible));
    EXPECT_EQ(Fichier(cible).DonneToutLeContenu(), QByteArray("bonjour"));
    EXPECT_TRUE(f.DonneDateModification().isValid());

    Fichier dansAbsent(UniChemin(dossier.filePath("absent/f")));
    EXPECT_EQ(MessageAlerte([&] { dansAbsent.Cree(); }), "Erreur à la création du fichier.");
    EXPECT_EQ(MessageAlerte([&] { dansAbsent.OuvreEnEcriture(); }),
              "Erreur à l’ouverture du fichier.");
    EXPECT_EQ(MessageAlerte([&] { dansAbsent.OuvreEnLectureEcriture(); }),
              "Erreur à l’ouverture du fichier.");
    EXPECT_FALSE(dansAbsent.DonneDateModification().isValid());
}

TEST(FichierQt, CheminsQuiNeSontPasDesFichiers)
{
    QTemporaryDir dossier;
    aide::CheminsSpeciaux const speciaux(dossier);
    for (UniChemin const& chemin : speciaux.Tous()) {
        SCOPED_TRACE(QString(chemin).toStdString());
        aide::SansBlocage([&] {
            Fichier f(chemin);
            EXPECT_EQ(MessageAlerte([&] { f.OuvreEnLecture(); }),
                      "Erreur à l’ouverture du fichier.");
            EXPECT_EQ(MessageAlerte([&] { f.OuvreEnEcriture(); }),
                      "Erreur à l’ouverture du fichier.");
            EXPECT_EQ(MessageAlerte([&] { f.OuvreEnLectureEcriture(); }),
                      "Erreur à l’ouverture du fichier.");
            EXPECT_EQ(MessageAlerte([&] { f.Cree(); }), "Erreur à la création du fichier.");
            EXPECT_FALSE(f.EstOuvert());
            try {
                f.DonneToutLeContenu();
                ADD_FAILURE();
            } catch (int code) {
                EXPECT_EQ(code, -1);
            }
        });
    }
}

// Les chemins de ressource (« :/… ») ne sont pas sur le disque : ils se lisent, et se
// projettent, comme des fichiers ordinaires. Copier un tube ne bloque pas ; un fichier trop
// grand pour un QByteArray est refusé au lieu de se lire vide.
TEST(FichierQt, RessourcesCopiesEtGrandsFichiers)
{
    UniChemin const ressource(":/essai/ressource.txt");
    EXPECT_EQ(Fichier(ressource).DonneToutLeContenu(), QByteArray("contenu de ressource\n"));
    Fichier lue(ressource);
    lue.OuvreEnLecture();
    EXPECT_TRUE(lue.EstOuvert());
    sdd::FichierMMap projection(ressource);
    EXPECT_EQ(projection.DonneTaille(), 21u);
    EXPECT_THROW(Fichier(UniChemin(":/essai/absente")).DonneToutLeContenu(), int);

    QTemporaryDir dossier;
    aide::CheminsSpeciaux const speciaux(dossier);
    aide::SansBlocage([&] {
        EXPECT_FALSE(Fichier(speciaux.tube).CopieVers(UniChemin(dossier.filePath("copie"))));
    });
    UniChemin const gros = aide::FichierCreux(dossier, "gros", 0x80000000ull);
    EXPECT_THROW(Fichier(gros).DonneToutLeContenu(), int);
}

// Comme le montre docs/fichiers.md : l'en-tête général et l'espace sdd ouvert, chaque classe
// se nomme par son espace.
using namespace sdd;

TEST(FichierQt, NomDansEspaceGlobal)
{
    QTemporaryDir dossier;
    UniChemin const chemin(dossier.filePath("f"));
    sdd::Fichier(chemin, sdd::Fichier::kEcriture).Ecris("octets");
    EXPECT_EQ(::Fichier(chemin).DonneToutLeContenu(), QByteArray("octets"));
}
