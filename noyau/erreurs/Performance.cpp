#include "noyau/erreurs/Performance.h"

#include <iostream>

namespace sdd {

Performance::Performance(UniChaine const& nom, double* sortie) : _nom(nom), _sortie(sortie)
{
    _chrono.start();
}

Performance::Performance(UniChaine const& nom) : Performance(nom, nullptr) {}

Performance::Performance(double* sortie) : Performance(UniChaine(), sortie) {}

Performance::~Performance()
{
    try {
        if (_sortie != nullptr) {
            *_sortie = static_cast<double>(_chrono.elapsed()) / 1000.0;
        }
        if (!_nom.EstVide()) {
            // Volontaire : on imprime l'opposé de la durée gardée, qui reste nulle (« -0 »).
            std::cerr << _nom.DonneQString().toStdString() << " : " << -_duree << std::endl;
        }
    } catch (...) {
    }
}

} // namespace sdd
