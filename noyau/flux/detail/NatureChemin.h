#pragma once

#include <QString>

#include <cstdint>

// Ce que désigne un chemin, demandé avant toute ouverture : ouvrir un tube nommé bloque
// jusqu'à l'autre bout, et un répertoire ou un périphérique se liraient comme un fichier.
namespace sdd::detail {

struct NatureChemin
{
    enum eGenre : unsigned char
    {
        kAbsent,    // rien, ou rien qui se laisse voir : l'ouverture décidera
        kOrdinaire, // fichier ordinaire
        kAutre      // répertoire, tube, socket, périphérique
    };

    eGenre genre = kAbsent;
    std::uint64_t taille = 0; // fichier ordinaire seulement

    bool EstOrdinaire() const noexcept { return genre == kOrdinaire; }
    // Une écriture crée le fichier absent ou réécrit le fichier ordinaire, rien d'autre.
    bool AccepteEcriture() const noexcept { return genre != kAutre; }
};

// chemin : les octets que recevra l'ouverture. Les liens symboliques sont suivis.
NatureChemin DonneNatureChemin(char const* chemin);
// Pour les classes qui ouvrent par QFile : un chemin de ressource (« :/… ») est un fichier
// ordinaire quand il existe ; les autres passent par les octets que QFile leur donne.
NatureChemin DonneNatureChemin(QString const& chemin);

} // namespace sdd::detail
