#pragma once

#include "noyau/Export.h"
#include "noyau/chaines/UniChaine.h"

// Les fautes qu'un appelant ne peut pas prévoir. Aucune de ces classes ne dérive de
// std::exception : les programmes de la suite les attrapent à part.
namespace sdd::exceptions {

class NOYAU_EXPORT Exception
{
public:
    Exception(UniChaine const& message, UniChaine const& explication);
    virtual ~Exception();

    UniChaine Message() const { return _message; }
    UniChaine Explication() const { return _explication; }
    // Message, " : ", explication ; le séparateur reste même sans explication.
    UniChaine MessageComplet() const;

protected:
    UniChaine _message;
    UniChaine _explication;
};

class NOYAU_EXPORT TableNonValide : public Exception
{
public:
    ~TableNonValide() override;
    explicit TableNonValide(UniChaine const& explication);
};

class NOYAU_EXPORT ErreurDeserialisation : public Exception
{
public:
    ~ErreurDeserialisation() override;
    explicit ErreurDeserialisation(UniChaine const& explication);
};

class NOYAU_EXPORT OuvertureEchouee : public Exception
{
public:
    ~OuvertureEchouee() override;
    explicit OuvertureEchouee(UniChaine const& explication);
};

class NOYAU_EXPORT MemoireInsuffisante : public Exception
{
public:
    ~MemoireInsuffisante() override;
    explicit MemoireInsuffisante(UniChaine const& explication);
};

class NOYAU_EXPORT ValeurIndefinieIterateur : public Exception
{
public:
    ~ValeurIndefinieIterateur() override;
    ValeurIndefinieIterateur();
};

class NOYAU_EXPORT LiberationObjetImpossible : public Exception
{
public:
    ~LiberationObjetImpossible() override;
    LiberationObjetImpossible();
};

// Les trois nombres ne vivent que dans l'explication.
class NOYAU_EXPORT IndexHorsBorne : public Exception
{
public:
    ~IndexHorsBorne() override;
    IndexHorsBorne(unsigned long index, unsigned long min, unsigned long max);
};

class NOYAU_EXPORT OperationInvalide : public Exception
{
public:
    ~OperationInvalide() override;
    OperationInvalide();
};

class NOYAU_EXPORT PointeurInvalide : public Exception
{
public:
    ~PointeurInvalide() override;
    PointeurInvalide();
};

class NOYAU_EXPORT ExceptionX11 : public Exception
{
public:
    ~ExceptionX11() override;
    explicit ExceptionX11(unsigned long fenetre);
};

// Base des erreurs levées par les modules du produit.
class NOYAU_EXPORT ExceptionModulePelimore : public Exception
{
public:
    using Exception::Exception;
    ~ExceptionModulePelimore() override;
};

// Hors ligne, pour que les chemins rapides qui vérifient un index restent courts.
[[noreturn]] NOYAU_EXPORT void LanceIndexHorsBorne(unsigned long index, unsigned long min,
                                                   unsigned long max);

} // namespace sdd::exceptions

// Lance l'entier nu, pour un appelant immédiat qui attrape int.
[[noreturn]] NOYAU_EXPORT void LanceException(int code);
