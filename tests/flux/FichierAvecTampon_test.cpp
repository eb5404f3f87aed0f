#include "noyau/flux/FichierAvecTampon.h"

#include "AideCheminsSpeciaux.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <ostream>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

using sdd::Fichier;
using sdd::FichierAvecTampon;

TEST(FichierAvecTampon, EcritureMeleeEtVidage)
{
    QTemporaryDir dossier;
    UniChemin const chemin(dossier.filePath("ecrit"));
    auto const lis = [&] {
        QFile f(chemin);
        EXPECT_TRUE(f.open(QIODevice::ReadOnly));
        return f.readAll().toStdString();
    };
    std::mt19937 hasard(3);
    std::string attendu;
    {
        FichierAvecTampon f(chemin, Fichier::kEcriture);
        // Octets seuls, petits blocs, blocs plus grands que le tampon : tout passe dans l'ordre.
        while (attendu.size() < 200000) {
            std::size_t const avant = attendu.size();
            switch (hasard() % 3) {
            case 0:
                attendu += char(hasard());
                f.Mets(static_cast<unsigned char>(attendu.back()));
                break;
            case 1:
                attendu += std::string(hasard() % 300, char('a' + hasard() % 26));
                f.Ecris(attendu.data() + avant, int(attendu.size() - avant));
                break;
            default:
                attendu += std::string(FichierAvecTampon::kTailleTampon + hasard() % 1000, 'Z');
                f.Mets(reinterpret_cast<unsigned char const*>(attendu.data() + avant),
                       unsigned(attendu.size() - avant));
            }
            ASSERT_EQ(f.DonnePosition(), attendu.size());
        }
        // La destruction vide le tampon.
    }
    EXPECT_EQ(lis(), attendu);

    // Ferme vide aussi le tampon.
    FichierAvecTampon g(chemin, Fichier::kEcriture | Fichier::kAjout);
    g.Ecris("fin");
    g.Ferme();
    EXPECT_EQ(lis(), attendu + "fin");
}

TEST(FichierAvecTampon, LectureContreFichier)
{
    QTemporaryDir dossier;
    UniChemin const chemin(dossier.filePath("lu"));
    std::mt19937 hasard(5);
    std::string contenu;
    while (contenu.size() < 300000) {
        contenu += std::string(hasard() % 200, char('a' + hasard() % 26));
        contenu += hasard() % 4 == 0 ? "\r\n" : "\n";
    }
    {
        QFile f(chemin);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(contenu.data(), qint64(contenu.size()));
    }
    // Mêmes opérations sur le fichier sans tampon, pris pour modèle.
    FichierAvecTampon avec(chemin, Fichier::kLecture);
    Fichier sans(chemin, Fichier::kLecture);
    for (int i = 0; i < 3000; ++i) {
        SCOPED_TRACE(i);
        unsigned int const n = hasard() % 3 == 0 ? 70000 + hasard() % 1000 : hasard() % 500;
        unsigned int const p = hasard() % unsigned(contenu.size());
        std::string a(n + 256, ' '), b(n + 256, ' ');
        UniChaine ligneA, ligneB;
        switch (hasard() % 6) {
        case 0:
            ASSERT_EQ(avec.Donne(), sans.Donne());
            break;
        case 1:
            ASSERT_EQ(avec.Donne(n, reinterpret_cast<unsigned char*>(a.data())),
                      sans.Donne(n, reinterpret_cast<unsigned char*>(b.data())));
            break;
        case 2:
            ASSERT_EQ(avec.DonneLigne(ligneA), sans.DonneLigne(ligneB));
            break;
        case 3:
            ASSERT_EQ(avec.DonneLigne(a.data(), 256), sans.DonneLigne(b.data(), 256));
            break;
        case 4:
            avec.Positionne(p);
            sans.Positionne(p);
            break;
        default:
            avec.RetireDonne(); // au début aussi : sans effet, le flux reste utilisable
            sans.RetireDonne();
        }
        ASSERT_EQ(a, b);
        ASSERT_EQ(ligneA, ligneB);
        ASSERT_EQ(avec.DonnePosition(), sans.DonnePosition());
        ASSERT_EQ(avec.EstALaFin(), sans.EstALaFin());
    }
}

TEST(FichierAvecTampon, CheminsQuiNeSontPasDesFichiers)
{
    QTemporaryDir dossier;
    aide::CheminsSpeciaux const speciaux(dossier);
    for (UniChemin const& chemin : speciaux.Tous()) {
        SCOPED_TRACE(QString(chemin).toStdString());
        aide::SansBlocage([&] {
            for (int const mode : {2, 1, 5}) {
                FichierAvecTampon f(chemin, mode);
                ASSERT_FALSE(f.EstEnBonEtat()) << mode;
                EXPECT_EQ(f.DonneTaille(), 0u);
                EXPECT_EQ(f.Donne(), 0);
                EXPECT_TRUE(f.EstALaFin());
                f.Ecris("rien");
                f.Ferme(); // vide le tampon : rien n'est écrit
            }
        });
    }
}

namespace {

// Ce qu'un appel de DonneLigne(char*, int) rend et laisse.
struct Appel
{
    bool rendu = false;
    bool lance = false;
    std::string tampon; // tout le tampon, octets non écrits compris
    unsigned long long position = 0;
    bool bonEtat = false;

    bool operator==(Appel const& b) const
    {
        return std::tie(rendu, lance, tampon, position, bonEtat) ==
               std::tie(b.rendu, b.lance, b.tampon, b.position, b.bonEtat);
    }
};

std::ostream& operator<<(std::ostream& os, Appel const& a)
{
    return os << "rendu=" << a.rendu << " lance=" << a.lance << " position=" << a.position
              << " bonEtat=" << a.bonEtat << " tampon=" << testing::PrintToString(a.tampon);
}

// Tampon de taille octets (au moins un) rempli d'un motif que la lecture ne donne pas.
std::string TamponNeuf(int taille)
{
    return std::string(std::size_t(std::max(taille, 1)), '\x7F');
}

// Le modèle : std::istream::getline, qui « lance » quand le flux échoue ailleurs qu'à la fin.
Appel AppelGetline(std::istream& flux, int taille)
{
    Appel a;
    a.tampon = TamponNeuf(taille);
    flux.getline(a.tampon.data(), taille);
    a.lance = flux.fail() && !flux.eof();
    a.rendu = !a.lance && flux.gcount() > 0;
    a.position =
        static_cast<unsigned long long>(flux.rdbuf()->pubseekoff(0, std::ios::cur, std::ios::in));
    a.bonEtat = flux.good();
    return a;
}

Appel AppelFichier(Fichier& f, int taille)
{
    Appel a;
    a.tampon = TamponNeuf(taille);
    try {
        a.rendu = f.DonneLigne(a.tampon.data(), taille);
    } catch (std::runtime_error const& e) {
        EXPECT_STREQ(e.what(), "### Erreur dans sdd::Fichier::DonneLigne()");
        a.lance = true;
    }
    a.position = f.DonnePosition();
    a.bonEtat = f.EstEnBonEtat();
    return a;
}

// Lignes courtes et vides, CR épars, octets nuls, lignes plus longues que le tampon de 64 Kio,
// dernière ligne avec ou sans LF.
std::string ContenuAuHasard(std::mt19937& hasard)
{
    static char const kOctets[] = "ab\r\t\xE9\0z";
    std::string contenu;
    for (unsigned int n = hasard() % 30; n != 0; --n) {
        unsigned int const longueur = hasard() % 10 == 0  ? 60000 + hasard() % 80000
                                      : hasard() % 4 == 0 ? 0
                                                          : hasard() % 40;
        for (unsigned int i = 0; i < longueur; ++i) {
            contenu += kOctets[hasard() % (sizeof kOctets - 1)];
        }
        contenu += hasard() % 3 == 0 ? "\r\n" : "\n";
    }
    if (hasard() % 2 == 0) {
        contenu += std::string(hasard() % 50, 'q');
    }
    return contenu;
}

// Longueurs de tampon : autour de celle de la ligne suivante (juste assez, un de moins),
// 1, 0, négative, petites et grandes.
int TailleAuHasard(std::mt19937& hasard, std::string const& contenu, std::size_t position)
{
    std::size_t const lf = contenu.find('\n', std::min(position, contenu.size()));
    int const ligne = int((lf == std::string::npos ? contenu.size() : lf) - position);
    int const tailles[] = {ligne, ligne + 1, ligne + 2, 1, 2, 0, -1, int(hasard() % 64), 100000};
    return tailles[hasard() % (sizeof tailles / sizeof *tailles)];
}

} // namespace

TEST(FichierAvecTampon, LignesCommeGetline)
{
    QTemporaryDir dossier;
    UniChemin const chemin(dossier.filePath("lignes"));
    std::mt19937 hasard(11);
    std::vector<std::string> contenus;
    QFile mots("/usr/share/dict/french");
    if (mots.open(QIODevice::ReadOnly)) {
        contenus.push_back(mots.read(300000).toStdString()); // mots réels, lignes à la coupure
    }
    while (contenus.size() < 60) {
        contenus.push_back(ContenuAuHasard(hasard));
    }
    for (std::size_t essai = 0; essai < contenus.size(); ++essai) {
        SCOPED_TRACE(essai);
        std::string const& contenu = contenus[essai];
        {
            QFile f(chemin);
            ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
            f.write(contenu.data(), qint64(contenu.size()));
        }
        std::istringstream modele(contenu);
        Fichier sans(chemin, Fichier::kLecture, UniChaine::kUTF8, true);
        FichierAvecTampon avec(chemin, Fichier::kLecture, UniChaine::kUTF8, true);
        for (int appel = 0; appel < 400; ++appel) {
            SCOPED_TRACE(appel);
            if (hasard() % 16 == 0) {
                // Se placer efface la fin comme l'échec.
                unsigned int const p = hasard() % unsigned(contenu.size() + 1);
                modele.clear();
                modele.seekg(p);
                sans.Positionne(p);
                avec.Positionne(p);
            }
            int const taille = TailleAuHasard(hasard, contenu, std::size_t(modele.tellg()));
            SCOPED_TRACE(taille);
            Appel const attendu = AppelGetline(modele, taille);
            ASSERT_EQ(AppelFichier(sans, taille), attendu);
            ASSERT_EQ(AppelFichier(avec, taille), attendu);
            if (!attendu.rendu && modele.eof()) {
                break;
            }
        }

        // Lignes décodées : CR final enlevé, dernière ligne sans LF rendue.
        std::istringstream modeleChaines(contenu);
        Fichier sansChaines(chemin, Fichier::kLecture, sdd::ChaineN::kLatin9, true);
        FichierAvecTampon avecChaines(chemin, Fichier::kLecture, UniChaine::kLatin9, true);
        std::string octets;
        sdd::ChaineN a, b;
        while (std::getline(modeleChaines, octets)) {
            if (!octets.empty() && octets.back() == '\r') {
                octets.pop_back();
            }
            sdd::ChaineN const attendue(octets.data(), sdd::ChaineN::kLatin9, octets.size());
            ASSERT_TRUE(sansChaines.DonneLigne(a));
            ASSERT_TRUE(avecChaines.DonneLigne(b));
            ASSERT_EQ(a, attendue);
            ASSERT_EQ(b, attendue);
        }
        EXPECT_FALSE(sansChaines.DonneLigne(a));
        EXPECT_FALSE(avecChaines.DonneLigne(b));
    }
}

TEST(FichierAvecTampon, EchecsDesLignesCommeSansTampon)
{
    QTemporaryDir dossier;
    auto const ecris = [&](char const* nom, std::string const& octets) {
        QFile f(dossier.filePath(nom));
        EXPECT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(octets.data(), qint64(octets.size()));
        return UniChemin(f.fileName());
    };
    UniChemin const texte = ecris("texte", "abcdef\nxy");
    UniChemin const utf16 = ecris("utf16", std::string("\xFF\xFEl\0o\0n\0g\0\n\0", 12));
    auto const lance = [](Fichier& f, char* tampon, int taille) {
        try {
            f.DonneLigne(tampon, taille);
        } catch (std::runtime_error const& e) {
            return std::string(e.what());
        }
        return std::string("rien");
    };
    std::string const erreur = "### Erreur dans sdd::Fichier::DonneLigne()";
    using Fabrique = std::unique_ptr<Fichier> (*)();
    Fabrique const fabriques[] = {[] { return std::make_unique<Fichier>(); },
                                  [] { return std::unique_ptr<Fichier>(new FichierAvecTampon); }};
    for (Fabrique const fabrique : fabriques) {
        char tampon[8];
        // Fermé : rien à lire, sans erreur.
        std::unique_ptr<Fichier> f = fabrique();
        EXPECT_FALSE(f->DonneLigne(tampon, 8));

        // Ouverture échouée (absent, répertoire) : le flux est en échec, à chaque appel.
        for (UniChemin const& rate :
             {UniChemin(dossier.filePath("absent")), UniChemin(dossier.path())}) {
            f->Ouvre(rate, Fichier::kLecture, UniChaine::kUTF8);
            EXPECT_EQ(lance(*f, tampon, 8), erreur);
            EXPECT_EQ(lance(*f, tampon, 8), erreur);
        }

        // Ligne trop longue : les 3 octets qui tiennent, puis l'échec demeure jusqu'à un
        // placement ; les lignes décodées s'arrêtent aussi.
        f->Ouvre(texte, Fichier::kLecture, UniChaine::kUTF8);
        EXPECT_EQ(lance(*f, tampon, 4), erreur);
        EXPECT_STREQ(tampon, "abc");
        EXPECT_FALSE(f->EstEnBonEtat());
        unsigned char octets[3];
        EXPECT_EQ(f->Donne(3, octets), 0u); // ni le fichier ni ce que le tampon a lu d'avance
        EXPECT_EQ(lance(*f, tampon, 8), erreur);
        UniChaine ligne(u"avant");
        EXPECT_FALSE(f->DonneLigne(ligne));
        EXPECT_EQ(ligne, UniChaine(u"avant"));
        f->PositionneAuDebut(); // efface l'échec
        ASSERT_TRUE(f->DonneLigne(tampon, 7));
        EXPECT_STREQ(tampon, "abcdef");

        // En UTF-16 aussi, une ligne décodée ne se lit pas d'un flux en échec (elle tournait
        // sans fin).
        f->OuvreEnLectureSeule(utf16);
        EXPECT_EQ(lance(*f, tampon, 2), erreur);
        aide::SansBlocage([&] { EXPECT_FALSE(f->DonneLigne(ligne)); });
        f->Positionne(2);
        ASSERT_TRUE(f->DonneLigne(ligne));
        EXPECT_EQ(ligne, UniChaine(u"long"));
    }
}
