#pragma once

#include "noyau/Export.h"

#include <cstddef>
#include <vector>

namespace sdd {

class FluxEntree;
class FluxSortie;

// Passage entre les unités UTF-16 d'une chaîne et les octets d'un codage externe.
// Un convertisseur par codage, créé au premier usage (voir DonnePourCodage).
class NOYAU_EXPORT ConvertisseurChaineN
{
public:
    virtual ~ConvertisseurChaineN();

    // Nombre d'unités qui suffit toujours pour n octets.
    NOYAU_EXPORT virtual std::size_t MaxUnitesPourOctets(std::size_t n) const noexcept { return n; }
    // Décode n octets dans dest (MaxUnitesPourOctets(n) places) ; renvoie les unités écrites.
    virtual std::size_t VersUTF16(char const* octets, std::size_t n,
                                  char16_t* dest) const noexcept = 0;

    // Nombre d'octets qui suffit toujours pour n unités.
    NOYAU_EXPORT virtual std::size_t MaxOctetsPourUnites(std::size_t n) const noexcept { return n; }
    // Encode n unités dans dest (taille octets au plus, sans couper un caractère) ; renvoie
    // les octets écrits.
    virtual std::size_t DepuisUTF16(char16_t const* unites, std::size_t n, char* dest,
                                    std::size_t taille) const noexcept = 0;

    // Octets du zéro final d'une chaîne dans ce codage.
    NOYAU_EXPORT virtual std::size_t TailleTerminateur() const noexcept { return 1; }
    // Octets qui précèdent le zéro final (une unité nulle entière en UTF-16).
    std::size_t OctetsAvantLeZero(char const* octets) const noexcept;

    // Écrit n unités dans le flux, par tranches converties avec DepuisUTF16 ; une paire de
    // demi-codets n'est jamais coupée entre deux tranches.
    void EcrisUnites(FluxSortie& flux, char16_t const* unites, std::size_t n) const;

    // Ce qu'une lecture a tiré du flux d'avance : la seconde unité d'une paire, ou l'octet
    // qui a interrompu une séquence UTF-8 et commence la suivante (-1 : rien).
    struct EtatLecture
    {
        int unite = -1;
        int octet = -1;
    };
    // Lit l'unité suivante octet par octet, comme VersUTF16 la décoderait ; faux quand le flux
    // est épuisé.
    virtual bool LisUnite(FluxEntree& flux, EtatLecture& etat, char16_t* unite) const = 0;

    // Le convertisseur d'un codage de sdd::ChaineN (valeurs 0 à 6 ; toute autre valeur
    // vaut Mac OS Roman). Créé au premier appel ; sans verrou, comme les autres
    // initialisations paresseuses de la bibliothèque.
    static ConvertisseurChaineN const& DonnePourCodage(int codage);
    // Détruit les sept convertisseurs ; aucune conversion ne doit être en cours.
    static void LibereTous() noexcept;
};

// Codages d'un octet par caractère, décrits par leur table octet → unité.
class NOYAU_EXPORT ConvertisseurChaineNCodageUnOctet : public ConvertisseurChaineN
{
public:
    ~ConvertisseurChaineNCodageUnOctet() override;
    explicit ConvertisseurChaineNCodageUnOctet(char16_t const (&table)[256]);

    std::size_t VersUTF16(char const* octets, std::size_t n,
                          char16_t* dest) const noexcept override;
    std::size_t DepuisUTF16(char16_t const* unites, std::size_t n, char* dest,
                            std::size_t taille) const noexcept override;
    bool LisUnite(FluxEntree& flux, EtatLecture& etat, char16_t* unite) const override;

    char16_t DonneUnite(unsigned char octet) const noexcept { return _table[octet]; }
    // L'octet d'une unité ; « ? » pour une unité absente du codage.
    unsigned char DonneOctet(char16_t unite) const noexcept;

protected:
    // Donne un octet de remplacement aux unités absentes d'une autre forme que « ? ».
    void RemplaceAbsente(char16_t unite, unsigned char octet);

private:
    struct Correspondance
    {
        char16_t unite;
        unsigned char octet;
    };

    char16_t const (&_table)[256];
    std::vector<Correspondance> _inverse; // triée par unité, hors ASCII
};

class NOYAU_EXPORT ConvertisseurChaineNMacRoman : public ConvertisseurChaineNCodageUnOctet
{
public:
    ~ConvertisseurChaineNMacRoman() override;
    ConvertisseurChaineNMacRoman();
};

class NOYAU_EXPORT ConvertisseurChaineNLatin9 : public ConvertisseurChaineNCodageUnOctet
{
public:
    ~ConvertisseurChaineNLatin9() override;
    ConvertisseurChaineNLatin9();
};

class NOYAU_EXPORT ConvertisseurChaineNWinLatin1 : public ConvertisseurChaineNCodageUnOctet
{
public:
    ~ConvertisseurChaineNWinLatin1() override;
    ConvertisseurChaineNWinLatin1();
};

class NOYAU_EXPORT ConvertisseurChaineNDOS : public ConvertisseurChaineNCodageUnOctet
{
public:
    ~ConvertisseurChaineNDOS() override;
    ConvertisseurChaineNDOS();
};

class NOYAU_EXPORT ConvertisseurChaineNUTF8 : public ConvertisseurChaineN
{
public:
    ~ConvertisseurChaineNUTF8() override;
    std::size_t VersUTF16(char const* octets, std::size_t n,
                          char16_t* dest) const noexcept override;
    NOYAU_EXPORT std::size_t MaxOctetsPourUnites(std::size_t n) const noexcept override
    {
        return 3 * n;
    }
    std::size_t DepuisUTF16(char16_t const* unites, std::size_t n, char* dest,
                            std::size_t taille) const noexcept override;
    bool LisUnite(FluxEntree& flux, EtatLecture& etat, char16_t* unite) const override;
};

// UTF-16 sans marque d'ordre ; un octet impair final devient U+FFFD.
class NOYAU_EXPORT ConvertisseurChaineNUTF16 : public ConvertisseurChaineN
{
public:
    ~ConvertisseurChaineNUTF16() override;
    explicit ConvertisseurChaineNUTF16(bool grosBoutiste) : _grosBoutiste(grosBoutiste) {}

    NOYAU_EXPORT std::size_t MaxUnitesPourOctets(std::size_t n) const noexcept override
    {
        return (n + 1) / 2;
    }
    std::size_t VersUTF16(char const* octets, std::size_t n,
                          char16_t* dest) const noexcept override;
    NOYAU_EXPORT std::size_t MaxOctetsPourUnites(std::size_t n) const noexcept override
    {
        return 2 * n;
    }
    std::size_t DepuisUTF16(char16_t const* unites, std::size_t n, char* dest,
                            std::size_t taille) const noexcept override;
    NOYAU_EXPORT std::size_t TailleTerminateur() const noexcept override { return 2; }
    bool LisUnite(FluxEntree& flux, EtatLecture& etat, char16_t* unite) const override;

private:
    bool _grosBoutiste;
};

class NOYAU_EXPORT ConvertisseurChaineNUTF16LE : public ConvertisseurChaineNUTF16
{
public:
    ~ConvertisseurChaineNUTF16LE() override;
    ConvertisseurChaineNUTF16LE() : ConvertisseurChaineNUTF16(false) {}
};

class NOYAU_EXPORT ConvertisseurChaineNUTF16BE : public ConvertisseurChaineNUTF16
{
public:
    ~ConvertisseurChaineNUTF16BE() override;
    ConvertisseurChaineNUTF16BE() : ConvertisseurChaineNUTF16(true) {}
};

} // namespace sdd
