#pragma once

#include "noyau/Export.h"

#include <atomic>
#include <cstdint>

// Préférences du développeur : l'interrupteur général des traces et un interrupteur par
// canal (0 à 31). Tout est éteint au départ. Les lectures et écritures sont atomiques : un
// menu de mise au point peut basculer un canal pendant que d'autres fils tracent.
class NOYAU_EXPORT PrefsDeveloppement
{
public:
    static constexpr int kNbCanaux = 32;

    PrefsDeveloppement() noexcept = default;
    PrefsDeveloppement(PrefsDeveloppement const&) = delete;
    PrefsDeveloppement& operator=(PrefsDeveloppement const&) = delete;

    bool DonneTrace() const noexcept { return _trace.load(std::memory_order_relaxed); }
    void MetsTrace(bool actif) noexcept { _trace.store(actif, std::memory_order_relaxed); }
    // Canal hors de 0..31 : sdd::exceptions::IndexHorsBorne.
    bool DonneTraceCanal(int canal) const;
    void MetsTraceCanal(int canal, bool actif);

private:
    std::atomic<bool> _trace{false};
    std::atomic<std::uint32_t> _canaux{0}; // bit n : canal n
};

// Installées par l'application, qui les garde ; nul les retire.
NOYAU_EXPORT void MetsPrefsDeveloppement(PrefsDeveloppement* prefs) noexcept;
// Nul tant que l'application n'en a pas installé.
NOYAU_EXPORT PrefsDeveloppement* DonnePrefsDeveloppement() noexcept;
