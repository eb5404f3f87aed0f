#include "noyau/chaines/UniChemin.h"

#include <QDir>

UniChemin::UniChemin(char const* texte, Codage codage, int longueur)
    : UniChaine(texte, codage, longueur)
{
}

UniChemin::UniChemin(std::string const& texte, Codage codage) : UniChaine(texte, codage) {}

UniChemin::UniChemin(UniChaine const& texte) : UniChaine(texte) {}

UniChemin::UniChemin(char16_t const* texte, int longueur) : UniChaine(texte, longueur) {}

UniChemin::UniChemin(QString const& texte) : UniChaine(texte) {}

UniChemin& UniChemin::AjouteComposantChemin(UniChemin const& composant)
{
    QString chemin = QDir::toNativeSeparators(_texte);
    QString const ajout = QDir::toNativeSeparators(composant._texte);
    int debut = 0;
    while (debut < ajout.size() && ajout[debut] == QLatin1Char('/')) {
        ++debut;
    }
    if (!chemin.isEmpty() && !chemin.endsWith(QLatin1Char('/'))) {
        chemin += QLatin1Char('/');
    }
    chemin += ajout.midRef(debut);
    UniChaine::operator=(chemin);
    return *this;
}

UniChemin UniChemin::DonneChaineEnAjoutantComposantChemin(UniChemin const& composant) const
{
    return UniChemin(*this).AjouteComposantChemin(composant);
}
