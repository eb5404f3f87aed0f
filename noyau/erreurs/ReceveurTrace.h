#pragma once

#include "noyau/Export.h"
#include "noyau/chaines/ChaineN.h"

// Reçoit les lignes de trace. L'application en dérive pour les écrire où elle veut ; la
// bibliothèque n'imprime jamais rien d'elle-même.
class NOYAU_EXPORT ReceveurTrace
{
public:
    virtual ~ReceveurTrace();

    // Une ligne finie.
    virtual void RecoisLigneTrace(sdd::ChaineN const& ligne) = 0;
    // longueur en octets ; négative : jusqu'au zéro final. Un texte nul est vide.
    virtual void RecoisTrace(sdd::ChaineN::Codage codage, char const* texte, int longueur = -1);
    // Mise en forme de sdd::ChaineN::Format.
    virtual void RecoisTraceFmtN(sdd::ChaineN format, ...);
    // Mise en forme de vsnprintf, coupée à 9999 octets ; le résultat est lu en Mac OS Roman
    // (Mac) ou en UTF-8.
    virtual void RecoisTraceFmtMac(char const* format, ...) __attribute__((format(printf, 2, 3)));
    virtual void RecoisTraceFmt(char const* format, ...) __attribute__((format(printf, 2, 3)));
    // Par défaut EstCanalTraceOuvert.
    virtual bool VeutRecevoirTrace(short canal);
};

// Receveur par défaut : jette les lignes.
class NOYAU_EXPORT ReceveurTraceGenerique : public ReceveurTrace
{
public:
    ~ReceveurTraceGenerique() override;
    void RecoisLigneTrace(sdd::ChaineN const& ligne) override;
};

// Le receveur du fil appelant s'il en a un, sinon le receveur principal (créé au premier
// besoin en ReceveurTraceGenerique).
NOYAU_EXPORT ReceveurTrace* DonneReceveurTrace();
// Détruit le receveur principal et installe celui-ci, que la bibliothèque possède
// désormais. À faire depuis le fil principal, aucune trace n'étant en cours.
NOYAU_EXPORT void MetsReceveurDeTracePrincipal(ReceveurTrace* receveur);
NOYAU_EXPORT void LibereReceveurTrace();
// Receveur propre au fil appelant, non possédé ; nul le retire. Le fil le retire avant de
// le détruire.
NOYAU_EXPORT void MetsReceveurTraceDuFil(ReceveurTrace* receveur) noexcept;
NOYAU_EXPORT ReceveurTrace* DonneReceveurTraceDuFil() noexcept;
