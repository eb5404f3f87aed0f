#include "AideTableChaine.h"

#include "noyau/lexique/TableChaine.h"
#include "noyau/lexique/TableChaineT.h"

#include <cstdlib>
#include <functional>
#include <new>
#include <random>

// Allocations de tableaux comptées : un test peut faire échouer la prochaine (les suites des
// nœuds en sont).
namespace {
int gTableauxPermis = -1;   // négatif : sans limite
bool gEchecDurable = false; // la mémoire, une fois épuisée, le reste
} // namespace

void* operator new[](std::size_t n)
{
    if (gTableauxPermis == 0) {
        gTableauxPermis = gEchecDurable ? 0 : -1;
        throw std::bad_alloc();
    }
    gTableauxPermis -= gTableauxPermis > 0 ? 1 : 0;
    if (void* p = std::malloc(n == 0 ? 1 : n)) {
        return p;
    }
    throw std::bad_alloc();
}
void operator delete[](void* p) noexcept
{
    std::free(p);
}
void operator delete[](void* p, std::size_t) noexcept
{
    std::free(p);
}

// Donnée dont la copie échoue à la demande.
struct Fragile
{
    static inline bool casse = false;
    static inline int copiesPermises = -1; // négatif : sans limite ; à 0, toutes échouent
    std::int32_t v = 0;

    Fragile() = default;
    Fragile(std::int32_t valeur) : v(valeur) {}
    Fragile(Fragile const&) = default;
    Fragile& operator=(Fragile const& autre)
    {
        if (casse || copiesPermises == 0) {
            throw std::bad_alloc();
        }
        copiesPermises -= copiesPermises > 0 ? 1 : 0;
        v = autre.v;
        return *this;
    }
};

template <> class sdd::Serialiseur<Fragile>
{
public:
    static void Ecris(FluxSortie& flux, Fragile const& f)
    {
        Serialiseur<std::int32_t>::Ecris(flux, f.v);
    }
    static void Lis(FluxEntree& flux, Fragile* f) { Serialiseur<std::int32_t>::Lis(flux, &f->v); }
};

using aide::N;
using aide::Noeud;
using aide::U;
using sdd::ChaineN;
using sdd::TableChaine;

namespace {

// Les suites des enfants d'un nœud, dans l'ordre.
std::vector<std::u16string> Enfants(Noeud const* n)
{
    std::vector<std::u16string> suites;
    for (Noeud const* e = n->DonnePremierEnfant(); e; e = e->DonneSuivant()) {
        suites.emplace_back(e->Cars());
    }
    return suites;
}

using Cas = std::vector<std::u16string>;

} // namespace

TEST(TableChaine, TableVideEtChaineVide)
{
    TableChaine t;
    EXPECT_EQ(t.Taille(), 0u);
    EXPECT_FALSE(t.Possede(sdd::kChaineNNulle));
    sdd::TableChaineNoyau::__Iterateur it(t);
    EXPECT_FALSE(it.Prochain());
    EXPECT_TRUE(it.Clef().EstVide());

    bool deja = true;
    t.TrouveEmplacementEtInsere(sdd::kChaineNNulle, &deja);
    EXPECT_FALSE(deja);
    EXPECT_TRUE(t.DonneRacine()->EstTerminal());
    EXPECT_TRUE(t.Possede(sdd::kChaineNNulle));
    EXPECT_EQ(aide::Chaines(t), Cas{u""});
    EXPECT_TRUE(t.Supprime(sdd::kChaineNNulle));
    EXPECT_FALSE(t.Supprime(sdd::kChaineNNulle));
    EXPECT_EQ(t.Taille(), 0u);
}

TEST(TableChaine, ScissionsEtFusions)
{
    TableChaine t;
    bool deja = true;
    t.TrouveEmplacementEtInsere(N(u"abx"), &deja);
    EXPECT_FALSE(deja);
    t.TrouveEmplacementEtInsere(N(u"aby"));
    EXPECT_EQ(Enfants(t.DonneRacine()), Cas{u"ab"});
    Noeud const* ab = t.DonneRacine()->DonnePremierEnfant();
    EXPECT_EQ(Enfants(ab), (Cas{u"x", u"y"}));
    EXPECT_FALSE(ab->EstTerminal());
    t.TrouveEmplacementEtInsere(N(u"ab"));
    EXPECT_EQ(t.DonneRacine()->DonnePremierEnfant(), ab); // seulement marqué terminal
    EXPECT_TRUE(ab->EstTerminal());
    t.TrouveEmplacementEtInsere(N(u"ab"), &deja);
    EXPECT_TRUE(deja);
    EXPECT_EQ(t.Taille(), 3u);

    // abcd puis ab : ab terminal, un seul enfant cd terminal.
    TableChaine u;
    u.TrouveEmplacementEtInsere(N(u"abcd"));
    u.TrouveEmplacementEtInsere(N(u"ab"));
    ab = u.DonneRacine()->DonnePremierEnfant();
    EXPECT_EQ(Enfants(u.DonneRacine()), Cas{u"ab"});
    EXPECT_EQ(Enfants(ab), Cas{u"cd"});
    EXPECT_TRUE(ab->EstTerminal());
    EXPECT_TRUE(ab->DonnePremierEnfant()->EstTerminal());
    EXPECT_FALSE(u.Possede(N(u"abc")));
    EXPECT_FALSE(u.Supprime(N(u"abc"))); // préfixe seulement : rien ne change
    // Retirer ab refond ab et cd.
    EXPECT_TRUE(u.Supprime(N(u"ab")));
    EXPECT_EQ(Enfants(u.DonneRacine()), Cas{u"abcd"});
    EXPECT_EQ(u.Taille(), 1u);

    // Une feuille retirée refond le parent non terminal avec l'enfant qui reste...
    TableChaine v;
    for (auto const* s : {u"xay", u"xaz", u"xb"}) {
        v.TrouveEmplacementEtInsere(N(s));
    }
    EXPECT_TRUE(v.Supprime(N(u"xb")));
    EXPECT_EQ(Enfants(v.DonneRacine()), Cas{u"xa"});
    EXPECT_EQ(Enfants(v.DonneRacine()->DonnePremierEnfant()), (Cas{u"y", u"z"}));
    // ... mais jamais la racine.
    EXPECT_TRUE(v.Supprime(N(u"xaz")));
    EXPECT_EQ(Enfants(v.DonneRacine()), Cas{u"xay"});
    EXPECT_TRUE(v.Supprime(N(u"xay")));
    EXPECT_EQ(v.DonneRacine()->DonnePremierEnfant(), nullptr);

    // Une clef qui finit dans une suite la coupe comme frère précédent.
    TableChaine w;
    for (auto const* s : {u"b", u"abc", u"a"}) {
        w.TrouveEmplacementEtInsere(N(s));
    }
    EXPECT_EQ(Enfants(w.DonneRacine()), (Cas{u"a", u"b"}));
    EXPECT_EQ(Enfants(w.DonneRacine()->DonnePremierEnfant()), Cas{u"bc"});
}

TEST(TableChaine, CopieIndependante)
{
    TableChaine t;
    for (auto const* s : {u"chat", u"chien", u"château", u""}) {
        t.TrouveEmplacementEtInsere(N(s));
    }
    TableChaine copie(t);
    TableChaine affectee;
    affectee.TrouveEmplacementEtInsere(N(u"autre"));
    affectee = t;
    t.Supprime(N(u"chat"));
    for (TableChaine const* c : {&copie, &affectee}) {
        EXPECT_EQ(c->Taille(), 4u);
        EXPECT_EQ(aide::Chaines(*c), (Cas{u"", u"chat", u"chien", u"château"}));
    }
    affectee = affectee;
    EXPECT_EQ(affectee.Taille(), 4u);
}

// Suites d'opérations au hasard, comparées à std::set : appartenance, taille, ordre, forme.
TEST(TableChaine, DifferentielContreStdSet)
{
    std::mt19937 hasard(5);
    // Peu de lettres, dont une hors ASCII et une demi-paire : beaucoup de préfixes communs.
    std::u16string const lettres = u"abcé\xD83D";
    auto const chaine = [&] {
        std::u16string s(std::uniform_int_distribution<int>(0, 6)(hasard), u'a');
        for (auto& c : s) {
            c = lettres[std::uniform_int_distribution<std::size_t>(0, lettres.size() - 1)(hasard)];
        }
        return s;
    };
    for (int tour = 0; tour < 20; ++tour) {
        TableChaine t;
        std::set<std::u16string> ref;
        for (int i = 0; i < 400; ++i) {
            std::u16string const s = chaine();
            if (hasard() % 3 == 0) {
                EXPECT_EQ(t.Supprime(N(s)), ref.erase(s) == 1);
            } else {
                bool deja = false;
                Noeud* n = t.TrouveEmplacementEtInsere(N(s), &deja);
                EXPECT_EQ(deja, !ref.insert(s).second);
                EXPECT_EQ(n, t.TrouveEmplacement(N(s)));
            }
            ASSERT_EQ(t.Taille(), ref.size());
        }
        for (int i = 0; i < 200; ++i) {
            std::u16string const s = chaine();
            EXPECT_EQ(t.Possede(N(s)), ref.count(s) == 1);
        }
        EXPECT_EQ(aide::Chaines(t), std::vector<std::u16string>(ref.begin(), ref.end()));
        EXPECT_EQ(aide::VerifieArbre(t.DonneRacine()), ref.size());
    }
}

TEST(TableChaine, MotsFrancais)
{
    auto const mots = aide::MotsFrancais(5);
    ASSERT_GT(mots.size(), 60000u);
    TableChaine t;
    std::set<std::u16string> ref;
    for (auto const& m : mots) {
        t.TrouveEmplacementEtInsere(N(m));
        ref.insert(m);
    }
    EXPECT_EQ(t.Taille(), ref.size());
    EXPECT_EQ(aide::Chaines(t), std::vector<std::u16string>(ref.begin(), ref.end()));
    EXPECT_EQ(aide::VerifieArbre(t.DonneRacine()), ref.size());
    // Les mots sautés sont presque tous absents ; chacun comme std::set.
    for (auto const& m : aide::MotsFrancais(3)) {
        EXPECT_EQ(t.Possede(N(m)), ref.count(m) == 1);
    }
    // Tout retirer, un mot sur deux d'abord : l'arbre reste compressé.
    std::size_t i = 0;
    for (auto const& m : ref) {
        if (i++ % 2 == 0) {
            EXPECT_TRUE(t.Supprime(N(m)));
        }
    }
    EXPECT_EQ(aide::VerifieArbre(t.DonneRacine()), t.Taille());
    for (auto const& m : ref) {
        t.Supprime(N(m));
    }
    EXPECT_EQ(t.Taille(), 0u);
    EXPECT_EQ(t.DonneRacine()->DonnePremierEnfant(), nullptr);
}

TEST(TableChaineT, DonneesSuiventLesScissionsEtFusions)
{
    sdd::TableChaineT<std::int32_t> t;
    EXPECT_EQ(t.Donne(N(u"abcd")), nullptr);
    EXPECT_EQ(t.Insere(N(u"abcd"), 4), 4);
    t.Insere(N(u"ab"), 2); // scission : cd garde 4
    EXPECT_EQ(*t.Donne(N(u"abcd")), 4);
    EXPECT_EQ(*t.Donne(N(u"ab")), 2);
    EXPECT_EQ(t.Donne(N(u"abc")), nullptr);
    t.Insere(N(u"ab"), 20); // remplace
    EXPECT_EQ(*t.Donne(N(u"ab")), 20);
    EXPECT_EQ(t.Taille(), 2u);
    t.Supprime(N(u"ab")); // fusion : abcd garde 4
    EXPECT_EQ(*t.Donne(N(u"abcd")), 4);
    t.Insere(N(u"abx"), 7);
    t.Supprime(N(u"abcd")); // ab non terminal refondu avec x
    EXPECT_EQ(*t.Donne(N(u"abx")), 7);

    sdd::TableChaineT<std::int32_t> const copie(t);
    t.Insere(N(u"abx"), 8);
    EXPECT_EQ(*copie.Donne(N(u"abx")), 7);
    sdd::TableChaineNoyau::__Iterateur it(copie);
    ASSERT_TRUE(it.Prochain());
    EXPECT_EQ(U(it.Clef()), u"abx");
    EXPECT_EQ(sdd::TableChaineT<std::int32_t>::DonneeDe(*it.DonneNoeud()), 7);
    EXPECT_FALSE(it.Prochain());
    ASSERT_TRUE(it.Prochain()); // repart du début
    EXPECT_EQ(U(it.Clef()), u"abx");
}

// Une clef qui porte U+0000 ne s'écrirait pas : refusée, la table inchangée.
TEST(TableChaine, ClefAvecZeroRefusee)
{
    TableChaine t;
    t.TrouveEmplacementEtInsere(N(u"bl"));
    aide::Octets const avant = aide::Ecris(t);
    bool deja = false;
    for (std::u16string const& s :
         {std::u16string(u"b\0c", 3), std::u16string(u"b\0l", 3), std::u16string(1, u'\0')}) {
        EXPECT_THROW(t.TrouveEmplacementEtInsere(N(s), &deja), sdd::exceptions::OperationInvalide);
        EXPECT_FALSE(t.Possede(N(s)));
        EXPECT_FALSE(t.Supprime(N(s)));
    }
    EXPECT_FALSE(deja);
    EXPECT_EQ(aide::Ecris(t), avant);
}

// Une suppression dont la fusion échoue (allocation de la suite, copie de la donnée) laisse la
// table comme elle était : mêmes chaînes, mêmes données, même forme écrite.
TEST(TableChaineT, SuppressionQuiEchoueLaisseLaTable)
{
    using Table = sdd::TableChaineT<Fragile>;
    auto const verifie = [](Table& t, Cas const& chaines, std::u16string const& retiree,
                            auto&& echoue) {
        aide::Octets const avant = aide::Ecris(t);
        std::vector<std::int32_t> donnees;
        for (auto const& c : chaines) {
            donnees.push_back(t.Donne(N(c))->v);
        }
        echoue(true);
        EXPECT_ANY_THROW(t.Supprime(N(retiree)));
        echoue(false);
        EXPECT_EQ(aide::Ecris(t), avant);
        EXPECT_EQ(aide::Chaines(t), chaines);
        for (std::size_t i = 0; i < chaines.size(); ++i) {
            EXPECT_EQ(t.Donne(N(chaines[i]))->v, donnees[i]);
        }
        EXPECT_TRUE(t.Supprime(N(retiree))); // et réussit ensuite
    };
    auto const allocation = [](bool oui) { gTableauxPermis = oui ? 0 : -1; };
    auto const copie = [](bool oui) { Fragile::casse = oui; };
    for (auto const& echoue :
         {std::function<void(bool)>(allocation), std::function<void(bool)>(copie)}) {
        Table t; // ab absorbe son seul enfant cdefgh
        t.Insere(N(u"ab"), 1);
        t.Insere(N(u"abcdefgh"), 2);
        verifie(t, Cas{u"ab", u"abcdefgh"}, u"ab", echoue);
        Table u; // la feuille cx partie, ab se fond avec dyyyyy
        u.Insere(N(u"abcx"), 1);
        u.Insere(N(u"abdyyyyy"), 2);
        verifie(u, Cas{u"abcx", u"abdyyyyy"}, u"abcx", echoue);
    }
}

// Une insertion qui lève (la donnée ne se copie pas, ou la mémoire s'épuise pour de bon à la
// k-ième allocation ou copie, pour chaque k) laisse la table comme elle était, que la chaîne
// soit nouvelle ou non.
TEST(TableChaineT, InsertionQuiEchoueLaisseLaTable)
{
    using Table = sdd::TableChaineT<Fragile>;
    Table t;
    t.Insere(N(u"ab"), 1);
    t.Insere(N(u"abcdefgh"), 2);
    t.Insere(N(u"x"), 3);
    Cas const chaines{u"ab", u"abcdefgh", u"x"};
    aide::Octets const avant = aide::Ecris(t);
    auto const intacte = [&] {
        EXPECT_EQ(aide::Ecris(t), avant);
        EXPECT_EQ(aide::Chaines(t), chaines);
        EXPECT_EQ(t.Donne(N(u"ab"))->v, 1);
    };
    // Nouvelle feuille, coupe d'une suite (avec ou sans reste), chaîne déjà là.
    for (std::u16string const clef : {u"y", u"abcdxx", u"a", u"abcd", u"ab"}) {
        Fragile::casse = true;
        EXPECT_ANY_THROW(t.Insere(N(clef), 9));
        Fragile::casse = false;
        intacte();
        // Mémoire épuisée pour de bon à partir de la k-ième allocation ou copie.
        gEchecDurable = true;
        for (int k = 0;; ++k) {
            gTableauxPermis = Fragile::copiesPermises = k;
            try {
                t.Insere(N(clef), 9);
            } catch (std::bad_alloc const&) {
                gTableauxPermis = Fragile::copiesPermises = -1;
                intacte();
                continue;
            }
            gTableauxPermis = Fragile::copiesPermises = -1;
            break;
        }
        gEchecDurable = false;
        EXPECT_EQ(t.Donne(N(clef))->v, 9);
        if (clef != u"ab") {
            EXPECT_TRUE(t.Supprime(N(clef)));
        } else {
            t.Insere(N(clef), 1);
        }
        intacte();
    }
}

// CreeNoeud reçoit la suite du nœud à créer.
TEST(TableChaine, CreeNoeudRecoitLaSuite)
{
    struct Temoin : TableChaine
    {
        mutable Cas recues;
        Noeud* CreeNoeud(ChaineN const& cars) const override
        {
            recues.push_back(U(cars));
            return TableChaine::CreeNoeud(cars);
        }
    } t;
    t.TrouveEmplacementEtInsere(N(u"abcd"));
    t.TrouveEmplacementEtInsere(N(u"abxy")); // ab coupé : cd puis xy
    t.TrouveEmplacementEtInsere(N(u"a"));    // ab coupé : b
    EXPECT_EQ(t.recues, (Cas{u"abcd", u"cd", u"xy", u"b"}));
    EXPECT_EQ(aide::Chaines(t), (Cas{u"a", u"abcd", u"abxy"}));
}
