#include <noyau/noyau.h>

#include <cstdio>

int main()
{
    bool bon = gInfoUniCaractere[u'é'][kInfoMajuscule] == u'É'
               && UniCaractere::gInfosLigature[0].ligature == u'Œ';
    std::puts(bon ? "Noyau répond" : "Noyau se trompe");
    return bon ? 0 : 1;
}
