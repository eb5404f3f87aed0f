#include "noyau/erreurs/Exceptions.h"
#include "noyau/plateforme/Temps.h"

#include <gtest/gtest.h>

#include <chrono>

TEST(Temps, MonotoneEtDansLUnite)
{
    // Même horloge que steady_clock : la lecture de la bibliothèque l'encadre exactement.
    auto const nanos = [] {
        return std::chrono::duration_cast<std::chrono::nanoseconds>(
                   std::chrono::steady_clock::now().time_since_epoch())
            .count();
    };
    std::int64_t const avant = nanos();
    std::int64_t const ns = DonneTempsAbsolu(1000000000);
    std::int64_t const apres = nanos();
    EXPECT_LE(avant, ns);
    EXPECT_LE(ns, apres);
    std::int64_t const ms = DonneTempsAbsolu(1000);
    EXPECT_GE(ms, apres / 1000000);
    EXPECT_LE(ms, nanos() / 1000000);

    std::int64_t precedent = DonneTempsAbsolu(1000000);
    for (int i = 0; i < 10000; ++i) {
        std::int64_t const t = DonneTempsAbsolu(1000000);
        ASSERT_GE(t, precedent);
        precedent = t;
    }
    // Des secondes aux millisecondes, à une seconde près.
    std::int64_t const s = DonneTempsAbsolu(1);
    EXPECT_LE(s * 1000, DonneTempsAbsolu(1000));
    EXPECT_GE((s + 2) * 1000, DonneTempsAbsolu(1000));
    std::int64_t const grand = DonneTempsAbsolu(INT32_MAX);
    EXPECT_GT(grand, 0);

    EXPECT_THROW(DonneTempsAbsolu(0), sdd::exceptions::OperationInvalide);
    EXPECT_THROW(DonneTempsAbsolu(-1000), sdd::exceptions::OperationInvalide);
}
