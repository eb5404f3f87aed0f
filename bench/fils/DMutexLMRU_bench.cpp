#include <benchmark/benchmark.h>

#include "noyau/fils/DMutexLMRU.h"

#include <shared_mutex>
#include <thread>

namespace {

constexpr int kLectures = 200'000;

// Deux fils lecteurs prennent et rendent le verrou kLectures fois chacun.
template <typename Verrou, typename Prends, typename Rends>
void MesureDeuxLecteurs(benchmark::State& etat, Prends prends, Rends rends)
{
    Verrou verrou;
    long donnee = 1;
    for (auto _ : etat) {
        auto lecteur = [&] {
            long somme = 0;
            for (int i = 0; i < kLectures; ++i) {
                prends(verrou);
                somme += donnee;
                rends(verrou);
            }
            benchmark::DoNotOptimize(somme);
        };
        std::thread a(lecteur), b(lecteur);
        a.join();
        b.join();
    }
    etat.SetItemsProcessed(std::int64_t(etat.iterations()) * 2 * kLectures);
}

void Lecteurs_Noyau(benchmark::State& etat)
{
    MesureDeuxLecteurs<sdd::DMutexLMRU>(
        etat, [](sdd::DMutexLMRU& v) { v.VerrouilleLecteur(); },
        [](sdd::DMutexLMRU& v) { v.DeverrouilleLecteur(); });
}

void Lecteurs_SharedMutex(benchmark::State& etat)
{
    MesureDeuxLecteurs<std::shared_mutex>(
        etat, [](std::shared_mutex& v) { v.lock_shared(); },
        [](std::shared_mutex& v) { v.unlock_shared(); });
}

} // namespace

BENCHMARK(Lecteurs_Noyau)->Name("LMRUDeuxLecteurs/Noyau")->Unit(benchmark::kMillisecond);
BENCHMARK(Lecteurs_SharedMutex)
    ->Name("LMRUDeuxLecteurs/shared_mutex")
    ->Unit(benchmark::kMillisecond);
