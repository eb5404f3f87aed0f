#pragma once

#include "noyau/erreurs/Exceptions.h"

#include <QDBusError>
#include <QString>

namespace sdd::exceptions {

// Échec d'un enregistrement sur le bus ; garde le nom concerné et l'erreur entière.
class NOYAU_EXPORT ExceptionDBus : public Exception
{
public:
    enum eTypeException : int
    {
        kEnregistrementObjet = 0,
        kEnregistrementService = 1
    };

    ExceptionDBus(eTypeException type, QString nom, QDBusError erreur);
    ~ExceptionDBus() override;

    eTypeException Type() const { return _type; }
    QString const& Nom() const { return _nom; }
    QDBusError const& Erreur() const { return _erreur; }

private:
    eTypeException _type;
    QString _nom;
    QDBusError _erreur;
};

class NOYAU_EXPORT ExceptionApiDBus : public ExceptionModulePelimore
{
public:
    ~ExceptionApiDBus() override;
    ExceptionApiDBus(QString const& texte, int code);
};

} // namespace sdd::exceptions
