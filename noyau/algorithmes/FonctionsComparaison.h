#pragma once

namespace sdd {

// Ordre et égalité par défaut des tables typées : les opérateurs du type.
template <typename T> struct FonctionPlusPetit
{
    bool operator()(T const& a, T const& b) const { return a < b; }
};

template <typename T> struct FonctionEgalite
{
    bool operator()(T const& a, T const& b) const { return a == b; }
};

} // namespace sdd
