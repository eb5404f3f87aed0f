// UniChaine : formes en octets, échappement, découpe et assemblage.

#include "noyau/chaines/UniChaine.h"

#include "noyau/chaines/detail/CodecsUniChaine.h"
#include "noyau/chaines/detail/Pourcent.h"
#include "noyau/chaines/detail/Retouches.h"
#include "noyau/chaines/detail/UnitesQString.h"
#include "noyau/conteneurs/ListeT.h"

#include <QStringList>

#include <array>
#include <cstring>
#include <memory>

using sdd::detail::EtendueDe;

// --- Formes en octets ---

char const* UniChaine::PreteCString(Codage codage, unsigned int taille, char* tampon) const
{
    if (codage > kDOS) {
        return nullptr;
    }
    std::size_t const terminateur = sdd::detail::TailleTerminateur(codage);
    if (tampon != nullptr && taille < terminateur) {
        return nullptr;
    }
    if (tampon == nullptr && _texte.isEmpty()) {
        // Les chaînes vides partagées sont lues de tous les fils : rien ne s'écrit en elles.
        // Leur forme (la marque d'ordre seule en UTF-16) est faite une fois pour toutes.
        static std::array<QByteArray, kDOS + 1> const formesVides = [] {
            std::array<QByteArray, kDOS + 1> formes;
            for (int c = 0; c <= kDOS; ++c) {
                auto const codageVide = static_cast<Codage>(c);
                formes[c] = sdd::detail::EncodeUnites(nullptr, 0, codageVide);
                formes[c].append(QByteArray(int(sdd::detail::TailleTerminateur(codageVide)), 0));
            }
            return formes;
        }();
        return formesVides[codage].constData();
    }
    QByteArray const forme =
        sdd::detail::EncodeUnites(PreteUniCString(), std::size_t(_texte.size()), codage);
    std::size_t const n =
        tampon == nullptr
            ? std::size_t(forme.size())
            : sdd::detail::CoupeSansCouperCaractere(forme, taille - terminateur, codage);
    if (tampon == nullptr) {
        std::unique_ptr<char[]> nouveau(new char[n + terminateur]);
        _LibereTampon();
        _tampon = nouveau.release();
        _longueurTampon = static_cast<unsigned int>(n);
        _codageTampon = codage;
        tampon = _tampon;
    }
    std::memcpy(tampon, forme.constData(), n);
    std::memset(tampon + n, 0, terminateur);
    return tampon;
}

char* UniChaine::CreeCString(Codage codage) const
{
    if (codage > kDOS) {
        return nullptr;
    }
    QByteArray const forme =
        sdd::detail::EncodeUnites(PreteUniCString(), std::size_t(_texte.size()), codage);
    std::size_t const terminateur = sdd::detail::TailleTerminateur(codage);
    auto const copie = new char[std::size_t(forme.size()) + terminateur];
    std::memcpy(copie, forme.constData(), std::size_t(forme.size()));
    std::memset(copie + forme.size(), 0, terminateur);
    return copie;
}

char16_t const* UniChaine::PreteUniCString() const noexcept
{
    return reinterpret_cast<char16_t const*>(_texte.utf16());
}

UniChaine UniChaine::DonneChaineEchappayPourcent(UniChaine const& garder, UniChaine const& forcer,
                                                 Codage codage) const
{
    // Un codage inconnu échappe en UTF-8 ; la marque d'ordre n'a pas sa place entre deux %.
    Codage const codageOctets = codage > kDOS ? kUTF8 : codage;
    std::u16string const texte = sdd::detail::EchappePourcent(
        EtendueDe(_texte), EtendueDe(garder._texte), EtendueDe(forcer._texte),
        [codageOctets](std::u16string_view unites) {
            // Suivie d'un caractère ordinaire, comme dans le texte : un demi-codet seul en fin
            // de suite reçoit le remplacement du codec, au lieu de rester en attente et de
            // se perdre.
            std::u16string suite(unites);
            suite += u'a';
            QByteArray octets =
                sdd::detail::EncodeUnites(suite.data(), suite.size(), codageOctets, false);
            octets.chop(int(sdd::detail::TailleTerminateur(codageOctets)));
            return octets;
        });
    return UniChaine(sdd::detail::EnQString(texte));
}

UniChaine UniChaine::DonneChaineDesechappeePourcent(UniChaine const& texte, Codage codage)
{
    std::string const octets = sdd::detail::DesechappePourcent(
        texte.PreteUniCString(), static_cast<std::size_t>(texte.Longueur()));
    return UniChaine(octets, codage);
}

// --- Découpe et assemblage ---

std::vector<UniChaine> UniChaine::Jetonise(char16_t separateur, bool garderVides,
                                           bool nettoie) const
{
    QStringList const parties = _texte.split(
        QChar(separateur), garderVides || nettoie ? Qt::KeepEmptyParts : Qt::SkipEmptyParts,
        Qt::CaseSensitive);
    std::vector<UniChaine> resultat;
    resultat.reserve(static_cast<std::size_t>(parties.size()));
    for (QString const& partie : parties) {
        QString const texte =
            nettoie ? sdd::detail::EnQString(sdd::detail::SansBlancsAuxBords(EtendueDe(partie)))
                    : partie;
        if (garderVides || !texte.isEmpty()) {
            resultat.emplace_back(texte);
        }
    }
    return resultat;
}

sdd::ListeC<UniChaine> UniChaine::JetoniseEnListe(char16_t separateur, bool garderVides) const
{
    std::vector<UniChaine> parties = Jetonise(separateur, garderVides);
    sdd::ListeC<UniChaine> liste(static_cast<unsigned long>(parties.size()));
    for (UniChaine& partie : parties) {
        liste.Ajoute(std::move(partie));
    }
    return liste;
}

UniChaine UniChaine::Joindre(std::vector<UniChaine> const& parties, bool ignoreVides) const
{
    QString resultat;
    bool premiere = true;
    for (UniChaine const& partie : parties) {
        if (ignoreVides && partie.EstVide()) {
            continue;
        }
        if (!premiere) {
            resultat += _texte;
        }
        resultat += partie._texte;
        premiere = false;
    }
    return UniChaine(resultat);
}

void UniChaine::_LibereTampon() const noexcept
{
    delete[] _tampon;
    _tampon = nullptr;
    _longueurTampon = 0;
    _codageTampon = kAucunCodage;
}
