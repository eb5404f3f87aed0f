#include "noyau/erreurs/Assertions.h"
#include "noyau/erreurs/ReceveurTrace.h"
#include "noyau/erreurs/Trace.h"
#include "noyau/reglages/PrefsDeveloppement.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

using sdd::ChaineN;

namespace {

// Garde les lignes en UTF-8 ; signale sa destruction.
class ReceveurEnregistreur : public ReceveurTrace
{
public:
    explicit ReceveurEnregistreur(bool* detruit = nullptr) : _detruit(detruit) {}
    ~ReceveurEnregistreur() override
    {
        if (_detruit != nullptr) {
            *_detruit = true;
        }
    }
    void RecoisLigneTrace(ChaineN const& ligne) override
    {
        lignes.push_back(ligne.DonneStdString());
    }
    std::vector<std::string> lignes;

private:
    bool* _detruit;
};

} // namespace

TEST(ReceveurTrace, FormesDEntree)
{
    ReceveurEnregistreur r;
    r.RecoisTrace(ChaineN::kUTF8, "été", -1);
    r.RecoisTrace(ChaineN::kUTF8, "abcdef", 3);
    r.RecoisTrace(ChaineN::kUTF8, nullptr, -1);
    r.RecoisTrace(ChaineN::kUTF8, "xyz", 0);
    r.RecoisTrace(ChaineN::kMacRoman, "caf\x8E", -1);
    r.RecoisTrace(ChaineN::kLatin9, "\xA4", -1);
    r.RecoisTraceFmt("%s=%d %5.2f|%-3s|", "n", -12, 3.14159, "é");
    r.RecoisTraceFmtMac("%s %d", "caf\x8E", 3);
    r.RecoisTraceFmtN(ChaineN("%d %s %S", ChaineN::kUTF8), 7, "été", u"œuf");
    EXPECT_EQ(r.lignes, (std::vector<std::string>{"été", "abc", "", "", "café", "€",
                                                  "n=-12  3.14|é |", "café 3", "7 été œuf"}));
}

TEST(ReceveurTrace, MiseEnFormeCoupee)
{
    ReceveurEnregistreur r;
    std::string const long_(12000, 'x');
    r.RecoisTraceFmt("%s", long_.c_str());
    r.RecoisTraceFmtMac("ab%s", long_.c_str());
    std::string const juste(9999, 'y');
    r.RecoisTraceFmt("%s", juste.c_str());
    ASSERT_EQ(r.lignes.size(), 3u);
    EXPECT_EQ(r.lignes[0], std::string(9999, 'x'));
    EXPECT_EQ(r.lignes[1], "ab" + std::string(9997, 'x'));
    EXPECT_EQ(r.lignes[2], juste);
    // Coupé au milieu d'un caractère UTF-8 : un caractère de remplacement, pas plus.
    r.RecoisTraceFmt("%s%s", std::string(9998, 'z').c_str(), "é");
    EXPECT_EQ(r.lignes[3], std::string(9998, 'z') + "\uFFFD");
}

TEST(ReceveurTrace, PrincipalEtParFil)
{
    bool premierDetruit = false;
    auto* principal = new ReceveurEnregistreur(&premierDetruit);
    MetsReceveurDeTracePrincipal(principal);
    EXPECT_EQ(DonneReceveurTrace(), principal);
    // Le réinstaller ne le détruit pas.
    MetsReceveurDeTracePrincipal(principal);
    EXPECT_FALSE(premierDetruit);

    ReceveurEnregistreur duFilPrincipal;
    MetsReceveurTraceDuFil(&duFilPrincipal);
    EXPECT_EQ(DonneReceveurTraceDuFil(), &duFilPrincipal);
    DonneReceveurTrace()->RecoisTrace(ChaineN::kUTF8, "fil principal");

    ReceveurEnregistreur duFil2;
    std::thread fil([&] {
        // Le fil part sans receveur propre : le principal.
        EXPECT_EQ(DonneReceveurTraceDuFil(), nullptr);
        EXPECT_EQ(DonneReceveurTrace(), principal);
        MetsReceveurTraceDuFil(&duFil2);
        DonneReceveurTrace()->RecoisTraceFmt("fil %d", 2);
        MetsReceveurTraceDuFil(nullptr);
        DonneReceveurTrace()->RecoisTrace(ChaineN::kUTF8, "principal");
    });
    fil.join();
    EXPECT_EQ(DonneReceveurTrace(), &duFilPrincipal);
    MetsReceveurTraceDuFil(nullptr);
    EXPECT_EQ(DonneReceveurTrace(), principal);

    EXPECT_EQ(duFilPrincipal.lignes, std::vector<std::string>{"fil principal"});
    EXPECT_EQ(duFil2.lignes, std::vector<std::string>{"fil 2"});
    EXPECT_EQ(principal->lignes, std::vector<std::string>{"principal"});

    // Un nouveau principal détruit l'ancien ; libéré, il revient générique à la demande.
    MetsReceveurDeTracePrincipal(new ReceveurEnregistreur);
    EXPECT_TRUE(premierDetruit);
    LibereReceveurTrace();
    ReceveurTrace* generiques[2] = {};
    std::thread a([&] { generiques[0] = DonneReceveurTrace(); });
    std::thread b([&] { generiques[1] = DonneReceveurTrace(); });
    a.join();
    b.join();
    EXPECT_NE(dynamic_cast<ReceveurTraceGenerique*>(generiques[0]), nullptr);
    EXPECT_EQ(generiques[0], generiques[1]);
    EXPECT_EQ(DonneReceveurTrace(), generiques[0]);
    generiques[0]->RecoisTrace(ChaineN::kUTF8, "  jetée  ");
    LibereReceveurTrace();
}

TEST(ReceveurTrace, CanauxEtPreferences)
{
    ReceveurEnregistreur r;
    MetsPrefsDeveloppement(nullptr);
    EXPECT_FALSE(r.VeutRecevoirTrace(3));
    EXPECT_FALSE(r.VeutRecevoirTrace(-1));
    EXPECT_TRUE(Devermin_TraceJe(3));
    EXPECT_TRUE(Devermin_TraceJe(-1));
    EXPECT_TRUE(Devermin_TraceJe(99));
    Devermin_JeTrace(true, 3); // sans préférences : rien

    PrefsDeveloppement prefs;
    MetsPrefsDeveloppement(&prefs);
    Devermin_JeTrace(true, 3);
    Devermin_JeTrace(true, 31);
    Devermin_JeTrace(true, 32); // hors des canaux : rien, sans exception
    Devermin_JeTrace(true, -1);
    EXPECT_TRUE(prefs.DonneTraceCanal(3));
    EXPECT_TRUE(prefs.DonneTraceCanal(31));
    EXPECT_FALSE(prefs.DonneTraceCanal(0));
    // Trace générale éteinte : rien ne passe.
    EXPECT_FALSE(r.VeutRecevoirTrace(3));
    EXPECT_FALSE(Devermin_TraceJe(3));
    EXPECT_FALSE(Devermin_TraceJe(-1));

    prefs.MetsTrace(true);
    EXPECT_TRUE(r.VeutRecevoirTrace(3));
    EXPECT_TRUE(Devermin_TraceJe(31));
    EXPECT_FALSE(r.VeutRecevoirTrace(4));
    EXPECT_TRUE(r.VeutRecevoirTrace(-1));
    EXPECT_FALSE(r.VeutRecevoirTrace(-2));
    EXPECT_FALSE(r.VeutRecevoirTrace(32));
    gOnTraceGenerale = false;
    EXPECT_FALSE(r.VeutRecevoirTrace(-1));
    gOnTraceGenerale = true;
    gOnTraceProgSpecifique = false;
    EXPECT_FALSE(r.VeutRecevoirTrace(3));
    EXPECT_TRUE(r.VeutRecevoirTrace(-1));
    gOnTraceProgSpecifique = true;
    Devermin_JeTrace(false, 3);
    EXPECT_FALSE(Devermin_TraceJe(3));
    MetsPrefsDeveloppement(nullptr);
}

TEST(ReceveurTrace, TableDesCanaux)
{
    char const* const titres[33] = {"LNG",
                                    "Phrase",
                                    "Hypothèses",
                                    "Analyse lexicale",
                                    "Numéro de mots",
                                    "Correction",
                                    "Régimes",
                                    "Arbres partiels",
                                    "Arbres complets",
                                    "Arbres corrigés",
                                    "Numéros",
                                    "Rangs des coocs",
                                    "Règles testées",
                                    "Diminue poids",
                                    "Figés",
                                    "Anaphores",
                                    "Ngrams",
                                    "Langue",
                                    "LangueIdent",
                                    "Synchro",
                                    "Personnel 1",
                                    "Personnel 2",
                                    "Personnel 3",
                                    "Personnel 4",
                                    "Personnel 5",
                                    "Personnel 6",
                                    "Développeurs Qt",
                                    "Développeurs Win",
                                    "Développeurs Mac",
                                    "Développeurs Linux",
                                    "Stats compilation dicos",
                                    "Dico perso",
                                    ""};
    std::string const analyses = "11111001101011"
                                 "000000000000000000"
                                 "0";
    for (typTrace canal = 0; canal < 33; ++canal) {
        EXPECT_EQ(QString(DonneTitreTrace(canal)).toStdString(), titres[canal]) << canal;
        EXPECT_STREQ(TabTrace[canal].titre, titres[canal]);
        EXPECT_EQ(EstTraceAnalyse(canal), analyses[canal] == '1') << canal;
    }
}

TEST(ReceveurTrace, InterrupteursDAssertion)
{
    EXPECT_TRUE(gOnAsserteProgSpecifique && gOnAsserteLNG && gOnAsserteGenerale && gOnAsserte);
    EXPECT_TRUE(gOnTraceProgSpecifique && gOnTraceGenerale);
    EXPECT_TRUE(OnAsserte());
    EXPECT_TRUE(OnAsserteLNG());
    gOnAsserteGenerale = false;
    EXPECT_FALSE(OnAsserte());
    EXPECT_TRUE(OnAsserteLNG());
    gOnAsserteGenerale = true;
    gOnAsserte = false;
    EXPECT_FALSE(OnAsserte());
    EXPECT_FALSE(OnAsserteLNG());
    gOnAsserte = true;
    gOnAsserteLNG = false;
    EXPECT_TRUE(OnAsserte());
    EXPECT_FALSE(OnAsserteLNG());
    gOnAsserteLNG = true;
}
