#include "noyau/chaines/detail/Formatage.h"

#include <QString>

#include <cstring>

namespace sdd::detail {

namespace {

// Traduit « %S » en « %ls », que Qt lit comme une suite d'unités UTF-16.
std::string TraduisFormat(char const* format)
{
    std::string traduit;
    traduit.reserve(std::strlen(format) + 8);
    for (char const* p = format; *p != '\0';) {
        if (*p != '%') {
            traduit.push_back(*p++);
            continue;
        }
        traduit.push_back(*p++);
        char const* const debut = p;
        while (*p != '\0' && std::strchr("-+ #0123456789.*", *p) != nullptr) {
            ++p;
        }
        bool const avecTaille = *p != '\0' && std::strchr("hlLqjzt", *p) != nullptr;
        while (*p != '\0' && std::strchr("hlLqjzt", *p) != nullptr) {
            ++p;
        }
        traduit.append(debut, p);
        if (*p == 'S' && !avecTaille) {
            traduit.append("ls");
            ++p;
        } else if (*p != '\0') {
            traduit.push_back(*p++);
        }
    }
    return traduit;
}

} // namespace

std::u16string Formate(char const* format, va_list arguments)
{
    QString const texte = QString::vasprintf(TraduisFormat(format).c_str(), arguments);
    return std::u16string(reinterpret_cast<char16_t const*>(texte.utf16()), texte.size());
}

} // namespace sdd::detail
