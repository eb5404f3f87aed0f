#include "noyau/chaines/ChaineN.h"
#include "noyau/chaines/ConvertisseurChaineN.h"
#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/TamponMemoire.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <utility>

using sdd::ChaineN;
using sdd::TamponMemoire;

namespace {

std::string Octets(TamponMemoire const& t)
{
    return std::string(reinterpret_cast<char const*>(t.DonneDonnees()), t.DonneTaille());
}

std::u16string U16(ChaineN const& c)
{
    return std::u16string(c.PreteUniCString() ? c.PreteUniCString() : u"", c.Longueur());
}

ChaineN Relue(std::string const& octets, ChaineN::Codage codage)
{
    TamponMemoire t(1);
    t.Mets(octets.data(), static_cast<unsigned int>(octets.size()));
    t.PositionneAuDebut();
    ChaineN lue(u"avant");
    lue.Lis(t, codage);
    EXPECT_TRUE(t.EstALaFin());
    return lue;
}

} // namespace

TEST(ChaineNFlux, OctetsEcrits)
{
    ChaineN const texte(u"é\U0001F600\u2019");
    TamponMemoire t(1);
    t.Mets('#');
    EXPECT_EQ(texte.Ecris(t), 1u);
    EXPECT_EQ(Octets(t), std::string("#\xC3\xA9\xF0\x9F\x98\x80\xE2\x80\x99\0", 11));
    t.Vide();
    texte.Ecris(t, ChaineN::kUTF16LE);
    EXPECT_EQ(Octets(t), std::string("\xE9\0\x3D\xD8\x00\xDE\x19\x20\0\0", 10));
    t.Vide();
    texte.Ecris(t, ChaineN::kUTF16BE);
    EXPECT_EQ(Octets(t), std::string("\0\xE9\xD8\x3D\xDE\x00\x20\x19\0\0", 10));
    t.Vide();
    ChaineN(u"é").Ecris(t, ChaineN::kLatin9);
    EXPECT_EQ(Octets(t), std::string("\xE9\0", 2));
    t.Vide();
    ChaineN().Ecris(t);
    EXPECT_EQ(Octets(t), std::string(1, '\0'));

    // Ce qui ne se relirait pas unité pour unité est refusé avant d'écrire : U+0000, un
    // demi-codet seul en UTF-8, une unité qu'une page de code n'a pas.
    t.Vide();
    t.Mets('#');
    char16_t const avecZero[] = {u'a', 0, u'b'};
    for (auto const& [texte, codage] :
         {std::pair{ChaineN(u"a\xD800" u"b"), ChaineN::kUTF8},
          std::pair{ChaineN(u"b\xDC00"), ChaineN::kUTF8},
          std::pair{ChaineN(u"中"), ChaineN::kLatin9}, std::pair{ChaineN(u"½"), ChaineN::kMacRoman},
          std::pair{ChaineN(avecZero, 3), ChaineN::kUTF16LE}}) {
        EXPECT_THROW(texte.Ecris(t, codage), sdd::exceptions::OperationInvalide);
        EXPECT_EQ(Octets(t), "#");
    }
    // En UTF-16, un demi-codet seul passe tel quel.
    t.Vide();
    ChaineN(u"\xD800").Ecris(t, ChaineN::kUTF16LE);
    EXPECT_EQ(Octets(t), std::string("\0\xD8\0\0", 4));
    t.Vide();
    for (std::size_t avant : {1022u, 1023u, 1024u, 2047u}) {
        std::u16string long_(avant, u'x');
        long_ += u"\U0001F600";
        ChaineN const c(long_.data(), long_.size());
        t.Vide();
        c.Ecris(t);
        EXPECT_EQ(Octets(t), std::string(avant, 'x') + "\xF0\x9F\x98\x80" + std::string(1, '\0'));
    }
}

TEST(ChaineNFlux, AllerRetourDansChaqueCodage)
{
    std::mt19937 hasard(5);
    // Des caractères que chaque page de code connaît, dont les siens.
    ChaineN const francais(u"L'oeuvre « complète » d'été - Ça coûte 5 F.");
    for (int codage = 0; codage <= 6; ++codage) {
        auto const c = static_cast<ChaineN::Codage>(codage);
        SCOPED_TRACE(codage);
        TamponMemoire t(4);
        francais.Ecris(t, c);
        ChaineN(u"").Ecris(t, c);
        t.PositionneAuDebut();
        ChaineN lue, vide(u"x");
        lue.Lis(t, c);
        vide.Lis(t, c);
        EXPECT_TRUE(t.EstALaFin());
        EXPECT_TRUE(vide.EstVide());
        EXPECT_EQ(lue, francais);
        if (codage >= ChaineN::kUTF8) {
            std::u16string texte(200, u'a');
            for (char16_t& u : texte) {
                u = static_cast<char16_t>(1 + hasard() % 0xFFFF);
            }
            texte += u"\U00010437\U0010FFFF"; // paires
            ChaineN const source(texte.data(), texte.size());
            t.Vide();
            // Un demi-codet seul ne s'écrit pas en UTF-8 ; tout le reste revient tel quel.
            bool const demiSeul = ChaineN(source.DonneStdString(c), c) != source;
            if (demiSeul) {
                EXPECT_EQ(c, ChaineN::kUTF8);
                EXPECT_THROW(source.Ecris(t, c), sdd::exceptions::OperationInvalide);
                EXPECT_EQ(t.DonneTaille(), 0u);
                continue;
            }
            source.Ecris(t, c);
            t.PositionneAuDebut();
            ChaineN relue;
            relue.Lis(t, c);
            EXPECT_EQ(relue, source);
        }
    }
}

TEST(ChaineNFlux, LectureUTF8CommeVersUTF16)
{
    // Octets au hasard, riches en têtes et suites de séquences : Lis doit décoder comme le
    // convertisseur, U+FFFD par sous-partie invalide, l'octet fautif commençant la suivante.
    auto const& utf8 = sdd::ConvertisseurChaineN::DonnePourCodage(ChaineN::kUTF8);
    std::mt19937 hasard(9);
    unsigned char const choix[] = {'a',  0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0, 0xBF, 0xC0,
                                   0xC2, 0xDF, 0xE0, 0xED, 0xEF, 0xF0, 0xF4, 0xF5, 0xFF};
    for (int essai = 0; essai < 3000; ++essai) {
        std::string octets(hasard() % 12, 'a');
        for (char& o : octets) {
            o = static_cast<char>(hasard() % 2 ? choix[hasard() % sizeof choix]
                                               : 1 + hasard() % 255);
        }
        std::u16string attendu(octets.size(), u'\0');
        attendu.resize(utf8.VersUTF16(octets.data(), octets.size(), attendu.data()));
        ASSERT_EQ(U16(Relue(octets + '\0', ChaineN::kUTF8)), attendu) << essai;
    }
    EXPECT_EQ(U16(Relue(std::string("\xC3\0", 2), ChaineN::kUTF8)), u"\uFFFD");
    EXPECT_EQ(U16(Relue(std::string("\x41\x42\0\0", 4), ChaineN::kUTF16LE)), u"\u4241");
}

TEST(ChaineNFlux, FluxCoupe)
{
    // Coupé avant le zéro final, dans tous les codages : OperationInvalide, texte intact.
    for (int codage = 0; codage <= 6; ++codage) {
        auto const c = static_cast<ChaineN::Codage>(codage);
        TamponMemoire t(4);
        // Les pages de code n'ont pas U+1F600 : é, qu'elles ont toutes.
        ChaineN(c >= ChaineN::kUTF8 ? u"abc\U0001F600" : u"abcé").Ecris(t, c);
        for (unsigned int coupe = 0; coupe + 1 < t.DonneTaille(); ++coupe) {
            TamponMemoire coupee(reinterpret_cast<char*>(t.DonneDonnees()), int(coupe), false);
            ChaineN garde(u"garde");
            EXPECT_THROW(garde.Lis(coupee, c), sdd::exceptions::OperationInvalide)
                << codage << " " << coupe;
            EXPECT_EQ(U16(garde), u"garde");
        }
    }
}
