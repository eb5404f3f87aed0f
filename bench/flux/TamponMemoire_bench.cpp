#include <QByteArray>
#include <benchmark/benchmark.h>

#include <vector>

#include "noyau/flux/TamponMemoire.h"

using sdd::TamponMemoire;

namespace {

// Un peu moins d'un mégaoctet : les trois conteneurs finissent avec un bloc de même taille
// (à 2^20 pile, l'octet de réserve de TamponMemoire le ferait doubler une fois de plus).
constexpr unsigned int kOctets = (1u << 20) - 64;
constexpr unsigned int kCapaciteInitiale = 256;
constexpr unsigned int kBloc = 16;
constexpr unsigned char kSeize[kBloc] = {'a', 'b', 'c', 'd', 'e', 'f', 'g', 'h',
                                         'i', 'j', 'k', 'l', 'm', 'n', 'o', 'p'};

template <typename Mesure> void Octets(benchmark::State& etat, Mesure mesure)
{
    for (auto _ : etat) {
        mesure();
    }
    etat.SetBytesProcessed(std::int64_t(etat.iterations()) * kOctets);
}

// Octet par octet dans un tampon déjà assez grand, vidé à chaque tour : le coût de l'ajout seul.
void OctetParOctet_Noyau(benchmark::State& etat)
{
    TamponMemoire t(kOctets + 1);
    Octets(etat, [&] {
        t.Vide();
        for (unsigned int i = 0; i < kOctets; ++i) {
            t.Mets(static_cast<unsigned char>(i));
        }
        benchmark::DoNotOptimize(t.DonneDonnees());
    });
}

void OctetParOctet_Vector(benchmark::State& etat)
{
    std::vector<unsigned char> v;
    v.reserve(kOctets + 1);
    Octets(etat, [&] {
        v.clear();
        for (unsigned int i = 0; i < kOctets; ++i) {
            v.push_back(static_cast<unsigned char>(i));
        }
        benchmark::DoNotOptimize(v.data());
    });
}

void OctetParOctet_QByteArray(benchmark::State& etat)
{
    QByteArray q;
    q.reserve(kOctets + 1); // capacité réservée : resize(0) la garde
    Octets(etat, [&] {
        q.resize(0);
        for (unsigned int i = 0; i < kOctets; ++i) {
            q.append(static_cast<char>(i));
        }
        benchmark::DoNotOptimize(q.data());
    });
}

// Le même volume par blocs de 16 octets.
void ParBlocs_Noyau(benchmark::State& etat)
{
    TamponMemoire t(kOctets + 1);
    Octets(etat, [&] {
        t.Vide();
        for (unsigned int i = 0; i < kOctets; i += kBloc) {
            t.Mets(kSeize, kBloc);
        }
        benchmark::DoNotOptimize(t.DonneDonnees());
    });
}

void ParBlocs_Vector(benchmark::State& etat)
{
    std::vector<unsigned char> v;
    v.reserve(kOctets + 1);
    Octets(etat, [&] {
        v.clear();
        for (unsigned int i = 0; i < kOctets; i += kBloc) {
            v.insert(v.end(), kSeize, kSeize + kBloc);
        }
        benchmark::DoNotOptimize(v.data());
    });
}

void ParBlocs_QByteArray(benchmark::State& etat)
{
    QByteArray q;
    q.reserve(kOctets + 1);
    Octets(etat, [&] {
        q.resize(0);
        for (unsigned int i = 0; i < kOctets; i += kBloc) {
            q.append(reinterpret_cast<char const*>(kSeize), kBloc);
        }
        benchmark::DoNotOptimize(q.data());
    });
}

// Octet par octet depuis 256 octets : les agrandissements comptent.
void AvecCroissance_Noyau(benchmark::State& etat)
{
    Octets(etat, [] {
        TamponMemoire t(kCapaciteInitiale);
        for (unsigned int i = 0; i < kOctets; ++i) {
            t.Mets(static_cast<unsigned char>(i));
        }
        benchmark::DoNotOptimize(t.DonneDonnees());
    });
}

void AvecCroissance_Vector(benchmark::State& etat)
{
    Octets(etat, [] {
        std::vector<unsigned char> v;
        v.reserve(kCapaciteInitiale);
        for (unsigned int i = 0; i < kOctets; ++i) {
            v.push_back(static_cast<unsigned char>(i));
        }
        benchmark::DoNotOptimize(v.data());
    });
}

void AvecCroissance_QByteArray(benchmark::State& etat)
{
    Octets(etat, [] {
        QByteArray q;
        q.reserve(kCapaciteInitiale);
        for (unsigned int i = 0; i < kOctets; ++i) {
            q.append(static_cast<char>(i));
        }
        benchmark::DoNotOptimize(q.data());
    });
}

} // namespace

BENCHMARK(OctetParOctet_Noyau)->Name("AjoutOctetParOctet/Noyau");
BENCHMARK(OctetParOctet_Vector)->Name("AjoutOctetParOctet/std_vector");
BENCHMARK(OctetParOctet_QByteArray)->Name("AjoutOctetParOctet/QByteArray");
BENCHMARK(ParBlocs_Noyau)->Name("AjoutParBlocs16/Noyau");
BENCHMARK(ParBlocs_Vector)->Name("AjoutParBlocs16/std_vector");
BENCHMARK(ParBlocs_QByteArray)->Name("AjoutParBlocs16/QByteArray");
BENCHMARK(AvecCroissance_Noyau)->Name("AjoutAvecCroissance/Noyau");
BENCHMARK(AvecCroissance_Vector)->Name("AjoutAvecCroissance/std_vector");
BENCHMARK(AvecCroissance_QByteArray)->Name("AjoutAvecCroissance/QByteArray");
