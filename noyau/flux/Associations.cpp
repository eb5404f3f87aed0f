#include "noyau/flux/Associations.h"

#include "noyau/erreurs/Exceptions.h"

#include <algorithm>
#include <ostream>

namespace sdd {

Associations::Associations(Associations const& autre)
    : _valeurs(autre._nombre != 0 ? new unsigned char[autre._nombre] : nullptr),
      _nombre(autre._nombre)
{
    std::copy_n(autre._valeurs.get(), _nombre, _valeurs.get());
}

Associations& Associations::operator=(Associations const& autre)
{
    if (this != &autre) {
        *this = Associations(autre);
    }
    return *this;
}

Associations::~Associations() = default;

void Associations::Associe(unsigned char cle, unsigned char valeur)
{
    if (cle == kVide) { // garde : la table ne peut pas compter 256 entrées
        exceptions::LanceIndexHorsBorne(cle, 0, kVide - 1);
    }
    if (cle >= _nombre) {
        Agrandi(static_cast<unsigned char>(cle + 1));
    }
    _valeurs[cle] = valeur;
}

void Associations::Agrandi(unsigned char n)
{
    std::unique_ptr<unsigned char[]> valeurs(new unsigned char[n]);
    std::fill_n(valeurs.get(), n, kVide);
    std::copy_n(_valeurs.get(), std::min(_nombre, n), valeurs.get()); // garde si n < nombre
    _valeurs = std::move(valeurs);
    _nombre = n;
}

signed char Associations::Donne(unsigned char cle) const noexcept
{
    return static_cast<signed char>(cle < _nombre ? _valeurs[cle] : kVide);
}

bool Associations::Possede(unsigned char cle) const noexcept
{
    return cle < _nombre && _valeurs[cle] < kVide;
}

std::ostream& operator<<(std::ostream& flux, Associations const& associations)
{
    flux << "Associations(";
    for (unsigned int cle = 0; cle < associations.DonneNombre(); ++cle) {
        if (cle != 0) {
            flux << ',';
        }
        auto const c = static_cast<unsigned char>(cle);
        if (associations.Possede(c)) {
            // Volontaire : la clé en caractère, la valeur en nombre.
            flux << '[' << static_cast<char>(c) << ','
                 << static_cast<unsigned int>(static_cast<unsigned char>(associations.Donne(c)))
                 << ']';
        } else {
            flux << "Vide";
        }
    }
    return flux << ')';
}

} // namespace sdd
