#pragma once

#include "noyau/Export.h"
#include "noyau/chaines/UniChaine.h"

#include <vector>

// Chemin du système de fichiers : une UniChaine, séparateur « / ». Chaque opération lit les
// chemins après avoir mis leurs séparateurs à la forme du système.
class NOYAU_EXPORT UniChemin : public UniChaine
{
public:
    UniChemin() noexcept = default;
    UniChemin(char const* texte, Codage codage = kUTF8, int longueur = -1);
    UniChemin(std::string const& texte, Codage codage);
    UniChemin(UniChaine const& texte);
    UniChemin(char16_t const* texte, int longueur = -1);
    UniChemin(QString const& texte);
    UniChemin(UniChemin const&) = default;
    UniChemin(UniChemin&&) = default;
    UniChemin& operator=(UniChemin const&) = default;
    UniChemin& operator=(UniChemin&&) = default;
    ~UniChemin() override;

    UniChemin NormaliseSeparateurs() const;

    // Ajoute « / » si le chemin n'est pas vide et n'en finit pas déjà par un, puis le
    // composant privé de ses « / » de tête.
    UniChemin& AjouteComposantChemin(UniChemin const& composant);
    UniChemin DonneChaineEnAjoutantComposantChemin(UniChemin const& composant) const;
    // Une extension vide ne change rien ; sinon « . » (s'il n'est déjà au bout) et elle.
    UniChemin& AjouteExtension(UniChemin const& extension);
    UniChemin AjouteExtension(UniChemin const& extension) const;
    UniChemin DonneChaineEnAjoutantExtension(UniChaine const& extension) const;

    // Découpe à chaque « / », parties vides comprises : « /a/b » donne « », « a », « b ».
    std::vector<UniChemin> DonneLesComposantsChemin() const;
    // Ce qui suit le dernier « / » ; tout le chemin sans « / ».
    UniChemin DonneDernierComposantChemin() const;
    UniChemin DonneDernierComposantCheminSaufExtension() const;
    // Ce qui précède le dernier « / » ; « / » si c'est le premier caractère ; vide sans « / ».
    UniChemin DonneChaineEnEnlevantDernierComposantChemin() const;
    // Ce qui suit le dernier « . » du chemin entier, même dans un nom de dossier
    // (volontaire : « /x.d/f » a pour extension « d/f ») ; vide sans « . ».
    UniChemin DonneExtension() const;
    // Coupe à ce même « . » ; le chemin tel quel sans « . ».
    UniChemin DonneChaineEnEnlevantExtension() const;
};

extern NOYAU_EXPORT const UniChemin kUniCheminSeparationChemin;    // « / »
extern NOYAU_EXPORT const UniChemin kUniCheminSeparationExtension; // « . »

// Le séparateur « / », en chemin.
NOYAU_EXPORT UniChemin DonneUniChaineSeparationChemin();
