#include "noyau/flux/TamponMemoire.h"
#include "noyau/lexique/TableTriee.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
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
        EXPECT_EQ(std::vector<unsigned char>(octets.begin() + 2, octets.begin() + 2 + attendu.size()),
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
    std::vector<unsigned char> const attendu{0x64, 0x00, 0x83, 0x07, 0x00, 1, 0, 0, 0,
                                             16,   0,    0,    0,    0x00, 3, 0, 0, 0,
                                             48,   0,    0,    0,    2,    0, 0, 0, 32,
                                             0,    0,    0};
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
    EXPECT_EQ(Contenu(table), (std::vector<std::pair<int, int>>(reference.begin(), reference.end())));

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

TEST(TableTriee, FormesAbimees)
{
    Table table;
    for (int i = 0; i < 300; ++i) {
        table.Insere(i * 7 % 300, i);
    }
    auto const octets = Ecrit(table);

    auto verifieRefus = [](std::vector<unsigned char> const& abime, char const* explication) {
        Table lue;
        lue.Insere(5, 5);
        try {
            Relis(abime, &lue);
            ADD_FAILURE() << "aucune exception";
        } catch (sdd::exceptions::Exception const& e) {
            if (explication != nullptr) {
                EXPECT_EQ(e.Explication().DonneChaineN(), ChaineN(explication, ChaineN::kUTF8));
            }
        }
        // Refusée : vide, et toujours utilisable.
        EXPECT_EQ(lue.Taille(), 0u);
        EXPECT_EQ(lue.NbEnfants(), 0);
        lue.Insere(1, 1);
        VerifieArbre(lue);
    };

    verifieRefus({0x65, 0x00, 0x80}, "Version non gérée");
    verifieRefus({0x64, 0x00, 0x00}, "VarElias : valeur 0");
    for (std::size_t longueur = 0; longueur < octets.size(); longueur += 7) {
        verifieRefus({octets.begin(), octets.begin() + longueur}, nullptr);
    }
    // Le compte annoncé ne correspond pas à la forme.
    auto compte = octets;
    compte[3] ^= 1;
    verifieRefus(compte, "Nombre d’entrées différent du nombre de nœuds");
    // Une chaîne d'un million de fils gauches noirs.
    std::vector<unsigned char> profonde{0x64, 0x00, 0x40, 0x01};
    profonde.insert(profonde.end(), 1'000'000, 0x03);
    verifieRefus(profonde, "Arbre trop profond");
    // Racine rouge, enfant rouge sous un rouge, hauteurs noires inégales, bits inconnus.
    verifieRefus({0x64, 0x00, 0x81, 0x00, 1, 0, 0, 0, 1, 0, 0, 0}, "Racine rouge");
    verifieRefus({0x64, 0x00, 0x83, 0x03, 0x02, 0x00, 1, 0, 0, 0, 1, 0, 0, 0},
                 "Nœud rouge à enfant rouge");
    verifieRefus({0x64, 0x00, 0x82, 0x03, 0x01, 1, 0, 0, 0, 1, 0, 0, 0}, "Hauteurs noires différentes");
    verifieRefus({0x64, 0x00, 0x81, 0x09}, "Indicateurs de nœud inconnus");

    // Octets changés au hasard : refus propre, ou un arbre rouge-noir valide.
    std::mt19937 hasard(3);
    for (int essai = 0; essai < 2000; ++essai) {
        auto abime = octets;
        abime[std::uniform_int_distribution<std::size_t>(0, abime.size() - 1)(hasard)] ^=
            static_cast<unsigned char>(1u << (essai % 8));
        Table lue;
        try {
            Relis(abime, &lue);
        } catch (sdd::exceptions::Exception const&) {
            ASSERT_EQ(lue.Taille(), 0u);
            continue;
        }
        VerifieArbre(lue);
    }
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
