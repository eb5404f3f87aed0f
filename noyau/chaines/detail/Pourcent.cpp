#include "noyau/chaines/detail/Pourcent.h"

namespace sdd::detail {

namespace {

unsigned ValeurHexa(char16_t c) noexcept
{
    if (c >= u'0' && c <= u'9') {
        return c - u'0';
    }
    if (c >= u'A' && c <= u'F') {
        return c - u'A' + 10;
    }
    if (c >= u'a' && c <= u'f') {
        return c - u'a' + 10;
    }
    return 0;
}

} // namespace

std::string DesechappePourcent(char16_t const* unites, std::size_t n)
{
    std::string octets;
    octets.reserve(n);
    for (std::size_t i = 0; i < n; ++i) {
        if (unites[i] == u'%' && i + 2 < n) {
            octets.push_back(
                static_cast<char>(ValeurHexa(unites[i + 1]) << 4 | ValeurHexa(unites[i + 2])));
            i += 2;
        } else {
            octets.push_back(static_cast<char>(unites[i] & 0xFF));
        }
    }
    return octets;
}

} // namespace sdd::detail
