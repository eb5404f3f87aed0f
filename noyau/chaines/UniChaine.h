#pragma once

#include "noyau/Export.h"
#include "noyau/chaines/EgaliteCaracteres.h"
#include "noyau/chaines/Jumeau.h"
#include "noyau/chaines/UniCaractere.h"
#include "noyau/conteneurs/Paire.h"
#include "noyau/langues/Langue.h"

#include <QRegularExpression>
#include <QString>

#include <cstdarg>
#include <cstddef>
#include <string>
#include <vector>

namespace sdd {
// Défini dans noyau/conteneurs/ListeT.h, qui dépend des exceptions, donc de cette classe.
template <typename T> class ListeC;
class ChaineN; // noyau/chaines/ChaineN.h, pour la même raison
} // namespace sdd

// Collateur ICU, tenu par pointeur opaque : les en-têtes d'ICU restent hors de l'interface.
struct UCollator;

// Chaîne UTF-16 tournée vers Qt : un QString et le vocabulaire de la bibliothèque.
//
// Les positions et longueurs sont des unités UTF-16 (int, comme Qt). Chaque opération qui
// modifie existe deux fois : le membre qui modifie l'objet et le renvoie, et le jumeau const
// de même nom qui renvoie une copie modifiée. Les index sont vérifiés avant toute
// modification ; un index hors de la chaîne lève sdd::exceptions::IndexHorsBorne.
class NOYAU_EXPORT UniChaine
{
public:
    // Codages externes, servis par les codecs de Qt « Macintosh », « ISO 8859-15 »,
    // « windows-1252 », « utf8 », « utf16 » et « CP850 » : les octets sont les leurs (voir
    // docs/unichaine.md pour ce qui les distingue des convertisseurs de sdd::ChaineN). La
    // numérotation diffère volontairement de sdd::ChaineN::Codage : on passe de l'une à
    // l'autre par le sens, jamais par la valeur.
    enum Codage : unsigned char
    {
        kMacRoman = 0,
        kLatin9 = 1,
        kWinLatin1 = 2,
        kUTF8 = 3,
        kUTF16 = 4, // ordre de la machine ; la forme écrite commence par la marque d'ordre
        kDOS = 5,
        kAucunCodage = 255
    };
    // Valeur de sdd::ChaineN::Codage de même sens (UTF-16 : ordre de la machine), ou -1.
    static int DonneCodageChaineN(Codage codage) noexcept;

    // Tolérances de comparaison, les mêmes bits que sdd::ChaineN ; MalgrayEspaces n'a
    // d'effet qu'ici.
    using Malgray = sdd::Malgray;
    static constexpr Malgray MalgrayLigatures = sdd::MalgrayLigatures;
    static constexpr Malgray MalgrayAccents = sdd::MalgrayAccents;
    static constexpr Malgray MalgrayCasse = sdd::MalgrayCasse;
    static constexpr Malgray MalgrayTypographie = sdd::MalgrayTypographie;
    static constexpr Malgray MalgrayEspaces = sdd::MalgrayEspaces;

    // Égalité de deux caractères sous m, replis enchaînés accents, casse, typographie,
    // espaces ; le bit des ligatures ne joue qu'entre suites de caractères.
    static bool UniCarEgalOption(char16_t a, char16_t b, Malgray m) noexcept
    {
        constexpr Malgray kBits =
            MalgrayAccents | MalgrayCasse | MalgrayTypographie | MalgrayEspaces;
        return a == b || ((m & kBits) != 0 && sdd::ReplieSelonMalgray(a, m & kBits) ==
                                                  sdd::ReplieSelonMalgray(b, m & kBits));
    }

    // --- Construction et affectation ---

    UniChaine() noexcept;
    UniChaine(UniChaine const& autre);
    UniChaine(UniChaine&& autre) noexcept;
    UniChaine(QString const& texte);
    // longueur en unités ; -1 : jusqu'au zéro final.
    UniChaine(char16_t const* texte, int longueur = -1);
    // Caractères larges du système (UTF-32 sous Linux) ; longueur -1 : jusqu'au zéro final.
    UniChaine(wchar_t const* texte, int longueur = -1);
    explicit UniChaine(char16_t c);
    // longueur en octets ; -1 : jusqu'au zéro final. Un codage inconnu donne la chaîne vide.
    UniChaine(char const* texte, Codage codage = kUTF8, int longueur = -1);
    UniChaine(std::string const& texte, Codage codage);
    explicit UniChaine(sdd::ChaineN const& texte);
    // Texte mis en forme (voir Format) ; le format est dans le codage donné.
    UniChaine(Codage codage, char const* format, ...);
    virtual ~UniChaine();
    // Point d'extension des classes dérivées ; ne fait rien ici. Les virtuelles gardent cet
    // ordre : destructeur, Actualise, hash.
    NOYAU_EXPORT virtual void Actualise() {}

    UniChaine& operator=(UniChaine const& autre);
    UniChaine& operator=(UniChaine&& autre) noexcept;
    UniChaine& operator=(QString const& texte);

    // L'affectation n'a pas de jumeau const : il ne garderait rien de l'objet.
    UniChaine& Mets(UniChaine const& autre);
    UniChaine& Mets(char const* texte, Codage codage, int longueur = -1);
    UniChaine& Mets(std::string const& texte, Codage codage);
    // Vide le texte ; libereConversion libère aussi la dernière forme de PreteCString.
    UniChaine& Init(bool libereConversion = true);
    // Vide le texte ; la dernière forme de PreteCString reste valable.
    UniChaine& Vide();

    // Remplace le texte par la mise en forme (format en UTF-8, ou dans le codage donné).
    UniChaine& sprintf(char const* format, ...);
    UniChaine& sprintf(Codage codage, char const* format, ...);
    UniChaine& vsprintf(char const* format, va_list arguments);
    UniChaine& vsprintf(Codage codage, char const* format, va_list arguments);

    operator QString() const { return _texte; }
    QString const& DonneQString() const noexcept { return _texte; }
    sdd::ChaineN DonneChaineN() const;

    // --- Ajouts et modifications ---

    UniChaine& AjouteFin(UniChaine const& autre);
    UniChaine AjouteFin(UniChaine const& autre) const
    {
        return sdd::detail::Jumeau(*this, [&](UniChaine& copie) { copie.AjouteFin(autre); });
    }
    UniChaine& AjouteFin(char16_t c);
    UniChaine AjouteFin(char16_t c) const
    {
        return sdd::detail::Jumeau(*this, [&](UniChaine& copie) { copie.AjouteFin(c); });
    }
    UniChaine& AjouteFin(char const* texte, Codage codage);
    UniChaine AjouteFin(char const* texte, Codage codage) const
    {
        return sdd::detail::Jumeau(*this,
                                   [&](UniChaine& copie) { copie.AjouteFin(texte, codage); });
    }
    UniChaine& AjouteDebut(UniChaine const& autre);
    UniChaine AjouteDebut(UniChaine const& autre) const
    {
        return sdd::detail::Jumeau(*this, [&](UniChaine& copie) { copie.AjouteDebut(autre); });
    }
    UniChaine& AjouteDebut(char16_t c);
    UniChaine AjouteDebut(char16_t c) const
    {
        return sdd::detail::Jumeau(*this, [&](UniChaine& copie) { copie.AjouteDebut(c); });
    }
    UniChaine& AjouteDebut(char const* texte, Codage codage);
    UniChaine AjouteDebut(char const* texte, Codage codage) const
    {
        return sdd::detail::Jumeau(*this,
                                   [&](UniChaine& copie) { copie.AjouteDebut(texte, codage); });
    }
    UniChaine& operator+=(UniChaine const& autre) { return AjouteFin(autre); }
    UniChaine& operator+=(char16_t c) { return AjouteFin(c); }

    UniChaine& MetsCarAIndex(char16_t c, int index);
    UniChaine MetsCarAIndex(char16_t c, int index) const
    {
        return sdd::detail::Jumeau(*this, [&](UniChaine& copie) { copie.MetsCarAIndex(c, index); });
    }
    // Les n unités depuis pos deviennent le texte donné.
    UniChaine& Remplace(int pos, int n, UniChaine const& par);
    UniChaine Remplace(int pos, int n, UniChaine const& par) const
    {
        return sdd::detail::Jumeau(*this, [&](UniChaine& copie) { copie.Remplace(pos, n, par); });
    }
    // Chaque caractère égal à ancien sous m devient nouveau.
    UniChaine& Remplace(char16_t ancien, char16_t nouveau, Malgray m = 0);
    UniChaine Remplace(char16_t ancien, char16_t nouveau, Malgray m = 0) const
    {
        return sdd::detail::Jumeau(*this,
                                   [&](UniChaine& copie) { copie.Remplace(ancien, nouveau, m); });
    }
    // Chaque occurrence de ancien sous m, de gauche à droite sans chevauchement, devient
    // nouveau ; ancien vide ne change rien.
    UniChaine& Remplace(UniChaine const& ancien, UniChaine const& nouveau, Malgray m = 0);
    UniChaine Remplace(UniChaine const& ancien, UniChaine const& nouveau, Malgray m = 0) const
    {
        return sdd::detail::Jumeau(*this,
                                   [&](UniChaine& copie) { copie.Remplace(ancien, nouveau, m); });
    }
    // Comme Remplace, mais seulement les occurrences bordées de séparateurs de mot.
    UniChaine& RemplaceMotEntier(UniChaine const& ancien, UniChaine const& nouveau, Malgray m = 0);
    UniChaine RemplaceMotEntier(UniChaine const& ancien, UniChaine const& nouveau,
                                Malgray m = 0) const
    {
        return sdd::detail::Jumeau(
            *this, [&](UniChaine& copie) { copie.RemplaceMotEntier(ancien, nouveau, m); });
    }
    UniChaine& EnleveDebut(int n);
    UniChaine EnleveDebut(int n) const
    {
        return sdd::detail::Jumeau(*this, [&](UniChaine& copie) { copie.EnleveDebut(n); });
    }
    UniChaine& EnleveFin(int n);
    UniChaine EnleveFin(int n) const
    {
        return sdd::detail::Jumeau(*this, [&](UniChaine& copie) { copie.EnleveFin(n); });
    }
    UniChaine& EnleveIntervalle(int pos, int n);
    UniChaine EnleveIntervalle(int pos, int n) const
    {
        return sdd::detail::Jumeau(*this,
                                   [&](UniChaine& copie) { copie.EnleveIntervalle(pos, n); });
    }
    // Garde les n unités depuis pos ; n négatif : jusqu'à la fin.
    UniChaine& SousChaine(int pos, int n = -1);
    UniChaine SousChaine(int pos, int n = -1) const
    {
        return sdd::detail::Jumeau(*this, [&](UniChaine& copie) { copie.SousChaine(pos, n); });
    }
    // Garde ce qui précède la première (la dernière) fin de ligne ; rien sans fin de ligne.
    UniChaine& CoupeAuPremierRC();
    UniChaine CoupeAuPremierRC() const
    {
        return sdd::detail::Jumeau(*this, [&](UniChaine& copie) { copie.CoupeAuPremierRC(); });
    }
    UniChaine& CoupeAuDernierRC();
    UniChaine CoupeAuDernierRC() const
    {
        return sdd::detail::Jumeau(*this, [&](UniChaine& copie) { copie.CoupeAuDernierRC(); });
    }

    // --- Questions ---

    int Longueur() const noexcept { return _texte.size(); }
    // Octets de la forme étroite dans ce codage, zéro final non compris ; 0 pour un codage
    // inconnu.
    int Longueur(Codage codage) const;
    bool EstVide() const noexcept { return _texte.isEmpty(); }
    // Unité d'index i ; hors de la chaîne : IndexHorsBorne.
    char16_t operator[](int i) const;

    // Recherches : vrai quand trouvé, position dans *pos (si pos n'est pas nul), depuis la
    // position depuis (hors de la chaîne : IndexHorsBorne). Avec MalgrayLigatures, voir
    // ContientMalgrayLigature.
    bool Contient(UniChaine const& autre, int* pos = nullptr, int depuis = 0, Malgray m = 0) const;
    bool Contient(char16_t c, int* pos = nullptr, int depuis = 0, Malgray m = 0) const;
    // Dernière occurrence qui commence au plus à avant (-1 : n'importe où).
    bool TrouveDernier(UniChaine const& autre, int* pos = nullptr, int avant = -1,
                       Malgray m = 0) const;
    bool TrouveDernier(char16_t c, int* pos = nullptr, int avant = -1, Malgray m = 0) const;
    // Premier caractère qui est l'un de ceux de cars.
    bool ContientUnCarDe(UniChaine const& cars, int* pos = nullptr, int depuis = 0) const;
    // Occurrence bordée de part et d'autre par un séparateur de mot ou une extrémité.
    bool ContientMotEntier(UniChaine const& mot, int* pos = nullptr, int depuis = 0,
                           Malgray m = 0) const;
    // Recherche qui tient œ Œ æ Æ pour leurs deux lettres, d'un côté comme de l'autre (les
    // autres bits de m jouent caractère à caractère). Trouve autre à partir de depuis ;
    // *pos reçoit le début de l'occurrence et *longueur son nombre d'unités dans cette
    // chaîne, qui peut différer de celui de autre. Une chaîne vide se trouve à depuis.
    bool ContientMalgrayLigature(UniChaine const& autre, int depuis, Malgray m, int* pos = nullptr,
                                 int* longueur = nullptr) const;

    bool CommencePar(UniChaine const& autre, Malgray m = 0) const;
    bool TerminePar(UniChaine const& autre, Malgray m = 0) const;
    bool Egal(UniChaine const& autre, Malgray m = 0) const;
    bool operator==(UniChaine const& autre) const noexcept { return _texte == autre._texte; }
    bool operator!=(UniChaine const& autre) const noexcept { return _texte != autre._texte; }
    bool operator<(UniChaine const& autre) const noexcept { return _texte < autre._texte; }
    // Ordre des unités : -1, 0 ou 1.
    int Compare(UniChaine const& autre) const noexcept;
    // Ordre du collateur ouvert par InitialiseLocale : -1, 0 ou 1. Sans collateur, Compare.
    int CompareLocale(UniChaine const& autre) const;
    // Unités communes en tête (en queue), comptées dans cette chaîne. Le bit des ligatures
    // vaut pour le préfixe seulement.
    int LongueurPrefixeCommun(UniChaine const& autre, Malgray m = 0) const;
    int LongueurSuffixeCommun(UniChaine const& autre, Malgray m = 0) const;

    // Hachage de Qt, graine 0.
    virtual unsigned int hash() const noexcept;

    // Nature du caractère d'index i ; faux hors de la chaîne.
    bool AUnSeparateurDeMot(int i) const noexcept;
    bool AUnSeparateurDePhrase(int i) const noexcept;
    bool AUnRetourDeChariot(int i) const noexcept;
    bool ContientUnSeparateurDeMot() const noexcept;
    // Premier caractère de a..z, A..Z, 0..9 (dans cet ordre) absent du texte, dans c.
    bool PossedeCaractereAlphaNumeriqueAbsent(char& c) const noexcept;
    // Vrai quand un accent est écrit à part, en marque combinante, et non dans une lettre
    // précomposée.
    bool ContientUnCaractereAccentuayNonBaseUniCode() const noexcept;

    // --- Casse et accents ---

    // Colonnes majuscule et minuscule de la table ; la minuscule laisse les commandes et
    // l'espace insécable (la table les replie sur l'espace pour les comparaisons).
    UniChaine& Majusculise();
    UniChaine Majusculise() const
    {
        return sdd::detail::Jumeau(*this, [&](UniChaine& copie) { copie.Majusculise(); });
    }
    UniChaine& Minusculise();
    UniChaine Minusculise() const
    {
        return sdd::detail::Jumeau(*this, [&](UniChaine& copie) { copie.Minusculise(); });
    }
    // Première lettre, après les blancs et la ponctuation de tête ; rien si le texte
    // commence par un chiffre.
    UniChaine& MajusculisePremiereLettre();
    UniChaine MajusculisePremiereLettre() const
    {
        return sdd::detail::Jumeau(*this,
                                   [&](UniChaine& copie) { copie.MajusculisePremiereLettre(); });
    }
    UniChaine& MinusculisePremiereLettre();
    UniChaine MinusculisePremiereLettre() const
    {
        return sdd::detail::Jumeau(*this,
                                   [&](UniChaine& copie) { copie.MinusculisePremiereLettre(); });
    }
    UniChaine DonneChaineMajusculiseePremiereLettre() const;
    // Lettres de base, tous les accents enlevés ; les blancs restent.
    UniChaine DonneChaineSansAccents() const;
    UniChaine DonneChaineMinusculiseSansAccents() const;
    // Aucune majuscule (aucune minuscule) ; vrai sans lettre.
    bool EstToutEnMinuscules() const noexcept;
    bool EstToutEnMajuscules() const noexcept;
    bool ContientMajuscule() const noexcept;
    bool CommenceParMajuscule() const noexcept;
    // Chaque ligature devient ses lettres (ß : « sz »).
    UniChaine& Deligature();
    UniChaine Deligature() const
    {
        return sdd::detail::Jumeau(*this, [&](UniChaine& copie) { copie.Deligature(); });
    }

    // --- Nettoyage ---

    // Enlève les blancs de tête et de queue.
    UniChaine& NettoieBlancs();
    UniChaine NettoieBlancs() const
    {
        return sdd::detail::Jumeau(*this, [&](UniChaine& copie) { copie.NettoieBlancs(); });
    }
    // Chaque suite de blancs devient une espace ; la dernière unité reste telle quelle,
    // comme pour sdd::ChaineN.
    UniChaine& ConsolideBlancs();
    UniChaine ConsolideBlancs() const
    {
        return sdd::detail::Jumeau(*this, [&](UniChaine& copie) { copie.ConsolideBlancs(); });
    }
    // Enlève les balises ; un « < » sans « > » reste, avec tout ce qui suit.
    UniChaine& NettoieHTML();
    UniChaine NettoieHTML() const
    {
        return sdd::detail::Jumeau(*this, [&](UniChaine& copie) { copie.NettoieHTML(); });
    }
    // Toute apostrophe (droite, typographique, accents grave et aigu isolés, guillemet
    // simple ouvrant) devient apostrophe.
    UniChaine& NormaliseApostrophe(char16_t apostrophe = u'\u2019');
    UniChaine NormaliseApostrophe(char16_t apostrophe = u'\u2019') const
    {
        return sdd::detail::Jumeau(
            *this, [&](UniChaine& copie) { copie.NormaliseApostrophe(apostrophe); });
    }
    // Espace fine insécable : insécable ordinaire dans « », enlevée devant ! ? ;.
    UniChaine& AjusteTypographieSansEspaceFine();
    UniChaine AjusteTypographieSansEspaceFine() const
    {
        return sdd::detail::Jumeau(
            *this, [&](UniChaine& copie) { copie.AjusteTypographieSansEspaceFine(); });
    }
    // Une expression par ensemble typographique, avec son caractère canonique.
    using TableCarTypographiques = std::vector<sdd::Paire<QRegularExpression, char16_t>>;
    static TableCarTypographiques const& DonneTableCarTypographiques();
    // Remplace les caractères typographiques par leur forme canonique pour un codage
    // d'un octet ; rien pour UTF-8 et UTF-16.
    UniChaine& ConvertisCarsTypographiques(Codage codage);
    UniChaine ConvertisCarsTypographiques(Codage codage) const
    {
        return sdd::detail::Jumeau(
            *this, [&](UniChaine& copie) { copie.ConvertisCarsTypographiques(codage); });
    }
    // Fins de ligne du codage : « \r » pour Mac OS Roman, « \n » pour ISO 8859-15,
    // « \r\n » pour Windows-1252 ; rien pour les autres.
    UniChaine& ConvertisRetoursDeCharriot(Codage codage);
    UniChaine ConvertisRetoursDeCharriot(Codage codage) const
    {
        return sdd::detail::Jumeau(
            *this, [&](UniChaine& copie) { copie.ConvertisRetoursDeCharriot(codage); });
    }
    // Protège par « \ » la contre-oblique et les caractères de supplement.
    UniChaine& EncodeBackslash(UniChaine const& supplement = UniChaine());
    UniChaine EncodeBackslash(UniChaine const& supplement = UniChaine()) const
    {
        return sdd::detail::Jumeau(*this,
                                   [&](UniChaine& copie) { copie.EncodeBackslash(supplement); });
    }
    UniChaine& DecodeBackslash(UniChaine const& supplement = UniChaine());
    UniChaine DecodeBackslash(UniChaine const& supplement = UniChaine()) const
    {
        return sdd::detail::Jumeau(*this,
                                   [&](UniChaine& copie) { copie.DecodeBackslash(supplement); });
    }
    // a..z et A..Z tournent de 13, les chiffres de 5.
    UniChaine& CrypterRot13();
    UniChaine CrypterRot13() const
    {
        return sdd::detail::Jumeau(*this, [&](UniChaine& copie) { copie.CrypterRot13(); });
    }

    // --- Nombres ---

    // Texte dans la base donnée (2 à 16, chiffres majuscules, sinon IndexHorsBorne) ;
    // largeur complétée de zéros ou d'espaces, devant le signe compris, ou derrière quand
    // aGauche est vrai. Comme sdd::ChaineN::DepuisNombre.
    static UniChaine DepuisNombre(int n, int base = 10, int largeur = 0, bool zeros = false,
                                  bool aGauche = false);
    static UniChaine DepuisNombre(unsigned int n, int base = 10, int largeur = 0,
                                  bool zeros = false, bool aGauche = false);
    // Virgule fixe, point décimal, decimales chiffres après lui (au plus 64).
    static UniChaine DepuisNombre(double x, int decimales);
    // Le texte lu en hexadécimal (préfixe « 0x » admis) ; 0 et *ok faux sinon.
    unsigned int DonneEntierHex(bool* ok = nullptr) const;
    // Mise en forme à la printf, sans locale ; directives dans docs/chaines.md.
    static UniChaine Format(UniChaine format, ...); // par valeur : va_start refuse une référence
    static UniChaine vFormat(UniChaine const& format, va_list arguments);
    // Nombre à la manière de la langue (français par défaut) : decimales chiffres après la
    // virgule ; enleveZeros retire les zéros finaux de la partie décimale.
    static UniChaine DonneNombreFormatay(double x, int decimales, bool enleveZeros, eLangue langue);
    static UniChaine DonneNombreFormatay(int n, eLangue langue);
    static UniChaine DonneNombreFormatay(unsigned int n, eLangue langue);
    // ratio vaut 1 pour cent pour cent : 0,256 donne « 25,6 % » avec une décimale.
    static UniChaine DonnePourcentageFormatay(double ratio, int decimales, bool enleveZeros,
                                              eLangue langue);

    // --- Formes en octets ---

    // Forme étroite terminée par zéro (deux octets nuls en UTF-16). Sans tampon, elle vit
    // dans l'objet jusqu'au prochain appel ; avec, au plus taille octets y sont écrits,
    // terminateur compris, sans couper un caractère. Nul pour un codage inconnu.
    char const* PreteCString(Codage codage, unsigned int taille = 0, char* tampon = nullptr) const;
    // Copie new[] que l'appelant libère ; nul pour un codage inconnu.
    char* CreeCString(Codage codage) const;
    char16_t const* PreteUniCString() const noexcept;
    // Caractère gardé s'il est dans garder ou parmi les caractères sûrs d'une adresse,
    // sauf s'il est dans forcer ; les autres deviennent %XX par octet de leur forme dans
    // codage.
    UniChaine DonneChaineEchappayPourcent(UniChaine const& garder, UniChaine const& forcer,
                                          Codage codage = kUTF8) const;
    // Chaque %XX devient un octet, les autres unités leurs 8 bits bas ; puis décodage.
    static UniChaine DonneChaineDesechappeePourcent(UniChaine const& texte, Codage codage = kUTF8);

    // --- Découpe et assemblage ---

    // Parties entre les séparateurs ; nettoie : NettoieBlancs sur chaque partie ; les
    // parties vides (après nettoyage) restent quand garderVides est vrai.
    std::vector<UniChaine> Jetonise(char16_t separateur, bool garderVides = false,
                                    bool nettoie = false) const;
    sdd::ListeC<UniChaine> JetoniseEnListe(char16_t separateur, bool garderVides = false) const;
    // Les parties, cette chaîne entre elles ; ignoreVides saute les parties vides.
    UniChaine Joindre(std::vector<UniChaine> const& parties, bool ignoreVides = false) const;

    // --- Ordre selon la langue ---

    // Ouvre le collateur de la locale (nom ICU, « fr_CA »...) : lettres et accents comptent,
    // pas la casse ; espaces et ponctuation ignorés. Remplace le précédent. Échec :
    // sdd::exceptions::OuvertureEchouee. À appeler au démarrage, avant toute comparaison.
    static void InitialiseLocale(UniChaine const& locale);
    static void LibereLocale() noexcept;
    static UCollator* monCollatorLocale;

    // Caractère qui remplace les membres de chaque ensemble typographique de
    // UniCaractere::sCarsARemplacer, dans le même ordre.
    static const char16_t sCarsCanoniques[kNbEnsemblesTypographiques];
    // Remplace en Mac OS Roman les symboles de UniCaractere::sSymbolesLatin1NonMac (◊).
    static constexpr char16_t sCarCanoniqueLatin1NonMac = u'\u25CA';

protected:
    QString _texte;

private:
    void _LibereTampon() const noexcept;
    // Positions vérifiées comme pour sdd::ChaineN : au-delà du texte, IndexHorsBorne.
    void _VerifieIntervalle(int pos, int n) const;
    void _VerifiePosition(int pos) const;
    // Borne d'une recherche vers l'arrière : -1 vaut la fin.
    std::size_t _Avant(int avant) const;
    UniChaine& _RemplaceOccurrences(UniChaine const& ancien, UniChaine const& nouveau, Malgray m,
                                    bool motEntier);
    template <typename Retouche> UniChaine& _Remets(Retouche retouche);

    // Dernière conversion rendue par PreteCString.
    mutable char* _tampon = nullptr;
    mutable unsigned int _longueurTampon = 0;
    mutable Codage _codageTampon = kAucunCodage;
};

UniChaine NOYAU_EXPORT operator+(UniChaine const& a, UniChaine const& b);

// La chaîne vide partagée.
extern NOYAU_EXPORT const UniChaine kUniChaineNulle;
