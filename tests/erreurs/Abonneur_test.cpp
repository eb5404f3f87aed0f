#include "noyau/erreurs/Abonneur.h"
#include "noyau/erreurs/Exceptions.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace {

// Note son nom dans le journal commun, puis fait son action éventuelle.
struct Abonne : Abonnay
{
    Abonne(std::string* journal, char nom) : journal(journal), nom(nom) {}
    void RecoisNotification(unsigned int code, void* donnees, Abonnay** abonnes) override
    {
        *journal += nom;
        derniersCode = code;
        dernieresDonnees = donnees;
        dernierTableau = abonnes;
        if (action) {
            action();
        }
    }
    std::string* journal;
    char nom;
    unsigned int derniersCode = 0;
    void* dernieresDonnees = nullptr;
    Abonnay** dernierTableau = nullptr;
    std::function<void()> action;
};

} // namespace

TEST(Abonneur, OrdreDoublonsEtCapacite)
{
    std::string journal;
    Abonne a(&journal, 'a'), b(&journal, 'b'), c(&journal, 'c');
    Abonneur liste(2);
    EXPECT_EQ(liste.DonneCapacite(), 2u);
    liste.PreviensAbonnes(1, nullptr); // vide : rien
    unsigned int const attendues[] = {2, 2, 4, 4, 8, 8};
    Abonne* const ordre[] = {&a, &b, &a, &c, &b, &a};
    for (int i = 0; i < 6; ++i) {
        liste.Abonne(ordre[i]);
        EXPECT_EQ(liste.DonneNombre(), unsigned(i + 1));
        EXPECT_EQ(liste.DonneCapacite(), attendues[i]);
    }
    int donnee = 0;
    liste.PreviensAbonnes(7, &donnee);
    EXPECT_EQ(journal, "abacba");
    EXPECT_EQ(a.derniersCode, 7u);
    EXPECT_EQ(a.dernieresDonnees, &donnee);
    EXPECT_EQ(a.dernierTableau[1], &b);

    // Toutes les occurrences partent, l'ordre des autres et la capacité restent.
    liste.Desabonne(&a);
    EXPECT_EQ(liste.DonneNombre(), 3u);
    EXPECT_EQ(liste.DonneCapacite(), 8u);
    EXPECT_EQ(liste.DonneAbonne(0), &b);
    EXPECT_EQ(liste.DonneAbonne(1), &c);
    EXPECT_EQ(liste.DonneAbonne(2), &b);
    EXPECT_THROW(liste.DonneAbonne(3), sdd::exceptions::IndexHorsBorne);
    liste.Desabonne(&a); // absent : rien
    journal.clear();
    liste.PreviensAbonnes(0, nullptr);
    EXPECT_EQ(journal, "bcb");

    // Capacité initiale nulle : une place, puis 2, 4.
    Abonneur zero(0);
    zero.Abonne(&a);
    EXPECT_EQ(zero.DonneCapacite(), 1u);
    zero.Abonne(&a);
    EXPECT_EQ(zero.DonneCapacite(), 2u);
    zero.Abonne(&a);
    EXPECT_EQ(zero.DonneCapacite(), 4u);
}

TEST(Abonneur, ChangementsPendantLaNotification)
{
    std::string journal;
    Abonne a(&journal, 'a'), b(&journal, 'b'), c(&journal, 'c'), d(&journal, 'd');
    Abonneur liste(1);

    // a se retire : b prend sa place et n'est pas prévenu cette fois.
    for (Abonne* x : {&a, &b, &c}) {
        liste.Abonne(x);
    }
    a.action = [&] { liste.Desabonne(&a); };
    liste.PreviensAbonnes(0, nullptr);
    EXPECT_EQ(journal, "ac");
    a.action = nullptr;

    // b retire tout le monde : la boucle s'arrête là.
    journal.clear();
    liste.Abonne(&d);
    b.action = [&] {
        for (Abonne* x : {&a, &b, &c, &d}) {
            liste.Desabonne(x);
        }
    };
    liste.PreviensAbonnes(0, nullptr);
    EXPECT_EQ(journal, "b");
    EXPECT_EQ(liste.DonneNombre(), 0u);
    b.action = nullptr;

    // c en abonne d'autres, le tableau grandit en cours de route : ils sont prévenus.
    journal.clear();
    liste.Abonne(&c);
    bool fait = false;
    c.action = [&] {
        for (int i = 0; !fait && i < 5; ++i) {
            liste.Abonne(&d);
        }
        fait = true;
    };
    liste.PreviensAbonnes(0, nullptr);
    EXPECT_EQ(journal, "cddddd");
}
