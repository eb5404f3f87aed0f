// UniChaine : casse, accents et nettoyage.

#include "noyau/chaines/UniChaine.h"

#include "noyau/chaines/detail/Retouches.h"
#include "noyau/chaines/detail/UnitesQString.h"

#include <algorithm>
#include <bitset>
#include <string>

using sdd::detail::EtendueDe;

// Remplace le texte par celui que produit la retouche, s'il diffère.
template <typename Retouche> UniChaine& UniChaine::_Remets(Retouche retouche)
{
    std::u16string resultat;
    if (retouche(EtendueDe(_texte), &resultat)) {
        _texte = sdd::detail::EnQString(resultat);
    }
    return *this;
}

// --- Casse et accents ---

UniChaine& UniChaine::Majusculise()
{
    sdd::detail::TransformeUnites(_texte, sdd::detail::EnMajuscule);
    return *this;
}

UniChaine& UniChaine::Minusculise()
{
    sdd::detail::TransformeUnites(_texte, sdd::detail::EnMinuscule);
    return *this;
}

UniChaine& UniChaine::MajusculisePremiereLettre()
{
    int const i = static_cast<int>(sdd::detail::PremiereLettre(EtendueDe(_texte)));
    if (i < _texte.size()) {
        MetsCarAIndex(sdd::detail::EnMajuscule(_texte[i].unicode()), i);
    }
    return *this;
}

UniChaine& UniChaine::MinusculisePremiereLettre()
{
    int const i = static_cast<int>(sdd::detail::PremiereLettre(EtendueDe(_texte)));
    if (i < _texte.size()) {
        MetsCarAIndex(sdd::detail::EnMinuscule(_texte[i].unicode()), i);
    }
    return *this;
}

UniChaine UniChaine::DonneChaineMajusculiseePremiereLettre() const
{
    return MajusculisePremiereLettre();
}

UniChaine UniChaine::DonneChaineSansAccents() const
{
    UniChaine copie(*this);
    sdd::detail::TransformeUnites(copie._texte, sdd::detail::SansAccents);
    return copie;
}

UniChaine UniChaine::DonneChaineMinusculiseSansAccents() const
{
    UniChaine copie(*this);
    sdd::detail::TransformeUnites(copie._texte, [](char16_t c) {
        return sdd::detail::EnMinuscule(sdd::detail::SansAccents(c));
    });
    return copie;
}

namespace {

// Majuscules et lettres de titre comptent comme capitales.
constexpr std::uint16_t kMajusculeOuTitre = kCarMajuscule | kCarCasseTitre;
constexpr std::uint16_t kMinusculeOuTitre = kCarMinuscule | kCarCasseTitre;

} // namespace

bool UniChaine::EstToutEnMinuscules() const noexcept
{
    return !sdd::detail::PorteClasse(EtendueDe(_texte), kMajusculeOuTitre);
}

bool UniChaine::EstToutEnMajuscules() const noexcept
{
    return !sdd::detail::PorteClasse(EtendueDe(_texte), kMinusculeOuTitre);
}

bool UniChaine::ContientMajuscule() const noexcept
{
    return !EstToutEnMinuscules();
}

bool UniChaine::CommenceParMajuscule() const noexcept
{
    return !_texte.isEmpty() &&
           (sdd::detail::Mot(_texte[0].unicode(), kInfoClasseLettre) & kMajusculeOuTitre) != 0;
}

UniChaine& UniChaine::Deligature()
{
    return _Remets(sdd::detail::Deligature);
}

// --- Nettoyage ---

UniChaine& UniChaine::NettoieBlancs()
{
    auto const texte = EtendueDe(_texte);
    auto const reste = sdd::detail::SansBlancsAuxBords(texte);
    return SousChaine(static_cast<int>(reste.data() - texte.data()),
                      static_cast<int>(reste.size()));
}

UniChaine& UniChaine::ConsolideBlancs()
{
    return _Remets(sdd::detail::ConsolideBlancs);
}

UniChaine& UniChaine::NettoieHTML()
{
    int ouvrant = _texte.indexOf(QLatin1Char('<'));
    if (ouvrant < 0) {
        return *this;
    }
    QString resultat;
    int copie = 0;
    while (ouvrant >= 0) {
        int const fermant = _texte.indexOf(QLatin1Char('>'), ouvrant + 1);
        if (fermant < 0) {
            break;
        }
        resultat.append(_texte.constData() + copie, ouvrant - copie);
        copie = fermant + 1;
        ouvrant = _texte.indexOf(QLatin1Char('<'), copie);
    }
    resultat.append(_texte.constData() + copie, _texte.size() - copie);
    _texte = resultat;
    return *this;
}

UniChaine& UniChaine::NormaliseApostrophe(char16_t apostrophe)
{
    sdd::detail::TransformeUnites(_texte, [apostrophe](char16_t c) {
        return sdd::detail::EstApostrophe(c) ? apostrophe : c;
    });
    return *this;
}

UniChaine& UniChaine::AjusteTypographieSansEspaceFine()
{
    constexpr QChar kFine(0x202F);
    if (!_texte.contains(kFine)) {
        return *this;
    }
    constexpr QChar kInsecable(0x00A0);
    constexpr QChar kOuvrant(0x00AB);
    constexpr QChar kFermant(0x00BB);
    _texte.replace(QString(kFine) + kFermant, QString(kInsecable) + kFermant);
    _texte.replace(QString(kOuvrant) + kFine, QString(kOuvrant) + kInsecable);
    for (char16_t ponctuation : {u'!', u'?', u';'}) {
        _texte.replace(QString(kFine) + QChar(ponctuation), QString(QChar(ponctuation)));
    }
    return *this;
}

namespace {

// Membres des six ensembles typographiques, pour éviter les expressions quand le texte n'en
// a aucun (le cas courant).
bool EstCarTypographique(char16_t c) noexcept
{
    static std::bitset<kNbUnitesUTF16> const membres = [] {
        std::bitset<kNbUnitesUTF16> b;
        for (unsigned long e = 0; e < kNbEnsemblesTypographiques; ++e) {
            for (unsigned long k = 0; k < UniCaractere::sNbCarsARemplacer[e]; ++k) {
                b.set(UniCaractere::sCarsARemplacer[e][k]);
            }
        }
        return b;
    }();
    return membres[c];
}

} // namespace

UniChaine::TableCarTypographiques const& UniChaine::DonneTableCarTypographiques()
{
    static TableCarTypographiques const table = [] {
        TableCarTypographiques t;
        for (unsigned long e = 0; e < kNbEnsemblesTypographiques; ++e) {
            QString motif(QLatin1Char('('));
            for (unsigned long k = 0; k < UniCaractere::sNbCarsARemplacer[e]; ++k) {
                if (k != 0) {
                    motif += QLatin1Char('|');
                }
                motif += QChar(UniCaractere::sCarsARemplacer[e][k]);
            }
            motif += QLatin1Char(')');
            t.push_back({QRegularExpression(motif), sCarsCanoniques[e]});
        }
        return t;
    }();
    return table;
}

UniChaine& UniChaine::ConvertisCarsTypographiques(Codage codage)
{
    auto const texte = EtendueDe(_texte);
    if (codage == kUTF8 || codage == kUTF16 ||
        std::none_of(texte.begin(), texte.end(), EstCarTypographique)) {
        return *this;
    }
    for (auto const& entree : DonneTableCarTypographiques()) {
        _texte.replace(entree.premier, QString(QChar(entree.second)));
    }
    return *this;
}

UniChaine& UniChaine::ConvertisRetoursDeCharriot(Codage codage)
{
    static QString const kCR(QStringLiteral("\r"));
    static QString const kLF(QStringLiteral("\n"));
    static QString const kCRLF(QStringLiteral("\r\n"));
    QString const* fin = nullptr;
    switch (codage) {
    case kMacRoman:
        fin = &kCR;
        break;
    case kLatin9:
        fin = &kLF;
        break;
    case kWinLatin1:
        fin = &kCRLF;
        break;
    default:
        return *this;
    }
    int const n = _texte.size();
    char16_t const* u = PreteUniCString();
    QString resultat;
    resultat.reserve(n + n / 8);
    for (int i = 0; i < n; ++i) {
        if (u[i] == u'\r') {
            resultat += *fin;
            if (i + 1 < n && u[i + 1] == u'\n') {
                ++i;
            }
        } else if (u[i] == u'\n') {
            resultat += *fin;
        } else {
            resultat += QChar(u[i]);
        }
    }
    if (resultat != _texte) {
        _texte = resultat;
    }
    return *this;
}

namespace {

// La contre-oblique, puis les caractères du supplément sans ses contre-obliques, doublons
// compris.
QString ListeCaracteresTraitementBackslashAvecCaracteresSupplementaires(UniChaine const& supplement)
{
    QString liste = supplement.DonneQString();
    liste.remove(QLatin1Char('\\'));
    return liste.prepend(QLatin1Char('\\'));
}

} // namespace

// Un remplacement par caractère de la liste, dans son ordre : la contre-oblique d'abord, pour
// que celles qu'ajoutent les suivants ne soient pas doublées. Un doublon du supplément
// protège deux fois, comme le veut cet ordre.
UniChaine& UniChaine::EncodeBackslash(UniChaine const& supplement)
{
    for (QChar c : ListeCaracteresTraitementBackslashAvecCaracteresSupplementaires(supplement)) {
        _texte.replace(c, QString(QLatin1Char('\\')) + c);
    }
    return *this;
}

// L'inverse : les mêmes remplacements défaits, du dernier au premier.
UniChaine& UniChaine::DecodeBackslash(UniChaine const& supplement)
{
    QString const liste =
        ListeCaracteresTraitementBackslashAvecCaracteresSupplementaires(supplement);
    for (int k = liste.size() - 1; k >= 0; --k) {
        _texte.replace(QString(QLatin1Char('\\')) + liste[k], QString(liste[k]));
    }
    return *this;
}

UniChaine& UniChaine::CrypterRot13()
{
    sdd::detail::TransformeUnites(_texte, [](char16_t c) -> char16_t {
        if (c >= u'a' && c <= u'z') {
            return u'a' + (c - u'a' + 13) % 26;
        }
        if (c >= u'A' && c <= u'Z') {
            return u'A' + (c - u'A' + 13) % 26;
        }
        if (c >= u'0' && c <= u'9') {
            return u'0' + (c - u'0' + 5) % 10;
        }
        return c;
    });
    return *this;
}
