#include "noyau/fils/Operation.h"
#include "noyau/fils/OperationUnique.h"

#include "FilLambda.h"
#include "Loquet.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <stdexcept>
#include <vector>

using sdd::OperationUnique;

// Huit fils sur la même garde : un seul bloc s'exécute, et personne ne revient avant sa fin.
TEST(OperationUnique, UneFoisDepuisPlusieursFils)
{
    OperationUnique garde;
    std::atomic<int> executions{0};
    std::atomic<int> revenusAvantLaFin{0};
    std::atomic<bool> fini{false};
    Loquet depart;
    std::vector<std::unique_ptr<FilLambda>> fils;
    for (int f = 0; f < 8; ++f) {
        fils.push_back(std::make_unique<FilLambda>([&] {
            depart.Attends();
            garde([&] {
                ++executions;
                for (int i = 0; i < 100; ++i) {
                    sdd::DFil::LachePriorite(); // laisse les autres arriver pendant le bloc
                }
                fini = true;
            });
            revenusAvantLaFin += !fini.load();
        }));
        fils.back()->Debute();
    }
    depart.Decompte();
    for (auto& f : fils) {
        f->AttendsLaFin();
    }
    EXPECT_EQ(executions.load(), 1);
    EXPECT_EQ(revenusAvantLaFin.load(), 0);
}

TEST(OperationUnique, ExceptionEtOperations)
{
    OperationUnique garde;
    EXPECT_THROW(garde([] { throw std::runtime_error("raté"); }), std::runtime_error);
    int n = 0;
    garde([&] { ++n; }); // la garde est restée ouverte
    garde([&] { ++n; });
    EXPECT_EQ(n, 1);

    struct Compte : sdd::Operation
    {
        void Execute() override { ++fois; }
        int fois = 0;
    } operation;
    OperationUnique a, b;
    operation.LanceUneSeuleFois(&a);
    operation.LanceUneSeuleFois(&a);
    EXPECT_EQ(operation.fois, 1);
    operation.LanceUneSeuleFois(&b);
    EXPECT_EQ(operation.fois, 2);
}
