#pragma once

#include <cstddef>
#include <string>

// Échappement « %XX » commun aux deux classes de chaînes.
namespace sdd::detail {

// Caractères jamais échappés (sauf demande expresse).
inline constexpr char16_t kCaracteresNonEchappes[] =
    u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789;/?:@&=+$,[]-_.!~*'()";

// « %XX » d'un octet, chiffres en capitales.
inline void EcrisOctetEchappe(unsigned char octet, char16_t sortie[3]) noexcept
{
    constexpr char16_t kChiffres[] = u"0123456789ABCDEF";
    sortie[0] = u'%';
    sortie[1] = kChiffres[octet >> 4];
    sortie[2] = kChiffres[octet & 0xF];
}

// Octets d'un texte échappé : « % » suivi de deux unités donne un octet (une unité qui n'est
// pas un chiffre hexadécimal compte pour 0) ; toute autre unité donne ses huit bits bas,
// volontairement.
std::string DesechappePourcent(char16_t const* unites, std::size_t n);

} // namespace sdd::detail
