#include "noyau/chaines/UniChaine.h"
#include "noyau/erreurs/Exceptions.h"
#include "noyau/fils/DFil.h"
#include "noyau/fils/FileOperations.h"
#include "noyau/fils/Operation.h"

#include "ApplicationTest.h"
#include "Loquet.h"

#include <QEvent>
#include <QThread>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <memory>
#include <pthread.h>
#include <stdexcept>
#include <string>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>
#include <vector>

using sdd::FileOperations;

namespace {

std::string NomDuFil()
{
    char nom[16] = {};
    pthread_getname_np(pthread_self(), nom, sizeof nom);
    return nom;
}

} // namespace

// Premier cas du fichier : l'application n'existe pas encore quand il est lancé seul.
TEST(FileOperations, PrincipaleSansApplication)
{
    if (QCoreApplication::instance() != nullptr) {
        GTEST_SKIP();
    }
    bool execute = false;
    FileOperations::Principale()->LanceBlocOperation([&] { execute = true; }); // abandonné
    EXPECT_THROW(FileOperations::Principale()->LanceBlocOperationSync([] {}),
                 sdd::exceptions::OperationInvalide);
    EXPECT_FALSE(execute);
}

TEST(FileOperations, SerieDansLOrdreEtNommee)
{
    // 15 octets au plus, sans couper le « è » (2 octets) qui chevauche la limite.
    FileOperations file(UniChaine(u"Fichiers à très longue file"));
    std::vector<int> vus;
    for (int i = 0; i < 1000; ++i) {
        file.LanceBlocOperation([&vus, i] { vus.push_back(i); });
    }
    std::string nom;
    file.LanceBlocOperationSync([&] {
        nom = NomDuFil();
        file.LanceBlocOperationSync([&] { vus.push_back(-1); }); // sur place, pas d'attente
    });
    ASSERT_EQ(vus.size(), 1001u);
    for (int i = 0; i < 1000; ++i) {
        ASSERT_EQ(vus[i], i);
    }
    EXPECT_EQ(vus.back(), -1);
    EXPECT_EQ(nom, "Fichiers à tr");
}

TEST(FileOperations, GlobalesConcurrentesEtPartagees)
{
    EXPECT_EQ(FileOperations::GlobalePrioriteHaute(), FileOperations::GlobalePrioriteHaute());
    EXPECT_NE(FileOperations::GlobalePrioriteHaute(), FileOperations::GlobaleDeDefaut());
    EXPECT_NE(FileOperations::GlobalePrioriteBasse(), FileOperations::GlobaleDeDefaut());
    if (sdd::DFil::NbProcesseurs() < 2) {
        GTEST_SKIP() << "un seul processeur";
    }
    // Chaque bloc attend l'autre : ils ne finissent qu'exécutés ensemble.
    Loquet ensemble(2), finis(2);
    for (int i = 0; i < 2; ++i) {
        FileOperations::GlobaleDeDefaut()->LanceBlocOperation([&] {
            ensemble.Decompte();
            ensemble.Attends();
            finis.Decompte();
        });
    }
    finis.Attends();

    int gentillesseDefaut = 0, gentillesseBasse = 0;
    FileOperations::GlobaleDeDefaut()->LanceBlocOperationSync(
        [&] { gentillesseDefaut = getpriority(PRIO_PROCESS, gettid()); });
    FileOperations::GlobalePrioriteBasse()->LanceBlocOperationSync(
        [&] { gentillesseBasse = getpriority(PRIO_PROCESS, gettid()); });
    EXPECT_GT(gentillesseBasse, gentillesseDefaut);
}

TEST(FileOperations, NFois)
{
    for (FileOperations* file :
         {FileOperations::GlobaleDeDefaut(), FileOperations::GlobalePrioriteHaute()}) {
        std::atomic<int> appels{0};
        file->LanceBlocOperationNFois(0, [&](unsigned int) { ++appels; });
        EXPECT_EQ(appels.load(), 0);

        std::atomic<int> vus[4] = {};
        file->LanceBlocOperationNFois(4, [&](unsigned int i) { ++vus[i]; });
        for (auto& v : vus) {
            EXPECT_EQ(v.load(), 1);
        }
    }
    // Sur une file série : dans l'ordre.
    FileOperations serie(UniChaine("série"));
    std::vector<unsigned int> ordre;
    serie.LanceBlocOperationNFois(50, [&](unsigned int i) { ordre.push_back(i); });
    ASSERT_EQ(ordre.size(), 50u);
    for (unsigned int i = 0; i < 50; ++i) {
        EXPECT_EQ(ordre[i], i);
    }
    // Imbriquées sur tous les fils du pool : pas d'interblocage.
    std::atomic<int> total{0};
    FileOperations::GlobaleDeDefaut()->LanceBlocOperationNFois(8, [&](unsigned int) {
        FileOperations::GlobaleDeDefaut()->LanceBlocOperationNFois(100,
                                                                   [&](unsigned int) { ++total; });
    });
    EXPECT_EQ(total.load(), 800);
    // Une exception passe à l'appelant, après la fin des indices en cours.
    EXPECT_THROW(FileOperations::GlobaleDeDefaut()->LanceBlocOperationNFois(
                     1000,
                     [](unsigned int i) {
                         if (i == 500) {
                             throw std::runtime_error("500");
                         }
                     }),
                 std::runtime_error);
}

// Tous les fils du pool envoient en même temps un bloc synchrone à une file série, puis
// chacun descend une chaîne d'envois synchrones plus profonde que le pool : aucun ne doit
// attendre un fil du pool qui n'est plus libre.
TEST(FileOperations, SyncDepuisLePoolSansInterblocage)
{
    int const nbFils = sdd::DFil::NbProcesseurs();
    FileOperations serie(UniChaine("partagée"));
    std::vector<std::unique_ptr<FileOperations>> chaine;
    for (int i = 0; i < 2 * nbFils + 1; ++i) {
        chaine.push_back(std::make_unique<FileOperations>(UniChaine("maillon")));
    }
    std::function<void(std::size_t)> descends = [&](std::size_t i) {
        if (i < chaine.size()) {
            chaine[i]->LanceBlocOperationSync([&, i] { descends(i + 1); });
        }
    };
    std::vector<int> vus;
    std::atomic<int> nomsFaux{0}, avantLeSien{0}, profondeurs{0};
    Loquet ensemble(nbFils), finis(nbFils);
    for (int f = 0; f < nbFils; ++f) {
        FileOperations::GlobaleDeDefaut()->LanceBlocOperation([&, f] {
            ensemble.Decompte();
            ensemble.Attends(); // tous les fils du pool sont pris
            for (int i = 0; i < 10; ++i) {
                serie.LanceBlocOperation([&vus, f, i] { vus.push_back(f * 100 + i); });
            }
            serie.LanceBlocOperationSync([&] {
                nomsFaux += NomDuFil() != "partagée";
                avantLeSien += std::count_if(vus.begin(), vus.end(),
                                             [f](int v) { return v >= 0 && v / 100 == f; }) == 10;
                vus.push_back(-1);
            });
            nomsFaux += NomDuFil() != "noyau-defaut"; // le fil a repris son nom
            FileOperations::GlobalePrioriteBasse()->LanceBlocOperationSync([&] { descends(0); });
            profondeurs++;
            finis.Decompte();
        });
    }
    finis.Attends();
    serie.LanceBlocOperationSync([] {});
    EXPECT_EQ(nomsFaux.load(), 0);
    EXPECT_EQ(avantLeSien.load(), nbFils); // chaque bloc synchrone après ceux de son fil
    EXPECT_EQ(profondeurs.load(), nbFils);
    ASSERT_EQ(vus.size(), std::size_t(11 * nbFils));
    std::vector<int> suivants(nbFils, 0);
    for (int v : vus) {
        if (v >= 0) {
            EXPECT_EQ(v % 100, suivants[v / 100]++);
        }
    }
}

// Le bloc synchrone détruit l'objet file, seul détenteur de la file : l'envoi revient sans
// toucher une file détruite, depuis un fil ordinaire comme depuis un fil du pool qui sert
// lui-même la file, et les blocs envoyés après passent quand même.
TEST(FileOperations, SyncQuiDetruitSaFile)
{
    auto* file = new FileOperations(UniChaine("éphémère"));
    file->LanceBlocOperationSync([&] { delete file; });

    Loquet fait, apres;
    FileOperations::GlobaleDeDefaut()->LanceBlocOperation([&] {
        auto* autre = new FileOperations(UniChaine("éphémère"));
        autre->LanceBlocOperationSync([&] {
            autre->LanceBlocOperation([&] { apres.Decompte(); });
            delete autre;
        });
        fait.Decompte();
    });
    fait.Attends();
    apres.Attends();
}

TEST(FileOperations, SyncApresTempsEtRefus)
{
    FileOperations file(UniChaine("sync"));
    std::thread::id fil;
    file.LanceBlocOperationSync([&] { fil = std::this_thread::get_id(); });
    EXPECT_NE(fil, std::this_thread::get_id());
    EXPECT_THROW(file.LanceBlocOperationSync([] { throw std::logic_error("x"); }),
                 std::logic_error);

    Loquet arrives(3);
    std::atomic<int> ordre{0};
    int apresLong = -1;
    file.LanceBlocOperationApresTemps(0.02, [&] {
        apresLong = ordre++;
        arrives.Decompte();
    });
    file.LanceBlocOperationApresTemps(-1.0, [&] { arrives.Decompte(); }); // aussitôt
    FileOperations::GlobaleDeDefaut()->LanceBlocOperationApresTemps(0.0, [&] {
        ++ordre;
        arrives.Decompte();
    });
    arrives.Attends();
    EXPECT_GE(apresLong, 0);

    FileOperations sansFile;
    EXPECT_THROW(sansFile.LanceBlocOperation([] {}), sdd::exceptions::OperationInvalide);
    EXPECT_THROW(sansFile.LanceBlocOperationNFois(1, [](unsigned int) {}),
                 sdd::exceptions::OperationInvalide);
    EXPECT_THROW(file.LanceBlocOperation(nullptr), sdd::exceptions::PointeurInvalide);
    EXPECT_THROW(file.LanceBlocOperationApresTemps(1.0, nullptr),
                 sdd::exceptions::PointeurInvalide);
}

TEST(FileOperations, OperationLanceeDeuxFois)
{
    struct Compteur : sdd::Operation
    {
        explicit Compteur(Loquet& l) : loquet(l) {}
        void Execute() override
        {
            ++passages;
            loquet.Decompte();
        }
        Loquet& loquet;
        std::atomic<int> passages{0};
    };
    Loquet deux(2);
    Compteur operation(deux);
    EXPECT_FALSE(operation.autoDelete());
    FileOperations file(UniChaine("opérations"));
    operation.Lance(&file);
    operation.Lance(&file);
    deux.Attends();
    file.LanceBlocOperationSync([] {}); // la file a rendu la main après le second passage
    EXPECT_EQ(operation.passages.load(), 2);
    EXPECT_THROW(operation.Lance(nullptr), sdd::exceptions::OperationInvalide);
}

TEST(FileOperations, Principale)
{
    QCoreApplication& application = ApplicationTest();
    std::vector<int> vus;
    bool surPrincipal = true;
    Loquet envoyes;
    FileOperations::GlobaleDeDefaut()->LanceBlocOperation([&] {
        for (int i = 0; i < 3; ++i) {
            FileOperations::Principale()->LanceBlocOperation([&, i] {
                vus.push_back(i);
                surPrincipal = surPrincipal && QThread::currentThread() == application.thread();
            });
        }
        envoyes.Decompte();
    });
    envoyes.Attends();
    FileOperations::Principale()->LanceBlocOperationApresTemps(0.001, [&] { vus.push_back(3); });
    FileOperations::Principale()->LanceBlocOperationSync([&] { vus.push_back(-1); }); // sur place
    ServsJusqua([&] { return vus.size() >= 5; });
    EXPECT_EQ(vus, (std::vector<int>{-1, 0, 1, 2, 3}));
    EXPECT_TRUE(surPrincipal);
}

// Un bloc synchrone que la boucle principale jette sans l'exécuter (ici un filtre l'avale ;
// de même quand l'application est détruite avant de le servir) : l'appelant reçoit
// OperationInvalide au lieu d'attendre sans fin.
TEST(FileOperations, SyncAbandonneParLaBouclePrincipale)
{
    struct Avaleur : QObject
    {
        bool eventFilter(QObject*, QEvent* evenement) override
        {
            bool const appel = evenement->type() == QEvent::MetaCall;
            avales += appel;
            return appel;
        }
        std::atomic<int> avales{0};
    } avaleur;
    QCoreApplication& application = ApplicationTest();
    application.installEventFilter(&avaleur);
    std::atomic<bool> execute{false}, abandonne{false};
    std::thread envoi([&] {
        try {
            FileOperations::Principale()->LanceBlocOperationSync([&] { execute = true; });
        } catch (sdd::exceptions::OperationInvalide const&) {
            abandonne = true;
        }
    });
    ServsJusqua([&] { return avaleur.avales > 0; });
    envoi.join();
    application.removeEventFilter(&avaleur);
    EXPECT_TRUE(abandonne);
    EXPECT_FALSE(execute);
}
