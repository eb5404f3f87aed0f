#include "noyau/chaines/UniChemin.h"

#include <gtest/gtest.h>

namespace {

std::string Texte(UniChaine const& u)
{
    return QString(u).toStdString();
}

} // namespace

TEST(UniChemin, AjouteComposant)
{
    struct Cas
    {
        char const* chemin;
        char const* composant;
        char const* attendu;
    };
    Cas const cas[] = {
        {"a", "/b", "a/b"}, {"a/", "b", "a/b"},
        {"", "b", "b"},     {"a", "//b", "a/b"},
        {"/", "b", "/b"},   {"a", "", "a/"},
        {"", "/b", "b"},    {"a//", "/b/", "a//b/"},
        {"é", "ü", "é/ü"},  {"/x/y", "z.txt", "/x/y/z.txt"},
    };
    for (auto const& c : cas) {
        UniChemin const chemin(c.chemin);
        EXPECT_EQ(Texte(chemin.DonneChaineEnAjoutantComposantChemin(c.composant)), c.attendu);
        EXPECT_EQ(Texte(chemin), c.chemin); // le jumeau const ne touche à rien
        UniChemin modifie(c.chemin);
        EXPECT_EQ(&modifie.AjouteComposantChemin(UniChemin(c.composant)), &modifie);
        EXPECT_EQ(Texte(modifie), c.attendu);
    }
}

TEST(UniChemin, Constructions)
{
    EXPECT_TRUE(UniChemin().EstVide());
    EXPECT_EQ(Texte(UniChemin("/tmp/abc", UniChaine::kUTF8, 4)), "/tmp");
    EXPECT_EQ(Texte(UniChemin(std::string("caf\xE9"), UniChaine::kLatin9)), "café");
    EXPECT_EQ(Texte(UniChemin(u"/a/b", 2)), "/a");
    EXPECT_EQ(Texte(UniChemin(QStringLiteral("/q"))), "/q");
    UniChemin const depuisUniChaine(UniChaine("/u"));
    UniChemin copie(depuisUniChaine);
    EXPECT_EQ(Texte(copie), "/u");
    copie = UniChemin("/v");
    EXPECT_EQ(QString(copie), QStringLiteral("/v"));
}
