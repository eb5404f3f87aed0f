#include "noyau/erreurs/ExceptionCode.h"
#include "noyau/erreurs/Exceptions.h"

#include <gtest/gtest.h>

#include <cstring>
#include <type_traits>

static_assert(std::is_base_of_v<std::exception, ExceptionCode>);
static_assert(!std::is_base_of_v<sdd::exceptions::Exception, ExceptionCode>);

TEST(ExceptionCode, AttrapeeCommeExceptionStandard)
{
    char const* attendu = "Échec d’écriture Disque «\u00A0plein\u00A0»\n\n Code Erreur: 5; 28;";
    try {
        throw ExceptionCode(DAlerteInfoErreur(DAlerteInfo::kAlerte, "Échec d'écriture",
                                              "Disque « plein »", 5, "", 28, -1));
    } catch (std::exception const& e) {
        char const* const texte = e.what();
        EXPECT_STREQ(texte, attendu);
        // Le texte ne bouge pas d'un appel à l'autre.
        EXPECT_EQ(e.what(), texte);
        auto const* code = dynamic_cast<ExceptionCode const*>(&e);
        ASSERT_NE(code, nullptr);
        EXPECT_EQ(code->DonneAlerte().DonneTypeDialogue(), DAlerteInfo::kAlerte);
        EXPECT_EQ(QString(code->DonneAlerte().DonneMessage()).toStdString(), "Échec d’écriture");
        // Une copie a son propre texte, qui survit à l'original.
        auto* copie = new ExceptionCode(*code);
        EXPECT_STREQ(copie->what(), attendu);
        delete copie;
    }
    ExceptionCode const vide{DAlerteInfo()};
    EXPECT_STREQ(vide.what(), " ");
}
