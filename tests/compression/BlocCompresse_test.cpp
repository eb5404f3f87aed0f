#include "noyau/compression/DecodageParBlocCompresse.h"
#include "noyau/compression/EncodageParBlocCompresse.h"
#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/FichierMMap.h"
#include "noyau/flux/TamponMemoire.h"
#include "noyau/flux/VarElias.h"

#include <QFile>
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

namespace {

std::string Octets(TamponMemoire const& t)
{
    return std::string(reinterpret_cast<char const*>(t.DonneDonnees()), t.DonneTaille());
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

std::vector<std::string> MotsFrancais(std::size_t n)
{
    std::vector<std::string> mots;
    std::ifstream liste("/usr/share/dict/french");
    for (std::string mot; mots.size() < n && std::getline(liste, mot);) {
        mots.push_back(mot);
    }
    return mots;
}

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
    TamponMemoire sortie(16);
    EncodageParBlocCompresse encodeur(&sortie, 8, sdd::kSansCompression);
    _typPositionEncodageBloc const a = encodeur.EncodeOctets("abcde", 5);
    _typPositionEncodageBloc const b = encodeur.EncodeOctets("fghi", 4);
    encodeur.TermineEncodage();
    EXPECT_EQ(Octets(sortie), std::string("\x88\x00\x85", 3) + "abcde\x84" + "fghi");
    EXPECT_EQ(std::vector<unsigned>({a.positionBloc, a.decalage, b.positionBloc, b.decalage}),
              std::vector<unsigned>({2, 0, 8, 0}));

    // Sans élément : l'en-tête (300 en VarElias) et un bloc vide ; comprimé, le bloc vide
    // est le flux zlib de rien.
    TamponMemoire vide(16), videZlib(16);
    EncodageParBlocCompresse(&vide, 300, sdd::kSansCompression).TermineEncodage();
    EXPECT_EQ(Octets(vide), std::string("\x40\xAC\x00\x80", 4));
    EncodageParBlocCompresse(&videZlib, 8, sdd::kCompressionZlib).TermineEncodage();
    EXPECT_EQ(Octets(videZlib), std::string("\x88\x01\x88\x78\x9C\x03\0\0\0\0\x01", 11));

    // Chaînes : la place comptée est celle d'une longueur VarElias (1 octet ici) ;
    // 4 + 2 + 1 <= 8 : même bloc ; puis 7 + 2 + 1 > 8 : bloc suivant.
    TamponMemoire chaines(16);
    EncodageParBlocCompresse encodeurChaines(&chaines, 8, sdd::kSansCompression);
    encodeurChaines.EncodeChaine(ChaineN(u"abc"), ChaineN::kUTF8);
    auto const ab = encodeurChaines.EncodeChaine(ChaineN(u"ab"), ChaineN::kUTF8);
    auto const x = encodeurChaines.EncodeChaine(ChaineN(u"é"), ChaineN::kUTF8);
    encodeurChaines.TermineEncodage();
    EXPECT_EQ(Octets(chaines), std::string("\x88\x00\x87", 3) + std::string("abc\0ab\0\x83", 8) +
                                   std::string("\xC3\xA9\0", 3));
    EXPECT_EQ(ab.decalage, 4u);
    EXPECT_EQ(x.positionBloc, 10u);

    // Un élément plus grand que le bloc : un bloc vide le précède, puis il est relu entier.
    TamponMemoire grand(16);
    EncodageParBlocCompresse encodeurGrand(&grand, 4, sdd::kCompressionZlib);
    std::string const long_(100, 'z');
    _typPositionEncodageBloc const g = encodeurGrand.EncodeOctets(long_.data(), long_.size());
    encodeurGrand.TermineEncodage();
    std::string relu(100, ' ');
    DecodageParBlocCompresse(&grand, 0).DecodeOctets(g, 100, relu.data());
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
    std::vector<std::string> const mots = MotsFrancais(1000);
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
    TamponMemoire zone(256);
    EncodageParBlocCompresse encodeur(&zone, 64, sdd::kCompressionZlib);
    std::vector<std::string> elements;
    std::vector<_typPositionEncodageBloc> positions;
    std::string toutes;
    for (int i = 0; i < 500; ++i) {
        std::string element(1 + hasard() % 60, '\0');
        std::generate(element.begin(), element.end(), [&] { return char(hasard()); });
        positions.push_back(encodeur.EncodeOctets(element.data(), element.size()));
        elements.push_back(element);
        toutes += element;
    }
    encodeur.TermineEncodage();
    std::uint32_t plusLong = 0;
    EXPECT_EQ(BlocsSelonZlib(Octets(zone), plusLong), toutes);
    EXPECT_GT(plusLong, 64u);

    DecodageParBlocCompresse decodeur(&zone, 0);
    for (std::size_t i = 0; i < elements.size(); ++i) {
        std::string lu(elements[i].size(), ' ');
        decodeur.DecodeOctets(positions[i], lu.size(), lu.data());
        ASSERT_EQ(lu, elements[i]);
    }
}

TEST(BlocCompresse, ZonesAbimees)
{
    TamponMemoire zone(256);
    EncodageParBlocCompresse encodeur(&zone, 32, sdd::kCompressionZlib);
    auto const p = encodeur.EncodeChaine(ChaineN(u"bonjour"), ChaineN::kUTF8);
    encodeur.TermineEncodage();
    std::string const bonne = Octets(zone);

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
    EXPECT_THROW(essaie(bonne, {p.positionBloc, 8}), ErreurDeserialisation);   // après la fin
    EXPECT_THROW(essaie(bonne, {p.positionBloc, 100}), ErreurDeserialisation); // hors du bloc
    EXPECT_THROW(essaie(bonne, p, 9), ErreurDeserialisation);                  // compte trop grand
    EXPECT_THROW(essaie(bonne, {5000, 0}), ErreurDeserialisation);             // bloc hors zone
    EXPECT_THROW(essaie(bonne.substr(0, bonne.size() - 3), p), ErreurDeserialisation);

    // Sur une projection, un bloc tronqué est la même erreur (et non IndexHorsBorne).
    QTemporaryDir dossier;
    QFile fichier(dossier.filePath("zone"));
    ASSERT_TRUE(fichier.open(QIODevice::WriteOnly));
    fichier.write(bonne.data(), qint64(bonne.size() - 3));
    fichier.close();
    sdd::FichierMMap projection{UniChemin(fichier.fileName())};
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
        }
    }
}
