#include "noyau/fils/detail/FilePrincipale.h"

#include "noyau/fils/detail/AnnotationsTSan.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <QThread>

namespace sdd::detail {

void FilePrincipale::Poste(std::function<void()> bloc)
{
    QCoreApplication* const application = QCoreApplication::instance();
    if (application == nullptr) {
        return;
    }
    TsanPublie(this); // la file d'événements de Qt échappe à ThreadSanitizer
    QMetaObject::invokeMethod(
        application,
        [this, bloc = std::move(bloc)]() noexcept {
            TsanRecoit(this);
            bloc();
        },
        Qt::QueuedConnection);
}

bool FilePrincipale::ExecuteSurPlace() const
{
    QCoreApplication* const application = QCoreApplication::instance();
    return application != nullptr && QThread::currentThread() == application->thread();
}

bool FilePrincipale::PeutServir() const
{
    return QCoreApplication::instance() != nullptr;
}

} // namespace sdd::detail
