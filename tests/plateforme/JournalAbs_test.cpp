#include "noyau/erreurs/DAlerteInfo.h"
#include "noyau/erreurs/Exceptions.h"
#include "noyau/plateforme/JournalAbs.h"

#include "../flux/AideCheminsSpeciaux.h"

#include <QCoreApplication>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <memory>
#include <thread>

namespace {

// Les lignes du fichier, en UTF-8, l'horodatage vérifié puis enlevé.
QStringList LignesSansHorodatage(QString const& chemin)
{
    QFile fichier(chemin);
    EXPECT_TRUE(fichier.open(QIODevice::ReadOnly));
    QString const texte = QString::fromUtf8(fichier.readAll());
    EXPECT_TRUE(texte.isEmpty() || texte.endsWith('\n'));
    QStringList lignes = texte.split('\n');
    lignes.removeLast();
    QRegularExpression const horodatage(
        QStringLiteral("^\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3}\\t"));
    for (QString& ligne : lignes) {
        if (!ligne.startsWith('\t')) { // suite d'un texte sur plusieurs lignes
            EXPECT_TRUE(horodatage.match(ligne).hasMatch()) << ligne.toStdString();
            ligne.remove(0, 24);
        }
    }
    return lignes;
}

} // namespace

TEST(JournalAbs, LignesHorodatees)
{
    QTemporaryDir dossier;
    ASSERT_TRUE(dossier.isValid());
    QString const chemin = dossier.filePath("sous/j.log");
    {
        std::unique_ptr<JournalAbs> journal(JournalAbs::CreeJournalAvecPreference(
            dossier.filePath("sous"), "j.log", "Départ", true));
        EXPECT_EQ(QString(journal->DonneChemin()), chemin);
        EXPECT_TRUE(journal->Ecris("première ligne"));
        EXPECT_TRUE(journal->EcrisAlerte(DAlerteInfoErreur(DAlerteInfo::kAlerte, "Disque plein",
                                                           "L'écriture\r\na échoué", 28, "")));
        EXPECT_TRUE(journal->Ecris(""));
        // Relu avant la fermeture : rien n'attend dans un tampon.
        EXPECT_EQ(LignesSansHorodatage(chemin).size(), 5);
    }
    QStringList const attendues = {"Départ", "première ligne", "(ALERTE)\tDisque plein\tL’écriture",
                                   "\ta échoué\t", ""};
    EXPECT_EQ(LignesSansHorodatage(chemin), attendues);

    // Sans remise à zéro, on allonge ; avec, on repart de rien.
    delete JournalAbs::CreeJournalAvecPreference(dossier.filePath("sous"), "j.log", "Suite", false);
    EXPECT_EQ(LignesSansHorodatage(chemin), attendues + QStringList{"Suite"});
    std::unique_ptr<JournalAbs> neuf(
        JournalAbs::CreeJournalAvecPreference(dossier.filePath("sous/"), "/j.log", "", true));
    EXPECT_EQ(QString(neuf->DonneChemin()), chemin);
    EXPECT_TRUE(LignesSansHorodatage(chemin).isEmpty());

    // Plusieurs fils : des lignes entières, aucune mêlée.
    auto ecrivain = [&](char const* texte) {
        for (int i = 0; i < 200; ++i) {
            neuf->Ecris(texte);
        }
    };
    std::thread a(ecrivain, "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa");
    std::thread b(ecrivain, "bbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbb");
    a.join();
    b.join();
    QStringList const lignes = LignesSansHorodatage(chemin);
    EXPECT_EQ(lignes.size(), 400);
    EXPECT_EQ(lignes.count(QString(40, 'a')), 200);
}

TEST(JournalAbs, OuvertureImpossible)
{
    QTemporaryDir dossier;
    ASSERT_TRUE(dossier.isValid());
    // Un fichier ordinaire à la place du dossier : ni création de dossier, ni ouverture,
    // même pour root.
    QString const fichier = dossier.filePath("pas-un-dossier");
    QFile f(fichier);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.close();
    QString const chemin = fichier + "/j.log";
    try {
        delete JournalAbs::CreeJournalAvecPreference(fichier, "j.log", "x", false);
        FAIL() << "pas d'exception";
    } catch (sdd::exceptions::OuvertureEchouee const& e) {
        EXPECT_EQ(QString(e.Message()), "Ouverture échouée");
        EXPECT_TRUE(QString(e.Explication()).startsWith(chemin + " ("))
            << QString(e.Explication()).toStdString();
    }
    // Dossier des données de l'application sous ce même fichier.
    qputenv("XDG_DATA_HOME", fichier.toUtf8());
    EXPECT_THROW(delete JournalAbs::CreeJournal("j.log", true), sdd::exceptions::OuvertureEchouee);
    qunsetenv("XDG_DATA_HOME");
}

TEST(JournalAbs, EmplacementParDefaut)
{
    QTemporaryDir donnees;
    ASSERT_TRUE(donnees.isValid());
    qputenv("XDG_DATA_HOME", donnees.path().toUtf8());
    QCoreApplication::setApplicationName("Essai");
    std::unique_ptr<JournalAbs> nomme(JournalAbs::CreeJournal("nomme.log", false));
    EXPECT_EQ(QString(nomme->DonneChemin()), donnees.filePath("Essai/nomme.log"));
    std::unique_ptr<JournalAbs> anonyme(JournalAbs::CreeJournal("", false));
    EXPECT_EQ(QString(anonyme->DonneChemin()), donnees.filePath("Essai/Essai.log"));
    EXPECT_TRUE(QFile::exists(donnees.filePath("Essai/Essai.log")));
    QCoreApplication::setApplicationName(QString());
    qunsetenv("XDG_DATA_HOME");
}

// Un journal ne s'ouvre que sur un fichier ordinaire : sur un tube nommé, il ne bloque pas.
TEST(JournalAbs, CheminsQuiNeSontPasDesFichiers)
{
    QTemporaryDir dossier;
    aide::CheminsSpeciaux const speciaux(dossier);
    for (UniChemin const& chemin : speciaux.Tous()) {
        QFileInfo const info(chemin);
        aide::SansBlocage([&] {
            EXPECT_THROW(delete JournalAbs::CreeJournalAvecPreference(info.absolutePath(),
                                                                      info.fileName(), "x", false),
                         sdd::exceptions::OuvertureEchouee)
                << aide::Texte(chemin);
        });
    }
}
