#pragma once

#include <string>

namespace sdd::detail {

// Nom de fil gardé pour toute la vie du processus, coupé aux 15 octets que Linux retient
// (sans couper un caractère UTF-8) : le même nom rend le même pointeur.
char const* NomDeFil(std::string const& nom);
// Donne ce nom au fil appelant, s'il ne le porte pas déjà (un appel système sinon).
void NommeFilCourant(char const* nom) noexcept;

// Un fil de pool porte ce nom le temps d'un tour de file série, puis reprend le sien ; un
// fil qui n'appartient pas aux pools garde son nom (renommer le fil principal renommerait
// le processus).
class NomTemporaire
{
public:
    explicit NomTemporaire(char const* nom) noexcept;
    ~NomTemporaire();
    NomTemporaire(NomTemporaire const&) = delete;
    NomTemporaire& operator=(NomTemporaire const&) = delete;

private:
    char const* const _ancien;
};

} // namespace sdd::detail
