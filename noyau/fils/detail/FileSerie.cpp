#include "noyau/fils/detail/FileSerie.h"

#include "noyau/fils/detail/NomFil.h"
#include "noyau/fils/detail/PoolGlobal.h"

#include <boost/asio/post.hpp>

namespace sdd::detail {

FileSerie::FileSerie(std::string const& nom)
    : _nom(NomDeFil(nom)), _brin(boost::asio::make_strand(
                               PoolGlobal::Donne(PoolGlobal::kDefaut)->DonnePool().get_executor()))
{
}

void FileSerie::Poste(std::function<void()> bloc)
{
    boost::asio::post(_brin, [nom = _nom, bloc = std::move(bloc)]() noexcept {
        NommeFilCourant(nom);
        bloc();
    });
}

} // namespace sdd::detail
