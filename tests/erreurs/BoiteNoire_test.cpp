#include "noyau/erreurs/BoiteNoire.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

TEST(BoiteNoire, CreationEtDestruction)
{
    QTemporaryDir donnees;
    ASSERT_TRUE(donnees.isValid());
    qputenv("XDG_DATA_HOME", donnees.path().toUtf8());
    QCoreApplication::setApplicationName("Boite");

    JournalAbs* const boite = PreteBoiteNoire();
    ASSERT_NE(boite, nullptr);
    EXPECT_EQ(PreteBoiteNoire(), boite);
    QString const parDefaut = donnees.filePath("Boite/Boite.log");
    EXPECT_EQ(QString(boite->DonneChemin()), parDefaut);
    EXPECT_TRUE(boite->Ecris("ok"));
    EXPECT_EQ(QFileInfo(parDefaut).size(), qint64(24 + 3));

    // Remplacée par un journal choisi ; un échec avalé laisse la boîte vide.
    EXPECT_TRUE(InitBoiteNoireViaRegistres(donnees.filePath("autre"), "b.log", "Départ", true));
    EXPECT_EQ(QString(PreteBoiteNoire()->DonneChemin()), donnees.filePath("autre/b.log"));
    EXPECT_TRUE(InitBoiteNoireViaRegistres(parDefaut, "x", "", false)); // dossier = fichier
    EXPECT_EQ(QString(PreteBoiteNoire()->DonneChemin()), parDefaut);
    DetruitBoiteNoire();
    DetruitBoiteNoire(); // sans journal : rien

    EXPECT_EQ(InitBoiteNoireAvecContournement(), 0);
    EXPECT_EQ(InitBoiteNoireAvecContournementSurBureau(), 0);
    EXPECT_EQ(InitBoiteNoireEnForcant("/nulle/part"), 0);
    EXPECT_EQ(InitBoiteNoireEnForcant("/nulle/part", false), 0);
    EXPECT_TRUE(InitBoiteNoireViaRegistresSurBureau("/nulle/part", "x", "y", false));
    EXPECT_TRUE(InitBoiteNoireAvecChemin("a", "b", true));
    EXPECT_FALSE(InitBoiteNoireAvecChemin("a", "b", false));

    QCoreApplication::setApplicationName(QString());
    qunsetenv("XDG_DATA_HOME");
}
