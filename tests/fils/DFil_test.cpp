#include "noyau/erreurs/Exceptions.h"
#include "noyau/fils/DFil.h"
#include "noyau/fils/detail/Delais.h"

#include "FilLambda.h"
#include "Loquet.h"

#include <QThread>
#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <limits>

using sdd::DFil;

TEST(DFil, CycleDeVieEtRelance)
{
    EXPECT_EQ(DFil::FilCourant(), nullptr);
    Loquet entre, sors;
    DFil* vu = nullptr;
    int passages = 0;
    FilLambda fil(
        [&] {
            vu = DFil::FilCourant();
            ++passages;
            entre.Decompte();
            sors.Attends();
        },
        42);
    EXPECT_EQ(fil.DonneIdent(), 42);
    EXPECT_FALSE(fil.ATerminay());
    fil.AttendsLaFin(); // jamais lancé : rien à attendre

    fil.Debute();
    entre.Attends();
    EXPECT_FALSE(fil.ATerminay());
    EXPECT_THROW(fil.Debute(), sdd::exceptions::OperationInvalide); // le corps tourne encore
    sors.Decompte();
    fil.AttendsLaFin();
    EXPECT_TRUE(fil.ATerminay());
    EXPECT_EQ(vu, &fil);
    EXPECT_EQ(fil.DonneResultat(), 0);
    fil.AttendsLaFin(); // drapeau levé : revient aussitôt

    fil.Debute(DFil::kPrioriteBasse); // relance avec un nouveau fil
    fil.AttendsLaFin();
    EXPECT_EQ(passages, 2);
    EXPECT_EQ(DFil::FilCourant(), nullptr);
}

// Relancé dès que le drapeau se lève, sans attendre : le QThread qui finit d'un instant est
// attendu, jamais refusé ni détruit en marche.
TEST(DFil, RelanceDesLaFinDuCorps)
{
    std::atomic<int> passages{0};
    FilLambda fil([&] { ++passages; });
    for (int i = 0; i < 2000; ++i) {
        fil.Debute();
        while (!fil.ATerminay()) {
        }
    }
    fil.AttendsLaFin();
    EXPECT_EQ(passages.load(), 2000);
}

// Un Termine redéfini sans appeler celui de la classe ne lève jamais le drapeau : une fois
// le corps revenu, le fil se relance quand même.
TEST(DFil, RelanceAvecTermineRedefini)
{
    struct SansDrapeau : FilLambda
    {
        using FilLambda::FilLambda;
        void Termine() override { ++fins; }
        int fins = 0;
    };
    int passages = 0;
    SansDrapeau fil([&] { ++passages; });
    fil.Debute();
    fil.AttendsLaFin();
    EXPECT_FALSE(fil.ATerminay());
    fil.Debute();
    fil.AttendsLaFin();
    EXPECT_EQ(passages, 2);
    EXPECT_EQ(fil.fins, 2);
}

TEST(DFil, AttendreSaPropreFinDepuisLeCorpsNeBloquePas)
{
    FilLambda* soi = nullptr;
    bool revenu = false;
    FilLambda fil([&] {
        soi->AttendsLaFin();
        revenu = true;
    });
    soi = &fil;
    fil.Debute();
    fil.AttendsLaFin();
    EXPECT_TRUE(revenu);
}

// Termine redéfinie : appelée sur le fil, après le corps.
TEST(DFil, TermineRedefinieEstHonoree)
{
    struct Fil : sdd::DFil
    {
        Fil() : DFil(1) {}
        ~Fil() override { AttendsLaFin(); }
        void Execute() override { corpsFini = true; }
        void Termine() override
        {
            apresCorps = corpsFini && FilCourant() == this;
            DFil::Termine();
        }
        bool corpsFini = false;
        bool apresCorps = false;
    } fil;
    fil.Debute();
    fil.AttendsLaFin();
    EXPECT_TRUE(fil.apresCorps);
}

TEST(DFil, PrioritesQt)
{
    std::pair<int, QThread::Priority> const attendues[] = {
        {0, QThread::InheritPriority}, {1, QThread::IdlePriority},
        {2, QThread::LowestPriority},  {3, QThread::LowPriority},
        {4, QThread::NormalPriority},  {5, QThread::HighPriority},
        {6, QThread::HighestPriority}, {7, QThread::TimeCriticalPriority},
        {8, QThread::InheritPriority}, {-1, QThread::InheritPriority}};
    for (auto const& [valeur, qt] : attendues) {
        QThread::Priority vue = QThread::InheritPriority;
        FilLambda fil([&] { vue = QThread::currentThread()->priority(); });
        fil.Debute(DFil::ePriorite(valeur));
        fil.AttendsLaFin();
        EXPECT_EQ(vue, qt) << valeur;
    }
}

TEST(DFil, ProcesseursEtDelais)
{
    int const ideal = QThread::idealThreadCount();
    EXPECT_EQ(DFil::NbProcesseurs(), ideal < 1 ? 1 : ideal);
    EXPECT_EQ(DFil::NbProcesseursPhysiques(), DFil::NbProcesseurs());

    using sdd::detail::MillisecondesDeSecondes;
    EXPECT_EQ(MillisecondesDeSecondes(0.0009f), 0u);
    EXPECT_EQ(MillisecondesDeSecondes(1.5f), 1500u);
    EXPECT_EQ(MillisecondesDeSecondes(0.001f), 1u);
    EXPECT_EQ(MillisecondesDeSecondes(2.9999f), 2999u);
    EXPECT_EQ(MillisecondesDeSecondes(-0.5f), 0u);
    EXPECT_EQ(MillisecondesDeSecondes(-1e30f), 0u);
    EXPECT_EQ(MillisecondesDeSecondes(std::nanf("")), 0u);
    EXPECT_EQ(MillisecondesDeSecondes(std::numeric_limits<float>::infinity()),
              std::numeric_limits<unsigned long>::max());
    DFil::Dors(0.0009f); // 0 ms : revient
    DFil::Dors(-1.0f);   // négatif : ne dort pas au lieu de dormir des siècles
    DFil::LachePriorite();

    using sdd::detail::DureeDeSecondes;
    EXPECT_EQ(DureeDeSecondes(1.5).count(), 1'500'000'000);
    EXPECT_EQ(DureeDeSecondes(1e-10).count(), 0);
    EXPECT_EQ(DureeDeSecondes(-3.0).count(), 0);
    EXPECT_EQ(DureeDeSecondes(std::nan("")).count(), 0);
    EXPECT_EQ(DureeDeSecondes(1e300), DureeDeSecondes(1e20)); // plafond
    EXPECT_GT(DureeDeSecondes(1e300).count(), 3'000'000'000'000'000'000LL);
}
