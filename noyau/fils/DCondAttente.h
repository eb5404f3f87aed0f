#pragma once

#include "noyau/Export.h"

namespace sdd {

class DMutex;

// Condition d'attente sur un QWaitCondition caché.
class NOYAU_EXPORT DCondAttente
{
public:
    DCondAttente();
    ~DCondAttente();
    DCondAttente(DCondAttente const&) = delete;
    DCondAttente& operator=(DCondAttente const&) = delete;

    // L'appelant tient le verrou (ordinaire : Qt refuse d'attendre sur un verrou récursif et
    // rend faux) ; il le rend le temps de l'attente et le reprend avant de revenir. Vrai
    // quand le fil a été réveillé. Un réveil peut être sans cause : l'appelant reteste sa
    // condition.
    bool Attends(DMutex& verrou);
    // Gardée vide pour les programmes qui l'appellent : revient aussitôt, rend faux (comme un
    // délai écoulé) et ne touche pas au verrou, qui reste tenu.
    bool AttendsTemps(DMutex& verrou, float secondes);
    void ReveilUn();
    void ReveilTous();

private:
    struct Prive;
    Prive* _prive;
};

} // namespace sdd
