#pragma once

#include "noyau/Export.h"
#include "noyau/chaines/ChaineN.h"

#include <memory>

namespace sdd {

// Expression régulière compilée une fois (syntaxe d'ICU), pour chercher dans des textes
// UTF-16. Un motif invalide lève sdd::exceptions::Exception avec le nom d'erreur d'ICU.
class NOYAU_EXPORT ExpressionReguliere
{
public:
    explicit ExpressionReguliere(ChaineN const& motif, bool ignoreCasse = false);
    ~ExpressionReguliere();
    ExpressionReguliere(ExpressionReguliere const&) = delete;
    ExpressionReguliere& operator=(ExpressionReguliere const&) = delete;

    // Toutes les correspondances à partir de depuis, sans chevauchement, ajoutées à
    // *resultats (début, longueur) ; vrai s'il y en a au moins une.
    bool TrouveTout(char16_t const* texte, unsigned long longueur, unsigned long depuis,
                    ListeC<Paire<unsigned long, unsigned long>>* resultats) const;

private:
    struct Motif;
    std::unique_ptr<Motif> _motif;
};

} // namespace sdd
