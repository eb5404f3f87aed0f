#include "AideTableChaine.h"

#include "noyau/lexique/TableChaine.h"
#include "noyau/lexique/TableChaineSurDisqueNoyau.h"
#include "noyau/lexique/TableChaineT.h"

#include <random>
#include <tuple>

using aide::N;
using aide::Octets;
using sdd::TableChaine;
using sdd::TableChaineSurDisqueNoyau;
using sdd::exceptions::TableNonValide;

namespace {

// Les voisins d'une chaîne présente : préfixes, prolongements, une unité changée.
std::vector<std::u16string> Voisins(std::u16string const& s)
{
    std::vector<std::u16string> v;
    for (std::size_t i = 0; i < s.size(); ++i) {
        v.push_back(s.substr(0, i));
        std::u16string autre = s;
        autre[i] = static_cast<char16_t>(autre[i] + 1);
        v.push_back(autre);
    }
    v.push_back(s + u"s");
    v.push_back(s + u"é");
    return v;
}

std::string RefusDePossede(Octets octets, std::u16string const& chaine)
{
    aide::Emprunt e(octets);
    try {
        TableChaineSurDisqueNoyau disque(&e.flux, 0);
        disque.Possede(N(chaine));
    } catch (sdd::exceptions::Exception const& ex) {
        return aide::Refus(ex);
    }
    return "accepté";
}

} // namespace

TEST(TableChaineSurDisqueNoyau, CasLimites)
{
    TableChaine vide;
    Octets forme = aide::Ecris(vide);
    aide::Emprunt e(forme);
    TableChaineSurDisqueNoyau disque(&e.flux, 0);
    EXPECT_FALSE(disque.Possede(sdd::kChaineNNulle));
    EXPECT_FALSE(disque.Possede(N(u"a")));

    TableChaine t;
    t.TrouveEmplacementEtInsere(sdd::kChaineNNulle);
    t.TrouveEmplacementEtInsere(N(u"abcd"));
    Octets forme2 = aide::Ecris(t);
    aide::Emprunt e2(forme2);
    disque.Init(&e2.flux, 0);
    EXPECT_EQ(disque.Taille(), 2u);
    EXPECT_TRUE(disque.Possede(sdd::kChaineNNulle));
    EXPECT_TRUE(disque.Possede(N(u"abcd")));
    EXPECT_FALSE(disque.Possede(N(u"ab"))); // finit au milieu d'une suite
    EXPECT_FALSE(disque.Possede(N(u"abcde")));

    EXPECT_THROW(TableChaineSurDisqueNoyau().Possede(N(u"a")), sdd::exceptions::OperationInvalide);
}

// Chaque chaîne présente et beaucoup d'absentes, sur disque (en mémoire, sur un flux
// séquentiel, en version 100) comme dans std::set.
TEST(TableChaineSurDisqueNoyau, DifferentielMotsFrancais)
{
    auto const mots = aide::MotsFrancais(25);
    ASSERT_GT(mots.size(), 13000u);
    std::set<std::u16string> ref(mots.begin(), mots.end());
    sdd::TableChaineT<std::uint32_t> t; // des données à sauter
    for (auto const& m : mots) {
        t.Insere(N(m), static_cast<std::uint32_t>(m.size()));
    }
    Octets forme(3, 0xAA); // la forme commence plus loin dans le flux
    Octets const ecrite = aide::Ecris(t);
    forme.insert(forme.end(), ecrite.begin(), ecrite.end());
    aide::Emprunt memoire(forme);
    TableChaineSurDisqueNoyau disque(&memoire.flux, 3);
    EXPECT_EQ(disque.Taille(), ref.size());

    aide::FluxSequentiel sequentiel(forme.data(), forme.size());
    TableChaineSurDisqueNoyau surFlux(&sequentiel, 3);

    TableChaine sansDonnee;
    for (auto const& m : mots) {
        sansDonnee.TrouveEmplacementEtInsere(N(m));
    }
    Octets v100 = aide::FormeV100(sansDonnee);
    aide::Emprunt e100(v100);
    TableChaineSurDisqueNoyau disque100(&e100.flux, 0);

    std::size_t n = 0;
    for (auto const& m : mots) {
        ASSERT_TRUE(disque.Possede(N(m))) << QString::fromStdU16String(m).toStdString();
        if (n++ % 16 == 0) {
            ASSERT_TRUE(surFlux.Possede(N(m)));
            ASSERT_TRUE(disque100.Possede(N(m)));
            for (auto const& v : Voisins(m)) {
                bool const attendu = ref.count(v) == 1;
                ASSERT_EQ(disque.Possede(N(v)), attendu);
                ASSERT_EQ(surFlux.Possede(N(v)), attendu);
                ASSERT_EQ(disque100.Possede(N(v)), attendu);
            }
        }
    }
}

TEST(TableChaineSurDisqueNoyau, FormesRefusees)
{
    TableChaine t;
    t.TrouveEmplacementEtInsere(N(u"mot"));
    Octets forme = aide::Ecris(t);
    forme[1] = 1;
    EXPECT_EQ(RefusDePossede(forme, u"mot"), aide::kVersion);
    // Racine dont l'enfant est elle-même : la consultation ne tourne pas sans fin.
    Octets const boucle{0x6E, 0, 0, 0, 0, 0, 0x80, 0x83, 0, 0x04, 0x80};
    EXPECT_EQ(RefusDePossede(boucle, u"x"), aide::kBoucle);
    Octets const hors{0x6E, 0, 0, 0, 0, 0, 0x80, 0x83, 0, 0x04, 0x83};
    EXPECT_EQ(RefusDePossede(hors, u"x"), aide::kAuBout);
    EXPECT_EQ(RefusDePossede({0x6E, 0, 0}, u"x").rfind("Erreur de désérialisation : ", 0), 0u);

    // Un Init refusé laisse la table telle qu'elle était.
    Octets bonne = aide::Ecris(t);
    aide::Emprunt e(bonne);
    TableChaineSurDisqueNoyau disque(&e.flux, 0);
    Octets mauvaise = boucle;
    mauvaise[0] = 0;
    aide::Emprunt m(mauvaise);
    EXPECT_THROW(disque.Init(&m.flux, 0), TableNonValide);
    EXPECT_TRUE(disque.Possede(N(u"mot")));
}

// Ce que la consultation lit comme la forme le dit, sans contrôle de plus : une longueur de
// zone ou une racine que le chemin n'utilise pas, des enregistrements qui se chevauchent, un
// lien vers soi qui consomme la clef.
TEST(TableChaineSurDisqueNoyau, FormesAcceptees)
{
    TableChaine t;
    t.TrouveEmplacementEtInsere(N(u"mot"));
    Octets forme = aide::Ecris(t);
    forme[7] = 0xFF; // zone annoncée bien plus longue que les données
    EXPECT_EQ(RefusDePossede(forme, u"mot"), "accepté");
    aide::Emprunt e(forme);
    TableChaineSurDisqueNoyau disque(&e.flux, 0);
    EXPECT_TRUE(disque.Possede(N(u"mot")));
    forme[6] = 0xFF; // racine au-delà des données : refusée par la question, pas par Init
    EXPECT_EQ(RefusDePossede(forme, u"mot"), aide::kAuBout);

    // « ab » (0) a pour enfant « b » (1), qui commence dans ses propres octets et partage ses
    // liens : enfant 1, frère « q » (6). Le chemin de « abbq » passe trois fois par 1.
    Octets chevauche{0x6E, 0,    1,    0,    0,   0, 0x89, 0x8C, 'a',  'b',
                     0,    0x0C, 0x81, 0x86, 'q', 0, 0x02, 0,    0x04, 0x80};
    aide::Emprunt c(chevauche);
    disque.Init(&c.flux, 0);
    EXPECT_TRUE(disque.Possede(N(u"abbq")));
    EXPECT_TRUE(disque.Possede(N(u"abq")));
    EXPECT_FALSE(disque.Possede(N(u"abbbx")));
    EXPECT_EQ(RefusDePossede(chevauche, u"q"), "accepté");
    // « a » terminal, enfant de lui-même : toute suite de « a » est présente.
    Octets aaa{0x6E, 0, 1, 0, 0, 0, 0x84, 0x87, 'a', 0, 0x06, 0x80, 0, 0x04, 0x80};
    aide::Emprunt a(aaa);
    disque.Init(&a.flux, 0);
    EXPECT_TRUE(disque.Possede(N(std::u16string(1000, u'a'))));
    EXPECT_FALSE(disque.Possede(N(u"aab")));
}

// Un chemin qui repasse par les mêmes enregistrements en raccourcissant la clef finirait, mais
// en relisant la forme pour chaque unité de la clef : il est arrêté après l'avoir lue à peu
// près une fois, sur les deux sortes de flux.
TEST(TableChaineSurDisqueNoyau, CheminTropLong)
{
    // Forme version 100 : zone, racine à la position donnée.
    auto const forme = [](Octets const& zone, std::uint32_t racine) {
        sdd::TamponMemoire t(16);
        t.Mets(Octets{0x64, 0, 1, 0, 0, 0}.data(), 6);
        sdd::VarElias::Ecris(t, racine);
        sdd::VarElias::Ecris(t, static_cast<std::uint32_t>(zone.size()));
        t.Mets(zone.data(), static_cast<unsigned int>(zone.size()));
        return Octets(t.DonneDonnees(), t.DonneDonnees() + t.DonneTaille());
    };
    auto const enregistrement = [](Octets& zone, Octets const& suite, unsigned char drapeaux,
                                   std::initializer_list<std::uint32_t> liens) {
        zone.insert(zone.end(), suite.begin(), suite.end());
        zone.insert(zone.end(), {0, drapeaux});
        for (std::uint32_t v : liens) {
            for (int i = 0; i < 4; ++i) {
                zone.push_back(static_cast<unsigned char>(v >> (8 * i)));
            }
        }
    };
    // 1 000 « b » chaînés par leurs frères, puis « a » terminal dont l'enfant est le premier
    // « b » ; la racine désigne « a ».
    Octets chaine;
    for (std::uint32_t i = 0; i < 1000; ++i) {
        enregistrement(chaine, {'b'}, 0x08, {7 * (i + 1)});
    }
    enregistrement(chaine, {'a'}, 0x06, {0});
    enregistrement(chaine, {}, 0x04, {7000});
    // Une longue suite de « b » dont le frère est « a », terminal, enfant de la longue suite.
    Octets longue;
    enregistrement(longue, Octets(2000, 'b'), 0x08, {2006});
    enregistrement(longue, {'a'}, 0x06, {0});
    struct Compteur : aide::FluxSequentiel
    {
        using FluxSequentiel::FluxSequentiel;
        unsigned char Donne() override
        {
            ++lus;
            return FluxSequentiel::Donne();
        }
        using FluxSequentiel::Donne;
        std::size_t lus = 0;
    };
    for (auto const& [f, oui, trop] :
         {std::tuple(forme(chaine, 7000), u"aa", std::u16string(200, u'a') + u"z"),
          std::tuple(forme(longue, 2006), u"a", std::u16string(2000, u'a'))}) {
        Octets octets = f;
        EXPECT_EQ(RefusDePossede(octets, trop),
                  "Table non valide : Chemin trop long dans la structure de chaines");
        Compteur compteur(octets.data(), octets.size());
        aide::Emprunt e(octets);
        for (sdd::FluxEntree* flux :
             {static_cast<sdd::FluxEntree*>(&e.flux), static_cast<sdd::FluxEntree*>(&compteur)}) {
            TableChaineSurDisqueNoyau disque(flux, 0);
            EXPECT_TRUE(disque.Possede(N(oui)));
            EXPECT_THROW(disque.Possede(N(trop)), TableNonValide);
        }
        // Sans la borne, la forme entière serait relue pour chaque unité de la clef (la copie
        // d'un enregistrement lit quelques octets de plus que lui).
        EXPECT_LT(compteur.lus, 3 * (octets.size() + 13 * trop.size()));
    }
}
