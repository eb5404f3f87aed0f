#pragma once

#include <cstdarg>
#include <string>

namespace sdd::detail {

// Mise en forme à la printf (format en UTF-8, nombres sans locale) ; « %S » prend une
// chaîne UTF-16 terminée par un zéro.
std::u16string Formate(char const* format, va_list arguments);

} // namespace sdd::detail
