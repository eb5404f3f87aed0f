#include "noyau/fils/DMessagerSurFilCourant.h"

#include "ApplicationTest.h"
#include "FilLambda.h"

#include <QThread>
#include <gtest/gtest.h>

#include <string>

namespace {

// Note sa lettre dans le journal commun, et si elle s'exécute sur le fil principal.
class Messager : public sdd::DMessagerSurFilCourant
{
public:
    Messager(char lettre, std::string& journal) : _lettre(lettre), _journal(journal) {}
    void ExecuteSurFilCourant() override
    {
        _journal += _lettre;
        surPrincipal = surPrincipal && QThread::currentThread() == ApplicationTest().thread();
    }
    bool surPrincipal = true;

private:
    char const _lettre;
    std::string& _journal;
};

} // namespace

TEST(DMessagerSurFilCourant, LivraisonsDansLOrdreSurLeFilCreateur)
{
    ApplicationTest();
    std::string journal;
    Messager a('a', journal), b('b', journal);
    FilLambda emetteur([&] {
        a.LanceExecution();
        b.LanceExecution();
        a.LanceExecution();
    });
    emetteur.Debute();
    emetteur.AttendsLaFin();
    a.LanceExecution();
    EXPECT_EQ(journal, ""); // rien avant que la boucle tourne
    ServsJusqua([&] { return journal.size() >= 4; });
    EXPECT_EQ(journal, "abaa");
    EXPECT_TRUE(a.surPrincipal);
    EXPECT_TRUE(b.surPrincipal);
}

TEST(DMessagerSurFilCourant, DemandesAbandonneesALaDestruction)
{
    ApplicationTest();
    std::string journal;
    Messager temoin('t', journal);
    {
        Messager perdu('p', journal);
        perdu.LanceExecution();
        perdu.LanceExecution();
    }
    temoin.LanceExecution();
    ServsJusqua([&] { return !journal.empty(); });
    EXPECT_EQ(journal, "t");
}
