#include "noyau/plateforme/RoutinesFichier.h"

#include "noyau/chaines/UniChemin.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

TEST(RoutinesFichier, DetruisSelonLeGenre)
{
    QTemporaryDir dossier;
    QString const fichier = dossier.filePath("f");
    QString const lien = dossier.filePath("lien");
    QString const sousDossier = dossier.filePath("d");
    QFile(fichier).open(QIODevice::WriteOnly);
    ASSERT_TRUE(QFile::link(fichier, lien));
    ASSERT_TRUE(QDir(dossier.path()).mkdir("d"));

    // Un lien n'est pas un fichier ordinaire, un fichier pas un lien ; la cible reste.
    EXPECT_FALSE(
        RoutinesFichier::DetruisFichier(UniChemin(lien), RoutinesFichier::kFichiersOrdinaires));
    EXPECT_FALSE(
        RoutinesFichier::DetruisFichier(UniChemin(fichier), RoutinesFichier::kLiensSymboliques));
    EXPECT_TRUE(
        RoutinesFichier::DetruisFichier(UniChemin(lien), RoutinesFichier::kLiensSymboliques));
    EXPECT_FALSE(QFileInfo(lien).isSymLink());
    EXPECT_TRUE(QFileInfo::exists(fichier));
    EXPECT_TRUE(RoutinesFichier::DetruisFichier(UniChemin(fichier), 3));
    EXPECT_FALSE(QFileInfo::exists(fichier));
    EXPECT_FALSE(RoutinesFichier::DetruisFichier(UniChemin(fichier), 3));

    // Un lien dont la cible a disparu se détruit encore ; un dossier jamais.
    ASSERT_TRUE(QFile::link(fichier, lien));
    EXPECT_TRUE(RoutinesFichier::DetruisFichier(UniChemin(lien), 3));
    EXPECT_FALSE(RoutinesFichier::DetruisFichier(UniChemin(sousDossier), 3));
    EXPECT_TRUE(QFileInfo(sousDossier).isDir());
}
