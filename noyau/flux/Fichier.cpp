#include "noyau/flux/Fichier.h"

#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/detail/LecteurLigne.h"
#include "noyau/flux/detail/NatureChemin.h"
#include "noyau/plateforme/RoutinesFichier.h"

#include <QDateTime>
#include <QFileInfo>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <limits>
#include <new>

namespace sdd {

namespace {

// Plus grande lecture confiée d'un coup au flux standard (streamsize peut tenir sur 32 bits).
constexpr unsigned int kTrancheLecture = 0x7FFFFFFF;

bool EstUTF16(ChaineN::Codage codage)
{
    return codage == ChaineN::kUTF16LE || codage == ChaineN::kUTF16BE;
}

UniChaine::Codage CodageUniChaine(ChaineN::Codage codage)
{
    switch (codage) {
    case ChaineN::kLatin9:
        return UniChaine::kLatin9;
    case ChaineN::kWinLatin1:
        return UniChaine::kWinLatin1;
    case ChaineN::kDOS:
        return UniChaine::kDOS;
    case ChaineN::kUTF8:
        return UniChaine::kUTF8;
    case ChaineN::kUTF16LE:
    case ChaineN::kUTF16BE:
        return UniChaine::kUTF16;
    default:
        return UniChaine::kMacRoman;
    }
}

// La taille et les positions tiennent sur 32 bits : un fichier plus grand est refusé plutôt
// que lu coupé.
bool TailleAcceptee(std::uint64_t taille)
{
    return taille <= std::numeric_limits<unsigned int>::max();
}

[[noreturn]] void LanceTropGrand(UniChemin const& chemin)
{
    throw exceptions::MemoireInsuffisante(chemin + UniChaine(" : fichier de 4 Gio ou plus"));
}

// Source de lignes : l'octet suivant du tampon du fichier standard, un à la fois.
class SourceFlux
{
public:
    explicit SourceFlux(std::streambuf& tampon) noexcept : _tampon(tampon) {}
    char const* Disponibles(std::size_t& n)
    {
        int const c = _tampon.sgetc();
        n = c == std::char_traits<char>::eof() ? 0 : 1;
        _octet = static_cast<char>(c);
        return &_octet;
    }
    void Consomme(std::size_t n)
    {
        for (; n != 0; --n) {
            _tampon.sbumpc();
        }
    }

private:
    std::streambuf& _tampon;
    char _octet = 0;
};

// Lit tout ce qui reste : d'abord la place réservée par l'appelant, puis par morceaux. Rien
// n'est alloué d'après une taille seulement annoncée.
template <typename Conteneur> void AjouteLeReste(Fichier& fichier, Conteneur& octets)
{
    constexpr std::size_t kMorceau = 1 << 16;
    while (!fichier.EstALaFin()) {
        std::size_t const avant = octets.size();
        unsigned int const voulus = static_cast<unsigned int>(
            std::min<std::size_t>(std::max(kMorceau, octets.capacity() - avant),
                                  std::numeric_limits<unsigned int>::max()));
        octets.resize(avant + voulus);
        unsigned int const lus =
            fichier.Donne(voulus, reinterpret_cast<unsigned char*>(&octets[avant]));
        octets.resize(avant + lus);
        if (lus == 0) {
            return; // flux en échec
        }
    }
}

std::ios::openmode ModeFlux(int mode)
{
    if (mode & Fichier::kLecture) {
        return std::ios::in | std::ios::binary;
    }
    if ((mode & Fichier::kEcriture) && (mode & Fichier::kAjout)) {
        return std::ios::out | std::ios::app | std::ios::binary;
    }
    if (mode & Fichier::kEcriture) {
        return std::ios::out | std::ios::trunc | std::ios::binary;
    }
    return std::ios::openmode();
}

} // namespace

Fichier::Fichier() = default;

Fichier::Fichier(UniChemin const& chemin, int mode, UniChaine::Codage codage, bool sansBOM)
{
    Ouvre(chemin, mode, codage, sansBOM);
}

Fichier::Fichier(UniChemin const& chemin, int mode, ChaineN::Codage codage, bool sansBOM)
{
    Ouvre(chemin, mode, codage, sansBOM);
}

Fichier::~Fichier() = default;

// --- Ouverture ---

void Fichier::_MetsCodage(UniChaine::Codage codage)
{
    int const codageChaineN = UniChaine::DonneCodageChaineN(codage);
    _codage = codage;
    _codageChaineN = codageChaineN < 0 ? ChaineN::kUTF8 : ChaineN::Codage(codageChaineN);
}

void Fichier::_MetsCodage(ChaineN::Codage codage)
{
    _codageChaineN = codage;
    _codage = CodageUniChaine(codage);
}

void Fichier::Ouvre(UniChemin const& chemin, int mode, UniChaine::Codage codage, bool sansBOM)
{
    _chemin = chemin;
    _mode = mode;
    _MetsCodage(codage);
    Init(sansBOM, false);
}

void Fichier::Ouvre(UniChemin const& chemin, int mode, ChaineN::Codage codage, bool sansBOM)
{
    _chemin = chemin;
    _mode = mode;
    _MetsCodage(codage);
    Init(sansBOM, false);
}

void Fichier::OuvreEnLectureSeule(UniChemin const& chemin)
{
    _chemin = chemin;
    _mode = kLecture;
    _MetsCodage(UniChaine::kUTF8);
    Init(false, true);
}

void Fichier::Init(bool sansBOM, bool appliqueBOM)
{
    _taille = 0;
    _debutTexte = 0;
    _flux = std::make_unique<std::fstream>();
    _flux->setstate(std::ios::failbit); // en échec tant que l'ouverture n'a pas réussi
    std::ios::openmode const mode = ModeFlux(_mode);
    char const* const chemin = _chemin.PreteCString(UniChaine::kUTF8);
    if (mode == std::ios::openmode() || !_CheminOuvrable(chemin)) {
        return;
    }
    _flux->open(chemin, mode);
    if (_mode == kLecture && _flux->good()) {
        _MesureTaille();
    }
    if (_flux->good() && !sansBOM && _mode == kLecture) {
        LisBOM(appliqueBOM);
    }
}

bool Fichier::_CheminOuvrable(char const* chemin) const
{
    detail::NatureChemin const nature = detail::DonneNatureChemin(chemin);
    if ((_mode & kLecture) == 0) {
        return nature.AccepteEcriture();
    }
    if (nature.EstOrdinaire() && !TailleAcceptee(nature.taille)) {
        LanceTropGrand(_chemin);
    }
    return nature.EstOrdinaire();
}

void Fichier::_MesureTaille()
{
    _flux->seekg(0, std::ios::end);
    std::streamoff const fin = _flux->tellg();
    _flux->clear();
    _flux->seekg(0);
    // Un fichier dont la fin ne s'atteint pas (ceux de /proc) n'a pas de taille connue : 0, et
    // il se lit jusqu'à sa fin comme un autre.
    if (fin < 0) {
        return;
    }
    // Le fichier a pu grandir depuis sa vérification.
    if (!TailleAcceptee(static_cast<std::uint64_t>(fin))) {
        _flux->close();
        _flux->setstate(std::ios::failbit);
        LanceTropGrand(_chemin);
    }
    _taille = static_cast<unsigned int>(fin);
}

void Fichier::LisBOM(bool applique)
{
    auto const suivant = [this] { return _flux->get(); };
    int const b0 = suivant();
    std::streamoff apres = 0; // position après une marque reconnue ; 0 : aucune
    ChaineN::Codage codage = ChaineN::kCodageDefautPlateforme;
    UniChaine::Codage codageUni = UniChaine::kUTF8;
    if (b0 == 0xEF) {
        if (suivant() == 0xBB && suivant() == 0xBF) {
            apres = 3;
            codage = ChaineN::kUTF8;
        }
    } else if (b0 == 0xFE) {
        if (suivant() == 0xFF) {
            apres = 2;
            codage = ChaineN::kUTF16BE;
            codageUni = UniChaine::kUTF16;
        }
    } else if (b0 == 0xFF && suivant() == 0xFE) {
        // Volontaire : le troisième octet, lu pour écarter FF FE 00 00, n'est pas rendu. Un
        // fichier qui s'arrête là est de l'UTF-16 vide.
        int const b2 = suivant();
        if (b2 != 0) {
            apres = b2 == std::char_traits<char>::eof() ? 2 : 3;
            codage = ChaineN::kUTF16LE;
            codageUni = UniChaine::kUTF16;
        }
    }
    // Les autres marques (UTF-32, UTF-7, UTF-1, UTF-EBCDIC, SCSU, BOCU-1) valent absence.
    _flux->clear();
    _flux->seekg(apres);
    _debutTexte = static_cast<unsigned int>(apres);
    if (applique) {
        _codage = codageUni;
        _codageChaineN = codage;
    }
}

void Fichier::Ferme()
{
    _flux.reset();
}

bool Fichier::EstEnBonEtat() const
{
    return _flux != nullptr && _flux->good();
}

// --- Flux ---

bool Fichier::EstALaFin() const
{
    if (_flux == nullptr || (_mode & kLecture) == 0) {
        return true;
    }
    // Par le tampon du fichier : regarder l'octet suivant ne change pas l'état du flux.
    return _flux->rdbuf()->sgetc() == std::char_traits<char>::eof();
}

unsigned int Fichier::DonnePosition() const
{
    return _Position32(_PositionSysteme());
}

std::uint64_t Fichier::_PositionSysteme() const
{
    if (_flux == nullptr) {
        return 0;
    }
    // Par le tampon aussi : tellg échoue sur un flux arrivé à sa fin.
    auto const position =
        _flux->rdbuf()->pubseekoff(0, std::ios::cur, _CoteLecture() ? std::ios::in : std::ios::out);
    return position < 0 ? 0 : std::uint64_t(position);
}

unsigned int Fichier::_Position32(std::uint64_t position)
{
    // Au-delà de 4 Gio (un ajout à un grand fichier), la position ne tient plus : plutôt
    // qu'une position fausse, IndexHorsBorne.
    if (position > std::numeric_limits<unsigned int>::max()) {
        exceptions::LanceIndexHorsBorne(static_cast<unsigned long>(position), 0,
                                        std::numeric_limits<unsigned int>::max());
    }
    return static_cast<unsigned int>(position);
}

unsigned char Fichier::Donne()
{
    if (_flux == nullptr) {
        return 0;
    }
    int const c = _flux->get();
    return c == std::char_traits<char>::eof() ? 0 : static_cast<unsigned char>(c);
}

unsigned int Fichier::Donne(unsigned int n, unsigned char* dest)
{
    if (_flux == nullptr) {
        return 0;
    }
    unsigned int lus = 0;
    while (lus < n && _flux->good()) {
        unsigned int const voulus = std::min(n - lus, kTrancheLecture);
        _flux->read(reinterpret_cast<char*>(dest + lus), voulus);
        lus += static_cast<unsigned int>(_flux->gcount());
    }
    if (_flux->eof()) {
        _flux->clear(); // la fin n'est pas un échec : on peut encore se placer
    }
    return lus;
}

unsigned int Fichier::DonneLePlus(unsigned int n, unsigned char* dest)
{
    return Donne(n, dest);
}

void Fichier::RetireDonne()
{
    if (_flux == nullptr) {
        return;
    }
    _flux->clear();
    if (!_flux->unget()) {
        _flux->clear(); // au début du fichier, rien à rendre : le flux reste utilisable
    }
}

void Fichier::PositionneAuDebut()
{
    Positionne(0);
}

void Fichier::Positionne(unsigned int position)
{
    if (_flux == nullptr) {
        return;
    }
    _flux->clear();
    if (_CoteLecture()) {
        _flux->seekg(position);
    } else {
        _flux->seekp(position);
    }
}

void Fichier::PositionneALaFin()
{
    if (_flux == nullptr) {
        return;
    }
    _flux->clear();
    if (_CoteLecture()) {
        _flux->seekg(0, std::ios::end);
    } else {
        _flux->seekp(0, std::ios::end);
    }
}

// --- Lignes et textes ---

bool Fichier::_LisOctetsLigne(std::string& octets)
{
    octets.clear();
    if (_flux == nullptr) {
        return false;
    }
    SourceFlux source(*_flux->rdbuf());
    return detail::LisLigneChaine(source, *_flux, octets);
}

bool Fichier::_LisLigneBrute(std::string& octets)
{
    if (!EstUTF16(_codageChaineN)) {
        return _LisOctetsLigne(octets);
    }
    octets.clear();
    if (_flux == nullptr || !_flux->good()) {
        return false; // comme pour les lignes d'octets
    }
    bool const fort = _codageChaineN == ChaineN::kUTF16BE;
    bool pris = false;
    while (!EstALaFin()) {
        unsigned char paire[2];
        unsigned int const lus = Donne(2, paire);
        if (lus == 0) {
            break; // erreur de lecture : la boucle ne tournerait plus sans fin
        }
        pris = true;
        if (lus == 2 && paire[fort ? 0 : 1] == 0 && paire[fort ? 1 : 0] == '\n') {
            break;
        }
        octets.append(reinterpret_cast<char const*>(paire), lus);
    }
    return pris;
}

bool Fichier::DonneLigne(ChaineN& ligne)
{
    std::string octets;
    if (!_LisLigneBrute(octets)) {
        return false;
    }
    // CR LF : le CR reste au bout des octets lus.
    ChaineN lue(octets.data(), _codageChaineN, octets.size());
    if (!lue.EstVide() && lue[lue.Longueur() - 1] == u'\r') {
        lue.EnleveFin(1);
    }
    ligne = lue;
    return true;
}

bool Fichier::DonneLigne(UniChaine& ligne)
{
    ChaineN lue;
    if (!DonneLigne(lue)) {
        return false;
    }
    ligne = UniChaine(lue);
    return true;
}

bool Fichier::DonneLigne(char* tampon, int taille)
{
    if (_flux == nullptr) {
        return false;
    }
    SourceFlux source(*_flux->rdbuf());
    return detail::LisLigneBornee(source, *_flux, tampon, taille);
}

ChaineN Fichier::DonneToutLeResteDuTexte()
{
    std::string octets;
    unsigned int const position = DonnePosition();
    octets.reserve(_taille > position ? _taille - position : 0);
    AjouteLeReste(*this, octets);
    return ChaineN(octets.data(), _codageChaineN, octets.size());
}

ChaineN Fichier::DonneToutLeTexte()
{
    Positionne(_debutTexte);
    return DonneToutLeResteDuTexte();
}

std::vector<unsigned char> Fichier::DonneToutLeFichier()
{
    PositionneAuDebut();
    std::vector<unsigned char> octets;
    octets.reserve(_taille); // mesurée à l'ouverture en lecture, 0 sinon
    AjouteLeReste(*this, octets);
    return octets;
}

char* Fichier::DonneToutLeTexte(UniChemin const& chemin, unsigned int& taille)
{
    Fichier fichier(chemin, kLecture, UniChaine::kUTF8, true);
    if (!fichier.EstEnBonEtat()) {
        throw exceptions::OuvertureEchouee(chemin);
    }
    // Là où size_t a 32 bits, 2^32 - 1 octets et leur zéro ne se comptent pas.
    if (fichier._taille >= std::numeric_limits<std::size_t>::max()) {
        throw std::bad_alloc();
    }
    std::unique_ptr<char[]> bloc(new char[std::size_t(fichier._taille) + 1]);
    std::size_t lus = fichier.Donne(fichier._taille, reinterpret_cast<unsigned char*>(bloc.get()));
    // Ce qui suit la taille mesurée (un fichier de /proc, de taille 0, ou qui a grandi) vient
    // ensuite : seuls ces fichiers paient une seconde copie.
    if (!fichier.EstALaFin()) {
        std::string reste;
        AjouteLeReste(fichier, reste);
        if (lus + reste.size() >= std::numeric_limits<unsigned int>::max()) {
            LanceTropGrand(chemin);
        }
        std::unique_ptr<char[]> tout(new char[lus + reste.size() + 1]);
        std::memcpy(tout.get(), bloc.get(), lus);
        std::memcpy(tout.get() + lus, reste.data(), reste.size());
        bloc = std::move(tout);
        lus += reste.size();
    }
    taille = static_cast<unsigned int>(lus);
    bloc[lus] = 0;
    return bloc.release();
}

// --- Écriture ---

void Fichier::Mets(unsigned char octet)
{
    if (_flux != nullptr) {
        _flux->put(static_cast<char>(octet));
    }
}

void Fichier::Mets(unsigned char const* octets, unsigned int n)
{
    if (EstEnBonEtat()) {
        _flux->write(reinterpret_cast<char const*>(octets), n);
    }
}

void Fichier::Ecris(char const* texte, int n)
{
    Mets(reinterpret_cast<unsigned char const*>(texte),
         n < 0 ? static_cast<unsigned int>(std::strlen(texte)) : static_cast<unsigned int>(n));
}

// --- Questions sur les fichiers ---

char* Fichier::DonneBOMUTF8(int& n)
{
    n = 3;
    return new char[4]{'\xEF', '\xBB', '\xBF', 0};
}

unsigned long long Fichier::TailleFichier(UniChemin const& chemin)
{
    QFileInfo const info(chemin);
    return info.exists() ? static_cast<unsigned long long>(info.size()) : 0;
}

bool Fichier::DonneDate(UniChemin const& chemin, int& annee, int& mois, int& jour)
{
    QFileInfo const info(chemin);
    if (!info.exists()) {
        return false;
    }
    info.lastModified().date().getDate(&annee, &mois, &jour);
    return true;
}

std::time_t Fichier::DonneDate(UniChemin const& chemin)
{
    QFileInfo const info(chemin);
    return info.exists() ? static_cast<std::time_t>(info.lastModified().toSecsSinceEpoch()) : 0;
}

bool Fichier::FichierExiste(UniChemin const& chemin, bool* estRepertoire)
{
    QFileInfo const info(chemin);
    if (estRepertoire != nullptr) {
        *estRepertoire = info.isDir();
    }
    return info.exists();
}

bool Fichier::SupprimeFichier(UniChemin const& chemin)
{
    return RoutinesFichier::DetruisFichier(chemin, RoutinesFichier::kFichiersEtLiens);
}

} // namespace sdd
