#include "noyau/plateforme/JournalAbs.h"

#include "noyau/erreurs/DAlerteInfo.h"
#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/detail/NatureChemin.h"
#include "noyau/plateforme/RoutinesGeneralesQt.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <memory>
#include <mutex>

namespace {

class JournalFichier final : public JournalAbs
{
public:
    JournalFichier(QString const& chemin, bool remiseAZero) : _fichier(chemin)
    {
        QDir().mkpath(QFileInfo(chemin).absolutePath());
        // Un tube nommé bloquerait l'ouverture jusqu'à son lecteur : comme toute classe qui
        // ouvre un chemin, le journal ne va qu'à un fichier ordinaire (ou qu'il crée).
        if (!sdd::detail::DonneNatureChemin(chemin).AccepteEcriture()) {
            throw sdd::exceptions::OuvertureEchouee(
                UniChaine(chemin + QStringLiteral(" (pas un fichier ordinaire)")));
        }
        // Sans tampon : chaque ligne va au système dès son écriture.
        QIODevice::OpenMode const mode = QIODevice::WriteOnly | QIODevice::Unbuffered |
                                         (remiseAZero ? QIODevice::Truncate : QIODevice::Append);
        if (!_fichier.open(mode)) {
            throw sdd::exceptions::OuvertureEchouee(UniChaine(
                chemin + QStringLiteral(" (") + _fichier.errorString() + QLatin1Char(')')));
        }
    }

    bool Ecris(UniChaine const& texte) override
    {
        // Les lignes suivantes d'un texte commencent par une tabulation : une ligne du
        // fichier sans tabulation en tête commence toujours un nouvel enregistrement.
        QString const corps =
            QString(texte.DonneQString()).replace(QLatin1Char('\n'), QStringLiteral("\n\t"));
        // Horodatage sous le verrou : les lignes du fichier restent dans l'ordre du temps.
        std::lock_guard<std::mutex> verrou(_verrou);
        QByteArray const ligne =
            (QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz")) +
             QLatin1Char('\t') + corps + QLatin1Char('\n'))
                .toUtf8();
        return _fichier.write(ligne) == ligne.size();
    }

    UniChemin DonneChemin() const override { return _fichier.fileName(); }

private:
    QFile _fichier;
    std::mutex _verrou;
};

QString DossierParDefaut()
{
    QString const dossier = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
    return dossier.isEmpty() ? QDir::tempPath() : dossier;
}

} // namespace

JournalAbs::~JournalAbs() = default;

bool JournalAbs::EcrisAlerte(DAlerteInfo const& alerte)
{
    return Ecris(alerte.DonneMessagePourJournalisation());
}

JournalAbs* JournalAbs::CreeJournal(UniChaine const& nom, bool remiseAZero)
{
    return CreeJournalAvecPreference(UniChemin(), nom, UniChaine(), remiseAZero);
}

JournalAbs* JournalAbs::CreeJournalAvecPreference(UniChemin const& dossier,
                                                  UniChaine const& nomFichier,
                                                  UniChaine const& entete, bool remiseAZero)
{
    UniChemin const chemin =
        UniChemin(dossier.EstVide() ? DossierParDefaut() : dossier.DonneQString())
            .AjouteComposantChemin(
                nomFichier.EstVide()
                    ? RoutinesGeneralesQt::DonneNomApplicationDecoray(UniChaine()) +
                          UniChaine(".log")
                    : nomFichier);
    auto journal = std::make_unique<JournalFichier>(chemin, remiseAZero);
    if (!entete.EstVide()) {
        journal->Ecris(entete);
    }
    return journal.release();
}
