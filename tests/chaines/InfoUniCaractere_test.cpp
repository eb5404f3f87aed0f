#include <gtest/gtest.h>
#include <unicode/uchar.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "noyau/chaines/Caractere.h"
#include "noyau/chaines/InfoUniCaractere.h"
#include "noyau/chaines/UniCaractere.h"
#include "noyau/chaines/UniChaine.h"

namespace {

std::uint16_t Mot(char16_t c, MotInfoUniCaractere mot)
{
    return gInfoUniCaractere[c][mot];
}

unsigned long NbReplis(MotInfoUniCaractere mot)
{
    unsigned long n = 0;
    for (unsigned long c = 0; c < kNbUnitesUTF16; ++c)
        n += gInfoUniCaractere[c][mot] != c;
    return n;
}

std::u16string Liste(std::uint16_t debut)
{
    std::u16string liste;
    while (debut != 0 && gListesCaracteresInfoExpansion[debut] != 0)
        liste += gListesCaracteresInfoExpansion[debut++];
    return liste;
}

const InfoExpansionUniCaractere* Equivalences(char16_t c)
{
    auto fin = gInfoExpansionUniCaractere + kNbInfoExpansionUniCaractere;
    auto it = std::lower_bound(gInfoExpansionUniCaractere, fin, c,
                               [](auto const& fiche, char16_t u) { return fiche.car < u; });
    return it != fin && it->car == c ? it : nullptr;
}

std::u16string Membres(UniCaractere const* ensemble, unsigned long taille)
{
    return std::u16string(ensemble, ensemble + taille);
}

}  // namespace

TEST(InfoUniCaractere, ClassesDonneesEnExemple)
{
    EXPECT_EQ(Mot(u'A', kInfoClasseLettre), 0x0148);
    EXPECT_EQ(Mot(u'a', kInfoClasseLettre), 0x0150);
    EXPECT_EQ(Mot(u'b', kInfoClasseLettre), 0x0130);
    EXPECT_EQ(Mot(u'y', kInfoClasseLettre), 0x0150);
    EXPECT_EQ(Mot(u'é', kInfoClasseLettre), 0x1150);
    EXPECT_EQ(Mot(u'ç', kInfoClasseLettre), 0x5130);
    EXPECT_EQ(Mot(u'0', kInfoClasseLettre), 0x0080);
    EXPECT_EQ(Mot(u' ', kInfoClasseLettre), 0x0004);

    EXPECT_EQ(Mot(u' ', kInfoClassePonctuation), 0x3306);
    EXPECT_EQ(Mot(u'\t', kInfoClassePonctuation), 0x070A);
    EXPECT_EQ(Mot(u',', kInfoClassePonctuation), 0x1301);
    EXPECT_EQ(Mot(u'.', kInfoClassePonctuation), 0x5709);
    EXPECT_EQ(Mot(u'\'', kInfoClassePonctuation), 0x9301);
    EXPECT_EQ(Mot(u'-', kInfoClassePonctuation), 0x2280);

    // Les blancs, et eux seuls parmi ces unités, portent le bit blanc du mot 7.
    for (char16_t c : std::u16string(u" \t\n\r\u00A0\u2009\u202F\u3000\u2028"))
        EXPECT_TRUE(Mot(c, kInfoClassePonctuation) & kPoncBlanc) << std::hex << int(c);
    for (char16_t c : std::u16string(u"a.-'\u200B"))
        EXPECT_FALSE(Mot(c, kInfoClassePonctuation) & kPoncBlanc) << std::hex << int(c);
    // Le mot 8 dit dans quels codages à un octet une unité s'écrit.
    std::uint16_t const codages = kPropMacRoman | kPropLatin9 | kPropWinLatin1 | kPropDOS;
    EXPECT_EQ(Mot(u'é', kInfoProprietes) & codages, codages);
    EXPECT_EQ(Mot(u'€', kInfoProprietes) & codages, kPropMacRoman | kPropLatin9 | kPropWinLatin1);
    EXPECT_EQ(Mot(u'²', kInfoProprietes) & codages, kPropLatin9 | kPropWinLatin1 | kPropDOS);
    EXPECT_EQ(Mot(u'Ω', kInfoProprietes) & codages, kPropMacRoman);

    for (char16_t c = 0; c < 0x3000; ++c) {
        bool finDeLigne = (c >= 0x0A && c <= 0x0E) || c == 0x11 || c == 0x2028 || c == 0x2029;
        EXPECT_EQ(bool(Mot(c, kInfoClassePonctuation) & kPoncFinDeLigne), finDeLigne)
            << std::hex << int(c);
    }
}

TEST(InfoUniCaractere, CasseEtLettreDeBase)
{
    EXPECT_EQ(Mot(u'a', kInfoMajuscule), u'A');
    EXPECT_EQ(Mot(u'é', kInfoMajuscule), u'É');
    EXPECT_EQ(Mot(u'ω', kInfoMajuscule), u'Ω');
    EXPECT_EQ(Mot(u'Ω', kInfoMinuscule), u'Ω');   // Ω n'a pas de minuscule
    EXPECT_EQ(Mot(u'µ', kInfoMajuscule), u'µ');   // ni µ ni ı de majuscule
    EXPECT_EQ(Mot(u'ı', kInfoMajuscule), u'ı');
    EXPECT_EQ(Mot(u'É', kInfoMinuscule), u'é');
    EXPECT_EQ(Mot(u'a', kInfoCasseInversee), u'A');
    EXPECT_EQ(Mot(u'A', kInfoCasseInversee), u'a');
    EXPECT_EQ(Mot(u'\t', kInfoCasseInversee), u'\t');
    for (char16_t c = 0; c < 0x20; ++c)
        EXPECT_EQ(Mot(c, kInfoMinuscule), u' ');
    EXPECT_EQ(Mot(u'\u00A0', kInfoMinuscule), u' ');

    EXPECT_EQ(Mot(u'é', kInfoSansAccent), u'e');
    EXPECT_EQ(Mot(u'Ç', kInfoSansAccent), u'C');
    EXPECT_EQ(Mot(u'\u00A0', kInfoSansAccent), u' ');
    EXPECT_EQ(Mot(u'½', kInfoSansAccent), u'1');
    EXPECT_EQ(Mot(u'İ', kInfoSansAccent), u'I');
    EXPECT_EQ(Mot(u'Ǖ', kInfoSansAccent), u'Ü');   // un accent à la fois
    EXPECT_EQ(Mot(u'Ü', kInfoSansAccent), u'U');
    for (char16_t c : std::u16string(u"ª¹µ"))
        EXPECT_EQ(Mot(c, kInfoSansAccent), c);

    EXPECT_EQ(Mot(u'\u0130', kInfoMarques), kMarqueMajusculeAccentuee);
    EXPECT_EQ(Mot(u'\u00A0', kInfoMarques), kMarqueInsecable);
    EXPECT_EQ(Mot(u'e', kInfoMarques), 0);
}

TEST(InfoUniCaractere, ReplisTypographiques)
{
    EXPECT_EQ(NbReplis(kInfoTypographie), 50u);
    EXPECT_EQ(NbReplis(kInfoEspaces), 24u);
    EXPECT_EQ(Mot(u'\u2019', kInfoTypographie), u'\'');
    EXPECT_EQ(Mot(u'\u2018', kInfoTypographie), u'\'');
    EXPECT_EQ(Mot(u'`', kInfoTypographie), u'\'');
    EXPECT_EQ(Mot(u'´', kInfoTypographie), u'\'');
    EXPECT_EQ(Mot(u'\u2014', kInfoTypographie), u'-');
    EXPECT_EQ(Mot(u'\u2212', kInfoTypographie), u'-');
    EXPECT_EQ(Mot(u'\u202F', kInfoTypographie), u' ');
    EXPECT_EQ(Mot(u'\u2014', kInfoEspaces), u'\u2014');
    // Le repli des espaces est celui du mot 4, restreint aux blancs.
    for (unsigned long c = 0; c < kNbUnitesUTF16; ++c) {
        if (gInfoUniCaractere[c][kInfoEspaces] != c) {
            EXPECT_EQ(gInfoUniCaractere[c][kInfoTypographie], u' ');
        }
    }
}

TEST(InfoUniCaractere, LigaturesEtEnsembles)
{
    ASSERT_EQ(UniCaractere::gNbInfosLigature, 5u);
    std::set<char16_t> ligatures;
    std::u16string expansions;
    for (unsigned long i = 0; i < UniCaractere::gNbInfosLigature; ++i) {
        auto const& info = UniCaractere::gInfosLigature[i];
        ligatures.insert(info.ligature);
        expansions += info.ligature;
        expansions += std::u16string(info.lettres, 2) + u'|';
        EXPECT_EQ(info.lettres[2], 0);
    }
    EXPECT_EQ(expansions, u"ŒOE|œoe|ÆAE|æae|ßsz|");
    for (unsigned long c = 0; c < kNbUnitesUTF16; ++c)
        EXPECT_EQ(bool(gInfoUniCaractere[c][kInfoMarques] & kMarqueLigature),
                  ligatures.count(char16_t(c)) == 1);

    ASSERT_EQ(Caractere::gNbInfosLigature, 4u);
    std::string mac;
    for (unsigned long i = 0; i < Caractere::gNbInfosLigature; ++i)
        mac += std::string(1, Caractere::gInfosLigature[i].ligature)
               + Caractere::gInfosLigature[i].lettres;
    EXPECT_EQ(mac, "\xCEOE\xCFoe\xAE" "AE\xBE" "ae");

    std::u16string const attendus[kNbEnsemblesTypographiques] = {
        u"\u0085\u2028\u2029",
        u"\u1680\u180E\u2000\u2001\u2002\u2003\u2004\u2005\u2006\u2008\u200A\u205F\u3000",
        u"\u2007\u2009\u202F",
        u"\u2010\u2011\u058A\u05BE\u1806\u2E17\u30FB\uFE63\uFF0D\uFF65",
        u"\u2014\u2015\u2053\u301C\u3030\u30A0\uFE31\uFE58",
        u"\u2012\u2013\u2212\uFE32",
    };
    for (unsigned long i = 0; i < kNbEnsemblesTypographiques; ++i)
        EXPECT_EQ(Membres(UniCaractere::sCarsARemplacer[i], UniCaractere::sNbCarsARemplacer[i]),
                  attendus[i]);
    EXPECT_EQ(std::u16string(UniChaine::sCarsCanoniques, kNbEnsemblesTypographiques),
              u"\n \u00A0-\u2014\u2013");
    EXPECT_EQ(Membres(UniCaractere::sSymbolesLatin1NonMac, 7), u"²³¹¼½¾×");
}

TEST(InfoUniCaractere, ListesDEquivalence)
{
    for (unsigned long i = 1; i < kNbInfoExpansionUniCaractere; ++i)
        ASSERT_LT(gInfoExpansionUniCaractere[i - 1].car, gInfoExpansionUniCaractere[i].car);
    EXPECT_EQ(gListesCaracteresInfoExpansion[kTailleListesCaracteresInfoExpansion - 1], 0);

    ASSERT_NE(Equivalences(u'A'), nullptr);
    EXPECT_EQ(Liste(Equivalences(u'A')->accents), u"ÀÁÂÃÄÅĀĂĄǍȀȂȦᴬḀẠẢＡ");
    EXPECT_EQ(Liste(Equivalences(u'a')->casses), u"A");
    EXPECT_EQ(Liste(Equivalences(u'Ü')->accents), u"ǕǗǙǛ");
    EXPECT_EQ(Liste(Equivalences(u'ω')->casses), u"Ω\u2126");
    EXPECT_EQ(Equivalences(u'µ'), nullptr);

    // Toute variante accentuée a pour lettre de base l'unité de sa fiche.
    for (unsigned long i = 0; i < kNbInfoExpansionUniCaractere; ++i) {
        auto const& fiche = gInfoExpansionUniCaractere[i];
        EXPECT_TRUE(fiche.accents || fiche.casses);
        for (char16_t v : Liste(fiche.accents))
            ASSERT_EQ(Mot(v, kInfoSansAccent), fiche.car);
    }
}

// Écart à ICU (même version d'Unicode) : seules les dérogations voulues diffèrent.
TEST(InfoUniCaractere, CommeICU_SaufDerogations)
{
    std::set<unsigned long> ecartsMajuscule, ecartsMinuscule;
    for (unsigned long c = 0; c < kNbUnitesUTF16; ++c) {
        UChar32 u = UChar32(c);
        if (gInfoUniCaractere[c][kInfoMajuscule] != u_toupper(u))
            ecartsMajuscule.insert(c);
        if (gInfoUniCaractere[c][kInfoMinuscule] != u_tolower(u))
            ecartsMinuscule.insert(c);
        std::uint16_t classe = gInfoUniCaractere[c][kInfoClasseLettre];
        ASSERT_EQ(bool(classe & kCarMajuscule), u_charType(u) == U_UPPERCASE_LETTER) << c;
        ASSERT_EQ(bool(classe & kCarMinuscule), u_charType(u) == U_LOWERCASE_LETTER) << c;
        ASSERT_EQ(bool(classe & kCarChiffre), u_charType(u) == U_DECIMAL_DIGIT_NUMBER) << c;
        ASSERT_EQ(bool(classe & kCarBlanc), bool(u_hasBinaryProperty(u, UCHAR_WHITE_SPACE))) << c;
    }
    EXPECT_EQ(ecartsMajuscule, (std::set<unsigned long>{0x00B5, 0x0131}));
    std::set<unsigned long> attendus{0x00A0, 0x03A9};
    for (unsigned long c = 0; c < 0x20; ++c)
        attendus.insert(c);
    EXPECT_EQ(ecartsMinuscule, attendus);
}
