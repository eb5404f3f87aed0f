#pragma once

#include "noyau/Export.h"

#include <iosfwd>
#include <memory>

namespace sdd {

template <typename T> class Serialiseur;

// Table partielle d'un octet clé vers un octet valeur ; 255 marque une entrée vide. Les
// clés vont de 0 à 254 (le nombre d'entrées tient dans un octet).
class NOYAU_EXPORT Associations
{
public:
    static constexpr unsigned char kVide = 255;

    Associations() noexcept = default;
    Associations(Associations const& autre);
    Associations& operator=(Associations const& autre);
    Associations(Associations&&) noexcept = default;
    Associations& operator=(Associations&&) noexcept = default;
    ~Associations();

    // Agrandit la table jusqu'à cle au besoin ; la valeur 255 efface l'entrée. La clé 255
    // lève IndexHorsBorne.
    void Associe(unsigned char cle, unsigned char valeur);
    // Porte la table à n entrées ; les nouvelles sont vides.
    void Agrandi(unsigned char n);
    // La valeur, ou -1 pour une entrée vide ou hors de la table (signed char partout).
    signed char Donne(unsigned char cle) const noexcept;
    bool Possede(unsigned char cle) const noexcept;
    unsigned char DonneNombre() const noexcept { return _nombre; }

private:
    friend class Serialiseur<Associations>;

    std::unique_ptr<unsigned char[]> _valeurs; // indexé par clé
    unsigned char _nombre = 0;
};

// Forme de mise au point : « Associations(Vide,[c,7]) », la clé écrite comme caractère.
NOYAU_EXPORT std::ostream& operator<<(std::ostream& flux, Associations const& associations);

} // namespace sdd
