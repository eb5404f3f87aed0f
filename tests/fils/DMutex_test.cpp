#include "noyau/fils/DCondAttente.h"
#include "noyau/fils/DMutex.h"

#include "FilLambda.h"
#include "Loquet.h"

#include <gtest/gtest.h>

#include <vector>

using sdd::DCondAttente;
using sdd::DMutex;

namespace {

// EssaieVerrouille depuis un autre fil ; rend le verrou s'il l'a pris.
bool PrisAilleurs(DMutex& m)
{
    bool pris = false;
    FilLambda fil([&] {
        pris = m.EssaieVerrouille();
        if (pris) {
            m.Deverrouille();
        }
    });
    fil.Debute();
    fil.AttendsLaFin();
    return pris;
}

} // namespace

TEST(DMutex, OrdinaireEtRecursif)
{
    DMutex ordinaire(DMutex::kMutexOrdinaire);
    EXPECT_TRUE(PrisAilleurs(ordinaire));
    ordinaire.Verrouille();
    EXPECT_FALSE(PrisAilleurs(ordinaire));
    EXPECT_FALSE(ordinaire.EssaieVerrouille()); // non récursif, même sur son propre fil
    ordinaire.Deverrouille();
    EXPECT_TRUE(PrisAilleurs(ordinaire));

    DMutex recursif(DMutex::kMutexRecursif);
    recursif.Verrouille();
    EXPECT_TRUE(recursif.EssaieVerrouille());
    recursif.Deverrouille();
    EXPECT_FALSE(PrisAilleurs(recursif)); // encore tenu une fois
    recursif.Deverrouille();
    EXPECT_TRUE(PrisAilleurs(recursif));

    DMutex inconnu(DMutex::eTypeMutex(7)); // traité comme ordinaire
    inconnu.Verrouille();
    EXPECT_FALSE(inconnu.EssaieVerrouille());
    inconnu.Deverrouille();
}

TEST(DCondAttente, ProducteurConsommateur)
{
    DMutex m;
    DCondAttente nonVide;
    std::vector<int> file;
    std::vector<int> recus;
    constexpr int kN = 2000;
    FilLambda consommateur([&] {
        m.Verrouille();
        while (int(recus.size()) < kN) {
            while (file.empty()) {
                nonVide.Attends(m);
            }
            recus.insert(recus.end(), file.begin(), file.end());
            file.clear();
        }
        m.Deverrouille();
    });
    consommateur.Debute();
    for (int i = 0; i < kN; ++i) {
        m.Verrouille();
        file.push_back(i);
        m.Deverrouille();
        if (i % 2 == 0) {
            nonVide.ReveilUn();
        } else {
            nonVide.ReveilTous();
        }
    }
    consommateur.AttendsLaFin();
    ASSERT_EQ(int(recus.size()), kN);
    for (int i = 0; i < kN; ++i) {
        EXPECT_EQ(recus[i], i);
    }
}

TEST(DCondAttente, AttendsTempsRevientAussitotVerrouTenu)
{
    DMutex m;
    DCondAttente c;
    m.Verrouille();
    EXPECT_FALSE(c.AttendsTemps(m, 3600.0f));
    EXPECT_FALSE(c.AttendsTemps(m, -1.0f));
    EXPECT_FALSE(PrisAilleurs(m));
    m.Deverrouille();
}
