#pragma once

#include <chrono>
#include <cmath>
#include <limits>

namespace sdd::detail {

// Tronque x vers zéro, plafonné à max ; négatif ou non numérique : 0.
template <typename Entier> Entier TronqueBorne(double x, Entier max)
{
    if (!(x > 0.0)) {
        return 0;
    }
    return x >= double(max) ? max : Entier(std::trunc(x));
}

// Secondes en millisecondes pour DFil::Dors.
inline unsigned long MillisecondesDeSecondes(float secondes)
{
    return TronqueBorne(double(secondes) * 1000.0, std::numeric_limits<unsigned long>::max());
}

// Secondes en nanosecondes pour les blocs différés, plafonnées à cent ans pour que
// l'échéance ne déborde pas de l'horloge.
inline std::chrono::nanoseconds DureeDeSecondes(double secondes)
{
    constexpr long long kCentAns = 100LL * 366 * 24 * 3600 * 1000000000LL;
    return std::chrono::nanoseconds(TronqueBorne(secondes * 1e9, kCentAns));
}

} // namespace sdd::detail
