#include <gtest/gtest.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>

#include <algorithm>
#include <set>

#include "noyau/chaines/detail/DonneesNFC.h"

using sdd::detail::FicheNFC;
using sdd::detail::gFichesNFC;
using sdd::detail::gNbFichesNFC;
using sdd::detail::gNbPairesCompositionNFC;
using sdd::detail::gPairesCompositionNFC;
using sdd::detail::PaireCompositionNFC;

namespace {

// La fiche de c, ou celle qu'implique l'absence de fiche.
FicheNFC Fiche(char16_t c)
{
    auto fin = gFichesNFC + gNbFichesNFC;
    auto it = std::lower_bound(gFichesNFC, fin, c,
                               [](FicheNFC const& f, char16_t u) { return f.unite < u; });
    if (it != fin && it->unite == c)
        return *it;
    return FicheNFC{c, {c, c}, 0, 0, 'Y', {}};
}

PaireCompositionNFC const* Paire(char16_t premier, char16_t second)
{
    auto fin = gPairesCompositionNFC + gNbPairesCompositionNFC;
    auto cle = [](PaireCompositionNFC const& p) { return std::make_pair(p.premier, p.second); };
    auto it = std::lower_bound(gPairesCompositionNFC, fin, std::make_pair(premier, second),
                               [&](auto const& p, auto const& c) { return cle(p) < c; });
    return it != fin && cle(*it) == std::make_pair(premier, second) ? it : nullptr;
}

bool EstHangul(unsigned long c)
{
    return c >= 0xAC00 && c <= 0xD7A3;
}

}  // namespace

TEST(DonneesNFC, ExemplesEtOrdre)
{
    for (unsigned long i = 1; i < gNbFichesNFC; ++i)
        ASSERT_LT(gFichesNFC[i - 1].unite, gFichesNFC[i].unite);
    for (unsigned long i = 1; i < gNbPairesCompositionNFC; ++i) {
        auto const &a = gPairesCompositionNFC[i - 1], &b = gPairesCompositionNFC[i];
        ASSERT_LE(std::make_pair(a.premier, a.second), std::make_pair(b.premier, b.second));
    }

    FicheNFC e = Fiche(u'é');
    EXPECT_EQ(e.decomposition[0], u'e');
    EXPECT_EQ(e.decomposition[1], u'\u0301');
    EXPECT_EQ(e.reponseNFC, 'Y');
    EXPECT_EQ(Fiche(u'\u0301').classeCombinaison, 230u);
    EXPECT_EQ(Fiche(u'\u0301').reponseNFC, 'M');
    EXPECT_EQ(Fiche(u'\u0344').reponseNFC, 'N');
    FicheNFC hangul = Fiche(u'\uAC00');
    EXPECT_EQ(hangul.decomposition[0], u'\uAC00');
    EXPECT_EQ(hangul.decomposition[1], u'\uAC00');

    ASSERT_NE(Paire(u'A', u'\u0300'), nullptr);
    EXPECT_EQ(Paire(u'A', u'\u0300')->compose, u'À');
    EXPECT_EQ(Paire(u'A', u'\u0300')->exclue, 0);
    ASSERT_NE(Paire(u'<', u'\u0338'), nullptr);
    EXPECT_EQ(Paire(u'<', u'\u0338')->compose, u'\u226E');
    ASSERT_NE(Paire(u';', 0), nullptr);
    EXPECT_EQ(Paire(u';', 0)->compose, u'\u037E');
    EXPECT_EQ(Paire(u';', 0)->exclue, 1);
}

// Comparaison à ICU sur tout le plan de base. Seules diffèrent les syllabes hangûl,
// gardées sans décomposition, et les quelques unités qui se décomposent hors du plan.
TEST(DonneesNFC, CommeICU)
{
    UErrorCode erreur = U_ZERO_ERROR;
    auto const* nfc = icu::Normalizer2::getNFCInstance(erreur);
    ASSERT_TRUE(U_SUCCESS(erreur));

    unsigned long horsDuPlan = 0;
    for (unsigned long c = 0; c < 0x10000; ++c) {
        UChar32 u = UChar32(c);
        FicheNFC f = Fiche(char16_t(c));
        ASSERT_EQ(f.classeCombinaison, u_getCombiningClass(u)) << c;
        auto reponse = u_getIntPropertyValue(u, UCHAR_NFC_QUICK_CHECK);
        ASSERT_EQ(f.reponseNFC, "NYM"[reponse]) << c;

        icu::UnicodeString brute;
        bool decomposable = nfc->getRawDecomposition(u, brute);
        if (EstHangul(c) || (decomposable && brute.countChar32() != brute.length())) {
            horsDuPlan += !EstHangul(c);
            EXPECT_EQ(f.decomposition[0], c);
            continue;
        }
        icu::UnicodeString notre;
        if (f.decomposition[0] != c) {
            notre.append(f.decomposition[0]);
            if (f.decomposition[1] != 0)
                notre.append(f.decomposition[1]);
        }
        ASSERT_EQ(notre, decomposable ? brute : icu::UnicodeString()) << c;
    }
    EXPECT_LT(horsDuPlan, 200u);

    for (unsigned long i = 0; i < gNbPairesCompositionNFC; ++i) {
        auto const& p = gPairesCompositionNFC[i];
        if (p.second == 0)
            continue;
        UChar32 compose = nfc->composePair(p.premier, p.second);
        if (p.exclue)
            EXPECT_LT(compose, 0) << p.compose;
        else
            EXPECT_EQ(compose, p.compose);
    }
}
