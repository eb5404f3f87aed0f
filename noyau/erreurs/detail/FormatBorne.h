#pragma once

#include "noyau/chaines/detail/Formatage.h"

#include <cstdarg>
#include <cstddef>
#include <cstdio>

namespace sdd::detail {

// Taille des tampons de mise en forme des traces et du déverminage.
constexpr std::size_t kTailleTamponFormat = 10000;

// vsnprintf dans un tampon de kTailleTamponFormat octets : une sortie plus longue est
// coupée ; un format nul ou une erreur de mise en forme donnent le texte vide.
inline void FormateBorne(char (&tampon)[kTailleTamponFormat], char const* format, va_list arguments)
{
    if (format == nullptr || std::vsnprintf(tampon, sizeof tampon, format, arguments) < 0) {
        tampon[0] = '\0';
    }
}

} // namespace sdd::detail
