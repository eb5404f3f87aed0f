#pragma once

#include "noyau/Export.h"
#include "noyau/chaines/UniChaine.h"

#include <QElapsedTimer>

namespace sdd {

// Chronomètre d'une portée, démarré à la construction. À la destruction : les secondes
// écoulées dans *sortie (si donnée) ; si le nom n'est pas vide, « nom : » et la durée
// gardée, négative, sur la sortie d'erreur.
class NOYAU_EXPORT Performance
{
public:
    Performance(UniChaine const& nom, double* sortie);
    explicit Performance(UniChaine const& nom);
    explicit Performance(double* sortie);
    Performance(Performance const&) = delete;
    Performance& operator=(Performance const&) = delete;
    ~Performance();

private:
    QElapsedTimer _chrono;
    UniChaine _nom;
    double _duree = 0.0; // jamais changée : le chiffre imprimé n'est pas le temps écoulé
    double* _sortie;
};

} // namespace sdd
