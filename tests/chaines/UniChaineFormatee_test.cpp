#include "noyau/chaines/UniChaineFormatee.h"

#include <gtest/gtest.h>

namespace {

std::string Texte(UniChaine const& u)
{
    return QString(u).toStdString();
}

} // namespace

TEST(UniChaineFormatee, BaliseEtEchappement)
{
    UniChaineFormatee const a(UniChaine("a < b & c \"d\" > e"), UniChaineFormatee::kRouge,
                              UniChaineFormatee::kGras);
    EXPECT_EQ(Texte(a.DonneChaineFormatee()), "<span style=\"color:#c00000; font-weight:bold;\">"
                                              "a &lt; b &amp; c &quot;d&quot; &gt; e</span>");
    EXPECT_EQ(Texte(a.DonneChaineNonFormatee()), "a < b & c \"d\" > e");
    EXPECT_EQ(a.Longueur(), 17);

    UniChaineFormatee const b("déjà vu", UniChaine::kUTF8, -1, UniChaineFormatee::kNoir,
                              UniChaineFormatee::kNormal);
    EXPECT_EQ(Texte(b.DonneChaineFormatee()), "<span style=\"color:#000000;\">déjà vu</span>");
    EXPECT_EQ(
        Texte(UniChaineFormatee(UniChaine("x"), UniChaineFormatee::kGris,
                                UniChaineFormatee::kSouligne, UniChaineFormatee::kPetite)
                  .DonneChaineFormatee()),
        "<span style=\"color:#808080; text-decoration:underline; font-size:small;\">x</span>");

    UniChaineFormatee somme = a + b;
    EXPECT_EQ(Texte(somme), "a < b & c \"d\" > edéjà vu");
    EXPECT_EQ(somme.DonneChaineFormatee(), a.DonneChaineFormatee() + b.DonneChaineFormatee());
    somme += UniChaineFormatee();
    EXPECT_EQ(somme.Longueur(), a.Longueur() + b.Longueur());
    EXPECT_TRUE(UniChaineFormatee().DonneChaineFormatee().EstVide());
}
