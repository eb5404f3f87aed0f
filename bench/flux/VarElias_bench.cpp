#include <benchmark/benchmark.h>

#include <random>
#include <vector>

#include "noyau/flux/Serialiseur.h"
#include "noyau/flux/TamponMemoire.h"
#include "noyau/flux/VarElias.h"

using sdd::TamponMemoire;

namespace {

// Dix millions de valeurs de toutes longueurs de code, surtout petites comme les longueurs
// et les comptes réels.
std::vector<std::uint32_t> const& Valeurs()
{
    static std::vector<std::uint32_t> const valeurs = [] {
        std::mt19937 hasard(1);
        std::vector<std::uint32_t> v(10'000'000);
        for (auto& x : v) {
            unsigned int const bits = std::uniform_int_distribution<unsigned int>(1, 28)(hasard);
            x = std::uniform_int_distribution<std::uint32_t>(0, (1u << bits) - 1)(hasard);
        }
        return v;
    }();
    return valeurs;
}

template <typename Ecris, typename Lis>
void MesureEcritureLecture(benchmark::State& etat, Ecris ecris, Lis lis)
{
    auto const& valeurs = Valeurs();
    for (auto _ : etat) {
        TamponMemoire t(256);
        for (std::uint32_t v : valeurs) {
            ecris(t, v);
        }
        t.PositionneAuDebut();
        std::uint32_t somme = 0;
        for (std::size_t i = 0; i < valeurs.size(); ++i) {
            somme += lis(t);
        }
        benchmark::DoNotOptimize(somme);
    }
    etat.SetItemsProcessed(std::int64_t(etat.iterations()) * std::int64_t(valeurs.size()));
}

void EcritLit_Noyau(benchmark::State& etat)
{
    MesureEcritureLecture(
        etat, [](TamponMemoire& t, std::uint32_t v) { sdd::VarElias::Ecris(t, v); },
        [](TamponMemoire& t) { return sdd::VarElias::Lis(t); });
}

void EcritLit_LE32(benchmark::State& etat)
{
    using S = sdd::Serialiseur<std::uint32_t>;
    MesureEcritureLecture(
        etat, [](TamponMemoire& t, std::uint32_t v) { S::Ecris(t, v); },
        [](TamponMemoire& t) {
            std::uint32_t v;
            S::Lis(t, &v);
            return v;
        });
}

} // namespace

BENCHMARK(EcritLit_Noyau)->Name("VarEliasEcritLit/Noyau")->Unit(benchmark::kMillisecond);
BENCHMARK(EcritLit_LE32)->Name("VarEliasEcritLit/LE32")->Unit(benchmark::kMillisecond);
