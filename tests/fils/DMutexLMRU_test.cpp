#include "noyau/fils/DMutexLMRU.h"

#include "FilLambda.h"
#include "Loquet.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <random>
#include <vector>

using sdd::DMutexLMRU;

TEST(DMutexLMRU, DeuxLecteursPuisUnRedacteur)
{
    DMutexLMRU verrou;
    std::atomic<int> lecteurs{0};
    int lecteursVusParLeRedacteur = -1;
    Loquet autreLecteurEntre, relacheAutreLecteur, redacteurEntre;

    FilLambda autreLecteur([&] {
        verrou.VerrouilleLecteur();
        ++lecteurs;
        autreLecteurEntre.Decompte();
        relacheAutreLecteur.Attends();
        --lecteurs;
        verrou.DeverrouilleLecteur();
    });
    autreLecteur.Debute();
    autreLecteurEntre.Attends();
    verrou.VerrouilleLecteur(); // deux lecteurs ensemble
    ++lecteurs;
    EXPECT_EQ(lecteurs.load(), 2);

    FilLambda redacteur([&] {
        verrou.VerrouilleRedacteur();
        lecteursVusParLeRedacteur = lecteurs.load();
        redacteurEntre.Decompte();
        verrou.DeverrouilleRedacteur();
    });
    redacteur.Debute();
    --lecteurs;
    verrou.DeverrouilleLecteur();
    relacheAutreLecteur.Decompte();
    redacteurEntre.Attends();
    EXPECT_EQ(lecteursVusParLeRedacteur, 0); // entré après la sortie des deux
}

TEST(DMutexLMRU, LecteurAttendLeRedacteur)
{
    DMutexLMRU verrou;
    std::atomic<bool> ecrit{false};
    bool vuEnEcriture = true;
    verrou.VerrouilleRedacteur();
    ecrit = true;
    FilLambda lecteur([&] {
        verrou.VerrouilleLecteur();
        vuEnEcriture = ecrit.load();
        verrou.DeverrouilleLecteur();
    });
    lecteur.Debute();
    ecrit = false;
    verrou.DeverrouilleRedacteur();
    lecteur.AttendsLaFin();
    EXPECT_FALSE(vuEnEcriture);
}

// Huit fils, lectures et écritures au hasard : jamais un lecteur pendant une écriture,
// jamais deux rédacteurs. La donnée écrite sans atomique laisse aussi ThreadSanitizer juger.
TEST(DMutexLMRU, ChevauchementsSousCharge)
{
    constexpr int kFils = 8;
    constexpr int kOperations = 4000;
    DMutexLMRU verrou;
    std::atomic<int> lecteurs{0}, redacteurs{0}, fautes{0};
    long long donnee = 0;
    long long ecritures = 0;
    Loquet depart;

    std::vector<std::unique_ptr<FilLambda>> fils;
    for (int f = 0; f < kFils; ++f) {
        fils.push_back(std::make_unique<FilLambda>([&, f] {
            std::mt19937 hasard(f);
            depart.Attends();
            for (int i = 0; i < kOperations; ++i) {
                if (hasard() % 4 == 0) {
                    verrou.VerrouilleRedacteur();
                    fautes += redacteurs++ != 0 || lecteurs.load() != 0;
                    donnee += 1;
                    ++ecritures;
                    sdd::DFil::LachePriorite(); // élargit la fenêtre d'un chevauchement
                    fautes += lecteurs.load() != 0;
                    --redacteurs;
                    verrou.DeverrouilleRedacteur();
                } else {
                    verrou.VerrouilleLecteur();
                    ++lecteurs;
                    long long const lue = donnee;
                    sdd::DFil::LachePriorite();
                    fautes += redacteurs.load() != 0 || lue != donnee;
                    --lecteurs;
                    verrou.DeverrouilleLecteur();
                }
            }
        }));
        fils.back()->Debute();
    }
    depart.Decompte();
    for (auto& f : fils) {
        f->AttendsLaFin();
    }
    EXPECT_EQ(fautes.load(), 0);
    EXPECT_EQ(donnee, ecritures);
    EXPECT_GT(ecritures, 0);
}
