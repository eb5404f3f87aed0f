#include "DonneesBench.h"

#include <QFile>
#include <QString>

#include <stdexcept>

std::u16string const& DonneMotsFrancais()
{
    static std::u16string const mots = [] {
        QFile fichier(QStringLiteral("/usr/share/dict/french"));
        if (!fichier.open(QIODevice::ReadOnly))
            throw std::runtime_error("liste de mots français introuvable (paquet wfrench)");
        return QString::fromUtf8(fichier.readAll()).toStdU16String();
    }();
    return mots;
}
