#include "noyau/fils/DMessagerSurFilCourant.h"

#include "noyau/fils/detail/AnnotationsTSan.h"

#include <QMetaObject>
#include <QObject>

namespace sdd {

DMessagerSurFilCourant::DMessagerSurFilCourant() : _passerelle(new QObject) {}

DMessagerSurFilCourant::~DMessagerSurFilCourant()
{
    delete _passerelle;
}

// La passerelle appartient au fil créateur : un appel en file d'attente est servi par sa
// boucle, dans l'ordre d'envoi, et disparaît avec elle s'il n'a pas encore été servi.
void DMessagerSurFilCourant::LanceExecution()
{
    detail::TsanPublie(this);
    QMetaObject::invokeMethod(
        _passerelle,
        [this] {
            detail::TsanRecoit(this);
            ExecuteSurFilCourant();
        },
        Qt::QueuedConnection);
}

} // namespace sdd
