#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/TamponMemoire.h"
#include "noyau/flux/VarElias.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

using sdd::TamponMemoire;
using sdd::VarElias;
using sdd::exceptions::ErreurDeserialisation;
using Octets = std::vector<unsigned char>;

namespace {

Octets Code(std::uint32_t valeur)
{
    TamponMemoire t(1);
    VarElias::Ecris(t, valeur);
    return Octets(t.DonneDonnees(), t.DonneDonnees() + t.DonneTaille());
}

// L'explication de l'erreur que lève la lecture de ces octets, en flux et en mémoire (les
// deux doivent s'accorder).
QString ErreurALaLecture(Octets const& octets)
{
    TamponMemoire t(1);
    t.Mets(octets.data(), static_cast<unsigned int>(octets.size()));
    t.PositionneAuDebut();
    QString enFlux, enMemoire;
    try {
        VarElias::Lis(t);
    } catch (ErreurDeserialisation const& e) {
        enFlux = e.Explication();
    }
    try {
        std::uint32_t v;
        VarElias::Lis(octets.data(), octets.data() + octets.size(), &v);
    } catch (ErreurDeserialisation const& e) {
        enMemoire = e.Explication();
    }
    EXPECT_EQ(enFlux, enMemoire);
    return enFlux;
}

} // namespace

TEST(VarElias, OctetsAuxBornes)
{
    struct Cas
    {
        std::uint32_t valeur;
        Octets octets;
    };
    std::vector<Cas> const cas = {
        {0, {0x80}},
        {127, {0xFF}},
        {128, {0x40, 0x00}},
        {16511, {0x7F, 0xFF}},
        {16512, {0x20, 0x00, 0x00}},
        {2113663, {0x3F, 0xFF, 0xFF}},
        {2113664, {0x10, 0x00, 0x00, 0x00}},
        {270549119, {0x1F, 0xFF, 0xFF, 0xFF}},
        {300, {0x40, 0xAC}},
    };
    for (auto const& c : cas) {
        SCOPED_TRACE(c.valeur);
        EXPECT_EQ(Code(c.valeur), c.octets);
        EXPECT_EQ(VarElias::Longueur(c.valeur), c.octets.size());
        unsigned char memoire[4];
        ASSERT_EQ(VarElias::Ecris(memoire, c.valeur), c.octets.size());
        EXPECT_EQ(Octets(memoire, memoire + c.octets.size()), c.octets);
        std::uint32_t lue = 0;
        EXPECT_EQ(VarElias::Lis(c.octets.data(), c.octets.data() + c.octets.size(), &lue),
                  c.octets.size());
        EXPECT_EQ(lue, c.valeur);
    }
    EXPECT_THROW(Code(VarElias::kValeurMax + 1), sdd::exceptions::IndexHorsBorne);
}

TEST(VarElias, AllerRetourAuHasard)
{
    std::mt19937 hasard(7);
    TamponMemoire t(16);
    std::vector<std::uint32_t> valeurs;
    for (int i = 0; i < 20000; ++i) {
        std::uint32_t const v = hasard() % (VarElias::kValeurMax >> (hasard() % 29));
        valeurs.push_back(v);
        VarElias::Ecris(t, v);
    }
    t.PositionneAuDebut();
    unsigned char const* p = t.DonneDonnees();
    unsigned char const* const fin = p + t.DonneTaille();
    for (std::uint32_t v : valeurs) {
        ASSERT_EQ(VarElias::Lis(t), v);
        std::uint32_t enMemoire;
        p += VarElias::Lis(p, fin, &enMemoire);
        ASSERT_EQ(enMemoire, v);
    }
    EXPECT_TRUE(t.EstALaFin());
    EXPECT_EQ(p, fin);
}

TEST(VarElias, CodesInvalides)
{
    EXPECT_EQ(ErreurALaLecture({0x00, 0x80}), QString("VarElias : valeur 0"));
    QString const tronque = ErreurALaLecture({});
    EXPECT_FALSE(tronque.isEmpty());
    for (Octets const& coupe : {Octets{0x40}, Octets{0x20, 0x00}, Octets{0x10, 1, 2}}) {
        EXPECT_EQ(ErreurALaLecture(coupe), tronque);
    }
    QString const tropLong = ErreurALaLecture({0x08, 0, 0, 0, 0});
    EXPECT_FALSE(tropLong.isEmpty());
    EXPECT_NE(tropLong, tronque);
    EXPECT_EQ(ErreurALaLecture({0x01, 0, 0, 0, 0, 0, 0, 0}), tropLong);

    // Le flux ne se lit pas au-delà de sa taille, même si le bloc continue.
    TamponMemoire t(16);
    t.Mets("\x40\x00", 2);
    t.MetsTaille(1);
    t.PositionneAuDebut();
    EXPECT_THROW(VarElias::Lis(t), ErreurDeserialisation);
    EXPECT_EQ(t.DonnePosition(), 1u);
}
