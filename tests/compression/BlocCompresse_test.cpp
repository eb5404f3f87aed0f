#include "noyau/compression/DecodageParBlocCompresse.h"
#include "noyau/compression/EncodageParBlocCompresse.h"
#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/Fichier.h"
#include "noyau/flux/FichierMMap.h"
#include "noyau/flux/TamponMemoire.h"
#include "noyau/flux/VarElias.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <zlib.h>

#include <algorithm>
#include <fstream>
#include <random>
#include <string>
#include <vector>

using sdd::_typPositionEncodageBloc;
using sdd::ChaineN;
using sdd::DecodageParBlocCompresse;
using sdd::EncodageParBlocCompresse;
using sdd::TamponMemoire;
using sdd::exceptions::ErreurDeserialisation;
using sdd::exceptions::OperationInvalide;

namespace {

// Encode les éléments dans une zone neuve, en octets ou en chaînes UTF-8 ; rend la zone.
std::string Encode(unsigned int taille, sdd::eTypeCompression type,
                   std::vector<std::string> const& elements,
                   std::vector<_typPositionEncodageBloc>& positions, bool chaines = false)
{
    TamponMemoire zone(256);
    EncodageParBlocCompresse encodeur(&zone, taille, type);
    positions.clear();
    for (std::string const& e : elements) {
        positions.push_back(
            chaines ? encodeur.EncodeChaine(ChaineN(e.c_str(), ChaineN::kUTF8), ChaineN::kUTF8)
                    : encodeur.EncodeOctets(e.data(), e.size()));
    }
    encodeur.TermineEncodage();
    return std::string(reinterpret_cast<char const*>(zone.DonneDonnees()), zone.DonneTaille());
}

// Tampon qui compte les octets lus par blocs, pour voir le cache du décodeur.
struct TamponCompte : TamponMemoire
{
    using TamponMemoire::Donne;
    using TamponMemoire::TamponMemoire;
    unsigned int Donne(unsigned int n, unsigned char* dest) override
    {
        lus += n;
        return TamponMemoire::Donne(n, dest);
    }
    unsigned int lus = 0;
};

// Les blocs d'une zone, décomprimés par zlib elle-même et mis bout à bout ; chacun doit être
// octet pour octet ce que compress donne de son contenu. plusLong : le plus long bloc stocké.
std::string BlocsSelonZlib(std::string const& zone, std::uint32_t& plusLong)
{
    TamponMemoire t(const_cast<char*>(zone.data()), int(zone.size()), false);
    sdd::VarElias::Lis(t);
    t.Donne();
    std::string tout;
    for (plusLong = 0; !t.EstALaFin();) {
        std::uint32_t const n = sdd::VarElias::Lis(t);
        plusLong = std::max(plusLong, n);
        std::vector<unsigned char> decode(1 << 16), recomprime(compressBound(1 << 16));
        uLongf longueur = decode.size(), longueurComprimee = recomprime.size();
        EXPECT_EQ(uncompress(decode.data(), &longueur, t.Ptr(), n), Z_OK);
        tout.append(reinterpret_cast<char const*>(decode.data()), longueur);
        EXPECT_EQ(compress(recomprime.data(), &longueurComprimee, decode.data(), longueur), Z_OK);
        EXPECT_EQ(std::string(reinterpret_cast<char const*>(t.PtrEtAvance(n)), n),
                  std::string(reinterpret_cast<char const*>(recomprime.data()), longueurComprimee));
    }
    return tout;
}

} // namespace

TEST(BlocCompresse, DispositionAuxOctets)
{
    // Taille 8, type 0 : la course de 4 octets ne tient plus après celle de 5.
    std::vector<_typPositionEncodageBloc> p;
    EXPECT_EQ(Encode(8, sdd::kSansCompression, {"abcde", "fghi"}, p),
              std::string("\x88\x00\x85", 3) + "abcde\x84" + "fghi");
    EXPECT_EQ(
        std::vector<unsigned>({p[0].positionBloc, p[0].decalage, p[1].positionBloc, p[1].decalage}),
        std::vector<unsigned>({2, 0, 8, 0}));

    // Sans élément : l'en-tête (300 en VarElias) et un bloc vide ; comprimé, le bloc vide
    // est le flux zlib de rien.
    EXPECT_EQ(Encode(300, sdd::kSansCompression, {}, p), std::string("\x40\xAC\x00\x80", 4));
    EXPECT_EQ(Encode(8, sdd::kCompressionZlib, {}, p),
              std::string("\x88\x01\x88\x78\x9C\x03\0\0\0\0\x01", 11));

    // Chaînes : la place comptée est celle d'une longueur VarElias (1 octet ici) ;
    // 4 + 2 + 1 <= 8 : même bloc ; puis 7 + 2 + 1 > 8 : bloc suivant.
    EXPECT_EQ(Encode(8, sdd::kSansCompression, {"abc", "ab", "é"}, p, true),
              std::string("\x88\x00\x87", 3) + std::string("abc\0ab\0\x83\xC3\xA9\0", 11));
    EXPECT_EQ(p[1].decalage, 4u);
    EXPECT_EQ(p[2].positionBloc, 10u);

    // Un élément plus grand que le bloc : un bloc vide le précède, puis il est relu entier.
    std::string const long_(100, 'z');
    std::string grand = Encode(4, sdd::kCompressionZlib, {long_}, p);
    TamponMemoire zone(grand.data(), int(grand.size()), false);
    std::string relu(100, ' ');
    DecodageParBlocCompresse(&zone, 0).DecodeOctets(p[0], 100, relu.data());
    EXPECT_EQ(relu, long_);
}

TEST(BlocCompresse, TypeInconnuEtCache)
{
    // Le type 2 passe la construction et échoue à la première lecture.
    TamponMemoire zone(16);
    zone.Mets(reinterpret_cast<unsigned char const*>("\x88\x02\x82xy"), 5);
    DecodageParBlocCompresse decodeur(&zone, 0);
    ChaineN lue;
    try {
        decodeur.DecodeChaine({2, 0}, lue, ChaineN::kUTF8);
        FAIL();
    } catch (ErreurDeserialisation const& e) {
        EXPECT_EQ(e.Explication(), UniChaine("Type de compression inconnu"));
    }
    TamponMemoire sortie(16);
    EncodageParBlocCompresse encodeur(&sortie, 8, sdd::eTypeCompression(2));
    EXPECT_THROW(encodeur.TermineEncodage(), ErreurDeserialisation);

    // Deux éléments du même bloc : l'entrée n'est lue qu'une fois.
    TamponCompte source(64);
    EncodageParBlocCompresse e(&source, 64, sdd::kCompressionZlib);
    auto const p1 = e.EncodeChaine(ChaineN(u"première"), ChaineN::kUTF8);
    auto const p2 = e.EncodeChaine(ChaineN(u"seconde"), ChaineN::kUTF8);
    e.TermineEncodage();
    DecodageParBlocCompresse d(&source, 0);
    d.DecodeChaine(p1, lue, ChaineN::kUTF8);
    EXPECT_EQ(lue, ChaineN(u"première"));
    unsigned int const unBloc = source.lus;
    EXPECT_GT(unBloc, 0u);
    d.DecodeChaine(p2, lue, ChaineN::kUTF8);
    EXPECT_EQ(lue, ChaineN(u"seconde"));
    EXPECT_EQ(source.lus, unBloc);
}

TEST(BlocCompresse, AllerRetourDesMotsDansChaqueCodage)
{
    std::vector<std::string> mots;
    std::ifstream liste("/usr/share/dict/french");
    for (std::string mot; mots.size() < 1000 && std::getline(liste, mot);) {
        mots.push_back(mot);
    }
    ASSERT_EQ(mots.size(), 1000u);
    for (auto const type : {sdd::kSansCompression, sdd::kCompressionZlib}) {
        for (unsigned int const taille : {16u, 100u, 4096u}) {
            for (ChaineN::Codage const codage :
                 {ChaineN::kMacRoman, ChaineN::kLatin9, ChaineN::kWinLatin1, ChaineN::kDOS,
                  ChaineN::kUTF8, ChaineN::kUTF16LE, ChaineN::kUTF16BE}) {
                // Zone placée à 3 dans le fichier final, comme derrière un en-tête.
                TamponMemoire zone(256), fichier(16);
                EncodageParBlocCompresse encodeur(&zone, taille, type);
                std::vector<_typPositionEncodageBloc> positions;
                std::vector<ChaineN> attendus;
                for (std::string const& mot : mots) {
                    ChaineN const chaine(mot.c_str(), ChaineN::kUTF8);
                    positions.push_back(encodeur.EncodeChaine(chaine, codage));
                    // Ce que le codage garde de la chaîne, lu hors des blocs.
                    TamponMemoire direct(64);
                    chaine.Ecris(direct, codage);
                    direct.PositionneAuDebut();
                    attendus.push_back(ChaineN().Lis(direct, codage));
                }
                encodeur.TermineEncodage();
                fichier.Mets("hdr", 3);
                fichier.Mets(zone.DonneDonnees(), zone.DonneTaille());

                DecodageParBlocCompresse decodeur(&fichier, 3);
                std::mt19937 hasard(taille + codage);
                for (int i = 0; i < 500; ++i) {
                    std::size_t const k = hasard() % mots.size();
                    ChaineN lue;
                    decodeur.DecodeChaine(positions[k], lue, codage);
                    ASSERT_EQ(lue, attendus[k]) << mots[k] << " codage " << codage;
                }
            }
        }
    }
}

TEST(BlocCompresse, OctetsAuHasardSansPerte)
{
    // Des octets au hasard ne se comprennent pas : un bloc comprimé dépasse la taille de
    // bloc et doit être gardé entier.
    std::mt19937 hasard(64);
    std::vector<std::string> elements(500);
    std::string toutes;
    for (std::string& element : elements) {
        element.resize(1 + hasard() % 60);
        std::generate(element.begin(), element.end(), [&] { return char(hasard()); });
        toutes += element;
    }
    std::vector<_typPositionEncodageBloc> positions;
    std::string octets = Encode(64, sdd::kCompressionZlib, elements, positions);
    std::uint32_t plusLong = 0;
    EXPECT_EQ(BlocsSelonZlib(octets, plusLong), toutes);
    EXPECT_GT(plusLong, 64u);

    TamponMemoire zone(octets.data(), int(octets.size()), false);
    DecodageParBlocCompresse decodeur(&zone, 0);
    for (std::size_t i = 0; i < elements.size(); ++i) {
        std::string lu(elements[i].size(), ' ');
        decodeur.DecodeOctets(positions[i], lu.size(), lu.data());
        ASSERT_EQ(lu, elements[i]);
    }
}

TEST(BlocCompresse, ZonesAbimees)
{
    std::vector<_typPositionEncodageBloc> positions;
    std::string const bonne = Encode(32, sdd::kCompressionZlib, {"bonjour"}, positions, true);
    _typPositionEncodageBloc const p = positions[0];

    // n == 0 : une chaîne ; sinon n octets.
    auto const essaie = [](std::string octets, _typPositionEncodageBloc position,
                           unsigned long n = 0) {
        TamponMemoire t(octets.data(), int(octets.size()), false);
        DecodageParBlocCompresse decodeur(&t, 0);
        ChaineN lue;
        std::string dest(n, ' ');
        n == 0 ? decodeur.DecodeChaine(position, lue, ChaineN::kUTF8)
               : decodeur.DecodeOctets(position, n, dest.data());
    };
    EXPECT_NO_THROW(essaie(bonne, p));
    // Une chaîne que le bloc finit avant son zéro : ce que lève ChaineN::Lis.
    EXPECT_THROW(essaie(bonne, {p.positionBloc, 8}), OperationInvalide);   // après la fin
    EXPECT_THROW(essaie(bonne, {p.positionBloc, 100}), OperationInvalide); // hors du bloc
    EXPECT_THROW(essaie(std::string("\x88\x00\x83"
                                    "abc",
                                    6),
                        {2, 0}),
                 OperationInvalide);
    EXPECT_THROW(essaie(bonne, p, 9), ErreurDeserialisation);      // compte trop grand
    EXPECT_THROW(essaie(bonne, {5000, 0}), ErreurDeserialisation); // bloc hors zone
    EXPECT_THROW(essaie(bonne.substr(0, bonne.size() - 3), p), ErreurDeserialisation);

    // Sur une projection, un bloc tronqué est la même erreur (et non IndexHorsBorne).
    QTemporaryDir dossier;
    UniChemin const chemin(dossier.filePath("zone"));
    sdd::Fichier(chemin, sdd::Fichier::kEcriture).Ecris(bonne.data(), int(bonne.size() - 3));
    sdd::FichierMMap projection(chemin);
    ChaineN lue;
    EXPECT_THROW(DecodageParBlocCompresse(&projection, 0).DecodeChaine(p, lue, ChaineN::kUTF8),
                 ErreurDeserialisation);

    // Toute altération d'un octet, toute coupure : une erreur propre ou une lecture, jamais
    // plus (ASan veille).
    std::mt19937 hasard(7);
    for (int i = 0; i < 1000; ++i) {
        std::string abimee = bonne;
        abimee[hasard() % abimee.size()] = static_cast<char>(hasard());
        abimee.resize(1 + hasard() % abimee.size());
        try {
            essaie(abimee, p);
            essaie(abimee, {p.positionBloc, unsigned(hasard() % 16)}, 1 + hasard() % 8);
        } catch (ErreurDeserialisation const&) {
        } catch (OperationInvalide const&) {
        }
    }
}

TEST(BlocCompresse, CacheDistinctDeLaPositionZero)
{
    // Après un échec, un enregistrement qui nomme la position 0 est une erreur (aucun bloc ne
    // commence dans l'en-tête), jamais le bloc décodé avant l'échec.
    std::string const zone("\x88\x00\x88"
                           "SECRET-A"
                           "\x80",
                           12);
    TamponMemoire t(const_cast<char*>(zone.data()), int(zone.size()), false);
    DecodageParBlocCompresse decodeur(&t, 0);
    std::string lu(8, ' ');
    decodeur.DecodeOctets({2, 0}, 8, lu.data());
    EXPECT_EQ(lu, "SECRET-A");
    EXPECT_THROW(decodeur.DecodeOctets({5000, 0}, 8, lu.data()), ErreurDeserialisation);
    lu.assign(8, ' ');
    EXPECT_THROW(decodeur.DecodeOctets({0, 0}, 8, lu.data()), ErreurDeserialisation);
    EXPECT_THROW(decodeur.DecodeOctets({1, 0}, 8, lu.data()), ErreurDeserialisation);
    EXPECT_EQ(lu, std::string(8, ' '));
    decodeur.DecodeOctets({2, 0}, 8, lu.data());
    EXPECT_EQ(lu, "SECRET-A");
}

TEST(BlocCompresse, BlocsCoupesALaLimite)
{
    // Des blocs écrits comme les programmes existants les écrivent : comprimés dans une zone de
    // la taille de bloc, sans regarder la réponse de zlib, donc coupés quand ils ne s'y
    // comprimaient pas. Tout ce que zlib en décode se relit ; une chaîne que la coupure atteint
    // lève ce que lève ChaineN::Lis.
    std::mt19937 hasard(11);
    unsigned int const taille = 48;
    TamponMemoire zone(256);
    sdd::VarElias::Ecris(zone, taille);
    zone.Mets(static_cast<unsigned char>(sdd::kCompressionZlib));
    std::string bloc;
    std::vector<std::string> mots;
    std::vector<_typPositionEncodageBloc> positions;
    std::vector<std::size_t> decodables; // octets que zlib rend du bloc de chaque mot
    auto const vide = [&] {
        std::vector<unsigned char> travail(taille);
        uLongf n = taille;
        compress(travail.data(), &n, reinterpret_cast<Bytef const*>(bloc.data()), bloc.size());
        sdd::VarElias::Ecris(zone, std::uint32_t(n));
        zone.Mets(travail.data(), unsigned(n));
        std::vector<unsigned char> decode(taille);
        uLongf d = taille;
        uncompress(decode.data(), &d, travail.data(), n);
        decodables.resize(mots.size(), d);
        bloc.clear();
    };
    for (int i = 0; i < 400; ++i) {
        std::string mot(1 + hasard() % 12, ' ');
        std::generate(mot.begin(), mot.end(), [&] { return char(33 + hasard() % 94); });
        if (taille < mot.size() + bloc.size() + 1) {
            vide();
        }
        positions.push_back({zone.DonneTaille(), unsigned(bloc.size())});
        mots.push_back(mot);
        bloc += mot;
        bloc += '\0';
    }
    vide();

    DecodageParBlocCompresse decodeur(&zone, 0);
    int entiers = 0, coupes = 0;
    for (std::size_t i = 0; i < mots.size(); ++i) {
        ChaineN lue;
        if (positions[i].decalage + mots[i].size() < decodables[i]) {
            decodeur.DecodeChaine(positions[i], lue, ChaineN::kUTF8);
            ASSERT_EQ(lue, ChaineN(mots[i].c_str(), ChaineN::kUTF8)) << i;
            ++entiers;
        } else {
            EXPECT_THROW(decodeur.DecodeChaine(positions[i], lue, ChaineN::kUTF8),
                         OperationInvalide);
            ++coupes;
        }
        std::string octets(mots[i].size(), ' ');
        if (positions[i].decalage + mots[i].size() <= decodables[i]) {
            decodeur.DecodeOctets(positions[i], octets.size(), octets.data());
            EXPECT_EQ(octets, mots[i]);
        } else {
            EXPECT_THROW(decodeur.DecodeOctets(positions[i], octets.size(), octets.data()),
                         ErreurDeserialisation);
        }
    }
    EXPECT_GT(coupes, 20);
    EXPECT_GT(entiers, 100);
}
