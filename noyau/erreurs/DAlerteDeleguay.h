#pragma once

#include "noyau/Export.h"
#include "noyau/erreurs/DAlerteInfo.h"

// Ce qui montre les alertes : implémenté par l'application, installé une fois au démarrage.
// La bibliothèque garde le pointeur sans le posséder.
class NOYAU_EXPORT DAlerteDeleguay
{
public:
    virtual ~DAlerteDeleguay();

    // La bibliothèque passe toujours une fenêtre parente nulle et des options à zéro.
    virtual void AfficheDAlerte(DAlerteInfo const& alerte, void* fenetreParente, int options) = 0;
    // Alerte avec un texte de rappel ; renvoie la réponse de l'utilisateur.
    virtual int AfficheDAlerteRappel(DAlerteInfo const& alerte, UniChaine const& rappel,
                                     void* fenetreParente) = 0;

    // nul retire le délégué.
    static void MetsDAlerteDeleguay(DAlerteDeleguay* delegue) noexcept;
    // Sans délégué, rien.
    static void DAlerteParDeleguay(DAlerteInfo const& alerte);
    // Sans délégué, 0.
    static int DAlerteRappelParDeleguay(DAlerteInfo const& alerte, UniChaine const& rappel);
};
