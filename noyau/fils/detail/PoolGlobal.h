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
    bool EstServieParAppelant() const override;
    bool EstSerie() const override { return false; }

    boost::asio::thread_pool& DonnePool() { return _pool; }
    int DonneNbFils() const { return _nbFils; }

    explicit PoolGlobal(Priorite priorite); // par Donne seulement

private:
    void _PrepareFils(Priorite priorite);

    int const _nbFils;
    char const* const _nom;
    boost::asio::thread_pool _pool;
};

} // namespace sdd::detail
