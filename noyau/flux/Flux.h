#pragma once

#include "noyau/Export.h"

namespace sdd {

class TamponMemoire;
class FluxSortie;

// Racine des flux d'octets : fichiers, projections et tampons en mémoire se lisent et
// s'écrivent de la même façon.
class NOYAU_EXPORT Flux
{
public:
    virtual ~Flux();
    // Vrai quand il ne reste plus d'octet à lire.
    virtual bool EstALaFin() const = 0;
    virtual unsigned int DonnePosition() const = 0;
};

class NOYAU_EXPORT FluxEntree : public virtual Flux
{
public:
    // Sans limite pour DonneFluxSortie et MetsFluxEntree.
    static constexpr unsigned int kTout = 0xFFFFFFFFu;

    // L'octet suivant ; l'appelant demande EstALaFin() d'abord.
    virtual unsigned char Donne() = 0;
    // Au plus n octets dans dest ; renvoie le nombre lu.
    virtual unsigned int Donne(unsigned int n, unsigned char* dest) = 0;
    virtual void PositionneAuDebut() = 0;
    virtual void Positionne(unsigned int position) = 0;
    virtual void PositionneALaFin() = 0;

    // Recopie octet par octet vers sortie jusqu'à la fin de ce flux ou n octets (kTout :
    // sans limite). Renvoie vrai quand ce flux est à sa fin à l'arrêt de la copie.
    bool DonneFluxSortie(FluxSortie& sortie, unsigned int n = kTout);
};

class NOYAU_EXPORT FluxSortie : public virtual Flux
{
public:
    virtual void Mets(unsigned char octet) = 0;
    virtual void Mets(unsigned char const* octets, unsigned int n) = 0;

    // Le même transfert que FluxEntree::DonneFluxSortie, vu de la sortie.
    bool MetsFluxEntree(FluxEntree& entree, unsigned int n = FluxEntree::kTout);
};

// Source dont tous les octets sont en mémoire : on peut y prendre des pointeurs.
class NOYAU_EXPORT FluxEntreeMemoire : public virtual FluxEntree
{
public:
    // Pointeur sur l'octet courant, puis avance de n, sans aucun contrôle.
    virtual unsigned char const* PtrEtAvance(unsigned int n) = 0;
    virtual unsigned char const* Ptr() const = 0;
    // Nombre d'octets valides.
    virtual unsigned int DonneTaille() const = 0;
    // Tampon neuf (à détruire par l'appelant) qui emprunte ces octets sans les copier.
    virtual TamponMemoire* TamponEnPretantDonnees() = 0;
};

} // namespace sdd
