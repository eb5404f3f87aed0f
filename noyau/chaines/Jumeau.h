#pragma once

#include <utility>

namespace sdd::detail {

// Jumeau const d'une opération qui modifie : la même opération, sur une copie rendue telle
// quelle (sans la copie supplémentaire qu'ajouterait « return Chaine(*this).Operation() »).
template <typename Chaine, typename Operation>
Chaine Jumeau(Chaine const& source, Operation&& operation)
{
    Chaine copie(source);
    std::forward<Operation>(operation)(copie);
    return copie;
}

} // namespace sdd::detail
