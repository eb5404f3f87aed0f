#include "noyau/chaines/UniChaine.h"
#include "noyau/flux/Base64.h"
#include "noyau/flux/TamponMemoire.h"

#include <QByteArray>
#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>

using sdd::Base64;
using sdd::TamponMemoire;

namespace {

TamponMemoire Tampon(std::string const& octets)
{
    TamponMemoire t(1);
    t.Mets(octets.data(), static_cast<unsigned int>(octets.size()));
    return t;
}

std::string Octets(TamponMemoire const& t)
{
    return std::string(reinterpret_cast<char const*>(t.DonneDonnees()), t.DonneTaille());
}

std::string Encode(std::string const& octets)
{
    TamponMemoire cible(1);
    Base64::Encode(Tampon(octets), cible);
    return Octets(cible);
}

std::string Decode(std::string const& texte)
{
    TamponMemoire cible(1);
    Base64::Decode(Tampon(texte), cible);
    return Octets(cible);
}

} // namespace

TEST(Base64, VecteursDeReference)
{
    std::pair<char const*, char const*> const cas[] = {
        {"", ""},
        {"f", "Zg=="},
        {"fo", "Zm8="},
        {"foo", "Zm9v"},
        {"foob", "Zm9vYg=="},
        {"fooba", "Zm9vYmE="},
        {"foobar", "Zm9vYmFy"},
        {"Man", "TWFu"},
        {"M", "TQ=="},
    };
    for (auto const& [clair, code] : cas) {
        EXPECT_EQ(Encode(clair), code);
        EXPECT_EQ(Decode(code), clair);
    }
}

TEST(Base64, ContreQtAuHasard)
{
    std::mt19937 hasard(11);
    for (std::size_t n = 0; n <= 300; ++n) {
        std::string octets(n, '\0');
        for (char& c : octets) {
            c = static_cast<char>(hasard());
        }
        QByteArray const qt = QByteArray(octets.data(), int(n)).toBase64();
        std::string const code = Encode(octets);
        ASSERT_EQ(code, qt.toStdString()) << n;
        ASSERT_EQ(Decode(code), QByteArray::fromBase64(qt).toStdString()) << n;
    }
}

TEST(Base64, AjoutALaPositionEtEntreesAbimees)
{
    // L'ajout se fait à la position de la cible, taille et position au bout, comme par Mets.
    TamponMemoire cible(2);
    cible.Mets("<<", 2);
    Base64::Encode(Tampon("Man"), cible);
    EXPECT_EQ(Octets(cible), "<<TWFu");
    EXPECT_EQ(cible.DonnePosition(), 6u);
    cible.Mets('>');
    EXPECT_EQ(Octets(cible), "<<TWFu>");
    // Source et cible confondues : la source est lue telle qu'elle était avant l'ajout.
    TamponMemoire soi = Tampon("Man");
    Base64::Encode(soi, soi);
    EXPECT_EQ(Octets(soi), "ManTWFu");
    soi.Positionne(3);
    Base64::Decode(soi, soi);
    EXPECT_EQ(Octets(soi), std::string("Man1\xA9\xD3X[", 8));
    // Une source qui emprunte le bloc de la cible, sans croissance puis avec.
    for (unsigned int const capacite : {64u, 13u}) {
        TamponMemoire cible(capacite);
        cible.Mets("Hello, world", 12);
        std::unique_ptr<TamponMemoire> vue(cible.TamponEnPretantDonnees());
        cible.Positionne(0);
        Base64::Encode(*vue, cible);
        EXPECT_EQ(Octets(cible), "SGVsbG8sIHdvcmxk") << capacite;
    }

    // Dernier groupe incomplet : les caractères absents comptent pour des zéros.
    EXPECT_EQ(Decode("TQ"), "M");
    EXPECT_EQ(Decode("TWE"), "Ma");
    EXPECT_EQ(Decode("T"), "L"); // 19 << 2 = 0x4C
    // Un « = » en troisième ou quatrième place arrête tout.
    EXPECT_EQ(Decode("TQ==TWFu"), "M");
    EXPECT_EQ(Decode("TQ=u"), "M");
    // Hors alphabet : valeur 0 (« A »).
    EXPECT_EQ(Decode("T*Fu"), Decode("TAFu"));
    EXPECT_EQ(Decode("====").size(), 1u);
}

TEST(Base64, NombreSimple)
{
    // Les octets du nombre, poids faible d'abord, tous les sizeof(unsigned long).
    std::string octets(sizeof(unsigned long), '\0');
    octets[0] = 0x34;
    octets[1] = 0x12;
    EXPECT_EQ(Base64::EncodeNombreSimple(0x1234).DonneQString().toStdString(), Encode(octets));
    if (sizeof(unsigned long) == 8) {
        EXPECT_EQ(Base64::EncodeNombreSimple(0x1234).DonneQString(), QString("NBIAAAAAAAA="));
        EXPECT_EQ(Base64::EncodeNombreSimple(~0ul).DonneQString(), QString("//////////8="));
    }
}
