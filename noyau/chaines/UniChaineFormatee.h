#pragma once

#include "noyau/Export.h"
#include "noyau/chaines/UniChaine.h"

#include <QString>

// Texte accompagné de sa forme HTML : le texte échappé dans un
// <span style="..."> qui porte la couleur, le style et la taille de tout le texte.
class NOYAU_EXPORT UniChaineFormatee
{
public:
    enum eCouleur
    {
        kNoir,
        kRouge,
        kVert,
        kBleu,
        kGris,
        kOrange,
        kBlanc
    };
    enum eStyle
    {
        kNormal,
        kGras,
        kItalique,
        kSouligne,
        kGrasItalique
    };
    enum eTaille
    {
        kTailleNormale,
        kPetite,
        kGrande
    };

    UniChaineFormatee() = default;
    UniChaineFormatee(UniChaine const& texte, eCouleur couleur, eStyle style,
                      eTaille taille = kTailleNormale);
    UniChaineFormatee(char const* texte, UniChaine::Codage codage, int longueur, eCouleur couleur,
                      eStyle style, eTaille taille = kTailleNormale);
    UniChaineFormatee(UniChaineFormatee const&) = default;
    UniChaineFormatee& operator=(UniChaineFormatee const&) = default;
    virtual ~UniChaineFormatee();

    UniChaine DonneChaineFormatee() const { return _formate; }
    UniChaine DonneChaineNonFormatee() const { return _texte; }
    operator UniChaine() const { return _texte; }
    int Longueur() const noexcept { return _texte.size(); }

    UniChaineFormatee& operator+=(UniChaineFormatee const& autre);
    UniChaineFormatee operator+(UniChaineFormatee const& autre) const;

protected:
    void InitAvecUniChaine(UniChaine const& texte, eCouleur couleur, eStyle style, eTaille taille);

private:
    QString _texte;
    QString _formate;
};
