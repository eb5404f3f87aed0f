#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "flux/FichierDonnees.h"
#include "noyau/flux/FichierAvecTampon.h"

using sdd::Fichier;
using sdd::FichierAvecTampon;

namespace {

constexpr unsigned int kBloc = 4096;

UniChemin Chemin(std::string const& chemin)
{
    return UniChemin(chemin.c_str());
}

void Mesure(benchmark::State& etat)
{
    etat.SetBytesProcessed(std::int64_t(etat.iterations()) * std::int64_t(DonneTexteMots().size()));
}

// Découpe du texte en lignes, faite une fois hors des mesures.
std::vector<std::pair<char const*, int>> const& Lignes()
{
    static std::vector<std::pair<char const*, int>> const lignes = [] {
        std::vector<std::pair<char const*, int>> l;
        std::string const& t = DonneTexteMots();
        std::size_t debut = 0;
        for (std::size_t fin; (fin = t.find('\n', debut)) != std::string::npos; debut = fin + 1) {
            l.emplace_back(t.data() + debut, int(fin - debut));
        }
        return l;
    }();
    return lignes;
}

void EcritureLignes_Noyau(benchmark::State& etat)
{
    auto const& lignes = Lignes();
    for (auto _ : etat) {
        FichierAvecTampon f(Chemin(DonneCheminEcriture()), Fichier::kEcriture);
        for (auto const& [texte, n] : lignes) {
            f.Ecris(texte, n);
            f.Mets('\n');
        }
    }
    Mesure(etat);
}

void EcritureLignes_Stdio(benchmark::State& etat)
{
    auto const& lignes = Lignes();
    for (auto _ : etat) {
        std::FILE* f = std::fopen(DonneCheminEcriture().c_str(), "wb");
        for (auto const& [texte, n] : lignes) {
            std::fwrite(texte, 1, std::size_t(n), f);
            std::fputc('\n', f);
        }
        std::fclose(f);
    }
    Mesure(etat);
}

void EcritureBlocs_Noyau(benchmark::State& etat)
{
    std::string const& t = DonneTexteMots();
    for (auto _ : etat) {
        FichierAvecTampon f(Chemin(DonneCheminEcriture()), Fichier::kEcriture);
        for (std::size_t i = 0; i + kBloc <= t.size(); i += kBloc) {
            f.Ecris(t.data() + i, kBloc);
        }
    }
    Mesure(etat);
}

void EcritureBlocs_Stdio(benchmark::State& etat)
{
    std::string const& t = DonneTexteMots();
    for (auto _ : etat) {
        std::FILE* f = std::fopen(DonneCheminEcriture().c_str(), "wb");
        for (std::size_t i = 0; i + kBloc <= t.size(); i += kBloc) {
            std::fwrite(t.data() + i, 1, kBloc, f);
        }
        std::fclose(f);
    }
    Mesure(etat);
}

void LectureLignes_Noyau(benchmark::State& etat)
{
    char ligne[256];
    for (auto _ : etat) {
        FichierAvecTampon f(Chemin(DonneFichierMots()), Fichier::kLecture, UniChaine::kUTF8, true);
        std::size_t n = 0;
        while (f.DonneLigne(ligne, sizeof ligne)) {
            ++n;
        }
        benchmark::DoNotOptimize(n);
    }
    Mesure(etat);
}

void LectureLignes_Stdio(benchmark::State& etat)
{
    char* ligne = nullptr;
    std::size_t place = 0;
    for (auto _ : etat) {
        std::FILE* f = std::fopen(DonneFichierMots().c_str(), "rb");
        std::size_t n = 0;
        while (getline(&ligne, &place, f) > 0) {
            ++n;
        }
        std::fclose(f);
        benchmark::DoNotOptimize(n);
    }
    std::free(ligne);
    Mesure(etat);
}

void LectureBlocs_Noyau(benchmark::State& etat)
{
    std::vector<unsigned char> bloc(kBloc);
    for (auto _ : etat) {
        FichierAvecTampon f(Chemin(DonneFichierMots()), Fichier::kLecture, UniChaine::kUTF8, true);
        while (f.Donne(kBloc, bloc.data()) == kBloc) {
        }
        benchmark::DoNotOptimize(bloc.data());
    }
    Mesure(etat);
}

void LectureBlocs_Stdio(benchmark::State& etat)
{
    std::vector<unsigned char> bloc(kBloc);
    for (auto _ : etat) {
        std::FILE* f = std::fopen(DonneFichierMots().c_str(), "rb");
        while (std::fread(bloc.data(), 1, kBloc, f) == kBloc) {
        }
        std::fclose(f);
        benchmark::DoNotOptimize(bloc.data());
    }
    Mesure(etat);
}

} // namespace

// 100 Mio par tour : le temps minimal par défaut n'en fait que quelques-uns.
#define NOYAU_FICHIER_BENCH(fonction, nom)                                                         \
    BENCHMARK(fonction)->Name(nom)->Unit(benchmark::kMillisecond)

NOYAU_FICHIER_BENCH(EcritureLignes_Noyau, "FichierEcritureLignes/Noyau");
NOYAU_FICHIER_BENCH(EcritureLignes_Stdio, "FichierEcritureLignes/stdio");
NOYAU_FICHIER_BENCH(EcritureBlocs_Noyau, "FichierEcritureBlocs/Noyau");
NOYAU_FICHIER_BENCH(EcritureBlocs_Stdio, "FichierEcritureBlocs/stdio");
NOYAU_FICHIER_BENCH(LectureLignes_Noyau, "FichierLectureLignes/Noyau");
NOYAU_FICHIER_BENCH(LectureLignes_Stdio, "FichierLectureLignes/stdio");
NOYAU_FICHIER_BENCH(LectureBlocs_Noyau, "FichierLectureBlocs/Noyau");
NOYAU_FICHIER_BENCH(LectureBlocs_Stdio, "FichierLectureBlocs/stdio");
