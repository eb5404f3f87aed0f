#include <QString>
#include <benchmark/benchmark.h>
#include <unicode/ucol.h>

#include <memory>
#include <string>
#include <vector>

#include "DonneesBench.h"
#include "noyau/chaines/ChaineN.h"

using sdd::ChaineN;

namespace {

constexpr char16_t kVingtUnites[] = u"anticonstitutionnels";
static_assert(sizeof kVingtUnites / sizeof(char16_t) == 21);

void Copie_Noyau(benchmark::State& etat)
{
    ChaineN const source(kVingtUnites);
    for (auto _ : etat) {
        ChaineN copie(source);
        benchmark::DoNotOptimize(copie.PreteUniCString());
    }
}

void Copie_QString(benchmark::State& etat)
{
    QString const source = QString::fromUtf16(kVingtUnites);
    for (auto _ : etat) {
        QString copie(source);
        benchmark::DoNotOptimize(copie.constData());
    }
}

void Copie_U16string(benchmark::State& etat)
{
    std::u16string const source(kVingtUnites);
    for (auto _ : etat) {
        std::u16string copie(source);
        benchmark::DoNotOptimize(copie.data());
    }
}

// Décodage UTF-8 de chaque élément d'un texte découpé (mots ou messages).
template <typename Decode>
void MesureDecodage(benchmark::State& etat, std::vector<std::string> const& textes, Decode decode)
{
    std::int64_t octets = 0;
    for (auto const& t : textes)
        octets += std::int64_t(t.size());
    for (auto _ : etat)
        for (auto const& t : textes)
            decode(t);
    etat.SetBytesProcessed(std::int64_t(etat.iterations()) * octets);
}

void DepuisUTF8Mots_Noyau(benchmark::State& etat)
{
    MesureDecodage(etat, DonneListeMotsFrancaisUTF8(), [](std::string const& t) {
        ChaineN const c(t.data(), ChaineN::kUTF8, t.size());
        benchmark::DoNotOptimize(c.PreteUniCString());
    });
}

void DepuisUTF8Mots_Qt(benchmark::State& etat)
{
    MesureDecodage(etat, DonneListeMotsFrancaisUTF8(), [](std::string const& t) {
        QString const q = QString::fromUtf8(t.data(), int(t.size()));
        benchmark::DoNotOptimize(q.constData());
    });
}

void DepuisUTF8Catalogues_Noyau(benchmark::State& etat)
{
    MesureDecodage(etat, DonneMessagesFrancaisUTF8(), [](std::string const& t) {
        ChaineN const c(t.data(), ChaineN::kUTF8, t.size());
        benchmark::DoNotOptimize(c.PreteUniCString());
    });
}

void DepuisUTF8Catalogues_Qt(benchmark::State& etat)
{
    MesureDecodage(etat, DonneMessagesFrancaisUTF8(), [](std::string const& t) {
        QString const q = QString::fromUtf8(t.data(), int(t.size()));
        benchmark::DoNotOptimize(q.constData());
    });
}

// Encodage UTF-8 des mêmes textes, déjà décodés une fois pour toutes.
template <typename Chaine, typename Encode>
void MesureEncodage(benchmark::State& etat, std::vector<std::string> const& textes, Encode encode)
{
    std::vector<Chaine> chaines;
    for (auto const& t : textes) {
        QString const q = QString::fromUtf8(t.data(), int(t.size()));
        if constexpr (std::is_same_v<Chaine, QString>)
            chaines.push_back(q);
        else
            chaines.emplace_back(reinterpret_cast<char16_t const*>(q.utf16()), q.size());
    }
    std::int64_t octets = 0;
    for (auto const& t : textes)
        octets += std::int64_t(t.size());
    for (auto _ : etat)
        for (auto const& c : chaines)
            encode(c);
    etat.SetBytesProcessed(std::int64_t(etat.iterations()) * octets);
}

void VersUTF8Mots_Noyau(benchmark::State& etat)
{
    MesureEncodage<ChaineN>(etat, DonneListeMotsFrancaisUTF8(),
                            [](ChaineN const& c) { benchmark::DoNotOptimize(c.PreteUTF8()); });
}

void VersUTF8Mots_Qt(benchmark::State& etat)
{
    MesureEncodage<QString>(etat, DonneListeMotsFrancaisUTF8(), [](QString const& q) {
        QByteArray const octets = q.toUtf8();
        benchmark::DoNotOptimize(octets.constData());
    });
}

void VersUTF8Catalogues_Noyau(benchmark::State& etat)
{
    MesureEncodage<ChaineN>(etat, DonneMessagesFrancaisUTF8(),
                            [](ChaineN const& c) { benchmark::DoNotOptimize(c.PreteUTF8()); });
}

void VersUTF8Catalogues_Qt(benchmark::State& etat)
{
    MesureEncodage<QString>(etat, DonneMessagesFrancaisUTF8(), [](QString const& q) {
        QByteArray const octets = q.toUtf8();
        benchmark::DoNotOptimize(octets.constData());
    });
}

// Paires de mots : chaque mot contre sa forme sans accent en capitales (égale sous les
// tolérances) et contre le mot suivant (le plus souvent différent).
std::vector<std::pair<ChaineN, ChaineN>> const& DonnePairesDeMots()
{
    static std::vector<std::pair<ChaineN, ChaineN>> const paires = [] {
        std::vector<std::pair<ChaineN, ChaineN>> liste;
        auto const& mots = DonneListeMotsFrancaisUTF8();
        for (std::size_t i = 0; i + 1 < mots.size(); i += 2) {
            ChaineN const mot(mots[i], ChaineN::kUTF8);
            liste.emplace_back(mot, mot.Desaccentue().Majusculise());
            liste.emplace_back(mot, ChaineN(mots[i + 1], ChaineN::kUTF8));
        }
        return liste;
    }();
    return paires;
}

void EgalAccentsCasse_Noyau(benchmark::State& etat)
{
    auto const& paires = DonnePairesDeMots();
    for (auto _ : etat) {
        int egales = 0;
        for (auto const& [a, b] : paires)
            egales += a.Egal(b, ChaineN::MalgrayAccents | ChaineN::MalgrayCasse);
        benchmark::DoNotOptimize(egales);
    }
    etat.SetItemsProcessed(std::int64_t(etat.iterations()) * std::int64_t(paires.size()));
}

void EgalAccentsCasse_ICU(benchmark::State& etat)
{
    UErrorCode erreur = U_ZERO_ERROR;
    std::unique_ptr<UCollator, decltype(&ucol_close)> const collateur(ucol_open("fr", &erreur),
                                                                      ucol_close);
    ucol_setStrength(collateur.get(), UCOL_PRIMARY);
    if (U_FAILURE(erreur)) {
        etat.SkipWithError("collateur ICU indisponible");
        return;
    }
    auto const& paires = DonnePairesDeMots();
    for (auto _ : etat) {
        int egales = 0;
        for (auto const& [a, b] : paires)
            egales += ucol_strcoll(collateur.get(), a.PreteUniCString(), int32_t(a.Longueur()),
                                   b.PreteUniCString(), int32_t(b.Longueur())) == UCOL_EQUAL;
        benchmark::DoNotOptimize(egales);
    }
    etat.SetItemsProcessed(std::int64_t(etat.iterations()) * std::int64_t(paires.size()));
}

} // namespace

BENCHMARK(Copie_Noyau)->Name("CopieVingtUnites/Noyau");
BENCHMARK(Copie_QString)->Name("CopieVingtUnites/QString");
BENCHMARK(Copie_U16string)->Name("CopieVingtUnites/std_u16string");
BENCHMARK(DepuisUTF8Mots_Noyau)->Name("DepuisUTF8Mots/Noyau");
BENCHMARK(DepuisUTF8Mots_Qt)->Name("DepuisUTF8Mots/Qt_fromUtf8");
BENCHMARK(DepuisUTF8Catalogues_Noyau)->Name("DepuisUTF8Catalogues/Noyau");
BENCHMARK(DepuisUTF8Catalogues_Qt)->Name("DepuisUTF8Catalogues/Qt_fromUtf8");
BENCHMARK(VersUTF8Mots_Noyau)->Name("VersUTF8Mots/Noyau");
BENCHMARK(VersUTF8Mots_Qt)->Name("VersUTF8Mots/Qt_toUtf8");
BENCHMARK(VersUTF8Catalogues_Noyau)->Name("VersUTF8Catalogues/Noyau");
BENCHMARK(VersUTF8Catalogues_Qt)->Name("VersUTF8Catalogues/Qt_toUtf8");
BENCHMARK(EgalAccentsCasse_Noyau)->Name("EgalAccentsCasse/Noyau");
BENCHMARK(EgalAccentsCasse_ICU)->Name("EgalAccentsCasse/ICU_ucol_strcoll_primaire");
