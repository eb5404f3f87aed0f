#include "noyau/chaines/UniChemin.h"

#include <gtest/gtest.h>

namespace {

std::string Texte(UniChaine const& u)
{
    return QString(u).toStdString();
}

} // namespace

TEST(UniChemin, ConstructionsEtAjoutDeComposant)
{
    EXPECT_TRUE(UniChemin().EstVide());
    EXPECT_EQ(Texte(UniChemin("/tmp/abc", UniChaine::kUTF8, 4)), "/tmp");
    EXPECT_EQ(Texte(UniChemin(std::string("caf\xE9"), UniChaine::kLatin9)), "café");
    EXPECT_EQ(Texte(UniChemin(u"/a/b", 2)), "/a");
    EXPECT_EQ(Texte(UniChemin(QStringLiteral("/q"))), "/q");
    EXPECT_EQ(Texte(kUniCheminSeparationChemin) + Texte(kUniCheminSeparationExtension), "/.");
    EXPECT_EQ(Texte(DonneUniChaineSeparationChemin()), "/");

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
        SCOPED_TRACE(std::string(c.chemin) + " + " + c.composant);
        UniChemin const chemin(c.chemin);
        EXPECT_EQ(Texte(chemin.DonneChaineEnAjoutantComposantChemin(c.composant)), c.attendu);
        EXPECT_EQ(Texte(chemin), c.chemin); // le jumeau const ne touche à rien
        UniChemin modifie(c.chemin);
        EXPECT_EQ(&modifie.AjouteComposantChemin(UniChemin(c.composant)), &modifie);
        EXPECT_EQ(Texte(modifie), c.attendu);
    }
}

TEST(UniChemin, ComposantsEtExtensions)
{
    auto const composants = [](char const* chemin) {
        std::string texte;
        for (UniChemin const& c : UniChemin(chemin).DonneLesComposantsChemin()) {
            texte += "[" + Texte(c) + "]";
        }
        return texte;
    };
    EXPECT_EQ(composants("/a/b"), "[][a][b]");
    EXPECT_EQ(composants("a//b/"), "[a][][b][]");
    EXPECT_EQ(composants(""), "[]");

    // Chemin, puis ce qu'en rendent DonneDernierComposantChemin,
    // DonneChaineEnEnlevantDernierComposantChemin, DonneExtension,
    // DonneChaineEnEnlevantExtension et DonneDernierComposantCheminSaufExtension.
    char const* const cas[][6] = {
        {"/a", "a", "/", "", "/a", "a"},
        {"a", "a", "", "", "a", "a"},
        {"/x/f.txt", "f.txt", "/x", "txt", "/x/f", "f"},
        // Volontaire : le point d'un dossier compte quand le nom n'en a pas.
        {"/x.d/f", "f", "/x.d", "d/f", "/x", "f"},
        {"/x/archive.tar.gz", "archive.tar.gz", "/x", "gz", "/x/archive.tar", "archive.tar"},
        {"/x/", "", "/x", "", "/x/", ""},
        {"", "", "", "", "", ""},
    };
    for (auto const& c : cas) {
        SCOPED_TRACE(c[0]);
        UniChemin const chemin(c[0]);
        EXPECT_EQ(Texte(chemin.DonneDernierComposantChemin()), c[1]);
        EXPECT_EQ(Texte(chemin.DonneChaineEnEnlevantDernierComposantChemin()), c[2]);
        EXPECT_EQ(Texte(chemin.DonneExtension()), c[3]);
        EXPECT_EQ(Texte(chemin.DonneChaineEnEnlevantExtension()), c[4]);
        EXPECT_EQ(Texte(chemin.DonneDernierComposantCheminSaufExtension()), c[5]);
    }

    UniChemin f("/x/f");
    EXPECT_EQ(Texte(f.AjouteExtension(UniChemin("txt"))), "/x/f.txt");
    EXPECT_EQ(Texte(f.AjouteExtension(UniChemin())), "/x/f.txt");
    EXPECT_EQ(Texte(UniChemin("/x/f.").DonneChaineEnAjoutantExtension(UniChaine("d"))), "/x/f.d");
    UniChemin const fixe("g");
    EXPECT_EQ(Texte(fixe.AjouteExtension(UniChemin("h"))), "g.h");
    EXPECT_EQ(Texte(fixe), "g");
}
