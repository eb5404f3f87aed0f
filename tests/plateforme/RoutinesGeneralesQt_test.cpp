#include "noyau/plateforme/RoutinesGeneralesQt.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

TEST(RoutinesGeneralesQt, NomApplicationDecore)
{
    auto nom = [](char const* decoration) {
        return QString(RoutinesGeneralesQt::DonneNomApplicationDecoray(UniChaine(decoration)))
            .toStdString();
    };
    EXPECT_EQ(nom(""), "Pelimore 9");
    EXPECT_EQ(nom("Pro"), "Pelimore 9 Pro");
    QCoreApplication::setApplicationName("Rédacteur");
    EXPECT_EQ(nom(""), "Rédacteur");
    EXPECT_EQ(nom(" +"), "Rédacteur  +");
    QCoreApplication::setApplicationName(QString());
    EXPECT_EQ(nom(""), "Pelimore 9");
}
