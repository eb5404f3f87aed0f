#pragma once

#include <string>

namespace sdd::detail {

// Nom de fil gardé pour toute la vie du processus, coupé aux 15 octets que Linux retient
// (sans couper un caractère UTF-8) : le même nom rend le même pointeur.
char const* NomDeFil(std::string const& nom);
// Donne ce nom au fil appelant, s'il ne le porte pas déjà (un appel système sinon).
void NommeFilCourant(char const* nom) noexcept;

} // namespace sdd::detail
