#include <benchmark/benchmark.h>

#include "noyau/chaines/UniChaine.h"
#include "noyau/fils/DFil.h"
#include "noyau/fils/FileOperations.h"

#include <boost/asio/post.hpp>
#include <boost/asio/strand.hpp>
#include <boost/asio/thread_pool.hpp>

#include <atomic>
#include <cmath>
#include <future>

using sdd::FileOperations;

namespace {

constexpr int kBlocs = 1'000'000;

// Le pair : un pool Boost.Asio de même taille que ceux de la bibliothèque.
boost::asio::thread_pool& PoolPair()
{
    static boost::asio::thread_pool pool(sdd::DFil::NbProcesseurs());
    return pool;
}

// Envoie kBlocs blocs vides, puis attend que le dernier ait tourné.
template <typename Envoie> void MesureSerie(benchmark::State& etat, Envoie envoie)
{
    for (auto _ : etat) {
        for (int i = 0; i < kBlocs; ++i) {
            envoie([] {});
        }
        std::promise<void> fin;
        envoie([&fin] { fin.set_value(); });
        fin.get_future().wait();
    }
    etat.SetItemsProcessed(std::int64_t(etat.iterations()) * kBlocs);
}

// Sur une file concurrente, la fin est le dernier décompte.
template <typename Envoie> void MesureGlobale(benchmark::State& etat, Envoie envoie)
{
    for (auto _ : etat) {
        std::atomic<int> reste{kBlocs};
        std::promise<void> fin;
        for (int i = 0; i < kBlocs; ++i) {
            envoie([&reste, &fin] {
                if (reste.fetch_sub(1, std::memory_order_acq_rel) == 1) {
                    fin.set_value();
                }
            });
        }
        fin.get_future().wait();
    }
    etat.SetItemsProcessed(std::int64_t(etat.iterations()) * kBlocs);
}

void Serie_Noyau(benchmark::State& etat)
{
    FileOperations file(UniChaine("mesure"));
    MesureSerie(etat, [&](auto bloc) { file.LanceBlocOperation(bloc); });
}

void Serie_Asio(benchmark::State& etat)
{
    auto brin = boost::asio::make_strand(PoolPair().get_executor());
    MesureSerie(etat, [&](auto bloc) { boost::asio::post(brin, bloc); });
}

void Globale_Noyau(benchmark::State& etat)
{
    FileOperations* const file = FileOperations::GlobaleDeDefaut();
    MesureGlobale(etat, [&](auto bloc) { file->LanceBlocOperation(bloc); });
}

void Globale_Asio(benchmark::State& etat)
{
    MesureGlobale(etat, [](auto bloc) { boost::asio::post(PoolPair(), bloc); });
}

// Un petit travail de calcul, de l'ordre de la microseconde.
double Travail(unsigned int i)
{
    double s = 0;
    for (unsigned int k = 1; k <= 300; ++k) {
        s += std::sqrt(double(i + k));
    }
    return s;
}

constexpr unsigned int kTravaux = 10'000;

void NFois_Noyau(benchmark::State& etat)
{
    std::vector<double> resultats(kTravaux);
    for (auto _ : etat) {
        FileOperations::GlobaleDeDefaut()->LanceBlocOperationNFois(
            kTravaux, [&](unsigned int i) { resultats[i] = Travail(i); });
        benchmark::DoNotOptimize(resultats.data());
    }
    etat.SetItemsProcessed(std::int64_t(etat.iterations()) * kTravaux);
}

void NFois_Boucle(benchmark::State& etat)
{
    std::vector<double> resultats(kTravaux);
    for (auto _ : etat) {
        for (unsigned int i = 0; i < kTravaux; ++i) {
            resultats[i] = Travail(i);
        }
        benchmark::DoNotOptimize(resultats.data());
    }
    etat.SetItemsProcessed(std::int64_t(etat.iterations()) * kTravaux);
}

} // namespace

BENCHMARK(Serie_Noyau)->Name("FileSerie/Noyau")->Unit(benchmark::kMillisecond);
BENCHMARK(Serie_Asio)->Name("FileSerie/Asio")->Unit(benchmark::kMillisecond);
BENCHMARK(Globale_Noyau)->Name("FileGlobale/Noyau")->Unit(benchmark::kMillisecond);
BENCHMARK(Globale_Asio)->Name("FileGlobale/Asio")->Unit(benchmark::kMillisecond);
BENCHMARK(NFois_Noyau)->Name("NFois/Noyau")->Unit(benchmark::kMillisecond);
BENCHMARK(NFois_Boucle)->Name("NFois/Boucle")->Unit(benchmark::kMillisecond);
