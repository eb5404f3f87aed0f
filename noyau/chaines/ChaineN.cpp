// ChaineN : blocs partagés, construction et modifications.

#include "noyau/chaines/ChaineN.h"

#include "noyau/chaines/ConvertisseurChaineN.h"
#include "noyau/chaines/detail/Bornes.h"
#include "noyau/chaines/detail/Formatage.h"
#include "noyau/chaines/detail/Recherches.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>

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
    // Un texte emprunté doit être suivi d'un zéro, que PreteUniCString promet : sinon, copie.
    if (emprunte && longueur > 0 && longueur <= kMaxUnites && texte[longueur] == 0) {
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
    // _Compteur() et _Etendue() trouvent le compte et les unités à ces places.
    static_assert(sizeof(BlocTas) == kTailleEnTete && offsetof(BlocTas, compte) == 8);
    static_assert(offsetof(BlocEmprunte, compte) == 4 && offsetof(BlocEmprunte, unites) == 8);
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
    if (longueur != kJusquAuZero) {
        detail::VerifieIntervalle(0, longueur, autre.Longueur());
    }
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
    return _Etendue().size();
}

unsigned long ChaineN::Capacite() const noexcept
{
    return _texte == 0 || _EstEmprunte() ? 0 : _Tas()->capacite;
}

char16_t* ChaineN::_UnitesModifiables() noexcept
{
    return reinterpret_cast<char16_t*>(reinterpret_cast<char*>(_Tas()) + kTailleEnTete);
}

char16_t const* ChaineN::PreteUniCString() const noexcept
{
    return _Etendue().data();
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

ChaineN& ChaineN::_Remplace(unsigned long pos, unsigned long n, char16_t const* unites,
                            unsigned long m)
{
    unsigned long const longueur = Longueur();
    detail::VerifieIntervalle(pos, n, longueur);
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
    auto const& convertisseur = ConvertisseurChaineN::DonnePourCodage(codage);
    if (octets == nullptr) {
        nbOctets = 0;
    } else if (nbOctets == kJusquAuZero) {
        nbOctets = convertisseur.OctetsAvantLeZero(octets);
    }
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
    detail::VerifieIndex(i, Longueur());
    return _Unites()[i];
}

ChaineN& ChaineN::MetsCarAIndex(char16_t c, unsigned long i)
{
    detail::VerifieIndex(i, Longueur());
    return _Remplace(i, 1, &c, 1);
}

ChaineN& ChaineN::Remplace(unsigned long pos, unsigned long n, ChaineN const& par)
{
    return _Remplace(pos, n, par.PreteUniCString(), par.Longueur());
}

// Début d'un intervalle compté depuis la fin : les pos dernières unités doivent exister,
// vérifiées comme l'intervalle (0, pos) pour que le message soit celui de UniChaine.
unsigned long ChaineN::_DepuisFin(unsigned long pos) const
{
    detail::VerifieIntervalle(0, pos, Longueur());
    return Longueur() - pos;
}

ChaineN& ChaineN::RemplaceDepuisFin(unsigned long pos, unsigned long n, char16_t c)
{
    return _Remplace(_DepuisFin(pos), n, &c, 1);
}

ChaineN& ChaineN::RemplaceDepuisFin(unsigned long pos, unsigned long n, ChaineN const& par)
{
    return _Remplace(_DepuisFin(pos), n, par.PreteUniCString(), par.Longueur());
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
    return _Remplace(_DepuisFin(pos), n, nullptr, 0);
}

ChaineN& ChaineN::EnleveFin(unsigned long n)
{
    return EnleveDepuisFin(n, n);
}

ChaineN& ChaineN::SousChaine(unsigned long pos, unsigned long n)
{
    unsigned long const longueur = Longueur();
    if (n == kJusquAuZero) {
        detail::VerifiePosition(pos, longueur);
        n = longueur - pos;
    } else {
        detail::VerifieIntervalle(pos, n, longueur);
    }
    if (pos == 0 && n == longueur) {
        return *this;
    }
    return *this = ChaineN(_Unites() + pos, n);
}

ChaineN& ChaineN::Remplace(char16_t ancien, char16_t nouveau, Malgray m, unsigned long depuis)
{
    unsigned long const longueur = Longueur();
    detail::VerifiePosition(depuis, longueur);
    m &= _kMalgrayPermis;
    unsigned long const premier = detail::TrouveUnite(_Etendue(), depuis, ancien, m);
    if (premier == detail::npos) {
        return *this;
    }
    _Assure(longueur);
    char16_t* d = _UnitesModifiables();
    for (unsigned long i = premier; i < longueur; ++i) {
        if (detail::UnitesEgales(d[i], ancien, m)) {
            d[i] = nouveau;
        }
    }
    return *this;
}

ChaineN& ChaineN::_RemplaceOccurrences(ChaineN const& ancien, ChaineN const& nouveau, Malgray m,
                                       unsigned long depuis, bool motEntier)
{
    detail::VerifiePosition(depuis, Longueur());
    std::u16string resultat;
    if (detail::RemplaceOccurrences(_Etendue(), depuis, ancien._Etendue(), nouveau._Etendue(),
                                    m & _kMalgrayPermis, motEntier, &resultat)) {
        *this = ChaineN(resultat.data(), resultat.size());
    }
    return *this;
}

ChaineN& ChaineN::Remplace(ChaineN const& ancien, ChaineN const& nouveau, Malgray m,
                           unsigned long depuis)
{
    return _RemplaceOccurrences(ancien, nouveau, m, depuis, false);
}

ChaineN& ChaineN::RemplaceMotEntier(ChaineN const& ancien, ChaineN const& nouveau)
{
    return _RemplaceOccurrences(ancien, nouveau, 0, 0, true);
}

} // namespace sdd
