// UniChaine : nombres en texte, à la manière de chaque langue.

#include "noyau/chaines/UniChaine.h"

#include "noyau/chaines/detail/Nombres.h"
#include "noyau/chaines/detail/UnitesQString.h"

#include <algorithm>
#include <cmath>

namespace {

struct Separateurs
{
    QString milliers;
    QChar decimal;
};

Separateurs SeparateursPour(eLangue langue)
{
    if (langue == kLangueAnglais) {
        return {QStringLiteral(","), QLatin1Char('.')};
    }
    return {QString(QChar(0x202F)), QLatin1Char(',')};
}

// Chiffres d'une partie entière, groupés par trois depuis la droite.
QString GroupeMilliers(QString const& chiffres, QString const& separateur)
{
    int const n = chiffres.size();
    QString resultat;
    resultat.reserve(n + n / 3 * separateur.size());
    for (int i = 0; i < n; ++i) {
        if (i != 0 && (n - i) % 3 == 0) {
            resultat += separateur;
        }
        resultat += chiffres[i];
    }
    return resultat;
}

// Texte « -1234.50 » de C mis à la manière de la langue.
QString FormateTexteC(QString texte, bool enleveZeros, eLangue langue)
{
    Separateurs const sep = SeparateursPour(langue);
    bool negatif = texte.startsWith(QLatin1Char('-'));
    if (negatif) {
        texte.remove(0, 1);
    }
    int const point = texte.indexOf(QLatin1Char('.'));
    QString entiere = point < 0 ? texte : texte.left(point);
    QString decimales = point < 0 ? QString() : texte.mid(point + 1);
    if (enleveZeros) {
        while (decimales.endsWith(QLatin1Char('0'))) {
            decimales.chop(1);
        }
    }
    // -0,001 arrondi à deux chiffres ne garde pas son signe.
    auto const estZero = [](QChar q) { return q == QLatin1Char('0'); };
    if (negatif && std::all_of(entiere.cbegin(), entiere.cend(), estZero) &&
        std::all_of(decimales.cbegin(), decimales.cend(), estZero)) {
        negatif = false;
    }
    QString resultat = GroupeMilliers(entiere, sep.milliers);
    if (!decimales.isEmpty()) {
        resultat += sep.decimal;
        resultat += decimales;
    }
    if (negatif) {
        resultat.prepend(QLatin1Char('-'));
    }
    return resultat;
}

constexpr int kMaxDecimales = 17;

} // namespace

namespace {

// Une largeur négative ne complète rien.
unsigned long Largeur(int largeur)
{
    return largeur < 0 ? 0 : static_cast<unsigned long>(largeur);
}

} // namespace

UniChaine UniChaine::DepuisNombre(int n, int base, int largeur, bool zeros, bool aGauche)
{
    return UniChaine(sdd::detail::EnQString(sdd::detail::EcrisEntier(
        n, static_cast<unsigned long>(base), Largeur(largeur), zeros, aGauche)));
}

UniChaine UniChaine::DepuisNombre(unsigned int n, int base, int largeur, bool zeros, bool aGauche)
{
    return UniChaine(sdd::detail::EnQString(sdd::detail::EcrisEntier(
        n, static_cast<unsigned long>(base), Largeur(largeur), zeros, aGauche)));
}

UniChaine UniChaine::DepuisNombre(double x, int decimales)
{
    return UniChaine(sdd::detail::EnQString(sdd::detail::EcrisReel(
        x, decimales < 0 ? 0 : static_cast<unsigned long>(decimales), 0, false, false)));
}

unsigned int UniChaine::DonneEntierHex(bool* ok) const
{
    QString texte = _texte.trimmed();
    if (texte.startsWith(QLatin1String("0x"), Qt::CaseInsensitive)) {
        texte.remove(0, 2);
    }
    bool lu = false;
    unsigned int const valeur = texte.toUInt(&lu, 16);
    if (ok != nullptr) {
        *ok = lu;
    }
    return lu ? valeur : 0;
}

UniChaine UniChaine::DonneNombreFormatay(double x, int decimales, bool enleveZeros, eLangue langue)
{
    if (!std::isfinite(x)) {
        return UniChaine(QString::number(x));
    }
    QString const texte = QString::number(x, 'f', std::clamp(decimales, 0, kMaxDecimales));
    return UniChaine(FormateTexteC(texte, enleveZeros, langue));
}

UniChaine UniChaine::DonneNombreFormatay(int n, eLangue langue)
{
    return UniChaine(FormateTexteC(QString::number(n), false, langue));
}

UniChaine UniChaine::DonneNombreFormatay(unsigned int n, eLangue langue)
{
    return UniChaine(FormateTexteC(QString::number(n), false, langue));
}

UniChaine UniChaine::DonnePourcentageFormatay(double ratio, int decimales, bool enleveZeros,
                                              eLangue langue)
{
    UniChaine texte = DonneNombreFormatay(ratio * 100.0, decimales, enleveZeros, langue);
    if (langue != kLangueAnglais) {
        texte.AjouteFin(u'\u00A0');
    }
    return texte.AjouteFin(u'%');
}
