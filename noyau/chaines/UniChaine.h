#pragma once

#include "noyau/Export.h"
#include "noyau/chaines/UniCaractere.h"

// Chaîne UTF-16 tournée vers Qt.
class NOYAU_EXPORT UniChaine
{
public:
    // Caractère qui remplace les membres de chaque ensemble typographique de
    // UniCaractere::sCarsARemplacer, dans le même ordre.
    static const char16_t sCarsCanoniques[kNbEnsemblesTypographiques];
};
