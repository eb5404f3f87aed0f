#pragma once

#include "noyau/fils/detail/MoteurFile.h"

namespace sdd::detail {

// File du fil principal : chaque bloc est un appel en attente dans la boucle d'événements
// de l'application Qt. Sans QCoreApplication, un bloc envoyé est abandonné et un envoi
// synchrone lève OperationInvalide (il attendrait sans fin).
class FilePrincipale final : public MoteurFile
{
public:
    void Poste(std::function<void()> bloc) override;
    bool EstSerie() const override { return true; }
    bool PeutServir() const override;

private:
    bool ExecuteSurPlace() const override; // sur le fil principal
};

} // namespace sdd::detail
