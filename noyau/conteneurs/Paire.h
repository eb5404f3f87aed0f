#pragma once

namespace sdd {

// Couple de valeurs, comparé membre à membre (premier, puis second).
template <typename A, typename B> struct Paire
{
    A premier{};
    B second{};

    friend bool operator==(Paire const& x, Paire const& y)
    {
        return x.premier == y.premier && x.second == y.second;
    }
    friend bool operator!=(Paire const& x, Paire const& y) { return !(x == y); }
    friend bool operator<(Paire const& x, Paire const& y)
    {
        return x.premier < y.premier || (!(y.premier < x.premier) && x.second < y.second);
    }
};

} // namespace sdd
