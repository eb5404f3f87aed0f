#include "noyau/erreurs/ExceptionDBus.h"

namespace sdd::exceptions {

ExceptionDBus::ExceptionDBus(eTypeException type, QString nom, QDBusError erreur)
    : Exception(UniChaine("Erreur DBus"), UniChaine()), _type(type), _nom(std::move(nom)),
      _erreur(std::move(erreur))
{
    // « a » sans accent : le texte est ainsi depuis toujours.
    QString modele;
    if (_type == kEnregistrementObjet) {
        modele = QStringLiteral("Erreur %3 a l'enregistrement de l'objet %1 : %2");
    } else if (_type == kEnregistrementService) {
        modele = QStringLiteral("Erreur %3 a l'enregistrement du service %1 : %2");
    } else {
        return;
    }
    // Remplissage en une fois : un %n dans le nom ne doit pas être repris.
    _explication =
        UniChaine(modele.arg(_nom, _erreur.message(), QString::number(int(_erreur.type()))));
}

ExceptionDBus::~ExceptionDBus() = default;
ExceptionApiDBus::~ExceptionApiDBus() = default;

ExceptionApiDBus::ExceptionApiDBus(QString const& texte, int code)
    : ExceptionModulePelimore(
          UniChaine("Exception API DBus."),
          UniChaine(QStringLiteral("%1 : code %2").arg(texte, QString::number(code))))
{
}

} // namespace sdd::exceptions
