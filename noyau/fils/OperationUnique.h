#pragma once

#include "noyau/Export.h"

#include <atomic>
#include <functional>
#include <mutex>

namespace sdd {

// Garde d'exécution unique : seul le premier appel exécute son bloc, sur le fil appelant ;
// les appels concurrents attendent qu'il ait fini, les suivants reviennent sans rien faire.
// Si le bloc lève, l'exception passe à l'appelant et la garde reste ouverte : l'appel
// suivant exécute le sien. Un bloc qui rappelle sa propre garde se bloque.
class NOYAU_EXPORT OperationUnique
{
public:
    OperationUnique() = default;
    OperationUnique(OperationUnique const&) = delete;
    OperationUnique& operator=(OperationUnique const&) = delete;

    void operator()(std::function<void()> bloc);

private:
    std::atomic<bool> _fait{false};
    std::mutex _verrou;
};

} // namespace sdd
