#pragma once

#include <cstdarg>
#include <string>
#include <string_view>

namespace sdd::detail {

// Mise en forme à la printf. Le format est pris unité pour unité : rien n'y est
// réinterprété, une marque d'ordre ou un demi-codet seul y restent. « %s » lit une chaîne
// UTF-8, « %S » et « %ls » une chaîne UTF-16 terminée par un zéro (nulles : rien) ; les
// nombres sont écrits par Qt, sans locale. arguments est lu par va_arg à travers le
// pointeur, comme le permet le C.
std::u16string Formate(std::u16string_view format, va_list* arguments);

// Appelle va_end à la sortie de la fonction, exception comprise.
struct FinArguments
{
    va_list& arguments;
    ~FinArguments() { va_end(arguments); }
};

} // namespace sdd::detail
