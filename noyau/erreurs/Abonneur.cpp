#include "noyau/erreurs/Abonneur.h"

#include "noyau/erreurs/Exceptions.h"

#include <algorithm>
#include <limits>

namespace {

// Le double, au moins une place de plus ; on ne dépasse pas 2^32 - 1 places.
std::uint32_t CapaciteSuivante(std::uint32_t capacite)
{
    constexpr std::uint32_t kMax = std::numeric_limits<std::uint32_t>::max();
    if (capacite == kMax) {
        throw sdd::exceptions::MemoireInsuffisante(UniChaine("Liste d'abonnés pleine"));
    }
    return capacite > kMax / 2 ? kMax : std::max(2 * capacite, capacite + 1);
}

} // namespace

Abonnay::~Abonnay() = default;

Abonneur::Abonneur(std::uint32_t capaciteInitiale) noexcept : _capacite(capaciteInitiale) {}

Abonneur::~Abonneur() = default;

void Abonneur::Abonne(Abonnay* abonne)
{
    if (!_abonnes) {
        // Une capacité initiale nulle vaut une place.
        _Realloue(std::max<std::uint32_t>(_capacite, 1));
    } else if (_nombre == _capacite) {
        _Realloue(CapaciteSuivante(_capacite));
    }
    _abonnes[_nombre++] = abonne;
}

void Abonneur::_Realloue(std::uint32_t capacite)
{
    std::unique_ptr<Abonnay*[]> tableau(new Abonnay*[capacite]);
    std::copy_n(_abonnes.get(), _nombre, tableau.get());
    _abonnes = std::move(tableau);
    _capacite = capacite;
}

void Abonneur::Desabonne(Abonnay* abonne) noexcept
{
    Abonnay** const debut = _abonnes.get();
    _nombre = static_cast<std::uint32_t>(std::remove(debut, debut + _nombre, abonne) - debut);
}

void Abonneur::PreviensAbonnes(unsigned int code, void* donnees)
{
    for (std::uint32_t i = 0; i < _nombre; ++i) {
        DonneAbonne(i)->RecoisNotification(code, donnees, _abonnes.get());
    }
}

Abonnay* Abonneur::DonneAbonne(std::uint32_t i) const
{
    if (i >= _nombre) {
        sdd::exceptions::LanceIndexHorsBorne(i, 0, _nombre);
    }
    return _abonnes[i];
}
