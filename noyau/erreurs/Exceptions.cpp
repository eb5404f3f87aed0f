#include "noyau/erreurs/Exceptions.h"

namespace sdd::exceptions {

namespace {

// Les nombres des textes passent par la conversion signée 32 bits : 2^32 - 1 s'écrit -1.
// C'est voulu, les autres diagnostics de la bibliothèque écrivent ainsi.
UniChaine EnDecimalSigne(unsigned long n)
{
    return UniChaine::DepuisNombre(static_cast<int>(n));
}

} // namespace

Exception::Exception(UniChaine const& message, UniChaine const& explication)
    : _message(message), _explication(explication)
{
}

Exception::~Exception() = default;

UniChaine Exception::MessageComplet() const
{
    return _message + UniChaine(u" : ") + _explication;
}

TableNonValide::TableNonValide(UniChaine const& explication)
    : Exception(UniChaine("Table non valide"), explication)
{
}

ErreurDeserialisation::ErreurDeserialisation(UniChaine const& explication)
    : Exception(UniChaine("Erreur de désérialisation"), explication)
{
}

OuvertureEchouee::OuvertureEchouee(UniChaine const& explication)
    : Exception(UniChaine("Ouverture échouée"), explication)
{
}

// Sans accent, comme les programmes l'attendent.
MemoireInsuffisante::MemoireInsuffisante(UniChaine const& explication)
    : Exception(UniChaine("Memoire insuffisante"), explication)
{
}

ValeurIndefinieIterateur::ValeurIndefinieIterateur()
    : Exception(UniChaine("Impossible d'accéder à la valeur dans l'itérateur"),
                UniChaine("L'itérateur doit être à la fin."))
{
}

LiberationObjetImpossible::LiberationObjetImpossible()
    : Exception(UniChaine("Impossible de libérer l'objet dans l'espace mémoire"), UniChaine())
{
}

IndexHorsBorne::IndexHorsBorne(unsigned long index, unsigned long min, unsigned long max)
    : Exception(UniChaine("L'index est hors limite"), UniChaine("index=") + EnDecimalSigne(index) +
                                                          UniChaine(" min=") + EnDecimalSigne(min) +
                                                          UniChaine(" max=") + EnDecimalSigne(max))
{
}

OperationInvalide::OperationInvalide()
    : Exception(UniChaine("L'opération est invalide"), UniChaine())
{
}

PointeurInvalide::PointeurInvalide()
    : Exception(UniChaine("Violation d'accès à la mémoire."), UniChaine())
{
}

ExceptionX11::ExceptionX11(unsigned long fenetre)
    : Exception(UniChaine("Opération illégale sur la fenêtre X11 # ") + EnDecimalSigne(fenetre),
                UniChaine())
{
}

ExceptionModulePelimore::~ExceptionModulePelimore() = default;
TableNonValide::~TableNonValide() = default;
ErreurDeserialisation::~ErreurDeserialisation() = default;
OuvertureEchouee::~OuvertureEchouee() = default;
MemoireInsuffisante::~MemoireInsuffisante() = default;
ValeurIndefinieIterateur::~ValeurIndefinieIterateur() = default;
LiberationObjetImpossible::~LiberationObjetImpossible() = default;
IndexHorsBorne::~IndexHorsBorne() = default;
OperationInvalide::~OperationInvalide() = default;
PointeurInvalide::~PointeurInvalide() = default;
ExceptionX11::~ExceptionX11() = default;

void LanceIndexHorsBorne(unsigned long index, unsigned long min, unsigned long max)
{
    throw IndexHorsBorne(index, min, max);
}

} // namespace sdd::exceptions

void LanceException(int code)
{
    throw code;
}
