#include "noyau/chaines/UniChaine.h"

#include "noyau/chaines/ConvertisseurChaineN.h"
#include "noyau/chaines/detail/Pourcent.h"
#include "noyau/chaines/detail/UTF8.h"
#include "noyau/conteneurs/ListeT.h"
#include "noyau/erreurs/Exceptions.h"

#include <QHash>

#include <algorithm>
#include <bitset>
#include <cmath>
#include <cstring>
#include <memory>

const UniChaine kUniChaineNulle;

namespace {

// Codage de sdd::ChaineN de même sens, ou -1.
int CodageChaineN(UniChaine::Codage codage)
{
    switch (codage) {
    case UniChaine::kMacRoman:
        return 0;
    case UniChaine::kLatin9:
        return 1;
    case UniChaine::kWinLatin1:
        return 2;
    case UniChaine::kDOS:
        return 3;
    case UniChaine::kUTF8:
        return 4;
    case UniChaine::kUTF16:
        return Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? 5 : 6;
    default:
        return -1;
    }
}

QString Decode(char const* octets, std::size_t n, UniChaine::Codage codage)
{
    int const codageChaineN = CodageChaineN(codage);
    if (octets == nullptr || n == 0 || codageChaineN < 0) {
        return QString();
    }
    auto const& convertisseur = sdd::ConvertisseurChaineN::DonnePourCodage(codageChaineN);
    QString texte(static_cast<int>(convertisseur.MaxUnitesPourOctets(n)), Qt::Uninitialized);
    auto const dest = reinterpret_cast<char16_t*>(texte.data());
    texte.resize(static_cast<int>(convertisseur.VersUTF16(octets, n, dest)));
    return texte;
}

QString Decode(char const* octets, int longueur, UniChaine::Codage codage)
{
    std::size_t const n = octets == nullptr ? 0
                          : longueur < 0    ? std::strlen(octets)
                                            : std::size_t(longueur);
    return Decode(octets, n, codage);
}

inline std::uint16_t Mot(char16_t c, MotInfoUniCaractere mot) noexcept
{
    return gInfoUniCaractere[c][mot];
}

inline char16_t const* Unites(QString const& s) noexcept
{
    return reinterpret_cast<char16_t const*>(s.utf16());
}

// Applique f à chaque unité ; le texte n'est détaché (copié) qu'au premier changement.
template <typename F> void TransformeUnites(QString& texte, F f)
{
    int const n = texte.size();
    char16_t const* source = Unites(texte);
    int i = 0;
    while (i < n && f(source[i]) == source[i]) {
        ++i;
    }
    if (i == n) {
        return;
    }
    auto const dest = reinterpret_cast<char16_t*>(texte.data());
    for (; i < n; ++i) {
        dest[i] = f(dest[i]);
    }
}

char16_t EnMajuscule(char16_t c) noexcept
{
    return Mot(c, kInfoMajuscule);
}

// La colonne minuscule replie aussi commandes et insécable sur l'espace, pour les
// comparaisons : une transformation de casse les garde.
char16_t EnMinuscule(char16_t c) noexcept
{
    char16_t const m = Mot(c, kInfoMinuscule);
    return m == u' ' ? c : m;
}

// Tous les accents : la colonne n'en enlève qu'un à la fois (Ǖ → Ü → U).
char16_t SansAccents(char16_t c) noexcept
{
    if (Mot(c, kInfoClasseLettre) & kCarBlanc) {
        return c;
    }
    for (int pas = 0; pas < 8; ++pas) {
        char16_t const base = Mot(c, kInfoSansAccent);
        if (base == c) {
            break;
        }
        c = base;
    }
    return c;
}

bool EstBlanc(char16_t c) noexcept
{
    return Mot(c, kInfoClassePonctuation) & kPoncBlanc;
}

bool EstFinDeLigne(char16_t c) noexcept
{
    return Mot(c, kInfoClassePonctuation) & kPoncFinDeLigne;
}

bool EstSeparateurDeMot(char16_t c) noexcept
{
    auto const classe = Mot(c, kInfoClassePonctuation);
    return (classe & kPoncSeparateurDeMot) && !(classe & kPoncFinDeLigne);
}

// La comparaison à ligatures de sdd::ChaineN ignore MalgrayEspaces : on replie alors les
// espaces d'avance. Le repli ne change pas les longueurs, donc pas les positions ; et il
// commute avec les autres, qui n'envoient aucun caractère vers une espace variante.
QString PrepareLigatures(QString const& texte, UniChaine::Malgray m)
{
    if (!(m & UniChaine::MalgrayEspaces) || (m & UniChaine::MalgrayTypographie)) {
        return texte;
    }
    QString replie = texte;
    TransformeUnites(replie, [](char16_t c) { return Mot(c, kInfoEspaces); });
    return replie;
}

// autre, sous m avec ligatures, commence-t-il en k dans texte ? *fin reçoit la fin de
// l'occurrence dans texte.
bool LigatureEn(QString const& texte, int k, QString const& autre, UniChaine::Malgray m,
                int* fin) noexcept
{
    unsigned long i = static_cast<unsigned long>(k);
    unsigned long j = 0;
    sdd::AvanceAvecLigatures(Unites(texte), static_cast<unsigned long>(texte.size()), &i,
                             Unites(autre), static_cast<unsigned long>(autre.size()), &j, m);
    *fin = static_cast<int>(i);
    return j == static_cast<unsigned long>(autre.size());
}

} // namespace

int UniChaine::DonneCodageChaineN(Codage codage) noexcept
{
    return CodageChaineN(codage);
}

// --- Construction et affectation ---

UniChaine::UniChaine() noexcept = default;

UniChaine::UniChaine(UniChaine const& autre) : _texte(autre._texte) {}

UniChaine::UniChaine(UniChaine&& autre) noexcept : _texte(std::move(autre._texte)) {}

UniChaine::UniChaine(QString const& texte) : _texte(texte) {}

UniChaine::UniChaine(char16_t const* texte, int longueur)
{
    if (texte != nullptr) {
        _texte = longueur < 0 ? QString::fromUtf16(texte)
                              : QString(reinterpret_cast<QChar const*>(texte), longueur);
    }
}

UniChaine::UniChaine(wchar_t const* texte, int longueur)
{
    if (texte != nullptr) {
        _texte = QString::fromWCharArray(texte, longueur);
    }
}

UniChaine::UniChaine(char16_t c) : _texte(QChar(c)) {}

UniChaine::UniChaine(char const* texte, Codage codage, int longueur)
    : _texte(Decode(texte, longueur, codage))
{
}

UniChaine::UniChaine(std::string const& texte, Codage codage)
    : _texte(Decode(texte.data(), texte.size(), codage))
{
}

UniChaine::~UniChaine()
{
    _LibereTampon();
}

UniChaine& UniChaine::operator=(UniChaine const& autre)
{
    _texte = autre._texte;
    return *this;
}

UniChaine& UniChaine::operator=(UniChaine&& autre) noexcept
{
    _texte = std::move(autre._texte);
    return *this;
}

UniChaine& UniChaine::operator=(QString const& texte)
{
    _texte = texte;
    return *this;
}

UniChaine& UniChaine::Mets(UniChaine const& autre)
{
    return *this = autre;
}

UniChaine& UniChaine::Mets(char const* texte, Codage codage, int longueur)
{
    _texte = Decode(texte, longueur, codage);
    return *this;
}

UniChaine& UniChaine::Mets(std::string const& texte, Codage codage)
{
    _texte = Decode(texte.data(), texte.size(), codage);
    return *this;
}

UniChaine& UniChaine::Init(bool libereConversion)
{
    _texte.clear();
    if (libereConversion) {
        _LibereTampon();
    }
    return *this;
}

UniChaine& UniChaine::Vide()
{
    _texte.clear();
    return *this;
}

// --- Ajouts et modifications ---

// Le jumeau const d'une opération : la même sur une copie (partagée jusqu'à la
// modification, qui ne copie le texte qu'une fois).
#define UNICHAINE_JUMEAU(appel)                                                                    \
    UniChaine copie(*this);                                                                        \
    copie.appel;                                                                                   \
    return copie

UniChaine& UniChaine::AjouteFin(UniChaine const& autre)
{
    _texte += autre._texte;
    return *this;
}

UniChaine UniChaine::AjouteFin(UniChaine const& autre) const
{
    UNICHAINE_JUMEAU(AjouteFin(autre));
}

UniChaine& UniChaine::AjouteFin(char16_t c)
{
    _texte += QChar(c);
    return *this;
}

UniChaine UniChaine::AjouteFin(char16_t c) const
{
    UNICHAINE_JUMEAU(AjouteFin(c));
}

UniChaine& UniChaine::AjouteFin(char const* texte, Codage codage)
{
    _texte += Decode(texte, -1, codage);
    return *this;
}

UniChaine UniChaine::AjouteFin(char const* texte, Codage codage) const
{
    UNICHAINE_JUMEAU(AjouteFin(texte, codage));
}

UniChaine& UniChaine::AjouteDebut(UniChaine const& autre)
{
    _texte.prepend(autre._texte);
    return *this;
}

UniChaine UniChaine::AjouteDebut(UniChaine const& autre) const
{
    UNICHAINE_JUMEAU(AjouteDebut(autre));
}

UniChaine& UniChaine::AjouteDebut(char16_t c)
{
    _texte.prepend(QChar(c));
    return *this;
}

UniChaine UniChaine::AjouteDebut(char16_t c) const
{
    UNICHAINE_JUMEAU(AjouteDebut(c));
}

UniChaine& UniChaine::AjouteDebut(char const* texte, Codage codage)
{
    _texte.prepend(Decode(texte, -1, codage));
    return *this;
}

UniChaine UniChaine::AjouteDebut(char const* texte, Codage codage) const
{
    UNICHAINE_JUMEAU(AjouteDebut(texte, codage));
}

UniChaine operator+(UniChaine const& a, UniChaine const& b)
{
    return a.AjouteFin(b);
}

void UniChaine::_VerifieIntervalle(int pos, int n) const
{
    int const longueur = _texte.size();
    if (pos < 0 || pos > longueur) {
        sdd::exceptions::LanceIndexHorsBorne(static_cast<unsigned long>(pos), 0,
                                             static_cast<unsigned long>(longueur));
    }
    if (n < 0 || n > longueur - pos) {
        sdd::exceptions::LanceIndexHorsBorne(static_cast<unsigned long>(pos) +
                                                 static_cast<unsigned long>(n),
                                             0, static_cast<unsigned long>(longueur));
    }
}

UniChaine& UniChaine::MetsCarAIndex(char16_t c, int index)
{
    if (index < 0 || index >= _texte.size()) {
        sdd::exceptions::LanceIndexHorsBorne(static_cast<unsigned long>(index), 0,
                                             static_cast<unsigned long>(_texte.size()));
    }
    if (_texte[index].unicode() != c) {
        _texte[index] = QChar(c);
    }
    return *this;
}

UniChaine UniChaine::MetsCarAIndex(char16_t c, int index) const
{
    UNICHAINE_JUMEAU(MetsCarAIndex(c, index));
}

UniChaine& UniChaine::Remplace(int pos, int n, UniChaine const& par)
{
    _VerifieIntervalle(pos, n);
    _texte.replace(pos, n, par._texte);
    return *this;
}

UniChaine UniChaine::Remplace(int pos, int n, UniChaine const& par) const
{
    UNICHAINE_JUMEAU(Remplace(pos, n, par));
}

UniChaine& UniChaine::Remplace(char16_t ancien, char16_t nouveau, Malgray m)
{
    if (m == 0) {
        _texte.replace(QChar(ancien), QChar(nouveau));
    } else {
        TransformeUnites(_texte,
                         [=](char16_t c) { return UniCarEgalOption(c, ancien, m) ? nouveau : c; });
    }
    return *this;
}

UniChaine UniChaine::Remplace(char16_t ancien, char16_t nouveau, Malgray m) const
{
    UNICHAINE_JUMEAU(Remplace(ancien, nouveau, m));
}

namespace {

// Remplace les occurrences retenues par garde(debut, fin) de ancien par nouveau.
template <typename Garde>
QString RemplaceOccurrences(UniChaine const& texte, UniChaine const& ancien,
                            UniChaine const& nouveau, UniChaine::Malgray m, Garde garde)
{
    QString const& source = texte.DonneQString();
    QString resultat;
    int copie = 0;
    int depuis = 0;
    int pos = 0;
    while (depuis <= source.size()) {
        int longueur = ancien.Longueur();
        bool trouve = false;
        if (m & UniChaine::MalgrayLigatures) {
            trouve = texte.ContientMalgrayLigature(ancien, depuis, m, &pos, &longueur);
        } else {
            trouve = texte.Contient(ancien, &pos, depuis, m);
        }
        if (!trouve) {
            break;
        }
        if (!garde(pos, pos + longueur)) {
            depuis = pos + 1;
            continue;
        }
        resultat.append(source.constData() + copie, pos - copie);
        resultat.append(nouveau.DonneQString());
        copie = pos + longueur;
        depuis = copie;
    }
    if (copie == 0) {
        return source;
    }
    resultat.append(source.constData() + copie, source.size() - copie);
    return resultat;
}

} // namespace

UniChaine& UniChaine::Remplace(UniChaine const& ancien, UniChaine const& nouveau, Malgray m)
{
    if (ancien.EstVide()) {
        return *this;
    }
    if (m == 0) {
        _texte.replace(ancien._texte, nouveau._texte);
    } else {
        _texte = RemplaceOccurrences(*this, ancien, nouveau, m, [](int, int) { return true; });
    }
    return *this;
}

UniChaine UniChaine::Remplace(UniChaine const& ancien, UniChaine const& nouveau, Malgray m) const
{
    UNICHAINE_JUMEAU(Remplace(ancien, nouveau, m));
}

UniChaine& UniChaine::RemplaceMotEntier(UniChaine const& ancien, UniChaine const& nouveau,
                                        Malgray m)
{
    if (ancien.EstVide()) {
        return *this;
    }
    _texte = RemplaceOccurrences(*this, ancien, nouveau, m, [this](int debut, int fin) {
        return (debut == 0 || AUnSeparateurDeMot(debut - 1)) &&
               (fin == _texte.size() || AUnSeparateurDeMot(fin));
    });
    return *this;
}

UniChaine UniChaine::RemplaceMotEntier(UniChaine const& ancien, UniChaine const& nouveau,
                                       Malgray m) const
{
    UNICHAINE_JUMEAU(RemplaceMotEntier(ancien, nouveau, m));
}

UniChaine& UniChaine::EnleveDebut(int n)
{
    _VerifieIntervalle(0, n);
    _texte.remove(0, n);
    return *this;
}

UniChaine UniChaine::EnleveDebut(int n) const
{
    UNICHAINE_JUMEAU(EnleveDebut(n));
}

UniChaine& UniChaine::EnleveFin(int n)
{
    _VerifieIntervalle(0, n);
    _texte.chop(n);
    return *this;
}

UniChaine UniChaine::EnleveFin(int n) const
{
    UNICHAINE_JUMEAU(EnleveFin(n));
}

UniChaine& UniChaine::EnleveIntervalle(int pos, int n)
{
    _VerifieIntervalle(pos, n);
    _texte.remove(pos, n);
    return *this;
}

UniChaine UniChaine::EnleveIntervalle(int pos, int n) const
{
    UNICHAINE_JUMEAU(EnleveIntervalle(pos, n));
}

UniChaine& UniChaine::SousChaine(int pos, int n)
{
    if (n < 0) {
        _VerifieIntervalle(pos, 0);
        n = _texte.size() - pos;
    } else {
        _VerifieIntervalle(pos, n);
    }
    if (pos != 0 || n != _texte.size()) {
        _texte = _texte.mid(pos, n);
    }
    return *this;
}

UniChaine UniChaine::SousChaine(int pos, int n) const
{
    if (n < 0) {
        _VerifieIntervalle(pos, 0);
        n = _texte.size() - pos;
    } else {
        _VerifieIntervalle(pos, n);
    }
    return UniChaine(_texte.mid(pos, n));
}

UniChaine& UniChaine::CoupeAuPremierRC()
{
    char16_t const* u = Unites(_texte);
    int const n = _texte.size();
    for (int i = 0; i < n; ++i) {
        if (EstFinDeLigne(u[i])) {
            _texte.truncate(i);
            break;
        }
    }
    return *this;
}

UniChaine UniChaine::CoupeAuPremierRC() const
{
    UNICHAINE_JUMEAU(CoupeAuPremierRC());
}

UniChaine& UniChaine::CoupeAuDernierRC()
{
    char16_t const* u = Unites(_texte);
    for (int i = _texte.size() - 1; i >= 0; --i) {
        if (EstFinDeLigne(u[i])) {
            // « \r\n » est une seule fin de ligne.
            _texte.truncate(u[i] == u'\n' && i > 0 && u[i - 1] == u'\r' ? i - 1 : i);
            break;
        }
    }
    return *this;
}

UniChaine UniChaine::CoupeAuDernierRC() const
{
    UNICHAINE_JUMEAU(CoupeAuDernierRC());
}

// --- Questions ---

int UniChaine::Longueur(Codage codage) const
{
    int const n = _texte.size();
    switch (codage) {
    case kMacRoman:
    case kLatin9:
    case kWinLatin1:
    case kDOS:
        return n;
    case kUTF8:
        return static_cast<int>(sdd::detail::LongueurUTF8(Unites(_texte), std::size_t(n)));
    case kUTF16:
        return 2 * n;
    default:
        return 0;
    }
}

char16_t UniChaine::operator[](int i) const
{
    if (i < 0 || i >= _texte.size()) {
        sdd::exceptions::LanceIndexHorsBorne(static_cast<unsigned long>(i), 0,
                                             static_cast<unsigned long>(_texte.size()));
    }
    return _texte[i].unicode();
}

bool UniChaine::_EgalEn(int k, QString const& autre, Malgray m) const noexcept
{
    char16_t const* a = Unites(_texte) + k;
    char16_t const* b = Unites(autre);
    int const n = autre.size();
    for (int i = 0; i < n; ++i) {
        if (!UniCarEgalOption(a[i], b[i], m)) {
            return false;
        }
    }
    return true;
}

bool UniChaine::Contient(UniChaine const& autre, int* pos, int depuis, Malgray m) const
{
    _VerifieIntervalle(depuis, 0);
    if (m & MalgrayLigatures) {
        return ContientMalgrayLigature(autre, depuis, m, pos);
    }
    int trouve = -1;
    if (m == 0) {
        trouve = _texte.indexOf(autre._texte, depuis);
    } else {
        int const dernier = _texte.size() - autre._texte.size();
        for (int k = depuis; k <= dernier; ++k) {
            if (_EgalEn(k, autre._texte, m)) {
                trouve = k;
                break;
            }
        }
    }
    if (trouve >= 0 && pos != nullptr) {
        *pos = trouve;
    }
    return trouve >= 0;
}

bool UniChaine::Contient(char16_t c, int* pos, int depuis, Malgray m) const
{
    _VerifieIntervalle(depuis, 0);
    int trouve = -1;
    if (m == 0) {
        trouve = _texte.indexOf(QChar(c), depuis);
    } else {
        char16_t const* u = Unites(_texte);
        for (int k = depuis; k < _texte.size(); ++k) {
            if (UniCarEgalOption(u[k], c, m)) {
                trouve = k;
                break;
            }
        }
    }
    if (trouve >= 0 && pos != nullptr) {
        *pos = trouve;
    }
    return trouve >= 0;
}

bool UniChaine::TrouveDernier(UniChaine const& autre, int* pos, int avant, Malgray m) const
{
    if (avant < -1 || avant > _texte.size()) {
        sdd::exceptions::LanceIndexHorsBorne(static_cast<unsigned long>(avant), 0,
                                             static_cast<unsigned long>(_texte.size()));
    }
    int depart = avant < 0 ? _texte.size() : avant;
    int trouve = -1;
    if (m & MalgrayLigatures) {
        QString const texte = PrepareLigatures(_texte, m);
        QString const cherche = PrepareLigatures(autre._texte, m);
        int fin = 0;
        for (int k = depart; k >= 0; --k) {
            if (LigatureEn(texte, k, cherche, m, &fin)) {
                trouve = k;
                break;
            }
        }
    } else if (autre._texte.isEmpty()) {
        trouve = depart;
    } else if (m == 0) {
        // Pour Qt, une position de départ égale à la longueur est hors du texte.
        trouve = _texte.lastIndexOf(autre._texte, depart < _texte.size() ? depart : -1);
    } else {
        depart = std::min(depart, _texte.size() - autre._texte.size());
        for (int k = depart; k >= 0; --k) {
            if (_EgalEn(k, autre._texte, m)) {
                trouve = k;
                break;
            }
        }
    }
    if (trouve >= 0 && pos != nullptr) {
        *pos = trouve;
    }
    return trouve >= 0;
}

bool UniChaine::TrouveDernier(char16_t c, int* pos, int avant, Malgray m) const
{
    if (avant < -1 || avant > _texte.size()) {
        sdd::exceptions::LanceIndexHorsBorne(static_cast<unsigned long>(avant), 0,
                                             static_cast<unsigned long>(_texte.size()));
    }
    char16_t const* u = Unites(_texte);
    for (int k = std::min(avant < 0 ? _texte.size() : avant, _texte.size() - 1); k >= 0; --k) {
        if (UniCarEgalOption(u[k], c, m)) {
            if (pos != nullptr) {
                *pos = k;
            }
            return true;
        }
    }
    return false;
}

bool UniChaine::ContientUnCarDe(UniChaine const& cars, int* pos, int depuis) const
{
    _VerifieIntervalle(depuis, 0);
    char16_t const* u = Unites(_texte);
    for (int k = depuis; k < _texte.size(); ++k) {
        if (cars._texte.contains(QChar(u[k]))) {
            if (pos != nullptr) {
                *pos = k;
            }
            return true;
        }
    }
    return false;
}

bool UniChaine::ContientMotEntier(UniChaine const& mot, int* pos, int depuis, Malgray m) const
{
    _VerifieIntervalle(depuis, 0);
    if (mot.EstVide()) {
        return false;
    }
    int p = 0;
    while (depuis <= _texte.size()) {
        int longueur = mot.Longueur();
        bool const trouve = (m & MalgrayLigatures)
                                ? ContientMalgrayLigature(mot, depuis, m, &p, &longueur)
                                : Contient(mot, &p, depuis, m);
        if (!trouve) {
            return false;
        }
        if ((p == 0 || AUnSeparateurDeMot(p - 1)) &&
            (p + longueur == _texte.size() || AUnSeparateurDeMot(p + longueur))) {
            if (pos != nullptr) {
                *pos = p;
            }
            return true;
        }
        depuis = p + 1;
    }
    return false;
}

bool UniChaine::ContientMalgrayLigature(UniChaine const& autre, int depuis, Malgray m, int* pos,
                                        int* longueur) const
{
    _VerifieIntervalle(depuis, 0);
    int trouve = -1;
    int fin = depuis;
    if (autre.EstVide()) {
        trouve = depuis;
    } else {
        QString const texte = PrepareLigatures(_texte, m);
        QString const cherche = PrepareLigatures(autre._texte, m);
        for (int k = depuis; k < texte.size(); ++k) {
            if (LigatureEn(texte, k, cherche, m, &fin)) {
                trouve = k;
                break;
            }
        }
    }
    if (trouve < 0) {
        return false;
    }
    if (pos != nullptr) {
        *pos = trouve;
    }
    if (longueur != nullptr) {
        *longueur = fin - trouve;
    }
    return true;
}

bool UniChaine::CommencePar(UniChaine const& autre, Malgray m) const
{
    if (m == 0) {
        return _texte.startsWith(autre._texte);
    }
    if (m & MalgrayLigatures) {
        int fin = 0;
        return LigatureEn(PrepareLigatures(_texte, m), 0, PrepareLigatures(autre._texte, m), m,
                          &fin);
    }
    return autre._texte.size() <= _texte.size() && _EgalEn(0, autre._texte, m);
}

bool UniChaine::TerminePar(UniChaine const& autre, Malgray m) const
{
    if (m == 0) {
        return _texte.endsWith(autre._texte);
    }
    int const n = _texte.size();
    int const nb = autre._texte.size();
    if (m & MalgrayLigatures) {
        // Une occurrence finale tient entre nb / 2 et 2 nb unités de ce texte.
        QString const texte = PrepareLigatures(_texte, m);
        QString const cherche = PrepareLigatures(autre._texte, m);
        int fin = 0;
        for (int k = std::max(0, n - 2 * nb); k <= n - nb / 2; ++k) {
            if (LigatureEn(texte, k, cherche, m, &fin) && fin == n) {
                return true;
            }
        }
        return false;
    }
    return nb <= n && _EgalEn(n - nb, autre._texte, m);
}

bool UniChaine::Egal(UniChaine const& autre, Malgray m) const
{
    if (m == 0) {
        return _texte == autre._texte;
    }
    if (m & MalgrayLigatures) {
        QString const a = PrepareLigatures(_texte, m);
        QString const b = PrepareLigatures(autre._texte, m);
        return sdd::EgalAvecLigatures(Unites(a), static_cast<unsigned long>(a.size()), Unites(b),
                                      static_cast<unsigned long>(b.size()), m);
    }
    return _texte.size() == autre._texte.size() && _EgalEn(0, autre._texte, m);
}

int UniChaine::Compare(UniChaine const& autre) const noexcept
{
    int const r = _texte.compare(autre._texte);
    return (r > 0) - (r < 0);
}

int UniChaine::LongueurPrefixeCommun(UniChaine const& autre, Malgray m) const
{
    if (m & MalgrayLigatures) {
        int fin = 0;
        LigatureEn(PrepareLigatures(_texte, m), 0, PrepareLigatures(autre._texte, m), m, &fin);
        return fin;
    }
    char16_t const* a = Unites(_texte);
    char16_t const* b = Unites(autre._texte);
    int const n = std::min(_texte.size(), autre._texte.size());
    int i = 0;
    while (i < n && UniCarEgalOption(a[i], b[i], m)) {
        ++i;
    }
    return i;
}

int UniChaine::LongueurSuffixeCommun(UniChaine const& autre, Malgray m) const
{
    char16_t const* a = Unites(_texte);
    char16_t const* b = Unites(autre._texte);
    int const na = _texte.size();
    int const nb = autre._texte.size();
    int i = 0;
    while (i < na && i < nb && UniCarEgalOption(a[na - 1 - i], b[nb - 1 - i], m)) {
        ++i;
    }
    return i;
}

unsigned int UniChaine::hash() const noexcept
{
    return qHash(_texte, 0);
}

bool UniChaine::AUnSeparateurDeMot(int i) const noexcept
{
    return i >= 0 && i < _texte.size() && EstSeparateurDeMot(_texte[i].unicode());
}

bool UniChaine::AUnSeparateurDePhrase(int i) const noexcept
{
    return i >= 0 && i < _texte.size() &&
           (Mot(_texte[i].unicode(), kInfoClassePonctuation) & kPoncFinDePhrase);
}

bool UniChaine::AUnRetourDeChariot(int i) const noexcept
{
    return i >= 0 && i < _texte.size() && EstFinDeLigne(_texte[i].unicode());
}

bool UniChaine::ContientUnSeparateurDeMot() const noexcept
{
    char16_t const* u = Unites(_texte);
    return std::any_of(u, u + _texte.size(), EstSeparateurDeMot);
}

bool UniChaine::PossedeCaractereAlphaNumeriqueAbsent(char& c) const noexcept
{
    bool present[128] = {};
    for (QChar q : _texte) {
        if (q.unicode() < 128) {
            present[q.unicode()] = true;
        }
    }
    static constexpr char kCandidats[] =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
    for (char candidat : kCandidats) {
        if (candidat != 0 && !present[static_cast<unsigned char>(candidat)]) {
            c = candidat;
            return true;
        }
    }
    return false;
}

bool UniChaine::ContientUnCaractereAccentuayNonBaseUniCode() const noexcept
{
    char16_t const* u = Unites(_texte);
    return std::any_of(u, u + _texte.size(), [](char16_t c) {
        return (Mot(c, kInfoClasseLettre) & kCarMarqueCombinante) != 0;
    });
}

// --- Casse et accents ---

UniChaine& UniChaine::Majusculise()
{
    TransformeUnites(_texte, EnMajuscule);
    return *this;
}

UniChaine UniChaine::Majusculise() const
{
    UNICHAINE_JUMEAU(Majusculise());
}

UniChaine& UniChaine::Minusculise()
{
    TransformeUnites(_texte, EnMinuscule);
    return *this;
}

UniChaine UniChaine::Minusculise() const
{
    UNICHAINE_JUMEAU(Minusculise());
}

namespace {

// Index de la première lettre qui ouvre le texte, après blancs et ponctuation ; -1 si le
// premier alphanumérique est un chiffre, ou s'il n'y en a pas.
int PremiereLettre(QString const& texte) noexcept
{
    char16_t const* u = Unites(texte);
    for (int i = 0; i < texte.size(); ++i) {
        if (Mot(u[i], kInfoProprietes) & kPropAlphanumerique) {
            return (Mot(u[i], kInfoClasseLettre) & kCarLettre) ? i : -1;
        }
    }
    return -1;
}

} // namespace

UniChaine& UniChaine::MajusculisePremiereLettre()
{
    int const i = PremiereLettre(_texte);
    if (i >= 0) {
        MetsCarAIndex(EnMajuscule(_texte[i].unicode()), i);
    }
    return *this;
}

UniChaine UniChaine::MajusculisePremiereLettre() const
{
    UNICHAINE_JUMEAU(MajusculisePremiereLettre());
}

UniChaine& UniChaine::MinusculisePremiereLettre()
{
    int const i = PremiereLettre(_texte);
    if (i >= 0) {
        MetsCarAIndex(EnMinuscule(_texte[i].unicode()), i);
    }
    return *this;
}

UniChaine UniChaine::MinusculisePremiereLettre() const
{
    UNICHAINE_JUMEAU(MinusculisePremiereLettre());
}

UniChaine UniChaine::DonneChaineMajusculiseePremiereLettre() const
{
    return MajusculisePremiereLettre();
}

UniChaine UniChaine::DonneChaineSansAccents() const
{
    UniChaine copie(*this);
    TransformeUnites(copie._texte, SansAccents);
    return copie;
}

UniChaine UniChaine::DonneChaineMinusculiseSansAccents() const
{
    UniChaine copie(*this);
    TransformeUnites(copie._texte, [](char16_t c) { return EnMinuscule(SansAccents(c)); });
    return copie;
}

namespace {

template <typename Predicat> bool AucuneUnite(QString const& texte, Predicat p) noexcept
{
    char16_t const* u = Unites(texte);
    return std::none_of(u, u + texte.size(), p);
}

constexpr std::uint16_t kMajusculeOuTitre = kCarMajuscule | kCarCasseTitre;

} // namespace

bool UniChaine::EstToutEnMinuscules() const noexcept
{
    return AucuneUnite(_texte,
                       [](char16_t c) { return Mot(c, kInfoClasseLettre) & kMajusculeOuTitre; });
}

bool UniChaine::EstToutEnMajuscules() const noexcept
{
    return AucuneUnite(_texte, [](char16_t c) {
        return Mot(c, kInfoClasseLettre) & (kCarMinuscule | kCarCasseTitre);
    });
}

bool UniChaine::ContientMajuscule() const noexcept
{
    return !EstToutEnMinuscules();
}

bool UniChaine::CommenceParMajuscule() const noexcept
{
    return !_texte.isEmpty() &&
           (Mot(_texte[0].unicode(), kInfoClasseLettre) & kMajusculeOuTitre) != 0;
}

UniChaine& UniChaine::Deligature()
{
    if (AucuneUnite(_texte, [](char16_t c) { return Mot(c, kInfoMarques) & kMarqueLigature; })) {
        return *this;
    }
    QString resultat;
    resultat.reserve(_texte.size() + 8);
    char16_t lettres[4];
    for (QChar q : qAsConst(_texte)) {
        unsigned long n = 0;
        if (UniCaractere::DecompositionLigature(q.unicode(), lettres, 4, &n)) {
            resultat.append(reinterpret_cast<QChar const*>(lettres), static_cast<int>(n));
        } else {
            resultat.append(q);
        }
    }
    _texte = resultat;
    return *this;
}

UniChaine UniChaine::Deligature() const
{
    UNICHAINE_JUMEAU(Deligature());
}

// --- Nettoyage ---

UniChaine& UniChaine::NettoieBlancs()
{
    _texte = _texte.trimmed();
    return *this;
}

UniChaine UniChaine::NettoieBlancs() const
{
    return UniChaine(_texte.trimmed());
}

UniChaine& UniChaine::ConsolideBlancs()
{
    int const n = _texte.size();
    char16_t const* u = Unites(_texte);
    QString resultat;
    bool change = false;
    int i = 0;
    while (i < n - 1) {
        bool const espaceSimple = u[i] == u' ' && !EstBlanc(u[i + 1]);
        if (!EstBlanc(u[i]) || espaceSimple) {
            if (change) {
                resultat.append(QChar(u[i]));
            }
            ++i;
            continue;
        }
        if (!change) {
            change = true;
            resultat.reserve(n);
            resultat.append(_texte.constData(), i);
        }
        while (i < n && EstBlanc(u[i])) {
            ++i;
        }
        resultat.append(QLatin1Char(' '));
    }
    if (change) {
        // La dernière unité, atteinte hors d'une suite, reste telle quelle.
        if (i < n) {
            resultat.append(QChar(u[n - 1]));
        }
        _texte = resultat;
    }
    return *this;
}

UniChaine UniChaine::ConsolideBlancs() const
{
    UNICHAINE_JUMEAU(ConsolideBlancs());
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

UniChaine UniChaine::NettoieHTML() const
{
    UNICHAINE_JUMEAU(NettoieHTML());
}

UniChaine& UniChaine::NormaliseApostrophe(char16_t apostrophe)
{
    TransformeUnites(_texte, [apostrophe](char16_t c) {
        return (Mot(c, kInfoClassePonctuation) & kPoncApostrophe) ? apostrophe : c;
    });
    return *this;
}

UniChaine UniChaine::NormaliseApostrophe(char16_t apostrophe) const
{
    UNICHAINE_JUMEAU(NormaliseApostrophe(apostrophe));
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

UniChaine UniChaine::AjusteTypographieSansEspaceFine() const
{
    UNICHAINE_JUMEAU(AjusteTypographieSansEspaceFine());
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
    if (CodageChaineN(codage) < 0 || codage == kUTF8 || codage == kUTF16) {
        return *this;
    }
    if (AucuneUnite(_texte, EstCarTypographique)) {
        return *this;
    }
    for (auto const& entree : DonneTableCarTypographiques()) {
        _texte.replace(entree.premier, QString(QChar(entree.second)));
    }
    return *this;
}

UniChaine UniChaine::ConvertisCarsTypographiques(Codage codage) const
{
    UNICHAINE_JUMEAU(ConvertisCarsTypographiques(codage));
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
    char16_t const* u = Unites(_texte);
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

UniChaine UniChaine::ConvertisRetoursDeCharriot(Codage codage) const
{
    UNICHAINE_JUMEAU(ConvertisRetoursDeCharriot(codage));
}

namespace {

// La contre-oblique, puis les caractères du supplément qui n'en sont pas.
QString CaracteresAProteger(UniChaine const& supplement)
{
    QString liste(QLatin1Char('\\'));
    for (QChar q : supplement.DonneQString()) {
        if (!liste.contains(q)) {
            liste += q;
        }
    }
    return liste;
}

} // namespace

// Une passe qui protège chaque caractère de la liste revient aux remplacements successifs,
// contre-oblique d'abord, sans en redoubler aucune.
UniChaine& UniChaine::EncodeBackslash(UniChaine const& supplement)
{
    QString const liste = CaracteresAProteger(supplement);
    QString resultat;
    resultat.reserve(_texte.size() + 8);
    for (QChar q : qAsConst(_texte)) {
        if (liste.contains(q)) {
            resultat += QLatin1Char('\\');
        }
        resultat += q;
    }
    if (resultat.size() != _texte.size()) {
        _texte = resultat;
    }
    return *this;
}

UniChaine UniChaine::EncodeBackslash(UniChaine const& supplement) const
{
    UNICHAINE_JUMEAU(EncodeBackslash(supplement));
}

UniChaine& UniChaine::DecodeBackslash(UniChaine const& supplement)
{
    if (!_texte.contains(QLatin1Char('\\'))) {
        return *this;
    }
    QString const liste = CaracteresAProteger(supplement);
    int const n = _texte.size();
    QString resultat;
    resultat.reserve(n);
    for (int i = 0; i < n; ++i) {
        if (_texte[i] == QLatin1Char('\\') && i + 1 < n && liste.contains(_texte[i + 1])) {
            ++i;
        }
        resultat += _texte[i];
    }
    _texte = resultat;
    return *this;
}

UniChaine UniChaine::DecodeBackslash(UniChaine const& supplement) const
{
    UNICHAINE_JUMEAU(DecodeBackslash(supplement));
}

UniChaine& UniChaine::CrypterRot13()
{
    TransformeUnites(_texte, [](char16_t c) -> char16_t {
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

UniChaine UniChaine::CrypterRot13() const
{
    UNICHAINE_JUMEAU(CrypterRot13());
}

#undef UNICHAINE_JUMEAU

// --- Nombres ---

namespace {

constexpr int kBaseMin = 2;
constexpr int kBaseMax = 36;

void VerifieBase(int base)
{
    if (base < kBaseMin || base > kBaseMax) {
        sdd::exceptions::LanceIndexHorsBorne(static_cast<unsigned long>(base), kBaseMin, kBaseMax);
    }
}

// Comme sdd::ChaineN : chiffres majuscules, et le remplissage va devant le texte entier,
// signe compris (-5 sur 4 zéros : « 00-5 »), ce que QString::arg ne fait pas.
UniChaine EntierEnTexte(bool negatif, qulonglong valeur, int base, int largeur, bool zeros,
                        bool aGauche)
{
    VerifieBase(base);
    QString texte = QString::number(valeur, base).toUpper();
    if (negatif) {
        texte.prepend(QLatin1Char('-'));
    }
    if (texte.size() < largeur) {
        QString const remplissage(largeur - texte.size(),
                                  zeros ? QLatin1Char('0') : QLatin1Char(' '));
        texte = aGauche ? texte + remplissage : remplissage + texte;
    }
    return UniChaine(texte);
}

struct Separateurs
{
    QString milliers;
    QChar decimal;
};

Separateurs SeparateursPour(eLangue langue)
{
    if (langue == kLangueAnglais) {
        return {QStringLiteral(","), QLatin1Char('.')};
    }
    return {QString(QChar(0x202F)), QLatin1Char(',')};
}

// Chiffres d'une partie entière, groupés par trois depuis la droite.
QString GroupeMilliers(QString const& chiffres, QString const& separateur)
{
    int const n = chiffres.size();
    QString resultat;
    resultat.reserve(n + n / 3 * separateur.size());
    for (int i = 0; i < n; ++i) {
        if (i != 0 && (n - i) % 3 == 0) {
            resultat += separateur;
        }
        resultat += chiffres[i];
    }
    return resultat;
}

// Texte « -1234.50 » de C mis à la manière de la langue.
QString FormateTexteC(QString texte, bool enleveZeros, eLangue langue)
{
    Separateurs const sep = SeparateursPour(langue);
    bool negatif = texte.startsWith(QLatin1Char('-'));
    if (negatif) {
        texte.remove(0, 1);
    }
    int const point = texte.indexOf(QLatin1Char('.'));
    QString entiere = point < 0 ? texte : texte.left(point);
    QString decimales = point < 0 ? QString() : texte.mid(point + 1);
    if (enleveZeros) {
        while (decimales.endsWith(QLatin1Char('0'))) {
            decimales.chop(1);
        }
    }
    // -0,001 arrondi à deux chiffres ne garde pas son signe.
    auto const estZero = [](QChar q) { return q == QLatin1Char('0'); };
    if (negatif && std::all_of(entiere.cbegin(), entiere.cend(), estZero) &&
        std::all_of(decimales.cbegin(), decimales.cend(), estZero)) {
        negatif = false;
    }
    QString resultat = GroupeMilliers(entiere, sep.milliers);
    if (!decimales.isEmpty()) {
        resultat += sep.decimal;
        resultat += decimales;
    }
    if (negatif) {
        resultat.prepend(QLatin1Char('-'));
    }
    return resultat;
}

constexpr int kMaxDecimales = 17;

} // namespace

UniChaine UniChaine::DepuisNombre(int n, int base, int largeur, bool zeros, bool aGauche)
{
    qlonglong const valeur = n;
    return EntierEnTexte(valeur < 0, qulonglong(valeur < 0 ? -valeur : valeur), base, largeur,
                         zeros, aGauche);
}

UniChaine UniChaine::DepuisNombre(unsigned int n, int base, int largeur, bool zeros, bool aGauche)
{
    return EntierEnTexte(false, n, base, largeur, zeros, aGauche);
}

UniChaine UniChaine::DepuisNombre(double x, int decimales)
{
    return UniChaine(QString::number(x, 'f', std::clamp(decimales, 0, kMaxDecimales)));
}

unsigned int UniChaine::DonneEntierHex(bool* ok) const
{
    QString texte = _texte.trimmed();
    if (texte.startsWith(QLatin1String("0x"), Qt::CaseInsensitive)) {
        texte.remove(0, 2);
    }
    bool lu = false;
    unsigned int const valeur = texte.toUInt(&lu, 16);
    if (ok != nullptr) {
        *ok = lu;
    }
    return lu ? valeur : 0;
}

UniChaine UniChaine::DonneNombreFormatay(double x, int decimales, bool enleveZeros, eLangue langue)
{
    if (!std::isfinite(x)) {
        return UniChaine(QString::number(x));
    }
    QString const texte = QString::number(x, 'f', std::clamp(decimales, 0, kMaxDecimales));
    return UniChaine(FormateTexteC(texte, enleveZeros, langue));
}

UniChaine UniChaine::DonneNombreFormatay(int n, eLangue langue)
{
    return UniChaine(FormateTexteC(QString::number(n), false, langue));
}

UniChaine UniChaine::DonneNombreFormatay(unsigned int n, eLangue langue)
{
    return UniChaine(FormateTexteC(QString::number(n), false, langue));
}

UniChaine UniChaine::DonnePourcentageFormatay(double ratio, int decimales, bool enleveZeros,
                                              eLangue langue)
{
    UniChaine texte = DonneNombreFormatay(ratio * 100.0, decimales, enleveZeros, langue);
    if (langue != kLangueAnglais) {
        texte.AjouteFin(u'\u00A0');
    }
    return texte.AjouteFin(u'%');
}

// --- Formes en octets ---

char const* UniChaine::PreteCString(Codage codage, unsigned int taille, char* tampon) const
{
    int const codageChaineN = CodageChaineN(codage);
    if (codageChaineN < 0) {
        return nullptr;
    }
    auto const& convertisseur = sdd::ConvertisseurChaineN::DonnePourCodage(codageChaineN);
    std::size_t const n = static_cast<std::size_t>(_texte.size());
    std::size_t const terminateur = convertisseur.TailleTerminateur();
    if (tampon != nullptr) {
        if (taille < terminateur) {
            return nullptr;
        }
        std::size_t const ecrits =
            convertisseur.DepuisUTF16(Unites(_texte), n, tampon, taille - terminateur);
        std::memset(tampon + ecrits, 0, terminateur);
        return tampon;
    }
    std::size_t const place = convertisseur.MaxOctetsPourUnites(n) + terminateur;
    std::unique_ptr<char[]> nouveau(new char[place]);
    std::size_t const ecrits =
        convertisseur.DepuisUTF16(Unites(_texte), n, nouveau.get(), place - terminateur);
    std::memset(nouveau.get() + ecrits, 0, terminateur);
    _LibereTampon();
    _tampon = nouveau.release();
    _longueurTampon = static_cast<unsigned int>(ecrits);
    _codageTampon = codage;
    return _tampon;
}

char* UniChaine::CreeCString(Codage codage) const
{
    int const codageChaineN = CodageChaineN(codage);
    if (codageChaineN < 0) {
        return nullptr;
    }
    auto const& convertisseur = sdd::ConvertisseurChaineN::DonnePourCodage(codageChaineN);
    std::size_t const place = convertisseur.MaxOctetsPourUnites(std::size_t(_texte.size())) +
                              convertisseur.TailleTerminateur();
    auto const copie = new char[place];
    PreteCString(codage, static_cast<unsigned int>(place), copie);
    return copie;
}

char16_t const* UniChaine::PreteUniCString() const noexcept
{
    return Unites(_texte);
}

UniChaine UniChaine::DonneChaineEchappayPourcent(UniChaine const& garder, UniChaine const& forcer,
                                                 Codage codage) const
{
    static QString const kSurs = QString::fromUtf16(sdd::detail::kCaracteresNonEchappes);
    int const codageChaineN = CodageChaineN(codage);
    auto const& convertisseur =
        sdd::ConvertisseurChaineN::DonnePourCodage(codageChaineN < 0 ? 4 : codageChaineN);
    char16_t const* u = Unites(_texte);
    int const n = _texte.size();
    QString resultat;
    resultat.reserve(n);
    std::vector<char> octets;
    int i = 0;
    while (i < n) {
        auto const garde = [&](int k) {
            QChar const q(u[k]);
            return !forcer._texte.contains(q) && (garder._texte.contains(q) || kSurs.contains(q));
        };
        if (garde(i)) {
            resultat += QChar(u[i++]);
            continue;
        }
        // Une suite d'unités à échapper se code d'un bloc : une paire UTF-16 reste entière.
        int fin = i + 1;
        while (fin < n && !garde(fin)) {
            ++fin;
        }
        std::size_t const nb = static_cast<std::size_t>(fin - i);
        octets.resize(convertisseur.MaxOctetsPourUnites(nb));
        std::size_t const ecrits =
            convertisseur.DepuisUTF16(u + i, nb, octets.data(), octets.size());
        for (std::size_t k = 0; k < ecrits; ++k) {
            char16_t echappement[3];
            sdd::detail::EcrisOctetEchappe(static_cast<unsigned char>(octets[k]), echappement);
            resultat.append(reinterpret_cast<QChar const*>(echappement), 3);
        }
        i = fin;
    }
    return UniChaine(resultat);
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
        QString const texte = nettoie ? partie.trimmed() : partie;
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
