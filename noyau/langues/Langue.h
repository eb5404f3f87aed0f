#pragma once

// Langues de la bibliothèque et de ses programmes.
enum eLangue : int
{
    kLangueInvalide = 0,
    kLangueFrancais = 1,
    kLangueAnglais = 2,
    kNbLangues = 3
};
