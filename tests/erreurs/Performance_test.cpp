#include "noyau/erreurs/Performance.h"
#include "noyau/erreurs/Profilage.h"

#include <gtest/gtest.h>

TEST(Performance, SortiesDuChronometre)
{
    double secondes = -1.0;
    testing::internal::CaptureStderr();
    {
        sdd::Performance const mesure(UniChaine("Tri é"), &secondes);
    }
    // Volontaire : l'opposé de la durée gardée, toujours nulle.
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Tri é : -0\n");
    EXPECT_GE(secondes, 0.0);
    EXPECT_LT(secondes, 3600.0);

    secondes = -1.0;
    testing::internal::CaptureStderr();
    {
        sdd::Performance const muette(&secondes);
        sdd::Performance const sansNom(UniChaine(""));
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_GE(secondes, 0.0);

    testing::internal::CaptureStderr();
    {
        sdd::Performance const nommee(UniChaine("x"));
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "x : -0\n");
}

TEST(Performance, ProfilageInterdit)
{
    EXPECT_FALSE(DonneSiPeutProfiler());
    DebuteTempsPourProfilage(1);
    DebuteTempsPourProfilage(1);
    EXPECT_TRUE(gPileTemps.empty());
    EXPECT_EQ(TermineTempsPourProfilage(1), -1);
    EXPECT_EQ(TermineTempsPourProfilage(-7), -1);
}
