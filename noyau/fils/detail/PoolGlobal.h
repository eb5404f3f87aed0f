#pragma once

#include "noyau/fils/detail/MoteurFile.h"

#include <boost/asio/thread_pool.hpp>

namespace sdd::detail {

// File concurrente : un pool Boost.Asio de DFil::NbProcesseurs() fils, un par priorité,
// créé au premier appel et jamais détruit (ses fils vivent jusqu'à la fin du processus).
class PoolGlobal final : public MoteurFile
{
public:
    enum Priorite
    {
        kHaute,
        kDefaut,
        kBasse
    };
    static std::shared_ptr<PoolGlobal> const& Donne(Priorite priorite);

    void Poste(std::function<void()> bloc) override;
    bool EstSerie() const override { return false; }

    boost::asio::thread_pool& DonnePool() { return _pool; }
    int DonneNbFils() const { return _nbFils; }

    explicit PoolGlobal(Priorite priorite); // par Donne seulement

private:
    // Un fil des pools exécute sur place : il n'attend jamais un pool, qui peut n'avoir plus
    // que des fils qui attendent (envois imbriqués, ou croisés entre priorités).
    bool ExecuteSurPlace() const override;
    void _PrepareFils(Priorite priorite);

    int const _nbFils;
    char const* const _nom;
    boost::asio::thread_pool _pool;
};

// Vrai sur un fil de l'un des pools globaux.
bool EstFilDePool() noexcept;

} // namespace sdd::detail
