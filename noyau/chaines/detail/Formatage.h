#pragma once

#include <cstdarg>
#include <string>

namespace sdd::detail {

// Mise en forme à la printf (format en UTF-8, nombres sans locale) ; « %S » prend une
// chaîne UTF-16 terminée par un zéro.
std::u16string Formate(char const* format, va_list arguments);

// Appelle va_end à la sortie de la fonction, exception comprise.
struct FinArguments
{
    va_list& arguments;
    ~FinArguments() { va_end(arguments); }
};

} // namespace sdd::detail
