#include "noyau/flux/detail/NatureChemin.h"

#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

namespace sdd::detail {

NatureChemin DonneNatureChemin(char const* chemin)
{
    // stat64 : la taille tient sur 64 bits même là où off_t n'en a que 32.
    struct stat64 etat;
    if (::stat64(chemin, &etat) != 0) {
        return {};
    }
    if (!S_ISREG(etat.st_mode)) {
        return {NatureChemin::kAutre, 0};
    }
    return {NatureChemin::kOrdinaire, static_cast<std::uint64_t>(etat.st_size)};
}

NatureChemin DonneNatureChemin(QString const& chemin)
{
    if (chemin.startsWith(QLatin1Char(':'))) {
        QFileInfo const ressource(chemin);
        return ressource.isFile()
                   ? NatureChemin{NatureChemin::kOrdinaire, std::uint64_t(ressource.size())}
                   : NatureChemin{};
    }
    return DonneNatureChemin(QFile::encodeName(chemin).constData());
}

} // namespace sdd::detail
