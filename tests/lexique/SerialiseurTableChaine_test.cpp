#include "AideTableChaine.h"

#include "noyau/lexique/TableChaine.h"
#include "noyau/lexique/TableChaineSurDisqueNoyau.h"
#include "noyau/lexique/TableChaineT.h"

#include <random>
#include <utility>

using aide::N;
using aide::Noeud;
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

// Le refus de Lis.
std::string RefusDeLis(Octets const& octets)
{
    TableChaine t;
    try {
        Lis(octets, &t);
    } catch (sdd::exceptions::Exception const& e) {
        return aide::Refus(e);
    }
    return "accepté";
}

Octets Forme(std::uint32_t nombre, std::uint8_t racine, Octets const& zone,
             std::uint8_t version = 110)
{
    Octets o{version,
             0,
             std::uint8_t(nombre),
             std::uint8_t(nombre >> 8),
             std::uint8_t(nombre >> 16),
             std::uint8_t(nombre >> 24),
             std::uint8_t(0x80 | racine),
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
              (Octets{0x6E, 0, 2, 0, 0, 0, 0x87, 0x8A, //
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

// Une demi-paire coupée entre deux nœuds garde ses trois octets et revient telle quelle.
TEST(SerialiseurTableChaine, PaireCoupeeEntreDeuxNoeuds)
{
    TableChaine t = Table({u"\U0001F600", u"\U0001F601"});
    Octets const forme = aide::Ecris(t);
    EXPECT_EQ(forme, (Octets{0x6E, 0,    2,    0, 0,    0,    0x91, 0x94,          //
                             0xED, 0xB8, 0x81, 0, 0x02,                            // U+DE01 (0)
                             0xED, 0xB8, 0x80, 0, 0x0A, 0x80,                      // U+DE00 (5)
                             0xED, 0xA0, 0xBD, 0, 0x04, 0x85, 0,    0x04, 0x8B})); // U+D83D
    TableChaine lue;
    Lis(forme, &lue);
    EXPECT_EQ(aide::Chaines(lue), (std::vector<std::u16string>{u"\U0001F600", u"\U0001F601"}));
    EXPECT_FALSE(lue.Possede(N(u"\uFFFD\uFFFD")));
}

// Chaînes tirées de tous les plans (paires, demi-paires seules) : chaque clef revient unité
// pour unité en mémoire, après relecture des deux versions et sur disque ; les voisins absents
// le restent partout.
TEST(SerialiseurTableChaine, ToutesLesUnitesFontLAllerRetour)
{
    std::mt19937 hasard(17);
    auto const unite = [&hasard](std::u16string& s) {
        std::uint32_t const plan = hasard() % 17;
        std::uint32_t c = plan << 16 | (hasard() & 0xFFFF);
        if (plan == 0 && hasard() % 4 == 0) {
            c = 0xD800 + hasard() % 0x800; // demi-paire seule
        }
        if (c == 0) {
            c = 1;
        }
        if (c < 0x10000) {
            s.push_back(static_cast<char16_t>(c));
        } else {
            c -= 0x10000;
            s.push_back(static_cast<char16_t>(0xD800 + (c >> 10)));
            s.push_back(static_cast<char16_t>(0xDC00 + (c & 0x3FF)));
        }
    };
    std::set<std::u16string> attendu;
    std::vector<std::u16string> deja;
    TableChaine t;
    for (int i = 0; i < 3000; ++i) {
        std::u16string s = i % 3 == 0 && !deja.empty() ? deja[hasard() % deja.size()] : u"";
        s.resize(s.size() / 2); // des préfixes communs, coupés n'importe où
        for (std::uint32_t n = 1 + hasard() % 4; n > 0; --n) {
            unite(s);
        }
        attendu.insert(s);
        deja.push_back(s);
        t.TrouveEmplacementEtInsere(N(s));
    }
    std::vector<std::u16string> const ordre(attendu.begin(), attendu.end());
    ASSERT_EQ(aide::Chaines(t), ordre);
    Octets v110 = aide::Ecris(t);
    Octets const v100 = aide::FormeV100(t);
    for (Octets const* forme : {&std::as_const(v110), &v100}) {
        TableChaine lue;
        Lis(*forme, &lue);
        ASSERT_EQ(aide::Chaines(lue), ordre);
    }
    aide::Emprunt e(v110);
    aide::FluxSequentiel sequentiel(v110.data(), v110.size());
    sdd::TableChaineSurDisqueNoyau const enPlace(&e.flux, 0), parOctets(&sequentiel, 0);
    for (auto const& s : ordre) {
        ASSERT_TRUE(enPlace.Possede(N(s)));
        ASSERT_TRUE(parOctets.Possede(N(s)));
        for (std::u16string voisin : {s.substr(0, s.size() - 1), s + s.back()}) {
            bool const present = attendu.count(voisin) == 1;
            ASSERT_EQ(enPlace.Possede(N(voisin)), present);
            ASSERT_EQ(parOctets.Possede(N(voisin)), present);
            ASSERT_EQ(t.Possede(N(voisin)), present);
        }
    }
}

// Un enregistrement à longue suite partagé par des chemins qui doublent à chaque niveau :
// arrêté avant que la mémoire ne suive (chaque nœud compte les octets qu'il relit).
TEST(SerialiseurTableChaine, PartageDeLonguesSuites)
{
    Octets zone(60000, 'a');
    zone.insert(zone.end(), {0, 0x02});
    std::uint32_t precedent = 0;
    auto const lien = [&zone](std::uint32_t v) {
        for (int i = 0; i < 4; ++i) {
            zone.push_back(static_cast<unsigned char>(v >> (8 * i)));
        }
    };
    for (int i = 0; i < 20; ++i) {
        auto const position = static_cast<std::uint32_t>(zone.size());
        zone.insert(zone.end(), {'b', 0, 0x0C});
        lien(precedent);
        lien(precedent);
        precedent = position;
    }
    auto const racine = static_cast<std::uint32_t>(zone.size());
    zone.insert(zone.end(), {0, 0x04});
    lien(precedent);
    sdd::TamponMemoire forme(16);
    forme.Mets(Octets{0x64, 0, 1, 0, 0, 0}.data(), 6);
    sdd::VarElias::Ecris(forme, racine);
    sdd::VarElias::Ecris(forme, static_cast<std::uint32_t>(zone.size()));
    forme.Mets(zone.data(), static_cast<unsigned int>(zone.size()));
    forme.PositionneAuDebut();
    TableChaine t;
    try {
        S::Lis(forme, &t);
        ADD_FAILURE() << "aucun refus";
    } catch (TableNonValide const& e) {
        EXPECT_EQ(aide::Refus(e),
                  "Table non valide : Structure de chaines trop partagée pour sa taille");
    }
}

TEST(SerialiseurTableChaine, FormesRefusees)
{
    TableChaine t = Table({u"garde"});
    Octets forme = aide::Ecris(t);
    forme[0] = 0x6F;
    EXPECT_EQ(RefusDeLis(forme), aide::kVersion);
    {
        TableChaine intacte = Table({u"garde"});
        EXPECT_THROW(Lis(forme, &intacte), TableNonValide);
        Octets longue = Forme(0, 0, {0, 0});
        longue[7] = 0x83;
        EXPECT_THROW(Lis(longue, &intacte), sdd::exceptions::ErreurDeserialisation);
        EXPECT_TRUE(intacte.Possede(N(u"garde"))); // refusées avant de toucher la table
        EXPECT_EQ(intacte.Taille(), 1u);
    }
    // Enfant de la racine qui la désigne elle-même.
    EXPECT_EQ(RefusDeLis(Forme(0, 0, {0, 0x04, 0x80})), aide::kBoucle);
    // Deux frères qui se désignent l'un l'autre.
    EXPECT_EQ(RefusDeLis(Forme(0, 8, {'a', 0, 0x08, 0x84, 'b', 0, 0x08, 0x80, 0, 0x04, 0x80})),
              aide::kBoucle);
    EXPECT_EQ(RefusDeLis(Forme(0, 2, {0, 0})), aide::kAuBout);
    EXPECT_EQ(RefusDeLis(Forme(0, 0, {0, 0x04, 0x85})), aide::kAuBout);
    EXPECT_EQ(RefusDeLis(Forme(0, 0, {0, 0x04, 0x80}, 100)), aide::kTronque);
    EXPECT_EQ(RefusDeLis(Forme(0, 0, {'a', 'b'})), aide::kAuBout);
    Octets enorme = aide::Ecris(t); // zone annoncée de 270 Mo : rien de tel n'est alloué
    enorme.resize(6);
    enorme.insert(enorme.end(), {0x80, 0x1F, 0xFF, 0xFF, 0xFF});
    EXPECT_EQ(RefusDeLis(enorme),
              "Erreur de désérialisation : La structure de chaines dépasse la fin des données");
    // Partage exponentiel : chaque « a » désigne le précédent comme enfant et comme frère ;
    // 2^24 nœuds annoncés en 126 octets.
    Octets zone{'a', 0, 0x02};
    std::uint8_t precedent = 0;
    for (int i = 0; i < 24; ++i) {
        auto const position = static_cast<std::uint8_t>(zone.size());
        zone.insert(zone.end(),
                    {'a', 0, 0x0E, std::uint8_t(0x80 | precedent), std::uint8_t(0x80 | precedent)});
        precedent = position;
    }
    auto const racine = static_cast<std::uint8_t>(zone.size());
    zone.insert(zone.end(), {0, 0x04, std::uint8_t(0x80 | precedent)});
    EXPECT_EQ(RefusDeLis(Forme(1, racine, zone)),
              "Table non valide : Structure de chaines trop partagée pour sa taille");

    TableChaine u;
    EXPECT_THROW(Lis(Forme(0, 0, {0, 0x04, 0x00}), &u), sdd::exceptions::ErreurDeserialisation);
    EXPECT_THROW(Lis({0x6E}, &u), sdd::exceptions::ErreurDeserialisation);
}

// Ce que la lecture accepte : le nombre annoncé tel quel, un enregistrement atteint par deux
// chemins (lu deux fois) ; une zone abîmée au milieu laisse les nœuds lus et le nombre annoncé.
TEST(SerialiseurTableChaine, FormesAcceptees)
{
    TableChaine t;
    Lis(Forme(5, 0, {0, 0x02}), &t);
    EXPECT_EQ(t.Taille(), 5u);
    EXPECT_EQ(aide::Chaines(t), (std::vector<std::u16string>{u""}));
    // x (0) est l'enfant de b (3) et de a (7) : « ax » et « bx ».
    Octets const partage =
        Forme(2, 12, {'x', 0, 0x02, 'b', 0, 0x04, 0x80, 'a', 0, 0x0C, 0x80, 0x83, 0, 0x04, 0x87});
    Lis(partage, &t);
    EXPECT_EQ(aide::Chaines(t), (std::vector<std::u16string>{u"ax", u"bx"}));
    // Le frère de b est hors de la zone : a, b et leurs x sont lus, puis la lecture échoue.
    Octets const abimee = Forme(
        2, 13, {'x', 0, 0x02, 'b', 0, 0x0C, 0x80, 0x90, 'a', 0, 0x0C, 0x80, 0x83, 0, 0x04, 0x88});
    EXPECT_EQ(RefusDeLis(abimee), aide::kAuBout);
    TableChaine partielle;
    EXPECT_THROW(Lis(abimee, &partielle), sdd::exceptions::OperationInvalide);
    EXPECT_EQ(partielle.Taille(), 2u);
    EXPECT_EQ(aide::Chaines(partielle), (std::vector<std::u16string>{u"ax", u"bx"}));
    Lis(aide::Ecris(partielle), &t);
    EXPECT_EQ(aide::Chaines(t), (std::vector<std::u16string>{u"ax", u"bx"}));

    // La liste des positions reçue est rendue telle quelle ; une position qui y est déjà est
    // une boucle.
    auto zone = Octets(partage.begin() + 8, partage.end());
    aide::Emprunt e(zone);
    sdd::ListeC<unsigned long> positions;
    positions.Ajoute(99);
    TableChaine d, boucle;
    S::DeserialiseDuTampon(*const_cast<Noeud*>(d.DonneRacine()), e.flux, 12, true, positions);
    EXPECT_EQ(aide::Chaines(d), (std::vector<std::u16string>{u"ax", u"bx"}));
    EXPECT_EQ(positions.Taille(), 1u);
    positions.Ajoute(3);
    EXPECT_THROW(S::DeserialiseDuTampon(*const_cast<Noeud*>(boucle.DonneRacine()), e.flux, 12, true,
                                        positions),
                 TableNonValide);
    EXPECT_EQ(positions.Taille(), 2u);
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

// Octets abîmés au hasard : la lecture réussit ou lève une exception de la bibliothèque ; ce
// qui a été lu se réécrit et se relit à l'identique.
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
        sdd::TableChaineT<std::uint8_t> relue;
        Lis(aide::Ecris(lue), &relue);
        ASSERT_EQ(aide::Chaines(relue), aide::Chaines(lue));
        ASSERT_EQ(relue.Taille(), lue.Taille());
    }
}
