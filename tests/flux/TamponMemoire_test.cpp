#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/FichierMMap.h"
#include "noyau/flux/TamponMemoire.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include <unistd.h>

using sdd::TamponMemoire;

namespace {

std::string Octets(TamponMemoire const& t)
{
    return std::string(reinterpret_cast<char const*>(t.DonneDonnees()), t.DonneTaille());
}

std::vector<std::string> Lignes(char const* texte, int max = 100)
{
    TamponMemoire t(16);
    t.Mets(texte, static_cast<unsigned int>(std::strlen(texte)));
    t.PositionneAuDebut();
    std::vector<std::string> lignes;
    std::vector<char> ligne(static_cast<std::size_t>(max));
    while (t.DonneLigne(ligne.data(), max)) {
        lignes.emplace_back(ligne.data());
    }
    return lignes;
}

} // namespace

TEST(TamponMemoire, ConstructionsEtEmprunt)
{
    TamponMemoire t(16);
    EXPECT_EQ(t.DonneCapacite(), 16u);
    EXPECT_EQ(t.DonneTaille(), 0u);
    EXPECT_EQ(t.DonnePosition(), 0u);
    EXPECT_TRUE(t.EstALaFin());

    t.Mets("abcdef", 6);
    t.Positionne(2);
    TamponMemoire const copie(t);
    EXPECT_EQ(copie.DonneCapacite(), 16u);
    EXPECT_EQ(copie.DonneTaille(), 6u);
    EXPECT_EQ(copie.DonnePosition(), 2u); // la position suit la copie
    EXPECT_NE(copie.DonneDonnees(), t.DonneDonnees());
    EXPECT_EQ(Octets(copie), "abcdef");

    // Bloc de l'appelant, non possédé : ni copié ni libéré.
    char bloc[] = {'x', 'y', 'z'};
    {
        TamponMemoire emprunteur(bloc, 3, false);
        EXPECT_EQ(emprunteur.DonneDonnees(), reinterpret_cast<unsigned char*>(bloc));
        EXPECT_EQ(emprunteur.DonneTaille(), 3u);
        EXPECT_EQ(emprunteur.DonneCapacite(), 3u);
        EXPECT_EQ(emprunteur.Donne(), 'x');
        // Au bout du bloc emprunté : se placer ne recopie rien, lire rend 0.
        emprunteur.PositionneALaFin();
        emprunteur.Positionne(10);
        EXPECT_EQ(emprunteur.DonneDonnees(), reinterpret_cast<unsigned char*>(bloc));
        EXPECT_EQ(emprunteur.Donne(), 0);
        // Écrire passe à une copie possédée ; le bloc emprunté reste intact et vivant.
        emprunteur.Positionne(1);
        emprunteur.Mets("AB", 2);
        EXPECT_NE(emprunteur.DonneDonnees(), reinterpret_cast<unsigned char*>(bloc));
        EXPECT_EQ(Octets(emprunteur), "xAB");
    }
    EXPECT_EQ(std::string(bloc, 3), "xyz");
    // Bloc possédé : libéré par le tampon (ASan verrait une fuite sinon).
    TamponMemoire proprietaire(new char[4]{'1', '2', '3', '4'}, 4, true);
    EXPECT_EQ(Octets(proprietaire), "1234");

    std::unique_ptr<TamponMemoire> prete(t.TamponEnPretantDonnees());
    EXPECT_EQ(prete->DonneDonnees(), t.DonneDonnees());
    EXPECT_EQ(prete->DonneTaille(), 6u);
    EXPECT_EQ(prete->DonneCapacite(), 16u);
    EXPECT_EQ(prete->DonnePosition(), 0u);
    EXPECT_EQ(prete->Ptr(), t.DonneDonnees());
    EXPECT_EQ(prete->PtrEtAvance(4), t.DonneDonnees());
    EXPECT_EQ(*prete->Ptr(), 'e');
}

TEST(TamponMemoire, Croissance)
{
    TamponMemoire t(16);
    std::string const vingt = "0123456789abcdefghij";
    t.Mets(vingt.data(), 20);
    EXPECT_EQ(t.DonneCapacite(), 32u);
    EXPECT_EQ(t.DonneTaille(), 20u);
    EXPECT_EQ(t.DonnePosition(), 20u);
    EXPECT_EQ(Octets(t), vingt);

    TamponMemoire p(16);
    p.Mets("ab", 2);
    p.MetsPosition(100);
    EXPECT_EQ(p.DonneCapacite(), 130u);
    EXPECT_EQ(p.DonneTaille(), 2u);
    EXPECT_EQ(p.DonnePosition(), 100u);

    // Un octet : agrandi quand il ne resterait plus d'octet de réserve.
    TamponMemoire u(4);
    for (unsigned char c = 'a'; c < 'a' + 3; ++c) {
        u.Mets(c);
    }
    EXPECT_EQ(u.DonneCapacite(), 4u);
    u.Mets('d');
    EXPECT_EQ(u.DonneCapacite(), 8u);
    EXPECT_EQ(Octets(u), "abcd");

    // Capacité nulle : ni boucle sans fin ni écriture hors du bloc.
    TamponMemoire vide1(0u), vide2(0u);
    vide1.Mets('z');
    vide2.Mets("xyz", 3);
    EXPECT_EQ(Octets(vide1), "z");
    EXPECT_EQ(Octets(vide2), "xyz");

    // Une écriture au milieu coupe la suite.
    TamponMemoire m(16);
    m.Mets("abcdef", 6);
    m.Positionne(2);
    m.Mets("XY", 2);
    EXPECT_EQ(Octets(m), "abXY");
    m.Reserve(1000);
    EXPECT_EQ(m.DonneCapacite(), 1000u);
    m.Reserve(10);
    EXPECT_EQ(m.DonneCapacite(), 1000u);
    EXPECT_EQ(Octets(m), "abXY");
}

TEST(TamponMemoire, NombresEcrits)
{
    TamponMemoire t(4);
    t.Mets("ab", 2);
    t << -5;
    EXPECT_EQ(t.DonnePosition(), 4u);
    EXPECT_EQ(t.DonneTaille(), 2u); // volontairement inchangée
    EXPECT_EQ(std::string(t.DonneCString()), "ab-5");
    EXPECT_GE(t.DonneCapacite(), 14u);

    TamponMemoire n(1);
    n << 4294967295u << -9223372036854775807LL - 1 << 18446744073709551615ULL << 2147483647;
    EXPECT_EQ(std::string(n.DonneCString()), "4294967295-922337203685477580818446744073709551615"
                                             "2147483647");
    EXPECT_EQ(n.DonneTaille(), 0u);

    TamponMemoire d(1);
    d << 0.1 << " " << 1e20 << " " << 2.5f << " " << 123456789.0;
    EXPECT_EQ(Octets(d), "0.1 1e+20 2.5 1.23457e+08");
    EXPECT_EQ(d.DonneTaille(), d.DonnePosition());

    char* const copie = d.CreeCString();
    EXPECT_STREQ(copie, "0.1 1e+20 2.5 1.23457e+08");
    delete[] copie;

    // Le zéro de DonneCString tombe dans le bloc même quand il est plein.
    TamponMemoire plein(new char[3]{'a', 'b', 'c'}, 3, true);
    plein.PtrEtAvance(3);
    EXPECT_STREQ(plein.DonneCString(), "abc");
}

TEST(TamponMemoire, Lignes)
{
    EXPECT_EQ(Lignes("a\r\nb"), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(Lignes("a\n\nb"), (std::vector<std::string>{"a", "", "b"}));
    EXPECT_EQ(Lignes("a\r\rb\n"), (std::vector<std::string>{"a", "", "b"}));
    EXPECT_EQ(Lignes(""), std::vector<std::string>{});
    // Coupe à max - 1 octets ; la fin de ligne reste pour l'appel suivant.
    EXPECT_EQ(Lignes("abcdef\nxy", 4), (std::vector<std::string>{"abc", "def", "", "xy"}));

    TamponMemoire t(8);
    t.Mets("un\r\ndeux\ntrois", 14);
    t.PositionneAuDebut();
    TamponMemoire ligne(1);
    std::vector<std::string> lues;
    while (t.DonneLigne(ligne)) {
        lues.push_back(Octets(ligne));
    }
    EXPECT_EQ(lues, (std::vector<std::string>{"un", "deux", "trois"}));
    EXPECT_EQ(ligne.DonneTaille(), 0u); // vidé même à la fin
}

TEST(TamponMemoire, LecturesEtEgalite)
{
    TamponMemoire t(8);
    t.Mets("abcdef", 6);
    t.Positionne(1);
    unsigned char dest[16] = {};
    EXPECT_EQ(t.Donne(3, dest), 3u);
    EXPECT_EQ(std::string(reinterpret_cast<char*>(dest), 3), "bcd");
    EXPECT_EQ(t.Donne(10, dest), 2u); // s'arrête à la taille
    EXPECT_EQ(t.Donne(10, dest), 0u);
    EXPECT_TRUE(t.EstALaFin());
    // Sans contrôle de fin : au-delà de la taille, les octets neufs du bloc ; au-delà du bloc, 0.
    EXPECT_EQ(t.Donne(), 0);
    t.Positionne(7);
    EXPECT_EQ(t.Donne(), 0);
    t.PtrEtAvance(100);
    EXPECT_EQ(t.Donne(), 0);
    t.PositionneALaFin();
    EXPECT_EQ(t.DonnePosition(), 6u);

    // Une taille portée au-delà du bloc se lit comme des zéros.
    TamponMemoire court(new char[2]{'a', 'b'}, 2, true);
    court.MetsTaille(4);
    unsigned char quatre[4] = {9, 9, 9, 9};
    EXPECT_EQ(court.Donne(4, quatre), 4u);
    EXPECT_EQ(std::string(reinterpret_cast<char*>(quatre), 4), std::string("ab\0\0", 4));

    TamponMemoire a(4), b(64);
    a.Mets("xyz", 3);
    b.Mets("xyz", 3);
    b.Positionne(1);
    EXPECT_TRUE(a == b);
    b.MetsTaille(2);
    EXPECT_FALSE(a == b);
    a.MetsTaille(2);
    a.Positionne(0);
    a.Mets('q');
    EXPECT_TRUE(a != b);
    a.Vide();
    EXPECT_EQ(a.DonneTaille(), 0u);
    EXPECT_EQ(a.DonnePosition(), 0u);
    EXPECT_EQ(a.DonneCapacite(), 4u);
}

TEST(TamponMemoire, CopieEntreFlux)
{
    TamponMemoire source(8), cible(8);
    source.Mets("abcdef", 6);
    source.PositionneAuDebut();
    EXPECT_FALSE(source.DonneFluxSortie(cible, 2));
    EXPECT_EQ(Octets(cible), "ab");
    EXPECT_TRUE(cible.MetsFluxEntree(source, 4)); // les quatre derniers : fin atteinte
    EXPECT_EQ(Octets(cible), "abcdef");
    source.PositionneAuDebut();
    cible.Vide();
    EXPECT_TRUE(source.DonneFluxSortie(cible));
    EXPECT_EQ(Octets(cible), "abcdef");
}

TEST(TamponMemoire, AjoutDeSesPropresOctets)
{
    // Avec croissance : la source est lue avant que l'ancien bloc ne soit libéré.
    TamponMemoire t(16);
    t.Mets("0123456789", 10);
    t.Mets(t.DonneDonnees(), t.DonneTaille());
    EXPECT_EQ(Octets(t), "01234567890123456789");
    // Sans croissance, tranches qui se chevauchent dans les deux sens.
    t.Positionne(2);
    t.Mets(reinterpret_cast<char const*>(t.DonneDonnees()), 6);
    EXPECT_EQ(Octets(t), "01012345");
    t.Positionne(0);
    t.Mets(reinterpret_cast<char const*>(t.DonneDonnees()) + 3, 4);
    EXPECT_EQ(Octets(t), "1234");
    // Un tampon qui emprunte et s'ajoute à lui-même : le bloc prêté reste intact.
    char bloc[] = {'a', 'b', 'c'};
    TamponMemoire emprunteur(bloc, 3, false);
    emprunteur.PositionneALaFin();
    emprunteur.Mets(emprunteur.DonneDonnees(), 3);
    EXPECT_EQ(Octets(emprunteur), "abcabc");
    EXPECT_EQ(std::string(bloc, 3), "abc");
}

TEST(TamponMemoire, TaillesHorsDeLInt)
{
    // Une taille négative (2 Gio ou plus passés par un int) est refusée, jamais prise pour 0.
    char bloc[4] = {};
    EXPECT_THROW(TamponMemoire(bloc, -1, false), sdd::exceptions::IndexHorsBorne);
    EXPECT_THROW(TamponMemoire(bloc, int(0x80001000u), false), sdd::exceptions::IndexHorsBorne);

    // Une projection de 2 Gio et plus se prête entière (fichier creux : rien n'est écrit sur
    // le disque hors du dernier bloc).
    std::string modele = testing::TempDir() + "grandXXXXXX";
    int const fd = mkstemp(modele.data());
    ASSERT_GE(fd, 0);
    unsigned int const taille = 0x80001000u; // 2 147 487 744 octets
    ASSERT_EQ(pwrite(fd, "fin", 3, taille - 3), 3);
    close(fd);
    {
        sdd::FichierMMap projection(UniChemin(modele.c_str()));
        std::unique_ptr<TamponMemoire> prete(projection.TamponEnPretantDonnees());
        EXPECT_EQ(prete->DonneTaille(), taille);
        prete->Positionne(taille - 3);
        unsigned char fin[3];
        EXPECT_EQ(prete->Donne(3, fin), 3u);
        EXPECT_EQ(std::string(reinterpret_cast<char*>(fin), 3), "fin");
    }
    std::remove(modele.c_str());
}
