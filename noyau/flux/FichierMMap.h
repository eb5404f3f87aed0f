#pragma once

#include "noyau/Export.h"
#include "noyau/chaines/UniChemin.h"
#include "noyau/flux/Flux.h"

#include <memory>

class QFile;

namespace sdd {

// Fichier, ou tranche de fichier, projeté en mémoire en lecture : après la construction,
// chaque lecture n'est qu'un accès mémoire. Les tampons de TamponEnPretantDonnees lisent la
// projection elle-même et ne doivent pas lui survivre. Un fichier tronqué par un autre
// processus pendant la projection tue le lecteur (SIGBUS, non intercepté) : on remplace un
// fichier projeté en renommant un nouveau fichier par-dessus, jamais en le réécrivant.
class NOYAU_EXPORT FichierMMap : public FluxEntreeMemoire
{
public:
    // Flux vide : rien n'est ouvert.
    FichierMMap();
    // Tout le fichier. OuvertureEchouee (avec le chemin) s'il ne s'ouvre pas ou n'est pas un
    // fichier ordinaire (répertoire, tube nommé...) ; MemoireInsuffisante si la projection
    // est refusée (fichier vide, 4 Gio ou plus).
    explicit FichierMMap(UniChemin const& chemin);
    // longueur octets depuis decalage ; longueur 0 vaut la taille du fichier entier, même
    // après un décalage (la projection déborde alors et est refusée : volontaire).
    FichierMMap(UniChemin const& chemin, unsigned long decalage, unsigned long longueur);
    FichierMMap(FichierMMap const&) = delete;
    FichierMMap& operator=(FichierMMap const&) = delete;
    ~FichierMMap() override;

    NOYAU_EXPORT bool EstALaFin() const override { return _position >= _taille; }
    NOYAU_EXPORT unsigned int DonnePosition() const override { return _position; }
    // Volontaire : la position égale à la taille se lit encore (0, l'octet d'après n'est pas
    // touché) ; au-delà, IndexHorsBorne(position, 0, taille).
    NOYAU_EXPORT unsigned char Donne() override
    {
        if (_position >= _taille) {
            return _DonneAuBout();
        }
        return _donnees[_position++];
    }
    // Vérifie tout l'intervalle : IndexHorsBorne(position + n, 0, taille), position gardée.
    unsigned int Donne(unsigned int n, unsigned char* dest) override;
    NOYAU_EXPORT void PositionneAuDebut() override { _position = 0; }
    // Aucune vérification : ce sont les lectures qui vérifient.
    NOYAU_EXPORT void Positionne(unsigned int position) override { _position = position; }
    NOYAU_EXPORT void PositionneALaFin() override { _position = _taille; }
    // Vérifie la position avant l'avance, pas les n octets : l'appelant en répond.
    unsigned char const* PtrEtAvance(unsigned int n) override;
    unsigned char const* Ptr() const override;
    NOYAU_EXPORT unsigned int DonneTaille() const override { return _taille; }
    TamponMemoire* TamponEnPretantDonnees() override;

private:
    void Ouvrir(UniChemin const& chemin, unsigned long decalage, unsigned long longueur);
    unsigned char _DonneAuBout();
    void _VerifiePosition() const;

    unsigned char* _donnees = nullptr;
    std::unique_ptr<QFile> _fichier; // ouvert tant que dure la projection
    unsigned int _position = 0;      // depuis le premier octet projeté
    unsigned int _taille = 0;
};

} // namespace sdd
