#pragma once

#include "noyau/erreurs/Exceptions.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace sdd {

// Tableau extensible. kCapaciteInitiale est réservée à la construction ; plein, il passe
// de la capacité c à 2c + kIncrement. Index est le type des positions et des tailles.
template <typename T, unsigned long kCapaciteInitiale = 2, unsigned long kIncrement = 1,
          typename Index = unsigned long>
class ListeT
{
public:
    explicit ListeT(Index capaciteInitiale = kCapaciteInitiale)
    {
        _elements.reserve(capaciteInitiale);
    }

    Index Taille() const noexcept { return static_cast<Index>(_elements.size()); }
    Index Capacite() const noexcept { return static_cast<Index>(_elements.capacity()); }
    bool EstVide() const noexcept { return _elements.empty(); }

    T& operator[](Index i)
    {
        _Verifie(i);
        return _elements[i];
    }
    T const& operator[](Index i) const
    {
        _Verifie(i);
        return _elements[i];
    }

    ListeT& Ajoute(T const& valeur)
    {
        _Agrandis();
        _elements.push_back(valeur);
        return *this;
    }
    ListeT& Ajoute(T&& valeur)
    {
        _Agrandis();
        _elements.push_back(std::move(valeur));
        return *this;
    }
    // Enlève l'élément d'index i ; les suivants reculent d'une place.
    ListeT& Enleve(Index i)
    {
        _Verifie(i);
        _elements.erase(_elements.begin() + i);
        return *this;
    }
    // Enlève tous les éléments ; la capacité reste.
    ListeT& Vide() noexcept
    {
        _elements.clear();
        return *this;
    }

    T* Donnees() noexcept { return _elements.data(); }
    T const* Donnees() const noexcept { return _elements.data(); }
    auto begin() noexcept { return _elements.begin(); }
    auto end() noexcept { return _elements.end(); }
    auto begin() const noexcept { return _elements.begin(); }
    auto end() const noexcept { return _elements.end(); }

    friend bool operator==(ListeT const& a, ListeT const& b) { return a._elements == b._elements; }
    friend bool operator!=(ListeT const& a, ListeT const& b) { return !(a == b); }

private:
    void _Verifie(Index i) const
    {
        if (i >= Taille()) {
            exceptions::LanceIndexHorsBorne(i, 0, Taille());
        }
    }
    void _Agrandis()
    {
        if (_elements.size() == _elements.capacity()) {
            _elements.reserve(std::max<std::size_t>(1, _elements.capacity() * 2 + kIncrement));
        }
    }

    std::vector<T> _elements;
};

// Liste d'usage courant (résultats de recherche, listes de parties) : un type distinct de
// ListeT<T, 2, 1, unsigned long>, pour que les deux se surchargent.
template <typename T> class ListeC : public ListeT<T, 4, 0, unsigned long>
{
public:
    using ListeT<T, 4, 0, unsigned long>::ListeT;
};

} // namespace sdd
