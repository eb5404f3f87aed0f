#pragma once

#include "noyau/Export.h"
#include "noyau/fils/DCondAttente.h"
#include "noyau/fils/DMutex.h"

#include <cstdint>

namespace sdd {

// Verrou à lecteurs multiples et rédacteur unique : plusieurs lecteurs ensemble, ou un seul
// rédacteur. Un rédacteur qui attend bloque les nouveaux lecteurs, il n'est donc pas affamé.
// Ni l'un ni l'autre rôle n'est récursif ; un lecteur qui veut écrire se bloque lui-même.
class NOYAU_EXPORT DMutexLMRU
{
public:
    DMutexLMRU();
    DMutexLMRU(DMutexLMRU const&) = delete;
    DMutexLMRU& operator=(DMutexLMRU const&) = delete;

    void VerrouilleLecteur();
    void DeverrouilleLecteur();
    void VerrouilleRedacteur();
    void DeverrouilleRedacteur();

private:
    DCondAttente _sortieLecteur; // un lecteur est sorti
    DMutex _entree;              // pris à l'entrée de chacun, et par le rédacteur qui attend
    DMutex _redaction;           // tenu par le rédacteur pendant qu'il écrit
    DMutex _compte;              // garde _lecteurs
    std::int32_t _lecteurs = 0;
    std::uint32_t _redacteurs = 0; // tenu à jour, jamais lu
};

} // namespace sdd
