#include "noyau/erreurs/DAlerteInfo.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

namespace {

std::string Texte(UniChaine const& u)
{
    return QString(u).toStdString();
}

// Remet l'état de classe à celui du départ, quoi qu'il arrive au test.
struct EtatDecoration
{
    ~EtatDecoration()
    {
        DAlerteInfo::avecDecoration = false;
        DAlerteInfo::DonneDecoration() = UniChaine();
        QCoreApplication::setApplicationName(QString());
    }
};

DAlerteInfo Alerte(UniChaine const& titre)
{
    return DAlerteInfo(DAlerteInfo::kAlerte, "m", "e", titre);
}

} // namespace

TEST(DAlerteInfo, TitreParDefaut)
{
    EtatDecoration const remise;
    DAlerteInfo const sansTitre = Alerte("");
    EXPECT_EQ(Texte(sansTitre.DonneTitreFenetre()), "Pelimore 9");
    EXPECT_TRUE(sansTitre.EstTitreParDefaut());
    DAlerteInfo const avecTitre = Alerte("Mon titre");
    EXPECT_EQ(Texte(avecTitre.DonneTitreFenetre()), "Mon titre");
    EXPECT_FALSE(avecTitre.EstTitreParDefaut());

    // La décoration ne sert que si avecDecoration est vrai.
    DAlerteInfo::DonneDecoration() = UniChaine("Pro");
    EXPECT_EQ(Texte(Alerte("").DonneTitreFenetre()), "Pelimore 9");
    DAlerteInfo::avecDecoration = true;
    EXPECT_EQ(Texte(Alerte("").DonneTitreFenetre()), "Pelimore 9 Pro");
    QCoreApplication::setApplicationName("L'Écrivain");
    DAlerteInfo const decore = Alerte("");
    // Le titre fabriqué passe lui aussi par la typographie.
    EXPECT_EQ(Texte(decore.DonneTitreFenetre()), "L’Écrivain Pro");
    EXPECT_TRUE(decore.EstTitreParDefaut());
    DAlerteInfo::DonneDecoration() = UniChaine();
    EXPECT_EQ(Texte(Alerte("").DonneTitreFenetre()), "L’Écrivain");
    EXPECT_EQ(Texte(Alerte("T").DonneTitreFenetre()), "T");

    DAlerteInfoAssertionQt const assertion(DAlerteInfo::kAttention, "a", "b");
    EXPECT_EQ(Texte(assertion.DonneTitreFenetre()), "L’Écrivain");
    EXPECT_TRUE(assertion.EstTitreParDefaut());
    EXPECT_EQ(assertion.DonneTypeDialogue(), DAlerteInfo::kAttention);
}

TEST(DAlerteInfo, TypographieEtFinsDeLigne)
{
    char const* const brut = "l'été « chaud »\r\nfin\rici\n\r\r\r\n«\u00A0déjà\u00A0» «x»";
    char const* const attendu = "l’été «\u00A0chaud\u00A0»\nfin\nici\n\n\n\n«\u00A0déjà\u00A0» «x»";
    DAlerteInfo const a(DAlerteInfo::kInformation, brut, brut, brut);
    EXPECT_EQ(Texte(a.DonneMessage()), attendu);
    EXPECT_EQ(Texte(a.DonneExplication()), attendu);
    EXPECT_EQ(Texte(a.DonneTitreFenetre()), attendu);
    EXPECT_FALSE(a.EstTitreParDefaut());
    // Deux espaces : une seule devient insécable, de chaque côté.
    DAlerteInfo const b(DAlerteInfo::kInformation, "«  x  »", "", "t");
    EXPECT_EQ(Texte(b.DonneMessage()), "«\u00A0 x \u00A0»");
}

TEST(DAlerteInfo, Nulle)
{
    DAlerteInfo const vide;
    EXPECT_TRUE(vide.EstNULL());
    EXPECT_TRUE(vide.EstTitreParDefaut());
    EXPECT_EQ(vide.DonneTypeDialogue(), DAlerteInfo::kInconnu);
    EXPECT_TRUE(DAlerteInfo(vide).EstNULL());
    // Le titre par défaut la rend non nulle.
    EXPECT_FALSE(DAlerteInfo(DAlerteInfo::kInconnu, "", "", "").EstNULL());
    DAlerteInfo const typee(DAlerteInfo::kQuestion, "", "", "");
    EXPECT_FALSE(typee.EstNULL());
}

TEST(DAlerteInfo, ExplicationDErreur)
{
    auto explication = [](int numero, int d1, int d2) {
        return Texte(DAlerteInfoErreur(DAlerteInfo::kAlerte, "M", "E", numero, "T", d1, d2)
                         .DonneExplication());
    };
    EXPECT_EQ(explication(12, -1, 7), "E\n\n Code Erreur: 12; 7;");
    EXPECT_EQ(explication(-1, -1, -1), "E");
    EXPECT_EQ(explication(-1, 3, 4), "E 3; 4;");
    EXPECT_EQ(explication(-5, 0, -1), "E\n\n Code Erreur: -5; 0;");
    EXPECT_EQ(explication(INT32_MIN, INT32_MAX, -2),
              "E\n\n Code Erreur: -2147483648; 2147483647; -2;");

    DAlerteInfoErreur const e(DAlerteInfo::kAlerte, "Échec", "E", 12, "T", -1, 7);
    EXPECT_EQ(Texte(e.DonneChainePourStdException()), "Échec E\n\n Code Erreur: 12; 7;");
    // Le journal prend l'explication propre, sans les numéros.
    EXPECT_EQ(Texte(e.DonneMessagePourJournalisation()), "(ALERTE)\tÉchec\tE\t");
}

TEST(DAlerteInfo, EtiquettesDuJournal)
{
    char const* const etiquettes[] = {"(Inconnu)",     "(Question)", "(Information)", "(Attention)",
                                      "(ALERTE)",      "(Autre)",    "(Attention)",   "(Autre)",
                                      "(IconeMaison)", "(Autre)"};
    for (int type = 0; type < 10; ++type) {
        DAlerteInfo const a(static_cast<DAlerteInfo::eTypeDialogue>(type), "Le message",
                            "L'explication", "T");
        EXPECT_EQ(Texte(a.DonneMessagePourJournalisation()),
                  std::string(etiquettes[type]) + "\tLe message\tL’explication\t")
            << type;
    }
    EXPECT_EQ(Texte(DAlerteInfo(DAlerteInfo::kAlerte, "m", "", "t").DonneChainePourStdException()),
              "m ");
}

TEST(DAlerteInfo, Copies)
{
    EtatDecoration const remise;
    DAlerteInfoErreur const erreur(DAlerteInfo::kAlerte, "M", "E", 12, "", -1, 7);
    std::string const complete = "E\n\n Code Erreur: 12; 7;";

    // Dans une alerte simple, les numéros sont figés dans l'explication.
    DAlerteInfo const simple(erreur);
    EXPECT_EQ(Texte(simple.DonneExplication()), complete);
    EXPECT_EQ(Texte(simple.DonneMessagePourJournalisation()), "(ALERTE)\tM\t" + complete + "\t");
    EXPECT_EQ(Texte(simple.DonneTitreFenetre()), "Pelimore 9");
    EXPECT_TRUE(simple.EstTitreParDefaut());
    DAlerteInfo affectee;
    affectee = erreur;
    EXPECT_EQ(Texte(affectee.DonneExplication()), complete);
    EXPECT_TRUE(affectee.EstTitreParDefaut());

    // Une alerte d'erreur copiée ne répète pas ses numéros.
    DAlerteInfoErreur const copie(erreur);
    EXPECT_EQ(Texte(copie.DonneExplication()), complete);
    EXPECT_EQ(Texte(copie.DonneMessagePourJournalisation()), "(ALERTE)\tM\tE\t");
    DAlerteInfoErreur autre(DAlerteInfo::kQuestion, "x", "y", -1, "z");
    autre = erreur;
    EXPECT_EQ(Texte(autre.DonneExplication()), complete);
    EXPECT_EQ(autre.DonneTypeDialogue(), DAlerteInfo::kAlerte);
    EXPECT_TRUE(autre.EstTitreParDefaut());

    // Drapeau de la copie : faux s'il l'était, sinon !avecDecoration.
    DAlerteInfo::avecDecoration = true;
    EXPECT_FALSE(DAlerteInfo(erreur).EstTitreParDefaut());
    EXPECT_FALSE(DAlerteInfo(Alerte("T")).EstTitreParDefaut());
    DAlerteInfo::avecDecoration = false;
    EXPECT_FALSE(DAlerteInfo(Alerte("T")).EstTitreParDefaut());
    EXPECT_TRUE(DAlerteInfo(erreur).EstTitreParDefaut());
}
