#pragma once

#include "noyau/Export.h"

#include <cstdint>

// Temps absolu monotone (horloge qui ne recule jamais, sans rapport avec la date), compté en
// unites de 1/unitesParSeconde seconde : DonneTempsAbsolu(1000) donne des millisecondes.
// Origine arbitraire : seules les différences ont un sens. unitesParSeconde <= 0 lève
// sdd::exceptions::OperationInvalide.
NOYAU_EXPORT std::int64_t DonneTempsAbsolu(int unitesParSeconde);
