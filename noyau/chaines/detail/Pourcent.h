#pragma once

#include <cstddef>
#include <string>
#include <string_view>

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

// Garde chaque unité de garder ou des caractères sûrs, sauf celles de forcer ; les autres
// deviennent « %XX » par octet de la forme que code (étendue d'unités → octets) leur donne.
// Une suite d'unités à échapper se code d'un tenant : une paire de demi-codets y reste un
// seul caractère.
template <typename Code>
std::u16string EchappePourcent(std::u16string_view texte, std::u16string_view garder,
                               std::u16string_view forcer, Code code)
{
    std::u16string_view const surs(kCaracteresNonEchappes);
    auto const garde = [&](char16_t c) {
        return forcer.find(c) == forcer.npos &&
               (garder.find(c) != garder.npos || surs.find(c) != surs.npos);
    };
    std::u16string resultat;
    resultat.reserve(texte.size());
    std::size_t i = 0;
    while (i < texte.size()) {
        if (garde(texte[i])) {
            resultat.push_back(texte[i++]);
            continue;
        }
        std::size_t fin = i + 1;
        while (fin < texte.size() && !garde(texte[fin])) {
            ++fin;
        }
        for (unsigned char octet : code(texte.substr(i, fin - i))) {
            char16_t echappement[3];
            EcrisOctetEchappe(octet, echappement);
            resultat.append(echappement, 3);
        }
        i = fin;
    }
    return resultat;
}

// Octets d'un texte échappé : « % » suivi de deux unités donne un octet (une unité qui n'est
// pas un chiffre hexadécimal compte pour 0) ; toute autre unité donne ses huit bits bas,
// volontairement.
std::string DesechappePourcent(char16_t const* unites, std::size_t n);

} // namespace sdd::detail
