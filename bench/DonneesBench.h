#pragma once

#include <string>

// Textes réels partagés par les mesures, lus une fois.

// Les mots de /usr/share/dict/french, un par ligne, en UTF-16.
std::u16string const& DonneMotsFrancais();
