#include "noyau/erreurs/Assertions.h"

bool gOnAsserteProgSpecifique = true;
bool gOnAsserteLNG = true;
bool gOnAsserteGenerale = true;
bool gOnAsserte = true;

bool OnAsserte() noexcept
{
    return gOnAsserteGenerale && gOnAsserte;
}

bool OnAsserteLNG() noexcept
{
    return gOnAsserteLNG && gOnAsserte;
}
