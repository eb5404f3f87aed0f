#include "noyau/plateforme/RoutinesGeneralesQt.h"

#include <QCoreApplication>

UniChaine RoutinesGeneralesQt::DonneNomApplicationDecoray(UniChaine const& decoration)
{
    QString nom = QCoreApplication::applicationName();
    if (nom.isEmpty()) {
        nom = QStringLiteral("Pelimore 9");
    }
    if (!decoration.EstVide()) {
        nom += QLatin1Char(' ') + decoration.DonneQString();
    }
    return nom;
}
