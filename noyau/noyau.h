#pragma once

// En-tête parapluie : toute l'interface publique de Noyau.

#include "noyau/Export.h"

#include "noyau/algorithmes/Entiers.h"
#include "noyau/algorithmes/ExpressionReguliere.h"
#include "noyau/chaines/Caractere.h"
#include "noyau/chaines/ChaineN.h"
#include "noyau/chaines/ConvertisseurChaineN.h"
#include "noyau/chaines/EgaliteCaracteres.h"
#include "noyau/chaines/InfoLigature.h"
#include "noyau/chaines/InfoUniCaractere.h"
#include "noyau/chaines/UniCaractere.h"
#include "noyau/chaines/UniChaine.h"
#include "noyau/conteneurs/ListeT.h"
#include "noyau/conteneurs/Paire.h"
#include "noyau/erreurs/ExceptionDBus.h"
#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/Associations.h"
#include "noyau/flux/Base64.h"
#include "noyau/flux/Flux.h"
#include "noyau/flux/Serialiseur.h"
#include "noyau/flux/TamponMemoire.h"
#include "noyau/flux/VarElias.h"
#include "noyau/langues/Langue.h"
