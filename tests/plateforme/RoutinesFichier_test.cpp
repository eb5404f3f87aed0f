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
    QString const fichier = dossier.filePath("f"), lien = dossier.filePath("lien");
    auto const detruis = [](QString const& chemin, int genres) {
        return RoutinesFichier::DetruisFichier(UniChemin(chemin), genres);
    };
    QFile(fichier).open(QIODevice::WriteOnly);
    ASSERT_TRUE(QFile::link(fichier, lien));
    ASSERT_TRUE(QDir(dossier.path()).mkdir("d"));

    // Un lien n'est pas un fichier ordinaire, un fichier pas un lien ; la cible reste.
    EXPECT_FALSE(detruis(lien, RoutinesFichier::kFichiersOrdinaires));
    EXPECT_FALSE(detruis(fichier, RoutinesFichier::kLiensSymboliques));
    EXPECT_TRUE(detruis(lien, RoutinesFichier::kLiensSymboliques));
    EXPECT_FALSE(QFileInfo(lien).isSymLink());
    EXPECT_TRUE(QFileInfo::exists(fichier));
    EXPECT_TRUE(detruis(fichier, RoutinesFichier::kFichiersEtLiens));
    EXPECT_FALSE(QFileInfo::exists(fichier));
    EXPECT_FALSE(detruis(fichier, RoutinesFichier::kFichiersEtLiens));

    // Un lien dont la cible a disparu se détruit encore ; un dossier jamais.
    ASSERT_TRUE(QFile::link(fichier, lien));
    EXPECT_TRUE(detruis(lien, RoutinesFichier::kFichiersEtLiens));
    EXPECT_FALSE(detruis(dossier.filePath("d"), RoutinesFichier::kFichiersEtLiens));
    EXPECT_TRUE(QFileInfo(dossier.filePath("d")).isDir());
}
