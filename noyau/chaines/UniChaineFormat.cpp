// UniChaine : passage vers sdd::ChaineN et mise en forme à la printf.

#include "noyau/chaines/ChaineN.h"
#include "noyau/chaines/UniChaine.h"
#include "noyau/chaines/detail/Formatage.h"
#include "noyau/chaines/detail/UnitesQString.h"

UniChaine::UniChaine(sdd::ChaineN const& texte)
    : _texte(sdd::detail::EnQString({texte.PreteUniCString(), texte.Longueur()}))
{
}

sdd::ChaineN UniChaine::DonneChaineN() const
{
    return sdd::ChaineN(PreteUniCString(), static_cast<unsigned long>(Longueur()));
}

UniChaine::UniChaine(Codage codage, char const* format, ...) : UniChaine()
{
    va_list arguments;
    va_start(arguments, format);
    sdd::detail::FinArguments fin{arguments};
    vsprintf(codage, format, arguments);
}

UniChaine& UniChaine::vsprintf(char const* format, va_list arguments)
{
    return vsprintf(kUTF8, format, arguments);
}

UniChaine& UniChaine::vsprintf(Codage codage, char const* format, va_list arguments)
{
    *this = vFormat(UniChaine(format, codage), arguments);
    return *this;
}

UniChaine& UniChaine::sprintf(char const* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    sdd::detail::FinArguments fin{arguments};
    vsprintf(format, arguments);
    return *this;
}

UniChaine& UniChaine::sprintf(Codage codage, char const* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    sdd::detail::FinArguments fin{arguments};
    vsprintf(codage, format, arguments);
    return *this;
}

UniChaine UniChaine::vFormat(UniChaine const& format, va_list arguments)
{
    va_list copie; // un va_list reçu en paramètre ne se passe pas par adresse
    va_copy(copie, arguments);
    sdd::detail::FinArguments fin{copie};
    return UniChaine(sdd::detail::EnQString(
        sdd::detail::Formate(sdd::detail::EtendueDe(format._texte), &copie)));
}

UniChaine UniChaine::Format(UniChaine format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    sdd::detail::FinArguments fin{arguments};
    return vFormat(format, arguments);
}
