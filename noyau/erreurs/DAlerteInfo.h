#pragma once

#include "noyau/Export.h"
#include "noyau/chaines/UniChaine.h"

#include <cstdint>

// Description d'un message pour l'utilisateur, que la bibliothèque confie au délégué de
// l'application (DAlerteDeleguay) sans jamais l'afficher elle-même.
class NOYAU_EXPORT DAlerteInfo
{
public:
    // Les valeurs comptent (elles choisissent l'étiquette du journal) ; d'autres que
    // celles-ci sont admises et s'étiquettent « (Autre) ».
    enum eTypeDialogue : std::int32_t
    {
        kInconnu = 0,
        kQuestion = 1,
        kInformation = 2,
        kAttention = 3,
        kAlerte = 4,
        kAttentionBis = 6, // même étiquette que kAttention
        kIconeMaison = 8
    };

    // Titre par défaut : nom de l'application décoré par DonneDecoration() quand ce drapeau
    // est vrai, « Pelimore 9 » sinon.
    static bool avecDecoration;
    static UniChaine& DonneDecoration();

    // Type 0, textes nuls, titre marqué par défaut.
    DAlerteInfo();
    // Un titre vide est remplacé par le titre par défaut. Les trois textes passent ensuite
    // à la typographie française (apostrophe ’, insécables dans « »), fins de ligne « \n ».
    DAlerteInfo(eTypeDialogue type, UniChaine const& message, UniChaine const& explication,
                UniChaine const& titre);
    // Fige l'explication complète de la source (DonneExplication) dans la copie. Le
    // drapeau de titre par défaut reste faux s'il l'était, sinon vaut !avecDecoration.
    DAlerteInfo(DAlerteInfo const& source);
    DAlerteInfo& operator=(DAlerteInfo const& source);
    virtual ~DAlerteInfo();

    NOYAU_EXPORT virtual UniChaine DonneExplication() const { return _explication; }

    bool EstNULL() const;
    eTypeDialogue DonneTypeDialogue() const noexcept { return _type; }
    UniChaine DonneMessage() const { return _message; }
    UniChaine DonneTitreFenetre() const { return _titre; }
    bool EstTitreParDefaut() const noexcept { return _titreParDefaut; }

    // Message, une espace, DonneExplication().
    UniChaine DonneChainePourStdException() const;
    // Étiquette du type, tabulation, message, tabulation, explication propre (sans les
    // numéros d'une alerte d'erreur), tabulation.
    UniChaine DonneMessagePourJournalisation() const;

protected:
    // Copie champ à champ, sans figer l'explication.
    struct CopieBrute
    {
    };
    DAlerteInfo(DAlerteInfo const& source, CopieBrute);
    void _CopieChamps(DAlerteInfo const& source);

private:
    eTypeDialogue _type;
    UniChaine _message;
    UniChaine _explication;
    UniChaine _titre;
    bool _titreParDefaut;
};

// Alerte d'erreur : l'explication montrée porte le numéro d'erreur et deux numéros de
// détail ; -1 signifie absent.
class NOYAU_EXPORT DAlerteInfoErreur : public DAlerteInfo
{
public:
    DAlerteInfoErreur(eTypeDialogue type, UniChaine const& message, UniChaine const& explication,
                      int numeroErreur, UniChaine const& titre, int detail1 = -1, int detail2 = -1);
    // Copie fidèle : explication propre et numéros, sans les écrire deux fois.
    DAlerteInfoErreur(DAlerteInfoErreur const& source);
    DAlerteInfoErreur& operator=(DAlerteInfoErreur const& source);
    ~DAlerteInfoErreur() override;

    // Explication, puis « \n\n Code Erreur: n; », puis « d; » pour chaque détail.
    UniChaine DonneExplication() const override;

    int DonneNumeroErreur() const noexcept { return _numeroErreur; }
    int DonneDetail1() const noexcept { return _detail1; }
    int DonneDetail2() const noexcept { return _detail2; }

private:
    int _numeroErreur;
    int _detail1;
    int _detail2;
};

// Alerte d'assertion : toujours le titre par défaut.
class NOYAU_EXPORT DAlerteInfoAssertionQt : public DAlerteInfo
{
public:
    DAlerteInfoAssertionQt(eTypeDialogue type, UniChaine const& message,
                           UniChaine const& explication);
    ~DAlerteInfoAssertionQt() override;
};
