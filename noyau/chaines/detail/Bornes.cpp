#include "noyau/chaines/detail/Bornes.h"

#include "noyau/erreurs/Exceptions.h"

namespace sdd::detail {

namespace {

constexpr unsigned long kPlusGrandeFin = 0x7FFFFFFF;

} // namespace

void VerifieIndex(unsigned long i, unsigned long longueur)
{
    if (i >= longueur) {
        exceptions::LanceIndexHorsBorne(i, 0, longueur);
    }
}

void VerifiePosition(unsigned long pos, unsigned long longueur)
{
    if (pos > longueur) {
        exceptions::LanceIndexHorsBorne(pos, 0, longueur);
    }
}

void VerifieIntervalle(unsigned long pos, unsigned long n, unsigned long longueur)
{
    VerifiePosition(pos, longueur);
    if (n > longueur - pos) {
        unsigned long const fin = n > kPlusGrandeFin - pos ? kPlusGrandeFin : pos + n;
        exceptions::LanceIndexHorsBorne(fin, 0, longueur);
    }
}

} // namespace sdd::detail
