#include "noyau/erreurs/DAlerteDeleguay.h"

#include <atomic>

namespace {

// Installé depuis le fil principal, lu par n'importe quel fil qui alerte.
std::atomic<DAlerteDeleguay*> gDelegue{nullptr};

} // namespace

DAlerteDeleguay::~DAlerteDeleguay() = default;

void DAlerteDeleguay::MetsDAlerteDeleguay(DAlerteDeleguay* delegue) noexcept
{
    gDelegue.store(delegue, std::memory_order_release);
}

void DAlerteDeleguay::DAlerteParDeleguay(DAlerteInfo const& alerte)
{
    if (DAlerteDeleguay* const delegue = gDelegue.load(std::memory_order_acquire)) {
        delegue->AfficheDAlerte(alerte, nullptr, 0);
    }
}

int DAlerteDeleguay::DAlerteRappelParDeleguay(DAlerteInfo const& alerte, UniChaine const& rappel)
{
    if (DAlerteDeleguay* const delegue = gDelegue.load(std::memory_order_acquire)) {
        return delegue->AfficheDAlerteRappel(alerte, rappel, nullptr);
    }
    return 0;
}
