#include "AideTableChaine.h"

#include "noyau/lexique/TableChaine.h"
#include "noyau/lexique/TableChaineT.h"

#include <random>

using aide::N;
using aide::Octets;
using sdd::TableChaine;
using sdd::exceptions::TableNonValide;
using S = sdd::Serialiseur<sdd::TableChaineNoyau>;

namespace {

TableChaine Table(std::initializer_list<char16_t const*> chaines)
{
    TableChaine t;
    for (auto const* s : chaines) {
        t.TrouveEmplacementEtInsere(N(s));
    }
    return t;
}

void Lis(Octets octets, sdd::TableChaineNoyau* table)
{
    aide::Emprunt e(octets);
    S::Lis(e.flux, table);
}

// L'explication de la TableNonValide levée par Lis.
std::string RefusDeLis(Octets const& octets)
{
    TableChaine t;
    try {
        Lis(octets, &t);
    } catch (TableNonValide const& e) {
        EXPECT_EQ(aide::Chaines(t).size(), t.Taille()); // ce qui a été lu reste cohérent
        return aide::Explication(e);
    }
    return "accepté";
}

Octets Forme(std::uint32_t nombre, std::uint8_t racine, Octets const& zone, std::uint8_t version = 110)
{
    Octets o{version, 0, std::uint8_t(nombre), std::uint8_t(nombre >> 8), std::uint8_t(nombre >> 16),
             std::uint8_t(nombre >> 24), std::uint8_t(0x80 | racine),
             std::uint8_t(0x80 | zone.size())};
    o.insert(o.end(), zone.begin(), zone.end());
    return o;
}

} // namespace

TEST(SerialiseurTableChaine, Octets)
{
    // Racine seule : un zéro (suite vide) et des drapeaux nuls ; racine 0, zone de 2 octets.
    EXPECT_EQ(aide::Ecris(TableChaine()), (Octets{0x6E, 0, 0, 0, 0, 0, 0x80, 0x82, 0, 0}));
    EXPECT_EQ(aide::Ecris(Table({u""})), (Octets{0x6E, 0, 1, 0, 0, 0, 0x80, 0x82, 0, 0x02}));
    // a et b : b (0), puis a avec son frère (3), puis la racine avec son enfant (7).
    EXPECT_EQ(aide::Ecris(Table({u"b", u"a"})),
              (Octets{0x6E, 0, 2, 0, 0, 0, 0x87, 0x8A,      //
                      'b', 0, 0x02, 'a', 0, 0x0A, 0x80, 0, 0x04, 0x83}));
    // Donnée après les liens ; suite en UTF-8.
    sdd::TableChaineT<std::uint16_t> t;
    t.Insere(N(u"é"), 0x1234);
    EXPECT_EQ(aide::Ecris(t), (Octets{0x6E, 0, 1, 0, 0, 0, 0x86, 0x89, //
                                      0xC3, 0xA9, 0, 0x02, 0x34, 0x12, 0, 0x04, 0x80}));

    // L'écriture réécrit les drapeaux de l'arbre en mémoire et renvoie la position de départ.
    TableChaine ab = Table({u"ab", u"abcd", u"x"});
    sdd::TamponMemoire flux(4);
    flux.Mets('#');
    EXPECT_EQ(S::Ecris(flux, ab), 1u);
    auto const* n = ab.DonneRacine()->DonnePremierEnfant();
    EXPECT_EQ(ab.DonneRacine()->DonneDrapeaux(), 0x04u);
    EXPECT_EQ(n->DonneDrapeaux(), 0x02u | 0x04u | 0x08u);
    EXPECT_EQ(n->DonnePremierEnfant()->DonneDrapeaux(), 0x02u);
}

TEST(SerialiseurTableChaine, AllerRetourEtVersion100)
{
    auto const mots = aide::MotsFrancais(7);
    TableChaine t;
    for (auto const& m : mots) {
        t.TrouveEmplacementEtInsere(N(m));
    }
    Octets const v110 = aide::Ecris(t);
    Octets const v100 = aide::FormeV100(t);
    EXPECT_GT(v100.size(), v110.size());
    for (Octets const* forme : {&v110, &v100}) {
        TableChaine lue = Table({u"à remplacer"});
        Lis(*forme, &lue);
        EXPECT_EQ(lue.Taille(), t.Taille());
        EXPECT_EQ(aide::Chaines(lue), aide::Chaines(t));
        EXPECT_EQ(aide::Ecris(lue), v110);
    }

    // Données relues ; le flux peut porter la forme plus loin que son début.
    sdd::TableChaineT<sdd::ChaineN> d;
    for (auto const* s : {u"l’été", u"", u"œuf", u"œufs"}) {
        d.Insere(N(s), N(s).Majusculise());
    }
    sdd::TamponMemoire flux(4);
    flux.Mets('#');
    S::Ecris(flux, d);
    flux.Positionne(1);
    sdd::TableChaineT<sdd::ChaineN> relue;
    S::Lis(flux, &relue);
    EXPECT_TRUE(flux.EstALaFin());
    EXPECT_EQ(relue.Taille(), 4u);
    EXPECT_EQ(aide::U(*relue.Donne(N(u"l’été"))), u"L’ÉTÉ");
    EXPECT_EQ(aide::U(*relue.Donne(N(u"œufs"))), u"ŒUFS");
    EXPECT_TRUE(relue.Donne(sdd::kChaineNNulle)->EstVide());
}

// Volontaire : les suites passent par l'UTF-8 ; une paire de demi-codets coupée entre deux
// nœuds devient deux U+FFFD.
TEST(SerialiseurTableChaine, PaireCoupeeEntreDeuxNoeuds)
{
    TableChaine t = Table({u"\U0001F600", u"\U0001F601"});
    TableChaine lue;
    Lis(aide::Ecris(t), &lue);
    EXPECT_EQ(aide::Chaines(lue), (std::vector<std::u16string>{u"\uFFFD\uFFFD", u"\uFFFD\uFFFD"}));
    TableChaine seule = Table({u"\U0001F600"});
    Lis(aide::Ecris(seule), &lue);
    EXPECT_TRUE(lue.Possede(N(u"\U0001F600")));
}

TEST(SerialiseurTableChaine, FormesRefusees)
{
    TableChaine t = Table({u"garde"});
    Octets forme = aide::Ecris(t);
    forme[0] = 0x6F;
    EXPECT_EQ(RefusDeLis(forme), "Version non gérée");
    {
        TableChaine intacte = Table({u"garde"});
        EXPECT_THROW(Lis(forme, &intacte), TableNonValide);
        EXPECT_TRUE(intacte.Possede(N(u"garde"))); // refusée avant de toucher la table
    }
    // Enfant de la racine qui la désigne elle-même.
    EXPECT_EQ(RefusDeLis(Forme(0, 0, {0, 0x04, 0x80})), "Boucle dans la structure de chaines");
    // Deux frères qui se désignent l'un l'autre.
    EXPECT_EQ(RefusDeLis(Forme(0, 8, {'a', 0, 0x08, 0x84, 'b', 0, 0x08, 0x80, 0, 0x04, 0x80})),
              "Boucle dans la structure de chaines");
    EXPECT_EQ(RefusDeLis(Forme(0, 2, {0, 0})), "Position hors de la structure de chaines");
    EXPECT_EQ(RefusDeLis(Forme(0, 0, {0, 0x04, 0x85})), "Position hors de la structure de chaines");
    EXPECT_EQ(RefusDeLis(Forme(0, 0, {0, 0x04, 0x80}, 100)),
              "Enregistrement tronqué dans la structure de chaines");
    EXPECT_EQ(RefusDeLis(Forme(0, 0, {'a', 'b'})),
              "Enregistrement tronqué dans la structure de chaines");
    EXPECT_EQ(RefusDeLis(Forme(5, 0, {0, 0x02})), "Nombre de chaines incohérent");
    Octets longue = Forme(0, 0, {0, 0});
    longue[7] = 0x83;
    EXPECT_EQ(RefusDeLis(longue), "La structure de chaines dépasse la fin des données");
    Octets enorme = aide::Ecris(t); // zone annoncée de 270 Mo : rien de tel n'est alloué
    enorme.resize(6);
    enorme.insert(enorme.end(), {0x80, 0x1F, 0xFF, 0xFF, 0xFF});
    EXPECT_EQ(RefusDeLis(enorme), "La structure de chaines dépasse la fin des données");

    TableChaine u;
    EXPECT_THROW(Lis(Forme(0, 0, {0, 0x04, 0x00}), &u), sdd::exceptions::ErreurDeserialisation);
    EXPECT_THROW(Lis({0x6E}, &u), sdd::exceptions::ErreurDeserialisation);
}

// Une chaîne de 500 000 frères, puis 500 000 niveaux : lus, copiés, parcourus, écrits et
// détruits sans récursion (bien au-delà de ce que tiendrait la pile).
TEST(SerialiseurTableChaine, CinqCentMilleNiveaux)
{
    for (std::uint8_t lien : {0x08, 0x04}) {
        constexpr std::uint32_t kNombre = 500000;
        sdd::TamponMemoire zone(1 << 20);
        std::uint32_t precedent = 0;
        for (std::uint32_t i = 0; i < kNombre; ++i) {
            std::uint32_t const position = zone.DonneTaille();
            zone.Mets('x');
            zone.Mets(0);
            zone.Mets(static_cast<unsigned char>(i == 0 ? 0x02 : lien));
            if (i > 0) {
                sdd::VarElias::Ecris(zone, precedent);
            }
            precedent = position;
        }
        sdd::TamponMemoire forme(16);
        forme.Mets(std::initializer_list<unsigned char>{0x6E, 0, 1, 0, 0, 0}.begin(), 6);
        sdd::VarElias::Ecris(forme, precedent);
        sdd::VarElias::Ecris(forme, zone.DonneTaille());
        forme.Mets(zone.DonneDonnees(), zone.DonneTaille());
        forme.PositionneAuDebut();
        // La racine lue porte elle-même le lien : tous les nœuds pendent sous elle.
        TableChaine t;
        S::Lis(forme, &t);
        EXPECT_EQ(t.Taille(), 1u);
        TableChaine copie(t);
        EXPECT_EQ(aide::Chaines(copie).size(), 1u);
        EXPECT_GT(aide::Ecris(copie).size(), 3 * kNombre);
    }
}

// Octets abîmés au hasard : la lecture réussit ou lève une exception de la bibliothèque.
TEST(SerialiseurTableChaine, OctetsAbimes)
{
    sdd::TableChaineT<std::uint8_t> t;
    for (auto const* s : {u"porte", u"portes", u"portée", u"pré", u"", u"zèbre"}) {
        t.Insere(N(s), 7);
    }
    Octets const forme = aide::Ecris(t);
    std::mt19937 hasard(11);
    for (int i = 0; i < 5000; ++i) {
        Octets abime = forme;
        for (int j = 0; j <= i % 3; ++j) {
            abime[hasard() % abime.size()] = static_cast<unsigned char>(hasard());
        }
        abime.resize(abime.size() - (i % 7 == 0 ? hasard() % abime.size() : 0));
        sdd::TableChaineT<std::uint8_t> lue;
        try {
            Lis(abime, &lue);
        } catch (sdd::exceptions::Exception const&) {
        }
        EXPECT_EQ(aide::Chaines(lue).size(), lue.Taille());
    }
}
