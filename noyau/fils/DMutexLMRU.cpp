#include "noyau/fils/DMutexLMRU.h"

namespace sdd {

DMutexLMRU::DMutexLMRU()
    : _entree(DMutex::kMutexOrdinaire), _redaction(DMutex::kMutexOrdinaire),
      _compte(DMutex::kMutexOrdinaire)
{
}

// Le lecteur traverse le verrou de rédaction : il attend la fin d'une écriture en cours.
void DMutexLMRU::VerrouilleLecteur()
{
    _entree.Verrouille();
    _redaction.Verrouille();
    _compte.Verrouille();
    ++_lecteurs;
    _compte.Deverrouille();
    _redaction.Deverrouille();
    _entree.Deverrouille();
}

// On réveille à chaque sortie, pas seulement à la dernière : le rédacteur reteste le compte.
void DMutexLMRU::DeverrouilleLecteur()
{
    _compte.Verrouille();
    --_lecteurs;
    _compte.Deverrouille();
    _sortieLecteur.ReveilTous();
}

// Le verrou de rédaction se prend avant de rendre celui d'entrée : rendu d'abord, il
// laisserait un lecteur passer l'entrée puis la rédaction encore libre et lire pendant
// l'écriture. Les deux rôles prennent l'entrée avant la rédaction : pas d'interblocage.
void DMutexLMRU::VerrouilleRedacteur()
{
    _entree.Verrouille();
    _compte.Verrouille();
    while (_lecteurs > 0) {
        _sortieLecteur.Attends(_compte);
    }
    _compte.Deverrouille();
    _redaction.Verrouille();
    ++_redacteurs; // sous le verrou de rédaction, comme la décrémentation
    _entree.Deverrouille();
}

void DMutexLMRU::DeverrouilleRedacteur()
{
    --_redacteurs;
    _redaction.Deverrouille();
}

} // namespace sdd
