// UniChaine : passage vers sdd::ChaineN et mise en forme à la printf.

#include "noyau/chaines/ChaineN.h"
#include "noyau/chaines/UniChaine.h"
#include "noyau/chaines/detail/Formatage.h"

namespace {

QString EnQString(std::u16string const& texte)
{
    return QString(reinterpret_cast<QChar const*>(texte.data()), static_cast<int>(texte.size()));
}

} // namespace

UniChaine::UniChaine(sdd::ChaineN const& texte)
    : UniChaine(texte.PreteUniCString(), static_cast<int>(texte.Longueur()))
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
    _texte = EnQString(sdd::detail::Formate(format != nullptr ? format : "", arguments));
    return *this;
}

UniChaine& UniChaine::vsprintf(Codage codage, char const* format, va_list arguments)
{
    if (codage == kUTF8) {
        return vsprintf(format, arguments);
    }
    std::string const utf8 = QString(UniChaine(format, codage)).toStdString();
    return vsprintf(utf8.c_str(), arguments);
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
    return UniChaine().vsprintf(QString(format).toStdString().c_str(), arguments);
}

UniChaine UniChaine::Format(UniChaine format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    sdd::detail::FinArguments fin{arguments};
    return vFormat(format, arguments);
}
