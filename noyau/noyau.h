#pragma once

// En-tête parapluie : toute l'interface publique de Noyau.

#include "noyau/Export.h"

#include "noyau/chaines/Caractere.h"
#include "noyau/chaines/InfoLigature.h"
#include "noyau/chaines/InfoUniCaractere.h"
#include "noyau/chaines/UniCaractere.h"
#include "noyau/chaines/UniChaine.h"
