#pragma once

#include "noyau/Export.h"

#include <functional>
#include <memory>

namespace sdd {

class FileOperations;
class Operation;

namespace detail {
class EtatGroupe;
}

// Groupe d'opérations : on attend, ou on se fait avertir, quand tous les membres envoyés
// jusque-là ont fini. Des membres peuvent s'ajouter pendant que d'autres tournent ; un
// membre envoyé après une attente ou un avis n'en fait pas partie.
class NOYAU_EXPORT GroupeOperations
{
public:
    GroupeOperations();
    // Les membres en route et les avis en attente vont à leur terme.
    virtual ~GroupeOperations();
    GroupeOperations(GroupeOperations const&) = delete;
    GroupeOperations& operator=(GroupeOperations const&) = delete;

    // Une file nulle ou sans file lève OperationInvalide ; une opération nulle ou un bloc
    // vide, PointeurInvalide. L'opération n'est jamais détruite par le groupe.
    void AjouteOperation(FileOperations* file, Operation* operation);
    void AjouteOperationBloc(FileOperations* file, std::function<void()> bloc);
    void AvertirOperationALaFinDesOperations(FileOperations* file, Operation* operation);
    void AvertirOperationBlocALaFinDesOperations(FileOperations* file, std::function<void()> bloc);
    // Revient, vrai, quand tous les membres envoyés jusqu'ici ont fini.
    bool AttendreLaFinDesOperations();

private:
    std::shared_ptr<detail::EtatGroupe> _etat;
};

} // namespace sdd
