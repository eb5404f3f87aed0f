#include "noyau/fils/DMutex.h"

#include "noyau/fils/detail/AnnotationsTSan.h"

#include <QMutex>

namespace sdd {

DMutex::DMutex(eTypeMutex type)
    : _mutex(new QMutex(type == kMutexRecursif ? QMutex::Recursive : QMutex::NonRecursive))
{
    detail::TsanCreeVerrou(this, type == kMutexRecursif);
}

DMutex::~DMutex()
{
    detail::TsanDetruitVerrou(this);
    delete _mutex;
}

void DMutex::Verrouille()
{
    detail::TsanAvantVerrouillage(this, 0);
    _mutex->lock();
    detail::TsanApresVerrouillage(this, 0);
}

void DMutex::Deverrouille()
{
    detail::TsanAvantDeverrouillage(this);
    _mutex->unlock();
    detail::TsanApresDeverrouillage(this);
}

bool DMutex::EssaieVerrouille()
{
    detail::TsanAvantVerrouillage(this, detail::kTsanEssai);
    bool const pris = _mutex->tryLock(0);
    detail::TsanApresVerrouillage(this, pris ? detail::kTsanEssai : detail::kTsanEssaiRate);
    return pris;
}

} // namespace sdd
