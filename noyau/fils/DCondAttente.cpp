#include "noyau/fils/DCondAttente.h"

#include "noyau/fils/DMutex.h"
#include "noyau/fils/detail/AnnotationsTSan.h"

#include <QMutex>
#include <QWaitCondition>

namespace sdd {

struct DCondAttente::Prive
{
    QWaitCondition condition;
};

DCondAttente::DCondAttente() : _prive(new Prive) {}

DCondAttente::~DCondAttente()
{
    delete _prive;
}

bool DCondAttente::Attends(DMutex& verrou)
{
    // Qt rend puis reprend le verrou hors de la vue de ThreadSanitizer : on le lui dit.
    detail::TsanAvantDeverrouillage(&verrou);
    detail::TsanApresDeverrouillage(&verrou);
    bool const reveille = _prive->condition.wait(verrou._mutex);
    detail::TsanAvantVerrouillage(&verrou, 0);
    detail::TsanApresVerrouillage(&verrou, 0);
    return reveille;
}

bool DCondAttente::AttendsTemps(DMutex&, float)
{
    return false;
}

void DCondAttente::ReveilUn()
{
    _prive->condition.wakeOne();
}

void DCondAttente::ReveilTous()
{
    _prive->condition.wakeAll();
}

} // namespace sdd
