#pragma once

#include "noyau/fils/detail/MoteurFile.h"

#include <boost/asio/strand.hpp>
#include <boost/asio/thread_pool.hpp>

#include <string>

namespace sdd::detail {

// File série nommée : un brin sur le pool par défaut. Ses blocs passent un à un, dans
// l'ordre, sur des fils du pool qui portent son nom le temps de les exécuter.
class FileSerie final : public MoteurFile
{
public:
    explicit FileSerie(std::string const& nom);

    void Poste(std::function<void()> bloc) override;
    bool EstServieParAppelant() const override { return _brin.running_in_this_thread(); }
    bool EstSerie() const override { return true; }

private:
    char const* const _nom;
    boost::asio::strand<boost::asio::thread_pool::executor_type> _brin;
};

} // namespace sdd::detail
