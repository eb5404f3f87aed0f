#include "noyau/flux/FichierAvecTampon.h"

#include "AideCheminsSpeciaux.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <random>
#include <stdexcept>
#include <string>

using sdd::Fichier;
using sdd::FichierAvecTampon;

TEST(FichierAvecTampon, EcritureMeleeEtVidage)
{
    QTemporaryDir dossier;
    UniChemin const chemin(dossier.filePath("ecrit"));
    auto const lis = [&] {
        QFile f(chemin);
        EXPECT_TRUE(f.open(QIODevice::ReadOnly));
        return f.readAll().toStdString();
    };
    std::mt19937 hasard(3);
    std::string attendu;
    {
        FichierAvecTampon f(chemin, Fichier::kEcriture);
        // Octets seuls, petits blocs, blocs plus grands que le tampon : tout passe dans l'ordre.
        while (attendu.size() < 200000) {
            std::size_t const avant = attendu.size();
            switch (hasard() % 3) {
            case 0:
                attendu += char(hasard());
                f.Mets(static_cast<unsigned char>(attendu.back()));
                break;
            case 1:
                attendu += std::string(hasard() % 300, char('a' + hasard() % 26));
                f.Ecris(attendu.data() + avant, int(attendu.size() - avant));
                break;
            default:
                attendu += std::string(FichierAvecTampon::kTailleTampon + hasard() % 1000, 'Z');
                f.Mets(reinterpret_cast<unsigned char const*>(attendu.data() + avant),
                       unsigned(attendu.size() - avant));
            }
            ASSERT_EQ(f.DonnePosition(), attendu.size());
        }
        // La destruction vide le tampon.
    }
    EXPECT_EQ(lis(), attendu);

    // Ferme vide aussi le tampon.
    FichierAvecTampon g(chemin, Fichier::kEcriture | Fichier::kAjout);
    g.Ecris("fin");
    g.Ferme();
    EXPECT_EQ(lis(), attendu + "fin");
}

TEST(FichierAvecTampon, LectureContreFichier)
{
    QTemporaryDir dossier;
    UniChemin const chemin(dossier.filePath("lu"));
    std::mt19937 hasard(5);
    std::string contenu;
    while (contenu.size() < 300000) {
        contenu += std::string(hasard() % 200, char('a' + hasard() % 26));
        contenu += hasard() % 4 == 0 ? "\r\n" : "\n";
    }
    {
        QFile f(chemin);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(contenu.data(), qint64(contenu.size()));
    }
    // Mêmes opérations sur le fichier sans tampon, pris pour modèle.
    FichierAvecTampon avec(chemin, Fichier::kLecture);
    Fichier sans(chemin, Fichier::kLecture);
    for (int i = 0; i < 3000; ++i) {
        SCOPED_TRACE(i);
        unsigned int const n = hasard() % 3 == 0 ? 70000 + hasard() % 1000 : hasard() % 500;
        unsigned int const p = hasard() % unsigned(contenu.size());
        std::string a(n + 256, ' '), b(n + 256, ' ');
        UniChaine ligneA, ligneB;
        switch (hasard() % 6) {
        case 0:
            ASSERT_EQ(avec.Donne(), sans.Donne());
            break;
        case 1:
            ASSERT_EQ(avec.Donne(n, reinterpret_cast<unsigned char*>(a.data())),
                      sans.Donne(n, reinterpret_cast<unsigned char*>(b.data())));
            break;
        case 2:
            ASSERT_EQ(avec.DonneLigne(ligneA), sans.DonneLigne(ligneB));
            break;
        case 3:
            ASSERT_EQ(avec.DonneLigne(a.data(), 256), sans.DonneLigne(b.data(), 256));
            break;
        case 4:
            avec.Positionne(p);
            sans.Positionne(p);
            break;
        default:
            avec.RetireDonne(); // au début aussi : sans effet, le flux reste utilisable
            sans.RetireDonne();
        }
        ASSERT_EQ(a, b);
        ASSERT_EQ(ligneA, ligneB);
        ASSERT_EQ(avec.DonnePosition(), sans.DonnePosition());
        ASSERT_EQ(avec.EstALaFin(), sans.EstALaFin());
    }

    // Une ligne trop longue est la même erreur qu'en l'absence de tampon.
    avec.PositionneAuDebut();
    char court[2];
    EXPECT_THROW(for (int i = 0; i < 100; ++i) avec.DonneLigne(court, 2), std::runtime_error);
}

TEST(FichierAvecTampon, CheminsQuiNeSontPasDesFichiers)
{
    QTemporaryDir dossier;
    aide::CheminsSpeciaux const speciaux(dossier);
    for (UniChemin const& chemin : speciaux.Tous()) {
        SCOPED_TRACE(QString(chemin).toStdString());
        aide::SansBlocage([&] {
            for (int const mode : {2, 1, 5}) {
                FichierAvecTampon f(chemin, mode);
                ASSERT_FALSE(f.EstEnBonEtat()) << mode;
                EXPECT_EQ(f.DonneTaille(), 0u);
                EXPECT_EQ(f.Donne(), 0);
                EXPECT_TRUE(f.EstALaFin());
                f.Ecris("rien");
                f.Ferme(); // vide le tampon : rien n'est écrit
            }
        });
    }
}
