#pragma once

#include "noyau/Export.h"
#include "noyau/chaines/InfoLigature.h"

// Un caractère d'un octet en Mac OS Roman.
class NOYAU_EXPORT Caractere
{
public:
    constexpr Caractere(char c = 0) noexcept : _c(c) {}
    constexpr operator char() const noexcept { return _c; }

    // Les ligatures Œ œ Æ æ et leurs lettres, en octets Mac OS Roman.
    static const InfoLigature<char> gInfosLigature[];
    static const unsigned long gNbInfosLigature;

private:
    char _c;
};
