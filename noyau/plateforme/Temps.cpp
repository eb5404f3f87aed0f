#include "noyau/plateforme/Temps.h"

#include "noyau/erreurs/Exceptions.h"

#include <chrono>

std::int64_t DonneTempsAbsolu(int unitesParSeconde)
{
    if (unitesParSeconde <= 0) {
        throw sdd::exceptions::OperationInvalide();
    }
    constexpr std::int64_t kNanoParSeconde = 1000000000;
    std::int64_t const ns = std::chrono::duration_cast<std::chrono::nanoseconds>(
                                std::chrono::steady_clock::now().time_since_epoch())
                                .count();
    // Secondes et reste à part : le produit du reste par les unités tient en 64 bits.
    return ns / kNanoParSeconde * unitesParSeconde +
           ns % kNanoParSeconde * unitesParSeconde / kNanoParSeconde;
}
