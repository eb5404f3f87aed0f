#include "noyau/fils/DMessagerSurFilCourant.h"

#include "FilLambda.h"

#include <QCoreApplication>
#include <QThread>
#include <gtest/gtest.h>

#include <string>

namespace {

QCoreApplication& Application()
{
    static int argc = 1;
    static char nom[] = "DMessagerSurFilCourant_test";
    static char* argv[] = {nom, nullptr};
    static QCoreApplication app(argc, argv);
    return app;
}

// Note sa lettre dans le journal commun, et si elle s'exécute sur le fil principal.
class Messager : public sdd::DMessagerSurFilCourant
{
public:
    Messager(char lettre, std::string& journal) : _lettre(lettre), _journal(journal) {}
    void ExecuteSurFilCourant() override
    {
        _journal += _lettre;
        surPrincipal = surPrincipal && QThread::currentThread() == Application().thread();
    }
    bool surPrincipal = true;

private:
    char const _lettre;
    std::string& _journal;
};

} // namespace

TEST(DMessagerSurFilCourant, LivraisonsDansLOrdreSurLeFilCreateur)
{
    Application();
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
    while (journal.size() < 4) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    EXPECT_EQ(journal, "abaa");
    EXPECT_TRUE(a.surPrincipal);
    EXPECT_TRUE(b.surPrincipal);
}

TEST(DMessagerSurFilCourant, DemandesAbandonneesALaDestruction)
{
    Application();
    std::string journal;
    Messager temoin('t', journal);
    {
        Messager perdu('p', journal);
        perdu.LanceExecution();
        perdu.LanceExecution();
    }
    temoin.LanceExecution();
    while (journal.empty()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    EXPECT_EQ(journal, "t");
}
