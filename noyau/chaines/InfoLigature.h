#pragma once

// Une ligature et les lettres qu'elle remplace (au plus trois, complétées par des zéros).
// Car vaut char16_t pour les tables UTF-16, char pour celles en octets Mac OS Roman.
template <typename Car> struct InfoLigature
{
    Car ligature;
    Car lettres[3];
};
