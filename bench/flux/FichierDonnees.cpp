#include "flux/FichierDonnees.h"

#include "DonneesBench.h"

#include <QTemporaryDir>

#include <cstdio>

namespace {

constexpr std::size_t kOctets = std::size_t(100) << 20;

QTemporaryDir& Dossier()
{
    static QTemporaryDir dossier(QStringLiteral("/tmp/noyau-bench-XXXXXX"));
    return dossier;
}

} // namespace

std::string const& DonneTexteMots()
{
    static std::string const texte = [] {
        std::string t;
        t.reserve(kOctets + 64);
        while (t.size() < kOctets) {
            for (std::string const& mot : DonneListeMotsFrancaisUTF8()) {
                t += mot;
                t += '\n';
                if (t.size() >= kOctets) {
                    break;
                }
            }
        }
        return t;
    }();
    return texte;
}

std::string const& DonneFichierMots()
{
    static std::string const chemin = [] {
        std::string c = Dossier().filePath(QStringLiteral("mots.txt")).toStdString();
        std::FILE* f = std::fopen(c.c_str(), "wb");
        std::fwrite(DonneTexteMots().data(), 1, DonneTexteMots().size(), f);
        std::fclose(f);
        return c;
    }();
    return chemin;
}

std::string const& DonneCheminEcriture()
{
    static std::string const chemin = Dossier().filePath(QStringLiteral("ecrit.txt")).toStdString();
    return chemin;
}
