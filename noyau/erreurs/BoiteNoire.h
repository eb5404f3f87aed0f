#pragma once

#include "noyau/Export.h"
#include "noyau/chaines/UniChemin.h"
#include "noyau/plateforme/JournalAbs.h"

// La boîte noire : un journal pour tout le processus, possédé par la bibliothèque.

// Le journal, créé au premier appel par JournalAbs::CreeJournal("", false) ; l'échec de
// cette création (sdd::exceptions::OuvertureEchouee) passe à l'appelant.
NOYAU_EXPORT JournalAbs* PreteBoiteNoire();
// Remplace le journal par JournalAbs::CreeJournalAvecPreference avec ces arguments. Un
// échec est avalé et laisse la boîte noire vide ; rend toujours vrai.
NOYAU_EXPORT bool InitBoiteNoireViaRegistres(UniChemin const& dossier, UniChaine const& nomFichier,
                                             UniChaine const& entete, bool const& remiseAZero);
// Détruit le journal ; à appeler avant de décharger la bibliothèque.
NOYAU_EXPORT void DetruitBoiteNoire();

// Gardées pour les programmes qui les appellent encore ; sans effet.
NOYAU_EXPORT int InitBoiteNoireAvecContournement();
NOYAU_EXPORT int InitBoiteNoireAvecContournementSurBureau();
NOYAU_EXPORT int InitBoiteNoireEnForcant(UniChemin const& chemin, bool forcer = true);
NOYAU_EXPORT bool InitBoiteNoireViaRegistresSurBureau(UniChemin const& dossier,
                                                      UniChaine const& nomFichier,
                                                      UniChaine const& entete,
                                                      bool const& remiseAZero);
NOYAU_EXPORT bool InitBoiteNoireAvecChemin(UniChaine const& dossier, UniChaine const& nomFichier,
                                           bool resultat);
