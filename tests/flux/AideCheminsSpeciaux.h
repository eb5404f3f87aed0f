#pragma once

// Chemins qui ne sont pas des fichiers ordinaires, pour les tests des classes qui ouvrent un
// chemin : un répertoire, un tube nommé, un lien vers ce tube, et de grands fichiers creux.

#include "noyau/chaines/UniChemin.h"
#include "noyau/erreurs/Exceptions.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <future>
#include <string>
#include <vector>

namespace aide {

struct CheminsSpeciaux
{
    explicit CheminsSpeciaux(QTemporaryDir const& dossier)
        : repertoire(dossier.filePath("repertoire")), tube(dossier.filePath("tube")),
          lienVersTube(dossier.filePath("lien"))
    {
        EXPECT_EQ(::mkdir(repertoire.PreteCString(UniChaine::kUTF8), 0700), 0);
        EXPECT_EQ(::mkfifo(tube.PreteCString(UniChaine::kUTF8), 0600), 0);
        EXPECT_TRUE(QFile::link(tube, lienVersTube));
    }

    std::vector<UniChemin> Tous() const { return {repertoire, tube, lienVersTube}; }

    UniChemin repertoire, tube, lienVersTube;
};

// Fichier creux de cette taille : rien n'est écrit sur le disque.
inline UniChemin FichierCreux(QTemporaryDir const& dossier, char const* nom, std::uint64_t taille)
{
    QFile f(dossier.filePath(nom));
    EXPECT_TRUE(f.open(QIODevice::WriteOnly));
    EXPECT_TRUE(f.resize(qint64(taille)));
    return UniChemin(f.fileName());
}

inline std::string Texte(UniChaine const& texte)
{
    return QString(texte).toStdString();
}

// Explication de l'exception E que lance f ; « rien » quand f ne lance rien.
template <typename E, typename F> std::string ExplicationDe(F f)
{
    try {
        f();
    } catch (E const& e) {
        return Texte(e.Explication());
    }
    return "rien";
}

// Exécute f. Une ouverture bloquée sur le tube ne rendrait jamais la main : passé ce délai,
// le programme de test s'arrête en échec plutôt que de pendre.
template <typename F> void SansBlocage(F f)
{
    auto fin = std::async(std::launch::async, f);
    if (fin.wait_for(std::chrono::seconds(20)) != std::future_status::ready) {
        std::fprintf(stderr, "Bloqué sur un chemin qui n'est pas un fichier ordinaire\n");
        std::_Exit(EXIT_FAILURE);
    }
    fin.get();
}

} // namespace aide
