// Les deux classes de chaînes partagent leurs algorithmes : elles doivent rendre les mêmes
// textes, les mêmes positions et les mêmes refus.

#include "noyau/chaines/ChaineN.h"
#include "noyau/chaines/UniChaine.h"
#include "noyau/erreurs/Exceptions.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdio>
#include <functional>
#include <random>
#include <string>
#include <thread>
#include <vector>

using sdd::ChaineN;
using sdd::exceptions::IndexHorsBorne;

namespace {

std::u16string U16(ChaineN const& c)
{
    return std::u16string(c.PreteUniCString() ? c.PreteUniCString() : u"", c.Longueur());
}

std::u16string U16(UniChaine const& u)
{
    return std::u16string(u.PreteUniCString(), std::size_t(u.Longueur()));
}

UniChaine Uni(std::u16string const& s)
{
    return UniChaine(s.data(), int(s.size()));
}

ChaineN Cn(std::u16string const& s)
{
    return ChaineN(s.data(), s.size());
}

// Blancs de toutes sortes, lettres à accents, casses et ligatures, apostrophes, tirets, une
// paire de demi-codets : de quoi départager les deux classes.
std::u16string AuHasard(std::mt19937& gen, std::size_t longueurMax)
{
    static std::u16string const alphabet = u"  \t\n\u00A0\u2009aAeEoOéÉèœŒæÆßǅ'’`-–—.,1\U0001F600";
    std::u16string s;
    for (std::size_t n = gen() % (longueurMax + 1); n > 0; --n) {
        std::size_t const i = gen() % (alphabet.size() - 1); // pas le demi-codet bas seul
        s += alphabet[i];
        if (alphabet[i] >= 0xD800 && alphabet[i] <= 0xDBFF) {
            s += alphabet[i + 1]; // la paire reste entière
        }
    }
    return s;
}

std::string Explication(std::function<void()> const& operation)
{
    try {
        operation();
    } catch (IndexHorsBorne const& e) {
        return QString(e.Explication()).toStdString();
    }
    return "aucune exception";
}

} // namespace

TEST(AccordChaines, MemesTransformations)
{
    std::mt19937 gen(3);
    for (int essai = 0; essai < 3000; ++essai) {
        std::u16string const texte = AuHasard(gen, 12);
        ChaineN const c = Cn(texte);
        UniChaine const u = Uni(texte);
        ASSERT_EQ(U16(c.ConsolideBlancs()), U16(u.ConsolideBlancs()));
        ASSERT_EQ(U16(c.NettoieBlancs()), U16(u.NettoieBlancs()));
        ASSERT_EQ(U16(c.Majusculise()), U16(u.Majusculise()));
        ASSERT_EQ(U16(c.Minusculise()), U16(u.Minusculise()));
        ASSERT_EQ(U16(c.Desaccentue()), U16(u.DonneChaineSansAccents()));
        ASSERT_EQ(U16(c.MinusculiseSansAccent()), U16(u.DonneChaineMinusculiseSansAccents()));
        ASSERT_EQ(U16(c.MajusculisePremiereLettre()), U16(u.MajusculisePremiereLettre()));
        ASSERT_EQ(U16(c.MinusculisePremiereLettre()), U16(u.MinusculisePremiereLettre()));
        ASSERT_EQ(U16(c.NormaliseApostrophe()), U16(u.NormaliseApostrophe()));
        ASSERT_EQ(U16(c.Deligature()), U16(u.Deligature()));
        ASSERT_EQ(c.EstToutEnMinuscules(), u.EstToutEnMinuscules());
        ASSERT_EQ(c.EstToutEnMajuscules(), u.EstToutEnMajuscules());
        ASSERT_EQ(c.ContientMajuscule(), u.ContientMajuscule());
        ASSERT_EQ(c.CommenceParMajuscule(), u.CommenceParMajuscule());
        // Échappement UTF-8 : une paire est un seul caractère, et tout revient à l'identique.
        ChaineN const echappe = c.DonneChaineEchappayPourcent();
        ASSERT_EQ(U16(echappe), U16(u.DonneChaineEchappayPourcent(UniChaine(), UniChaine())));
        ASSERT_EQ(U16(echappe.DonneChaineDesechappeePourcent()), texte);
    }
    EXPECT_EQ(U16(ChaineN(u"\U0001F600").DonneChaineEchappayPourcent()), u"%F0%9F%98%80");
    // La dernière unité reste telle quelle, blanche ou non : voulu, dans les deux classes.
    for (std::u16string const texte : {u"a\t\t", u"a  ", u"a \n", u"a\t \n"}) {
        EXPECT_EQ(U16(Uni(texte).ConsolideBlancs()), u"a " + texte.substr(texte.size() - 1));
    }
}

TEST(AccordChaines, MemesRecherchesSousChaqueTolerance)
{
    std::mt19937 gen(5);
    for (int essai = 0; essai < 3000; ++essai) {
        std::u16string const texte = AuHasard(gen, 14);
        std::u16string const motif = AuHasard(gen, 3);
        ChaineN const c = Cn(texte);
        ChaineN const cm = Cn(motif);
        UniChaine const u = Uni(texte);
        UniChaine const um = Uni(motif);
        // sdd::ChaineN ne connaît pas MalgrayEspaces : on s'en tient aux quatre premiers bits.
        sdd::Malgray const m = gen() % 16;
        unsigned long const depuis = gen() % (texte.size() + 1);
        unsigned long pc = 0;
        int pu = 0;
        bool const trouve = c.Contient(cm, &pc, depuis, m);
        ASSERT_EQ(trouve, u.Contient(um, &pu, int(depuis), m));
        if (trouve) {
            ASSERT_EQ(pc, unsigned(pu));
        }
        bool const dernier = c.TrouveDernier(cm, &pc, depuis, m);
        ASSERT_EQ(dernier, u.TrouveDernier(um, &pu, int(depuis), m));
        if (dernier) {
            ASSERT_EQ(pc, unsigned(pu));
        }
        bool const mot = c.ContientMotEntier(cm, &pc, depuis, m);
        ASSERT_EQ(mot, u.ContientMotEntier(um, &pu, int(depuis), m));
        if (mot) {
            ASSERT_EQ(pc, unsigned(pu));
        }
        ASSERT_EQ(c.Egal(cm, m), u.Egal(um, m));
        ASSERT_EQ(c.CommencePar(cm, m), u.CommencePar(um, m));
        ASSERT_EQ(c.TerminePar(cm, m), u.TerminePar(um, m));
        ASSERT_EQ(c.LongueurPrefixeCommun(cm, m), unsigned(u.LongueurPrefixeCommun(um, m)));
        ASSERT_EQ(c.LongueurSuffixeCommun(cm, m), unsigned(u.LongueurSuffixeCommun(um, m)));
        ASSERT_EQ(U16(c.Remplace(cm, ChaineN(u"XY"), m)), U16(u.Remplace(um, Uni(u"XY"), m)));
    }
    // Ligatures : le préfixe commun se compte dans la chaîne elle-même.
    EXPECT_EQ(ChaineN(u"cœur").LongueurPrefixeCommun(ChaineN(u"COEUR"), ChaineN::MalgrayLigatures |
                                                                            ChaineN::MalgrayCasse),
              4u);
    EXPECT_EQ(Uni(u"cœur").LongueurPrefixeCommun(Uni(u"COEUR"), UniChaine::MalgrayLigatures |
                                                                    UniChaine::MalgrayCasse),
              4);
}

TEST(AccordChaines, PositionsAuDelaDuTexteRefuseesSansRienChanger)
{
    ChaineN c(u"abc");
    UniChaine u(u"abc");
    ChaineN const x(u"x");
    UniChaine const ux(u"x");
    unsigned long pc = 0;
    int pu = 0;
    std::vector<std::pair<char const*, std::function<void()>>> const refus = {
        {"Contient", [&] { c.Contient(x, &pc, 4); }},
        {"Contient car", [&] { c.Contient(u'a', &pc, 4); }},
        {"Contient ULONG_MAX", [&] { c.Contient(u'a', &pc, ULONG_MAX - 1); }},
        {"TrouveDernier", [&] { c.TrouveDernier(x, &pc, 4); }},
        {"TrouveDernier car", [&] { c.TrouveDernier(u'a', &pc, 4); }},
        {"ContientMotEntier", [&] { c.ContientMotEntier(x, &pc, 4); }},
        {"ContientUnCarDe", [&] { c.ContientUnCarDe(x, &pc, 4); }},
        {"TrouveUnCarDeVersLArriere", [&] { c.TrouveUnCarDeVersLArriere(x, &pc, 4); }},
        {"ContientALaPos", [&] { c.ContientALaPos(x, 4); }},
        {"ContientRegex", [&] { c.ContientRegex(x, nullptr, 4); }},
        {"SousChaine", [&] { c.SousChaine(1, 5); }},
        {"Mets", [&] { c.Mets(x, 2); }},
        {"Remplace depuis", [&] { c.Remplace(x, x, 0, 4); }},
        {"RemplaceDepuisFin", [&] { c.RemplaceDepuisFin(4, 0, u'x'); }},
        {"Uni Contient", [&] { u.Contient(ux, &pu, 4); }},
        {"Uni Contient car", [&] { u.Contient(u'a', &pu, -2); }},
        {"Uni TrouveDernier", [&] { u.TrouveDernier(ux, &pu, 4); }},
        {"Uni TrouveDernier -2", [&] { u.TrouveDernier(u'a', &pu, -2); }},
        {"Uni ContientMotEntier", [&] { u.ContientMotEntier(ux, &pu, 4); }},
        {"Uni ContientUnCarDe", [&] { u.ContientUnCarDe(ux, &pu, 4); }},
        {"Uni ContientMalgrayLigature", [&] { u.ContientMalgrayLigature(ux, 4, 0); }},
        {"Uni SousChaine", [&] { u.SousChaine(1, 5); }},
    };
    for (auto const& [nom, operation] : refus) {
        EXPECT_THROW(operation(), IndexHorsBorne) << nom;
    }
    EXPECT_EQ(U16(c), u"abc");
    EXPECT_EQ(U16(u), u"abc");
    // La fin d'un intervalle trop long n'est jamais formée en débordant.
    EXPECT_EQ(Explication([&] { c.Remplace(2, ULONG_MAX, u'x'); }), "index=2147483647 min=0 max=3");
    EXPECT_EQ(Explication([&] { c.SousChaine(1, ULONG_MAX - 1); }), "index=2147483647 min=0 max=3");
    EXPECT_EQ(Explication([&] { u.Remplace(1, INT_MAX, ux); }), "index=2147483647 min=0 max=3");
    EXPECT_EQ(Explication([&] { u.EnleveIntervalle(2, 5); }), "index=7 min=0 max=3");
    EXPECT_EQ(Explication([&] { u.EnleveDebut(-1); }), "index=2147483647 min=0 max=3");
    for (unsigned long trop : {4ul, 1ul << 31, ULONG_MAX}) {
        int const tropUni = static_cast<int>(trop); // 2^31 donne INT_MIN, ULONG_MAX donne -1
        EXPECT_EQ(Explication([&] { c.EnleveFin(trop); }),
                  Explication([&] { u.EnleveFin(tropUni); }))
            << trop;
    }
    EXPECT_EQ(Explication([&] { c.RemplaceDepuisFin(5, 0, u'x'); }), "index=5 min=0 max=3");
    // Nombres : mêmes bases, mêmes textes.
    EXPECT_EQ(Explication([&] { UniChaine::DepuisNombre(255, 17); }),
              Explication([&] { ChaineN::DepuisNombre(255, 17); }));
    EXPECT_EQ(U16(UniChaine::DepuisNombre(-5, 10, 4, true)),
              U16(ChaineN::DepuisNombre(-5, 10, 4, true)));
    EXPECT_EQ(U16(UniChaine::DepuisNombre(0.1, 20)), U16(ChaineN::DepuisNombre(0.1, 20)));
    EXPECT_EQ(U16(UniChaine::DepuisNombre(0.1, 20)), u"0.10000000000000000555");
    EXPECT_EQ(Explication([&] { c.Contient(x, &pc, ULONG_MAX); }), "index=-1 min=0 max=3");
    // Les bornes elles-mêmes sont permises ; la fin par défaut aussi.
    EXPECT_FALSE(c.Contient(u'a', &pc, 3));
    EXPECT_TRUE(c.TrouveDernier(u'c', &pc, 3));
    EXPECT_TRUE(c.TrouveDernier(u'c', &pc));
    EXPECT_TRUE(u.TrouveDernier(u'c', &pu, 3));
    EXPECT_EQ(U16(c.SousChaine(1)), u"bc");
    EXPECT_EQ(U16(u.SousChaine(3, -1)), u"");
}

TEST(AccordChaines, ChainesVidesPartageesLuesDeTousLesFils)
{
    // Rien ne s'écrit dans les chaînes vides partagées : la même forme, de chaque fil.
    std::vector<std::thread> fils;
    for (int f = 0; f < 4; ++f) {
        fils.emplace_back([] {
            for (int i = 0; i < 2000; ++i) {
                ASSERT_STREQ(sdd::kChaineNNulle.PreteCString(static_cast<ChaineN::Codage>(i % 7)),
                             "");
                ASSERT_STREQ(kUniChaineNulle.PreteCString(UniChaine::kUTF8), "");
            }
        });
    }
    for (auto& f : fils) {
        f.join();
    }
}

TEST(AccordChaines, CaracteresTypographiquesRemplacesHorsUnicode)
{
    UniChaine const texte(u"a\u2009b\u2012c");
    for (int codage : {0, 1, 2, 5, 7, 200}) {
        EXPECT_EQ(U16(texte.ConvertisCarsTypographiques(UniChaine::Codage(codage))),
                  u"a\u00A0b\u2013c")
            << codage;
    }
    for (auto codage : {UniChaine::kUTF8, UniChaine::kUTF16}) {
        EXPECT_EQ(U16(texte.ConvertisCarsTypographiques(codage)), U16(texte));
    }
}

TEST(AccordChaines, MiseEnFormeGardeChaqueUnite)
{
    // Le format est pris unité pour unité : une marque d'ordre, un demi-codet seul restent.
    std::u16string const format = u"\uFEFFa%d\xD800"
                                  u"b";
    EXPECT_EQ(U16(ChaineN::Format(Cn(format), 5)), u"\uFEFFa5\xD800"
                                                   u"b");
    EXPECT_EQ(U16(UniChaine::Format(Uni(format), 5)), u"\uFEFFa5\xD800"
                                                      u"b");
    EXPECT_EQ(U16(ChaineN(ChaineN::kUTF8,
                          "\xEF\xBB\xBF"
                          "b%d",
                          1)),
              u"\uFEFFb1");
    // %s est décodé par la bibliothèque : EF BB BF y reste U+FEFF.
    EXPECT_EQ(U16(ChaineN::Format(Cn(u"[%s]"), "\xEF\xBB\xBF"
                                               "x")),
              u"[\uFEFFx]");
    EXPECT_EQ(U16(UniChaine().sprintf("[%s]", "\xEF\xBB\xBF"
                                              "x")),
              u"[\uFEFFx]");
    // Chaînes nulles, précision et largeur des textes, largeurs lues dans les arguments,
    // conversion inconnue laissée telle quelle.
    char16_t const* const nulle = nullptr;
    EXPECT_EQ(U16(ChaineN::Format(Cn(u"%S|%y|%5.2s|%-4c|%*d|%-*d|%.*f|%lc"), nulle, "abc", 'z', 3,
                                  7, 3, 8, 2, 3.14159, int(u'€'))),
              u"|%y|   ab|z   |  7|8  |3.14|€");
    // Les entiers comme le C, drapeaux compris ; les réels comme Qt (sans locale).
    std::mt19937 gen(11);
    char const* const drapeaux[] = {"", "-", "+", " ", "#", "0", "-+", "0#", "+ #"};
    char const* const tailles[] = {"", "hh", "h", "l", "ll", "j", "z"};
    for (int essai = 0; essai < 3000; ++essai) {
        std::string directive = std::string("%") + drapeaux[gen() % 9];
        if (gen() % 2) {
            directive += std::to_string(gen() % 12);
        }
        if (gen() % 2) {
            directive += "." + std::to_string(gen() % 8);
        }
        long long const entier =
            static_cast<long long>(gen() % 3 ? gen() : 0) * (gen() % 2 ? 1 : -4099);
        std::string const fEntier = directive + tailles[gen() % 7] + "diuoxX"[gen() % 6];
        char attendu[128];
        std::snprintf(attendu, sizeof attendu, fEntier.c_str(), entier);
        ASSERT_EQ(ChaineN::Format(ChaineN(fEntier, ChaineN::kUTF8), entier).DonneStdString(),
                  attendu)
            << fEntier;
        double const reel = double(static_cast<int>(gen())) / double(1 + gen() % 1000);
        std::string const fReel = directive + "fegEG"[gen() % 5];
        ASSERT_EQ(U16(UniChaine::Format(UniChaine(fReel.c_str()), reel)),
                  U16(UniChaine(QString::asprintf(fReel.c_str(), reel))))
            << fReel;
    }
    // Rien n'est lu au-delà de la précision, et un caractère n'est jamais coupé.
    char const sansZero[3] = {'a', 'b', 'c'};
    char16_t const sansZero16[2] = {u'x', u'y'};
    EXPECT_EQ(U16(ChaineN::Format(Cn(u"%.3s|%.2S|%.1s|%.4s|%.1S"), sansZero, sansZero16,
                                  "\xF0\x9F\x98\x80", "\xF0\x9F\x98\x80", u"\U0001F600")),
              u"abc|xy||\U0001F600|");
    // Largeurs et précisions bornées, même lues dans les arguments.
    EXPECT_EQ(ChaineN::Format(Cn(u"%*d"), INT_MAX, 1).Longueur(), 1000u);
    EXPECT_EQ(ChaineN::Format(Cn(u"%*d"), INT_MIN, 1).Longueur(), 1000u);
    EXPECT_EQ(ChaineN::Format(Cn(u"%.*f"), INT_MAX, 0.5).Longueur(), 1002u);
    // %n écrit un entier de la taille demandée, et rien sans adresse.
    struct
    {
        signed char compte;
        signed char garde[3];
    } zone = {0, {11, 22, 33}};
    long long grand = -1;
    ChaineN::Format(Cn(u"abcd%hhn%lln%n"), &zone.compte, &grand, static_cast<int*>(nullptr));
    EXPECT_EQ(zone.compte, 4);
    EXPECT_EQ(zone.garde[0] + zone.garde[1] + zone.garde[2], 66);
    EXPECT_EQ(grand, 4);
    EXPECT_EQ(U16(ChaineN::Format(Cn(u"%lc%lc"), 0x1F600, 0x110000)), u"\U0001F600\uFFFD");
    // Un format en UTF-16 va jusqu'à l'unité nulle, pas jusqu'au premier octet nul.
    EXPECT_EQ(U16(ChaineN(ChaineN::kUTF16LE, reinterpret_cast<char const*>(u"<%d>"), 42)), u"<42>");
    EXPECT_EQ(U16(UniChaine(reinterpret_cast<char const*>(u"<é>"), UniChaine::kUTF16)), u"<é>");
    EXPECT_EQ(U16(ChaineN::Format(Cn(u"%hhd|%hu|%zu|%%|%"), 257, 65537, std::size_t(9))),
              u"1|1|9|%|%");
}
