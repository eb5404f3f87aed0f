#include "noyau/erreurs/Exceptions.h"
#include "noyau/reglages/PrefsDeveloppement.h"

#include <gtest/gtest.h>

#include <bitset>
#include <random>

TEST(PrefsDeveloppement, InterrupteursContreBitset)
{
    PrefsDeveloppement prefs;
    EXPECT_FALSE(prefs.DonneTrace());
    std::bitset<32> temoin;
    std::mt19937 hasard(7);
    for (int i = 0; i < 2000; ++i) {
        int const canal = int(hasard() % 32);
        bool const actif = hasard() % 2 != 0;
        prefs.MetsTraceCanal(canal, actif);
        temoin[canal] = actif;
        for (int k = 0; k < 32; ++k) {
            ASSERT_EQ(prefs.DonneTraceCanal(k), temoin[k]) << i << " " << k;
        }
    }
    // Hors des canaux : exception, rien ne change.
    for (int canal : {-1, 32, 1000}) {
        EXPECT_THROW(prefs.MetsTraceCanal(canal, true), sdd::exceptions::IndexHorsBorne);
        EXPECT_THROW(prefs.DonneTraceCanal(canal), sdd::exceptions::IndexHorsBorne);
    }
    for (int k = 0; k < 32; ++k) {
        EXPECT_EQ(prefs.DonneTraceCanal(k), temoin[k]);
    }
    prefs.MetsTrace(true);
    EXPECT_TRUE(prefs.DonneTrace());

    EXPECT_EQ(DonnePrefsDeveloppement(), nullptr);
    MetsPrefsDeveloppement(&prefs);
    EXPECT_EQ(DonnePrefsDeveloppement(), &prefs);
    MetsPrefsDeveloppement(nullptr);
    EXPECT_EQ(DonnePrefsDeveloppement(), nullptr);
}
