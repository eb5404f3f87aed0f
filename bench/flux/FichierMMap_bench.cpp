#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "flux/FichierDonnees.h"
#include "noyau/flux/Fichier.h"
#include "noyau/flux/FichierMMap.h"

namespace {

constexpr unsigned int kBloc = 4096;
// Octet par octet, les 16 premiers Mio suffisent.
constexpr unsigned int kOctetsUnParUn = 16u << 20;

// Le même fichier, lu par blocs puis octet par octet, projeté ou par le flux de fichier.
template <typename F> void ParBlocs(benchmark::State& etat, F ouvre)
{
    std::vector<unsigned char> bloc(kBloc);
    for (auto _ : etat) {
        auto f = ouvre();
        while (!f->EstALaFin() && f->DonneTaille() - f->DonnePosition() >= kBloc) {
            f->Donne(kBloc, bloc.data());
        }
        benchmark::DoNotOptimize(bloc.data());
    }
    etat.SetBytesProcessed(std::int64_t(etat.iterations()) * std::int64_t(DonneTexteMots().size()));
}

template <typename F> void UnParUn(benchmark::State& etat, F ouvre)
{
    for (auto _ : etat) {
        auto f = ouvre();
        unsigned int somme = 0;
        for (unsigned int i = 0; i < kOctetsUnParUn; ++i) {
            somme += f->Donne();
        }
        benchmark::DoNotOptimize(somme);
    }
    etat.SetBytesProcessed(std::int64_t(etat.iterations()) * kOctetsUnParUn);
}

auto Projete()
{
    return std::make_unique<sdd::FichierMMap>(UniChemin(DonneFichierMots().c_str()));
}

auto Lis()
{
    return std::make_unique<sdd::Fichier>(UniChemin(DonneFichierMots().c_str()),
                                          sdd::Fichier::kLecture, UniChaine::kUTF8, true);
}

void Blocs_Noyau(benchmark::State& etat)
{
    ParBlocs(etat, Projete);
}

void Blocs_Fichier(benchmark::State& etat)
{
    ParBlocs(etat, Lis);
}

void Octets_Noyau(benchmark::State& etat)
{
    UnParUn(etat, Projete);
}

void Octets_Fichier(benchmark::State& etat)
{
    UnParUn(etat, Lis);
}

} // namespace

BENCHMARK(Blocs_Noyau)->Name("ProjectionLectureBlocs/Noyau")->Unit(benchmark::kMillisecond);
BENCHMARK(Blocs_Fichier)->Name("ProjectionLectureBlocs/Fichier")->Unit(benchmark::kMillisecond);
BENCHMARK(Octets_Noyau)->Name("ProjectionLectureOctets/Noyau")->Unit(benchmark::kMillisecond);
BENCHMARK(Octets_Fichier)->Name("ProjectionLectureOctets/Fichier")->Unit(benchmark::kMillisecond);
