// Fils, verrous, files d'opérations : sous-classes des classes faites pour être dérivées et
// résultats vérifiés, chaque attente bornée pour qu'une faute ne bloque pas le programme.

#include "verif.h"

#include <QCoreApplication>
#include <QThread>

#include <atomic>
#include <thread>
#include <vector>

namespace {

// Sert la boucle du fil principal en attendant ; abandonne après deux secondes.
template <typename Condition> bool Attends(Condition condition)
{
    for (int i = 0; i < 400 && !condition(); ++i) {
        QCoreApplication::processEvents();
        sdd::DFil::Dors(0.005f);
    }
    return condition();
}

bool SurFilPrincipal()
{
    return QThread::currentThread() == QCoreApplication::instance()->thread();
}

// Fil dont le corps reste retenu tant que le fil principal ne l'a pas libéré.
class FilSomme : public sdd::DFil
{
public:
    FilSomme() : DFil(7) {}
    ~FilSomme() override { AttendsLaFin(); }
    void Execute() override
    {
        vuCourant = FilCourant() == this;
        verrou.Verrouille();
        entre = true;
        cond.ReveilTous();
        while (!libere) {
            cond.Attends(verrou);
        }
        verrou.Deverrouille();
        somme += 5050;
    }
    int DonneResultat() const override { return somme; }

    sdd::DMutex verrou;
    sdd::DCondAttente cond;
    bool entre = false, libere = false;
    std::atomic<bool> vuCourant{false};
    int somme = 0;
};

class OperationComptee : public sdd::Operation
{
public:
    void Execute() override { ++executions; }
    std::atomic<int> executions{0};
};

class MessagerCompte : public sdd::DMessagerSurFilCourant
{
public:
    void ExecuteSurFilCourant() override { recus += SurFilPrincipal() ? 1 : 100; }
    std::atomic<int> recus{0};
};

void VerifieFilEtVerrous()
{
    FilSomme fil;
    sdd::DFil& base = fil;
    base.Debute(sdd::DFil::kPrioriteNormale);
    fil.verrou.Verrouille();
    while (!fil.entre) {
        fil.cond.Attends(fil.verrou);
    }
    VERIFIE(!fil.cond.AttendsTemps(fil.verrou, 1.0f)); // sans effet, verrou gardé
    fil.verrou.Deverrouille();
    VERIFIE_LEVE(sdd::exceptions::OperationInvalide, base.Debute());
    fil.verrou.Verrouille();
    fil.libere = true;
    fil.cond.ReveilTous();
    fil.verrou.Deverrouille();
    base.AttendsLaFin();
    VERIFIE(base.ATerminay() && base.DonneResultat() == 5050 && fil.vuCourant &&
            base.DonneIdent() == 7);
    fil.somme = 0;
    base.Debute(); // relance une fois le corps revenu
    base.AttendsLaFin();
    VERIFIE(base.DonneResultat() == 5050 && sdd::DFil::FilCourant() == nullptr &&
            sdd::DFil::NbProcesseurs() >= 1);

    sdd::DMutex recursif(sdd::DMutex::kMutexRecursif), ordinaire;
    recursif.Verrouille();
    VERIFIE(recursif.EssaieVerrouille());
    ordinaire.Verrouille();
    bool pris = true;
    std::thread([&] { pris = ordinaire.EssaieVerrouille(); }).join();
    VERIFIE(!pris);
    ordinaire.Deverrouille();
    recursif.Deverrouille();
    recursif.Deverrouille();

    // Lecteurs et rédacteurs mêlés : un lecteur ne voit jamais une écriture à moitié faite.
    sdd::DMutexLMRU lmru;
    long a = 0, b = 0;
    std::atomic<int> incoherences{0};
    sdd::FileOperations::GlobaleDeDefaut()->LanceBlocOperationNFois(400, [&](unsigned int i) {
        if (i % 2 == 0) {
            lmru.VerrouilleRedacteur();
            ++a;
            ++b;
            lmru.DeverrouilleRedacteur();
        } else {
            lmru.VerrouilleLecteur();
            incoherences += a != b;
            lmru.DeverrouilleLecteur();
        }
    });
    VERIFIE(a == 200 && b == 200 && incoherences == 0);
}

void VerifieFiles()
{
    sdd::FileOperations serie(UniChaine(u"conso"));
    std::vector<int> ordre;
    for (int i = 0; i < 50; ++i) {
        serie.LanceBlocOperation([&ordre, i] { ordre.push_back(i); });
    }
    serie.LanceBlocOperationSync([] {}); // passe après les cinquante
    bool dansOrdre = ordre.size() == 50;
    for (int i = 0; dansOrdre && i < 50; ++i) {
        dansOrdre = ordre[i] == i;
    }
    VERIFIE(dansOrdre);
    VERIFIE_LEVE(sdd::exceptions::IndexHorsBorne,
                 serie.LanceBlocOperationSync([] { (void)UniChaine(u"a")[5]; }));
    VERIFIE_LEVE(sdd::exceptions::PointeurInvalide,
                 serie.LanceBlocOperation(std::function<void()>()));
    sdd::FileOperations sansFile;
    VERIFIE_LEVE(sdd::exceptions::OperationInvalide, sansFile.LanceBlocOperation([] {}));

    std::atomic<unsigned long> somme{0};
    sdd::FileOperations::GlobaleDeDefaut()->LanceBlocOperationNFois(
        1000, [&](unsigned int i) { somme += i; });
    VERIFIE(somme == 499500);
    std::atomic<bool> tard{false}, principal{false};
    serie.LanceBlocOperationApresTemps(0.01, [&] { tard = true; });
    sdd::FileOperations::Principale()->LanceBlocOperation([&] { principal = SurFilPrincipal(); });
    VERIFIE(Attends([&] { return tard && principal; }));

    // Opération dérivée : par une file, par sa base Qt, une seule fois par garde.
    OperationComptee op;
    sdd::GroupeOperations groupe;
    std::atomic<bool> avis{false}, bloc{false};
    groupe.AjouteOperation(&serie, &op);
    groupe.AjouteOperationBloc(sdd::FileOperations::GlobalePrioriteHaute(), [&] { bloc = true; });
    groupe.AvertirOperationBlocALaFinDesOperations(&serie, [&] { avis = true; });
    VERIFIE(groupe.AttendreLaFinDesOperations() && op.executions == 1 && bloc);
    VERIFIE(Attends([&] { return avis.load(); }));
    op.Lance(sdd::FileOperations::GlobalePrioriteBasse());
    VERIFIE(Attends([&] { return op.executions == 2; }));
    QRunnable& runnable = op;
    runnable.run();
    sdd::OperationUnique garde;
    op.LanceUneSeuleFois(&garde);
    op.LanceUneSeuleFois(&garde);
    VERIFIE(op.executions == 4);
    VERIFIE_LEVE(sdd::exceptions::OperationInvalide, op.Lance(nullptr));

    // Garde unique : un bloc qui lève la laisse ouverte.
    sdd::OperationUnique unique;
    int passages = 0;
    VERIFIE_LEVE(sdd::exceptions::IndexHorsBorne, unique([] { (void)UniChaine()[0]; }));
    unique([&] { ++passages; });
    unique([&] { ++passages; });
    VERIFIE(passages == 1);

    // File interruptible : le premier bloc voit les plus récents attendre, seul le dernier
    // des suivants tourne.
    sdd::FileOperationsInterruptible interruptible(UniChaine(u"inter"));
    std::atomic<bool> premierEntre{false}, envoyes{false};
    std::atomic<int> executions{0}, dernier{-1};
    std::atomic<unsigned int> attente{0};
    interruptible.LanceBlocOperation([&](unsigned int const& compte) {
        premierEntre = true;
        for (int i = 0; i < 400 && !envoyes; ++i) {
            sdd::DFil::Dors(0.005f);
        }
        attente = sdd::FileOperationsInterruptible::DonneEnAttente(compte);
        ++executions;
    });
    VERIFIE(Attends([&] { return premierEntre.load(); }));
    for (int i = 1; i < 20; ++i) {
        interruptible.LanceBlocOperation([&, i](unsigned int const&) {
            ++executions;
            dernier = i;
        });
    }
    envoyes = true;
    VERIFIE(Attends([&] { return dernier == 19; }));
    VERIFIE(executions == 2 && attente == 19);

    // Messager : demandes faites d'un autre fil, servies par la boucle du fil principal.
    MessagerCompte messager;
    std::thread([&] {
        for (int i = 0; i < 3; ++i) {
            messager.LanceExecution();
        }
    }).join();
    VERIFIE(Attends([&] { return messager.recus >= 3; }) && messager.recus == 3);
}

} // namespace

void VerifieFils()
{
    VerifieFilEtVerrous();
    VerifieFiles();
}
