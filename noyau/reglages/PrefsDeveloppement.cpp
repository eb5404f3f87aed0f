#include "noyau/reglages/PrefsDeveloppement.h"

#include "noyau/erreurs/Exceptions.h"

namespace {

std::atomic<PrefsDeveloppement*> gPrefsDeveloppement{nullptr};

std::uint32_t BitDuCanal(int canal)
{
    if (canal < 0 || canal >= PrefsDeveloppement::kNbCanaux) {
        sdd::exceptions::LanceIndexHorsBorne(static_cast<unsigned long>(canal), 0,
                                             PrefsDeveloppement::kNbCanaux - 1);
    }
    return std::uint32_t(1) << canal;
}

} // namespace

bool PrefsDeveloppement::DonneTraceCanal(int canal) const
{
    return (_canaux.load(std::memory_order_relaxed) & BitDuCanal(canal)) != 0;
}

void PrefsDeveloppement::MetsTraceCanal(int canal, bool actif)
{
    std::uint32_t const bit = BitDuCanal(canal);
    if (actif) {
        _canaux.fetch_or(bit, std::memory_order_relaxed);
    } else {
        _canaux.fetch_and(~bit, std::memory_order_relaxed);
    }
}

void MetsPrefsDeveloppement(PrefsDeveloppement* prefs) noexcept
{
    gPrefsDeveloppement.store(prefs, std::memory_order_release);
}

PrefsDeveloppement* DonnePrefsDeveloppement() noexcept
{
    return gPrefsDeveloppement.load(std::memory_order_acquire);
}
