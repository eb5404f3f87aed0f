#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/Associations.h"
#include "noyau/flux/Serialiseur.h"
#include "noyau/flux/TamponMemoire.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <sstream>
#include <string>

using sdd::Associations;
using sdd::Serialiseur;
using sdd::TamponMemoire;

namespace {

std::string Octets(TamponMemoire const& t)
{
    return std::string(reinterpret_cast<char const*>(t.DonneDonnees()), t.DonneTaille());
}

std::string Texte(Associations const& a)
{
    std::ostringstream flux;
    flux << a;
    return flux.str();
}

} // namespace

TEST(Associations, TableEtTexte)
{
    Associations a;
    EXPECT_EQ(a.DonneNombre(), 0);
    EXPECT_EQ(a.Donne(0), -1);
    EXPECT_EQ(Texte(a), "Associations()");

    a.Associe(3, 7);
    EXPECT_EQ(a.DonneNombre(), 4);
    EXPECT_EQ(a.Donne(2), -1); // 255 lu en signed char
    EXPECT_FALSE(a.Possede(2));
    EXPECT_TRUE(a.Possede(3));
    EXPECT_EQ(a.Donne(3), 7);
    EXPECT_EQ(a.Donne(200), -1);
    EXPECT_EQ(Texte(a), "Associations(Vide,Vide,Vide,[\x03,7])");

    Associations lettres;
    lettres.Associe('B', 200);
    lettres.Associe('A', 0);
    std::string const texte = Texte(lettres);
    EXPECT_EQ(texte.substr(texte.size() - 14), "[A,0],[B,200])");

    Associations copie(a);
    copie.Associe(3, 255); // efface
    EXPECT_FALSE(copie.Possede(3));
    EXPECT_TRUE(a.Possede(3));
    copie = lettres;
    EXPECT_EQ(copie.DonneNombre(), 'B' + 1);
    EXPECT_EQ(copie.Donne('B'), static_cast<signed char>(200));

    EXPECT_THROW(a.Associe(255, 1), sdd::exceptions::IndexHorsBorne);
    a.Associe(254, 9);
    EXPECT_EQ(a.DonneNombre(), 255);
    EXPECT_TRUE(a.Possede(254));
}

TEST(Associations, ContreStdMap)
{
    std::mt19937 hasard(3);
    Associations a;
    std::map<unsigned char, unsigned char> reference;
    for (int i = 0; i < 2000; ++i) {
        auto const cle = static_cast<unsigned char>(hasard() % 255);
        auto const valeur = static_cast<unsigned char>(hasard() % 256);
        a.Associe(cle, valeur);
        if (valeur == 255) {
            reference.erase(cle);
        } else {
            reference[cle] = valeur;
        }
    }
    for (unsigned int cle = 0; cle < 256; ++cle) {
        auto const trouve = reference.find(static_cast<unsigned char>(cle));
        bool const present = trouve != reference.end();
        EXPECT_EQ(a.Possede(static_cast<unsigned char>(cle)), present);
        EXPECT_EQ(a.Donne(static_cast<unsigned char>(cle)),
                  static_cast<signed char>(present ? trouve->second : 255));
    }
}

TEST(Associations, FormeEnFlux)
{
    TamponMemoire t(4);
    t.Mets("xx", 2);
    EXPECT_EQ(Serialiseur<Associations>::Ecris(t, Associations()), 2u);
    EXPECT_EQ(Octets(t), std::string("xx\0", 3));

    Associations a;
    a.Associe(3, 7);
    t.Vide();
    Serialiseur<Associations>::Ecris(t, a);
    EXPECT_EQ(Octets(t), "\x04\xFF\xFF\xFF\x07");

    t.PositionneAuDebut();
    Associations lue;
    lue.Associe(9, 9);
    Serialiseur<Associations>::Lis(t, &lue);
    EXPECT_EQ(Texte(lue), Texte(a));
    EXPECT_TRUE(t.EstALaFin());

    // Coupé : erreur, et la table lue garde son contenu.
    t.MetsTaille(3);
    t.PositionneAuDebut();
    EXPECT_THROW(Serialiseur<Associations>::Lis(t, &lue), sdd::exceptions::ErreurDeserialisation);
    EXPECT_EQ(Texte(lue), Texte(a));
}
