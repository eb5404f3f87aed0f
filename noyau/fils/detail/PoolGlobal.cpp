#include "noyau/fils/detail/PoolGlobal.h"

#include "noyau/fils/DFil.h"
#include "noyau/fils/detail/NomFil.h"

#include <boost/asio/post.hpp>

#include <condition_variable>
#include <mutex>
#include <sys/resource.h>
#include <unistd.h>

namespace sdd::detail {

namespace {

thread_local bool gFilDePool = false;

char const* NomDuPool(PoolGlobal::Priorite priorite)
{
    char const* const noms[] = {"noyau-haute", "noyau-defaut", "noyau-basse"};
    return NomDeFil(noms[priorite]);
}

// La politique ordinaire de Linux n'a qu'une priorité ; la gentillesse (nice) est propre à
// chaque fil. Le pool bas la monte de 10 ; le pool haut essaie de la baisser de 5, ce qui
// demande un privilège : sans lui, il reste à la gentillesse du processus.
void AjustePriorite(PoolGlobal::Priorite priorite)
{
    if (priorite == PoolGlobal::kDefaut) {
        return;
    }
    pid_t const fil = gettid();
    int const actuelle = getpriority(PRIO_PROCESS, fil);
    int const voulue = priorite == PoolGlobal::kBasse ? std::min(actuelle + 10, 19) : actuelle - 5;
    setpriority(PRIO_PROCESS, fil, voulue); // échec sans privilège : priorité inchangée
}

// Rendez-vous des fils du pool : chacun n'en sort que quand tous y sont entrés, donc chaque
// fil reçoit exactement une préparation.
struct RendezVous
{
    std::mutex verrou;
    std::condition_variable tousLa;
    int arrives = 0;
};

} // namespace

std::shared_ptr<PoolGlobal> const& PoolGlobal::Donne(Priorite priorite)
{
    static auto const* const pools = new std::shared_ptr<PoolGlobal>[3] {
        std::make_shared<PoolGlobal>(kHaute), std::make_shared<PoolGlobal>(kDefaut),
            std::make_shared<PoolGlobal>(kBasse)
    };
    return pools[priorite];
}

PoolGlobal::PoolGlobal(Priorite priorite)
    : _nbFils(DFil::NbProcesseurs()), _nom(NomDuPool(priorite)), _pool(_nbFils)
{
    _PrepareFils(priorite);
}

void PoolGlobal::_PrepareFils(Priorite priorite)
{
    auto rdv = std::make_shared<RendezVous>();
    for (int i = 0; i < _nbFils; ++i) {
        boost::asio::post(_pool, [this, rdv, priorite] {
            AjustePriorite(priorite);
            NommeFilCourant(_nom);
            gFilDePool = true;
            std::unique_lock<std::mutex> verrou(rdv->verrou);
            if (++rdv->arrives == _nbFils) {
                rdv->tousLa.notify_all();
            }
            rdv->tousLa.wait(verrou, [&] { return rdv->arrives >= _nbFils; });
        });
    }
    std::unique_lock<std::mutex> verrou(rdv->verrou);
    rdv->tousLa.wait(verrou, [&] { return rdv->arrives >= _nbFils; });
}

void PoolGlobal::Poste(std::function<void()> bloc)
{
    boost::asio::post(_pool, std::move(bloc));
}

bool PoolGlobal::ExecuteSurPlace() const
{
    return EstFilDePool();
}

bool EstFilDePool() noexcept
{
    return gFilDePool;
}

} // namespace sdd::detail
