#pragma once

#include "noyau/algorithmes/FonctionsComparaison.h"
#include "noyau/chaines/UniChaine.h"
#include "noyau/erreurs/Exceptions.h"
#include "noyau/lexique/SerialiseurTableTriee.h"
#include "noyau/lexique/TableTrieeNoyau.h"

#include <type_traits>
#include <utility>

namespace sdd {

namespace detail {

// Texte d'une clé ou d'une valeur pour les impressions de diagnostic.
template <typename T> ChaineN TexteDiagnostic(T const& valeur)
{
    if constexpr (std::is_same_v<T, ChaineN>) {
        return valeur;
    } else if constexpr (std::is_same_v<T, UniChaine>) {
        return valeur.DonneChaineN();
    } else if constexpr (std::is_same_v<T, bool>) {
        return ChaineN(valeur ? u"vrai" : u"faux");
    } else if constexpr (std::is_integral_v<T> && std::is_signed_v<T>) {
        return ChaineN::DepuisNombre(static_cast<long long>(valeur));
    } else if constexpr (std::is_integral_v<T>) {
        return ChaineN::DepuisNombre(static_cast<unsigned long long>(valeur));
    } else if constexpr (std::is_floating_point_v<T>) {
        return ChaineN::DepuisNombre(static_cast<double>(valeur));
    } else {
        return ChaineN(u"?");
    }
}

} // namespace detail

// Table triée typée (arbre rouge-noir) : la couche typée ne fournit que le nœud et les
// crochets ; tout ce qui ne dépend pas des types vit dans le cœur.
template <typename TypeClef, typename TypeValeur, typename PlusPetit = FonctionPlusPetit<TypeClef>,
          typename Egalite = FonctionEgalite<TypeClef>>
class TableTriee : public TableTrieeNoyau
{
    class Noeud final : public NoeudRNNoyau
    {
    public:
        Noeud() = default;
        explicit Noeud(TypeClef const& c) : clef(c), valeur() {}

        void CopieContenu(NoeudRNNoyau const& autre) override
        {
            // Copies d'abord : si l'une échoue, le nœud garde sa clé et sa valeur.
            auto const& source = static_cast<Noeud const&>(autre);
            TypeClef copieClef(source.clef);
            TypeValeur copieValeur(source.valeur);
            clef = std::move(copieClef);
            valeur = std::move(copieValeur);
        }
        ChaineN ChaineClef() const override { return detail::TexteDiagnostic(clef); }
        ChaineN ChaineValeur() const override { return detail::TexteDiagnostic(valeur); }
        NoeudRNNoyau* NouveauNoeud() const override { return new Noeud; }

        TypeClef clef{};
        TypeValeur valeur{};
    };

public:
    // Parcours en ordre croissant des clés.
    class Iterateur : public __Iterateur
    {
    public:
        explicit Iterateur(TableTriee const& table) noexcept : __Iterateur(table) {}
        // Hors d'un élément (avant le premier Prochain, après le dernier) :
        // ValeurIndefinieIterateur.
        TypeClef const& Clef() const { return _Noeud()->clef; }
        TypeValeur& Valeur() const { return _Noeud()->valeur; }

    private:
        Noeud* _Noeud() const
        {
            if (DonneNoeud() == nullptr) {
                throw exceptions::ValeurIndefinieIterateur();
            }
            return static_cast<Noeud*>(DonneNoeud());
        }
    };

    TypeValeur* Possede(TypeClef const& clef)
    {
        NoeudRNNoyau* const noeud = _Possede(ProxyClefNoyau{&clef});
        return noeud != nullptr ? &static_cast<Noeud*>(noeud)->valeur : nullptr;
    }
    TypeValeur const* Possede(TypeClef const& clef) const
    {
        NoeudRNNoyau* const noeud = _Possede(ProxyClefNoyau{&clef});
        return noeud != nullptr ? &static_cast<Noeud const*>(noeud)->valeur : nullptr;
    }

    // Une clé déjà présente garde sa valeur ; *existait dit lequel des deux cas.
    TypeValeur& Insere(TypeClef const& clef, TypeValeur const& valeur = TypeValeur(),
                       bool* existait = nullptr)
    {
        // La valeur est copiée avant que la table ne change : une copie qui échoue la laisse
        // telle quelle. Le nœud nouveau la prend ensuite par déplacement.
        TypeValeur copie(valeur);
        bool trouve = false;
        auto* const noeud = static_cast<Noeud*>(_Insere(ProxyClefNoyau{&clef}, &trouve));
        if (!trouve) {
            try {
                noeud->valeur = std::move(copie);
            } catch (...) { // déplacement qui échoue : la clé nouvelle repart
                _Supprime(ProxyClefNoyau{&clef});
                throw;
            }
        }
        if (existait != nullptr) {
            *existait = trouve;
        }
        return noeud->valeur;
    }

    // Vrai quand la clé était là.
    bool Supprime(TypeClef const& clef)
    {
        bool trouve = false;
        _TrouveEmplacementEtSupprime(ProxyClefNoyau{&clef}, &trouve);
        return trouve;
    }

    bool EstVide() const noexcept { return Taille() == 0; }

    // Les données de chaque nœud : la clé puis la valeur, par leurs sérialiseurs.
    unsigned int Ecris(FluxSortie& flux) const
    {
        Ecrivain ecrivain;
        return Serialiseur<TableTrieeNoyau>::Ecris(flux, *this, &ecrivain);
    }
    void Lis(FluxEntree& flux)
    {
        Lecteur lecteur;
        Serialiseur<TableTrieeNoyau>::Lis(flux, this, &lecteur);
    }

protected:
    bool ClefEgale(ProxyClefNoyau const& clef, NoeudRNNoyau const* noeud) const override
    {
        return Egalite()(*static_cast<TypeClef const*>(clef.clef),
                         static_cast<Noeud const*>(noeud)->clef);
    }
    bool ClefAvant(ProxyClefNoyau const& clef, NoeudRNNoyau const* noeud) const override
    {
        return PlusPetit()(*static_cast<TypeClef const*>(clef.clef),
                           static_cast<Noeud const*>(noeud)->clef);
    }
    NoeudRNNoyau* CreeNoeudVide() const override { return new Noeud; }
    NoeudRNNoyau* CreeNoeud(ProxyClefNoyau const& clef) override
    {
        return new Noeud(*static_cast<TypeClef const*>(clef.clef));
    }

private:
    struct Ecrivain final : SerialiseurNoeudRNNoyau
    {
        void EcrisNoeud(NoeudRNNoyau const* noeud, FluxSortie& flux) override
        {
            auto const* noeudType = static_cast<Noeud const*>(noeud);
            Serialiseur<TypeClef>::Ecris(flux, noeudType->clef);
            Serialiseur<TypeValeur>::Ecris(flux, noeudType->valeur);
        }
    };
    struct Lecteur final : DeserialiseurNoeudRNNoyau
    {
        void LisNoeud(NoeudRNNoyau* noeud, FluxEntree& flux) override
        {
            auto* const noeudType = static_cast<Noeud*>(noeud);
            Serialiseur<TypeClef>::Lis(flux, &noeudType->clef);
            Serialiseur<TypeValeur>::Lis(flux, &noeudType->valeur);
        }
    };
};

} // namespace sdd
