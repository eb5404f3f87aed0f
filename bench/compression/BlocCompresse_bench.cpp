#include <benchmark/benchmark.h>
#include <zlib.h>

#include <memory>
#include <random>
#include <string>
#include <vector>

#include "DonneesBench.h"
#include "noyau/compression/DecodageParBlocCompresse.h"
#include "noyau/compression/EncodageParBlocCompresse.h"
#include "noyau/flux/TamponMemoire.h"
#include "noyau/flux/VarElias.h"

using sdd::ChaineN;
using sdd::TamponMemoire;

namespace {

// Tous les mots, en UTF-8, dans des blocs de la taille donnée (type 1).
struct Zone
{
    explicit Zone(unsigned int tailleBloc) : octets(1 << 20)
    {
        sdd::EncodageParBlocCompresse encodeur(&octets, tailleBloc, sdd::kCompressionZlib);
        for (std::string const& mot : DonneListeMotsFrancaisUTF8()) {
            positions.push_back(
                encodeur.EncodeChaine(ChaineN(mot.c_str(), ChaineN::kUTF8), ChaineN::kUTF8));
        }
        encodeur.TermineEncodage();
    }

    TamponMemoire octets;
    std::vector<sdd::_typPositionEncodageBloc> positions;
};

Zone& DonneZone(unsigned int tailleBloc)
{
    static Zone zone4K(4096);
    static Zone zone64K(65536);
    return tailleBloc == 4096 ? zone4K : zone64K;
}

// Tirages identiques pour la bibliothèque et son pair.
std::vector<std::size_t> Tirages()
{
    std::mt19937 hasard(1);
    std::vector<std::size_t> tirages(4096);
    for (auto& t : tirages) {
        t = hasard() % DonneListeMotsFrancaisUTF8().size();
    }
    return tirages;
}

void Recherches_Noyau(benchmark::State& etat, unsigned int tailleBloc)
{
    Zone& zone = DonneZone(tailleBloc);
    std::unique_ptr<TamponMemoire> entree(zone.octets.TamponEnPretantDonnees());
    sdd::DecodageParBlocCompresse decodeur(entree.get(), 0);
    std::vector<std::size_t> const tirages = Tirages();
    ChaineN mot;
    std::size_t i = 0;
    for (auto _ : etat) {
        decodeur.DecodeChaine(zone.positions[tirages[i++ % tirages.size()]], mot, ChaineN::kUTF8);
        benchmark::DoNotOptimize(mot);
    }
    etat.SetItemsProcessed(etat.iterations());
    etat.counters["octets_zone"] = double(zone.octets.DonneTaille());
}

// Le pair : zlib seule, sur les mêmes blocs, sans cache ni contrôle ; le plancher du coût.
void Recherches_Zlib(benchmark::State& etat, unsigned int tailleBloc)
{
    Zone const& zone = DonneZone(tailleBloc);
    unsigned char const* const debut = zone.octets.DonneDonnees();
    unsigned char const* const fin = debut + zone.octets.DonneTaille();
    std::vector<unsigned char> bloc(tailleBloc + 64);
    std::vector<std::size_t> const tirages = Tirages();
    ChaineN mot;
    std::size_t i = 0;
    for (auto _ : etat) {
        auto const& position = zone.positions[tirages[i++ % tirages.size()]];
        std::uint32_t n = 0;
        unsigned char const* const donnees =
            debut + position.positionBloc +
            sdd::VarElias::Lis(debut + position.positionBloc, fin, &n);
        uLongf longueur = bloc.size();
        uncompress(bloc.data(), &longueur, donnees, n);
        mot =
            ChaineN(reinterpret_cast<char const*>(bloc.data()) + position.decalage, ChaineN::kUTF8);
        benchmark::DoNotOptimize(mot);
    }
    etat.SetItemsProcessed(etat.iterations());
    // Toute la liste d'un seul tenant, pour comparer les tailles.
    std::string liste;
    for (std::string const& m : DonneListeMotsFrancaisUTF8()) {
        liste += m;
        liste += '\0';
    }
    std::vector<unsigned char> comprime(compressBound(liste.size()));
    uLongf longueur = comprime.size();
    compress(comprime.data(), &longueur, reinterpret_cast<unsigned char const*>(liste.data()),
             liste.size());
    etat.counters["octets_liste"] = double(liste.size());
    etat.counters["octets_zlib_entier"] = double(longueur);
}

} // namespace

BENCHMARK_CAPTURE(Recherches_Noyau, 4K, 4096)->Name("DecodeChaine4K/Noyau");
BENCHMARK_CAPTURE(Recherches_Zlib, 4K, 4096)->Name("DecodeChaine4K/zlib");
BENCHMARK_CAPTURE(Recherches_Noyau, 64K, 65536)->Name("DecodeChaine64K/Noyau");
BENCHMARK_CAPTURE(Recherches_Zlib, 64K, 65536)->Name("DecodeChaine64K/zlib");
