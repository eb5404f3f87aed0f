#include <benchmark/benchmark.h>

#include <algorithm>
#include <map>
#include <random>
#include <vector>

#include "DonneesBench.h"
#include "noyau/lexique/TableTriee.h"

using sdd::ChaineN;

namespace {

// Les mots du dictionnaire français et un million d'entiers au hasard, chacun dans un ordre
// mélangé (l'ordre du fichier est déjà trié).
template <typename Clef> std::vector<Clef> const& Clefs();

template <> std::vector<ChaineN> const& Clefs<ChaineN>()
{
    static std::vector<ChaineN> const mots = [] {
        std::vector<ChaineN> v;
        for (std::string const& mot : DonneListeMotsFrancaisUTF8()) {
            v.emplace_back(mot, ChaineN::kUTF8);
        }
        std::shuffle(v.begin(), v.end(), std::mt19937(1));
        return v;
    }();
    return mots;
}

template <> std::vector<int> const& Clefs<int>()
{
    static std::vector<int> const entiers = [] {
        std::mt19937 hasard(2);
        std::vector<int> v(1'000'000);
        for (int& x : v) {
            x = std::uniform_int_distribution<int>()(hasard);
        }
        return v;
    }();
    return entiers;
}

// Les deux tables sous une même interface.
template <typename Clef> struct Noyau
{
    sdd::TableTriee<Clef, int> table;
    void Insere(Clef const& c, int v) { table.Insere(c, v); }
    bool Possede(Clef const& c) const { return table.Possede(c) != nullptr; }
    void Supprime(Clef const& c) { table.Supprime(c); }
    long Somme() const
    {
        long somme = 0;
        typename sdd::TableTriee<Clef, int>::Iterateur it(table);
        while (it.Prochain()) {
            somme += it.Valeur();
        }
        return somme;
    }
};

template <typename Clef> struct StdMap
{
    std::map<Clef, int> table;
    void Insere(Clef const& c, int v) { table.emplace(c, v); }
    bool Possede(Clef const& c) const { return table.find(c) != table.end(); }
    void Supprime(Clef const& c) { table.erase(c); }
    long Somme() const
    {
        long somme = 0;
        for (auto const& [c, v] : table) {
            somme += v;
        }
        return somme;
    }
};

template <typename Table, typename Clef> void Remplis(Table& table)
{
    int i = 0;
    for (Clef const& c : Clefs<Clef>()) {
        table.Insere(c, i++);
    }
}

template <typename Table, typename Clef> void Insere(benchmark::State& etat)
{
    for (auto _ : etat) {
        Table table;
        Remplis<Table, Clef>(table);
        benchmark::DoNotOptimize(table);
        etat.PauseTiming();
        table = Table();
        etat.ResumeTiming();
    }
    etat.SetItemsProcessed(std::int64_t(etat.iterations()) * std::int64_t(Clefs<Clef>().size()));
}

template <typename Table, typename Clef> void Trouve(benchmark::State& etat)
{
    Table table;
    Remplis<Table, Clef>(table);
    for (auto _ : etat) {
        int trouves = 0;
        for (Clef const& c : Clefs<Clef>()) {
            trouves += table.Possede(c);
        }
        benchmark::DoNotOptimize(trouves);
    }
    etat.SetItemsProcessed(std::int64_t(etat.iterations()) * std::int64_t(Clefs<Clef>().size()));
}

// Dans un autre ordre que l'insertion : supprimer dans l'ordre d'allocation favoriserait la
// table qui garde chaque clé dans son nœud (std::map), au lieu de recopier le prédécesseur.
template <typename Table, typename Clef> void Supprime(benchmark::State& etat)
{
    std::vector<Clef> ordre = Clefs<Clef>();
    std::shuffle(ordre.begin(), ordre.end(), std::mt19937(3));
    for (auto _ : etat) {
        etat.PauseTiming();
        Table table;
        Remplis<Table, Clef>(table);
        etat.ResumeTiming();
        for (Clef const& c : ordre) {
            table.Supprime(c);
        }
        benchmark::DoNotOptimize(table);
    }
    etat.SetItemsProcessed(std::int64_t(etat.iterations()) * std::int64_t(Clefs<Clef>().size()));
}

template <typename Table, typename Clef> void Parcourt(benchmark::State& etat)
{
    Table table;
    Remplis<Table, Clef>(table);
    for (auto _ : etat) {
        benchmark::DoNotOptimize(table.Somme());
    }
    etat.SetItemsProcessed(std::int64_t(etat.iterations()) * std::int64_t(Clefs<Clef>().size()));
}

} // namespace

#define MESURE_TABLE(Operation, Clef, Nom)                                                          \
    BENCHMARK(Operation<Noyau<Clef>, Clef>)                                                         \
        ->Name("TableTriee" #Operation Nom "/Noyau")                                                \
        ->Unit(benchmark::kMillisecond);                                                            \
    BENCHMARK(Operation<StdMap<Clef>, Clef>)                                                        \
        ->Name("TableTriee" #Operation Nom "/StdMap")                                             \
        ->Unit(benchmark::kMillisecond)

MESURE_TABLE(Insere, ChaineN, "Mots");
MESURE_TABLE(Trouve, ChaineN, "Mots");
MESURE_TABLE(Supprime, ChaineN, "Mots");
MESURE_TABLE(Parcourt, ChaineN, "Mots");
MESURE_TABLE(Insere, int, "Entiers");
MESURE_TABLE(Trouve, int, "Entiers");
MESURE_TABLE(Supprime, int, "Entiers");
MESURE_TABLE(Parcourt, int, "Entiers");
