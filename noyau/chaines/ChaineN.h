#pragma once

#include "noyau/Export.h"
#include "noyau/chaines/EgaliteCaracteres.h"
#include "noyau/chaines/Jumeau.h"
#include "noyau/conteneurs/ListeT.h"
#include "noyau/conteneurs/Paire.h"

#include <cstdarg>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace sdd {

class ExpressionReguliere;
class FluxEntree;
class FluxSortie;

// Chaîne d'unités UTF-16 partagée par compte de références : une copie ne coûte qu'un
// incrément atomique, la première écriture sur un texte partagé le recopie.
class NOYAU_EXPORT ChaineN
{
public:
    // Codages externes, choisis à chaque appel ; une valeur hors liste vaut Mac OS Roman.
    enum Codage : int
    {
        kMacRoman = 0,
        kLatin9 = 1,
        kWinLatin1 = 2,
        kDOS = 3, // IBM 850
        kUTF8 = 4,
        kUTF16LE = 5,
        kUTF16BE = 6
    };
    // Codage des textes sans marque d'ordre des octets : UTF-8 sous Linux.
    static constexpr Codage kCodageDefautPlateforme = kUTF8;

    using Malgray = sdd::Malgray;
    static constexpr Malgray MalgrayLigatures = sdd::MalgrayLigatures;
    static constexpr Malgray MalgrayAccents = sdd::MalgrayAccents;
    static constexpr Malgray MalgrayCasse = sdd::MalgrayCasse;
    static constexpr Malgray MalgrayTypographie = sdd::MalgrayTypographie;

    // Longueur à prendre jusqu'au zéro final.
    static constexpr unsigned long kJusquAuZero = static_cast<unsigned long>(-1);
    static constexpr unsigned long kMaxUnites = 0x7FFFFFF0;

    using Intervalle = Paire<unsigned long, unsigned long>; // début, longueur

    // Construction
    constexpr ChaineN() noexcept : _texte(0), _convertisseur() {}
    // Copie et destruction en ligne : le chemin courant n'est qu'une opération atomique.
    ChaineN(ChaineN const& autre) noexcept : _texte(autre._texte), _convertisseur()
    {
        if (_texte != 0) {
            __atomic_add_fetch(_Compteur(), 1, __ATOMIC_RELAXED);
        }
    }
    ChaineN(ChaineN&& autre) noexcept;
    // emprunte : le texte n'est pas copié ; il doit rester en vie et inchangé tant que la
    // chaîne (ou une copie) s'en sert. Il est copié malgré tout quand texte[longueur] n'est
    // pas nul, car PreteUniCString promet un zéro final.
    ChaineN(char16_t const* texte, unsigned long longueur = kJusquAuZero, bool emprunte = false);
    explicit ChaineN(char16_t c);
    ChaineN(char const* texte, Codage codage, unsigned long nbOctets = kJusquAuZero);
    ChaineN(std::string const& texte, Codage codage);
    // Texte mis en forme (voir Format) ; le format est dans le codage donné.
    ChaineN(Codage codage, char const* format, ...);
    ~ChaineN()
    {
        if (_texte != 0 && __atomic_sub_fetch(_Compteur(), 1, __ATOMIC_ACQ_REL) == 0) {
            _LibereBloc();
        }
    }

    // Affectation
    ChaineN& operator=(ChaineN const& autre) noexcept;
    ChaineN& operator=(ChaineN&& autre) noexcept;
    ChaineN& Mets(char16_t const* texte, unsigned long longueur = kJusquAuZero);
    ChaineN& Mets(char const* texte, Codage codage, unsigned long nbOctets = kJusquAuZero);
    // Les longueur premières unités de autre.
    ChaineN& Mets(ChaineN const& autre, unsigned long longueur = kJusquAuZero);
    ChaineN& Vide() noexcept;

    // Ajouts
    ChaineN& AjouteFin(char16_t const* texte, unsigned long longueur = kJusquAuZero);
    ChaineN AjouteFin(char16_t const* texte, unsigned long longueur = kJusquAuZero) const
    {
        return detail::Jumeau(*this, [&](ChaineN& copie) { copie.AjouteFin(texte, longueur); });
    }
    ChaineN& AjouteFin(char16_t c) { return AjouteFin(c, 1); }
    ChaineN AjouteFin(char16_t c) const
    {
        return detail::Jumeau(*this, [&](ChaineN& copie) { copie.AjouteFin(c); });
    }
    ChaineN& AjouteFin(char16_t c, unsigned long n);
    ChaineN AjouteFin(char16_t c, unsigned long n) const
    {
        return detail::Jumeau(*this, [&](ChaineN& copie) { copie.AjouteFin(c, n); });
    }
    ChaineN& AjouteFin(char const* texte, Codage codage, unsigned long nbOctets = kJusquAuZero);
    ChaineN AjouteFin(char const* texte, Codage codage, unsigned long nbOctets = kJusquAuZero) const
    {
        return detail::Jumeau(*this,
                              [&](ChaineN& copie) { copie.AjouteFin(texte, codage, nbOctets); });
    }
    ChaineN& AjouteFin(ChaineN const& autre);
    ChaineN AjouteFin(ChaineN const& autre) const
    {
        return detail::Jumeau(*this, [&](ChaineN& copie) { copie.AjouteFin(autre); });
    }

    ChaineN& AjouteDebut(char16_t const* texte, unsigned long longueur = kJusquAuZero);
    ChaineN AjouteDebut(char16_t const* texte, unsigned long longueur = kJusquAuZero) const
    {
        return detail::Jumeau(*this, [&](ChaineN& copie) { copie.AjouteDebut(texte, longueur); });
    }
    ChaineN& AjouteDebut(char16_t c) { return _Remplace(0, 0, &c, 1); }
    ChaineN AjouteDebut(char16_t c) const
    {
        return detail::Jumeau(*this, [&](ChaineN& copie) { copie.AjouteDebut(c); });
    }
    ChaineN& AjouteDebut(char const* texte, Codage codage, unsigned long nbOctets = kJusquAuZero);
    ChaineN AjouteDebut(char const* texte, Codage codage,
                        unsigned long nbOctets = kJusquAuZero) const
    {
        return detail::Jumeau(*this,
                              [&](ChaineN& copie) { copie.AjouteDebut(texte, codage, nbOctets); });
    }
    ChaineN& AjouteDebut(ChaineN const& autre);
    ChaineN AjouteDebut(ChaineN const& autre) const
    {
        return detail::Jumeau(*this, [&](ChaineN& copie) { copie.AjouteDebut(autre); });
    }

    ChaineN& operator+=(ChaineN const& autre) { return AjouteFin(autre); }
    ChaineN& operator+=(char16_t c) { return AjouteFin(c); }
    ChaineN& operator+=(char16_t const* texte) { return AjouteFin(texte); }

    // Accès aux unités
    unsigned long Longueur() const noexcept;
    bool EstVide() const noexcept { return Longueur() == 0; }
    // Unités suivies d'un zéro ; nul pour la chaîne vide.
    char16_t const* PreteUniCString() const noexcept;
    char16_t operator[](unsigned long i) const;
    ChaineN& MetsCarAIndex(char16_t c, unsigned long i);
    ChaineN MetsCarAIndex(char16_t c, unsigned long i) const
    {
        return detail::Jumeau(*this, [&](ChaineN& copie) { copie.MetsCarAIndex(c, i); });
    }
    // Place réservée en unités (0 sans texte propre).
    unsigned long Capacite() const noexcept;

    // Remplacements et retraits. « DepuisFin » : pos compte depuis la fin, l'intervalle
    // commence pos unités avant elle.
    ChaineN& Remplace(unsigned long pos, unsigned long n, char16_t c)
    {
        return _Remplace(pos, n, &c, 1);
    }
    ChaineN Remplace(unsigned long pos, unsigned long n, char16_t c) const
    {
        return detail::Jumeau(*this, [&](ChaineN& copie) { copie.Remplace(pos, n, c); });
    }
    ChaineN& Remplace(unsigned long pos, unsigned long n, ChaineN const& par);
    ChaineN Remplace(unsigned long pos, unsigned long n, ChaineN const& par) const
    {
        return detail::Jumeau(*this, [&](ChaineN& copie) { copie.Remplace(pos, n, par); });
    }
    ChaineN& RemplaceDepuisFin(unsigned long pos, unsigned long n, char16_t c);
    ChaineN RemplaceDepuisFin(unsigned long pos, unsigned long n, char16_t c) const
    {
        return detail::Jumeau(*this, [&](ChaineN& copie) { copie.RemplaceDepuisFin(pos, n, c); });
    }
    ChaineN& RemplaceDepuisFin(unsigned long pos, unsigned long n, ChaineN const& par);
    ChaineN RemplaceDepuisFin(unsigned long pos, unsigned long n, ChaineN const& par) const
    {
        return detail::Jumeau(*this, [&](ChaineN& copie) { copie.RemplaceDepuisFin(pos, n, par); });
    }
    ChaineN& RemplaceFin(unsigned long n, char16_t c);
    ChaineN RemplaceFin(unsigned long n, char16_t c) const
    {
        return detail::Jumeau(*this, [&](ChaineN& copie) { copie.RemplaceFin(n, c); });
    }
    ChaineN& RemplaceFin(unsigned long n, ChaineN const& par);
    ChaineN RemplaceFin(unsigned long n, ChaineN const& par) const
    {
        return detail::Jumeau(*this, [&](ChaineN& copie) { copie.RemplaceFin(n, par); });
    }
    ChaineN& EnleveIntervalle(unsigned long pos, unsigned long n)
    {
        return _Remplace(pos, n, nullptr, 0);
    }
    ChaineN EnleveIntervalle(unsigned long pos, unsigned long n) const
    {
        return detail::Jumeau(*this, [&](ChaineN& copie) { copie.EnleveIntervalle(pos, n); });
    }
    ChaineN& EnleveDepuisFin(unsigned long pos, unsigned long n);
    ChaineN EnleveDepuisFin(unsigned long pos, unsigned long n) const
    {
        return detail::Jumeau(*this, [&](ChaineN& copie) { copie.EnleveDepuisFin(pos, n); });
    }
    ChaineN& EnleveDebut(unsigned long n) { return _Remplace(0, n, nullptr, 0); }
    ChaineN EnleveDebut(unsigned long n) const
    {
        return detail::Jumeau(*this, [&](ChaineN& copie) { copie.EnleveDebut(n); });
    }
    ChaineN& EnleveFin(unsigned long n);
    ChaineN EnleveFin(unsigned long n) const
    {
        return detail::Jumeau(*this, [&](ChaineN& copie) { copie.EnleveFin(n); });
    }
    // Garde les n unités depuis pos (jusqu'à la fin par défaut).
    ChaineN& SousChaine(unsigned long pos, unsigned long n = kJusquAuZero);
    ChaineN SousChaine(unsigned long pos, unsigned long n = kJusquAuZero) const
    {
        return detail::Jumeau(*this, [&](ChaineN& copie) { copie.SousChaine(pos, n); });
    }
    // Chaque occurrence depuis la position donnée.
    ChaineN& Remplace(char16_t ancien, char16_t nouveau, Malgray m = 0, unsigned long depuis = 0);
    ChaineN Remplace(char16_t ancien, char16_t nouveau, Malgray m = 0,
                     unsigned long depuis = 0) const
    {
        return detail::Jumeau(*this,
                              [&](ChaineN& copie) { copie.Remplace(ancien, nouveau, m, depuis); });
    }
    ChaineN& Remplace(ChaineN const& ancien, ChaineN const& nouveau, Malgray m = 0,
                      unsigned long depuis = 0);
    ChaineN Remplace(ChaineN const& ancien, ChaineN const& nouveau, Malgray m = 0,
                     unsigned long depuis = 0) const
    {
        return detail::Jumeau(*this,
                              [&](ChaineN& copie) { copie.Remplace(ancien, nouveau, m, depuis); });
    }
    ChaineN& RemplaceMotEntier(ChaineN const& ancien, ChaineN const& nouveau);
    ChaineN RemplaceMotEntier(ChaineN const& ancien, ChaineN const& nouveau) const
    {
        return detail::Jumeau(*this,
                              [&](ChaineN& copie) { copie.RemplaceMotEntier(ancien, nouveau); });
    }

    // Comparaisons. Compare : ordre des unités, -1, 0 ou 1.
    int Compare(ChaineN const& autre) const noexcept;
    bool operator==(ChaineN const& autre) const noexcept { return Egal(autre); }
    bool operator!=(ChaineN const& autre) const noexcept { return !Egal(autre); }
    bool operator<(ChaineN const& autre) const noexcept { return Compare(autre) < 0; }
    bool operator<=(ChaineN const& autre) const noexcept { return Compare(autre) <= 0; }
    bool operator>(ChaineN const& autre) const noexcept { return Compare(autre) > 0; }
    bool operator>=(ChaineN const& autre) const noexcept { return Compare(autre) >= 0; }
    bool Egal(ChaineN const& autre, Malgray m = 0) const noexcept;
    bool Egal(char16_t const* texte, unsigned long longueur, Malgray m = 0) const noexcept;
    bool CommencePar(ChaineN const& debut, Malgray m = 0) const noexcept;
    bool TerminePar(ChaineN const& fin, Malgray m = 0) const noexcept;
    bool ContientALaPos(ChaineN const& autre, unsigned long pos, Malgray m = 0) const;
    unsigned long LongueurPrefixeCommun(ChaineN const& autre, Malgray m = 0) const noexcept;
    unsigned long LongueurSuffixeCommun(ChaineN const& autre, Malgray m = 0) const noexcept;

    // Recherches : vrai si trouvé, la position dans *pos. Une position de départ au-delà du
    // texte lève IndexHorsBorne ; kJusquAuZero, là où il est la valeur par défaut, vaut la fin.
    bool Contient(ChaineN const& motif, unsigned long* pos = nullptr, unsigned long depuis = 0,
                  Malgray m = 0) const;
    bool Contient(char16_t c, unsigned long* pos = nullptr, unsigned long depuis = 0,
                  Malgray m = 0) const;
    static bool Contient(char16_t const* texte, char16_t c, unsigned long* pos = nullptr,
                         Malgray m = 0) noexcept;
    static bool Contient(char16_t const* texte, unsigned long longueur, char16_t c,
                         unsigned long* pos = nullptr, Malgray m = 0) noexcept;
    // Dernière occurrence commençant avant avant (toute la chaîne par défaut).
    bool TrouveDernier(ChaineN const& motif, unsigned long* pos = nullptr,
                       unsigned long avant = kJusquAuZero, Malgray m = 0) const;
    bool TrouveDernier(char16_t c, unsigned long* pos = nullptr, unsigned long avant = kJusquAuZero,
                       Malgray m = 0) const;
    // Occurrence bordée de séparateurs de mots ou des extrémités.
    bool ContientMotEntier(ChaineN const& mot, unsigned long* pos = nullptr,
                           unsigned long depuis = 0, Malgray m = 0) const;
    bool ContientUnCarDe(ChaineN const& cars, unsigned long* pos = nullptr,
                         unsigned long depuis = 0) const;
    // Depuis la position donnée (la fin par défaut) vers le début.
    bool TrouveUnCarDeVersLArriere(ChaineN const& cars, unsigned long* pos = nullptr,
                                   unsigned long depuis = kJusquAuZero) const;
    bool ContientRegex(ExpressionReguliere const& expression,
                       ListeC<Intervalle>* resultats = nullptr, unsigned long depuis = 0) const;
    bool ContientRegex(ChaineN const& motif, ListeC<Intervalle>* resultats = nullptr,
                       unsigned long depuis = 0) const;

    // Transformations caractère à caractère, selon la table des caractères.
    ChaineN& Majusculise();
    ChaineN Majusculise() const
    {
        return detail::Jumeau(*this, [&](ChaineN& copie) { copie.Majusculise(); });
    }
    ChaineN& Minusculise();
    ChaineN Minusculise() const
    {
        return detail::Jumeau(*this, [&](ChaineN& copie) { copie.Minusculise(); });
    }
    ChaineN& MajusculisePremiereLettre();
    ChaineN MajusculisePremiereLettre() const
    {
        return detail::Jumeau(*this, [&](ChaineN& copie) { copie.MajusculisePremiereLettre(); });
    }
    ChaineN& MinusculisePremiereLettre();
    ChaineN MinusculisePremiereLettre() const
    {
        return detail::Jumeau(*this, [&](ChaineN& copie) { copie.MinusculisePremiereLettre(); });
    }
    ChaineN& MinusculiseDeuxiemeLettre();
    ChaineN MinusculiseDeuxiemeLettre() const
    {
        return detail::Jumeau(*this, [&](ChaineN& copie) { copie.MinusculiseDeuxiemeLettre(); });
    }
    ChaineN& MinusculiseSansAccent();
    ChaineN MinusculiseSansAccent() const
    {
        return detail::Jumeau(*this, [&](ChaineN& copie) { copie.MinusculiseSansAccent(); });
    }
    ChaineN& Desaccentue();
    ChaineN Desaccentue() const
    {
        return detail::Jumeau(*this, [&](ChaineN& copie) { copie.Desaccentue(); });
    }
    ChaineN& Deligature();
    ChaineN Deligature() const
    {
        return detail::Jumeau(*this, [&](ChaineN& copie) { copie.Deligature(); });
    }
    ChaineN& Ligature();
    ChaineN Ligature() const
    {
        return detail::Jumeau(*this, [&](ChaineN& copie) { copie.Ligature(); });
    }
    ChaineN& NormaliseApostrophe(char16_t apostrophe = u'\u2019');
    ChaineN NormaliseApostrophe(char16_t apostrophe = u'\u2019') const
    {
        return detail::Jumeau(*this,
                              [&](ChaineN& copie) { copie.NormaliseApostrophe(apostrophe); });
    }
    ChaineN& Inverse();
    ChaineN Inverse() const
    {
        return detail::Jumeau(*this, [&](ChaineN& copie) { copie.Inverse(); });
    }
    ChaineN& EnleveCarNonAlpha();
    ChaineN EnleveCarNonAlpha() const
    {
        return detail::Jumeau(*this, [&](ChaineN& copie) { copie.EnleveCarNonAlpha(); });
    }
    ChaineN& NettoieBlancs();
    ChaineN NettoieBlancs() const
    {
        return detail::Jumeau(*this, [&](ChaineN& copie) { copie.NettoieBlancs(); });
    }
    ChaineN& ConsolideBlancs();
    ChaineN ConsolideBlancs() const
    {
        return detail::Jumeau(*this, [&](ChaineN& copie) { copie.ConsolideBlancs(); });
    }
    ChaineN& ConsolideBlancsMemeTypes();
    ChaineN ConsolideBlancsMemeTypes() const
    {
        return detail::Jumeau(*this, [&](ChaineN& copie) { copie.ConsolideBlancsMemeTypes(); });
    }

    // Casse
    bool EstToutEnMinuscules() const noexcept;
    bool EstToutEnMajuscules() const noexcept;
    bool EstToutEnMajusculesSaufDerniereLettre() const noexcept;
    bool ContientMajuscule() const noexcept;
    bool CommenceParMajuscule() const noexcept;

    // Nombres. Base de 2 à 16 ; pour un double, le deuxième argument est le nombre de
    // décimales.
    static ChaineN DepuisNombre(int valeur, unsigned long base = 10, unsigned long largeur = 0,
                                bool zeros = false, bool aGauche = false);
    static ChaineN DepuisNombre(unsigned int valeur, unsigned long base = 10,
                                unsigned long largeur = 0, bool zeros = false,
                                bool aGauche = false);
    static ChaineN DepuisNombre(long valeur, unsigned long base = 10, unsigned long largeur = 0,
                                bool zeros = false, bool aGauche = false);
    static ChaineN DepuisNombre(unsigned long valeur, unsigned long base = 10,
                                unsigned long largeur = 0, bool zeros = false,
                                bool aGauche = false);
    static ChaineN DepuisNombre(long long valeur, unsigned long base = 10,
                                unsigned long largeur = 0, bool zeros = false,
                                bool aGauche = false);
    static ChaineN DepuisNombre(unsigned long long valeur, unsigned long base = 10,
                                unsigned long largeur = 0, bool zeros = false,
                                bool aGauche = false);
    static ChaineN DepuisNombre(double valeur, unsigned long decimales = 6,
                                unsigned long largeur = 0, bool zeros = false,
                                bool aGauche = false);
    // Nombre écrit en tête de la chaîne (blancs initiaux sautés) ; 0 sans nombre.
    long long DonneEntier() const noexcept;
    double DonneDouble() const noexcept;
    // Mise en forme à la printf, format en UTF-8 ; voir docs/chaines.md pour les directives.
    static ChaineN Format(ChaineN format, ...); // par valeur : va_start refuse une référence
    static ChaineN vFormat(ChaineN const& format, va_list arguments);

    // Formes en octets. Sans tampon, le résultat vit dans la chaîne jusqu'au prochain appel ;
    // avec tampon, au plus taille - 1 octets et un zéro y sont écrits.
    char const* PreteCString(Codage codage, unsigned long taille = 0, char* tampon = nullptr) const;
    char const* PreteUTF8(unsigned long taille = 0, char* tampon = nullptr) const
    {
        return PreteCString(kUTF8, taille, tampon);
    }
    char const* PreteMacRoman(unsigned long taille = 0, char* tampon = nullptr) const
    {
        return PreteCString(kMacRoman, taille, tampon);
    }
    // Tableau neuf (new[]) que l'appelant libère.
    char* CreeCString(Codage codage) const;
    std::string DonneStdString(Codage codage = kUTF8) const;

    // Échappement « %XX » des octets UTF-8.
    ChaineN DonneChaineEchappayPourcent(ChaineN const& garder = ChaineN(),
                                        ChaineN const& forcer = ChaineN()) const;
    ChaineN DonneChaineDesechappeePourcent() const;

    // Les parties, séparées par cette chaîne.
    ChaineN Joindre(std::vector<ChaineN> const& parties) const;
    ChaineN Joindre(ListeC<ChaineN> const& parties) const;
    ChaineN Joindre(ListeT<ChaineN, 2, 1, unsigned long> const& parties) const;

    // Flux : les unités dans le codage, puis une unité nulle (un octet, deux en UTF-16).
    // Ecris renvoie la position du début ; un texte qui ne se relirait pas unité pour unité
    // (U+0000, demi-codet seul en UTF-8, unité absente d'une page de code) lève
    // OperationInvalide sans rien écrire. Lis remplace le texte ; un flux qui finit avant
    // l'unité nulle lève OperationInvalide et la chaîne garde son texte.
    unsigned int Ecris(FluxSortie& flux, Codage codage = kUTF8) const;
    ChaineN& Lis(FluxEntree& flux, Codage codage = kUTF8);

    std::uint64_t hash() const noexcept;

    static char16_t DonneUniCarPourCarMacRoman(char c) noexcept;
    static char DonneCarMacRomanPourUniCar(char16_t c);
    // Détruit les convertisseurs ; aucune conversion ne doit être en cours.
    static void LibereConvertisseurPourCodage() noexcept;

private:
    struct BlocTas;
    struct BlocEmprunte;

    bool _EstEmprunte() const noexcept { return (_texte & 1u) != 0; }
    // Le compte est le troisième mot d'un bloc du tas, le deuxième d'un bloc emprunté.
    std::uint32_t* _Compteur() const noexcept
    {
        std::uintptr_t const bloc = _texte & ~std::uintptr_t(1);
        return reinterpret_cast<std::uint32_t*>(bloc + 8 - 4 * (_texte & 1u));
    }
    // Libère le bloc dont le compte vient de tomber à zéro.
    void _LibereBloc() noexcept;
    BlocTas* _Tas() const noexcept { return reinterpret_cast<BlocTas*>(_texte); }
    BlocEmprunte* _Emprunte() const noexcept { return reinterpret_cast<BlocEmprunte*>(_texte - 1); }
    char16_t const* _Unites() const noexcept { return _Etendue().data(); }
    char16_t* _UnitesModifiables() noexcept;
    void _MetsLongueur(unsigned long n) noexcept;
    void _Relache() noexcept;
    // Place pour n unités dans un bloc propre à cette chaîne.
    void _Assure(unsigned long n);
    // Remplace n unités depuis pos par les m unités données (qui peuvent venir d'elle-même).
    ChaineN& _Remplace(unsigned long pos, unsigned long n, char16_t const* unites, unsigned long m);
    ChaineN& _RemplaceOctets(unsigned long pos, unsigned long n, char const* octets, Codage codage,
                             unsigned long nbOctets);
    template <typename Repli> ChaineN& _Transforme(Repli repli);
    template <typename Garder> ChaineN& _Filtre(Garder garder);
    template <typename Retouche> ChaineN& _Remets(Retouche retouche);
    ChaineN& _RemplaceOccurrences(ChaineN const& ancien, ChaineN const& nouveau, Malgray m,
                                  unsigned long depuis, bool motEntier);
    // Début d'un intervalle compté depuis la fin ; borne d'une recherche vers l'arrière.
    unsigned long _DepuisFin(unsigned long pos) const;
    unsigned long _Avant(unsigned long avant) const;
    // Le texte, lu dans le bloc sans appel : la longueur est le premier mot des deux sortes
    // de blocs ; les unités suivent l'en-tête d'un bloc du tas, un bloc emprunté garde leur
    // adresse après la longueur et le compte.
    std::u16string_view _Etendue() const noexcept
    {
        if (_texte == 0) {
            return {};
        }
        std::uintptr_t const bloc = _texte & ~std::uintptr_t(1);
        char16_t const* const unites = _EstEmprunte()
                                           ? *reinterpret_cast<char16_t const* const*>(bloc + 8)
                                           : reinterpret_cast<char16_t const*>(bloc + 12);
        return {unites, *reinterpret_cast<std::uint32_t const*>(bloc)};
    }
    // Tolérances que ChaineN connaît : MalgrayEspaces n'en est pas.
    static constexpr Malgray _kMalgrayPermis =
        MalgrayLigatures | MalgrayAccents | MalgrayCasse | MalgrayTypographie;
    // Tampon d'au moins taille octets dans le cache de PreteCString.
    char* _TamponDeConversion(std::size_t taille) const;

    std::uintptr_t _texte = 0;                      // bloc partagé, bit 0 : emprunté
    mutable std::unique_ptr<char[]> _convertisseur; // taille, puis dernière forme de PreteCString
};

ChaineN NOYAU_EXPORT operator+(ChaineN const& a, ChaineN const& b);
NOYAU_EXPORT std::ostream& operator<<(std::ostream& flux, ChaineN const& chaine);

// La chaîne vide partagée.
extern NOYAU_EXPORT const ChaineN kChaineNNulle;

} // namespace sdd
