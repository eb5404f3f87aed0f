#pragma once

#include "noyau/flux/Flux.h"

#include <cstddef>

namespace aide {

// Flux d'entrée qui n'est pas en mémoire pour la bibliothèque : la consultation sur disque y
// lit octet par octet. Les octets ne lui appartiennent pas.
class FluxSequentiel : public sdd::FluxEntree
{
public:
    FluxSequentiel(unsigned char const* octets, std::size_t taille)
        : _octets(octets), _taille(static_cast<unsigned int>(taille))
    {
    }
    bool EstALaFin() const override { return _position >= _taille; }
    unsigned int DonnePosition() const override { return _position; }
    unsigned char Donne() override { return EstALaFin() ? 0 : _octets[_position++]; }
    unsigned int Donne(unsigned int n, unsigned char* dest) override
    {
        unsigned int i = 0;
        for (; i < n && !EstALaFin(); ++i) {
            dest[i] = Donne();
        }
        return i;
    }
    void PositionneAuDebut() override { _position = 0; }
    void Positionne(unsigned int position) override { _position = position; }
    void PositionneALaFin() override { _position = _taille; }

private:
    unsigned char const* _octets;
    unsigned int _taille;
    unsigned int _position = 0;
};

} // namespace aide
