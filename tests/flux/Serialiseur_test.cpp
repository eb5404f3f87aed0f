#include "noyau/chaines/ChaineN.h"
#include "noyau/chaines/UniChaine.h"
#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/FichierMMap.h"
#include "noyau/flux/Serialiseur.h"
#include "noyau/flux/TamponMemoire.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <limits>
#include <string>

using sdd::Serialiseur;
using sdd::TamponMemoire;

namespace {

std::string Octets(TamponMemoire const& t)
{
    return std::string(reinterpret_cast<char const*>(t.DonneDonnees()), t.DonneTaille());
}

// Octets écrits pour la valeur, et relecture identique.
template <typename T> std::string AllerRetour(T const& valeur)
{
    TamponMemoire t(1);
    t.Mets('#');
    EXPECT_EQ(Serialiseur<T>::Ecris(t, valeur), 1u);
    t.Positionne(1);
    T lue{};
    Serialiseur<T>::Lis(t, &lue);
    EXPECT_EQ(lue, valeur);
    EXPECT_TRUE(t.EstALaFin());
    return Octets(t).substr(1);
}

} // namespace

TEST(Serialiseur, EntiersEtBooleens)
{
    using std::string;
    EXPECT_EQ(AllerRetour<std::int8_t>(-2), "\xFE");
    EXPECT_EQ(AllerRetour<std::uint8_t>(200), "\xC8");
    EXPECT_EQ(AllerRetour<std::int16_t>(-2), "\xFE\xFF");
    EXPECT_EQ(AllerRetour<std::uint16_t>(0x1234), "\x34\x12");
    EXPECT_EQ(AllerRetour<std::int32_t>(std::numeric_limits<std::int32_t>::min()),
              string("\0\0\0\x80", 4));
    EXPECT_EQ(AllerRetour<std::uint32_t>(0x01020304), "\x04\x03\x02\x01");
    EXPECT_EQ(AllerRetour<std::int64_t>(-1), string(8, '\xFF'));
    EXPECT_EQ(AllerRetour<std::uint64_t>(0x0102030405060708), "\x08\x07\x06\x05\x04\x03\x02\x01");
    EXPECT_EQ(AllerRetour(true), "\x01");
    EXPECT_EQ(AllerRetour(false), string("\0", 1));

    // Un flux trop court lève ErreurDeserialisation et laisse la valeur.
    TamponMemoire t(8);
    t.Mets("\x01\x02\x03", 3);
    t.PositionneAuDebut();
    std::uint32_t v = 99;
    EXPECT_THROW(Serialiseur<std::uint32_t>::Lis(t, &v), sdd::exceptions::ErreurDeserialisation);
    EXPECT_EQ(v, 99u);
    bool b = true;
    EXPECT_THROW(Serialiseur<bool>::Lis(t, &b), sdd::exceptions::ErreurDeserialisation);

    // Sur une projection trop courte aussi, et non IndexHorsBorne.
    std::string const chemin = testing::TempDir() + "serialiseur_court";
    std::ofstream(chemin, std::ios::binary).write("\x05\x01\x02", 3);
    sdd::FichierMMap projection{UniChemin(chemin.c_str())};
    EXPECT_THROW(Serialiseur<std::uint32_t>::Lis(projection, &v),
                 sdd::exceptions::ErreurDeserialisation);
    projection.PositionneAuDebut();
    sdd::Associations associations;
    EXPECT_THROW(Serialiseur<sdd::Associations>::Lis(projection, &associations),
                 sdd::exceptions::ErreurDeserialisation);
    EXPECT_EQ(v, 99u);
    std::remove(chemin.c_str());
}

TEST(Serialiseur, Chaines)
{
    EXPECT_EQ(AllerRetour(sdd::ChaineN(u"l’été")),
              "l\xE2\x80\x99\xC3\xA9t\xC3\xA9" + std::string(1, '\0'));
    EXPECT_EQ(AllerRetour(UniChaine(u"l’été")), AllerRetour(sdd::ChaineN(u"l’été")));
    EXPECT_EQ(AllerRetour(UniChaine()), std::string(1, '\0'));

    TamponMemoire t(8);
    t.Mets("abc", 3);
    t.PositionneAuDebut();
    UniChaine u(u"garde");
    EXPECT_THROW(Serialiseur<UniChaine>::Lis(t, &u), sdd::exceptions::OperationInvalide);
    EXPECT_EQ(u.DonneQString(), QString("garde"));
}
