#include "noyau/flux/FichierAvecTampon.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <random>
#include <stdexcept>
#include <string>

using sdd::Fichier;
using sdd::FichierAvecTampon;

namespace {

std::string Lis(UniChemin const& chemin)
{
    QFile f(chemin);
    EXPECT_TRUE(f.open(QIODevice::ReadOnly));
    return f.readAll().toStdString();
}

} // namespace

TEST(FichierAvecTampon, EcritureMeleeEtVidage)
{
    QTemporaryDir dossier;
    UniChemin const chemin(dossier.filePath("ecrit"));
    std::mt19937 hasard(3);
    std::string attendu;
    {
        FichierAvecTampon f(chemin, Fichier::kEcriture);
        // Octets seuls, petits blocs, blocs plus grands que le tampon : tout passe dans l'ordre.
        while (attendu.size() < 400000) {
            switch (hasard() % 3) {
            case 0: {
                unsigned char const c = static_cast<unsigned char>(hasard());
                f.Mets(c);
                attendu += char(c);
                break;
            }
            case 1: {
                std::string const bloc(hasard() % 300, char('a' + hasard() % 26));
                f.Ecris(bloc.data(), int(bloc.size()));
                attendu += bloc;
                break;
            }
            default: {
                std::string const bloc(FichierAvecTampon::kTailleTampon + hasard() % 1000, 'Z');
                f.Mets(reinterpret_cast<unsigned char const*>(bloc.data()), unsigned(bloc.size()));
                attendu += bloc;
            }
            }
            ASSERT_EQ(f.DonnePosition(), attendu.size());
        }
        // La destruction vide le tampon.
    }
    EXPECT_EQ(Lis(chemin), attendu);

    // Ferme vide aussi le tampon.
    FichierAvecTampon g(chemin, Fichier::kEcriture | Fichier::kAjout);
    g.Ecris("fin");
    g.Ferme();
    EXPECT_EQ(Lis(chemin), attendu + "fin");
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
    for (int i = 0; i < 20000 && !sans.EstALaFin(); ++i) {
        switch (hasard() % 6) {
        case 0:
            ASSERT_EQ(avec.Donne(), sans.Donne());
            break;
        case 1: {
            unsigned int const n = hasard() % 3 == 0 ? 70000 + hasard() % 1000 : hasard() % 500;
            std::string a(n, ' '), b(n, ' ');
            unsigned int const lusA = avec.Donne(n, reinterpret_cast<unsigned char*>(a.data()));
            unsigned int const lusB = sans.Donne(n, reinterpret_cast<unsigned char*>(b.data()));
            ASSERT_EQ(lusA, lusB);
            ASSERT_EQ(a, b);
            break;
        }
        case 2: {
            UniChaine a, b;
            ASSERT_EQ(avec.DonneLigne(a), sans.DonneLigne(b));
            ASSERT_EQ(a, b);
            break;
        }
        case 3: {
            char a[256], b[256];
            ASSERT_EQ(avec.DonneLigne(a, 256), sans.DonneLigne(b, 256));
            ASSERT_STREQ(a, b);
            break;
        }
        case 4: {
            unsigned int const p = hasard() % unsigned(contenu.size());
            avec.Positionne(p);
            sans.Positionne(p);
            break;
        }
        default:
            avec.RetireDonne();
            sans.RetireDonne();
        }
        ASSERT_EQ(avec.DonnePosition(), sans.DonnePosition()) << i;
        ASSERT_EQ(avec.EstALaFin(), sans.EstALaFin()) << i;
    }

    // Une ligne trop longue est la même erreur qu'en l'absence de tampon.
    avec.PositionneAuDebut();
    char court[2];
    EXPECT_THROW(
        {
            for (;;) {
                avec.DonneLigne(court, 2);
            }
        },
        std::runtime_error);
}
