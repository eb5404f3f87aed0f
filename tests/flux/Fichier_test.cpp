#include "noyau/flux/Fichier.h"

#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/FichierAvecTampon.h"
#include "noyau/flux/TamponMemoire.h"

#include "AideCheminsSpeciaux.h"

#include <QDate>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

using sdd::ChaineN;
using sdd::Fichier;

namespace {

class FichierTest : public ::testing::Test
{
protected:
    UniChemin Chemin(char const* nom) const { return UniChemin(_dossier.filePath(nom)); }

    UniChemin Ecris(char const* nom, std::string const& octets) const
    {
        QFile f(_dossier.filePath(nom));
        EXPECT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(octets.data(), qint64(octets.size()));
        return Chemin(nom);
    }

    std::string Lis(UniChemin const& chemin) const
    {
        QFile f(chemin);
        EXPECT_TRUE(f.open(QIODevice::ReadOnly));
        return f.readAll().toStdString();
    }

    QTemporaryDir _dossier;
};

} // namespace

TEST_F(FichierTest, MarquesOrdreOctets)
{
    // Position et codages après ouverture d'un fichier fait de ces octets.
    auto const verifie = [this](std::string const& octets, unsigned int position,
                                UniChaine::Codage codage, ChaineN::Codage codageChaineN) {
        SCOPED_TRACE(testing::PrintToString(octets));
        UniChemin const chemin = Ecris("bom", octets);
        Fichier applique;
        applique.OuvreEnLectureSeule(chemin);
        EXPECT_TRUE(applique.EstEnBonEtat());
        EXPECT_EQ(applique.DonnePosition(), position);
        EXPECT_EQ(applique.DonneCodage(), codage);
        EXPECT_EQ(applique.DonneCodageChaineN(), codageChaineN);
        EXPECT_EQ(applique.DonneTaille(), octets.size());
        // La lecture reprend juste après la marque ; 0 à la fin.
        EXPECT_EQ(applique.Donne(),
                  position < octets.size() ? static_cast<unsigned char>(octets[position]) : 0);

        // Ouvre passe la marque sans toucher au codage donné.
        Fichier passe(chemin, Fichier::kLecture, UniChaine::kLatin9);
        EXPECT_EQ(passe.DonnePosition(), position);
        EXPECT_EQ(passe.DonneCodage(), UniChaine::kLatin9);
        EXPECT_EQ(passe.DonneCodageChaineN(), ChaineN::kLatin9);
        EXPECT_EQ(Fichier(chemin, Fichier::kLecture, UniChaine::kUTF8, true).DonnePosition(), 0u);
    };
    verifie("\xEF\xBB\xBFZ", 3, UniChaine::kUTF8, ChaineN::kUTF8);
    verifie(std::string("\xFE\xFF\0Z", 4), 2, UniChaine::kUTF16, ChaineN::kUTF16BE);
    // Volontaire : le 5A lu pour tester FF FE 00 00 n'est pas rendu ; le texte reprend à 00.
    verifie(std::string("\xFF\xFEZ\0B\0", 6), 3, UniChaine::kUTF16, ChaineN::kUTF16LE);
    verifie("\xFF\xFE", 2, UniChaine::kUTF16, ChaineN::kUTF16LE);
    for (std::string const& sansMarque :
         {std::string("\xFF\xFE\0\0", 4), std::string("\0\0\xFE\xFF", 4),
          std::string("\x0E\xFE\xFFZ"), std::string("\x2B\x2F\x76Z"),
          std::string("\xDD\x73\x66\x73"), std::string("\xFB\xEEZ"), std::string("\xEF\xBBZ"),
          std::string("texte"), std::string()}) {
        verifie(sansMarque, 0, UniChaine::kUTF8, ChaineN::kCodageDefautPlateforme);
    }

    int n = 0;
    std::unique_ptr<char[]> const bom(Fichier::DonneBOMUTF8(n));
    EXPECT_EQ(std::string(bom.get(), std::size_t(n) + 1), std::string("\xEF\xBB\xBF", 4));
}

TEST_F(FichierTest, ModesEtEcriture)
{
    UniChemin const chemin = Ecris("modes", "ancien");
    {
        Fichier ajout(chemin, Fichier::kEcriture | Fichier::kAjout);
        ajout.Ecris("+suite");
        ajout.Mets('!');
        EXPECT_EQ(ajout.DonnePosition(), 13u);
        EXPECT_TRUE(ajout.EstALaFin()); // rien à lire en écriture
    }
    EXPECT_EQ(Lis(chemin), "ancien+suite!");
    {
        // Lecture et écriture demandées : la lecture l'emporte, rien n'est écrit.
        Fichier lecture(chemin, Fichier::kLecture | Fichier::kEcriture);
        EXPECT_TRUE(lecture.EstEnBonEtat());
        EXPECT_EQ(lecture.Donne(), 'a');
        EXPECT_EQ(lecture.DonneTaille(), 0u); // mesurée au mode 2 seulement
        lecture.Ecris("x");
    }
    EXPECT_EQ(Lis(chemin), "ancien+suite!");
    {
        unsigned char const octets[] = {'n', 'e', 'u', 'f'};
        Fichier(chemin, Fichier::kEcriture).Mets(octets, 4);
    }
    EXPECT_EQ(Lis(chemin), "neuf");

    // Sans mode, dans un dossier absent ou jamais ouvert : échec silencieux, rien n'est écrit.
    Fichier sansMode(Chemin("sans-mode"), 0), absent(Chemin("absent/f"), Fichier::kEcriture);
    for (Fichier* f : {&sansMode, &absent}) {
        EXPECT_FALSE(f->EstEnBonEtat());
        f->Ecris("rien");
    }
    EXPECT_FALSE(Fichier::FichierExiste(Chemin("sans-mode")));
    Fichier ferme;
    EXPECT_FALSE(ferme.EstEnBonEtat());
    EXPECT_TRUE(ferme.EstALaFin());
    EXPECT_EQ(ferme.Donne(), 0);
}

TEST_F(FichierTest, LignesEtTextes)
{
    Fichier f;
    f.OuvreEnLectureSeule(Ecris("lignes", "un\r\ndeux\n\ntroisième"));
    UniChaine ligne;
    std::string lues;
    while (f.DonneLigne(ligne)) {
        lues += "[" + QString(ligne).toStdString() + "]";
    }
    EXPECT_EQ(lues, "[un][deux][][troisième]");
    EXPECT_TRUE(f.EstALaFin());
    EXPECT_EQ(f.DonnePosition(), f.DonneTaille()); // la fin se dit sans mettre le flux en échec
    EXPECT_EQ(f.DonneToutLeTexte(), ChaineN(u"un\r\ndeux\n\ntroisième"));
    f.Positionne(9);
    EXPECT_EQ(f.DonneToutLeResteDuTexte(), ChaineN(u"\ntroisième"));

    // En UTF-16 gros-boutiste, marque comprise : « été », CR LF, « hiver ».
    std::string const utf16("\xFE\xFF\0\xE9\0t\0\xE9\0\r\0\n\0h\0i\0v\0e\0r", 22);
    Fichier g;
    g.OuvreEnLectureSeule(Ecris("utf16", utf16));
    ChaineN l;
    ASSERT_TRUE(g.DonneLigne(l));
    EXPECT_EQ(l, ChaineN(u"été"));
    ASSERT_TRUE(g.DonneLigne(l));
    EXPECT_EQ(l, ChaineN(u"hiver"));
    EXPECT_FALSE(g.DonneLigne(l));
    EXPECT_EQ(l, ChaineN(u"hiver"));
    EXPECT_EQ(g.DonneToutLeFichier().size(), utf16.size());
}

TEST_F(FichierTest, ToutLeFichierEtQuestions)
{
    std::string octets(70000, '\0');
    for (std::size_t i = 0; i < octets.size(); ++i) {
        octets[i] = char(i * 7);
    }
    UniChemin const chemin = Ecris("tout", octets), manquant = Chemin("manquant");
    unsigned int taille = 0;
    std::unique_ptr<char[]> const bloc(Fichier::DonneToutLeTexte(chemin, taille));
    EXPECT_EQ(std::string(bloc.get(), taille), octets);

    sdd::TamponMemoire const tampon(chemin);
    EXPECT_EQ(tampon.DonneCapacite(), octets.size());
    EXPECT_EQ(std::string(reinterpret_cast<char*>(tampon.DonneDonnees()), tampon.DonneTaille()),
              octets);
    try {
        sdd::TamponMemoire{manquant};
        FAIL();
    } catch (sdd::exceptions::OuvertureEchouee const& e) {
        EXPECT_EQ(e.Explication(), manquant);
    }

    Fichier f(chemin, Fichier::kLecture);
    unsigned char lus[10];
    f.Positionne(69995);
    EXPECT_EQ(f.DonneLePlus(10, lus), 5u);
    EXPECT_TRUE(f.EstALaFin());
    f.RetireDonne();
    EXPECT_EQ(f.Donne(), static_cast<unsigned char>(octets.back()));

    EXPECT_EQ(Fichier::TailleFichier(chemin), 70000u);
    EXPECT_EQ(Fichier::TailleFichier(manquant), 0u);
    bool estRepertoire = true;
    EXPECT_TRUE(Fichier::FichierExiste(chemin, &estRepertoire));
    EXPECT_FALSE(estRepertoire);
    EXPECT_TRUE(Fichier::FichierExiste(UniChemin(_dossier.path()), &estRepertoire));
    EXPECT_TRUE(estRepertoire);
    int annee = 0, mois = 0, jour = 0;
    EXPECT_TRUE(Fichier::DonneDate(chemin, annee, mois, jour));
    EXPECT_EQ(QDate(annee, mois, jour), QDate::currentDate());
    EXPECT_NEAR(double(Fichier::DonneDate(chemin)), double(std::time(nullptr)), 60);
    EXPECT_EQ(Fichier::DonneDate(manquant), 0);
    EXPECT_TRUE(Fichier::SupprimeFichier(chemin));
    EXPECT_FALSE(Fichier::FichierExiste(chemin));
    EXPECT_FALSE(Fichier::SupprimeFichier(chemin));
}

TEST_F(FichierTest, CheminsQuiNeSontPasDesFichiers)
{
    aide::CheminsSpeciaux const speciaux(_dossier);
    for (UniChemin const& chemin : speciaux.Tous()) {
        SCOPED_TRACE(QString(chemin).toStdString());
        aide::SansBlocage([&] {
            // Aucun mode ne s'ouvre : ni lecture (bit 2, mode 3 compris), ni écriture.
            for (int const mode : {2, 3, 1, 5}) {
                Fichier f(chemin, mode);
                ASSERT_FALSE(f.EstEnBonEtat()) << mode;
                EXPECT_EQ(f.DonneTaille(), 0u);
                EXPECT_TRUE(f.EstALaFin());
                EXPECT_EQ(f.Donne(), 0);
                EXPECT_TRUE(f.DonneToutLeFichier().empty());
                f.Ecris("rien");
            }
            using sdd::exceptions::OuvertureEchouee;
            EXPECT_EQ(aide::ExplicationDe<OuvertureEchouee>([&] {
                          unsigned int taille = 0;
                          delete[] Fichier::DonneToutLeTexte(chemin, taille);
                      }),
                      aide::Texte(chemin));
            EXPECT_EQ(aide::ExplicationDe<OuvertureEchouee>([&] { sdd::TamponMemoire{chemin}; }),
                      aide::Texte(chemin));
        });
    }
    // Le lien vers un fichier ordinaire est suivi.
    UniChemin const lien = Chemin("lien-fichier");
    ASSERT_TRUE(QFile::link(Ecris("cible", "contenu"), lien));
    Fichier f(lien, Fichier::kLecture);
    EXPECT_EQ(f.DonneTaille(), 7u);
    EXPECT_EQ(f.DonneToutLeTexte(), ChaineN(u"contenu"));
}

TEST_F(FichierTest, QuatreGioEtPlus)
{
    // Le plus grand fichier dont la taille tient sur 32 bits s'ouvre encore.
    UniChemin const limite = aide::FichierCreux(_dossier, "limite", 0xFFFFFFFFull);
    for (int const mode : {2, 3}) {
        Fichier f(limite, mode);
        EXPECT_TRUE(f.EstEnBonEtat());
        EXPECT_EQ(f.DonneTaille(), mode == 2 ? 0xFFFFFFFFu : 0u); // mesurée au mode 2 seulement
    }
    sdd::FichierAvecTampon tampon(limite, Fichier::kLecture);
    EXPECT_EQ(tampon.DonneTaille(), 0xFFFFFFFFu);

    // Au-delà, toute lecture est refusée, jamais coupée modulo 2^32 ; l'écriture reste permise.
    for (std::uint64_t const taille : {0x100000000ull, 0x100000003ull}) {
        UniChemin const grand = aide::FichierCreux(_dossier, "grand", taille);
        std::string const attendu = aide::Texte(grand) + " : fichier de 4 Gio ou plus";
        auto const refus = [&](auto lecture) {
            EXPECT_EQ(aide::ExplicationDe<sdd::exceptions::MemoireInsuffisante>(lecture), attendu);
        };
        refus([&] { Fichier(grand, Fichier::kLecture); });
        refus([&] { Fichier(grand, Fichier::kLecture | Fichier::kEcriture); });
        refus([&] { sdd::FichierAvecTampon(grand, Fichier::kLecture); });
        refus([&] { sdd::TamponMemoire{grand}; });
        Fichier f;
        refus([&] { f.OuvreEnLectureSeule(grand); });
        EXPECT_FALSE(f.EstEnBonEtat()); // l'objet reste utilisable, fermé
        EXPECT_EQ(f.DonneTaille(), 0u);
        EXPECT_TRUE(Fichier(grand, Fichier::kEcriture | Fichier::kAjout).EstEnBonEtat());
    }

    // Un ajout passé 4 Gio : la position ne tient plus sur 32 bits, elle est refusée, jamais
    // coupée ; l'écriture, elle, se fait.
    UniChemin const gros = aide::FichierCreux(_dossier, "gros", 0x100000000ull);
    Fichier ajout(gros, Fichier::kEcriture | Fichier::kAjout);
    sdd::FichierAvecTampon ajoutTampon(gros, Fichier::kEcriture | Fichier::kAjout);
    std::vector<unsigned char> const bloc(sdd::FichierAvecTampon::kTailleTampon);
    for (Fichier* f : {&ajout, static_cast<Fichier*>(&ajoutTampon)}) {
        f->Mets(bloc.data(), unsigned(bloc.size()));
        EXPECT_THROW(f->DonnePosition(), sdd::exceptions::IndexHorsBorne);
    }
}

TEST_F(FichierTest, FichiersSansFinAtteignable)
{
    // Ceux de /proc ne se laissent pas placer à leur fin : taille 0, lus jusqu'au bout.
    UniChemin const proc("/proc/self/status");
    Fichier f(proc, Fichier::kLecture);
    sdd::FichierAvecTampon t(proc, Fichier::kLecture);
    for (Fichier* lu : {&f, static_cast<Fichier*>(&t)}) {
        EXPECT_TRUE(lu->EstEnBonEtat());
        EXPECT_EQ(lu->DonneTaille(), 0u);
        EXPECT_TRUE(lu->DonneToutLeTexte().Contient(ChaineN(u"Name:")));
    }
    unsigned int taille = 0;
    std::unique_ptr<char[]> tout(Fichier::DonneToutLeTexte(proc, taille));
    EXPECT_EQ(std::string(tout.get(), 5), "Name:");
    EXPECT_GT(sdd::TamponMemoire(proc).DonneTaille(), 5u);
}
