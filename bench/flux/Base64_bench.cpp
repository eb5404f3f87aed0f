#include <QByteArray>
#include <benchmark/benchmark.h>

#include <random>

#include "noyau/flux/Base64.h"
#include "noyau/flux/TamponMemoire.h"

using sdd::TamponMemoire;

namespace {

constexpr unsigned int kOctets = 1u << 20;

QByteArray const& OctetsAuHasard()
{
    static QByteArray const octets = [] {
        std::mt19937 hasard(2);
        QByteArray q(kOctets, '\0');
        for (char& c : q) {
            c = static_cast<char>(hasard());
        }
        return q;
    }();
    return octets;
}

TamponMemoire Tampon(QByteArray const& q)
{
    TamponMemoire t(1);
    t.Mets(q.constData(), static_cast<unsigned int>(q.size()));
    return t;
}

void Encode_Noyau(benchmark::State& etat)
{
    TamponMemoire const source = Tampon(OctetsAuHasard());
    for (auto _ : etat) {
        TamponMemoire cible(256);
        sdd::Base64::Encode(source, cible);
        benchmark::DoNotOptimize(cible.DonneDonnees());
    }
    etat.SetBytesProcessed(std::int64_t(etat.iterations()) * kOctets);
}

void Encode_Qt(benchmark::State& etat)
{
    QByteArray const& source = OctetsAuHasard();
    for (auto _ : etat) {
        QByteArray const cible = source.toBase64();
        benchmark::DoNotOptimize(cible.constData());
    }
    etat.SetBytesProcessed(std::int64_t(etat.iterations()) * kOctets);
}

void Decode_Noyau(benchmark::State& etat)
{
    TamponMemoire const source = Tampon(OctetsAuHasard().toBase64());
    for (auto _ : etat) {
        TamponMemoire cible(256);
        sdd::Base64::Decode(source, cible);
        benchmark::DoNotOptimize(cible.DonneDonnees());
    }
    etat.SetBytesProcessed(std::int64_t(etat.iterations()) * kOctets);
}

void Decode_Qt(benchmark::State& etat)
{
    QByteArray const source = OctetsAuHasard().toBase64();
    for (auto _ : etat) {
        QByteArray const cible = QByteArray::fromBase64(source);
        benchmark::DoNotOptimize(cible.constData());
    }
    etat.SetBytesProcessed(std::int64_t(etat.iterations()) * kOctets);
}

} // namespace

BENCHMARK(Encode_Noyau)->Name("Base64Encode/Noyau");
BENCHMARK(Encode_Qt)->Name("Base64Encode/Qt_toBase64");
BENCHMARK(Decode_Noyau)->Name("Base64Decode/Noyau");
BENCHMARK(Decode_Qt)->Name("Base64Decode/Qt_fromBase64");
