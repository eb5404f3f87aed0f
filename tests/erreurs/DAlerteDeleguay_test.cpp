#include "noyau/erreurs/DAlerteDeleguay.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

struct DelegueEnregistreur : DAlerteDeleguay
{
    void AfficheDAlerte(DAlerteInfo const& alerte, void* parente, int options) override
    {
        appels.push_back("Affiche " + QString(alerte.DonneMessage()).toStdString());
        parentes.push_back(parente);
        options_.push_back(options);
    }
    int AfficheDAlerteRappel(DAlerteInfo const& alerte, UniChaine const& rappel,
                             void* parente) override
    {
        appels.push_back("Rappel " + QString(alerte.DonneMessage()).toStdString() + " " +
                         QString(rappel).toStdString());
        parentes.push_back(parente);
        return reponse;
    }
    std::vector<std::string> appels;
    std::vector<void*> parentes;
    std::vector<int> options_;
    int reponse = 42;
};

} // namespace

TEST(DAlerteDeleguay, InstalleOuNon)
{
    DAlerteInfo const alerte(DAlerteInfo::kAlerte, "a", "b", "c");
    // Sans délégué : rien, et 0.
    DAlerteDeleguay::DAlerteParDeleguay(alerte);
    EXPECT_EQ(DAlerteDeleguay::DAlerteRappelParDeleguay(alerte, "r"), 0);

    DelegueEnregistreur delegue;
    DAlerteDeleguay::MetsDAlerteDeleguay(&delegue);
    DAlerteDeleguay::DAlerteParDeleguay(alerte);
    EXPECT_EQ(DAlerteDeleguay::DAlerteRappelParDeleguay(alerte, "r"), 42);
    delegue.reponse = -3;
    EXPECT_EQ(DAlerteDeleguay::DAlerteRappelParDeleguay(alerte, "s"), -3);
    EXPECT_EQ(delegue.appels, (std::vector<std::string>{"Affiche a", "Rappel a r", "Rappel a s"}));
    EXPECT_EQ(delegue.parentes, (std::vector<void*>{nullptr, nullptr, nullptr}));
    EXPECT_EQ(delegue.options_, std::vector<int>{0});

    DAlerteDeleguay::MetsDAlerteDeleguay(nullptr);
    DAlerteDeleguay::DAlerteParDeleguay(alerte);
    EXPECT_EQ(DAlerteDeleguay::DAlerteRappelParDeleguay(alerte, "r"), 0);
    EXPECT_EQ(delegue.appels.size(), 3u);
}
