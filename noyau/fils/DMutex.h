#pragma once

#include "noyau/Export.h"

class QMutex;

namespace sdd {

class DCondAttente;

// Verrou d'exclusion mutuelle, ordinaire ou récursif, sur un QMutex caché.
class NOYAU_EXPORT DMutex
{
public:
    // Toute valeur autre que kMutexRecursif donne un verrou ordinaire.
    enum eTypeMutex
    {
        kMutexOrdinaire = 0,
        kMutexRecursif = 1 // le même fil peut reprendre le verrou qu'il tient
    };

    explicit DMutex(eTypeMutex type = kMutexOrdinaire);
    ~DMutex();
    DMutex(DMutex const&) = delete;
    DMutex& operator=(DMutex const&) = delete;

    void Verrouille();
    void Deverrouille();
    // Sans attendre : vrai quand le verrou est pris.
    bool EssaieVerrouille();

private:
    friend class DCondAttente;
    QMutex* _mutex;
};

} // namespace sdd
