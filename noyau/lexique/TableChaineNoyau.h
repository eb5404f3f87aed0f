#pragma once

#include "noyau/Export.h"
#include "noyau/chaines/ChaineN.h"
#include "noyau/conteneurs/ListeT.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>

namespace sdd {

class FluxEntree;
class FluxSortie;
template <typename T> class Serialiseur;

// Ensemble de chaînes rangé en arbre préfixe compressé : chaque arête porte une suite
// d'unités UTF-16, comparées telles quelles (ni casse ni accents repliés ici). Les types
// dérivés fixent le type de nœud, donc la donnée que porte chaque chaîne.
//
// Invariants : les enfants d'un nœud forment une chaîne de frères triée (EstAvant), deux
// frères ne commencent jamais par la même unité ; hors la racine, un nœud a une suite non vide
// et est terminal ou a au moins deux enfants.
class NOYAU_EXPORT TableChaineNoyau
{
public:
    static constexpr std::uint16_t kVersionTableTrie = 110;

    class Noeud;
    class __Iterateur;

protected:
    // Nœud du type de la table, portant cette suite, sans lien ni drapeau. Déclarée avant le
    // destructeur : c'est l'ordre des opérations virtuelles de la table.
    virtual Noeud* CreeNoeud(ChaineN const& cars) const = 0;

public:
    virtual ~TableChaineNoyau();

    // Remplace l'arbre par une racine seule.
    void Vide();
    unsigned int Taille() const noexcept { return _nombre; }

    bool Possede(ChaineN const& clef) const { return TrouveEmplacement(clef) != nullptr; }
    // Le nœud terminal de la chaîne, ou nul.
    Noeud* TrouveEmplacement(ChaineN const& clef) const;
    // Le nœud de la chaîne, ajoutée si besoin ; *dejaPresente dit si elle l'était. Une clef
    // qui contient U+0000 (que la forme écrite ne peut porter) lève OperationInvalide.
    Noeud* TrouveEmplacementEtInsere(ChaineN const& clef, bool* dejaPresente = nullptr);
    // La même chose ; une chaîne nouvelle reçoit d'abord sa donnée de prepare, sur son nœud
    // pas encore relié (ou pas encore terminal) : si prepare lève, la table reste telle
    // qu'elle était. Une chaîne déjà là ne passe pas par prepare.
    using Preparation = std::function<void(Noeud&)>;
    Noeud* TrouveEmplacementEtInsere(ChaineN const& clef, bool* dejaPresente,
                                     Preparation const& prepare);
    bool Supprime(ChaineN const& clef) { return TrouveEmplacementEtSupprime(clef); }
    // Vrai quand la chaîne était là.
    bool TrouveEmplacementEtSupprime(ChaineN const& clef);

    Noeud const* DonneRacine() const noexcept { return _racine; }

protected:
    // Sans racine : la table dérivée la crée (Vide) une fois son type de nœud disponible.
    TableChaineNoyau() = default;
    // Copies réservées aux tables dérivées : une affectation entre deux types de tables
    // mêlerait leurs types de nœuds.
    TableChaineNoyau(TableChaineNoyau const& autre);
    TableChaineNoyau& operator=(TableChaineNoyau const& autre);

    // La descente commune : vrai quand la clef entière a été suivie (*noeud est alors le nœud
    // où elle s'achève) ; sinon les sorties disent où la placer.
    bool TrouveMeilleurEmplacement(ChaineN const& clef, unsigned long* pos, Noeud** precedent,
                                   Noeud** noeud, Noeud** parent) const;
    // Ordre des frères : la suite passe-t-elle avant la clef prise depuis pos ?
    static bool EstAvant(std::u16string_view cars, ChaineN const& clef, unsigned long pos) noexcept;
    // Crée les nœuds d'une chaîne là où la descente s'est arrêtée ; renvoie son nœud.
    Noeud* InsereNouveauNoeud(ChaineN const& clef, unsigned long pos, Noeud* precedent,
                              Noeud* suivant, Noeud* parent, Preparation const* prepare = nullptr);

private:
    friend class Serialiseur<TableChaineNoyau>;

    Noeud* _NouveauNoeud(std::u16string_view cars) const;
    // Coupe n après a unités (a > 0) ; voir InsereNouveauNoeud.
    Noeud* _Scinde(Noeud& n, unsigned long a, std::u16string_view reste, bool enfantAvant,
                   Preparation const* prepare);
    Noeud* _Insere(ChaineN const& clef, bool* dejaPresente, Preparation const* prepare);
    Noeud* _Racine();

    std::uint32_t _nombre = 0;
    Noeud* _racine = nullptr;
};

class NOYAU_EXPORT TableChaineNoyau::Noeud
{
public:
    static constexpr std::uint32_t kTerminal = 0x02;
    // Réécrits par l'écriture sérialisée : enfant, frère suivant.
    static constexpr std::uint32_t kAEnfant = 0x04;
    static constexpr std::uint32_t kASuivant = 0x08;

    Noeud() noexcept = default;
    explicit Noeud(ChaineN const& cars);
    Noeud(Noeud const&) = delete;
    Noeud& operator=(Noeud const&) = delete;

    // Donnée propre au type dérivé.
    virtual void VideDonnees() = 0;
    virtual void PrendsDonnees(Noeud const& autre) = 0;
    virtual Noeud* NouveauNoeud() const = 0;
    virtual void LisDonnees(FluxEntree& flux) = 0;
    virtual void EcrisDonnees(FluxSortie& flux) const = 0;
    // Détruit le premier enfant et le frère suivant (donc tout l'arbre depuis la racine),
    // sans récursion.
    virtual ~Noeud();

    std::u16string_view Cars() const noexcept { return {_Unites(), _longueur}; }
    ChaineN DonneCars() const { return ChaineN(_Unites(), _longueur); }
    void MetsCars(ChaineN const& cars) { _MetsCars({cars.PreteUniCString(), cars.Longueur()}); }
    std::uint32_t DonneDrapeaux() const noexcept { return _drapeaux; }
    bool EstTerminal() const noexcept { return (_drapeaux & kTerminal) != 0; }
    Noeud* DonnePremierEnfant() const noexcept { return _premierEnfant; }
    Noeud* DonneSuivant() const noexcept { return _suivant; }

    bool APlusDUnEnfant() const noexcept
    {
        return _premierEnfant != nullptr && _premierEnfant->_suivant != nullptr;
    }
    bool AUnSeulEnfant() const noexcept
    {
        return _premierEnfant != nullptr && _premierEnfant->_suivant == nullptr;
    }

    // Copie de ce nœud, de ses descendants et de ses frères suivants.
    Noeud* Clone() const;
    // Prend le drapeau et la donnée de o, qui n'en garde aucun.
    void TransfereFeuilles(Noeud& o);
    // Absorbe l'enfant unique : suites mises bout à bout, drapeau et donnée de l'enfant. En
    // cas d'échec (allocation, copie de la donnée), rien n'a changé.
    void RappatrieEnfant();

private:
    friend class TableChaineNoyau;
    friend class Serialiseur<TableChaineNoyau>;

    // Jusqu'à kCourt unités tiennent dans le nœud : la plupart des suites d'un lexique.
    static constexpr std::uint32_t kCourt = 4;

    char16_t const* _Unites() const noexcept { return _longueur <= kCourt ? _court : _long; }
    // La suite devient debut puis fin (l'un ou l'autre peut venir de la suite actuelle).
    void _MetsCars(std::u16string_view debut, std::u16string_view fin = {});
    // Les deux temps de _MetsCars : l'allocation, qui peut échouer (nul pour une suite courte),
    // puis la pose, qui ne le peut pas.
    static std::unique_ptr<char16_t[]> _AlloueCars(std::size_t n);
    void _PoseCars(std::u16string_view debut, std::u16string_view fin,
                   std::unique_ptr<char16_t[]> tas) noexcept;
    // Garde les n premières unités, sans allouer.
    void _CoupeCars(unsigned long n) noexcept;
    void _LibereCars() noexcept;

    union {
        char16_t _court[kCourt] = {};
        char16_t* _long; // kCourt < _longueur
    };
    std::uint32_t _longueur = 0;
    std::uint32_t _drapeaux = 0;
    Noeud* _premierEnfant = nullptr;
    Noeud* _suivant = nullptr;
};

// Parcourt les chaînes dans l'ordre des unités, une chaîne avant ses prolongements. Toute
// insertion ou suppression dans la table le rend caduc.
class NOYAU_EXPORT TableChaineNoyau::__Iterateur
{
public:
    explicit __Iterateur(TableChaineNoyau const& table);

    // Passe à la chaîne suivante ; faux à la fin (l'appel d'après repart du début).
    bool Prochain();
    // La chaîne courante ; vide sans chaîne courante.
    ChaineN const& Clef();
    Noeud const* DonneNoeud() const noexcept { return _courant; }

private:
    void _Descends();
    bool _RemonteVersFrere();

    ChaineN _prefixe; // suites des ancêtres du nœud courant
    ChaineN _clef;
    Noeud const* _courant = nullptr;
    ListeT<Noeud const*, 16, 0> _ancetres;
    TableChaineNoyau const* _table;
};

} // namespace sdd
