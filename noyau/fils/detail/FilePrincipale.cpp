#include "noyau/fils/detail/FilePrincipale.h"

#include "noyau/fils/detail/AnnotationsTSan.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <QThread>

namespace sdd::detail {

namespace {

// Le bloc passe au fil principal par la file d'événements de Qt, que ThreadSanitizer ne voit
// pas. Le fil principal annonce la réception avant d'exécuter le bloc, puis la fin ; Qt peut
// détruire l'envoi sur l'un ou l'autre fil (le dernier qui le lâche), sans l'avoir exécuté
// si l'application disparaît avant de le servir : la destruction reçoit les deux annonces.
class EnvoiPrincipal
{
public:
    EnvoiPrincipal(void const* file, std::function<void()> bloc)
        : _file(file), _bloc(std::move(bloc))
    {
    }
    EnvoiPrincipal(EnvoiPrincipal&&) = default;
    ~EnvoiPrincipal()
    {
        TsanRecoit(_file);
        TsanRecoit(this);
    }

    void operator()() noexcept
    {
        TsanRecoit(_file);
        _bloc();
        TsanPublie(this);
    }

private:
    void const* _file;
    std::function<void()> _bloc;
};

} // namespace

void FilePrincipale::Poste(std::function<void()> bloc)
{
    QCoreApplication* const application = QCoreApplication::instance();
    if (application == nullptr) {
        return;
    }
    TsanPublie(this);
    QMetaObject::invokeMethod(application, EnvoiPrincipal(this, std::move(bloc)),
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
