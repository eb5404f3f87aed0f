#include "DonneesBench.h"

#include <QDir>
#include <QFile>
#include <QString>

#include <cstring>
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

std::vector<std::string> const& DonneListeMotsFrancaisUTF8()
{
    static std::vector<std::string> const mots = [] {
        std::vector<std::string> liste;
        for (QString const& mot : QString::fromStdU16String(DonneMotsFrancais()).split('\n', Qt::SkipEmptyParts))
            liste.push_back(mot.toStdString());
        return liste;
    }();
    return mots;
}

namespace {

// Les traductions d'un catalogue .mo : en-tête (magique, révision, nombre, tables des
// originaux et des traductions), puis pour chaque entrée une longueur et une position.
void AjouteTraductions(QByteArray const& mo, std::vector<std::string>& messages)
{
    auto const mot = [&mo](qsizetype position) -> quint32 {
        if (position < 0 || position + 4 > mo.size())
            return 0;
        quint32 valeur;
        std::memcpy(&valeur, mo.constData() + position, 4);
        return valeur;
    };
    if (mot(0) != 0x950412DEu)
        return;
    quint32 const nombre = mot(8);
    quint32 const table = mot(16);
    for (quint32 i = 1; i < nombre; ++i) { // l'entrée 0 est l'en-tête du catalogue
        quint32 const longueur = mot(table + 8 * i);
        quint32 const position = mot(table + 8 * i + 4);
        if (longueur > 0 && qsizetype(position) + longueur <= mo.size())
            messages.emplace_back(mo.constData() + position, longueur);
    }
}

}  // namespace

std::vector<std::string> const& DonneMessagesFrancaisUTF8()
{
    static std::vector<std::string> const messages = [] {
        std::vector<std::string> liste;
        QDir const dossier(QStringLiteral("/usr/share/locale/fr/LC_MESSAGES"));
        for (QString const& nom : dossier.entryList({QStringLiteral("*.mo")}, QDir::Files, QDir::Name)) {
            QFile fichier(dossier.filePath(nom));
            if (fichier.open(QIODevice::ReadOnly))
                AjouteTraductions(fichier.readAll(), liste);
        }
        if (liste.empty())
            throw std::runtime_error("aucun catalogue français sous /usr/share/locale/fr");
        return liste;
    }();
    return messages;
}
