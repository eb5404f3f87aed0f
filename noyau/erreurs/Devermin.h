#pragma once

#include "noyau/Export.h"

// Sorties de déverminage : elles ne font rien dans cette version de la bibliothèque ;
// elles restent pour que les programmes qui les appellent se lient. Les textes mis en
// forme doivent tenir en 9999 octets (au-delà, ils sont coupés).
NOYAU_EXPORT void Devermin_DevermineStr(char const* fichier, unsigned int ligne, char const* texte);
NOYAU_EXPORT void Devermin_Devermine(char const* fichier, unsigned int ligne);
NOYAU_EXPORT void Devermin_DevermineFmt(char const* format, ...)
    __attribute__((format(printf, 1, 2)));
// Mise en forme de sdd::ChaineN::Format, format en UTF-8.
NOYAU_EXPORT void Devermin_DevermineFmtN(char const* format, ...);
