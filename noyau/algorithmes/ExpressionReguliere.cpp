#include "noyau/algorithmes/ExpressionReguliere.h"

#include "noyau/erreurs/Exceptions.h"

#include <unicode/regex.h>
#include <unicode/utypes.h>

namespace sdd {

struct ExpressionReguliere::Motif
{
    std::unique_ptr<icu::RegexPattern> icu;
};

namespace {

[[noreturn]] void LanceErreurICU(UErrorCode erreur)
{
    throw exceptions::Exception(UniChaine("Expression régulière invalide"),
                                UniChaine(u_errorName(erreur)));
}

} // namespace

ExpressionReguliere::ExpressionReguliere(ChaineN const& motif, bool ignoreCasse)
    : _motif(std::make_unique<Motif>())
{
    UErrorCode erreur = U_ZERO_ERROR;
    UParseError position{};
    icu::UnicodeString const texte(motif.PreteUniCString(), static_cast<int32_t>(motif.Longueur()));
    _motif->icu.reset(icu::RegexPattern::compile(texte, ignoreCasse ? UREGEX_CASE_INSENSITIVE : 0,
                                                 position, erreur));
    if (U_FAILURE(erreur)) {
        LanceErreurICU(erreur);
    }
}

ExpressionReguliere::~ExpressionReguliere() = default;

bool ExpressionReguliere::TrouveTout(char16_t const* texte, unsigned long longueur,
                                     unsigned long depuis,
                                     ListeC<Paire<unsigned long, unsigned long>>* resultats) const
{
    if (longueur > static_cast<unsigned long>(INT32_MAX) || depuis > longueur) {
        exceptions::LanceIndexHorsBorne(depuis, 0, longueur);
    }
    // Alias en lecture seule : le texte n'est pas copié.
    icu::UnicodeString const alias(false, texte, static_cast<int32_t>(longueur));
    UErrorCode erreur = U_ZERO_ERROR;
    std::unique_ptr<icu::RegexMatcher> chercheur(_motif->icu->matcher(alias, erreur));
    if (U_FAILURE(erreur)) {
        LanceErreurICU(erreur);
    }
    bool trouve = false;
    int64_t debut = static_cast<int64_t>(depuis);
    while (chercheur->find(debut, erreur) && U_SUCCESS(erreur)) {
        int32_t const d = chercheur->start(erreur);
        int32_t const f = chercheur->end(erreur);
        trouve = true;
        if (resultats != nullptr) {
            resultats->Ajoute({static_cast<unsigned long>(d), static_cast<unsigned long>(f - d)});
        }
        // Une correspondance vide avance d'une unité pour ne pas boucler.
        debut = f > d ? f : f + 1;
        if (debut > static_cast<int64_t>(longueur)) {
            break;
        }
    }
    if (U_FAILURE(erreur)) {
        LanceErreurICU(erreur);
    }
    return trouve;
}

} // namespace sdd
