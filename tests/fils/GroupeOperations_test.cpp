#include "noyau/chaines/UniChaine.h"
#include "noyau/erreurs/Exceptions.h"
#include "noyau/fils/FileOperations.h"
#include "noyau/fils/GroupeOperations.h"
#include "noyau/fils/Operation.h"

#include "Loquet.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

#include <atomic>
#include <memory>

using sdd::FileOperations;
using sdd::GroupeOperations;

TEST(GroupeOperations, AttendreTousLesMembres)
{
    GroupeOperations groupe;
    EXPECT_TRUE(groupe.AttendreLaFinDesOperations()); // vide : aussitôt

    FileOperations serie(UniChaine("groupe"));
    std::atomic<int> faits{0};
    struct Increment : sdd::Operation
    {
        explicit Increment(std::atomic<int>& c) : compte(c) {}
        void Execute() override { ++compte; }
        std::atomic<int>& compte;
    } operation(faits);
    for (int i = 0; i < 200; ++i) {
        groupe.AjouteOperationBloc(i % 2 ? &serie : FileOperations::GlobaleDeDefaut(),
                                   [&] { ++faits; });
    }
    groupe.AjouteOperation(&serie, &operation);
    groupe.AjouteOperation(&serie, &operation);
    EXPECT_TRUE(groupe.AttendreLaFinDesOperations());
    EXPECT_EQ(faits.load(), 202);

    EXPECT_THROW(groupe.AjouteOperationBloc(nullptr, [] {}), sdd::exceptions::OperationInvalide);
    FileOperations sansFile;
    EXPECT_THROW(groupe.AjouteOperationBloc(&sansFile, [] {}), sdd::exceptions::OperationInvalide);
    EXPECT_THROW(groupe.AjouteOperation(&serie, nullptr), sdd::exceptions::PointeurInvalide);
    EXPECT_TRUE(groupe.AttendreLaFinDesOperations()); // les refus ne laissent pas de membre
}

// L'avis couvre les membres envoyés avant lui, pas celui envoyé après, qui attend l'avis :
// un avis qui l'attendrait ne viendrait jamais.
TEST(GroupeOperations, AvisALaFinDesMembresPrecedents)
{
    GroupeOperations groupe;
    FileOperations avis(UniChaine("avis"));
    Loquet porte, avertis;
    std::atomic<int> faits{0};
    int faitsAuMomentDeLAvis = -1;
    for (int i = 0; i < 20; ++i) {
        groupe.AjouteOperationBloc(FileOperations::GlobaleDeDefaut(), [&] {
            porte.Attends();
            ++faits;
        });
    }
    groupe.AvertirOperationBlocALaFinDesOperations(&avis, [&] {
        faitsAuMomentDeLAvis = faits.load();
        avertis.Decompte();
    });
    groupe.AjouteOperationBloc(FileOperations::GlobaleDeDefaut(), [&] { avertis.Attends(); });
    porte.Decompte();
    avertis.Attends();
    EXPECT_TRUE(groupe.AttendreLaFinDesOperations());
    EXPECT_EQ(faitsAuMomentDeLAvis, 20);

    // Sans membre en cours : l'avis part aussitôt ; une opération avertie n'est pas détruite.
    struct Avis : sdd::Operation
    {
        void Execute() override { fait.Decompte(); }
        Loquet fait;
    } operation;
    groupe.AvertirOperationALaFinDesOperations(&avis, &operation);
    operation.fait.Attends();
}

TEST(GroupeOperations, DetruitAvantSesMembres)
{
    Loquet porte, avertis;
    FileOperations file(UniChaine("orphelins"));
    {
        GroupeOperations groupe;
        groupe.AjouteOperationBloc(&file, [&] { porte.Attends(); });
        groupe.AvertirOperationBlocALaFinDesOperations(&file, [&] { avertis.Decompte(); });
    }
    porte.Decompte();
    avertis.Attends();
}

// Sans application, la file principale abandonne le bloc : le membre sort quand même du
// groupe, et l'attente revient.
TEST(GroupeOperations, MembreAbandonneParLaFile)
{
    if (QCoreApplication::instance() != nullptr) {
        GTEST_SKIP();
    }
    GroupeOperations groupe;
    bool execute = false;
    groupe.AjouteOperationBloc(FileOperations::Principale(), [&] { execute = true; });
    EXPECT_TRUE(groupe.AttendreLaFinDesOperations());
    EXPECT_FALSE(execute);
}
