#pragma once

#include "noyau/fils/detail/MoteurFile.h"

#include <boost/asio/thread_pool.hpp>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <string>

namespace sdd::detail {

// File série nommée : un brin sur le pool par défaut. Ses blocs passent un à un, dans
// l'ordre, sur des fils du pool qui portent son nom le temps de les exécuter.
//
// Le brin est fait ici plutôt que pris à Boost.Asio pour une raison : un fil du pool qui
// envoie un bloc synchrone ne doit pas attendre qu'un autre fil du pool se libère (quand
// tous attendent ainsi, plus rien ne sert la file). Il prend donc la file quand personne ne
// la sert et exécute lui-même les blocs en attente jusqu'au sien.
class FileSerie final : public MoteurFile
{
public:
    explicit FileSerie(std::string const& nom);

    void Poste(std::function<void()> bloc) override;
    void ExecuteSync(std::function<void()> const& bloc) override;
    bool EstSerie() const override { return true; }

private:
    struct Attente;
    bool ExecuteSurPlace() const override;
    void _PosteTour(); // sous _verrou
    void _Tour() noexcept;
    void _ServsJusqua(std::unique_lock<std::mutex>& verrou, Attente const& attente);
    void _RendLaMain(); // sous _verrou

    char const* const _nom;
    boost::asio::thread_pool::executor_type const _executeur;
    std::mutex _verrou;
    std::condition_variable _rendue; // la file a fini un tour, ou un bloc synchrone a fini
    std::deque<std::function<void()>> _blocs;
    bool _servie = false;     // un fil exécute des blocs de la file
    bool _tourPoste = false;  // un tour est posté sur le pool et pas encore commencé
    unsigned _nbAttentes = 0; // envois synchrones en attente
};

} // namespace sdd::detail
