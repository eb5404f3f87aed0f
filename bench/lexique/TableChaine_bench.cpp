#include <QFile>
#include <QTemporaryFile>
#include <benchmark/benchmark.h>
#include <malloc.h>
#include <marisa.h>

#include <algorithm>
#include <random>
#include <set>
#include <string>
#include <unordered_set>
#include <vector>

#include "DonneesBench.h"
#include "noyau/chaines/ChaineN.h"
#include "noyau/flux/TamponMemoire.h"
#include "noyau/lexique/SerialiseurTableChaine.h"
#include "noyau/lexique/TableChaine.h"
#include "noyau/lexique/TableChaineSurDisqueNoyau.h"

using sdd::ChaineN;

namespace {

// Un jeu de chaînes, sous les formes que prend chaque structure, et les questions : chaque
// chaîne présente et autant d'absentes (la même, dernière unité changée), mêlées.
struct Jeu
{
    std::vector<std::u16string> chaines;
    std::vector<ChaineN> chainesN;
    std::vector<std::u16string> questions;
    std::vector<ChaineN> questionsN;
    std::vector<std::string> questionsUTF8;
};

Jeu Prepare(std::vector<std::u16string> chaines)
{
    Jeu j;
    j.chaines = std::move(chaines);
    std::mt19937 hasard(7);
    for (auto const& c : j.chaines) {
        j.questions.push_back(c);
        std::u16string absente = c;
        absente.back() = static_cast<char16_t>(absente.back() ^ 0x21);
        j.questions.push_back(absente);
    }
    std::shuffle(j.questions.begin(), j.questions.end(), hasard);
    for (auto const& c : j.chaines) {
        j.chainesN.emplace_back(c.data(), c.size());
    }
    for (auto const& q : j.questions) {
        j.questionsN.emplace_back(q.data(), q.size());
        j.questionsUTF8.push_back(j.questionsN.back().DonneStdString());
    }
    return j;
}

Jeu const& Mots()
{
    static Jeu const jeu = [] {
        std::vector<std::u16string> mots;
        std::u16string const& tout = DonneMotsFrancais();
        std::size_t debut = 0;
        for (std::size_t fin; (fin = tout.find(u'\n', debut)) != std::u16string::npos;
             debut = fin + 1) {
            if (fin > debut) {
                mots.push_back(tout.substr(debut, fin - debut));
            }
        }
        return Prepare(std::move(mots));
    }();
    return jeu;
}

// Un million d'entiers tirés au hasard, en décimal.
Jeu const& Entiers()
{
    static Jeu const jeu = [] {
        std::mt19937 hasard(1);
        std::vector<std::u16string> entiers;
        for (int i = 0; i < 1000000; ++i) {
            std::string const texte = std::to_string(hasard());
            entiers.emplace_back(texte.begin(), texte.end());
        }
        return Prepare(std::move(entiers));
    }();
    return jeu;
}

std::size_t OctetsAlloues()
{
    return mallinfo2().uordblks;
}

sdd::TableChaine Construis(Jeu const& j)
{
    sdd::TableChaine t;
    for (auto const& c : j.chainesN) {
        t.TrouveEmplacementEtInsere(c);
    }
    return t;
}

template <typename Ensemble> Ensemble ConstruisStd(Jeu const& j)
{
    return Ensemble(j.chaines.begin(), j.chaines.end());
}

// Construction (mémoire occupée ensuite en compteur « octets »), puis questions.
template <typename Construit>
void MesureConstruction(benchmark::State& etat, Jeu const& j, Construit construit)
{
    for (auto _ : etat) {
        std::size_t const avant = OctetsAlloues();
        auto structure = construit(j);
        etat.counters["octets"] = double(OctetsAlloues() - avant);
        benchmark::DoNotOptimize(&structure);
    }
    etat.SetItemsProcessed(std::int64_t(etat.iterations()) * std::int64_t(j.chaines.size()));
}

template <typename Structure, typename Possede>
void MesureQuestions(benchmark::State& etat, Jeu const& j, Structure const& s, Possede possede)
{
    for (auto _ : etat) {
        std::size_t trouvees = 0;
        for (std::size_t i = 0; i < j.questions.size(); ++i) {
            trouvees += possede(s, i) ? 1 : 0;
        }
        benchmark::DoNotOptimize(trouvees);
    }
    etat.SetItemsProcessed(std::int64_t(etat.iterations()) * std::int64_t(j.questions.size()));
}

void Enregistre(char const* famille, Jeu const& (*jeu)())
{
    std::string const f(famille);
    auto const enregistre = [](std::string const& nom, auto mesure) {
        benchmark::RegisterBenchmark(nom.c_str(), mesure)->Unit(benchmark::kMillisecond);
    };
    enregistre(f + "Construction/Noyau",
               [jeu](benchmark::State& e) { MesureConstruction(e, jeu(), Construis); });
    enregistre(f + "Construction/StdSet", [jeu](benchmark::State& e) {
        MesureConstruction(e, jeu(), ConstruisStd<std::set<std::u16string>>);
    });
    enregistre(f + "Construction/StdUnorderedSet", [jeu](benchmark::State& e) {
        MesureConstruction(e, jeu(), ConstruisStd<std::unordered_set<std::u16string>>);
    });
    enregistre(f + "Possede/Noyau", [jeu](benchmark::State& e) {
        Jeu const& j = jeu();
        auto const t = Construis(j);
        MesureQuestions(e, j, t, [&j](sdd::TableChaine const& t, std::size_t i) {
            return t.Possede(j.questionsN[i]);
        });
    });
    enregistre(f + "Possede/StdSet", [jeu](benchmark::State& e) {
        Jeu const& j = jeu();
        auto const s = ConstruisStd<std::set<std::u16string>>(j);
        MesureQuestions(e, j, s, [&j](auto const& s, std::size_t i) {
            return s.find(j.questions[i]) != s.end();
        });
    });
    enregistre(f + "Possede/StdUnorderedSet", [jeu](benchmark::State& e) {
        Jeu const& j = jeu();
        auto const s = ConstruisStd<std::unordered_set<std::u16string>>(j);
        MesureQuestions(e, j, s, [&j](auto const& s, std::size_t i) {
            return s.find(j.questions[i]) != s.end();
        });
    });
}

// Consultation sur disque : la forme écrite (taille en compteur « octets », la liste UTF-8 en
// « utf8 ») dans un tampon, puis dans un fichier projeté ; le pair est un trie marisa.
std::vector<unsigned char> const& FormeEcrite()
{
    static std::vector<unsigned char> const forme = [] {
        sdd::TamponMemoire t(256);
        auto table = Construis(Mots());
        sdd::Serialiseur<sdd::TableChaineNoyau>::Ecris(t, table);
        return std::vector<unsigned char>(t.DonneDonnees(), t.DonneDonnees() + t.DonneTaille());
    }();
    return forme;
}

double OctetsUTF8()
{
    double n = 0;
    for (auto const& m : DonneListeMotsFrancaisUTF8()) {
        n += double(m.size() + 1);
    }
    return n;
}

void MesureSurDisque(benchmark::State& etat, sdd::FluxEntree& flux)
{
    Jeu const& j = Mots();
    sdd::TableChaineSurDisqueNoyau const disque(&flux, 0);
    MesureQuestions(etat, j, disque,
                    [&j](auto const& d, std::size_t i) { return d.Possede(j.questionsN[i]); });
    etat.counters["octets"] = double(FormeEcrite().size());
    etat.counters["utf8"] = OctetsUTF8();
}

void PossedeSurDisque_Noyau(benchmark::State& etat)
{
    std::vector<unsigned char> forme = FormeEcrite();
    sdd::TamponMemoire flux(reinterpret_cast<char*>(forme.data()), int(forme.size()), false);
    MesureSurDisque(etat, flux);
}

void PossedeSurDisque_NoyauProjection(benchmark::State& etat)
{
    QTemporaryFile fichier;
    if (!fichier.open()) {
        etat.SkipWithError("fichier temporaire");
        return;
    }
    auto const& forme = FormeEcrite();
    fichier.write(reinterpret_cast<char const*>(forme.data()), qint64(forme.size()));
    fichier.flush();
    uchar* const projection = fichier.map(0, qint64(forme.size()));
    sdd::TamponMemoire flux(reinterpret_cast<char*>(projection), int(forme.size()), false);
    MesureSurDisque(etat, flux);
    fichier.unmap(projection);
}

void PossedeSurDisque_marisa(benchmark::State& etat)
{
    Jeu const& j = Mots();
    marisa::Keyset cles;
    for (auto const& m : DonneListeMotsFrancaisUTF8()) {
        cles.push_back(m.c_str(), m.size());
    }
    marisa::Trie trie;
    trie.build(cles);
    MesureQuestions(etat, j, trie, [&j](marisa::Trie const& t, std::size_t i) {
        marisa::Agent agent;
        agent.set_query(j.questionsUTF8[i].c_str(), j.questionsUTF8[i].size());
        return t.lookup(agent);
    });
    etat.counters["octets"] = double(trie.io_size());
    etat.counters["utf8"] = OctetsUTF8();
}

int const kEnregistrement = [] {
    Enregistre("TableChaineMots", Mots);
    Enregistre("TableChaineEntiers", Entiers);
    return 0;
}();

} // namespace

BENCHMARK(PossedeSurDisque_Noyau)->Name("PossedeSurDisque/Noyau")->Unit(benchmark::kMillisecond);
BENCHMARK(PossedeSurDisque_NoyauProjection)
    ->Name("PossedeSurDisque/NoyauProjection")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(PossedeSurDisque_marisa)->Name("PossedeSurDisque/marisa")->Unit(benchmark::kMillisecond);
