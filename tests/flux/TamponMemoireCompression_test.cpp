#include "noyau/chaines/ChaineN.h"
#include "noyau/chaines/UniChaine.h"
#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/FichierMMap.h"
#include "noyau/flux/TamponMemoire.h"
#include "noyau/flux/VarElias.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

using sdd::ChaineN;
using sdd::TamponMemoire;
using sdd::VarElias;

namespace {

// Relit la forme écrite avec zlib seul : longueurs, puis le texte UTF-8 décomprimé.
std::string DecomprimeParZlib(TamponMemoire& t)
{
    t.PositionneAuDebut();
    std::uint32_t const comprimee = VarElias::Lis(t);
    std::uint32_t const texte = VarElias::Lis(t);
    EXPECT_EQ(t.DonneTaille() - t.DonnePosition(), comprimee);
    std::vector<Bytef> sortie(texte + 1);
    uLongf longueur = texte;
    EXPECT_EQ(uncompress(sortie.data(), &longueur, t.Ptr(), comprimee), Z_OK);
    EXPECT_EQ(longueur, texte);
    return std::string(sortie.begin(), sortie.begin() + longueur);
}

std::string Mots()
{
    std::ifstream fichier("/usr/share/dict/french", std::ios::binary);
    std::string texte((std::istreambuf_iterator<char>(fichier)), std::istreambuf_iterator<char>());
    if (texte.empty()) {
        texte = "repli sans dictionnaire\n";
    }
    while (texte.size() < (1u << 20)) {
        texte += texte;
    }
    return texte.substr(0, 1u << 20);
}

// Code l'entier nu lancé par la lecture, 0 sans entier, 1 pour ErreurDeserialisation.
int EchecDeLecture(sdd::FluxEntree& t)
{
    t.PositionneAuDebut();
    try {
        TamponMemoire::DecompresseChaineN(t);
    } catch (int code) {
        return code;
    } catch (sdd::exceptions::ErreurDeserialisation const&) {
        return 1;
    }
    return 0;
}

} // namespace

TEST(ChaineComprimee, AllerRetourContreZlib)
{
    std::string const textes[] = {
        "",
        "abc",
        "L’œuvre « complète » d’été, à l’hôpital — déjà vu ?",
        Mots(),
    };
    for (std::string const& utf8 : textes) {
        SCOPED_TRACE(utf8.substr(0, 40));
        ChaineN const chaine(utf8, ChaineN::kUTF8);
        TamponMemoire t(16);
        t.Mets('#');
        EXPECT_EQ(TamponMemoire::CompresseChaineN(t, chaine), 1u);
        TamponMemoire sansPrefixe(reinterpret_cast<char*>(t.DonneDonnees()) + 1,
                                  int(t.DonneTaille() - 1), false);
        EXPECT_EQ(DecomprimeParZlib(sansPrefixe), utf8);
        t.Positionne(1);
        EXPECT_EQ(TamponMemoire::DecompresseChaineN(t), chaine);
        EXPECT_TRUE(t.EstALaFin());

        UniChaine const uni(utf8, UniChaine::kUTF8);
        TamponMemoire u(16);
        TamponMemoire::CompresseUniChaine(u, uni);
        EXPECT_EQ(u, sansPrefixe); // même forme que ChaineN
        u.PositionneAuDebut();
        EXPECT_EQ(TamponMemoire::DecompresseUniChaine(u).DonneQString(), uni.DonneQString());
    }
}

TEST(ChaineComprimee, DonneesAbimees)
{
    TamponMemoire t(16);
    TamponMemoire::CompresseChaineN(t, ChaineN(u"texte à comprimer, texte à comprimer"));
    unsigned int const taille = t.DonneTaille();
    // Chaque coupure : dans les longueurs ErreurDeserialisation, dans les données -1.
    for (unsigned int coupe = 0; coupe < taille; ++coupe) {
        t.MetsTaille(coupe);
        EXPECT_EQ(EchecDeLecture(t), coupe < 2 ? 1 : -1) << coupe;
    }
    t.MetsTaille(taille);
    EXPECT_EQ(EchecDeLecture(t), 0);
    // Une projection coupée dit la même chose (elle refuserait sinon par IndexHorsBorne).
    std::string const chemin = testing::TempDir() + "chaine_coupee";
    for (unsigned int const coupe : {1u, 2u, taille - 1}) {
        std::ofstream(chemin, std::ios::binary)
            .write(reinterpret_cast<char const*>(t.DonneDonnees()), coupe);
        sdd::FichierMMap projection{UniChemin(chemin.c_str())};
        EXPECT_EQ(EchecDeLecture(projection), coupe < 2 ? 1 : -1) << coupe;
    }
    std::remove(chemin.c_str());

    // Longueur de texte trop courte pour le contenu : zlib échoue.
    TamponMemoire menteur(t);
    menteur.DonneDonnees()[1] = 0x81;
    EXPECT_EQ(EchecDeLecture(menteur), -1);
    // Longueur de texte énorme : sans effet, le texte réel suffit.
    TamponMemoire grand(16);
    unsigned char const* donnees = t.DonneDonnees();
    VarElias::Ecris(grand, donnees[0] & 0x7F);
    VarElias::Ecris(grand, VarElias::kValeurMax);
    grand.Mets(donnees + 2, taille - 2);
    grand.PositionneAuDebut();
    EXPECT_EQ(TamponMemoire::DecompresseChaineN(grand),
              ChaineN(u"texte à comprimer, texte à comprimer"));
    // Données altérées : somme de contrôle fausse.
    TamponMemoire altere(t);
    altere.DonneDonnees()[taille - 1] ^= 1;
    EXPECT_EQ(EchecDeLecture(altere), -1);
    // Longueur comprimée énorme sur peu de données : -1 sans tout allouer.
    TamponMemoire court(16);
    VarElias::Ecris(court, VarElias::kValeurMax);
    VarElias::Ecris(court, 10);
    court.Mets("abc", 3);
    EXPECT_EQ(EchecDeLecture(court), -1);
}
