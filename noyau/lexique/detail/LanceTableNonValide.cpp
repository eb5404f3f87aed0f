#include "noyau/lexique/detail/LanceTableNonValide.h"

#include "noyau/erreurs/Exceptions.h"

namespace sdd::detail {

void LanceTableNonValide(char const* explication)
{
    throw exceptions::TableNonValide(UniChaine(explication));
}

} // namespace sdd::detail
