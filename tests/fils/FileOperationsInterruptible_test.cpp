#include "noyau/chaines/UniChaine.h"
#include "noyau/erreurs/Exceptions.h"
#include "noyau/fils/DFil.h"
#include "noyau/fils/FileOperations.h"
#include "noyau/fils/FileOperationsInterruptible.h"

#include "ApplicationTest.h"
#include "Loquet.h"

#include <gtest/gtest.h>

#include <atomic>

using sdd::FileOperationsInterruptible;

// Premier cas du fichier : sans application, le bloc envoyé à la file principale est perdu,
// mais il rend sa place ; une fois l'application là, la file sert de nouveau.
TEST(FileOperationsInterruptible, PrincipaleRepartApresUnBlocPerdu)
{
    if (QCoreApplication::instance() != nullptr) {
        GTEST_SKIP();
    }
    FileOperationsInterruptible* const principale = FileOperationsInterruptible::Principale();
    bool perdu = false, servi = false;
    principale->LanceBlocOperation([&](unsigned int const&) { perdu = true; });
    ApplicationTest();
    principale->LanceBlocOperation([&](unsigned int const&) { servi = true; });
    // Un témoin envoyé après passe après lui dans la boucle : le test finit même en échec.
    bool temoin = false;
    sdd::FileOperations::Principale()->LanceBlocOperation([&] { temoin = true; });
    ServsJusqua([&] { return temoin; });
    EXPECT_TRUE(servi);
    EXPECT_FALSE(perdu);
}

// Pendant qu'un bloc tourne, trois envois : il voit le compte passer à 1, et seul le
// troisième s'exécute ensuite, avec un compte de 0.
TEST(FileOperationsInterruptible, RafaleSeulLeDernier)
{
    FileOperationsInterruptible file(UniChaine("interruptible"));
    Loquet entre, voitUn, relache, dernierFini;
    unsigned int compteAuDepart = 99, compteVu = 0;
    file.LanceBlocOperation([&](unsigned int const& enAttente) {
        compteAuDepart = FileOperationsInterruptible::DonneEnAttente(enAttente);
        entre.Decompte();
        while ((compteVu = FileOperationsInterruptible::DonneEnAttente(enAttente)) == 0) {
            sdd::DFil::LachePriorite();
        }
        voitUn.Decompte();
        relache.Attends();
    });
    entre.Attends();

    std::atomic<int> executes[3] = {};
    unsigned int compteDuDernier = 99;
    auto bloc = [&](int n) {
        return [&, n](unsigned int const& enAttente) {
            ++executes[n];
            if (n == 2) {
                compteDuDernier = FileOperationsInterruptible::DonneEnAttente(enAttente);
                dernierFini.Decompte();
            }
        };
    };
    file.LanceBlocOperation(bloc(0));
    voitUn.Attends();
    file.LanceBlocOperation(bloc(1));
    file.LanceBlocOperation(bloc(2));
    relache.Decompte();
    dernierFini.Attends();

    EXPECT_EQ(compteAuDepart, 0u);
    EXPECT_EQ(compteVu, 1u);
    EXPECT_EQ(executes[0].load(), 0);
    EXPECT_EQ(executes[1].load(), 0);
    EXPECT_EQ(executes[2].load(), 1);
    EXPECT_EQ(compteDuDernier, 0u);
}

TEST(FileOperationsInterruptible, PartageesEtRefus)
{
    EXPECT_EQ(FileOperationsInterruptible::GlobalePrioriteHaute(),
              FileOperationsInterruptible::GlobalePrioriteHaute());
    EXPECT_NE(FileOperationsInterruptible::GlobaleDeDefaut(),
              FileOperationsInterruptible::GlobalePrioriteBasse());
    Loquet fini;
    FileOperationsInterruptible::GlobalePrioriteBasse()->LanceBlocOperation(
        [&](unsigned int const&) { fini.Decompte(); });
    fini.Attends();

    FileOperationsInterruptible sansFile;
    EXPECT_THROW(sansFile.LanceBlocOperation([](unsigned int const&) {}),
                 sdd::exceptions::OperationInvalide);
    EXPECT_THROW(FileOperationsInterruptible::GlobaleDeDefaut()->LanceBlocOperation(nullptr),
                 sdd::exceptions::PointeurInvalide);
}

// Détruite avec des blocs en route : ils s'exécutent quand même, sur un compte encore vivant.
TEST(FileOperationsInterruptible, DetruiteAvantSesBlocs)
{
    Loquet relache, fini;
    {
        FileOperationsInterruptible file(UniChaine("éphémère"));
        file.LanceBlocOperation([&](unsigned int const&) { relache.Attends(); });
        file.LanceBlocOperation([&](unsigned int const& enAttente) {
            EXPECT_EQ(FileOperationsInterruptible::DonneEnAttente(enAttente), 0u);
            fini.Decompte();
        });
    }
    relache.Decompte();
    fini.Attends();
}
