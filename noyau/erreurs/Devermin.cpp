#include "noyau/erreurs/Devermin.h"

#include "noyau/chaines/ChaineN.h"
#include "noyau/erreurs/detail/FormatBorne.h"

#include <string>

void Devermin_DevermineStr(char const*, unsigned int, char const*) {}

void Devermin_Devermine(char const* fichier, unsigned int ligne)
{
    Devermin_DevermineStr(fichier, ligne, "");
}

void Devermin_DevermineFmt(char const* format, ...)
{
    // Borné au tampon : ne change rien pour un texte plus court, comme le demandent les
    // appelants.
    char tampon[sdd::detail::kTailleTamponFormat];
    va_list arguments;
    va_start(arguments, format);
    sdd::detail::FormateBorne(tampon, format, arguments);
    va_end(arguments);
    Devermin_DevermineStr("", 0, tampon);
}

void Devermin_DevermineFmtN(char const* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    sdd::detail::FinArguments fin{arguments};
    std::string const texte =
        sdd::ChaineN::vFormat(sdd::ChaineN(format, sdd::ChaineN::kUTF8), arguments)
            .DonneStdString();
    Devermin_DevermineStr("", 0, texte.c_str());
}
