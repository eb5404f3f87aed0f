#include "noyau/flux/FichierMMap.h"

#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/TamponMemoire.h"

#include "AideCheminsSpeciaux.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <memory>
#include <string>

using sdd::FichierMMap;
using sdd::exceptions::IndexHorsBorne;
using sdd::exceptions::MemoireInsuffisante;

namespace {

class FichierMMapTest : public ::testing::Test
{
protected:
    // Fichier de taille octets valant i % 251.
    UniChemin Ecris(char const* nom, unsigned int taille)
    {
        std::string octets(taille, '\0');
        for (unsigned int i = 0; i < taille; ++i) {
            octets[i] = char(i % 251);
        }
        QFile f(_dossier.filePath(nom));
        EXPECT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(octets.data(), qint64(octets.size()));
        return UniChemin(f.fileName());
    }

    QTemporaryDir _dossier;
};

// Lance f et rend l'explication de l'IndexHorsBorne attendu.
template <typename F> std::string Explication(F f)
{
    try {
        f();
    } catch (IndexHorsBorne const& e) {
        return QString(e.Explication()).toStdString();
    }
    return "rien";
}

} // namespace

TEST_F(FichierMMapTest, BornesDesLectures)
{
    // 4096 octets : la fin tombe sur une fin de page, et la lecture à la taille rend 0.
    for (unsigned int const n : {4096u, 100u}) {
        SCOPED_TRACE(n);
        auto const horsBorne = [n](unsigned int i) {
            return "index=" + std::to_string(i) + " min=0 max=" + std::to_string(n);
        };
        FichierMMap f(Ecris("page", n));
        ASSERT_EQ(f.DonneTaille(), n);
        for (unsigned int i = 0; i < n; ++i) {
            ASSERT_EQ(f.Donne(), i % 251);
        }
        EXPECT_TRUE(f.EstALaFin());
        EXPECT_EQ(f.Donne(), 0);
        EXPECT_EQ(Explication([&] { f.Donne(); }), horsBorne(n + 1));
        EXPECT_EQ(f.DonnePosition(), n + 1);

        // Lecture de n octets : tout l'intervalle est vérifié, la position reste.
        f.Positionne(n - 2);
        unsigned char trois[3];
        EXPECT_EQ(Explication([&] { f.Donne(3, trois); }), horsBorne(n + 1));
        EXPECT_EQ(f.DonnePosition(), n - 2);
        EXPECT_EQ(f.Donne(2, trois), 2u);

        f.PositionneALaFin();
        unsigned char const* const bout = f.Ptr(); // au bout : permis
        EXPECT_EQ(f.PtrEtAvance(5), bout);         // l'avance n'est pas vérifiée
        f.Positionne(n + 10);
        EXPECT_EQ(Explication([&] { f.Ptr(); }), horsBorne(n + 10));
        EXPECT_EQ(Explication([&] { f.PtrEtAvance(0); }), horsBorne(n + 10));
    }

    FichierMMap vide, cheminVide{UniChemin()};
    EXPECT_EQ(vide.DonneTaille(), 0u);
    EXPECT_TRUE(vide.EstALaFin());
    EXPECT_EQ(vide.Ptr(), nullptr);
    EXPECT_EQ(cheminVide.Ptr(), nullptr);
}

TEST_F(FichierMMapTest, TranchesEtEchecs)
{
    UniChemin const chemin = Ecris("grand", 8192);
    FichierMMap tranche(chemin, 4096, 100);
    EXPECT_EQ(tranche.DonneTaille(), 100u);
    EXPECT_EQ(tranche.Donne(), 4096 % 251);
    tranche.PositionneALaFin();
    EXPECT_EQ(tranche.DonnePosition(), 100u);
    FichierMMap bout(chemin, 8000, 192); // jusqu'au dernier octet, décalage hors page
    EXPECT_EQ(bout.Donne(), 8000 % 251);

    // Longueur 0 après un décalage : tout le fichier, qui déborde ; refusé.
    EXPECT_THROW(FichierMMap(chemin, 10, 0), MemoireInsuffisante);
    EXPECT_THROW(FichierMMap(chemin, 8000, 193), MemoireInsuffisante);
    EXPECT_THROW(FichierMMap(chemin, 0, 1ul << 32), MemoireInsuffisante);
    EXPECT_THROW(FichierMMap{Ecris("vide", 0)}, MemoireInsuffisante);
    UniChemin const manquant(_dossier.filePath("manquant"));
    try {
        FichierMMap{manquant};
        FAIL();
    } catch (sdd::exceptions::OuvertureEchouee const& e) {
        EXPECT_EQ(e.Explication(), manquant);
    }

    // Le tampon prêté couvre tout le fichier, sans copie, quelle que soit la position.
    FichierMMap f(Ecris("prete", 5000));
    f.Positionne(10);
    std::unique_ptr<sdd::TamponMemoire> tampon(f.TamponEnPretantDonnees());
    f.PositionneAuDebut();
    EXPECT_EQ(tampon->DonneDonnees(), f.Ptr());
    EXPECT_EQ(tampon->DonneTaille(), 5000u);
    EXPECT_EQ(tampon->DonnePosition(), 0u);
}

TEST_F(FichierMMapTest, CheminsQuiNeSontPasDesFichiers)
{
    aide::CheminsSpeciaux const speciaux(_dossier);
    for (UniChemin const& chemin : speciaux.Tous()) {
        aide::SansBlocage([&] {
            EXPECT_EQ(aide::ExplicationDe<sdd::exceptions::OuvertureEchouee>(
                          [&] { FichierMMap{chemin}; }),
                      aide::Texte(chemin));
        });
    }
    // 4 Gio et plus : refusé comme toute projection impossible, sans texte.
    UniChemin const grand = aide::FichierCreux(_dossier, "grand", 0x100000003ull);
    EXPECT_EQ(aide::ExplicationDe<MemoireInsuffisante>([&] { FichierMMap{grand}; }), "");
}
