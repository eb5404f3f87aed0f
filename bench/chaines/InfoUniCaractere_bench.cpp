#include <benchmark/benchmark.h>
#include <unicode/uchar.h>

#include <string>

#include "DonneesBench.h"
#include "noyau/chaines/InfoUniCaractere.h"

namespace {

// Minuscule de chaque unité d'un texte : la colonne 1 de la table contre u_tolower.
template <typename Minuscule>
void MesureMinuscules(benchmark::State& etat, Minuscule minuscule)
{
    std::u16string const& texte = DonneMotsFrancais();
    std::u16string resultat(texte.size(), u'\0');
    for (auto _ : etat) {
        for (std::size_t i = 0; i < texte.size(); ++i)
            resultat[i] = minuscule(texte[i]);
        benchmark::DoNotOptimize(resultat.data());
        benchmark::ClobberMemory();
    }
    etat.SetItemsProcessed(std::int64_t(etat.iterations()) * std::int64_t(texte.size()));
}

void MinusculeParUnite_Noyau(benchmark::State& etat)
{
    MesureMinuscules(etat, [](char16_t c) { return char16_t(gInfoUniCaractere[c][kInfoMinuscule]); });
}

void MinusculeParUnite_ICU(benchmark::State& etat)
{
    MesureMinuscules(etat, [](char16_t c) { return char16_t(u_tolower(c)); });
}

}  // namespace

BENCHMARK(MinusculeParUnite_Noyau)->Name("MinusculeParUnite/Noyau");
BENCHMARK(MinusculeParUnite_ICU)->Name("MinusculeParUnite/ICU_u_tolower");
