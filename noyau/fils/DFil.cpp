#include "noyau/fils/DFil.h"

#include "noyau/erreurs/Exceptions.h"
#include "noyau/fils/detail/AnnotationsTSan.h"
#include "noyau/fils/detail/Delais.h"

#include <QThread>

#include <atomic>
#include <sched.h>

namespace sdd {

namespace {

thread_local DFil* gFilCourant = nullptr;

QThread::Priority PrioriteQt(DFil::ePriorite p)
{
    switch (p) {
    case DFil::kPrioriteInactive:
        return QThread::IdlePriority;
    case DFil::kPrioriteLaPlusBasse:
        return QThread::LowestPriority;
    case DFil::kPrioriteBasse:
        return QThread::LowPriority;
    case DFil::kPrioriteNormale:
        return QThread::NormalPriority;
    case DFil::kPrioriteHaute:
        return QThread::HighPriority;
    case DFil::kPrioriteLaPlusHaute:
        return QThread::HighestPriority;
    case DFil::kPrioriteCritique:
        return QThread::TimeCriticalPriority;
    default:
        return QThread::InheritPriority;
    }
}

// Le QThread qui porte le corps d'un DFil.
class PasserelleQT_QThread : public QThread
{
public:
    explicit PasserelleQT_QThread(DFil* fil) : _fil(fil) {}

    // Vrai quand run est revenu : ce qu'il a écrit est alors visible de qui l'a lu vrai.
    bool EstRevenu() const
    {
        bool const revenu = _revenu.load(std::memory_order_acquire);
        if (revenu) {
            detail::TsanRecoit(this); // la fin du QThread passe par Qt, hors de la vue de TSan
        }
        return revenu;
    }

protected:
    void run() override
    {
        gFilCourant = _fil;
        _fil->Execute();
        _fil->Termine();
        gFilCourant = nullptr;
        detail::TsanPublie(this);
        _revenu.store(true, std::memory_order_release);
    }

private:
    DFil* const _fil;
    std::atomic<bool> _revenu{false};
};

} // namespace

struct DFil::Prive
{
    int ident;
    // Écrit par le fil, lu par les autres : atomique, le drapeau publie ce que le corps a fait.
    std::atomic<bool> termine{false};
    PasserelleQT_QThread* fil = nullptr;

    // Attend la fin du corps, s'il y en a un ; jamais depuis le fil lui-même.
    void AttendsLeCorps()
    {
        if (fil != nullptr && fil != QThread::currentThread()) {
            fil->wait();
            fil->EstRevenu();
        }
    }
};

DFil::DFil(int ident) : _prive(new Prive{ident}) {}

DFil::~DFil()
{
    _prive->AttendsLeCorps();
    delete _prive->fil;
    delete _prive;
}

void DFil::AttendsLaFin()
{
    if (!ATerminay()) {
        _prive->AttendsLeCorps();
    }
}

void DFil::Debute(ePriorite priorite)
{
    if (_prive->fil != nullptr) {
        // Un corps qui tourne (QThread en marche sans drapeau levé ni retour de run, ou
        // appel depuis le fil lui-même) garde son QThread. Un Termine redéfini peut ne jamais
        // lever le drapeau ; un démarrage échoué laisse un QThread qui n'a jamais tourné.
        // Un corps revenu précède d'un instant la fin du QThread selon Qt : on attend cet
        // instant avant de le remplacer.
        bool const revenu = ATerminay() || _prive->fil->EstRevenu() || !_prive->fil->isRunning();
        if (!revenu || _prive->fil == QThread::currentThread()) {
            throw exceptions::OperationInvalide();
        }
        _prive->AttendsLeCorps();
    }
    _prive->termine.store(false, std::memory_order_relaxed);
    delete _prive->fil;
    _prive->fil = nullptr;
    _prive->fil = new PasserelleQT_QThread(this);
    _prive->fil->start(PrioriteQt(priorite));
}

void DFil::Termine()
{
    _prive->termine.store(true, std::memory_order_release);
}

int DFil::DonneIdent() const
{
    return _prive->ident;
}

bool DFil::ATerminay() const
{
    return _prive->termine.load(std::memory_order_acquire);
}

DFil* DFil::FilCourant()
{
    return gFilCourant;
}

int DFil::NbProcesseurs()
{
    int const n = QThread::idealThreadCount();
    return n < 1 ? 1 : n;
}

int DFil::NbProcesseursPhysiques()
{
    return NbProcesseurs();
}

void DFil::Dors(float secondes)
{
    QThread::msleep(detail::MillisecondesDeSecondes(secondes));
}

void DFil::LachePriorite()
{
    sched_yield();
}

} // namespace sdd
