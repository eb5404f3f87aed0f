#pragma once

#include "noyau/flux/Serialiseur.h"
#include "noyau/lexique/TableChaineNoyau.h"

namespace sdd {

// Table de chaînes dont chaque chaîne porte une Donnee, écrite et lue par Serialiseur<Donnee>.
// Donnee se construit par défaut et se copie.
template <typename Donnee> class TableChaineT : public TableChaineNoyau
{
public:
    TableChaineT() { Vide(); }
    TableChaineT(TableChaineT const&) = default;
    TableChaineT& operator=(TableChaineT const&) = default;
    ~TableChaineT() override = default;

    // La donnée de la chaîne, ou nul quand elle n'est pas dans la table.
    Donnee* Donne(ChaineN const& clef)
    {
        Noeud* const n = TrouveEmplacement(clef);
        return n ? &static_cast<NoeudT*>(n)->_donnee : nullptr;
    }
    Donnee const* Donne(ChaineN const& clef) const
    {
        Noeud const* const n = TrouveEmplacement(clef);
        return n ? &static_cast<NoeudT const*>(n)->_donnee : nullptr;
    }
    // Ajoute la chaîne ou remplace sa donnée. Un appel qui lève laisse la table comme elle
    // était : la donnée d'une chaîne nouvelle est posée avant qu'elle n'entre dans la table.
    Donnee& Insere(ChaineN const& clef, Donnee const& donnee)
    {
        bool deja = false;
        Noeud* const n = TrouveEmplacementEtInsere(
            clef, &deja, [&](Noeud& nouveau) { static_cast<NoeudT&>(nouveau)._donnee = donnee; });
        Donnee& place = static_cast<NoeudT*>(n)->_donnee;
        if (deja) {
            place = donnee;
        }
        return place;
    }
    // La donnée du nœud courant d'un itérateur de cette table.
    static Donnee const& DonneeDe(Noeud const& noeud)
    {
        return static_cast<NoeudT const&>(noeud)._donnee;
    }

protected:
    Noeud* CreeNoeud(ChaineN const& cars) const override { return new NoeudT(cars); }

private:
    class NoeudT final : public Noeud
    {
    public:
        using Noeud::Noeud;

        void VideDonnees() override { _donnee = Donnee(); }
        void PrendsDonnees(Noeud const& autre) override
        {
            _donnee = static_cast<NoeudT const&>(autre)._donnee;
        }
        Noeud* NouveauNoeud() const override { return new NoeudT; }
        void LisDonnees(FluxEntree& flux) override { Serialiseur<Donnee>::Lis(flux, &_donnee); }
        void EcrisDonnees(FluxSortie& flux) const override
        {
            Serialiseur<Donnee>::Ecris(flux, _donnee);
        }

        Donnee _donnee{};
    };
};

} // namespace sdd
