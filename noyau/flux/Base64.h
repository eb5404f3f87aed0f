#pragma once

#include "noyau/Export.h"

class UniChaine;

namespace sdd {

class TamponMemoire;

// Base64 standard (alphabet A-Z a-z 0-9 + /), complété par « = », sans retour à la ligne.
class NOYAU_EXPORT Base64
{
public:
    // Les octets valides de source, ajoutés à la position de cible ; aucun zéro final.
    static void Encode(TamponMemoire const& source, TamponMemoire& cible);
    // Les caractères valides de source, par groupes de quatre ; un « = » en troisième ou
    // quatrième place arrête tout. Ni contrôle ni rejet : un caractère hors de l'alphabet
    // vaut 0, un dernier groupe incomplet compte ses caractères manquants comme absents.
    static void Decode(TamponMemoire const& source, TamponMemoire& cible);
    // Les sizeof(unsigned long) octets du nombre, poids faible d'abord.
    static UniChaine EncodeNombreSimple(unsigned long nombre);
};

} // namespace sdd
