#pragma once

#include "noyau/chaines/detail/Retouches.h"

#include <QString>

#include <cstddef>
#include <limits>
#include <new>
#include <string>
#include <string_view>

// Les unités d'un QString vues comme celles des algorithmes communs, et retour.
namespace sdd::detail {

inline std::u16string_view EtendueDe(QString const& texte) noexcept
{
    return {reinterpret_cast<char16_t const*>(texte.utf16()), std::size_t(texte.size())};
}

// Au-delà, QString ne tient plus le texte : refus avant toute allocation.
inline void VerifieTailleQString(std::size_t unites)
{
    if (unites > std::size_t(std::numeric_limits<int>::max() / 2 - 64)) {
        throw std::bad_array_new_length();
    }
}

inline QString EnQString(std::u16string_view unites)
{
    VerifieTailleQString(unites.size());
    return QString(reinterpret_cast<QChar const*>(unites.data()), static_cast<int>(unites.size()));
}

// Applique repli à chaque unité ; le texte n'est détaché (copié) qu'au premier changement.
template <typename Repli> void TransformeUnites(QString& texte, Repli repli)
{
    std::size_t i = PremierChangement(EtendueDe(texte), repli);
    std::size_t const n = std::size_t(texte.size());
    if (i == n) {
        return;
    }
    auto const dest = reinterpret_cast<char16_t*>(texte.data());
    for (; i < n; ++i) {
        dest[i] = repli(dest[i]);
    }
}

} // namespace sdd::detail
