#include <gtest/gtest.h>
#include <unicode/uchar.h>

#include <string>
#include <utility>

#include "noyau/chaines/InfoUniCaractere.h"
#include "noyau/chaines/UniCaractere.h"
#include "noyau/conteneurs/ListeT.h"

namespace {

std::u16string EnTexte(sdd::ListeC<char16_t> const& liste)
{
    return std::u16string(liste.begin(), liste.end());
}

} // namespace

TEST(UniCaractere, Ligatures)
{
    char16_t sortie[4] = {1, 1, 1, 1};
    unsigned long n = 99;
    EXPECT_TRUE(UniCaractere::DecompositionLigature(u'ß', sortie, 4, &n));
    EXPECT_EQ(std::u16string(sortie), u"sz");
    EXPECT_EQ(n, 2u);
    EXPECT_TRUE(UniCaractere::DecompositionLigature(u'Œ', sortie, 4, &n));
    EXPECT_EQ(std::u16string(sortie), u"OE");
    // Sans place pour le zéro, les lettres seules.
    sortie[1] = 1;
    sortie[2] = 7;
    EXPECT_TRUE(UniCaractere::DecompositionLigature(u'æ', sortie, 2, &n));
    EXPECT_EQ(sortie[0], u'a');
    EXPECT_EQ(sortie[1], u'e');
    EXPECT_EQ(sortie[2], 7);
    EXPECT_FALSE(UniCaractere::DecompositionLigature(u'a', sortie, 4, &n));
    EXPECT_EQ(n, 0u);
    EXPECT_FALSE(UniCaractere::DecompositionLigature(u'\u0133', sortie, 4, &n)); // ĳ
}

TEST(UniCaractere, EquivalencesDeCasseEtDAccents)
{
    EXPECT_EQ(EnTexte(UniCaractere::DonneCarsCassesEquivalentes(u'a')), u"A");
    EXPECT_EQ(EnTexte(UniCaractere::DonneCarsCassesEquivalentes(u'A')), u"a");
    EXPECT_EQ(EnTexte(UniCaractere::DonneCarsCassesEquivalentes(u'1')), u"");
    std::u16string const k = EnTexte(UniCaractere::DonneCarsCassesEquivalentes(u'k'));
    EXPECT_NE(k.find(u'K'), std::u16string::npos);
    EXPECT_NE(k.find(u'\u212A'), std::u16string::npos); // signe kelvin
    std::u16string const e = EnTexte(UniCaractere::DonneCarsAccentsEquivalents(u'e'));
    for (char16_t c : std::u16string(u"éèêë"))
        EXPECT_NE(e.find(c), std::u16string::npos);
    std::u16string const eAigu = EnTexte(UniCaractere::DonneCarsAccentsEquivalents(u'é'));
    EXPECT_EQ(eAigu[0], u'e');
    EXPECT_NE(eAigu.find(u'è'), std::u16string::npos);
    EXPECT_EQ(eAigu.find(u'é'), std::u16string::npos);
    EXPECT_EQ(eAigu.size(), e.size());
    EXPECT_EQ(UniCaractere::_TrouveInfoExpansion(u'\uFFFF'), -1);

    // Sur les lettres latines : aucune liste ne contient son caractère ; les
    // équivalents de casse ont la même minuscule ou le même repli de casse pour ICU, ceux
    // d'accent la même lettre de base que le caractère, ou sont cette base.
    for (char16_t c = 0x41; c < 0x250; ++c) {
        if (!(gInfoUniCaractere[c][kInfoClasseLettre] & kCarLettre))
            continue;
        for (char16_t x : UniCaractere::DonneCarsCassesEquivalentes(c)) {
            EXPECT_NE(x, c);
            EXPECT_TRUE(u_tolower(x) == u_tolower(c) || u_toupper(x) == u_toupper(c) ||
                        u_foldCase(x, U_FOLD_CASE_DEFAULT) == u_foldCase(c, U_FOLD_CASE_DEFAULT))
                << std::hex << int(c) << " " << int(x);
        }
        char16_t const base = gInfoUniCaractere[c][kInfoSansAccent];
        for (char16_t x : UniCaractere::DonneCarsAccentsEquivalents(c)) {
            EXPECT_NE(x, c);
            EXPECT_TRUE(x == base || gInfoUniCaractere[x][kInfoSansAccent] == base)
                << std::hex << int(c) << " " << int(x);
        }
    }
}

TEST(UniCaractere, EnsemblesEtLatin)
{
    for (char16_t c : std::u16string(u"\u2014\u2015\u2053\u301C\u3030\u30A0\uFE31\uFE58"))
        EXPECT_TRUE(UniCaractere::EstTiretLong(c));
    for (char16_t c : std::u16string(u"\u2012\u2013\u2212\uFE32"))
        EXPECT_TRUE(UniCaractere::EstTiretCourt(c));
    EXPECT_FALSE(UniCaractere::EstTiretLong(u'-'));
    EXPECT_FALSE(UniCaractere::EstTiretCourt(u'\u2014'));
    int nbLongs = 0, nbCourts = 0;
    for (unsigned long c = 0; c < kNbUnitesUTF16; ++c) {
        nbLongs += UniCaractere::EstTiretLong(char16_t(c));
        nbCourts += UniCaractere::EstTiretCourt(char16_t(c));
    }
    EXPECT_EQ(nbLongs, 8);
    EXPECT_EQ(nbCourts, 4);

    // L'option etendu change la réponse pour chaque unité des deux blocs étendus.
    for (auto [debut, fin] : {std::pair{0x0100, 0x024F}, std::pair{0x1E00, 0x1EFF}}) {
        for (int c = debut; c <= fin; ++c) {
            ASSERT_FALSE(UniCaractere::EstCaractereLatin(char16_t(c), false)) << std::hex << c;
            ASSERT_TRUE(UniCaractere::EstCaractereLatin(char16_t(c), true)) << std::hex << c;
        }
    }
    EXPECT_TRUE(UniCaractere::EstCaractereLatin(u'\u2C71', false)); // latin étendu C : marqué
    EXPECT_TRUE(UniCaractere::EstCaractereLatin(u'\uFF41', false)); // a pleine chasse
    EXPECT_TRUE(UniCaractere::EstCaractereLatin(u'\u1EA0', true));
    EXPECT_TRUE(UniCaractere::EstCaractereLatin(u'é', false));
    EXPECT_TRUE(UniCaractere::EstCaractereLatin(u'\u2019', false));
    EXPECT_FALSE(UniCaractere::EstCaractereLatin(u'\u0085', false));
    EXPECT_FALSE(UniCaractere::EstCaractereLatin(u'\u4E00', true));
    EXPECT_FALSE(UniCaractere::EstCaractereLatin(u'\u03A9', true));
}
