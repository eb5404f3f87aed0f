#pragma once

#include "noyau/Export.h"

class QObject;

namespace sdd {

// Messager du fil qui le crée : LanceExecution, appelée de n'importe quel fil, fait exécuter
// ExecuteSurFilCourant plus tard par la boucle d'événements du fil créateur, une fois par
// appel et dans l'ordre des appels. Sans boucle sur ce fil, rien ne s'exécute.
class NOYAU_EXPORT DMessagerSurFilCourant
{
public:
    DMessagerSurFilCourant();
    DMessagerSurFilCourant(DMessagerSurFilCourant const&) = delete;
    DMessagerSurFilCourant& operator=(DMessagerSurFilCourant const&) = delete;
    // Les demandes pas encore servies sont abandonnées. À détruire sur le fil créateur.
    virtual ~DMessagerSurFilCourant();
    virtual void ExecuteSurFilCourant() = 0;

    // Revient aussitôt.
    void LanceExecution();

private:
    QObject* _passerelle;
};

} // namespace sdd
