// Ordre selon la langue : le collateur ICU de UniChaine, seul endroit où ICU est vu.
#include "noyau/chaines/UniChaine.h"

#include "noyau/erreurs/Exceptions.h"

#include <unicode/ucol.h>

UCollator* UniChaine::monCollatorLocale = nullptr;

namespace {

[[noreturn]] void LanceEchec(UniChaine const& locale, UErrorCode erreur)
{
    throw sdd::exceptions::OuvertureEchouee(UniChaine("Collateur ICU pour « ") + locale +
                                            UniChaine(" » : ") + UniChaine(u_errorName(erreur)));
}

} // namespace

void UniChaine::InitialiseLocale(UniChaine const& locale)
{
    QByteArray const nom = locale.DonneQString().toUtf8();
    UErrorCode erreur = U_ZERO_ERROR;
    UCollator* const collateur = ucol_open(nom.constData(), &erreur);
    if (U_FAILURE(erreur)) {
        ucol_close(collateur);
        LanceEchec(locale, erreur);
    }
    // Secondaire : lettres et accents comptent, la casse non ; décalé : espaces et
    // ponctuation ne comptent pas à ces niveaux.
    ucol_setStrength(collateur, UCOL_SECONDARY);
    ucol_setAttribute(collateur, UCOL_ALTERNATE_HANDLING, UCOL_SHIFTED, &erreur);
    if (U_FAILURE(erreur)) {
        ucol_close(collateur);
        LanceEchec(locale, erreur);
    }
    LibereLocale();
    monCollatorLocale = collateur;
}

void UniChaine::LibereLocale() noexcept
{
    if (monCollatorLocale != nullptr) {
        ucol_close(monCollatorLocale);
        monCollatorLocale = nullptr;
    }
}

int UniChaine::CompareLocale(UniChaine const& autre) const
{
    if (monCollatorLocale == nullptr) {
        return Compare(autre);
    }
    return ucol_strcoll(monCollatorLocale, reinterpret_cast<UChar const*>(_texte.utf16()),
                        _texte.size(), reinterpret_cast<UChar const*>(autre._texte.utf16()),
                        autre._texte.size());
}
