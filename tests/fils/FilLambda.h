#pragma once

#include "noyau/fils/DFil.h"

#include <functional>

// Un DFil dont le corps est une fonction, pour les tests.
class FilLambda : public sdd::DFil
{
public:
    explicit FilLambda(std::function<void()> corps, int ident = 0)
        : DFil(ident), _corps(std::move(corps))
    {
    }
    ~FilLambda() override { AttendsLaFin(); }
    void Execute() override { _corps(); }

private:
    std::function<void()> _corps;
};
