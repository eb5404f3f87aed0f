#include "noyau/erreurs/AlerteErreurFichier.h"

#include <gtest/gtest.h>

TEST(AlerteErreurFichier, TextesEtAlerte)
{
    char const* const attendus[] = {
        "Une erreur de type indéfini s’est produite (code 0).",
        "Espace insuffisant. Opération annulée.",
        "Erreur à la création du fichier.",
        "Erreur à l’ouverture du fichier.",
        "Erreur à la destruction du fichier.",
        "Erreur à l’écriture du fichier.",
        "Erreur à la lecture du fichier.",
    };
    for (int code = 0; code < 7; ++code) {
        EXPECT_EQ(DonneTexteErreurFichier(code), UniChaine(attendus[code])) << code;
    }
    EXPECT_TRUE(DonneTexteErreurFichier(7).EstVide());
    EXPECT_TRUE(DonneTexteErreurFichier(-1).EstVide());

    DAlerteInfoErreur const alerte = CreeAlerteErreurFichier(3, 5, 0, 12, -1, 4);
    EXPECT_EQ(alerte.DonneTypeDialogue(), DAlerteInfo::kAlerte);
    EXPECT_EQ(alerte.DonneMessage(), UniChaine(attendus[5]));
    EXPECT_EQ(alerte.DonneNumeroErreur(), 12);
    EXPECT_EQ(alerte.DonneDetail1(), -1);
    EXPECT_EQ(alerte.DonneDetail2(), 4);
    EXPECT_TRUE(alerte.DonneExplication().CommencePar(UniChaine(attendus[0])));
    EXPECT_TRUE(alerte.EstTitreParDefaut());
}
