#include <gtest/gtest.h>
#include <unicode/ucol.h>

#include <QFile>
#include <QStringList>
#include <QTextCodec>

#include <cstring>
#include <fstream>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "noyau/chaines/UniChaine.h"
#include "noyau/conteneurs/ListeT.h"
#include "noyau/erreurs/Exceptions.h"

using sdd::exceptions::IndexHorsBorne;

// Les messages d'échec montrent le texte.
void PrintTo(UniChaine const& s, std::ostream* os)
{
    *os << '"' << s.DonneQString().toStdString() << '"';
}

namespace {

UniChaine U(char16_t const* texte)
{
    return UniChaine(texte);
}
UniChaine U(std::u16string const& texte)
{
    return UniChaine(texte.c_str(), int(texte.size()));
}

std::u16string Texte(UniChaine const& s)
{
    return std::u16string(s.PreteUniCString(), std::size_t(s.Longueur()));
}

// Chaîne au hasard sur un alphabet donné.
QString AuHasard(std::mt19937& gen, QString const& alphabet, int longueurMax)
{
    std::uniform_int_distribution<int> longueur(0, longueurMax);
    std::uniform_int_distribution<int> lettre(0, alphabet.size() - 1);
    QString s;
    for (int n = longueur(gen); n > 0; --n)
        s += alphabet[lettre(gen)];
    return s;
}

// Mots du dictionnaire français, en UTF-8.
std::vector<QString> MotsFrancais()
{
    std::vector<QString> mots;
    std::ifstream f("/usr/share/dict/french");
    for (std::string ligne; std::getline(f, ligne);)
        mots.push_back(QString::fromUtf8(ligne.c_str()));
    return mots;
}

// Traductions d'un catalogue .mo : du vrai texte d'interface en français.
QStringList TraductionsFrancaises(char const* catalogue)
{
    QFile f(QStringLiteral("/usr/share/locale/fr/LC_MESSAGES/") + catalogue);
    QStringList textes;
    if (!f.open(QIODevice::ReadOnly))
        return textes;
    QByteArray const d = f.readAll();
    auto const mot = [&](int pos) {
        quint32 v;
        std::memcpy(&v, d.constData() + pos, 4);
        return int(v);
    };
    if (d.size() < 28 || mot(0) != int(0x950412de))
        return textes;
    int const n = mot(8);
    int const table = mot(16);
    for (int i = 1; i < n; ++i) {
        int const longueur = mot(table + 8 * i);
        int const debut = mot(table + 8 * i + 4);
        if (debut + longueur <= d.size())
            // Les formes plurielles sont séparées par un octet nul.
            textes << QString::fromUtf8(d.constData() + debut, longueur).split(QChar(0));
    }
    return textes;
}

} // namespace

namespace {

struct CodecNomme
{
    UniChaine::Codage codage;
    char const* nom;
};
constexpr CodecNomme kCodecs[] = {{UniChaine::kMacRoman, "Macintosh"},
                                  {UniChaine::kLatin9, "ISO 8859-15"},
                                  {UniChaine::kWinLatin1, "windows-1252"},
                                  {UniChaine::kUTF8, "utf8"},
                                  {UniChaine::kUTF16, "utf16"},
                                  {UniChaine::kDOS, "CP850"}};

// Unités au hasard : ASCII, Latin-1, typographie, demi-codets appariés ou non, marques
// d'ordre, n'importe quoi.
QString UnitesAuHasard(std::mt19937& gen, int longueurMax)
{
    static std::u16string const choisies = u"aZ09 é€’«»½×\u00A0\u2028\uFEFF\uFFFE\uFFFD";
    QString s;
    for (int n = int(gen() % unsigned(longueurMax + 1)); n > 0; --n) {
        switch (gen() % 5) {
        case 0:
            s += QChar(char16_t(gen() % 0x80));
            break;
        case 1:
            s += QChar(choisies[gen() % choisies.size()]);
            break;
        case 2:
            s += QChar(char16_t(0xD800 + gen() % 0x800)); // demi-codet, souvent seul
            break;
        case 3: {
            char32_t const c = 0x10000 + gen() % 0x100000;
            s += QString::fromUcs4(&c, 1);
            break;
        }
        default:
            s += QChar(char16_t(gen() % 0x10000));
        }
    }
    return s;
}

} // namespace

TEST(UniChaine, CodagesOctetPourOctetCommeLesCodecsNommes)
{
    std::mt19937 gen(7);
    for (auto const& [codage, nom] : kCodecs) {
        QTextCodec* const codec = QTextCodec::codecForName(nom);
        ASSERT_NE(codec, nullptr) << nom;
        std::size_t const zero = codage == UniChaine::kUTF16 ? 2 : 1;
        for (int essai = 0; essai < 400; ++essai) {
            // Octets → texte, par chaque chemin.
            std::string octets(gen() % 40, '\0');
            for (char& o : octets)
                o = char(gen());
            if (essai == 0) {
                octets.resize(256);
                for (int o = 0; o < 256; ++o)
                    octets[std::size_t(o)] = char(o);
            }
            QString const lu = codec->toUnicode(octets.data(), int(octets.size()));
            ASSERT_EQ(UniChaine(octets, codage).DonneQString(), lu) << nom;
            ASSERT_EQ(UniChaine(octets.data(), codage, int(octets.size())).DonneQString(), lu);
            ASSERT_EQ(UniChaine().Mets(octets, codage).DonneQString(), lu);

            // Texte → octets, par chaque chemin.
            UniChaine const s(UnitesAuHasard(gen, 30));
            QByteArray const forme = codec->fromUnicode(s.DonneQString());
            ASSERT_EQ(s.Longueur(codage), forme.size()) << nom;
            char const* prete = s.PreteCString(codage);
            ASSERT_EQ(QByteArray(prete, forme.size()), forme) << nom;
            ASSERT_EQ(std::string(prete + forme.size(), zero), std::string(zero, '\0'));
            std::unique_ptr<char[]> copie(s.CreeCString(codage));
            ASSERT_EQ(QByteArray(copie.get(), forme.size() + int(zero)),
                      forme + QByteArray(int(zero), '\0'));

            // Tampon de l'appelant : la plus longue tête faite de caractères entiers. Les
            // demi-codets seuls sont écartés ici : le codec garde en attente celui qui finit
            // une tête, qui ne dirait plus la longueur de sa forme.
            QString entiers = s.DonneQString();
            for (int j = 0; j < entiers.size(); ++j) {
                if (entiers.at(j).isHighSurrogate() && j + 1 < entiers.size() &&
                    entiers.at(j + 1).isLowSurrogate())
                    ++j;
                else if (entiers.at(j).isSurrogate())
                    entiers[j] = QLatin1Char('x');
            }
            UniChaine const e(entiers);
            QByteArray const formeEntiers = codec->fromUnicode(entiers);
            unsigned const taille =
                unsigned(gen() % unsigned(formeEntiers.size() + 4)) + unsigned(zero);
            QByteArray attendu;
            for (int j = 0; j <= e.Longueur(); ++j) {
                if (j > 0 && j < e.Longueur() && QChar::isHighSurrogate(e[j - 1]) &&
                    QChar::isLowSurrogate(e[j]))
                    continue; // une paire ne se coupe pas
                QByteArray const tete = codec->fromUnicode(entiers.left(j));
                if (std::size_t(tete.size()) + zero > taille)
                    break;
                attendu = tete;
            }
            std::vector<char> tampon(taille, '\x55');
            ASSERT_EQ(e.PreteCString(codage, taille, tampon.data()), tampon.data());
            ASSERT_EQ(QByteArray(tampon.data(), attendu.size() + int(zero)),
                      attendu + QByteArray(int(zero), '\0'))
                << nom << " " << taille;
        }
        // Le texte vide a sa forme à lui (la marque d'ordre en UTF-16), sans rien écrire
        // dans la chaîne vide partagée.
        QByteArray const vide = codec->fromUnicode(QString());
        EXPECT_EQ(QByteArray(kUniChaineNulle.PreteCString(codage), vide.size() + int(zero)),
                  vide + QByteArray(int(zero), '\0'));
    }
    // Ce qui distingue ces codecs des convertisseurs de sdd::ChaineN.
    EXPECT_EQ(Texte(UniChaine("\xEF\xBB\xBF"
                              "a",
                              UniChaine::kUTF8)),
              u"a");
    EXPECT_EQ(Texte(UniChaine(std::string("\xFE\xFF\x00\x61", 4), UniChaine::kUTF16)), u"a");
    EXPECT_EQ(U(u"a").Longueur(UniChaine::kUTF16), 4);
    // Codage inconnu.
    auto const inconnu = static_cast<UniChaine::Codage>(9);
    EXPECT_TRUE(UniChaine("abc", inconnu).EstVide());
    EXPECT_EQ(U(u"abc").PreteCString(inconnu), nullptr);
    EXPECT_EQ(U(u"abc").CreeCString(inconnu), nullptr);
    EXPECT_EQ(U(u"abc").Longueur(inconnu), 0);
}

TEST(UniChaine, ConstructionsGardentChaqueUnite)
{
    // Une marque d'ordre en tête est une unité comme une autre.
    EXPECT_EQ(Texte(UniChaine(u"\uFEFFabc")), u"\uFEFFabc");
    EXPECT_EQ(Texte(UniChaine(u"\uFFFEabc")), u"\uFFFEabc");
    EXPECT_EQ(Texte(UniChaine(u"\uFEFFabc", 2)), u"\uFEFFa");
    // Caractères larges : ce qui n'est pas un caractère devient U+FFFD.
    wchar_t const larges[] = {L'ç', 0x1F600, 0x110000, 0xD800, wchar_t(-1), L'z', 0};
    EXPECT_EQ(Texte(UniChaine(larges)), u"ç\U0001F600\uFFFD\uFFFD\uFFFDz");
    EXPECT_EQ(Texte(UniChaine(larges, 2)), u"ç\U0001F600");
    EXPECT_EQ(Texte(UniChaine(u"abcdef", 3)), u"abc");
    EXPECT_EQ(Texte(UniChaine("abcdef", UniChaine::kUTF8, 2)), u"ab");
    EXPECT_EQ(UniChaine(u'x').Longueur(), 1);
    EXPECT_TRUE(kUniChaineNulle.EstVide());
    UniChaine s(u"texte");
    s.PreteCString(UniChaine::kLatin9);
    EXPECT_TRUE(s.Init().EstVide());
    EXPECT_TRUE(s.Mets("é", UniChaine::kUTF8) == U(u"é"));
    EXPECT_EQ(U(u"x").hash(), qHash(QStringLiteral("x"), 0));
}

TEST(UniChaine, TailleHorsDePorteeRefuseeSansToucherAuTexte)
{
    // Plus d'octets qu'un QString ne tient : refus net, avant toute allocation.
    std::string const enorme(std::size_t(1) << 30, 'a');
    UniChaine s(u"garde");
    EXPECT_THROW(UniChaine(enorme, UniChaine::kLatin9), std::bad_array_new_length);
    EXPECT_THROW(s.Mets(enorme, UniChaine::kLatin9), std::bad_array_new_length);
    // Toutes les routes d'octets, jusqu'au zéro final compris : aucune longueur ne passe par
    // un int.
    char const* const zero = enorme.c_str();
    EXPECT_THROW(UniChaine(zero, UniChaine::kUTF8, -1), std::bad_array_new_length);
    EXPECT_THROW(UniChaine(zero, UniChaine::kDOS), std::bad_array_new_length);
    EXPECT_THROW(s.AjouteFin(zero, UniChaine::kUTF8), std::bad_array_new_length);
    EXPECT_THROW(s.AjouteDebut(zero, UniChaine::kLatin9), std::bad_array_new_length);
    EXPECT_EQ(Texte(s), u"garde");
}

TEST(UniChaine, IndexHorsBorneLaisseLObjetIntact)
{
    UniChaine s(u"abc");
    auto const echoue = [&](auto operation) {
        EXPECT_THROW(operation(), IndexHorsBorne);
        EXPECT_EQ(Texte(s), u"abc");
    };
    echoue([&] { s.MetsCarAIndex(u'x', 3); });
    echoue([&] { s.MetsCarAIndex(u'x', -1); });
    echoue([&] { s.Remplace(2, 2, U(u"zz")); });
    echoue([&] { s.Remplace(4, 0, U(u"zz")); });
    echoue([&] { s.EnleveDebut(4); });
    echoue([&] { s.EnleveFin(-1); });
    echoue([&] { s.EnleveIntervalle(1, 3); });
    echoue([&] { s.SousChaine(4); });
    echoue([&] { s.SousChaine(1, 3); });
    echoue([&] { s[3]; });
    echoue([&] { s.Contient(U(u"a"), nullptr, 4); });
    echoue([&] { s.TrouveDernier(u'a', nullptr, 4); });
    echoue([&] { UniChaine::DepuisNombre(5, 37); });
    try {
        s.EnleveFin(5);
    } catch (IndexHorsBorne const& e) {
        EXPECT_EQ(Texte(e.Explication()), u"index=5 min=0 max=3");
    }
    // Les bornes elles-mêmes sont permises.
    EXPECT_EQ(Texte(std::as_const(s).SousChaine(3)), u"");
    EXPECT_EQ(Texte(s.Remplace(3, 0, U(u"d"))), u"abcd");
    EXPECT_EQ(Texte(s.EnleveIntervalle(0, 3)), u"d");
}

TEST(UniChaine, JumeauxConstLaissentLObjetIntact)
{
    UniChaine const s(u"  œuvre <b>D’art</b>\n ");
    UniChaine const avant = s;
    std::vector<UniChaine> const resultats = {s.AjouteFin(U(u"x")),
                                              s.AjouteDebut(u'x'),
                                              s.AjouteFin("é", UniChaine::kUTF8),
                                              s.MetsCarAIndex(u'x', 0),
                                              s.Remplace(0, 2, U(u"")),
                                              s.Remplace(u' ', u'_'),
                                              s.Remplace(U(u"D"), U(u"d")),
                                              s.RemplaceMotEntier(U(u"b"), U(u"i")),
                                              s.EnleveDebut(2),
                                              s.EnleveFin(2),
                                              s.EnleveIntervalle(1, 1),
                                              s.SousChaine(2, 3),
                                              s.Majusculise(),
                                              s.Minusculise(),
                                              s.MajusculisePremiereLettre(),
                                              s.Deligature(),
                                              s.NettoieBlancs(),
                                              s.ConsolideBlancs(),
                                              s.NettoieHTML(),
                                              s.NormaliseApostrophe(u'\''),
                                              s.EncodeBackslash(U(u"<")),
                                              s.CrypterRot13(),
                                              s.ConvertisRetoursDeCharriot(UniChaine::kWinLatin1)};
    EXPECT_EQ(s, avant);
    EXPECT_EQ(Texte(s.NettoieHTML()), u"  œuvre D’art\n ");
    EXPECT_EQ(Texte(s.NettoieBlancs()), u"œuvre <b>D’art</b>");
    EXPECT_EQ(Texte(s.SousChaine(2, 5)), u"œuvre");
    EXPECT_EQ(Texte(s.Deligature().SousChaine(2, 6)), u"oeuvre");
    for (auto const& r : resultats)
        EXPECT_NE(r, avant) << &r - resultats.data();
    EXPECT_EQ(Texte(UniChaine(u"ab").AjouteDebut("ç", UniChaine::kUTF8)), u"çab");
}

TEST(UniChaine, CasseCommeQtSurLesLettresLatines)
{
    // Sur ces lettres, la table et Qt s'accordent (ß, µ et ÿ ont des règles propres).
    QString const alphabet =
        QString::fromUtf16(u"aAzZéÉàÀçÇœŒæÆôÔñÑ09 -’«»\t\u00A0") + QString(QChar(0x17D));
    std::mt19937 gen(1);
    for (int essai = 0; essai < 2000; ++essai) {
        QString const q = AuHasard(gen, alphabet, 16);
        UniChaine const s(q);
        EXPECT_EQ(s.Majusculise().DonneQString(), q.toUpper());
        EXPECT_EQ(s.Minusculise().DonneQString(), q.toLower());
        EXPECT_EQ(s.EstToutEnMinuscules(), q.toLower() == q);
        EXPECT_EQ(s.EstToutEnMajuscules(), q.toUpper() == q);
        EXPECT_EQ(s.ContientMajuscule(), q.toLower() != q);
        // Casse sous tolérance : recherche insensible de Qt.
        QString const aiguille = AuHasard(gen, QStringLiteral("aAéÉ"), 2);
        int pos = -1;
        int const attendu = q.indexOf(aiguille, 0, Qt::CaseInsensitive);
        EXPECT_EQ(s.Contient(UniChaine(aiguille), &pos, 0, UniChaine::MalgrayCasse), attendu >= 0);
        if (attendu >= 0) {
            EXPECT_EQ(pos, attendu);
        }
        EXPECT_EQ(s.Remplace(UniChaine(aiguille.isEmpty() ? QStringLiteral("a") : aiguille),
                             U(u"#"), UniChaine::MalgrayCasse)
                      .DonneQString(),
                  QString(q).replace(aiguille.isEmpty() ? QStringLiteral("a") : aiguille,
                                     QStringLiteral("#"), Qt::CaseInsensitive));
    }
    // La minuscule garde commandes et insécable, que la table replie pour comparer.
    EXPECT_EQ(Texte(U(u"A\tB\u00A0C").Minusculise()), u"a\tb\u00A0c");
    EXPECT_EQ(Texte(U(u"« élan »").MajusculisePremiereLettre()), u"« Élan »");
    EXPECT_EQ(Texte(U(u"1er").MajusculisePremiereLettre()), u"1er");
    EXPECT_EQ(Texte(U(u"Été").MinusculisePremiereLettre()), u"été");
    EXPECT_EQ(Texte(U(u"été").DonneChaineMajusculiseePremiereLettre()), u"Été");
    EXPECT_TRUE(U(u"Été").CommenceParMajuscule());
    EXPECT_FALSE(U(u" Été").CommenceParMajuscule());
    EXPECT_EQ(Texte(U(u"Ǖ çà\u00A0½").DonneChaineSansAccents()), u"U ca\u00A01");
    EXPECT_EQ(Texte(U(u"ÉCOLE Ǖ").DonneChaineMinusculiseSansAccents()), u"ecole u");
    EXPECT_EQ(Texte(U(u"Œil, cœur, Æ, straße").Deligature()), u"OEil, coeur, AE, strasze");
}

TEST(UniChaine, RecherchesCommeQt)
{
    std::mt19937 gen(3);
    for (int essai = 0; essai < 3000; ++essai) {
        QString const q = AuHasard(gen, QStringLiteral("aab"), 10);
        QString const a = AuHasard(gen, QStringLiteral("ab"), 3);
        UniChaine const s(q), aiguille(a);
        std::uniform_int_distribution<int> position(0, q.size());
        int const depuis = position(gen);
        int pos = -1;
        int attendu = q.indexOf(a, depuis);
        EXPECT_EQ(s.Contient(aiguille, &pos, depuis), attendu >= 0) << q.toStdString();
        if (attendu >= 0) {
            EXPECT_EQ(pos, attendu);
        }
        // La même chose sous une tolérance sans effet ici prend l'autre chemin.
        EXPECT_EQ(s.Contient(aiguille, &pos, depuis, UniChaine::MalgrayAccents), attendu >= 0);
        if (attendu >= 0) {
            EXPECT_EQ(pos, attendu);
        }
        for (UniChaine::Malgray m : {0u, UniChaine::MalgrayAccents}) {
            // Pour Qt, depuis = longueur est hors du texte ; ici, c'est « partout ».
            attendu = q.lastIndexOf(a, depuis == q.size() ? -1 : depuis);
            if (!a.isEmpty()) {
                EXPECT_EQ(s.TrouveDernier(aiguille, &pos, depuis, m), attendu >= 0)
                    << q.toStdString() << " " << a.toStdString() << " " << depuis;
                if (attendu >= 0) {
                    EXPECT_EQ(pos, attendu);
                }
            }
            EXPECT_EQ(s.CommencePar(aiguille, m), q.startsWith(a));
            EXPECT_EQ(s.TerminePar(aiguille, m), q.endsWith(a));
            EXPECT_EQ(s.Egal(aiguille, m), q == a);
        }
        attendu = q.indexOf(QLatin1Char('b'), depuis);
        EXPECT_EQ(s.Contient(u'b', &pos, depuis), attendu >= 0);
        if (attendu >= 0) {
            EXPECT_EQ(pos, attendu);
        }
        EXPECT_EQ(s.Remplace(aiguille, U(u"xy")).DonneQString(),
                  a.isEmpty() ? q : QString(q).replace(a, QStringLiteral("xy")));
        EXPECT_EQ(s.Compare(aiguille), (q > a) - (q < a));
        int prefixe = 0;
        while (prefixe < q.size() && prefixe < a.size() && q[prefixe] == a[prefixe])
            ++prefixe;
        EXPECT_EQ(s.LongueurPrefixeCommun(aiguille), prefixe);
    }
    UniChaine const s(u"le chat, la chatte; chat");
    int pos = -1;
    EXPECT_TRUE(s.ContientMotEntier(U(u"chat"), &pos, 4));
    EXPECT_EQ(pos, 20);
    EXPECT_FALSE(U(u"chatte").ContientMotEntier(U(u"chat")));
    EXPECT_EQ(Texte(s.RemplaceMotEntier(U(u"chat"), U(u"rat"))), u"le rat, la chatte; rat");
    EXPECT_TRUE(s.ContientUnCarDe(U(u";,"), &pos));
    EXPECT_EQ(pos, 7);
    EXPECT_EQ(s.LongueurSuffixeCommun(U(u"un CHAT"), UniChaine::MalgrayCasse), 5);
}

TEST(UniChaine, TolerancesEtLigatures)
{
    using M = UniChaine;
    EXPECT_TRUE(M::UniCarEgalOption(u'É', u'e', M::MalgrayAccents | M::MalgrayCasse));
    EXPECT_FALSE(M::UniCarEgalOption(u'É', u'e', M::MalgrayAccents));
    EXPECT_FALSE(M::UniCarEgalOption(u'É', u'e', 0));
    EXPECT_TRUE(M::UniCarEgalOption(u'\u2019', u'\'', M::MalgrayTypographie));
    EXPECT_TRUE(M::UniCarEgalOption(u'\u00A0', u' ', M::MalgrayTypographie));
    EXPECT_TRUE(M::UniCarEgalOption(u'\u00A0', u' ', M::MalgrayCasse));
    // Les espaces seules : ni tirets ni apostrophes.
    EXPECT_TRUE(M::UniCarEgalOption(u'\u202F', u' ', M::MalgrayEspaces));
    EXPECT_FALSE(M::UniCarEgalOption(u'\u2014', u'-', M::MalgrayEspaces));
    EXPECT_FALSE(sdd::UniCarEgalOption(u'\u202F', u' ', M::MalgrayEspaces));

    M::Malgray const lc = M::MalgrayLigatures | M::MalgrayCasse;
    EXPECT_TRUE(U(u"Œuvre").Egal(U(u"oeuvre"), lc));
    EXPECT_TRUE(U(u"cœur").Egal(U(u"COEUR"), lc));
    EXPECT_TRUE(U(u"COEUR").Egal(U(u"cœur"), lc));
    EXPECT_FALSE(U(u"Œuvre").Egal(U(u"oeuvre"), M::MalgrayCasse));
    EXPECT_FALSE(U(u"straße").Egal(U(u"strasse"), lc));
    EXPECT_FALSE(U(u"straße").Egal(U(u"strasze"), lc));
    EXPECT_TRUE(U(u"Ex æquo").Egal(U(u"ex aequo"), lc));

    int pos = -1, longueur = -1;
    UniChaine const phrase(u"Le cœur a ses raisons");
    EXPECT_TRUE(phrase.ContientMalgrayLigature(U(u"COEUR"), 0, lc, &pos, &longueur));
    EXPECT_EQ(pos, 3);
    EXPECT_EQ(longueur, 4);
    EXPECT_FALSE(phrase.ContientMalgrayLigature(U(u"COEUR"), 4, lc, &pos));
    EXPECT_TRUE(U(u"un oeuf").ContientMalgrayLigature(U(u"œuf"), 0, lc, &pos, &longueur));
    EXPECT_EQ(pos, 3);
    EXPECT_EQ(longueur, 4);
    EXPECT_TRUE(U(u"abc").ContientMalgrayLigature(U(u""), 2, lc, &pos, &longueur));
    EXPECT_EQ(pos, 2);
    EXPECT_EQ(longueur, 0);
    // Une ligature ne se coupe pas : « co » n'est pas au début de « cœur ».
    EXPECT_FALSE(U(u"cœur").CommencePar(U(u"co"), lc));
    EXPECT_TRUE(U(u"cœur").CommencePar(U(u"COE"), lc));
    EXPECT_TRUE(U(u"sœur").TerminePar(U(u"oeur"), lc));
    EXPECT_TRUE(U(u"soeur").TerminePar(U(u"œur"), lc));
    EXPECT_FALSE(U(u"soeur").TerminePar(U(u"eœur"), lc));
    EXPECT_EQ(U(u"cœur").LongueurPrefixeCommun(U(u"coeux"), lc), 3);
    EXPECT_EQ(U(u"coeur").LongueurPrefixeCommun(U(u"cœux"), lc), 4);
    EXPECT_TRUE(phrase.Contient(U(u"COEUR"), &pos, 0, lc));
    EXPECT_TRUE(phrase.TrouveDernier(U(u"coeur"), &pos, -1, lc));
    EXPECT_EQ(pos, 3);
    EXPECT_TRUE(U(u"cœur, sœur").ContientMotEntier(U(u"soeur"), &pos, 0, lc));
    EXPECT_EQ(pos, 6);
    EXPECT_EQ(Texte(U(u"un œuf, deux oeufs").Remplace(U(u"oeuf"), U(u"X"), lc)), u"un X, deux Xs");
    EXPECT_EQ(Texte(U(u"un œuf, deux oeufs").RemplaceMotEntier(U(u"oeuf"), U(u"X"), lc)),
              u"un X, deux oeufs");
    // Les espaces seules jouent aussi avec les ligatures.
    M::Malgray const le = M::MalgrayLigatures | M::MalgrayEspaces;
    EXPECT_TRUE(U(u"cœur\u202Fsaint").Egal(U(u"coeur saint"), le));
    EXPECT_FALSE(U(u"cœur\u202Fsaint").Egal(U(u"coeur saint"), M::MalgrayLigatures));
    EXPECT_TRUE(U(u"d’accord").Egal(U(u"D'ACCORD"), M::MalgrayTypographie | M::MalgrayCasse));
    EXPECT_TRUE(U(u"abc").Remplace(u'B', u'x', M::MalgrayCasse) == U(u"axc"));
}

TEST(UniChaine, CompareLocaleCommeICUSurLeDictionnaire)
{
    std::vector<QString> const mots = MotsFrancais();
    ASSERT_GT(mots.size(), 1000u);
    // Sans collateur : l'ordre des unités.
    UniChaine::LibereLocale();
    EXPECT_EQ(U(u"b").CompareLocale(U(u"a")), 1);
    EXPECT_EQ(U(u"é").CompareLocale(U(u"f")), 1);

    UniChaine::InitialiseLocale(U(u"fr_CA"));
    ASSERT_NE(UniChaine::monCollatorLocale, nullptr);
    UErrorCode erreur = U_ZERO_ERROR;
    UCollator* temoin = ucol_open("fr_CA", &erreur);
    ASSERT_TRUE(U_SUCCESS(erreur));
    ucol_setStrength(temoin, UCOL_SECONDARY);
    ucol_setAttribute(temoin, UCOL_ALTERNATE_HANDLING, UCOL_SHIFTED, &erreur);
    std::mt19937 gen(11);
    std::uniform_int_distribution<std::size_t> choix(0, mots.size() - 1);
    for (int essai = 0; essai < 5000; ++essai) {
        QString const& a = mots[choix(gen)];
        // Un mot sur quatre contre sa propre majuscule.
        QString const b = essai % 4 == 0 ? a.toUpper() : mots[choix(gen)];
        int const attendu =
            ucol_strcoll(temoin, reinterpret_cast<UChar const*>(a.utf16()), a.size(),
                         reinterpret_cast<UChar const*>(b.utf16()), b.size());
        EXPECT_EQ(UniChaine(a).CompareLocale(UniChaine(b)), attendu);
    }
    ucol_close(temoin);
    // Casse, espaces et ponctuation ne comptent pas ; les accents si.
    EXPECT_EQ(U(u"Élève").CompareLocale(U(u"élève")), 0);
    EXPECT_EQ(U(u"porte-clé").CompareLocale(U(u"porteclé")), 0);
    EXPECT_LT(U(u"eleve").CompareLocale(U(u"élève")), 0);
    EXPECT_LT(U(u"élève").CompareLocale(U(u"elevez")), 0);
    // Un nom qu'ICU refuse : l'exception, et le collateur précédent reste.
    UCollator* const avant = UniChaine::monCollatorLocale;
    try {
        UniChaine::InitialiseLocale(UniChaine(QString(400, QLatin1Char('x'))));
        ADD_FAILURE() << "pas d'exception";
    } catch (sdd::exceptions::OuvertureEchouee const& e) {
        EXPECT_EQ(Texte(e.Message()), u"Ouverture échouée");
    }
    EXPECT_EQ(UniChaine::monCollatorLocale, avant);
    EXPECT_EQ(U(u"Élève").CompareLocale(U(u"élève")), 0);
    UniChaine::LibereLocale();
    EXPECT_EQ(UniChaine::monCollatorLocale, nullptr);
}

TEST(UniChaine, Nettoyages)
{
    EXPECT_EQ(Texte(U(u"a<b>c</b>d").NettoieHTML()), u"acd");
    EXPECT_EQ(Texte(U(u"a<b").NettoieHTML()), u"a<b");
    EXPECT_EQ(Texte(U(u"<i>x</i> < y").NettoieHTML()), u"x < y");
    EXPECT_EQ(Texte(U(u"« a\u202F»\u202F?\u202F!\u202F;\u202F:").AjusteTypographieSansEspaceFine()),
              u"« a\u00A0»?!;\u202F:");
    EXPECT_EQ(Texte(U(u"«\u202Fa").AjusteTypographieSansEspaceFine()), u"«\u00A0a");
    EXPECT_EQ(Texte(U(u"a  b\tc\t").ConsolideBlancs()), u"a b c\t");
    EXPECT_EQ(Texte(U(u" a \u00A0 b ").ConsolideBlancs()), u" a b ");
    // La dernière unité reste telle quelle, blanche ou non.
    EXPECT_EQ(Texte(U(u"a\t \n").ConsolideBlancs()), u"a \n");
    EXPECT_EQ(Texte(U(u"a\t\t").ConsolideBlancs()), u"a \t");
    EXPECT_EQ(Texte(U(u"a  ").ConsolideBlancs()), u"a  ");
    EXPECT_EQ(Texte(U(u" \t a b\u2028").NettoieBlancs()), u"a b");
    EXPECT_EQ(Texte(U(u"l'a l`b l´c ‘d’").NormaliseApostrophe()), u"l’a l’b l’c ’d’");
    EXPECT_EQ(Texte(U(u"a\rb\r\nc\nd").ConvertisRetoursDeCharriot(UniChaine::kWinLatin1)),
              u"a\r\nb\r\nc\r\nd");
    EXPECT_EQ(Texte(U(u"a\rb\r\nc\nd").ConvertisRetoursDeCharriot(UniChaine::kMacRoman)),
              u"a\rb\rc\rd");
    EXPECT_EQ(Texte(U(u"a\rb\r\nc\nd").ConvertisRetoursDeCharriot(UniChaine::kLatin9)),
              u"a\nb\nc\nd");
    EXPECT_EQ(Texte(U(u"a\rb").ConvertisRetoursDeCharriot(UniChaine::kUTF8)), u"a\rb");
    EXPECT_EQ(Texte(U(u"un\rdeux\r\ntrois\r\n").CoupeAuPremierRC()), u"un");
    EXPECT_EQ(Texte(U(u"un\rdeux\r\ntrois\r\n").CoupeAuDernierRC()), u"un\rdeux\r\ntrois");
    EXPECT_EQ(Texte(U(u"sans fin").CoupeAuDernierRC()), u"sans fin");

    // Chaque membre des ensembles typographiques devient son canonique, hors Unicode.
    auto const& table = UniChaine::DonneTableCarTypographiques();
    ASSERT_EQ(table.size(), kNbEnsemblesTypographiques);
    EXPECT_EQ(table[1].premier.pattern().left(1), QStringLiteral("("));
    for (unsigned long e = 0; e < kNbEnsemblesTypographiques; ++e) {
        for (unsigned long k = 0; k < UniCaractere::sNbCarsARemplacer[e]; ++k) {
            UniChaine const s =
                U(std::u16string(u"x") + char16_t(UniCaractere::sCarsARemplacer[e][k]) + u"y");
            EXPECT_EQ(s.ConvertisCarsTypographiques(UniChaine::kLatin9)[1],
                      UniChaine::sCarsCanoniques[e]);
            EXPECT_EQ(s.ConvertisCarsTypographiques(UniChaine::kUTF8), s);
        }
    }

    // Contre-oblique et ROT13 : aller-retour sur du texte au hasard.
    std::mt19937 gen(5);
    for (int essai = 0; essai < 2000; ++essai) {
        UniChaine const s(AuHasard(gen, QStringLiteral("\\\\n\"a'Z9 "), 10));
        UniChaine const code = s.EncodeBackslash(U(u"\"n\\"));
        EXPECT_EQ(code.DecodeBackslash(U(u"\"n")), s);
        // Un doublon du supplément protège deux fois ; le décodage le défait aussi.
        EXPECT_EQ(s.EncodeBackslash(U(u"aa")).DecodeBackslash(U(u"aa")), s);
        EXPECT_EQ(code.Longueur(), s.Longueur() + s.DonneQString().count(QLatin1Char('\\')) +
                                       s.DonneQString().count(QLatin1Char('"')) +
                                       s.DonneQString().count(QLatin1Char('n')));
        EXPECT_EQ(s.CrypterRot13().CrypterRot13(), s);
    }
    EXPECT_EQ(Texte(U(u"a\\b\"").EncodeBackslash(U(u"\""))), u"a\\\\b\\\"");
    EXPECT_EQ(Texte(U(u"a").EncodeBackslash(U(u"aa"))), u"\\\\a");
    EXPECT_EQ(Texte(U(u"Hello, World 2024 é").CrypterRot13()), u"Uryyb, Jbeyq 7579 é");
}

TEST(UniChaine, NombresFormates)
{
    EXPECT_EQ(Texte(UniChaine::DepuisNombre(-5, 10, 4, true, false)), u"00-5");
    EXPECT_EQ(Texte(UniChaine::DepuisNombre(255, 16, 0, false, false)), u"FF");
    EXPECT_EQ(Texte(UniChaine::DepuisNombre(7u, 2, 5, false, true)), u"111  ");
    EXPECT_EQ(Texte(UniChaine::DepuisNombre(4294967295u)), u"4294967295");
    EXPECT_THROW(UniChaine::DepuisNombre(5, 1), IndexHorsBorne);
    EXPECT_EQ(Texte(UniChaine::DepuisNombre(2.5, 3)), u"2.500");

    auto const fr = kLangueFrancais;
    auto const en = kLangueAnglais;
    EXPECT_EQ(Texte(UniChaine::DonneNombreFormatay(1234567.891, 2, false, fr)),
              u"1\u202F234\u202F567,89");
    EXPECT_EQ(Texte(UniChaine::DonneNombreFormatay(1234567.891, 2, false, en)), u"1,234,567.89");
    EXPECT_EQ(Texte(UniChaine::DonneNombreFormatay(-1000.5, 3, true, fr)), u"-1\u202F000,5");
    EXPECT_EQ(Texte(UniChaine::DonneNombreFormatay(12.0, 2, true, en)), u"12");
    EXPECT_EQ(Texte(UniChaine::DonneNombreFormatay(-0.001, 2, false, fr)), u"0,00");
    EXPECT_EQ(Texte(UniChaine::DonneNombreFormatay(999, fr)), u"999");
    EXPECT_EQ(Texte(UniChaine::DonneNombreFormatay(-123456, en)), u"-123,456");
    EXPECT_EQ(Texte(UniChaine::DonneNombreFormatay(4294967295u, fr)),
              u"4\u202F294\u202F967\u202F295");
    EXPECT_EQ(Texte(UniChaine::DonnePourcentageFormatay(0.256, 1, false, fr)), u"25,6\u00A0%");
    EXPECT_EQ(Texte(UniChaine::DonnePourcentageFormatay(0.256, 2, true, en)), u"25.6%");
    EXPECT_EQ(Texte(UniChaine::DonnePourcentageFormatay(12.5, 0, false, fr)), u"1\u202F250\u00A0%");
    // Tout nombre relu sans séparateurs redonne sa valeur.
    std::mt19937 gen(9);
    std::uniform_int_distribution<int> entier(INT32_MIN, INT32_MAX);
    for (int essai = 0; essai < 1000; ++essai) {
        int const n = entier(gen);
        QString texte = UniChaine::DonneNombreFormatay(n, fr).DonneQString();
        EXPECT_EQ(texte.remove(QChar(0x202F)).toInt(), n);
    }
    bool ok = false;
    EXPECT_EQ(U(u" 0x1F ").DonneEntierHex(&ok), 31u);
    EXPECT_TRUE(ok);
    EXPECT_EQ(U(u"ffffffff").DonneEntierHex(), 0xFFFFFFFFu);
    EXPECT_EQ(U(u"zz").DonneEntierHex(&ok), 0u);
    EXPECT_FALSE(ok);
}

TEST(UniChaine, EchappementPourcentEtTexteReel)
{
    UniChaine const vide;
    EXPECT_EQ(Texte(U(u"é").DonneChaineEchappayPourcent(vide, vide)), u"%C3%A9");
    EXPECT_EQ(Texte(U(u"a b/").DonneChaineEchappayPourcent(vide, U(u"/"))), u"a%20b%2F");
    EXPECT_EQ(Texte(U(u"a b").DonneChaineEchappayPourcent(U(u" "), vide)), u"a b");
    EXPECT_EQ(Texte(U(u"\U0001F600").DonneChaineEchappayPourcent(vide, vide)), u"%F0%9F%98%80");
    EXPECT_EQ(Texte(U(u"é").DonneChaineEchappayPourcent(vide, vide, UniChaine::kLatin9)), u"%E9");
    EXPECT_EQ(Texte(UniChaine::DonneChaineDesechappeePourcent(U(u"%41%e9"))), u"A\uFFFD");
    EXPECT_EQ(Texte(UniChaine::DonneChaineDesechappeePourcent(U(u"%41%e9"), UniChaine::kLatin9)),
              u"Aé");
    EXPECT_EQ(Texte(UniChaine::DonneChaineDesechappeePourcent(U(u"a%4"))), u"a%4");
    // Un demi-codet seul reçoit le remplacement du codec, où qu'il soit : rien ne disparaît.
    EXPECT_EQ(Texte(U(u"x\xD83D" u"a").DonneChaineEchappayPourcent(vide, vide)), u"x%3Fa");
    EXPECT_EQ(Texte(U(u"\xDE00").DonneChaineEchappayPourcent(vide, vide)), u"%3F");
    EXPECT_EQ(Texte(U(u"x\xD83D").DonneChaineEchappayPourcent(vide, vide, UniChaine::kMacRoman)),
              u"x%3F");
    EXPECT_EQ(Texte(U(u"\xD800").DonneChaineEchappayPourcent(vide, vide, UniChaine::kUTF16)),
              u"%00%D8");

    // Vrai texte d'interface : échappement, UTF-8 et découpe font l'aller-retour.
    QStringList textes = TraductionsFrancaises("apt.mo") + TraductionsFrancaises("bash.mo");
    if (textes.isEmpty())
        GTEST_SKIP() << "pas de catalogue français";
    for (QString const& t : textes) {
        UniChaine const s(t);
        EXPECT_EQ(
            UniChaine::DonneChaineDesechappeePourcent(s.DonneChaineEchappayPourcent(vide, vide)),
            s);
        EXPECT_EQ(UniChaine(s.PreteCString(UniChaine::kUTF8)), s);
        std::vector<UniChaine> const mots = s.Jetonise(u' ', true);
        QStringList const attendu = t.split(QLatin1Char(' '));
        ASSERT_EQ(int(mots.size()), attendu.size());
        for (std::size_t i = 0; i < mots.size(); ++i)
            EXPECT_EQ(mots[i].DonneQString(), attendu[int(i)]);
        EXPECT_EQ(U(u" ").Joindre(mots), s);
        EXPECT_EQ(s.NormaliseApostrophe(u'\'').NormaliseApostrophe().Longueur(), s.Longueur());
    }
}

TEST(UniChaine, DecoupeEtQuestions)
{
    UniChaine const s(u"a,,b , c,");
    EXPECT_EQ(s.Jetonise(u',').size(), 3u);
    EXPECT_EQ(s.Jetonise(u',', true).size(), 5u);
    std::vector<UniChaine> const nettoyes = s.Jetonise(u',', false, true);
    ASSERT_EQ(nettoyes.size(), 3u);
    EXPECT_EQ(Texte(nettoyes[1]), u"b");
    sdd::ListeC<UniChaine> const liste = s.JetoniseEnListe(u',', true);
    EXPECT_EQ(liste.Taille(), 5u);
    EXPECT_EQ(Texte(liste[3]), u" c");
    EXPECT_EQ(Texte(U(u"-").Joindre({U(u"a"), UniChaine(), U(u"b")})), u"a--b");
    EXPECT_EQ(Texte(U(u"-").Joindre({U(u"a"), UniChaine(), U(u"b")}, true)), u"a-b");

    // Apostrophe (élision) et trait d'union séparent ; la fin de ligne et le liant non.
    UniChaine const phrase(u"L’été. Oui\n");
    EXPECT_TRUE(phrase.AUnSeparateurDeMot(1));
    EXPECT_TRUE(phrase.ContientMotEntier(U(u"été")));
    EXPECT_TRUE(U(u"porte-clé").ContientMotEntier(U(u"clé")));
    EXPECT_TRUE(phrase.AUnSeparateurDeMot(5));
    EXPECT_TRUE(phrase.AUnSeparateurDePhrase(5));
    EXPECT_FALSE(phrase.AUnSeparateurDeMot(10)); // fin de ligne
    EXPECT_TRUE(phrase.AUnRetourDeChariot(10));
    EXPECT_FALSE(phrase.AUnSeparateurDeMot(11));
    EXPECT_FALSE(phrase.AUnRetourDeChariot(-1));
    EXPECT_TRUE(phrase.ContientUnSeparateurDeMot());
    EXPECT_FALSE(U(u"a\u200Db\nc").ContientUnSeparateurDeMot());
    char c = 0;
    EXPECT_TRUE(U(u"abc").PossedeCaractereAlphaNumeriqueAbsent(c));
    EXPECT_EQ(c, 'd');
    QString tous = QStringLiteral("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ012345678");
    EXPECT_TRUE(UniChaine(tous).PossedeCaractereAlphaNumeriqueAbsent(c));
    EXPECT_EQ(c, '9');
    EXPECT_FALSE(UniChaine(tous + QLatin1Char('9')).PossedeCaractereAlphaNumeriqueAbsent(c));
    EXPECT_TRUE(U(u"e\u0301").ContientUnCaractereAccentuayNonBaseUniCode());
    EXPECT_FALSE(U(u"é").ContientUnCaractereAccentuayNonBaseUniCode());
}
