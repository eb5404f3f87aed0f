#pragma once

#include "noyau/Export.h"

namespace sdd {

// Fil d'exécution sur un QThread caché : une sous-classe fournit Execute, Debute le lance.
// Un objet se relance autant de fois qu'on veut, une fois le corps revenu.
class NOYAU_EXPORT DFil
{
public:
    // Priorité de départ ; toute autre valeur vaut kPrioriteHeritee.
    enum ePriorite
    {
        kPrioriteHeritee = 0, // celle du fil qui lance
        kPrioriteInactive = 1,
        kPrioriteLaPlusBasse = 2,
        kPrioriteBasse = 3,
        kPrioriteNormale = 4,
        kPrioriteHaute = 5,
        kPrioriteLaPlusHaute = 6,
        kPrioriteCritique = 7
    };

    explicit DFil(int ident);
    DFil(DFil const&) = delete;
    DFil& operator=(DFil const&) = delete;
    // Attend la fin d'un corps encore en cours (Qt interdit de détruire un fil qui tourne).
    // Trop tard pour la sous-classe, déjà détruite alors que le fil peut encore appeler son
    // Execute : toute sous-classe appelle AttendsLaFin() dans son propre destructeur.
    virtual ~DFil();
    // Revient quand le corps est revenu ; aussitôt si le drapeau de fin est déjà levé.
    virtual void AttendsLaFin();
    // Lance Execute puis Termine sur un nouveau fil. Lève OperationInvalide si le corps
    // d'un lancement précédent tourne encore.
    virtual void Debute(ePriorite priorite = kPrioriteHeritee);
    // Lève le drapeau de fin ; appelée sur le fil lui-même après Execute.
    virtual void Termine();
    virtual void Execute() = 0;
    // Code de résultat qu'une sous-classe rend une fois le corps revenu ; 0 par défaut.
    NOYAU_EXPORT virtual int DonneResultat() const { return 0; }

    int DonneIdent() const;
    bool ATerminay() const;

    // Le DFil dont le fil appelant exécute le corps ; nul ailleurs (fil principal, files
    // d'opérations).
    static DFil* FilCourant();
    // Nombre de processeurs selon Qt, au moins 1.
    static int NbProcesseurs();
    // Volontairement le même nombre : aucun décompte des cœurs physiques.
    static int NbProcesseursPhysiques();
    // Dort le nombre de secondes donné, tronqué à la milliseconde ; rien ne le réveille
    // avant. Négatif ou non numérique : ne dort pas.
    static void Dors(float secondes);
    // Cède le processeur.
    static void LachePriorite();

private:
    struct Prive;
    Prive* _prive;
};

} // namespace sdd
