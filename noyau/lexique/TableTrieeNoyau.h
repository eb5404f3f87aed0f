#pragma once

#include "noyau/Export.h"
#include "noyau/chaines/ChaineN.h"

#include <cstdint>

namespace sdd {

template <typename T> class Serialiseur;

// Cœur non typé de la table triée : un arbre rouge-noir à liens parents. Les clés et les
// valeurs ne sont connues que des classes dérivées, par les crochets virtuels.
class NOYAU_EXPORT TableTrieeNoyau
{
public:
    class NOYAU_EXPORT NoeudRNNoyau
    {
    public:
        NoeudRNNoyau() = default;
        NoeudRNNoyau(NoeudRNNoyau const&) = delete;
        NoeudRNNoyau& operator=(NoeudRNNoyau const&) = delete;

        // Ce nœud prend une copie de la clé et de la valeur de l'autre.
        virtual void CopieContenu(NoeudRNNoyau const& autre) = 0;
        virtual ChaineN ChaineClef() const = 0;
        virtual ChaineN ChaineValeur() const = 0;
        // Nœud vide du même type : rouge, sans liens.
        virtual NoeudRNNoyau* NouveauNoeud() const = 0;
        // Détruit tout le sous-arbre, sans récursion : un arbre lu peut être une chaîne d'un
        // million de niveaux.
        virtual ~NoeudRNNoyau();

        bool EstRouge() const noexcept { return (_parentEtCouleur & kNoir) == 0; }
        bool EstNoir() const noexcept { return (_parentEtCouleur & kNoir) != 0; }
        void MetsEstRouge() noexcept { _parentEtCouleur &= ~kNoir; }
        void MetsEstNoir() noexcept { _parentEtCouleur |= kNoir; }
        NoeudRNNoyau* Parent() noexcept { return _DecodeParent(); }
        NoeudRNNoyau const* Parent() const noexcept { return _DecodeParent(); }
        // La couleur est gardée.
        void MetsParent(NoeudRNNoyau* parent) noexcept
        {
            _parentEtCouleur =
                reinterpret_cast<std::uintptr_t>(parent) | (_parentEtCouleur & kNoir);
        }
        NoeudRNNoyau* Gauche() const noexcept { return _gauche; }
        NoeudRNNoyau* Droite() const noexcept { return _droite; }

        NoeudRNNoyau* GrandParent() noexcept;
        NoeudRNNoyau* Oncle() noexcept;
        // L'autre enfant du parent, qui doit exister.
        NoeudRNNoyau* Sibling() noexcept;
        NoeudRNNoyau* DescendantPlusProfondGauche() noexcept;
        bool EstEnfantGauche() const noexcept;
        bool EstEnfantDroite() const noexcept;

        // Copie profonde du sous-arbre, mêmes forme et couleurs, rattachée à parent.
        NoeudRNNoyau* Clone(NoeudRNNoyau* parent) const;
        // Nombre de nœuds sous celui-ci ; voir la marque -300 dans le source. Le parcours
        // garde sa pile sur le tas : seul un manque de mémoire le fait échouer.
        long NbEnfants() const;
        // Invariants rouge-noir du sous-arbre, fautes écrites sur la sortie d'erreur.
        bool EstValide(unsigned long* hauteurNoire = nullptr) const;

    private:
        friend class TableTrieeNoyau;
        friend class Serialiseur<TableTrieeNoyau>;

        // Bit 0 du mot parent : 1 noir, 0 rouge. Les nœuds sont alloués à des adresses paires.
        static constexpr std::uintptr_t kNoir = 1;

        NoeudRNNoyau* _DecodeParent() const noexcept
        {
            return reinterpret_cast<NoeudRNNoyau*>(_parentEtCouleur & ~kNoir);
        }

        std::uintptr_t _parentEtCouleur = 0;
        NoeudRNNoyau* _gauche = nullptr;
        NoeudRNNoyau* _droite = nullptr;
    };

    // Poignée d'un mot sur la clé de l'appelant ; seule la couche typée sait la lire.
    struct ProxyClefNoyau
    {
        void const* clef;
    };

    // Parcours en ordre croissant, sans pile : par les liens parents. L'arbre ne doit pas
    // changer pendant le parcours.
    class NOYAU_EXPORT __Iterateur
    {
    public:
        explicit __Iterateur(TableTrieeNoyau const& table) noexcept;
        bool Prochain() noexcept;
        // Le nœud courant ; nul avant le premier Prochain et après le dernier.
        NoeudRNNoyau* DonneNoeud() const noexcept { return _commence ? _courant : nullptr; }
        TableTrieeNoyau const& DonneTable() const noexcept { return *_table; }

    private:
        NoeudRNNoyau* _courant; // la racine, avant le premier Prochain
        bool _commence = false;
        TableTrieeNoyau const* _table;
    };

    TableTrieeNoyau() = default;
    TableTrieeNoyau(TableTrieeNoyau const& autre);
    TableTrieeNoyau(TableTrieeNoyau&& autre) noexcept;
    // La table ne doit pas être affectée à elle-même.
    TableTrieeNoyau& operator=(TableTrieeNoyau const& autre);
    TableTrieeNoyau& operator=(TableTrieeNoyau&& autre) noexcept;

    void Vide() noexcept;
    unsigned int Taille() const noexcept { return _nombre; }
    // Compte en parcourant l'arbre : à comparer avec Taille().
    long NbEnfants() const;

    static bool NoeudRNEstRouge(NoeudRNNoyau const* noeud) noexcept
    {
        return noeud != nullptr && noeud->EstRouge();
    }
    static bool NoeudRNEstNoir(NoeudRNNoyau const* noeud) noexcept
    {
        return noeud == nullptr || noeud->EstNoir();
    }

    bool EstArbreValide() const;
    void Imprime() const;
    void ImprimeDot() const;

protected:
    virtual bool ClefEgale(ProxyClefNoyau const& clef, NoeudRNNoyau const* noeud) const = 0;
    virtual bool ClefAvant(ProxyClefNoyau const& clef, NoeudRNNoyau const* noeud) const = 0;
    virtual NoeudRNNoyau* CreeNoeudVide() const = 0;
    // Nœud rouge avec une copie de la clé et une valeur par défaut.
    virtual NoeudRNNoyau* CreeNoeud(ProxyClefNoyau const& clef) = 0;

public:
    // Après les crochets : l'ordre des entrées de la table virtuelle est fixé.
    virtual ~TableTrieeNoyau();

protected:
    NoeudRNNoyau* _Possede(ProxyClefNoyau const& clef) const;
    NoeudRNNoyau* _Insere(ProxyClefNoyau const& clef, bool* existait = nullptr);
    void _Supprime(ProxyClefNoyau const& clef);
    NoeudRNNoyau* _TrouveEmplacement(ProxyClefNoyau const& clef, NoeudRNNoyau** parent,
                                     bool* aGauche) const;
    // Le nœud qui porte la clé, existant (inchangé) ou nouveau.
    NoeudRNNoyau* _TrouveEmplacementEtInsere(ProxyClefNoyau const& clef, bool* existait = nullptr);
    void _TrouveEmplacementEtSupprime(ProxyClefNoyau const& clef, bool* existait = nullptr);

    void RotationGauche(NoeudRNNoyau* noeud) noexcept;
    void RotationDroite(NoeudRNNoyau* noeud) noexcept;
    void Balance(NoeudRNNoyau* noeud) noexcept;
    // Le nœud porte un noir de trop. SupprimeCas1 fait tourner les cas ; chacun des suivants
    // renvoie le nœud qui porte encore ce noir, ou nul quand c'est fini.
    void SupprimeCas1(NoeudRNNoyau* noeud) noexcept;
    NoeudRNNoyau* SupprimeCas2(NoeudRNNoyau* noeud) noexcept;
    NoeudRNNoyau* SupprimeCas3(NoeudRNNoyau* noeud) noexcept;
    NoeudRNNoyau* SupprimeCas4(NoeudRNNoyau* noeud) noexcept;
    NoeudRNNoyau* SupprimeCas5(NoeudRNNoyau* noeud) noexcept;
    NoeudRNNoyau* SupprimeCas6(NoeudRNNoyau* noeud) noexcept;

private:
    friend class Serialiseur<TableTrieeNoyau>;

    // Le lien qui menait à ancien (parent ou racine) mène à nouveau.
    void _Remplace(NoeudRNNoyau* ancien, NoeudRNNoyau* nouveau) noexcept;

    NoeudRNNoyau* _racine = nullptr;
    unsigned int _nombre = 0;
};

} // namespace sdd
