#include "noyau/erreurs/ExceptionDBus.h"
#include "noyau/erreurs/Exceptions.h"

#include <gtest/gtest.h>

#include <exception>
#include <type_traits>

using namespace sdd::exceptions;

namespace {

std::string Texte(UniChaine const& u)
{
    return QString(u).toStdString();
}

} // namespace

TEST(Exceptions, TextesExacts)
{
    struct Cas
    {
        Exception e;
        char const* message;
        char const* explication;
    };
    Cas const cas[] = {
        {TableNonValide("x"), "Table non valide", "x"},
        {ErreurDeserialisation("y"), "Erreur de désérialisation", "y"},
        {OuvertureEchouee("/a/b"), "Ouverture échouée", "/a/b"},
        {MemoireInsuffisante("z"), "Memoire insuffisante", "z"},
        {ValeurIndefinieIterateur(), "Impossible d'accéder à la valeur dans l'itérateur",
         "L'itérateur doit être à la fin."},
        {LiberationObjetImpossible(), "Impossible de libérer l'objet dans l'espace mémoire", ""},
        {IndexHorsBorne(5, 0, 4), "L'index est hors limite", "index=5 min=0 max=4"},
        {IndexHorsBorne(0xFFFFFFFFul, 2, 16), "L'index est hors limite", "index=-1 min=2 max=16"},
        {OperationInvalide(), "L'opération est invalide", ""},
        {PointeurInvalide(), "Violation d'accès à la mémoire.", ""},
        {ExceptionX11(12), "Opération illégale sur la fenêtre X11 # 12", ""},
        {ExceptionApiDBus("x", -3), "Exception API DBus.", "x : code -3"},
    };
    for (auto const& c : cas) {
        EXPECT_EQ(Texte(c.e.Message()), c.message);
        EXPECT_EQ(Texte(c.e.Explication()), c.explication);
        EXPECT_EQ(Texte(c.e.MessageComplet()), std::string(c.message) + " : " + c.explication);
    }
    EXPECT_EQ(Texte(OperationInvalide().MessageComplet()), "L'opération est invalide : ");
}

TEST(Exceptions, DBus)
{
    QDBusError const erreur(QDBusError::AccessDenied, "refusé %1");
    ExceptionDBus const objet(ExceptionDBus::kEnregistrementObjet, "/obj%2", erreur);
    EXPECT_EQ(Texte(objet.Message()), "Erreur DBus");
    // Les %n du nom et du message restent tels quels.
    std::string const type = std::to_string(int(QDBusError::AccessDenied));
    EXPECT_EQ(Texte(objet.Explication()),
              "Erreur " + type + " a l'enregistrement de l'objet /obj%2 : refusé %1");
    ExceptionDBus const service(ExceptionDBus::kEnregistrementService, "org.x", erreur);
    EXPECT_EQ(Texte(service.Explication()),
              "Erreur " + type + " a l'enregistrement du service org.x : refusé %1");
    ExceptionDBus const autre(ExceptionDBus::eTypeException(2), "n", erreur);
    EXPECT_TRUE(autre.Explication().EstVide());
    EXPECT_EQ(autre.Nom(), "n");
    EXPECT_EQ(autre.Erreur().type(), QDBusError::AccessDenied);
}

TEST(Exceptions, Filiation)
{
    EXPECT_THROW(throw ExceptionApiDBus("x", 1), ExceptionModulePelimore);
    EXPECT_THROW(throw ExceptionApiDBus("x", 1), Exception);
    EXPECT_THROW(LanceIndexHorsBorne(1, 0, 0), IndexHorsBorne);
    EXPECT_THROW(LanceException(-1), int);
    // Aucune classe de la famille ne passe pour une exception standard.
    static_assert(!std::is_base_of_v<std::exception, Exception>);
    bool attrapeeCommeStandard = false;
    try {
        try {
            throw TableNonValide("x");
        } catch (std::exception const&) {
            attrapeeCommeStandard = true;
        }
    } catch (Exception const&) {
    }
    EXPECT_FALSE(attrapeeCommeStandard);
}
