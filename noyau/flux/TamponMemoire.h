#pragma once

#include "noyau/Export.h"
#include "noyau/flux/Flux.h"

#include <cstdint>
#include <cstring>
#include <memory>

class UniChaine;
class UniChemin;

namespace sdd {

class ChaineN;

// Tampon d'octets qui s'agrandit, lisible et inscriptible par le même curseur. Le bloc est
// écrit d'avant en arrière : une écriture au milieu coupe ce qui la suivait.
//
// Les lectures ne vérifient pas la fin (l'appelant demande EstALaFin()) ; seule garde : au-delà
// du bloc alloué, Donne() rend 0 au lieu de lire hors de la mémoire.
class NOYAU_EXPORT TamponMemoire : public FluxEntreeMemoire, public FluxSortie
{
public:
    explicit TamponMemoire(unsigned int capacite);
    // Copie tout le bloc (capacite octets) et la position.
    TamponMemoire(TamponMemoire const& autre);
    // Bloc de l'appelant, taille octets valides ; libéré à la destruction (delete[]) seulement
    // quand prendPossession est vrai, et seulement une fois construit : une taille négative
    // (une longueur de 2 Gio ou plus passée par un int) lève IndexHorsBorne, le bloc restant
    // alors à l'appelant.
    TamponMemoire(char* bloc, int taille, bool prendPossession);
    // La même chose pour toute taille sur 32 bits (une projection de 2 à 4 Gio, par exemple).
    TamponMemoire(unsigned char* bloc, unsigned int taille, bool prendPossession);
    // Tout le fichier, lu d'un coup. OuvertureEchouee s'il ne se lit pas (absent, ou pas un
    // fichier ordinaire) ; MemoireInsuffisante à 4 Gio et plus.
    explicit TamponMemoire(UniChemin const& chemin);
    TamponMemoire& operator=(TamponMemoire const&) = delete;
    ~TamponMemoire() override;

    // Flux
    NOYAU_EXPORT bool EstALaFin() const override { return _position >= _taille; }
    NOYAU_EXPORT unsigned int DonnePosition() const override { return _position; }

    // Lecture
    NOYAU_EXPORT unsigned char Donne() override
    {
        unsigned int const p = _position++;
        return p < _capacite ? _donnees[p] : 0;
    }
    unsigned int Donne(unsigned int n, unsigned char* dest) override;
    NOYAU_EXPORT void PositionneAuDebut() override { MetsPosition(0); }
    NOYAU_EXPORT void Positionne(unsigned int position) override { MetsPosition(position); }
    NOYAU_EXPORT void PositionneALaFin() override { MetsPosition(_taille); }
    unsigned char const* PtrEtAvance(unsigned int n) override;
    NOYAU_EXPORT unsigned char const* Ptr() const override { return _donnees + _position; }
    NOYAU_EXPORT unsigned int DonneTaille() const override { return _taille; }
    TamponMemoire* TamponEnPretantDonnees() override;

    virtual void Vide();
    // Pose un zéro à la position (sans la déplacer) et rend le bloc.
    virtual char* DonneCString();
    // Le même zéro, puis une copie neuve (delete[] par l'appelant) de position + 1 octets.
    virtual char* CreeCString();
    NOYAU_EXPORT virtual unsigned char* DonneDonnees() const { return _donnees; }
    // Ligne suivante (sans sa fin CR, LF ou CR LF) dans dest, au plus max - 1 octets suivis
    // d'un zéro. Faux, sans rien toucher, à la fin du tampon.
    virtual bool DonneLigne(char* dest, int max);
    // La même chose sans limite de longueur ni zéro final ; ligne est vidé d'abord.
    virtual bool DonneLigne(TamponMemoire& ligne);

    // Écriture
    NOYAU_EXPORT void Mets(unsigned char octet) override
    {
        // Un octet de réserve reste toujours après les données.
        if (std::uint64_t(_position) + 1 >= _capacite) {
            _AgrandirPourUnOctet();
        }
        _donnees[_position++] = octet;
        _taille = _position;
    }
    NOYAU_EXPORT void Mets(unsigned char const* octets, unsigned int n) override
    {
        Mets(reinterpret_cast<char const*>(octets), n);
    }
    // Les octets peuvent venir du tampon lui-même, même quand il doit grandir.
    NOYAU_EXPORT virtual void Mets(char const* octets, unsigned int n)
    {
        std::uint64_t const fin = std::uint64_t(_position) + n;
        if (fin >= _capacite) {
            _MetsEnAgrandissant(octets, n);
            return;
        }
        // La copie sépare les deux écritures : réunies, GCC les fond en un vecteur lent à
        // relire.
        _taille = static_cast<unsigned int>(fin);
        if (n != 0) {
            std::memmove(_donnees + _position, octets, n);
        }
        _position = static_cast<unsigned int>(fin);
    }

    // Écriture directe dans le bloc, pour les codeurs qui produisent leurs octets en place :
    // PreteZoneEcriture(n) fait la place de n octets à la position (le bloc grandit comme pour
    // Mets) et rend où les écrire ; ValideEcriture(k), k ≤ n, les compte ensuite comme écrits
    // par Mets (position et taille après eux).
    unsigned char* PreteZoneEcriture(unsigned int n);
    void ValideEcriture(unsigned int n);

    TamponMemoire& operator<<(char const* texte);
    // Les entiers sont écrits suivis d'un zéro que la position ne passe pas ; volontairement,
    // ces quatre formes ne changent pas la taille.
    TamponMemoire& operator<<(int valeur);
    TamponMemoire& operator<<(unsigned int valeur);
    TamponMemoire& operator<<(long long valeur);
    TamponMemoire& operator<<(unsigned long long valeur);
    // Forme par défaut d'un flux standard (six chiffres significatifs).
    TamponMemoire& operator<<(double valeur);
    TamponMemoire& operator<<(float valeur);

    unsigned int DonneCapacite() const noexcept { return _capacite; }
    void MetsTaille(unsigned int taille) noexcept { _taille = taille; }
    void Reserve(int capacite);
    // Double la capacité.
    void Agrandir();
    void Agrandir(unsigned int capacite);
    // Au-delà de la capacité, le bloc grandit d'un facteur 1,3 ; la taille ne change pas.
    void MetsPosition(unsigned int position);

    // Même taille et mêmes octets valides ; capacité et position ne comptent pas.
    bool operator==(TamponMemoire const& autre) const;
    bool operator!=(TamponMemoire const& autre) const { return !(*this == autre); }

    // Chaînes comprimées : longueur comprimée et longueur UTF-8 en VarElias, puis le flux zlib
    // du texte UTF-8. Les échecs de zlib et les données comprimées tronquées lancent l'entier
    // -1 ; des longueurs tronquées ou abîmées, ErreurDeserialisation (VarElias).
    static unsigned int CompresseUniChaine(FluxSortie& flux, UniChaine const& texte);
    static unsigned int CompresseChaineN(FluxSortie& flux, ChaineN const& texte);
    static UniChaine DecompresseUniChaine(FluxEntree& flux);
    static ChaineN DecompresseChaineN(FluxEntree& flux);

private:
    template <typename Chaine> static unsigned int CompresseChaine(FluxSortie& flux, Chaine const&);
    template <typename Chaine> static Chaine DecompresseChaine(FluxEntree& flux);

    // Tampon qui emprunte le bloc d'un autre.
    TamponMemoire(unsigned char* bloc, unsigned int taille, unsigned int capacite);

    void _AgrandirPourUnOctet();
    // Capacité doublée depuis la capacité courante jusqu'à dépasser fin.
    unsigned int _CapacitePourBloc(std::uint64_t fin) const;
    void _MetsEnAgrandissant(char const* octets, unsigned int n);
    // Passe à un bloc neuf de capacite octets, l'ancien contenu recopié ; rend l'ancien bloc
    // (nul s'il était emprunté), qui reste lisible jusqu'à ce que l'appelant le lâche.
    std::unique_ptr<unsigned char[]> _RemplaceBloc(unsigned int capacite);
    // Capacité d'au moins n octets (n sur 64 bits : aucun calcul de fin ne déborde).
    void _Assure(std::uint64_t n);
    unsigned char _OctetA(unsigned int p) const noexcept { return p < _capacite ? _donnees[p] : 0; }
    template <typename Entier, typename Ecrivain>
    TamponMemoire& _EcrisEntier(Entier valeur, unsigned int place, Ecrivain ecrivain);

    unsigned int _position = 0; // curseur de lecture et d'écriture
    unsigned int _taille = 0;   // fin des données valides
    unsigned int _capacite = 0; // taille du bloc
    unsigned char* _donnees = nullptr;
    bool _emprunte = false; // bloc à ne pas libérer
};

} // namespace sdd
