#pragma once

#include "noyau/Export.h"

// Interrupteurs des assertions, tous vrais au départ. gOnAsserte les commande toutes.
extern NOYAU_EXPORT bool gOnAsserteProgSpecifique;
extern NOYAU_EXPORT bool gOnAsserteLNG; // moteur de langue
extern NOYAU_EXPORT bool gOnAsserteGenerale;
extern NOYAU_EXPORT bool gOnAsserte;

NOYAU_EXPORT bool OnAsserte() noexcept;    // générales
NOYAU_EXPORT bool OnAsserteLNG() noexcept; // du moteur de langue
