#include <gtest/gtest.h>
#include <unicode/ucnv.h>

#include <set>

#include "noyau/chaines/detail/TablesCodages.h"

namespace {

// Les octets dont la table diffère du convertisseur ICU du même codage.
std::set<int> Ecarts(char16_t const* table, char const* nomICU)
{
    UErrorCode erreur = U_ZERO_ERROR;
    UConverter* icu = ucnv_open(nomICU, &erreur);
    EXPECT_TRUE(U_SUCCESS(erreur)) << nomICU;
    std::set<int> ecarts;
    for (int octet = 0; octet < 256; ++octet) {
        char source = char(octet);
        UChar cible[4] = {};
        erreur = U_ZERO_ERROR;
        int32_t n = ucnv_toUChars(icu, cible, 4, &source, 1, &erreur);
        if (U_FAILURE(erreur) || n != 1 || cible[0] != table[octet])
            ecarts.insert(octet);
    }
    ucnv_close(icu);
    return ecarts;
}

}  // namespace

TEST(TablesCodages, CommeICU)
{
    using namespace sdd::detail;
    EXPECT_EQ(Ecarts(gTableMacRoman, "macintosh"), std::set<int>{});
    EXPECT_EQ(Ecarts(gTableLatin9, "ISO-8859-15"), std::set<int>{});
    EXPECT_EQ(Ecarts(gTableWinLatin1, "windows-1252"), (std::set<int>{0x81, 0x8D, 0x8F, 0x90, 0x9D}));
    // La table d'ICU échange trois caractères de commande ; la nôtre les garde à leur place.
    EXPECT_EQ(Ecarts(gTableDOS, "ibm-850"), (std::set<int>{0x1A, 0x1C, 0x7F}));

    for (int octet : {0x81, 0x8D, 0x8F, 0x90, 0x9D})
        EXPECT_EQ(gTableWinLatin1[octet], u'?');
    EXPECT_EQ(gTableWinLatin1[0x80], u'€');
    EXPECT_EQ(gTableMacRoman[0xDB], u'€');
    EXPECT_EQ(gTableMacRoman[0x8E], u'é');
    EXPECT_EQ(gTableLatin9[0xBD], u'œ');
    EXPECT_EQ(gTableDOS[0x82], u'é');
    for (int octet = 0; octet < 0x80; ++octet)
        EXPECT_EQ(gTableMacRoman[octet], octet);
}
