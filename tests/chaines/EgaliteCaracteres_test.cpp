#include "noyau/chaines/ChaineN.h"
#include "noyau/chaines/EgaliteCaracteres.h"

#include <gtest/gtest.h>

using namespace sdd;

TEST(EgaliteCaracteres, ChaineDesReplis)
{
    EXPECT_TRUE(UniCarEgalOption(u'É', u'e', MalgrayAccents | MalgrayCasse));
    EXPECT_FALSE(UniCarEgalOption(u'É', u'e', MalgrayAccents));
    EXPECT_FALSE(UniCarEgalOption(u'É', u'e', 0));
    EXPECT_TRUE(UniCarEgalOption(u'\u2019', u'\'', MalgrayTypographie));
    EXPECT_TRUE(UniCarEgalOption(u'\u00A0', u' ', MalgrayTypographie));
    EXPECT_TRUE(UniCarEgalOption(u'\u00A0', u' ', MalgrayCasse));
    EXPECT_TRUE(UniCarEgalOption(u'\u2014', u'-', MalgrayTypographie));
    // Les espaces seules ne concernent pas les chaînes sdd::ChaineN.
    EXPECT_FALSE(UniCarEgalOption(u'\u2003', u' ', MalgrayEspaces));
    // Ligatures : sans effet caractère à caractère.
    EXPECT_FALSE(UniCarEgalOption(u'œ', u'o', MalgrayLigatures | MalgrayAccents));

    char16_t const a[] = u"xÉtÉ";
    char16_t const b[] = u"ete";
    EXPECT_TRUE(UniCarPtrEgalOption(a, 1, 3, b, 0, 3, MalgrayAccents | MalgrayCasse));
    EXPECT_FALSE(UniCarPtrEgalOption(a, 1, 3, b, 0, 3, 0));
    EXPECT_FALSE(UniCarPtrEgalOption(a, 1, 3, b, 0, 2, MalgrayAccents | MalgrayCasse));
    EXPECT_TRUE(UniCarPtrEgalOption(a, 1, 0, b, 0, 0, 0));
}

TEST(EgaliteCaracteres, Ligatures)
{
    auto const egal = [](char16_t const* x, char16_t const* y, Malgray m) {
        return ChaineN(x).Egal(ChaineN(y), m);
    };
    Malgray const lc = MalgrayLigatures | MalgrayCasse;
    EXPECT_TRUE(egal(u"Œuvre", u"oeuvre", lc));
    EXPECT_TRUE(egal(u"oeuvre", u"Œuvre", lc));
    EXPECT_TRUE(egal(u"cœur", u"COEUR", lc));
    EXPECT_FALSE(egal(u"cœur", u"COEUR", MalgrayLigatures));
    EXPECT_TRUE(egal(u"cœur", u"coeur", MalgrayLigatures));
    EXPECT_TRUE(egal(u"æ", u"ae", MalgrayLigatures));
    EXPECT_FALSE(egal(u"æ", u"a", MalgrayLigatures));
    EXPECT_FALSE(egal(u"œ", u"o", MalgrayLigatures)); // la ligature touche la fin de l'autre
    EXPECT_FALSE(egal(u"coeur", u"cœurs", MalgrayLigatures));
    for (char16_t const* s : {u"ss", u"sz", u"SS", u"SZ"}) {
        EXPECT_FALSE(egal(u"ß", s, lc));
        EXPECT_FALSE(egal(u"straße", (std::u16string(u"stra") + s + u"e").c_str(), lc));
    }
    EXPECT_TRUE(ChaineN(u"le cœur").TerminePar(ChaineN(u"COEUR"), lc));
    unsigned long pos = 0;
    EXPECT_TRUE(ChaineN(u"un cœur gros").Contient(ChaineN(u"oeur g"), &pos, 0, lc));
    EXPECT_EQ(pos, 4u);

    unsigned long utilises = 99;
    EXPECT_TRUE(DeligatureEgalOption(u'æ', u"ae", 2, 0, &utilises));
    EXPECT_EQ(utilises, 2u);
    EXPECT_FALSE(DeligatureEgalOption(u'æ', u"a", 1, 0, &utilises));
    EXPECT_TRUE(DeligatureEgalOption(u'ß', u"SZx", 3, MalgrayCasse, &utilises));
    EXPECT_EQ(utilises, 2u);
    EXPECT_FALSE(DeligatureEgalOption(u'e', u"e", 1, 0, &utilises));
    EXPECT_EQ(utilises, 0u);

    EXPECT_TRUE(DeligatureEgalOptionPourJoker(u'œ', u"?e", 2, 0, &utilises, false));
    EXPECT_EQ(utilises, 2u);
    EXPECT_FALSE(DeligatureEgalOptionPourJoker(u'œ', u"#e", 2, 0, &utilises, false));
    EXPECT_FALSE(DeligatureEgalOptionPourJoker(u'œ', u"&e", 2, 0, &utilises, false));
    EXPECT_TRUE(DeligatureEgalOptionPourJoker(u'œ', u"_E", 2, MalgrayCasse, &utilises, false));
    EXPECT_TRUE(DeligatureEgalOptionPourJoker(u'œ', u"o*", 2, 0, &utilises, false));
    EXPECT_EQ(utilises, 1u);
    EXPECT_TRUE(DeligatureEgalOptionPourJoker(u'œ', u"*e", 2, 0, &utilises, false));
    // Première lettre déjà lue par l'appelant : seul « e » reste à voir.
    EXPECT_TRUE(DeligatureEgalOptionPourJoker(u'œ', u"e", 1, 0, &utilises, true));
    EXPECT_EQ(utilises, 1u);
    EXPECT_FALSE(DeligatureEgalOptionPourJoker(u'œ', u"o", 1, 0, &utilises, false));
}
