#include "noyau/algorithmes/ExpressionReguliere.h"
#include "noyau/chaines/ChaineN.h"
#include "noyau/chaines/InfoUniCaractere.h"
#include "noyau/chaines/UniChaine.h"

#include <QString>
#include <gtest/gtest.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <charconv>
#include <random>
#include <string>

using sdd::ChaineN;
using sdd::exceptions::IndexHorsBorne;

namespace {

std::u16string U16(ChaineN const& c)
{
    return std::u16string(c.PreteUniCString() ? c.PreteUniCString() : u"", c.Longueur());
}

std::u16string TexteAuHasard(std::mt19937& hasard, std::size_t longueurMax)
{
    // Beaucoup d'ASCII et de latin, un peu de tout le plan de base (demi-codets compris).
    std::u16string texte(hasard() % (longueurMax + 1), u' ');
    for (auto& u : texte) {
        switch (hasard() % 4) {
        case 0:
            u = static_cast<char16_t>(0x20 + hasard() % 0x5F);
            break;
        case 1:
            u = static_cast<char16_t>(0xA0 + hasard() % 0x1E0);
            break;
        case 2:
            u = static_cast<char16_t>(u"  \t\u00A0\u2019œŒæÆß"[hasard() % 11]);
            break;
        default:
            u = static_cast<char16_t>(hasard() % 0x10000);
            break;
        }
    }
    return texte;
}

std::u16string ParICU(std::string const& octets)
{
    std::u16string sortie(octets.size() + 1, u'\0');
    int32_t longueur = 0;
    UErrorCode erreur = U_ZERO_ERROR;
    u_strFromUTF8WithSub(sortie.data(), static_cast<int32_t>(sortie.size()), &longueur,
                         octets.data(), static_cast<int32_t>(octets.size()), 0xFFFD, nullptr,
                         &erreur);
    EXPECT_TRUE(U_SUCCESS(erreur));
    sortie.resize(longueur);
    return sortie;
}

} // namespace

TEST(ChaineN, VideEtPartage)
{
    ChaineN const vide;
    EXPECT_EQ(vide.Longueur(), 0u);
    EXPECT_TRUE(vide.EstVide());
    EXPECT_EQ(vide.PreteUniCString(), nullptr);
    EXPECT_EQ(vide.hash(), 0u);
    EXPECT_EQ(vide, sdd::kChaineNNulle);
    EXPECT_EQ(vide.Compare(ChaineN(u"")), 0);
    EXPECT_LT(vide, ChaineN(u"a"));

    ChaineN a(u"abc");
    ChaineN b(a);
    EXPECT_EQ(a.PreteUniCString(), b.PreteUniCString()); // une copie partage
    b.MetsCarAIndex(u'x', 0);
    EXPECT_NE(a.PreteUniCString(), b.PreteUniCString()); // une écriture sépare
    EXPECT_EQ(U16(a), u"abc");
    EXPECT_EQ(U16(b), u"xbc");
    char16_t const* avant = b.PreteUniCString();
    b.MetsCarAIndex(u'y', 1).AjouteFin(u'!');
    EXPECT_EQ(b.PreteUniCString(), avant); // le seul propriétaire ne copie pas
    EXPECT_EQ(U16(b), u"xyc!");

    ChaineN deplacee(std::move(b));
    EXPECT_TRUE(b.EstVide());
    EXPECT_EQ(U16(deplacee), u"xyc!");
    EXPECT_EQ(ChaineN(u"ab").hash(), 0x672u);
}

TEST(ChaineN, Croissance)
{
    // Depuis rien, pas de 2c + 1 (1, 3, 7, 15), plus l'unité que donne l'arrondi du bloc
    // à 4 octets.
    for (auto [longueur, capacite] : {std::pair{1, 2}, {2, 4}, {4, 8}, {8, 16}, {16, 32}}) {
        EXPECT_EQ(ChaineN().AjouteFin(u'a', longueur).Capacite(), capacite);
    }
    // Unité par unité, la croissance part de la capacité arrondie.
    ChaineN c;
    std::vector<unsigned long> capacites;
    for (int i = 0; i < 8; ++i) {
        c.AjouteFin(u'a');
        capacites.push_back(c.Capacite());
    }
    EXPECT_EQ(capacites, (std::vector<unsigned long>{2, 2, 6, 6, 6, 6, 14, 14}));
}

TEST(ChaineN, Emprunt)
{
    static char16_t const statique[] = u"prêté";
    ChaineN const empruntee(statique, ChaineN::kJusquAuZero, true);
    EXPECT_EQ(empruntee.PreteUniCString(), statique);
    EXPECT_EQ(empruntee.Capacite(), 0u);
    ChaineN copie(empruntee);
    copie.AjouteFin(u'e');
    EXPECT_EQ(U16(copie), u"prêtée");
    EXPECT_EQ(empruntee.PreteUniCString(), statique);
    EXPECT_EQ(U16(empruntee), u"prêté");
    // Une tête d'un tableau plus long n'est pas suivie d'un zéro : elle est copiée.
    ChaineN const tete(statique, 3, true);
    EXPECT_EQ(U16(tete), u"prê");
    EXPECT_NE(tete.PreteUniCString(), statique);
    EXPECT_EQ(tete.PreteUniCString()[3], u'\0');
}

TEST(ChaineN, EditionsCommeStdU16string)
{
    std::mt19937 hasard(7);
    ChaineN c;
    std::u16string modele;
    for (int i = 0; i < 20000; ++i) {
        std::u16string const morceau = TexteAuHasard(hasard, 5);
        unsigned long const pos = hasard() % (modele.size() + 2);
        unsigned long const n = hasard() % 4;
        ChaineN const partagee(c); // chaque écriture doit laisser la copie intacte
        std::u16string const avant = modele;
        bool const valide = pos <= modele.size() && n <= modele.size() - pos;
        try {
            switch (hasard() % 6) {
            case 0:
                c.Remplace(pos, n, ChaineN(morceau.data(), morceau.size()));
                if (valide)
                    modele.replace(pos, n, morceau);
                break;
            case 1:
                c.EnleveIntervalle(pos, n);
                if (valide)
                    modele.erase(pos, n);
                break;
            case 2:
                c.AjouteDebut(ChaineN(morceau.data(), morceau.size()));
                modele.insert(0, morceau);
                break;
            case 3:
                c.AjouteFin(c);
                modele += modele;
                break;
            case 4:
                c.EnleveFin(n);
                if (n <= modele.size())
                    modele.resize(modele.size() - n);
                break;
            default:
                c.AjouteFin(morceau.data(), morceau.size());
                modele += morceau;
                break;
            }
        } catch (IndexHorsBorne const&) {
        }
        if (modele.size() > 200) {
            c.SousChaine(modele.size() - 100);
            modele.erase(0, modele.size() - 100);
        }
        ASSERT_EQ(U16(c), modele);
        ASSERT_EQ(U16(partagee), avant);
        if (c.PreteUniCString() != nullptr) {
            ASSERT_EQ(c.PreteUniCString()[c.Longueur()], u'\0');
        }
    }
}

TEST(ChaineN, IndexVerifiesAvantToutChangement)
{
    ChaineN c(u"abc");
    try {
        c.Remplace(5, 1, u'x');
        FAIL();
    } catch (IndexHorsBorne const& e) {
        EXPECT_EQ(QString(e.Explication()), "index=5 min=0 max=3");
    }
    EXPECT_THROW(c.Remplace(1, 3, u'x'), IndexHorsBorne);
    EXPECT_THROW(c.EnleveFin(4), IndexHorsBorne);
    EXPECT_THROW(c.RemplaceDepuisFin(4, 1, u'x'), IndexHorsBorne);
    EXPECT_THROW(c[3], IndexHorsBorne);
    EXPECT_THROW(c.MetsCarAIndex(u'x', 3), IndexHorsBorne);
    EXPECT_THROW(c.SousChaine(4), IndexHorsBorne);
    EXPECT_EQ(U16(c), u"abc");
    // Variante const : la chaîne reste telle quelle.
    ChaineN const constante(u"abcdef");
    EXPECT_EQ(U16(constante.EnleveDepuisFin(3, 2)), u"abcf");
    EXPECT_EQ(U16(constante.RemplaceFin(2, ChaineN(u"XYZ"))), u"abcdXYZ");
    EXPECT_EQ(U16(constante.SousChaine(2, 2)), u"cd");
    EXPECT_EQ(U16(constante), u"abcdef");
}

TEST(ChaineN, CodagesAUnOctet)
{
    std::string tous(256, '\0');
    for (int i = 0; i < 256; ++i) {
        tous[i] = static_cast<char>(i);
    }
    for (auto codage : {ChaineN::kMacRoman, ChaineN::kLatin9, ChaineN::kWinLatin1, ChaineN::kDOS}) {
        ChaineN const c(tous, codage);
        ASSERT_EQ(c.Longueur(), 256u);
        std::string attendu = tous;
        if (codage == ChaineN::kWinLatin1) {
            for (unsigned char libre : {0x81, 0x8D, 0x8F, 0x90, 0x9D}) {
                EXPECT_EQ(c[libre], u'?');
                attendu[libre] = '?';
            }
        }
        EXPECT_EQ(c.DonneStdString(codage), attendu) << codage;
        EXPECT_EQ(ChaineN(c.DonneStdString(ChaineN::kUTF8), ChaineN::kUTF8), c);
    }
    EXPECT_EQ(ChaineN(u"€").DonneStdString(ChaineN::kLatin9), "\xA4");
    EXPECT_EQ(ChaineN(u"中").DonneStdString(ChaineN::kLatin9), "?");
    EXPECT_EQ(ChaineN(u"½×").DonneStdString(ChaineN::kMacRoman), "\xD7\xD7"); // ◊
    EXPECT_EQ(ChaineN::DonneUniCarPourCarMacRoman('\x8E'), u'é');
    EXPECT_EQ(ChaineN::DonneCarMacRomanPourUniCar(u'é'), '\x8E');
    ChaineN::LibereConvertisseurPourCodage();
    EXPECT_EQ(ChaineN::DonneCarMacRomanPourUniCar(u'é'), '\x8E'); // recréé au besoin
}

TEST(ChaineN, UTF8CommeICU)
{
    std::mt19937 hasard(3);
    for (int i = 0; i < 20000; ++i) {
        std::string octets(hasard() % 12, '\0');
        for (auto& o : octets) {
            // Octets de tête, de suite et ASCII, en proportions qui forment des séquences.
            static constexpr unsigned char kChoix[] = {0x41, 0x80, 0xBF, 0x9F, 0xA0, 0x90,
                                                       0x8F, 0xC2, 0xC0, 0xDF, 0xE0, 0xED,
                                                       0xEF, 0xF0, 0xF4, 0xF5, 0xFF};
            o = static_cast<char>(hasard() % 3 == 0 ? hasard() % 256
                                                    : kChoix[hasard() % sizeof kChoix]);
        }
        ASSERT_EQ(U16(ChaineN(octets, ChaineN::kUTF8)), ParICU(octets)) << i;
    }
    // Un texte valide fait l'aller-retour, comme chez Qt.
    for (int i = 0; i < 5000; ++i) {
        std::u16string texte = TexteAuHasard(hasard, 40);
        QString const q = QString::fromUtf16(texte.data(), static_cast<int>(texte.size()));
        ChaineN const c(texte.data(), texte.size());
        if (q.isValidUtf16()) {
            ASSERT_EQ(c.DonneStdString(ChaineN::kUTF8), q.toUtf8().toStdString());
            ASSERT_EQ(ChaineN(c.DonneStdString(ChaineN::kUTF8), ChaineN::kUTF8), c);
        }
    }
    // Demi-codet isolé : forme en trois octets de U+FFFD ; une paire donne quatre octets.
    char16_t const isole[] = {u'a', 0xD800, u'b', 0xDC00, 0};
    EXPECT_EQ(ChaineN(isole).DonneStdString(ChaineN::kUTF8), "a\xEF\xBF\xBD"
                                                             "b\xEF\xBF\xBD");
    char16_t const paire[] = {0xD83D, 0xDE00, 0};
    EXPECT_EQ(ChaineN(paire).DonneStdString(ChaineN::kUTF8), "\xF0\x9F\x98\x80");
    // Jamais de lecture au-delà de la longueur donnée.
    char const tronque[] = "\xE2\x82\xAC";
    EXPECT_EQ(U16(ChaineN(tronque, ChaineN::kUTF8, 2)), u"\uFFFD");
}

TEST(ChaineN, FormesEnOctets)
{
    ChaineN const c(u"aé€");
    char tampon[5];
    // Pas de caractère coupé : € ne tient pas dans les 4 octets utiles.
    EXPECT_STREQ(c.PreteCString(ChaineN::kUTF8, sizeof tampon, tampon), "a\xC3\xA9");
    EXPECT_EQ(c.PreteCString(ChaineN::kUTF8, 0, tampon), nullptr);
    EXPECT_STREQ(c.PreteUTF8(), "a\xC3\xA9\xE2\x82\xAC");
    std::unique_ptr<char[]> const cree(c.CreeCString(ChaineN::kWinLatin1));
    EXPECT_STREQ(cree.get(), "a\xE9\x80");
    EXPECT_EQ(c.DonneStdString(ChaineN::kUTF16LE), std::string("a\0\xE9\0\xAC\x20", 6));
    EXPECT_EQ(c.DonneStdString(ChaineN::kUTF16BE), std::string("\0a\0\xE9\x20\xAC", 6));
    EXPECT_EQ(ChaineN(c.DonneStdString(ChaineN::kUTF16BE), ChaineN::kUTF16BE), c);
    char16_t const paire[] = {0xD83D, 0xDE00, 0};
    char petit[4] = {1, 1, 1, 1};
    ChaineN(paire).PreteCString(ChaineN::kUTF16LE, sizeof petit, petit);
    EXPECT_EQ(std::string(petit, 2), std::string(2, '\0')); // la paire ne se coupe pas
    EXPECT_EQ(U16(ChaineN(std::string("a\0b", 3), ChaineN::kUTF16LE)), u"a\uFFFD");
}

TEST(ChaineN, Nombres)
{
    EXPECT_EQ(U16(ChaineN::DepuisNombre(-5, 10, 4, true, false)), u"00-5");
    EXPECT_EQ(U16(ChaineN::DepuisNombre(-5, 10, 4, false, true)), u"-5  ");
    EXPECT_EQ(U16(ChaineN::DepuisNombre(255, 16, 0, false, false)), u"FF");
    EXPECT_EQ(U16(ChaineN::DepuisNombre(123456, 10, 3)), u"123456");
    EXPECT_EQ(U16(ChaineN::DepuisNombre(std::numeric_limits<long long>::min())),
              u"-9223372036854775808");
    EXPECT_THROW(ChaineN::DepuisNombre(1, 1), IndexHorsBorne);
    try {
        ChaineN::DepuisNombre(1u, 17);
    } catch (IndexHorsBorne const& e) {
        EXPECT_EQ(QString(e.Explication()), "index=17 min=2 max=16");
    }
    std::mt19937_64 hasard(5);
    for (int i = 0; i < 2000; ++i) {
        auto const valeur = static_cast<long long>(hasard());
        int const base = 2 + static_cast<int>(hasard() % 15);
        char attendu[80];
        *std::to_chars(attendu, attendu + 80, valeur, base).ptr = '\0';
        std::string majuscules(attendu);
        for (auto& c : majuscules)
            c = static_cast<char>(std::toupper(c));
        ASSERT_EQ(ChaineN::DepuisNombre(valeur, base).DonneStdString(), majuscules);
    }
    EXPECT_EQ(U16(ChaineN::DepuisNombre(3.14159, 2)), u"3.14");
    EXPECT_EQ(ChaineN(u" \t-42x").DonneEntier(), -42);
    EXPECT_EQ(ChaineN(u"+7").DonneEntier(), 7);
    EXPECT_EQ(ChaineN(u"abc").DonneEntier(), 0);
    EXPECT_DOUBLE_EQ(ChaineN(u" 2.5e3").DonneDouble(), 2500.0);
}

TEST(ChaineN, Pourcent)
{
    ChaineN const vide;
    EXPECT_EQ(U16(ChaineN(u"é").DonneChaineEchappayPourcent(vide, vide)), u"%C3%A9");
    EXPECT_EQ(U16(ChaineN(u"a b/c").DonneChaineEchappayPourcent(vide, vide)), u"a%20b/c");
    EXPECT_EQ(U16(ChaineN(u"a b/c").DonneChaineEchappayPourcent(ChaineN(u" "), ChaineN(u"/"))),
              u"a b%2Fc");
    EXPECT_EQ(U16(ChaineN(u"%41%e9").DonneChaineDesechappeePourcent()), u"A\uFFFD");
    EXPECT_EQ(U16(ChaineN(u"%41%e").DonneChaineDesechappeePourcent()), u"A%e");
    EXPECT_EQ(U16(ChaineN(u"%zz").DonneChaineDesechappeePourcent()), std::u16string(1, u'\0'));
    EXPECT_TRUE(vide.DonneChaineEchappayPourcent(vide, vide).EstVide());
}

TEST(ChaineN, Blancs)
{
    EXPECT_EQ(U16(ChaineN(u"a  b").ConsolideBlancs()), u"a b");
    EXPECT_EQ(U16(ChaineN(u"a\tb").ConsolideBlancs()), u"a b");
    EXPECT_EQ(U16(ChaineN(u"a\t").ConsolideBlancs()), u"a\t");
    EXPECT_EQ(U16(ChaineN(u"a \u00A0\u2009 b\n\nc").ConsolideBlancs()), u"a b c");
    ChaineN const inchangee(u"a b c");
    ChaineN copie(inchangee);
    copie.ConsolideBlancs();
    EXPECT_EQ(copie.PreteUniCString(), inchangee.PreteUniCString());
    EXPECT_EQ(U16(ChaineN(u" \t a b \u00A0").NettoieBlancs()), u"a b");
    EXPECT_EQ(U16(ChaineN(u"a  \t\tb\u00A0c").ConsolideBlancsMemeTypes()), u"a \tb\u00A0c");
}

TEST(ChaineN, TransformationsSelonLaTable)
{
    std::mt19937 hasard(13);
    for (int i = 0; i < 2000; ++i) {
        std::u16string const texte = TexteAuHasard(hasard, 30);
        ChaineN const c(texte.data(), texte.size());
        std::u16string const maj = U16(c.Majusculise());
        std::u16string const min = U16(c.Minusculise());
        std::u16string const sans = U16(c.MinusculiseSansAccent());
        // La colonne minuscule replie commandes et insécable sur l'espace : une
        // transformation les garde. Les accents partent tous, un à la fois dans la colonne.
        auto const minuscule = [](char16_t u) {
            char16_t const m = gInfoUniCaractere[u][kInfoMinuscule];
            return m == u' ' ? u : m;
        };
        auto const sansAccent = [](char16_t u) {
            while (!(gInfoUniCaractere[u][kInfoClasseLettre] & kCarBlanc) &&
                   gInfoUniCaractere[u][kInfoSansAccent] != u) {
                u = gInfoUniCaractere[u][kInfoSansAccent];
            }
            return u;
        };
        for (std::size_t k = 0; k < texte.size(); ++k) {
            ASSERT_EQ(maj[k], gInfoUniCaractere[texte[k]][kInfoMajuscule]);
            ASSERT_EQ(min[k], minuscule(texte[k]));
            ASSERT_EQ(sans[k], minuscule(sansAccent(texte[k])));
        }
        ASSERT_EQ(c.Inverse().Inverse(), c);
        ASSERT_EQ(c.Deligature().Longueur(),
                  texte.size() + std::count_if(texte.begin(), texte.end(), [](char16_t u) {
                      return gInfoUniCaractere[u][kInfoMarques] & kMarqueLigature;
                  }));
    }
    EXPECT_EQ(U16(ChaineN(u"Œuvre, cœur, Straße").Deligature()), u"OEuvre, coeur, Strasze");
    EXPECT_EQ(U16(ChaineN(u"OEuvre, coeur, jazz").Ligature()), u"Œuvre, cœur, jazz");
    EXPECT_EQ(U16(ChaineN(u"Été").Desaccentue()), u"Ete");
    EXPECT_EQ(U16(ChaineN(u"ÉTÉ").MinusculisePremiereLettre().MinusculiseDeuxiemeLettre()), u"étÉ");
    EXPECT_EQ(U16(ChaineN(u"l'a`b’").NormaliseApostrophe(u'\u2019')), u"l’a’b’");
    EXPECT_EQ(U16(ChaineN(u"a1-b é!").EnleveCarNonAlpha()), u"abé");
    char16_t const paire[] = {u'a', 0xD83D, 0xDE00, u'b', 0};
    char16_t const inverse[] = {u'b', 0xD83D, 0xDE00, u'a', 0};
    EXPECT_EQ(ChaineN(paire).Inverse(), ChaineN(inverse));
    EXPECT_TRUE(ChaineN(u"abc1").EstToutEnMinuscules());
    EXPECT_TRUE(ChaineN(u"ÉTÉ").EstToutEnMajuscules());
    EXPECT_TRUE(ChaineN(u"CDs").EstToutEnMajusculesSaufDerniereLettre());
    EXPECT_FALSE(ChaineN(u"CdS").EstToutEnMajusculesSaufDerniereLettre());
    EXPECT_TRUE(ChaineN(u"Été").CommenceParMajuscule());
    EXPECT_FALSE(ChaineN(u"été").ContientMajuscule());
}

TEST(ChaineN, RecherchesCommeStdU16string)
{
    std::mt19937 hasard(17);
    for (int i = 0; i < 5000; ++i) {
        std::u16string texte(hasard() % 30, u'a');
        for (auto& u : texte)
            u = u"abc"[hasard() % 3];
        std::u16string motif(hasard() % 4, u'a');
        for (auto& u : motif)
            u = u"abc"[hasard() % 3];
        ChaineN const t(texte.data(), texte.size());
        ChaineN const m(motif.data(), motif.size());
        unsigned long const depuis = hasard() % (texte.size() + 2);
        unsigned long pos = 0;
        if (depuis > texte.size()) {
            ASSERT_THROW(t.Contient(m, &pos, depuis), IndexHorsBorne);
            continue;
        }
        auto const attendu = texte.find(motif, depuis);
        ASSERT_EQ(t.Contient(m, &pos, depuis), attendu != std::u16string::npos);
        if (attendu != std::u16string::npos) {
            ASSERT_EQ(pos, attendu);
        }
        // Avec tolérance, sur un texte en capitales.
        ChaineN const capitales = t.Majusculise();
        ASSERT_EQ(capitales.Contient(m, &pos, depuis, ChaineN::MalgrayCasse),
                  attendu != std::u16string::npos);
        if (attendu != std::u16string::npos) {
            ASSERT_EQ(pos, attendu);
        }
        auto const dernier = texte.rfind(motif);
        ASSERT_EQ(t.TrouveDernier(m, &pos), dernier != std::u16string::npos);
        if (dernier != std::u16string::npos) {
            ASSERT_EQ(pos, dernier);
        }
        std::u16string remplace = texte;
        if (!motif.empty()) {
            for (std::size_t p = 0; (p = remplace.find(motif, p)) != std::u16string::npos; p += 2)
                remplace.replace(p, motif.size(), u"XY");
        }
        ASSERT_EQ(U16(t.Remplace(m, ChaineN(u"XY"))), remplace);
        ASSERT_EQ(t.Compare(m), (texte > motif) - (texte < motif));
    }
    ChaineN const phrase(u"le chat, l'achat chat");
    unsigned long pos = 0;
    EXPECT_TRUE(phrase.ContientMotEntier(ChaineN(u"chat"), &pos));
    EXPECT_EQ(pos, 3u);
    EXPECT_TRUE(phrase.ContientMotEntier(ChaineN(u"chat"), &pos, 4));
    EXPECT_EQ(pos, 17u);
    EXPECT_EQ(U16(phrase.RemplaceMotEntier(ChaineN(u"chat"), ChaineN(u"chien"))),
              u"le chien, l'achat chien");
    EXPECT_TRUE(phrase.ContientUnCarDe(ChaineN(u",'"), &pos));
    EXPECT_EQ(pos, 7u);
    EXPECT_TRUE(phrase.TrouveUnCarDeVersLArriere(ChaineN(u",'"), &pos));
    EXPECT_EQ(pos, 10u);
    EXPECT_EQ(ChaineN(u"été").LongueurPrefixeCommun(ChaineN(u"ETAT"), ChaineN::MalgrayAccents |
                                                                          ChaineN::MalgrayCasse),
              2u);
    EXPECT_EQ(ChaineN(u"chanté").LongueurSuffixeCommun(ChaineN(u"TE"), ChaineN::MalgrayAccents |
                                                                           ChaineN::MalgrayCasse),
              2u);
    EXPECT_EQ(U16(ChaineN(u", ").Joindre(
                  std::vector<ChaineN>{ChaineN(u"a"), ChaineN(u"b"), ChaineN(u"c")})),
              u"a, b, c");
}

TEST(ChaineN, ExpressionsEtFormat)
{
    sdd::ListeC<ChaineN::Intervalle> trouves;
    EXPECT_TRUE(ChaineN(u"un été, deux étés").ContientRegex(ChaineN(u"été\\w*"), &trouves, 1));
    ASSERT_EQ(trouves.Taille(), 2u);
    EXPECT_EQ(trouves[0], (ChaineN::Intervalle{3, 3}));
    EXPECT_EQ(trouves[1], (ChaineN::Intervalle{13, 4}));
    EXPECT_FALSE(ChaineN(u"abc").ContientRegex(ChaineN(u"x+")));
    try {
        sdd::ExpressionReguliere mauvaise(ChaineN(u"(a"));
        FAIL();
    } catch (sdd::exceptions::Exception const& e) {
        EXPECT_EQ(QString(e.Explication()), "U_REGEX_MISMATCHED_PAREN");
    }
    std::u16string const large = u"aé€";
    ChaineN const f =
        ChaineN::Format(ChaineN(u"%d|%u|%ld|%lu|%x|%X|%s|%c|%.2f|%g|%%|%S|%5d|%-3s|"), -1, 2u, -3L,
                        4UL, 255, 255, "é", 'z', 2.5, 0.5, large.c_str(), 42, "x");
    EXPECT_EQ(U16(f), u"-1|2|-3|4|ff|FF|é|z|2.50|0.5|%|aé€|   42|x  |");
    EXPECT_EQ(U16(ChaineN(ChaineN::kUTF8, "%s=%d", "n", 3)), u"n=3");
    EXPECT_EQ(U16(ChaineN(ChaineN::kLatin9, "%s \xA4", "€")), u"€ €");

    // Les deux classes de chaînes mettent en forme et se convertissent de même.
    EXPECT_EQ(QString(UniChaine::Format(UniChaine("%S|%05.1f"), large.c_str(), -2.26)),
              QString::fromUtf8("aé€|-02.3"));
    EXPECT_EQ(QString(UniChaine(UniChaine::kUTF8, "%d%%", 7)), "7%");
    EXPECT_EQ(QString(UniChaine().sprintf(UniChaine::kMacRoman, "\x8E%c", 'x')),
              QString::fromUtf8("éx"));
    ChaineN const c(large.data(), large.size());
    EXPECT_EQ(UniChaine(c).DonneChaineN(), c);
}
