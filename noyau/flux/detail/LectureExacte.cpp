#include "noyau/flux/detail/LectureExacte.h"

#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/TamponMemoire.h"

#include <algorithm>

namespace sdd::detail {

namespace {

constexpr unsigned int kTranche = 1u << 20;

} // namespace

bool LisExactement(FluxEntree& flux, unsigned char* dest, unsigned int n)
{
    try {
        return flux.Donne(n, dest) == n;
    } catch (exceptions::IndexHorsBorne const&) {
        return false;
    }
}

bool LisParTranches(FluxEntree& flux, std::uint32_t n, TamponMemoire& dest)
{
    dest.Vide();
    while (dest.DonneTaille() < n) {
        unsigned int const voulus = std::min(n - dest.DonneTaille(), kTranche);
        unsigned char* const zone = dest.PreteZoneEcriture(voulus);
        if (!LisExactement(flux, zone, voulus)) {
            return false;
        }
        dest.ValideEcriture(voulus);
    }
    return true;
}

} // namespace sdd::detail
