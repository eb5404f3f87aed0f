#include "noyau/chaines/UniChemin.h"

#include <QDir>

const UniChemin kUniCheminSeparationChemin("/");
const UniChemin kUniCheminSeparationExtension(".");

namespace {

constexpr QLatin1Char kSeparateur('/');
constexpr QLatin1Char kPoint('.');

QString Normalise(QString const& chemin)
{
    return QDir::toNativeSeparators(chemin);
}

} // namespace

UniChemin::~UniChemin() = default;

UniChemin DonneUniChaineSeparationChemin()
{
    return kUniCheminSeparationChemin;
}

UniChemin::UniChemin(char const* texte, Codage codage, int longueur)
    : UniChaine(texte, codage, longueur)
{
}

UniChemin::UniChemin(std::string const& texte, Codage codage) : UniChaine(texte, codage) {}

UniChemin::UniChemin(UniChaine const& texte) : UniChaine(texte) {}

UniChemin::UniChemin(char16_t const* texte, int longueur) : UniChaine(texte, longueur) {}

UniChemin::UniChemin(QString const& texte) : UniChaine(texte) {}

UniChemin UniChemin::NormaliseSeparateurs() const
{
    return UniChemin(Normalise(_texte));
}

UniChemin& UniChemin::AjouteComposantChemin(UniChemin const& composant)
{
    QString chemin = Normalise(_texte);
    QString const ajout = Normalise(composant._texte);
    int debut = 0;
    while (debut < ajout.size() && ajout[debut] == kSeparateur) {
        ++debut;
    }
    if (!chemin.isEmpty() && !chemin.endsWith(kSeparateur)) {
        chemin += kSeparateur;
    }
    chemin += ajout.midRef(debut);
    UniChaine::operator=(chemin);
    return *this;
}

UniChemin UniChemin::DonneChaineEnAjoutantComposantChemin(UniChemin const& composant) const
{
    return UniChemin(*this).AjouteComposantChemin(composant);
}

UniChemin& UniChemin::AjouteExtension(UniChemin const& extension)
{
    if (extension.EstVide()) {
        return *this;
    }
    QString chemin = Normalise(_texte);
    if (!chemin.endsWith(kPoint)) {
        chemin += kPoint;
    }
    chemin += Normalise(extension._texte);
    UniChaine::operator=(chemin);
    return *this;
}

UniChemin UniChemin::AjouteExtension(UniChemin const& extension) const
{
    return UniChemin(*this).AjouteExtension(extension);
}

UniChemin UniChemin::DonneChaineEnAjoutantExtension(UniChaine const& extension) const
{
    return AjouteExtension(UniChemin(extension));
}

std::vector<UniChemin> UniChemin::DonneLesComposantsChemin() const
{
    std::vector<UniChemin> composants;
    for (QString const& partie : Normalise(_texte).split(kSeparateur)) {
        composants.emplace_back(partie);
    }
    return composants;
}

UniChemin UniChemin::DonneDernierComposantChemin() const
{
    QString const chemin = Normalise(_texte);
    return UniChemin(chemin.mid(chemin.lastIndexOf(kSeparateur) + 1));
}

UniChemin UniChemin::DonneDernierComposantCheminSaufExtension() const
{
    return DonneDernierComposantChemin().DonneChaineEnEnlevantExtension();
}

UniChemin UniChemin::DonneChaineEnEnlevantDernierComposantChemin() const
{
    QString const chemin = Normalise(_texte);
    int const dernier = chemin.lastIndexOf(kSeparateur);
    return UniChemin(dernier == 0 ? QString(kSeparateur) : chemin.left(std::max(dernier, 0)));
}

UniChemin UniChemin::DonneExtension() const
{
    QString const chemin = Normalise(_texte);
    int const point = chemin.lastIndexOf(kPoint);
    return point < 0 ? UniChemin() : UniChemin(chemin.mid(point + 1));
}

UniChemin UniChemin::DonneChaineEnEnlevantExtension() const
{
    QString const chemin = Normalise(_texte);
    int const point = chemin.lastIndexOf(kPoint);
    return UniChemin(point < 0 ? chemin : chemin.left(point));
}
