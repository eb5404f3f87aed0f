#pragma once

#include "noyau/Export.h"
#include "noyau/chaines/UniCaractere.h"

#include <QString>

#include <string>

// Chaîne UTF-16 tournée vers Qt : un QString et le vocabulaire de la bibliothèque.
class NOYAU_EXPORT UniChaine
{
public:
    // Codages externes. La numérotation diffère volontairement de sdd::ChaineN::Codage :
    // on passe de l'une à l'autre par le sens, jamais par la valeur.
    enum Codage : unsigned char
    {
        kMacRoman = 0,
        kLatin9 = 1,
        kWinLatin1 = 2,
        kUTF8 = 3,
        kUTF16 = 4, // ordre de la machine, sans marque d'ordre
        kDOS = 5,
        kAucunCodage = 255
    };

    UniChaine() = default;
    UniChaine(UniChaine const& autre);
    UniChaine(UniChaine&& autre) noexcept;
    UniChaine(QString const& texte);
    // longueur en unités ; -1 : jusqu'au zéro final.
    UniChaine(char16_t const* texte, int longueur = -1);
    // longueur en octets ; -1 : jusqu'au zéro final. Un codage inconnu donne la chaîne vide.
    UniChaine(char const* texte, Codage codage = kUTF8, int longueur = -1);
    UniChaine(std::string const& texte, Codage codage);
    virtual ~UniChaine();

    UniChaine& operator=(UniChaine const& autre);
    UniChaine& operator=(UniChaine&& autre) noexcept;
    UniChaine& operator=(QString const& texte);

    operator QString() const { return _texte; }
    QString const& DonneQString() const noexcept { return _texte; }

    int Longueur() const noexcept { return _texte.size(); }
    bool EstVide() const noexcept { return _texte.isEmpty(); }
    // Unité d'index i ; hors de la chaîne : IndexHorsBorne.
    char16_t operator[](int i) const;
    char16_t const* PreteUniCString() const noexcept;

    UniChaine& AjouteFin(UniChaine const& autre);
    UniChaine AjouteFin(UniChaine const& autre) const;
    UniChaine& operator+=(UniChaine const& autre) { return AjouteFin(autre); }

    bool operator==(UniChaine const& autre) const noexcept { return _texte == autre._texte; }
    bool operator!=(UniChaine const& autre) const noexcept { return _texte != autre._texte; }
    bool operator<(UniChaine const& autre) const noexcept { return _texte < autre._texte; }

    // Texte décimal (ou dans la base donnée, 2 à 36) ; largeur complétée de zéros ou
    // d'espaces, à droite quand aGauche est vrai.
    static UniChaine DepuisNombre(int n, int base = 10, int largeur = 0, bool zeros = false,
                                  bool aGauche = false);
    static UniChaine DepuisNombre(unsigned int n, int base = 10, int largeur = 0,
                                  bool zeros = false, bool aGauche = false);

    // Point d'extension des classes dérivées ; ne fait rien ici.
    virtual void Actualise() {}
    // Hachage de Qt, graine 0.
    virtual unsigned int hash() const noexcept;

    // Caractère qui remplace les membres de chaque ensemble typographique de
    // UniCaractere::sCarsARemplacer, dans le même ordre.
    static const char16_t sCarsCanoniques[kNbEnsemblesTypographiques];

protected:
    QString _texte;

private:
    void _LibereTampon() noexcept;

    // Dernière conversion rendue par PreteCString.
    char* _tampon = nullptr;
    unsigned int _longueurTampon = 0;
    Codage _codageTampon = kAucunCodage;
};

UniChaine NOYAU_EXPORT operator+(UniChaine const& a, UniChaine const& b);

// La chaîne vide partagée.
extern NOYAU_EXPORT const UniChaine kUniChaineNulle;
