#pragma once

// Vérification des positions, commune aux deux classes de chaînes : toute position au-delà
// du texte lève sdd::exceptions::IndexHorsBorne(index, 0, longueur).
namespace sdd::detail {

// Unité d'index i : [0, longueur).
void VerifieIndex(unsigned long i, unsigned long longueur);

// Position entre deux unités : [0, longueur].
void VerifiePosition(unsigned long pos, unsigned long longueur);

// Intervalle de n unités depuis pos. La fin rapportée ne déborde jamais : au-delà de
// 2^31 - 1 elle vaut 2^31 - 1, le plus grand nombre que le texte signé sait écrire.
void VerifieIntervalle(unsigned long pos, unsigned long n, unsigned long longueur);

} // namespace sdd::detail
