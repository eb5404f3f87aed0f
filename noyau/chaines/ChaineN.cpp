#include "noyau/chaines/ChaineN.h"

#include "noyau/algorithmes/ExpressionReguliere.h"
#include "noyau/chaines/ConvertisseurChaineN.h"
#include "noyau/chaines/InfoUniCaractere.h"
#include "noyau/chaines/UniCaractere.h"
#include "noyau/chaines/detail/Formatage.h"
#include "noyau/chaines/detail/Pourcent.h"
#include "noyau/chaines/detail/TablesCodages.h"
#include "noyau/chaines/detail/UTF8.h"
#include "noyau/erreurs/Exceptions.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>
#include <ostream>
#include <string_view>

namespace sdd {

const ChaineN kChaineNNulle;

// Bloc du tas : longueur, capacité, compte de références, puis les unités. Une unité de
// plus que la capacité est toujours allouée : le texte y reste suivi d'un zéro.
struct ChaineN::BlocTas
{
    std::uint32_t longueur;
    std::uint32_t capacite;
    std::uint32_t compte;
};

// Bloc emprunté : les unités vivent ailleurs et ne sont jamais modifiées.
struct ChaineN::BlocEmprunte
{
    std::uint32_t longueur;
    std::uint32_t compte;
    char16_t const* unites;
};

namespace {

// Les comptes changent par opérations atomiques ; les blocs restent de simples octets,
// que realloc peut déplacer.
inline bool Lache(std::uint32_t* compte) noexcept
{
    return __atomic_sub_fetch(compte, 1, __ATOMIC_ACQ_REL) == 0;
}
inline std::uint32_t Compte(std::uint32_t const* compte) noexcept
{
    return __atomic_load_n(compte, __ATOMIC_ACQUIRE);
}

constexpr std::size_t kTailleEnTete = 12;

// Capacité suivante : c, puis 2c + 1, jusqu'à atteindre n.
unsigned long CapacitePour(unsigned long capacite, unsigned long n) noexcept
{
    while (capacite < n) {
        capacite = capacite * 2 + 1;
    }
    return std::min(capacite, ChaineN::kMaxUnites);
}

// Octets d'un bloc ; l'arrondi à 4 octets, quand il y en a un, donne une unité de plus.
std::size_t OctetsPour(unsigned long& capacite) noexcept
{
    std::size_t const octets = kTailleEnTete + 2 * capacite;
    std::size_t const arrondi = (octets + 3) & ~std::size_t(3);
    if (arrondi != octets) {
        ++capacite;
    }
    return arrondi + sizeof(char16_t);
}

inline std::uint16_t Info(char16_t c, int mot) noexcept
{
    return gInfoUniCaractere[c][mot];
}
inline bool EstBlanc(char16_t c) noexcept
{
    return Info(c, kInfoClassePonctuation) & kPoncBlanc;
}

// Séparateur de mots : bit « séparateur » sans être une fin de ligne.
inline bool EstSeparateurDeMot(char16_t c) noexcept
{
    auto const classe = Info(c, kInfoClassePonctuation);
    return (classe & kPoncSeparateurDeMot) && !(classe & kPoncFinDeLigne);
}

ChaineN const& CaracteresNonEchappes()
{
    static ChaineN const caracteres(detail::kCaracteresNonEchappes);
    return caracteres;
}

inline bool ContientUnite(ChaineN const& cars, char16_t c) noexcept
{
    return ChaineN::Contient(cars.PreteUniCString(), cars.Longueur(), c);
}

} // namespace

// Cycle de vie

ChaineN::ChaineN(ChaineN&& autre) noexcept : _texte(autre._texte)
{
    autre._texte = 0;
}

ChaineN::ChaineN(char16_t const* texte, unsigned long longueur, bool emprunte)
{
    if (texte == nullptr) {
        return;
    }
    if (longueur == kJusquAuZero) {
        longueur = std::char_traits<char16_t>::length(texte);
    }
    if (emprunte && longueur > 0 && longueur <= kMaxUnites) {
        auto* bloc = new BlocEmprunte{static_cast<std::uint32_t>(longueur), 1, texte};
        _texte = reinterpret_cast<std::uintptr_t>(bloc) | 1u;
        return;
    }
    _Remplace(0, 0, texte, longueur);
}

ChaineN::ChaineN(char16_t c)
{
    _Remplace(0, 0, &c, 1);
}

ChaineN::ChaineN(char const* texte, Codage codage, unsigned long nbOctets)
{
    _RemplaceOctets(0, 0, texte, codage, nbOctets);
}

ChaineN::ChaineN(std::string const& texte, Codage codage)
{
    _RemplaceOctets(0, 0, texte.data(), codage, texte.size());
}

ChaineN::ChaineN(Codage codage, char const* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    sdd::detail::FinArguments fin{arguments};
    *this = vFormat(ChaineN(format, codage), arguments);
}

void ChaineN::_LibereBloc() noexcept
{
    // _Compteur() trouve le compte à ces places.
    static_assert(sizeof(BlocTas) == 12 && offsetof(BlocTas, compte) == 8);
    static_assert(offsetof(BlocEmprunte, compte) == 4);
    if (_EstEmprunte()) {
        delete _Emprunte();
    } else {
        std::free(_Tas());
    }
}

void ChaineN::_Relache() noexcept
{
    if (_texte != 0 && Lache(_Compteur())) {
        _LibereBloc();
    }
    _texte = 0;
}

ChaineN& ChaineN::operator=(ChaineN const& autre) noexcept
{
    if (_texte != autre._texte) {
        ChaineN copie(autre);
        std::swap(_texte, copie._texte);
    }
    return *this;
}

ChaineN& ChaineN::operator=(ChaineN&& autre) noexcept
{
    if (this != &autre) {
        _Relache();
        _texte = autre._texte;
        autre._texte = 0;
    }
    return *this;
}

ChaineN& ChaineN::Mets(char16_t const* texte, unsigned long longueur)
{
    return *this = ChaineN(texte, longueur);
}

ChaineN& ChaineN::Mets(char const* texte, Codage codage, unsigned long nbOctets)
{
    return *this = ChaineN(texte, codage, nbOctets);
}

ChaineN& ChaineN::Mets(ChaineN const& autre, unsigned long longueur)
{
    if (longueur >= autre.Longueur()) {
        return *this = autre;
    }
    return *this = ChaineN(autre._Unites(), longueur);
}

ChaineN& ChaineN::Vide() noexcept
{
    _Relache();
    return *this;
}

// Stockage

unsigned long ChaineN::Longueur() const noexcept
{
    // La longueur est le premier mot des deux sortes de blocs.
    return _texte == 0 ? 0 : *reinterpret_cast<std::uint32_t const*>(_texte & ~std::uintptr_t(1));
}

unsigned long ChaineN::Capacite() const noexcept
{
    return _texte == 0 || _EstEmprunte() ? 0 : _Tas()->capacite;
}

char16_t const* ChaineN::_Unites() const noexcept
{
    if (_EstEmprunte()) {
        return _Emprunte()->unites;
    }
    return reinterpret_cast<char16_t const*>(reinterpret_cast<char const*>(_Tas()) + kTailleEnTete);
}

char16_t* ChaineN::_UnitesModifiables() noexcept
{
    return reinterpret_cast<char16_t*>(reinterpret_cast<char*>(_Tas()) + kTailleEnTete);
}

char16_t const* ChaineN::PreteUniCString() const noexcept
{
    return _texte == 0 ? nullptr : _Unites();
}

void ChaineN::_MetsLongueur(unsigned long n) noexcept
{
    _Tas()->longueur = static_cast<std::uint32_t>(n);
    _UnitesModifiables()[n] = 0;
}

void ChaineN::_Assure(unsigned long n)
{
    if (n > kMaxUnites) {
        throw std::bad_array_new_length();
    }
    if (_texte == 0) {
        if (n == 0) {
            return;
        }
        unsigned long capacite = CapacitePour(0, n);
        void* memoire = std::malloc(OctetsPour(capacite));
        if (memoire == nullptr) {
            throw std::bad_alloc();
        }
        _texte = reinterpret_cast<std::uintptr_t>(
            new (memoire) BlocTas{0, static_cast<std::uint32_t>(capacite), 1});
        _MetsLongueur(0);
        return;
    }
    unsigned long const longueur = Longueur();
    if (!_EstEmprunte() && Compte(&_Tas()->compte) == 1) {
        if (_Tas()->capacite >= n) {
            return;
        }
        unsigned long capacite = CapacitePour(_Tas()->capacite, n);
        void* memoire = std::realloc(_Tas(), OctetsPour(capacite));
        if (memoire == nullptr) {
            throw std::bad_alloc();
        }
        _texte = reinterpret_cast<std::uintptr_t>(memoire);
        _Tas()->capacite = static_cast<std::uint32_t>(capacite);
        return;
    }
    // Bloc emprunté ou partagé : copie privée, les autres propriétaires gardent l'ancien.
    unsigned long capacite =
        CapacitePour(_EstEmprunte() ? longueur : _Tas()->capacite, std::max(n, longueur));
    void* memoire = std::malloc(OctetsPour(capacite));
    if (memoire == nullptr) {
        throw std::bad_alloc();
    }
    auto* bloc = new (memoire)
        BlocTas{static_cast<std::uint32_t>(longueur), static_cast<std::uint32_t>(capacite), 1};
    auto* unites = reinterpret_cast<char16_t*>(reinterpret_cast<char*>(bloc) + kTailleEnTete);
    std::memcpy(unites, _Unites(), longueur * sizeof(char16_t));
    unites[longueur] = 0;
    _Relache();
    _texte = reinterpret_cast<std::uintptr_t>(bloc);
}

void ChaineN::_LanceHorsBorne(unsigned long index) const
{
    exceptions::LanceIndexHorsBorne(index, 0, Longueur());
}

ChaineN& ChaineN::_Remplace(unsigned long pos, unsigned long n, char16_t const* unites,
                            unsigned long m)
{
    unsigned long const longueur = Longueur();
    if (pos > longueur) {
        _LanceHorsBorne(pos);
    }
    if (n > longueur - pos) {
        _LanceHorsBorne(pos + n);
    }
    if (m > kMaxUnites) {
        throw std::bad_array_new_length();
    }
    if (_texte != 0 && m > 0 && unites >= _Unites() && unites < _Unites() + longueur) {
        // Source prise dans la chaîne elle-même : on la copie avant de toucher au bloc.
        ChaineN const copie(unites, m);
        return _Remplace(pos, n, copie._Unites(), m);
    }
    unsigned long const nouvelle = longueur - n + m;
    if (nouvelle == longueur && n == 0) {
        return *this;
    }
    _Assure(nouvelle);
    if (_texte == 0) {
        return *this;
    }
    char16_t* d = _UnitesModifiables();
    std::memmove(d + pos + m, d + pos + n, (longueur - pos - n) * sizeof(char16_t));
    if (m > 0) {
        std::memcpy(d + pos, unites, m * sizeof(char16_t));
    }
    _MetsLongueur(nouvelle);
    return *this;
}

ChaineN& ChaineN::_RemplaceOctets(unsigned long pos, unsigned long n, char const* octets,
                                  Codage codage, unsigned long nbOctets)
{
    if (octets == nullptr) {
        nbOctets = 0;
    } else if (nbOctets == kJusquAuZero) {
        nbOctets = std::strlen(octets);
    }
    auto const& convertisseur = ConvertisseurChaineN::DonnePourCodage(codage);
    if (pos == 0 && n == 0 && _texte == 0) {
        // Cas courant de la construction : décodage direct dans le bloc.
        _Assure(convertisseur.MaxUnitesPourOctets(nbOctets));
        if (_texte != 0) {
            _MetsLongueur(convertisseur.VersUTF16(octets, nbOctets, _UnitesModifiables()));
        }
        return *this;
    }
    ChaineN decodee;
    decodee._RemplaceOctets(0, 0, octets, codage, nbOctets);
    return _Remplace(pos, n, decodee.PreteUniCString(), decodee.Longueur());
}

// Ajouts et retraits

ChaineN& ChaineN::AjouteFin(char16_t const* texte, unsigned long longueur)
{
    if (texte == nullptr) {
        return *this;
    }
    if (longueur == kJusquAuZero) {
        longueur = std::char_traits<char16_t>::length(texte);
    }
    return _Remplace(Longueur(), 0, texte, longueur);
}

ChaineN& ChaineN::AjouteFin(char16_t c, unsigned long n)
{
    unsigned long const longueur = Longueur();
    if (n == 0) {
        return *this;
    }
    if (n > kMaxUnites - longueur) {
        throw std::bad_array_new_length();
    }
    _Assure(longueur + n);
    std::fill_n(_UnitesModifiables() + longueur, n, c);
    _MetsLongueur(longueur + n);
    return *this;
}

ChaineN& ChaineN::AjouteFin(char const* texte, Codage codage, unsigned long nbOctets)
{
    return _RemplaceOctets(Longueur(), 0, texte, codage, nbOctets);
}

ChaineN& ChaineN::AjouteFin(ChaineN const& autre)
{
    if (_texte == 0) {
        return *this = autre;
    }
    return _Remplace(Longueur(), 0, autre.PreteUniCString(), autre.Longueur());
}

ChaineN& ChaineN::AjouteDebut(char16_t const* texte, unsigned long longueur)
{
    if (texte == nullptr) {
        return *this;
    }
    if (longueur == kJusquAuZero) {
        longueur = std::char_traits<char16_t>::length(texte);
    }
    return _Remplace(0, 0, texte, longueur);
}

ChaineN& ChaineN::AjouteDebut(char const* texte, Codage codage, unsigned long nbOctets)
{
    return _RemplaceOctets(0, 0, texte, codage, nbOctets);
}

ChaineN& ChaineN::AjouteDebut(ChaineN const& autre)
{
    if (_texte == 0) {
        return *this = autre;
    }
    return _Remplace(0, 0, autre.PreteUniCString(), autre.Longueur());
}

ChaineN operator+(ChaineN const& a, ChaineN const& b)
{
    return a.AjouteFin(b);
}

char16_t ChaineN::operator[](unsigned long i) const
{
    if (i >= Longueur()) {
        _LanceHorsBorne(i);
    }
    return _Unites()[i];
}

ChaineN& ChaineN::MetsCarAIndex(char16_t c, unsigned long i)
{
    if (i >= Longueur()) {
        _LanceHorsBorne(i);
    }
    return _Remplace(i, 1, &c, 1);
}

ChaineN& ChaineN::Remplace(unsigned long pos, unsigned long n, ChaineN const& par)
{
    return _Remplace(pos, n, par.PreteUniCString(), par.Longueur());
}

ChaineN& ChaineN::RemplaceDepuisFin(unsigned long pos, unsigned long n, char16_t c)
{
    if (pos > Longueur()) {
        _LanceHorsBorne(pos);
    }
    return _Remplace(Longueur() - pos, n, &c, 1);
}

ChaineN& ChaineN::RemplaceDepuisFin(unsigned long pos, unsigned long n, ChaineN const& par)
{
    if (pos > Longueur()) {
        _LanceHorsBorne(pos);
    }
    return _Remplace(Longueur() - pos, n, par.PreteUniCString(), par.Longueur());
}

ChaineN& ChaineN::RemplaceFin(unsigned long n, char16_t c)
{
    return RemplaceDepuisFin(n, n, c);
}

ChaineN& ChaineN::RemplaceFin(unsigned long n, ChaineN const& par)
{
    return RemplaceDepuisFin(n, n, par);
}

ChaineN& ChaineN::EnleveDepuisFin(unsigned long pos, unsigned long n)
{
    if (pos > Longueur()) {
        _LanceHorsBorne(pos);
    }
    return _Remplace(Longueur() - pos, n, nullptr, 0);
}

ChaineN& ChaineN::EnleveFin(unsigned long n)
{
    return EnleveDepuisFin(n, n);
}

ChaineN& ChaineN::SousChaine(unsigned long pos, unsigned long n)
{
    unsigned long const longueur = Longueur();
    if (pos > longueur) {
        _LanceHorsBorne(pos);
    }
    n = std::min(n, longueur - pos);
    if (pos == 0 && n == longueur) {
        return *this;
    }
    return *this = ChaineN(_Unites() + pos, n);
}

ChaineN& ChaineN::Remplace(char16_t ancien, char16_t nouveau, Malgray m, unsigned long depuis)
{
    unsigned long const longueur = Longueur();
    if (depuis > longueur) {
        _LanceHorsBorne(depuis);
    }
    unsigned long pos = 0;
    if (!Contient(ancien, &pos, depuis, m)) {
        return *this;
    }
    _Assure(longueur);
    char16_t* d = _UnitesModifiables();
    for (unsigned long i = pos; i < longueur; ++i) {
        if (UniCarEgalOption(d[i], ancien, m)) {
            d[i] = nouveau;
        }
    }
    return *this;
}

ChaineN& ChaineN::Remplace(ChaineN const& ancien, ChaineN const& nouveau, Malgray m,
                           unsigned long depuis)
{
    unsigned long const longueur = Longueur();
    if (depuis > longueur) {
        _LanceHorsBorne(depuis);
    }
    if (ancien.EstVide()) {
        return *this;
    }
    ChaineN resultat;
    unsigned long copie = 0; // début de ce qui reste à recopier
    unsigned long pos = 0;
    unsigned long utilises = 0;
    for (unsigned long i = depuis; Contient(ancien, &pos, i, m); i = pos + utilises) {
        _CorrespondALaPos(ancien, pos, m, &utilises);
        resultat.AjouteFin(_Unites() + copie, pos - copie).AjouteFin(nouveau);
        copie = pos + utilises;
        if (copie >= longueur) {
            break;
        }
    }
    if (copie == 0 && resultat.EstVide()) {
        return *this;
    }
    resultat.AjouteFin(_Unites() + copie, longueur - copie);
    return *this = std::move(resultat);
}

ChaineN& ChaineN::RemplaceMotEntier(ChaineN const& ancien, ChaineN const& nouveau)
{
    if (ancien.EstVide()) {
        return *this;
    }
    ChaineN resultat;
    unsigned long copie = 0;
    unsigned long pos = 0;
    bool remplace = false;
    for (unsigned long i = 0; ContientMotEntier(ancien, &pos, i); i = copie) {
        resultat.AjouteFin(_Unites() + copie, pos - copie).AjouteFin(nouveau);
        copie = pos + ancien.Longueur();
        remplace = true;
        if (copie >= Longueur()) {
            break;
        }
    }
    if (!remplace) {
        return *this;
    }
    resultat.AjouteFin(_Unites() + copie, Longueur() - copie);
    return *this = std::move(resultat);
}

// Comparaisons

int ChaineN::Compare(ChaineN const& autre) const noexcept
{
    std::u16string_view const a(PreteUniCString(), Longueur());
    std::u16string_view const b(autre.PreteUniCString(), autre.Longueur());
    int const c = a.compare(b);
    return (c > 0) - (c < 0);
}

bool ChaineN::Egal(ChaineN const& autre, Malgray m) const noexcept
{
    if (m & MalgrayLigatures) {
        return EgalAvecLigatures(PreteUniCString(), Longueur(), autre.PreteUniCString(),
                                 autre.Longueur(), m);
    }
    if (_texte == autre._texte) {
        return true;
    }
    return UniCarPtrEgalOption(PreteUniCString(), 0, Longueur(), autre.PreteUniCString(), 0,
                               autre.Longueur(), m);
}

bool ChaineN::Egal(char16_t const* texte, unsigned long longueur, Malgray m) const noexcept
{
    if (texte == nullptr) {
        longueur = 0;
    } else if (longueur == kJusquAuZero) {
        longueur = std::char_traits<char16_t>::length(texte);
    }
    if (m & MalgrayLigatures) {
        return EgalAvecLigatures(PreteUniCString(), Longueur(), texte, longueur, m);
    }
    return UniCarPtrEgalOption(PreteUniCString(), 0, Longueur(), texte, 0, longueur, m);
}

bool ChaineN::_CorrespondALaPos(ChaineN const& motif, unsigned long pos, Malgray m,
                                unsigned long* nbUtilises) const noexcept
{
    unsigned long const longueur = Longueur();
    unsigned long const lm = motif.Longueur();
    if (pos > longueur) {
        return false;
    }
    if (m & MalgrayLigatures) {
        unsigned long i = 0;
        unsigned long j = pos;
        AvanceAvecLigatures(motif.PreteUniCString(), lm, &i, PreteUniCString(), longueur, &j, m);
        *nbUtilises = j - pos;
        return i == lm;
    }
    *nbUtilises = lm;
    return lm <= longueur - pos &&
           UniCarPtrEgalOption(PreteUniCString(), pos, lm, motif.PreteUniCString(), 0, lm, m);
}

bool ChaineN::ContientALaPos(ChaineN const& autre, unsigned long pos, Malgray m) const noexcept
{
    unsigned long utilises = 0;
    return _CorrespondALaPos(autre, pos, m, &utilises);
}

bool ChaineN::CommencePar(ChaineN const& debut, Malgray m) const noexcept
{
    return ContientALaPos(debut, 0, m);
}

bool ChaineN::TerminePar(ChaineN const& fin, Malgray m) const noexcept
{
    unsigned long const longueur = Longueur();
    unsigned long const lf = fin.Longueur();
    if (!(m & MalgrayLigatures)) {
        return lf <= longueur && ContientALaPos(fin, longueur - lf, m);
    }
    // Avec les ligatures la fin peut occuper de lf / 2 à 2 lf unités.
    unsigned long const premier = longueur > 2 * lf ? longueur - 2 * lf : 0;
    for (unsigned long pos = premier; pos <= longueur; ++pos) {
        unsigned long utilises = 0;
        if (_CorrespondALaPos(fin, pos, m, &utilises) && pos + utilises == longueur) {
            return true;
        }
    }
    return false;
}

unsigned long ChaineN::LongueurPrefixeCommun(ChaineN const& autre, Malgray m) const noexcept
{
    unsigned long const n = std::min(Longueur(), autre.Longueur());
    unsigned long k = 0;
    while (k < n && UniCarEgalOption(_Unites()[k], autre._Unites()[k], m)) {
        ++k;
    }
    return k;
}

unsigned long ChaineN::LongueurSuffixeCommun(ChaineN const& autre, Malgray m) const noexcept
{
    unsigned long const la = Longueur();
    unsigned long const lb = autre.Longueur();
    unsigned long k = 0;
    while (k < la && k < lb &&
           UniCarEgalOption(_Unites()[la - 1 - k], autre._Unites()[lb - 1 - k], m)) {
        ++k;
    }
    return k;
}

// Recherches

bool ChaineN::Contient(ChaineN const& motif, unsigned long* pos, unsigned long depuis,
                       Malgray m) const noexcept
{
    unsigned long const longueur = Longueur();
    if (depuis > longueur) {
        return false;
    }
    unsigned long trouve = std::u16string_view::npos;
    if (m == 0) {
        std::u16string_view const texte(PreteUniCString(), longueur);
        trouve = texte.find(std::u16string_view(motif.PreteUniCString(), motif.Longueur()), depuis);
    } else {
        for (unsigned long p = depuis; p <= longueur; ++p) {
            if (ContientALaPos(motif, p, m)) {
                trouve = p;
                break;
            }
        }
    }
    if (trouve == std::u16string_view::npos) {
        return false;
    }
    if (pos != nullptr) {
        *pos = trouve;
    }
    return true;
}

bool ChaineN::Contient(char16_t c, unsigned long* pos, unsigned long depuis,
                       Malgray m) const noexcept
{
    unsigned long const longueur = Longueur();
    if (depuis >= longueur) {
        return false;
    }
    unsigned long p = 0;
    if (!Contient(_Unites() + depuis, longueur - depuis, c, &p, m)) {
        return false;
    }
    if (pos != nullptr) {
        *pos = depuis + p;
    }
    return true;
}

bool ChaineN::Contient(char16_t const* texte, char16_t c, unsigned long* pos, Malgray m) noexcept
{
    return texte != nullptr &&
           Contient(texte, std::char_traits<char16_t>::length(texte), c, pos, m);
}

bool ChaineN::Contient(char16_t const* texte, unsigned long longueur, char16_t c,
                       unsigned long* pos, Malgray m) noexcept
{
    for (unsigned long i = 0; i < longueur; ++i) {
        if (UniCarEgalOption(texte[i], c, m)) {
            if (pos != nullptr) {
                *pos = i;
            }
            return true;
        }
    }
    return false;
}

bool ChaineN::TrouveDernier(ChaineN const& motif, unsigned long* pos, unsigned long avant,
                            Malgray m) const noexcept
{
    unsigned long const longueur = Longueur();
    for (unsigned long p = std::min(avant, longueur) + 1; p-- > 0;) {
        if (ContientALaPos(motif, p, m)) {
            if (pos != nullptr) {
                *pos = p;
            }
            return true;
        }
    }
    return false;
}

bool ChaineN::TrouveDernier(char16_t c, unsigned long* pos, unsigned long avant,
                            Malgray m) const noexcept
{
    unsigned long const longueur = Longueur();
    if (longueur == 0) {
        return false;
    }
    for (unsigned long p = std::min(avant, longueur - 1) + 1; p-- > 0;) {
        if (UniCarEgalOption(_Unites()[p], c, m)) {
            if (pos != nullptr) {
                *pos = p;
            }
            return true;
        }
    }
    return false;
}

bool ChaineN::ContientMotEntier(ChaineN const& mot, unsigned long* pos, unsigned long depuis,
                                Malgray m) const noexcept
{
    unsigned long const longueur = Longueur();
    unsigned long p = 0;
    for (unsigned long i = depuis; Contient(mot, &p, i, m); i = p + 1) {
        unsigned long utilises = 0;
        _CorrespondALaPos(mot, p, m, &utilises);
        bool const debutLibre = p == 0 || EstSeparateurDeMot(_Unites()[p - 1]);
        bool const finLibre =
            p + utilises == longueur || EstSeparateurDeMot(_Unites()[p + utilises]);
        if (debutLibre && finLibre && !mot.EstVide()) {
            if (pos != nullptr) {
                *pos = p;
            }
            return true;
        }
        if (p >= longueur) {
            break;
        }
    }
    return false;
}

bool ChaineN::ContientUnCarDe(ChaineN const& cars, unsigned long* pos,
                              unsigned long depuis) const noexcept
{
    for (unsigned long i = depuis; i < Longueur(); ++i) {
        if (ContientUnite(cars, _Unites()[i])) {
            if (pos != nullptr) {
                *pos = i;
            }
            return true;
        }
    }
    return false;
}

bool ChaineN::TrouveUnCarDeVersLArriere(ChaineN const& cars, unsigned long* pos,
                                        unsigned long depuis) const noexcept
{
    if (EstVide()) {
        return false;
    }
    for (unsigned long i = std::min(depuis, Longueur() - 1) + 1; i-- > 0;) {
        if (ContientUnite(cars, _Unites()[i])) {
            if (pos != nullptr) {
                *pos = i;
            }
            return true;
        }
    }
    return false;
}

bool ChaineN::ContientRegex(ExpressionReguliere const& expression, ListeC<Intervalle>* resultats,
                            unsigned long depuis) const
{
    if (depuis > Longueur()) {
        _LanceHorsBorne(depuis);
    }
    return expression.TrouveTout(PreteUniCString(), Longueur(), depuis, resultats);
}

bool ChaineN::ContientRegex(ChaineN const& motif, ListeC<Intervalle>* resultats,
                            unsigned long depuis) const
{
    return ContientRegex(ExpressionReguliere(motif), resultats, depuis);
}

// Transformations

template <typename Repli> ChaineN& ChaineN::_Transforme(Repli repli)
{
    unsigned long const longueur = Longueur();
    unsigned long i = 0;
    while (i < longueur && repli(_Unites()[i]) == _Unites()[i]) {
        ++i;
    }
    if (i == longueur) {
        return *this; // rien ne change : le bloc reste partagé
    }
    _Assure(longueur);
    char16_t* d = _UnitesModifiables();
    for (; i < longueur; ++i) {
        d[i] = repli(d[i]);
    }
    return *this;
}

template <typename Garder> ChaineN& ChaineN::_Filtre(Garder garder)
{
    unsigned long const longueur = Longueur();
    unsigned long i = 0;
    while (i < longueur && garder(_Unites()[i])) {
        ++i;
    }
    if (i == longueur) {
        return *this;
    }
    _Assure(longueur);
    char16_t* d = _UnitesModifiables();
    unsigned long n = i;
    for (; i < longueur; ++i) {
        if (garder(d[i])) {
            d[n++] = d[i];
        }
    }
    _MetsLongueur(n);
    return *this;
}

ChaineN& ChaineN::Majusculise()
{
    return _Transforme([](char16_t c) { return char16_t(Info(c, kInfoMajuscule)); });
}

ChaineN& ChaineN::Minusculise()
{
    return _Transforme([](char16_t c) { return char16_t(Info(c, kInfoMinuscule)); });
}

ChaineN& ChaineN::Desaccentue()
{
    return _Transforme([](char16_t c) { return char16_t(Info(c, kInfoSansAccent)); });
}

ChaineN& ChaineN::MinusculiseSansAccent()
{
    return _Transforme(
        [](char16_t c) { return ReplieSelonMalgray(c, MalgrayAccents | MalgrayCasse); });
}

ChaineN& ChaineN::NormaliseApostrophe(char16_t apostrophe)
{
    return _Transforme(
        [apostrophe](char16_t c) { return Info(c, kInfoTypographie) == u'\'' ? apostrophe : c; });
}

ChaineN& ChaineN::MajusculisePremiereLettre()
{
    return EstVide() ? *this : MetsCarAIndex(Info(_Unites()[0], kInfoMajuscule), 0);
}

ChaineN& ChaineN::MinusculisePremiereLettre()
{
    return EstVide() ? *this : MetsCarAIndex(Info(_Unites()[0], kInfoMinuscule), 0);
}

ChaineN& ChaineN::MinusculiseDeuxiemeLettre()
{
    return Longueur() < 2 ? *this : MetsCarAIndex(Info(_Unites()[1], kInfoMinuscule), 1);
}

ChaineN& ChaineN::EnleveCarNonAlpha()
{
    return _Filtre([](char16_t c) { return (Info(c, kInfoClasseLettre) & kCarLettre) != 0; });
}

ChaineN& ChaineN::Deligature()
{
    unsigned long const longueur = Longueur();
    unsigned long i = 0;
    while (i < longueur && !(Info(_Unites()[i], kInfoMarques) & kMarqueLigature)) {
        ++i;
    }
    if (i == longueur) {
        return *this;
    }
    ChaineN resultat(_Unites(), i);
    for (; i < longueur; ++i) {
        char16_t lettres[4];
        unsigned long n = 0;
        if (UniCaractere::DecompositionLigature(_Unites()[i], lettres, 4, &n)) {
            resultat.AjouteFin(lettres, n);
        } else {
            resultat.AjouteFin(_Unites()[i]);
        }
    }
    return *this = std::move(resultat);
}

ChaineN& ChaineN::Ligature()
{
    // Seules les ligatures de voyelles (œ Œ æ Æ) sont reformées : « sz » reste « sz ».
    auto const ligaturePour = [](char16_t a, char16_t b) -> char16_t {
        for (unsigned long l = 0; l < UniCaractere::gNbInfosLigature; ++l) {
            auto const& info = UniCaractere::gInfosLigature[l];
            if (info.lettres[0] == a && info.lettres[1] == b && info.lettres[2] == 0 &&
                (Info(info.ligature, kInfoClasseLettre) & kCarVoyelle)) {
                return info.ligature;
            }
        }
        return 0;
    };
    unsigned long const longueur = Longueur();
    ChaineN resultat;
    bool change = false;
    for (unsigned long i = 0; i < longueur; ++i) {
        char16_t const ligature =
            i + 1 < longueur ? ligaturePour(_Unites()[i], _Unites()[i + 1]) : 0;
        if (ligature != 0) {
            resultat.AjouteFin(ligature);
            ++i;
            change = true;
        } else {
            resultat.AjouteFin(_Unites()[i]);
        }
    }
    return change ? *this = std::move(resultat) : *this;
}

ChaineN& ChaineN::Inverse()
{
    unsigned long const longueur = Longueur();
    if (longueur < 2) {
        return *this;
    }
    _Assure(longueur);
    char16_t* d = _UnitesModifiables();
    std::reverse(d, d + longueur);
    // Les paires de demi-codets gardent leur ordre.
    for (unsigned long i = 0; i + 1 < longueur; ++i) {
        if (d[i] >= 0xDC00 && d[i] <= 0xDFFF && d[i + 1] >= 0xD800 && d[i + 1] <= 0xDBFF) {
            std::swap(d[i], d[i + 1]);
            ++i;
        }
    }
    return *this;
}

ChaineN& ChaineN::NettoieBlancs()
{
    unsigned long const longueur = Longueur();
    unsigned long debut = 0;
    unsigned long fin = longueur;
    while (debut < fin && EstBlanc(_Unites()[debut])) {
        ++debut;
    }
    while (fin > debut && EstBlanc(_Unites()[fin - 1])) {
        --fin;
    }
    return SousChaine(debut, fin - debut);
}

ChaineN& ChaineN::ConsolideBlancs()
{
    unsigned long const longueur = Longueur();
    ChaineN resultat;
    bool change = false;
    unsigned long i = 0;
    // La dernière unité est toujours recopiée telle quelle, même blanche : voulu.
    while (i + 1 < longueur) {
        char16_t const c = _Unites()[i];
        if (EstBlanc(c) && !(c == u' ' && !EstBlanc(_Unites()[i + 1]))) {
            unsigned long j = i;
            while (j + 1 < longueur && EstBlanc(_Unites()[j])) {
                ++j;
            }
            if (!change) {
                resultat = ChaineN(_Unites(), i);
                change = true;
            }
            resultat.AjouteFin(u' ');
            i = j;
        } else {
            if (change) {
                resultat.AjouteFin(c);
            }
            ++i;
        }
    }
    if (!change) {
        return *this;
    }
    resultat.AjouteFin(_Unites() + i, longueur - i);
    return *this = std::move(resultat);
}

ChaineN& ChaineN::ConsolideBlancsMemeTypes()
{
    unsigned long const longueur = Longueur();
    auto const doublon = [this](unsigned long i) {
        return i > 0 && _Unites()[i] == _Unites()[i - 1] && EstBlanc(_Unites()[i]);
    };
    unsigned long i = 0;
    while (i < longueur && !doublon(i)) {
        ++i;
    }
    if (i == longueur) {
        return *this;
    }
    ChaineN resultat(_Unites(), i);
    for (; i < longueur; ++i) {
        if (!doublon(i)) {
            resultat.AjouteFin(_Unites()[i]);
        }
    }
    return *this = std::move(resultat);
}

// Casse

namespace {

bool AucuneUnite(char16_t const* unites, unsigned long n, std::uint16_t bit) noexcept
{
    return std::none_of(unites, unites + n,
                        [bit](char16_t c) { return (Info(c, kInfoClasseLettre) & bit) != 0; });
}

} // namespace

bool ChaineN::EstToutEnMinuscules() const noexcept
{
    return AucuneUnite(PreteUniCString(), Longueur(), kCarMajuscule);
}

bool ChaineN::EstToutEnMajuscules() const noexcept
{
    return AucuneUnite(PreteUniCString(), Longueur(), kCarMinuscule);
}

bool ChaineN::EstToutEnMajusculesSaufDerniereLettre() const noexcept
{
    return Longueur() >= 2 && AucuneUnite(_Unites(), Longueur() - 1, kCarMinuscule) &&
           ContientMajuscule();
}

bool ChaineN::ContientMajuscule() const noexcept
{
    return !AucuneUnite(PreteUniCString(), Longueur(), kCarMajuscule);
}

bool ChaineN::CommenceParMajuscule() const noexcept
{
    return !EstVide() && (Info(_Unites()[0], kInfoClasseLettre) & kCarMajuscule);
}

// Nombres

namespace {

template <typename Entier>
ChaineN EcrisEntier(Entier valeur, unsigned long base, unsigned long largeur, bool zeros,
                    bool aGauche)
{
    if (base < 2 || base > 16) {
        exceptions::LanceIndexHorsBorne(base, 2, 16);
    }
    static constexpr char16_t kChiffres[] = u"0123456789ABCDEF";
    using NonSigne = std::make_unsigned_t<Entier>;
    bool const negatif = valeur < 0;
    NonSigne reste =
        negatif ? NonSigne(0) - static_cast<NonSigne>(valeur) : static_cast<NonSigne>(valeur);
    char16_t zone[100];
    char16_t* debut = zone + 100;
    do {
        *--debut = kChiffres[reste % base];
        reste /= base;
    } while (reste != 0);
    if (negatif) {
        *--debut = u'-';
    }
    unsigned long const n = static_cast<unsigned long>(zone + 100 - debut);
    ChaineN texte(debut, n);
    if (largeur > n) {
        // Le remplissage précède le signe : -5 sur 4 zéros donne « 00-5 », voulu.
        ChaineN remplissage;
        remplissage.AjouteFin(zeros ? u'0' : u' ', largeur - n);
        aGauche ? texte.AjouteFin(remplissage) : texte.AjouteDebut(remplissage);
    }
    return texte;
}

} // namespace

ChaineN ChaineN::DepuisNombre(int v, unsigned long b, unsigned long l, bool z, bool g)
{
    return EcrisEntier(v, b, l, z, g);
}
ChaineN ChaineN::DepuisNombre(unsigned int v, unsigned long b, unsigned long l, bool z, bool g)
{
    return EcrisEntier(v, b, l, z, g);
}
ChaineN ChaineN::DepuisNombre(long v, unsigned long b, unsigned long l, bool z, bool g)
{
    return EcrisEntier(v, b, l, z, g);
}
ChaineN ChaineN::DepuisNombre(unsigned long v, unsigned long b, unsigned long l, bool z, bool g)
{
    return EcrisEntier(v, b, l, z, g);
}
ChaineN ChaineN::DepuisNombre(long long v, unsigned long b, unsigned long l, bool z, bool g)
{
    return EcrisEntier(v, b, l, z, g);
}
ChaineN ChaineN::DepuisNombre(unsigned long long v, unsigned long b, unsigned long l, bool z,
                              bool g)
{
    return EcrisEntier(v, b, l, z, g);
}

ChaineN ChaineN::DepuisNombre(double valeur, unsigned long decimales, unsigned long largeur,
                              bool zeros, bool aGauche)
{
    constexpr unsigned long kMaxDecimales = 64;
    char zone[400];
    auto const fin = std::to_chars(zone, zone + sizeof zone, valeur, std::chars_format::fixed,
                                   static_cast<int>(std::min(decimales, kMaxDecimales)))
                         .ptr;
    ChaineN texte(zone, kUTF8, static_cast<unsigned long>(fin - zone));
    if (largeur > texte.Longueur()) {
        ChaineN remplissage;
        remplissage.AjouteFin(zeros ? u'0' : u' ', largeur - texte.Longueur());
        aGauche ? texte.AjouteFin(remplissage) : texte.AjouteDebut(remplissage);
    }
    return texte;
}

namespace {

// Début ASCII de la chaîne, blancs initiaux et « + » sautés, pour from_chars.
std::string DebutNumerique(char16_t const* unites, unsigned long n)
{
    unsigned long i = 0;
    while (i < n && EstBlanc(unites[i])) {
        ++i;
    }
    if (i < n && unites[i] == u'+') {
        ++i;
    }
    std::string ascii;
    for (; i < n && unites[i] < 0x80 && ascii.size() < 400; ++i) {
        ascii.push_back(static_cast<char>(unites[i]));
    }
    return ascii;
}

} // namespace

long long ChaineN::DonneEntier() const noexcept
{
    try {
        std::string const ascii = DebutNumerique(PreteUniCString(), Longueur());
        long long valeur = 0;
        std::from_chars(ascii.data(), ascii.data() + ascii.size(), valeur);
        return valeur;
    } catch (...) {
        return 0;
    }
}

double ChaineN::DonneDouble() const noexcept
{
    try {
        std::string const ascii = DebutNumerique(PreteUniCString(), Longueur());
        double valeur = 0;
        std::from_chars(ascii.data(), ascii.data() + ascii.size(), valeur);
        return valeur;
    } catch (...) {
        return 0;
    }
}

ChaineN ChaineN::Format(ChaineN format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    sdd::detail::FinArguments fin{arguments};
    return vFormat(format, arguments);
}

ChaineN ChaineN::vFormat(ChaineN const& format, va_list arguments)
{
    std::u16string const texte = detail::Formate(format.DonneStdString(kUTF8).c_str(), arguments);
    return ChaineN(texte.data(), texte.size());
}

// Formes en octets

char* ChaineN::_TamponDeConversion(std::size_t taille) const
{
    // Le cache garde sa taille en tête et resert tant qu'elle suffit.
    std::size_t capacite = 0;
    if (_convertisseur) {
        std::memcpy(&capacite, _convertisseur.get(), sizeof capacite);
    }
    if (capacite < taille) {
        _convertisseur.reset(new char[sizeof taille + taille]);
        std::memcpy(_convertisseur.get(), &taille, sizeof taille);
    }
    return _convertisseur.get() + sizeof taille;
}

char const* ChaineN::PreteCString(Codage codage, unsigned long taille, char* tampon) const
{
    auto const& convertisseur = ConvertisseurChaineN::DonnePourCodage(codage);
    std::size_t const terminateur = convertisseur.TailleTerminateur();
    if (tampon == nullptr) {
        taille = convertisseur.MaxOctetsPourUnites(Longueur()) + terminateur;
        tampon = _TamponDeConversion(taille);
    } else if (taille < terminateur) {
        return nullptr;
    }
    std::size_t const n =
        convertisseur.DepuisUTF16(PreteUniCString(), Longueur(), tampon, taille - terminateur);
    std::memset(tampon + n, 0, terminateur);
    return tampon;
}

char* ChaineN::CreeCString(Codage codage) const
{
    auto const& convertisseur = ConvertisseurChaineN::DonnePourCodage(codage);
    std::size_t const taille =
        convertisseur.MaxOctetsPourUnites(Longueur()) + convertisseur.TailleTerminateur();
    char* tampon = new char[taille];
    PreteCString(codage, taille, tampon);
    return tampon;
}

std::string ChaineN::DonneStdString(Codage codage) const
{
    auto const& convertisseur = ConvertisseurChaineN::DonnePourCodage(codage);
    std::string octets(convertisseur.MaxOctetsPourUnites(Longueur()), '\0');
    octets.resize(
        convertisseur.DepuisUTF16(PreteUniCString(), Longueur(), octets.data(), octets.size()));
    return octets;
}

std::ostream& operator<<(std::ostream& flux, ChaineN const& chaine)
{
    return flux << chaine.DonneStdString(ChaineN::kUTF8);
}

// Échappement

ChaineN ChaineN::DonneChaineEchappayPourcent(ChaineN const& garder, ChaineN const& forcer) const
{
    if (EstVide()) {
        return kChaineNNulle;
    }
    ChaineN resultat;
    for (unsigned long i = 0; i < Longueur(); ++i) {
        char16_t const c = _Unites()[i];
        bool const echappe =
            ContientUnite(forcer, c) ||
            !(ContientUnite(garder, c) || ContientUnite(CaracteresNonEchappes(), c));
        if (!echappe) {
            resultat.AjouteFin(c);
            continue;
        }
        char octets[4];
        std::size_t const n = detail::EncodeUTF8(&c, 1, octets, sizeof octets);
        for (std::size_t k = 0; k < n; ++k) {
            char16_t echappement[3];
            detail::EcrisOctetEchappe(static_cast<unsigned char>(octets[k]), echappement);
            resultat.AjouteFin(echappement, 3);
        }
    }
    return resultat;
}

ChaineN ChaineN::DonneChaineDesechappeePourcent() const
{
    if (EstVide()) {
        return kChaineNNulle;
    }
    return ChaineN(detail::DesechappePourcent(_Unites(), Longueur()), kUTF8);
}

// Jonction

namespace {

template <typename Parties> ChaineN JoinsParties(ChaineN const& separateur, Parties const& parties)
{
    ChaineN resultat;
    bool premiere = true;
    for (ChaineN const& partie : parties) {
        if (!premiere) {
            resultat.AjouteFin(separateur);
        }
        resultat.AjouteFin(partie);
        premiere = false;
    }
    return resultat;
}

} // namespace

ChaineN ChaineN::Joindre(std::vector<ChaineN> const& parties) const
{
    return JoinsParties(*this, parties);
}

ChaineN ChaineN::Joindre(ListeC<ChaineN> const& parties) const
{
    return JoinsParties(*this, parties);
}

ChaineN ChaineN::Joindre(ListeT<ChaineN, 2, 1, unsigned long> const& parties) const
{
    return JoinsParties(*this, parties);
}

// Divers

std::uint64_t ChaineN::hash() const noexcept
{
    std::uint64_t h = 0;
    char16_t const* unites = PreteUniCString();
    for (unsigned long i = 0; i < Longueur(); ++i) {
        h = (h >> 28) ^ (h << 4) ^ unites[i]; // pas une rotation 32 bits : voulu
    }
    return h;
}

char16_t ChaineN::DonneUniCarPourCarMacRoman(char c) noexcept
{
    return detail::gTableMacRoman[static_cast<unsigned char>(c)];
}

char ChaineN::DonneCarMacRomanPourUniCar(char16_t c)
{
    auto const& macRoman = static_cast<ConvertisseurChaineNCodageUnOctet const&>(
        ConvertisseurChaineN::DonnePourCodage(kMacRoman));
    return static_cast<char>(macRoman.DonneOctet(c));
}

void ChaineN::LibereConvertisseurPourCodage() noexcept
{
    ConvertisseurChaineN::LibereTous();
}

} // namespace sdd
