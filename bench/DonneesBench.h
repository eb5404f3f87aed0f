#pragma once

#include <string>
#include <vector>

// Textes réels partagés par les mesures, lus une fois.

// Les mots de /usr/share/dict/french, un par ligne, en UTF-16.
std::u16string const& DonneMotsFrancais();

// Les mêmes mots, un par élément, en UTF-8.
std::vector<std::string> const& DonneListeMotsFrancaisUTF8();

// Les traductions françaises des catalogues de /usr/share/locale/fr/LC_MESSAGES, un
// message par élément, en UTF-8 : du vrai texte d'interface.
std::vector<std::string> const& DonneMessagesFrancaisUTF8();
