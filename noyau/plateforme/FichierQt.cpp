#include "noyau/plateforme/FichierQt.h"

#include "noyau/erreurs/AlerteErreurFichier.h"
#include "noyau/erreurs/ExceptionCode.h"
#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/detail/NatureChemin.h"

#include <QFile>
#include <QFileInfo>

#include <cstdint>
#include <limits>

namespace {

// Famille 3, explication du code 0, sans numéro ni détails : ce que toutes les erreurs de
// ce fichier rapportent.
[[noreturn]] void LanceErreurFichier(int codeMessage)
{
    throw ExceptionCode(CreeAlerteErreurFichier(3, codeMessage, 0, -1, -1, -1));
}

// Lire demande un fichier ordinaire, écrire un fichier ordinaire ou absent : ouvrir un tube
// nommé bloquerait, et un répertoire ou un périphérique ne sont pas des fichiers.
bool CheminAccepte(QFile const& fichier, QIODevice::OpenMode mode)
{
    sdd::detail::NatureChemin const nature = sdd::detail::DonneNatureChemin(fichier.fileName());
    return (mode & QIODevice::WriteOnly) ? nature.AccepteEcriture() : nature.EstOrdinaire();
}

constexpr int kCreation = 2;
constexpr int kOuverture = 3;
constexpr int kEcriture = 5;

} // namespace

Fichier::Fichier(UniChemin const& chemin) : _chemin(chemin), _fichier(new QFile(chemin)) {}

Fichier::Fichier(Fichier const& autre) : Fichier(autre._chemin) {}

Fichier& Fichier::operator=(Fichier const& autre)
{
    if (this != &autre) {
        auto fichier = std::make_unique<QFile>(QString(autre._chemin));
        _chemin = autre._chemin;
        _fichier = std::move(fichier);
    }
    return *this;
}

Fichier::~Fichier() = default;

bool Fichier::Existe() const
{
    return _fichier->exists();
}

bool Fichier::EstOuvert() const
{
    return _fichier->isOpen();
}

void Fichier::_Ouvre(int mode, int codeMessage)
{
    _fichier->close();
    QIODevice::OpenMode const modeQt(mode);
    if (!CheminAccepte(*_fichier, modeQt) || !_fichier->open(modeQt)) {
        LanceErreurFichier(codeMessage);
    }
}

void Fichier::Cree()
{
    _Ouvre(QIODevice::ReadWrite, kCreation);
    _fichier->close();
}

void Fichier::OuvreEnLecture()
{
    _Ouvre(QIODevice::ReadOnly, kOuverture);
}

void Fichier::OuvreEnEcriture()
{
    _Ouvre(QIODevice::WriteOnly | QIODevice::Truncate, kOuverture);
}

void Fichier::OuvreEnLectureEcriture()
{
    _Ouvre(QIODevice::ReadWrite, kOuverture);
}

void Fichier::Ferme()
{
    _fichier->close();
}

long long Fichier::Lis(char* dest, long long n)
{
    return _fichier->read(dest, n);
}

long long Fichier::Ecris(char const* octets, long long n)
{
    return _fichier->write(octets, n);
}

void Fichier::Purge()
{
    if (!_fichier->flush()) {
        LanceErreurFichier(kEcriture);
    }
}

QByteArray Fichier::DonneToutLeContenu() const
{
    QFile fichier(_chemin);
    // Un QByteArray ne dépasse pas 2 Gio : au-delà, readAll rendrait un tableau vide, sans
    // erreur.
    constexpr std::uint64_t kTailleMax = std::numeric_limits<int>::max() - 64;
    sdd::detail::NatureChemin const nature = sdd::detail::DonneNatureChemin(fichier.fileName());
    if (!nature.EstOrdinaire() || nature.taille > kTailleMax ||
        !fichier.open(QIODevice::ReadOnly)) {
        LanceException(-1);
    }
    return fichier.readAll();
}

bool Fichier::CopieVers(UniChemin const& destination) const
{
    QFile source(_chemin);
    return CheminAccepte(source, QIODevice::ReadOnly) && QFile::copy(_chemin, destination);
}

QDateTime Fichier::DonneDateModification() const
{
    QFileInfo const info(_chemin);
    return info.exists() ? info.lastModified() : QDateTime();
}
