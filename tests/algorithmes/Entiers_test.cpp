#include "noyau/algorithmes/Entiers.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <string>

namespace {

template <typename Entier, typename Fonction> void CompareAToString(Fonction f, Entier valeur)
{
    char tampon[32];
    std::string const attendu = std::to_string(valeur);
    ASSERT_EQ(f(valeur, tampon), static_cast<int>(attendu.size())) << attendu;
    EXPECT_EQ(std::string(tampon), attendu);
}

template <typename Entier, typename Fonction> void CompareBornesEtHasard(Fonction f)
{
    using Limites = std::numeric_limits<Entier>;
    for (Entier v : {Limites::min(), Entier(Limites::min() + 1), Entier(0), Entier(1), Entier(9),
                     Entier(10), Entier(99), Entier(100), Limites::max()}) {
        CompareAToString(f, v);
    }
    std::mt19937_64 hasard(42);
    for (int i = 0; i < 10000; ++i) {
        CompareAToString(f, static_cast<Entier>(hasard() >> (hasard() % 64)));
    }
}

} // namespace

TEST(Entiers, CommeStdToString)
{
    CompareBornesEtHasard<std::int32_t>(mon_itoa);
    CompareBornesEtHasard<std::uint32_t>(mon_itoa_ent4ss);
    CompareBornesEtHasard<std::int64_t>(mon_itoa_ent8);
    CompareBornesEtHasard<std::uint64_t>(mon_itoa_ent8ss);
}
