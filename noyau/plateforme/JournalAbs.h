#pragma once

#include "noyau/Export.h"
#include "noyau/chaines/UniChemin.h"

class DAlerteInfo;

// Journal en texte : une ligne horodatée par écriture, ajoutée au fichier et confiée au
// système aussitôt (le journal survit à un plantage du programme). Format et
// emplacement : docs/alertes.md. Les écritures de plusieurs fils ne se mêlent pas.
class NOYAU_EXPORT JournalAbs
{
public:
    virtual ~JournalAbs();

    // Écrit une ligne ; faux si le système l'a refusée (disque plein...). Les fins de
    // ligne du texte sont suivies d'une tabulation.
    virtual bool Ecris(UniChaine const& texte) = 0;
    // DonneMessagePourJournalisation de l'alerte.
    bool EcrisAlerte(DAlerteInfo const& alerte);
    virtual UniChemin DonneChemin() const = 0;

    // Journal nom dans le dossier par défaut ; voir CreeJournalAvecPreference.
    static JournalAbs* CreeJournal(UniChaine const& nom, bool remiseAZero);
    // Journal nomFichier dans dossier. Dossier vide : celui des données de l'application
    // (à défaut, le dossier temporaire), créé s'il manque ; nom vide : celui de
    // l'application suivi de « .log ». remiseAZero vide le fichier, sinon on l'allonge.
    // Une entête non vide est écrite en première ligne. Le fichier ne s'ouvre pas :
    // sdd::exceptions::OuvertureEchouee, avec le chemin. Le journal appartient à
    // l'appelant.
    static JournalAbs* CreeJournalAvecPreference(UniChemin const& dossier,
                                                 UniChaine const& nomFichier,
                                                 UniChaine const& entete, bool remiseAZero);
};
