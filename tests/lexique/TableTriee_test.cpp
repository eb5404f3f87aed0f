#include "noyau/flux/TamponMemoire.h"
#include "noyau/flux/VarElias.h"
#include "noyau/lexique/TableTriee.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <map>
#include <new>
#include <random>
#include <regex>
#include <string>
#include <utility>
#include <vector>

using sdd::ChaineN;
using sdd::TamponMemoire;
using Table = sdd::TableTriee<int, int>;

namespace {

std::vector<unsigned char> Octets(TamponMemoire const& tampon)
{
    return {tampon.DonneDonnees(), tampon.DonneDonnees() + tampon.DonneTaille()};
}

template <typename T> std::vector<unsigned char> Ecrit(T const& table)
{
    TamponMemoire tampon(16);
    EXPECT_EQ(table.Ecris(tampon), 0u);
    return Octets(tampon);
}

template <typename T> void Relis(std::vector<unsigned char> octets, T* table)
{
    TamponMemoire tampon(reinterpret_cast<char*>(octets.data()), int(octets.size()), false);
    table->Lis(tampon);
}

std::vector<std::pair<int, int>> Contenu(Table const& table)
{
    std::vector<std::pair<int, int>> contenu;
    Table::Iterateur it(table);
    while (it.Prochain()) {
        contenu.emplace_back(it.Clef(), it.Valeur());
    }
    return contenu;
}

// Invariants rouge-noir et compte par parcours, sans bruit sur la sortie d'erreur.
void VerifieArbre(sdd::TableTrieeNoyau const& table)
{
    testing::internal::CaptureStderr();
    bool const valide = table.EstArbreValide();
    std::string const messages = testing::internal::GetCapturedStderr();
    ASSERT_TRUE(valide) << messages;
    ASSERT_EQ(table.NbEnfants(), long(table.Taille()));
}

std::string SansAdresses(std::string texte)
{
    return std::regex_replace(texte, std::regex("0x[0-9a-f]+"), "@");
}

// Données d'un nœud de TableTriee<int, int> : la clé, puis la valeur 10 × clé.
void AjouteDonnees(std::vector<unsigned char>& octets, int clef)
{
    for (int entier : {clef, 10 * clef}) {
        for (int decalage = 0; decalage < 32; decalage += 8) {
            octets.push_back(static_cast<unsigned char>(unsigned(entier) >> decalage));
        }
    }
}

// Enregistrement d'un nœud écrit à la main : indicateurs, sous-arbres, puis données.
std::vector<unsigned char> Enregistrement(unsigned char indicateurs, int clef,
                                          std::vector<unsigned char> const& gauche = {},
                                          std::vector<unsigned char> const& droite = {})
{
    std::vector<unsigned char> octets{indicateurs};
    octets.insert(octets.end(), gauche.begin(), gauche.end());
    octets.insert(octets.end(), droite.begin(), droite.end());
    AjouteDonnees(octets, clef);
    return octets;
}

// Version 100, compte, puis l'arbre.
std::vector<unsigned char> Forme(std::uint32_t compte, std::vector<unsigned char> const& arbre = {})
{
    std::vector<unsigned char> octets{0x64, 0x00};
    unsigned char code[sdd::VarElias::kLongueurMax];
    octets.insert(octets.end(), code, code + sdd::VarElias::Ecris(code, compte));
    octets.insert(octets.end(), arbre.begin(), arbre.end());
    return octets;
}

// Arbre de recherche des clés 3 * [debut, fin), forme et couleurs tirées au hasard.
std::vector<unsigned char> ArbreAuHasard(int debut, int fin, std::mt19937& hasard)
{
    int const milieu = std::uniform_int_distribution<int>(debut, fin - 1)(hasard);
    auto const couleur = static_cast<unsigned char>(hasard() & 1);
    auto const gauche =
        debut < milieu ? ArbreAuHasard(debut, milieu, hasard) : std::vector<unsigned char>{};
    auto const droite =
        milieu + 1 < fin ? ArbreAuHasard(milieu + 1, fin, hasard) : std::vector<unsigned char>{};
    return Enregistrement(couleur | (gauche.empty() ? 0 : 2) | (droite.empty() ? 0 : 4), 3 * milieu,
                          gauche, droite);
}

// Chaîne de nœuds noirs, chacun fils gauche du précédent : clés 0 (en bas) à niveaux - 1.
std::vector<unsigned char> ChaineDeFilsGauches(int niveaux)
{
    auto octets = Forme(std::uint32_t(niveaux));
    octets.insert(octets.end(), std::size_t(niveaux - 1), 0x03);
    octets.push_back(0x01);
    for (int clef = 0; clef < niveaux; ++clef) {
        AjouteDonnees(octets, clef);
    }
    return octets;
}

sdd::TableTrieeNoyau::NoeudRNNoyau* Racine(Table const& table)
{
    Table::Iterateur it(table);
    it.Prochain();
    auto* noeud = it.DonneNoeud();
    while (noeud->Parent() != nullptr) {
        noeud = noeud->Parent();
    }
    return noeud;
}

// Position où commence l'enregistrement de chaque nœud d'une TableTriee<int, int> écrite :
// un octet d'indicateurs et huit de données par nœud. Renvoie la fin du sous-arbre.
std::size_t NoteDebuts(sdd::TableTrieeNoyau::NoeudRNNoyau const* noeud, std::size_t debut,
                       std::vector<std::size_t>& debuts)
{
    if (noeud == nullptr) {
        return debut;
    }
    debuts.push_back(debut);
    std::size_t const finGauche = NoteDebuts(noeud->Gauche(), debut + 1, debuts);
    return NoteDebuts(noeud->Droite(), finGauche, debuts) + 8;
}

std::vector<ChaineN> MotsFrancais(std::size_t nombre)
{
    std::ifstream fichier("/usr/share/dict/french");
    std::vector<ChaineN> mots;
    for (std::string ligne; mots.size() < nombre && std::getline(fichier, ligne);) {
        mots.emplace_back(ligne, ChaineN::kUTF8);
    }
    return mots;
}

} // namespace

TEST(TableTriee, TableVide)
{
    Table table;
    EXPECT_EQ(table.Taille(), 0u);
    EXPECT_EQ(table.NbEnfants(), 0);
    EXPECT_EQ(table.Possede(3), nullptr);
    EXPECT_FALSE(table.Supprime(3));
    Table::Iterateur it(table);
    EXPECT_FALSE(it.Prochain());
    EXPECT_THROW(it.Clef(), sdd::exceptions::ValeurIndefinieIterateur);
    VerifieArbre(table);
    EXPECT_EQ(Ecrit(table), (std::vector<unsigned char>{0x64, 0x00, 0x80}));
}

TEST(TableTriee, InsertionsSuppressionsEtOrdre)
{
    Table table;
    for (int i = 1; i <= 7; ++i) {
        table.Insere(i, 10 * i);
        VerifieArbre(table);
    }
    EXPECT_EQ(Contenu(table), (std::vector<std::pair<int, int>>{
                                  {1, 10}, {2, 20}, {3, 30}, {4, 40}, {5, 50}, {6, 60}, {7, 70}}));

    // Une clé présente garde sa valeur.
    bool existait = false;
    EXPECT_EQ(table.Insere(4, 999, &existait), 40);
    EXPECT_TRUE(existait);
    EXPECT_EQ(table.Taille(), 7u);
    table.Insere(8, 80, &existait);
    EXPECT_FALSE(existait);

    // La racine (4) a deux enfants : son prédécesseur 3 prend sa place.
    EXPECT_TRUE(table.Supprime(4));
    VerifieArbre(table);
    EXPECT_EQ(table.Possede(4), nullptr);
    EXPECT_EQ(*table.Possede(3), 30);
    EXPECT_EQ(Contenu(table).size(), 7u);

    Table seule;
    seule.Insere(1, 1);
    EXPECT_TRUE(seule.Supprime(1));
    EXPECT_EQ(seule.Taille(), 0u);
    EXPECT_FALSE(Table::Iterateur(seule).Prochain());
}

TEST(TableTriee, ComptesEnVarElias)
{
    for (auto [nombre, attendu] : {std::pair<int, std::vector<unsigned char>>{127, {0xFF}},
                                   {128, {0x40, 0x00}},
                                   {16512, {0x20, 0x00, 0x00}}}) {
        Table table;
        for (int i = 0; i < nombre; ++i) {
            table.Insere(i, -i);
        }
        auto const octets = Ecrit(table);
        EXPECT_EQ(
            std::vector<unsigned char>(octets.begin() + 2, octets.begin() + 2 + attendu.size()),
            attendu);
        // Un indicateur d'un octet et deux entiers de quatre octets par nœud.
        EXPECT_EQ(octets.size(), 2 + attendu.size() + 9u * nombre);
        Table relue;
        Relis(octets, &relue);
        VerifieArbre(relue);
        EXPECT_EQ(Ecrit(relue), octets); // même forme, mêmes couleurs
        EXPECT_EQ(Contenu(relue), Contenu(table));
    }
}

TEST(TableTriee, FormeEcriteDeTroisNoeuds)
{
    Table table;
    for (int i : {2, 1, 3}) {
        table.Insere(i, i * 16);
    }
    // Racine noire 2, enfants rouges ; indicateurs en préordre, données en postordre.
    std::vector<unsigned char> const attendu{0x64, 0x00, 0x83, 0x07, 0x00, 1, 0,  0, 0,  16,
                                             0,    0,    0,    0x00, 3,    0, 0,  0, 48, 0,
                                             0,    0,    2,    0,    0,    0, 32, 0, 0,  0};
    EXPECT_EQ(Ecrit(table), attendu);
}

TEST(TableTriee, ContreStdMap)
{
    std::mt19937 hasard(7);
    Table table;
    std::map<int, int> reference;
    for (int etape = 0; etape < 6000; ++etape) {
        int const clef = std::uniform_int_distribution<int>(0, 400)(hasard);
        switch (std::uniform_int_distribution<int>(0, 2)(hasard)) {
        case 0:
        case 1: {
            bool existait = false;
            table.Insere(clef, etape, &existait);
            EXPECT_EQ(existait, !reference.emplace(clef, etape).second);
            break;
        }
        default:
            EXPECT_EQ(table.Supprime(clef), reference.erase(clef) == 1);
        }
        int const* valeur = std::as_const(table).Possede(clef);
        auto const trouve = reference.find(clef);
        ASSERT_EQ(valeur != nullptr, trouve != reference.end());
        if (valeur != nullptr) {
            ASSERT_EQ(*valeur, trouve->second);
        }
        ASSERT_EQ(table.Taille(), reference.size());
        VerifieArbre(table);
    }
    VerifieArbre(table);
    EXPECT_EQ(Contenu(table),
              (std::vector<std::pair<int, int>>(reference.begin(), reference.end())));

    // Copies et déplacements indépendants de l'original.
    Table copie(table);
    Table affectee;
    affectee = table;
    table.Vide();
    EXPECT_EQ(Contenu(copie), Contenu(affectee));
    EXPECT_EQ(copie.Taille(), reference.size());
    Table deplacee(std::move(copie));
    EXPECT_EQ(copie.Taille(), 0u);
    EXPECT_EQ(deplacee.Taille(), reference.size());
    VerifieArbre(deplacee);
}

TEST(TableTriee, MotsFrancais)
{
    auto const mots = MotsFrancais(20000);
    ASSERT_EQ(mots.size(), 20000u);
    sdd::TableTriee<ChaineN, unsigned int> table;
    std::map<ChaineN, unsigned int> reference;
    for (unsigned int i = 0; i < mots.size(); ++i) {
        table.Insere(mots[i], i);
        reference.emplace(mots[i], i);
    }
    for (unsigned int i = 0; i < mots.size(); i += 2) {
        table.Supprime(mots[i]);
        reference.erase(mots[i]);
    }
    VerifieArbre(table);
    TamponMemoire tampon(16);
    table.Ecris(tampon);
    tampon.PositionneAuDebut();
    decltype(table) relue;
    relue.Lis(tampon);
    decltype(table)::Iterateur it(relue);
    for (auto const& [mot, numero] : reference) {
        ASSERT_TRUE(it.Prochain());
        ASSERT_EQ(it.Clef(), mot);
        ASSERT_EQ(it.Valeur(), numero);
    }
    EXPECT_FALSE(it.Prochain());
}

// Ce que l'écrivain ne produit pas est lu tel quel : compte, forme et couleurs.
TEST(TableTriee, FormesLuesTellesQuelles)
{
    struct Cas
    {
        std::vector<unsigned char> forme;
        std::vector<unsigned char> reecrite; // vide : la forme elle-même
        long noeuds;
    };
    auto const n = [](unsigned char indicateurs, int clef, std::vector<unsigned char> gauche = {},
                      std::vector<unsigned char> droite = {}) {
        return Enregistrement(indicateurs, clef, gauche, droite);
    };
    auto const chaineNoire = Forme(3, n(0x05, 1, {}, n(0x05, 2, {}, n(0x01, 3))));
    auto avecSuite = Forme(1, n(0x01, 1));
    avecSuite.push_back(0xEE);
    std::vector<Cas> const cas{
        // 1 → 2 → 3, tout noir : hauteurs noires inégales.
        {chaineNoire, {}, 3},
        // Compte qui ne correspond pas aux nœuds.
        {Forme(5, n(0x07, 2, n(0x00, 1), n(0x00, 3))), {}, 3},
        {Forme(1, n(0x07, 2, n(0x00, 1), n(0x00, 3))), {}, 3},
        // Bits inconnus : ignorés, puis réécrits à zéro.
        {Forme(2, n(0xFB, 2, n(0xF8, 1))), Forme(2, n(0x03, 2, n(0x00, 1))), 2},
        // Rouge sous un rouge, racine rouge.
        {Forme(3, n(0x03, 3, n(0x02, 2, n(0x00, 1)))), {}, 3},
        {Forme(1, n(0x00, 1)), {}, 1},
        // Ce qui suit l'arbre n'est pas lu.
        {avecSuite, Forme(1, n(0x01, 1)), 1},
    };
    for (auto const& [octets, reecrite, noeuds] : cas) {
        Table table;
        table.Insere(99, 99);
        Relis(octets, &table);
        EXPECT_EQ(table.NbEnfants(), noeuds);
        EXPECT_EQ(Ecrit(table), reecrite.empty() ? octets : reecrite);
        std::vector<std::pair<int, int>> attendu;
        for (int clef = 1; clef <= noeuds; ++clef) {
            attendu.emplace_back(clef, 10 * clef);
        }
        EXPECT_EQ(Contenu(table), attendu);
    }
    Table table;
    Relis(chaineNoire, &table);
    EXPECT_EQ(table.Taille(), 3u);
    testing::internal::CaptureStderr();
    EXPECT_FALSE(table.EstArbreValide());
    EXPECT_EQ(SansAdresses(testing::internal::GetCapturedStderr()),
              "Le nombre de noeuds noirs à gauche (1) et à droite (2) est différents (@)\n");

    // Un sous-arbre en échec compte 1 : des hauteurs inégales au-dessus sont signalées aussi.
    Relis(Forme(4, n(0x07, 2, n(0x02, 1, n(0x00, 0)), n(0x01, 3))), &table);
    testing::internal::CaptureStderr();
    EXPECT_FALSE(table.EstArbreValide());
    EXPECT_EQ(SansAdresses(testing::internal::GetCapturedStderr()),
              "Les enfants d'un noeud rouge (@) ne sont pas noirs\n"
              "Le nombre de noeuds noirs à gauche (1) et à droite (2) est différents (@)\n");

    // Le compte lu gouverne l'écriture : trop petit, il passe sous zéro et l'écriture est
    // refusée, le flux intact, plutôt que de perdre les nœuds restants ; trop grand, il ne
    // s'écrit pas sans arbre.
    Relis(Forme(1, n(0x07, 2, n(0x00, 1), n(0x00, 3))), &table);
    EXPECT_TRUE(table.Supprime(2));
    EXPECT_TRUE(table.Supprime(1));
    EXPECT_EQ(table.Taille(), 0xFFFFFFFFu);
    EXPECT_EQ(table.NbEnfants(), 1);
    TamponMemoire refus(16);
    EXPECT_THROW(table.Ecris(refus), sdd::exceptions::IndexHorsBorne);
    EXPECT_EQ(refus.DonneTaille(), 0u);
    Relis(Forme(5, n(0x07, 2, n(0x00, 1), n(0x00, 3))), &table);
    for (int clef : {2, 1, 3}) {
        EXPECT_TRUE(table.Supprime(clef));
    }
    EXPECT_EQ(table.Taille(), 2u);
    EXPECT_EQ(Ecrit(table), (std::vector<unsigned char>{0x64, 0x00, 0x80}));
    table.Insere(4, 40);
    EXPECT_EQ(Ecrit(table), Forme(3, n(0x01, 4)));
}

// Un échec laisse le compte lu et les nœuds créés jusque-là, rattachés et utilisables.
TEST(TableTriee, EchecEnCoursDeLecture)
{
    Table source;
    for (int i = 0; i < 40; ++i) {
        source.Insere(i * 7 % 40, i);
    }
    auto const octets = Ecrit(source);
    ASSERT_EQ(octets.size(), 3 + 9u * 40);
    std::vector<std::size_t> debuts;
    NoteDebuts(Racine(source), 3, debuts);
    ASSERT_EQ(debuts.size(), 40u);
    for (std::size_t longueur = 0; longueur < octets.size(); ++longueur) {
        Table table;
        table.Insere(-5, 5);
        EXPECT_THROW(Relis({octets.begin(), octets.begin() + longueur}, &table),
                     sdd::exceptions::ErreurDeserialisation);
        // Un nœud est créé, et rattaché, quand la lecture atteint son enregistrement.
        long const noeuds =
            std::count_if(debuts.begin(), debuts.end(),
                          [longueur](std::size_t debut) { return debut <= longueur; });
        ASSERT_EQ(table.Taille(), longueur < 3 ? 0u : 40u) << longueur;
        ASSERT_EQ(table.NbEnfants(), noeuds) << longueur;
        ASSERT_EQ(long(Contenu(table).size()), noeuds);
        Table copie(table);
        copie.Insere(1000, 1);
        copie.Supprime(0);
        Table relue;
        Relis(Ecrit(copie), &relue);
        EXPECT_EQ(Contenu(relue), Contenu(copie));
    }

    // Avant le compte, rien ne reste.
    for (auto const& [octets, explication] : {std::pair<std::vector<unsigned char>, char const*>{
                                                  {0x65, 0x00, 0x80}, "Version non gérée"},
                                              {{0x64, 0x00, 0x00}, "VarElias : valeur 0"}}) {
        Table lue;
        lue.Insere(5, 5);
        try {
            Relis(octets, &lue);
            ADD_FAILURE() << "aucune exception";
        } catch (sdd::exceptions::Exception const& e) {
            EXPECT_EQ(e.Explication().DonneChaineN(), ChaineN(explication, ChaineN::kUTF8));
        }
        EXPECT_EQ(lue.NbEnfants() + lue.Taille(), 0);
    }
}

// Des arbres de recherche aux couleurs quelconques : l'ordre ne dépend pas des couleurs,
// donc std::map dit ce que chaque insertion et chaque suppression doit donner.
TEST(TableTriee, ArbresQuelconquesContreStdMap)
{
    std::mt19937 hasard(11);
    for (int arbre = 0; arbre < 80; ++arbre) {
        int const nombre = std::uniform_int_distribution<int>(0, 90)(hasard);
        auto const octets =
            Forme(std::uint32_t(nombre),
                  nombre != 0 ? ArbreAuHasard(0, nombre, hasard) : std::vector<unsigned char>{});
        std::map<int, int> reference;
        for (int i = 0; i < nombre; ++i) {
            reference.emplace(3 * i, 30 * i);
        }
        Table table;
        Relis(octets, &table);
        ASSERT_EQ(Ecrit(table), octets);
        for (int etape = 0; etape < 400; ++etape) {
            int const clef = std::uniform_int_distribution<int>(-2, 3 * nombre + 2)(hasard);
            if (hasard() % 2 == 0) {
                bool existait = false;
                table.Insere(clef, etape, &existait);
                ASSERT_EQ(existait, !reference.emplace(clef, etape).second);
            } else {
                ASSERT_EQ(table.Supprime(clef), reference.erase(clef) == 1);
            }
            ASSERT_EQ(table.Taille(), reference.size());
            ASSERT_EQ(table.NbEnfants(), long(reference.size()));
            ASSERT_EQ(Contenu(table),
                      (std::vector<std::pair<int, int>>(reference.begin(), reference.end())));
        }
    }
}

// Une chaîne d'un million de fils gauches noirs est une forme valide : rien ne doit
// descendre par récursion.
TEST(TableTriee, ChaineDUnMillionDeNiveaux)
{
    constexpr int kNiveaux = 1'000'000;
    auto const octets = ChaineDeFilsGauches(kNiveaux);
    Table table;
    Relis(octets, &table);
    EXPECT_EQ(table.Taille(), unsigned(kNiveaux));
    EXPECT_EQ(table.NbEnfants(), kNiveaux);
    EXPECT_EQ(Ecrit(table), octets);

    Table copie(table);
    EXPECT_EQ(copie.NbEnfants(), kNiveaux);
    testing::internal::CaptureStderr();
    EXPECT_FALSE(copie.EstArbreValide());
    EXPECT_EQ(SansAdresses(testing::internal::GetCapturedStderr()),
              "Le nombre de noeuds noirs à gauche (2) et à droite (1) est différents (@)\n");
    testing::internal::CaptureStderr();
    copie.ImprimeDot();
    std::string const dot = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::count(dot.begin(), dot.end(), '\n'), 2 + 2 * kNiveaux - 1);

    // Le noir de trop remonte un demi-million de niveaux.
    EXPECT_TRUE(copie.Supprime(kNiveaux / 2));
    EXPECT_TRUE(copie.Supprime(0));
    EXPECT_TRUE(copie.Supprime(kNiveaux - 1));
    copie.Insere(-1, 1);
    copie.Insere(kNiveaux, 2);
    Table::Iterateur it(copie);
    int precedente = -2;
    long vues = 0;
    while (it.Prochain()) {
        ASSERT_LT(precedente, it.Clef());
        precedente = it.Clef();
        ++vues;
    }
    EXPECT_EQ(vues, kNiveaux - 1);
    EXPECT_EQ(copie.NbEnfants(), kNiveaux - 1);
    EXPECT_EQ(copie.Taille(), unsigned(kNiveaux - 1));
    table.Vide();
    EXPECT_EQ(table.NbEnfants(), 0);

    // Imprime met en retrait deux espaces par niveau : une sortie quadratique, donc une
    // chaîne plus courte.
    constexpr int kCourte = 2000;
    Relis(ChaineDeFilsGauches(kCourte), &table);
    testing::internal::CaptureStderr();
    table.Imprime();
    std::string const imprime = SansAdresses(testing::internal::GetCapturedStderr());
    EXPECT_EQ(imprime.substr(0, 44), "T:@ N:2000\nN(1999 => 19990)[@,0]\n  N(1998 =>");
    EXPECT_EQ(std::count(imprime.begin(), imprime.end(), '\n'), 1 + kCourte + kCourte + 1);
    EXPECT_EQ(imprime.substr(imprime.size() - 14), "    ---\n  ---\n");
}

TEST(TableTriee, DiagnosticsSurLaSortieDErreur)
{
    Table table;
    for (int i : {2, 1, 3}) {
        table.Insere(i, i * 10);
    }
    testing::internal::CaptureStderr();
    table.Imprime();
    std::string const imprime = testing::internal::GetCapturedStderr();
    EXPECT_EQ(SansAdresses(imprime), "T:@ N:3\n"
                                     "N(2 => 20)[@,0]\n"
                                     "  R(1 => 10)[@,@]\n"
                                     "    ---\n"
                                     "    ---\n"
                                     "  R(3 => 30)[@,@]\n"
                                     "    ---\n"
                                     "    ---\n");
    testing::internal::CaptureStderr();
    table.ImprimeDot();
    EXPECT_EQ(SansAdresses(testing::internal::GetCapturedStderr()),
              "digraph arbrerougenoir {\n"
              "@[color=blue,label=\"2\"]\n@ -> @\n@ -> @\n"
              "@[color=red,label=\"1\"]\n"
              "@[color=red,label=\"3\"]\n"
              "}\n");
    testing::internal::CaptureStderr();
    Table().Imprime();
    Table().ImprimeDot();
    EXPECT_EQ(SansAdresses(testing::internal::GetCapturedStderr()),
              "T:@ N:0\nRACINE-NULLE\ndigraph arbrerougenoir {\n}\n");

    // Des couleurs faussées à la main sont signalées.
    Table::Iterateur it(table);
    it.Prochain();
    auto* const un = it.DonneNoeud();
    auto* const deux = un->Parent();
    un->MetsEstNoir();
    testing::internal::CaptureStderr();
    EXPECT_FALSE(table.EstArbreValide());
    EXPECT_EQ(SansAdresses(testing::internal::GetCapturedStderr()),
              "Le nombre de noeuds noirs à gauche (2) et à droite (1) est différents (@)\n");
    un->MetsEstRouge();
    deux->MetsEstRouge();
    testing::internal::CaptureStderr();
    EXPECT_FALSE(table.EstArbreValide());
    EXPECT_FALSE(deux->EstValide());
    EXPECT_EQ(SansAdresses(testing::internal::GetCapturedStderr()),
              "la racine n'est pas noire\nLes enfants d'un noeud rouge (@) ne sont pas noirs\n");
    deux->MetsEstNoir();

    // Un nœud devenu son propre parent : le compte porte la marque -300.
    deux->MetsParent(deux);
    EXPECT_EQ(table.NbEnfants(), 1 - 300);
    deux->MetsParent(nullptr);
    VerifieArbre(table);
}

TEST(TableTriee, DiagnosticsDUnArbreLu)
{
    // 4 noir ; 2 et 6 rouges, chacun avec deux enfants rouges.
    auto const rougeARougesEn = [](int clef) {
        return Enregistrement(0x06, clef, Enregistrement(0x00, clef - 1),
                              Enregistrement(0x00, clef + 1));
    };
    Table table;
    Relis(Forme(7, Enregistrement(0x07, 4, rougeARougesEn(2), rougeARougesEn(6))), &table);
    // Le sous-arbre droit est validé même quand le gauche a échoué.
    testing::internal::CaptureStderr();
    EXPECT_FALSE(table.EstArbreValide());
    EXPECT_EQ(SansAdresses(testing::internal::GetCapturedStderr()),
              "Les enfants d'un noeud rouge (@) ne sont pas noirs\n"
              "Les enfants d'un noeud rouge (@) ne sont pas noirs\n");

    // La marque -300 d'un sous-compte s'ajoute à la somme de l'appelant, qui continue.
    auto noeud = [&table](int clef) {
        Table::Iterateur it(table);
        while (it.Prochain() && it.Clef() != clef) {
        }
        return it.DonneNoeud();
    };
    auto* const deux = noeud(2);
    auto* const six = noeud(6);
    deux->MetsParent(deux);
    EXPECT_EQ(table.NbEnfants(), 1 + (-300 + 1) + 1 + (0 + 1) + 1);
    deux->MetsParent(six->Parent());
    six->MetsParent(six);
    EXPECT_EQ(table.NbEnfants(), 1 + (2 + 1) - 300);
}

// Valeur dont la copie échoue à la demande.
struct Fragile
{
    static inline bool casse = false;
    int v = 0;
    Fragile() = default;
    Fragile(int valeur) : v(valeur) {}
    Fragile(Fragile const& autre) : v(autre.v)
    {
        if (casse) {
            throw std::bad_alloc();
        }
    }
    Fragile& operator=(Fragile const& autre)
    {
        if (casse) {
            throw std::bad_alloc();
        }
        v = autre.v;
        return *this;
    }
};

// Un itérateur hors d'un élément, une valeur dont la copie échoue, un déplacement sur soi.
TEST(TableTriee, ContratsDeLaCoucheTypee)
{
    Table table;
    table.Insere(5, 50);
    table.Insere(3, 30);
    Table::Iterateur it(table);
    EXPECT_THROW(it.Clef(), sdd::exceptions::ValeurIndefinieIterateur);
    EXPECT_EQ(it.DonneNoeud(), nullptr);
    ASSERT_TRUE(it.Prochain());
    EXPECT_EQ(it.Clef(), 3);
    ASSERT_TRUE(it.Prochain());
    EXPECT_FALSE(it.Prochain());
    EXPECT_THROW(it.Valeur(), sdd::exceptions::ValeurIndefinieIterateur);
    EXPECT_EQ(&it.DonneTable(), &table);

    Table& meme = table; // déplacée sur elle-même : rien ne change
    table = std::move(meme);
    EXPECT_EQ(Contenu(table), (std::vector<std::pair<int, int>>{{3, 30}, {5, 50}}));

    sdd::TableTriee<int, Fragile> fragile;
    for (int clef : {2, 1, 3}) {
        fragile.Insere(clef, Fragile(10 * clef));
    }
    auto const contenu = [&fragile] {
        std::vector<std::pair<int, int>> c;
        sdd::TableTriee<int, Fragile>::Iterateur i(fragile);
        while (i.Prochain()) {
            c.emplace_back(i.Clef(), i.Valeur().v);
        }
        return c;
    };
    auto const avant = contenu();
    Fragile::casse = true;
    EXPECT_THROW(fragile.Supprime(2), std::bad_alloc); // le prédécesseur 1 ne se copie pas
    for (int clef : {0, 4, 5}) {
        EXPECT_THROW(fragile.Insere(clef, Fragile()), std::bad_alloc);
    }
    Fragile::casse = false;
    EXPECT_EQ(contenu(), avant);
    EXPECT_EQ(fragile.Taille(), 3u);
    // Même quand l'insertion ferait tourner l'arbre jusqu'à la racine.
    sdd::TableTriee<int, Fragile> deux;
    deux.Insere(1, Fragile(10));
    deux.Insere(3, Fragile(30));
    Fragile::casse = true;
    EXPECT_THROW(deux.Insere(2, Fragile()), std::bad_alloc);
    Fragile::casse = false;
    EXPECT_EQ(deux.Taille(), 2u);
    EXPECT_EQ(deux.NbEnfants(), 2);
    EXPECT_EQ(deux.Possede(2), nullptr);
}
