#include "noyau/conteneurs/ListeT.h"

#include <gtest/gtest.h>

TEST(ListeT, CroissanceEtBornes)
{
    sdd::ListeT<int, 2, 1, unsigned long> liste;
    EXPECT_EQ(liste.Capacite(), 2u);
    std::vector<unsigned long> capacites;
    for (int i = 0; i < 12; ++i) {
        liste.Ajoute(i);
        capacites.push_back(liste.Capacite());
    }
    // Pleine, la liste passe de c à 2c + 1.
    EXPECT_EQ(capacites, (std::vector<unsigned long>{2, 2, 5, 5, 5, 11, 11, 11, 11, 11, 11, 23}));
    liste.Enleve(0).Enleve(10);
    EXPECT_EQ(liste.Taille(), 10u);
    EXPECT_EQ(liste[0], 1);
    EXPECT_EQ(liste[9], 10);
    EXPECT_THROW(liste[10], sdd::exceptions::IndexHorsBorne);
    EXPECT_THROW(liste.Enleve(10), sdd::exceptions::IndexHorsBorne);
    EXPECT_EQ(liste.Taille(), 10u);
    liste.Vide();
    EXPECT_TRUE(liste.EstVide());

    sdd::ListeC<int> c(0);
    c.Ajoute(1).Ajoute(2);
    EXPECT_EQ(c.Taille(), 2u);
    EXPECT_EQ(c[1], 2);
}
