// Chaînes, caractères, convertisseurs et expressions régulières vus d'un programme.

#include "verif.h"

#include <QString>
#include <QTextCodec>

#include <random>
#include <string>
#include <vector>

namespace {

// Une UniChaine dérivée : Actualise est le point d'extension prévu.
class ChaineComptee : public UniChaine
{
public:
    using UniChaine::UniChaine;
    void Actualise() override { ++actualisations; }
    int actualisations = 0;
};

// Latin-1 à l'identique, l'apostrophe typographique repliée sur l'apostrophe droite.
char16_t const (&TableLatin1())[256]
{
    static char16_t table[256];
    for (int i = 0; i < 256; ++i) {
        table[i] = char16_t(i);
    }
    return table;
}

class ConvertisseurLatin1 : public sdd::ConvertisseurChaineNCodageUnOctet
{
public:
    ConvertisseurLatin1() : ConvertisseurChaineNCodageUnOctet(TableLatin1())
    {
        RemplaceAbsente(u'\u2019', '\'');
    }
};

std::u16string VersUTF16(sdd::ConvertisseurChaineN const& c, std::string const& octets)
{
    std::u16string unites(c.MaxUnitesPourOctets(octets.size()), u'\0');
    unites.resize(c.VersUTF16(octets.data(), octets.size(), unites.data()));
    return unites;
}

std::string DepuisUTF16(sdd::ConvertisseurChaineN const& c, std::u16string const& unites)
{
    std::string octets(c.MaxOctetsPourUnites(unites.size()), '\0');
    octets.resize(c.DepuisUTF16(unites.data(), unites.size(), octets.data(), octets.size()));
    return octets;
}

void VerifieConvertisseurs()
{
    // Chaque classe par valeur, puis par la base ; la fabrique rend le bon type dynamique.
    sdd::ConvertisseurChaineNMacRoman mac;
    sdd::ConvertisseurChaineNLatin9 latin9;
    sdd::ConvertisseurChaineNWinLatin1 win;
    sdd::ConvertisseurChaineNDOS dos;
    sdd::ConvertisseurChaineNUTF8 utf8;
    sdd::ConvertisseurChaineNUTF16LE le;
    sdd::ConvertisseurChaineNUTF16BE be;
    sdd::ConvertisseurChaineNUTF16 be2(true);
    ConvertisseurLatin1 latin1;

    sdd::ConvertisseurChaineN const& fabrique =
        sdd::ConvertisseurChaineN::DonnePourCodage(sdd::ChaineN::kUTF8);
    VERIFIE(typeid(fabrique) == typeid(sdd::ConvertisseurChaineNUTF8));
    VERIFIE(dynamic_cast<sdd::ConvertisseurChaineNUTF16 const*>(
                &sdd::ConvertisseurChaineN::DonnePourCodage(sdd::ChaineN::kUTF16BE)) != nullptr);
    VERIFIE(dynamic_cast<sdd::ConvertisseurChaineNCodageUnOctet const*>(
                &sdd::ConvertisseurChaineN::DonnePourCodage(sdd::ChaineN::kDOS)) != nullptr);

    std::u16string const ab = u"A\u00E9\U0001F600";
    VERIFIE(DepuisUTF16(le, ab) == std::string("A\0\xE9\0\x3D\xD8\x00\xDE", 8));
    VERIFIE(DepuisUTF16(be, ab) == std::string("\0A\0\xE9\xD8\x3D\xDE\x00", 8));
    VERIFIE(DepuisUTF16(be2, ab) == DepuisUTF16(be, ab));
    VERIFIE(le.TailleTerminateur() == 2 && utf8.TailleTerminateur() == 1);

    // Tables d'un octet : aller-retour sur tous les octets ; Latin-9 face au codec de Qt.
    QTextCodec* const qtLatin9 = QTextCodec::codecForName("ISO-8859-15");
    std::string tous(256, '\0');
    for (int i = 0; i < 256; ++i) {
        tous[i] = char(i);
    }
    sdd::ConvertisseurChaineN const* const unOctet[] = {&mac, &latin9, &dos, &latin1};
    for (sdd::ConvertisseurChaineN const* c : unOctet) {
        VERIFIE(DepuisUTF16(*c, VersUTF16(*c, tous)) == tous);
    }
    VERIFIE(qtLatin9 != nullptr && QString::fromStdU16String(VersUTF16(latin9, tous)) ==
                                       qtLatin9->toUnicode(tous.data(), int(tous.size())));
    VERIFIE(VersUTF16(win, "\x80") == u"\u20AC" && VersUTF16(mac, "\x8E") == u"\u00E9");
    VERIFIE(latin1.DonneOctet(u'\u2019') == '\'' && latin1.DonneOctet(u'\u4E00') == '?');

    // UTF-8 face à Qt sur des textes au hasard (paires de demi-codets comprises).
    std::mt19937 alea(1234);
    for (int essai = 0; essai < 200; ++essai) {
        std::u16string texte;
        for (int n = alea() % 40; n > 0; --n) {
            unsigned int const x =
                alea() % 4 == 0 ? 0x10000 + alea() % 0xFFFFF : 1 + alea() % 0xD7FF;
            if (x >= 0x10000) {
                texte += char16_t(0xD800 + ((x - 0x10000) >> 10));
                texte += char16_t(0xDC00 + ((x - 0x10000) & 0x3FF));
            } else {
                texte += char16_t(x);
            }
        }
        QByteArray const qt = QString::fromStdU16String(texte).toUtf8();
        std::string const octets = DepuisUTF16(utf8, texte);
        VERIFIE(octets == qt.toStdString());
        VERIFIE(VersUTF16(utf8, octets) == texte);
        sdd::ChaineN const n(texte.c_str(), texte.size());
        VERIFIE(n.DonneStdString(sdd::ChaineN::kUTF8) == qt.toStdString());
        VERIFIE(UniChaine(octets.c_str(), UniChaine::kUTF8).DonneQString() ==
                QString::fromStdU16String(texte));
    }

    // Écriture et lecture par les flux, à travers la base.
    sdd::ConvertisseurChaineN const& base = latin1;
    sdd::TamponMemoire t(8);
    base.EcrisUnites(t, u"d\u2019\u00E9t\u00E9", 5);
    VERIFIE(t.DonneTaille() == 5 &&
            std::string(reinterpret_cast<char*>(t.DonneDonnees()), 5) == "d'\xE9t\xE9");
    t.PositionneAuDebut();
    sdd::ConvertisseurChaineN::EtatLecture etat;
    std::u16string relu;
    for (char16_t u; base.LisUnite(t, etat, &u);) {
        relu += u;
    }
    VERIFIE(relu == u"d'\u00E9t\u00E9");
}

} // namespace

void VerifieChaines()
{
    // UniChaine et sa dérivée, par valeur et par la base.
    ChaineComptee derivee(u"Bonjour");
    UniChaine& base = derivee;
    base.Actualise();
    VERIFIE(derivee.actualisations == 1 && typeid(base) == typeid(ChaineComptee));
    UniChaine copie = base;
    copie.AjouteFin(u" le monde").Majusculise();
    VERIFIE(copie == UniChaine(u"BONJOUR LE MONDE") && base == UniChaine(u"Bonjour"));
    VERIFIE(UniChaine("été", UniChaine::kUTF8).Majusculise() == UniChaine(u"\u00C9T\u00C9"));
    VERIFIE(UniChaine(u"Élan").Egal(UniChaine(u"elan"),
                                    UniChaine::MalgrayAccents | UniChaine::MalgrayCasse));
    int pos = -1;
    VERIFIE(UniChaine(u"le chat et le chien").Contient(UniChaine(u"chien"), &pos) && pos == 14);
    VERIFIE(UniChaine::DepuisNombre(255, 16) == UniChaine(u"FF"));
    std::vector<UniChaine> const parties = UniChaine(u"a,b,,c").Jetonise(u',');
    VERIFIE(parties.size() == 3 && UniChaine(u"-").Joindre(parties) == UniChaine(u"a-b-c"));
    VERIFIE(std::string(UniChaine(u"\u00E9").PreteCString(UniChaine::kLatin9)) == "\xE9");
    VERIFIE((UniChaine(u"ab") + UniChaine(u"cd")).Longueur() == 4 && kUniChaineNulle.EstVide());
    VERIFIE_LEVE(sdd::exceptions::IndexHorsBorne, (void)UniChaine(u"abc")[3]);

    // ChaineN : transformations, forme en flux, formes en octets.
    sdd::ChaineN const n(u"\u00C9t\u00E9 2024"); // const : les jumeaux rendent une copie
    VERIFIE(n.Desaccentue() == sdd::ChaineN(u"Ete 2024") && n.Longueur() == 8);
    VERIFIE(sdd::ChaineN::DepuisNombre(-42) == sdd::ChaineN(u"-42") &&
            sdd::ChaineN(u"  17x").DonneEntier() == 17);
    VERIFIE(sdd::ChaineN::Format(sdd::ChaineN(u"%d-%s"), 12, "\xC3\xA9") ==
            sdd::ChaineN(u"12-\u00E9"));
    VERIFIE(std::string(n.PreteCString(sdd::ChaineN::kMacRoman)) == "\x83t\x8E 2024");
    VERIFIE(sdd::ChaineN(u"a") + sdd::ChaineN(u"b") == sdd::ChaineN(u"ab") &&
            sdd::kChaineNNulle.EstVide());
    VERIFIE(UniChaine(n).DonneChaineN() == n);
    VERIFIE_LEVE(sdd::exceptions::IndexHorsBorne, (void)n[8]);

    // UniChemin : une UniChaine dérivée exportée.
    UniChemin chemin("/tmp/x.d");
    chemin.AjouteComposantChemin(UniChemin("/f.txt"));
    UniChaine const& cheminBase = chemin;
    VERIFIE(cheminBase == UniChaine(u"/tmp/x.d/f.txt") && typeid(cheminBase) == typeid(UniChemin));
    VERIFIE(chemin.DonneDernierComposantChemin() == UniChemin("f.txt") &&
            chemin.DonneExtension() == UniChemin("txt"));
    VERIFIE(chemin.DonneLesComposantsChemin().size() == 4 &&
            DonneUniChaineSeparationChemin() == kUniCheminSeparationChemin);

    // Texte formaté : le HTML échappe le texte et le garde entier.
    UniChaineFormatee const f(UniChaine(u"a<b"), UniChaineFormatee::kRouge,
                              UniChaineFormatee::kGras);
    UniChaineFormatee const g =
        f + UniChaineFormatee("!", UniChaine::kUTF8, -1, UniChaineFormatee::kNoir,
                              UniChaineFormatee::kNormal);
    VERIFIE(g.DonneChaineNonFormatee() == UniChaine(u"a<b!") && g.Longueur() == 4);
    VERIFIE(f.DonneChaineFormatee().Contient(UniChaine(u"<span")) &&
            f.DonneChaineFormatee().Contient(UniChaine(u"a&lt;b")));

    // Caractères : conversions en ligne et tables exportées.
    constexpr Caractere c('z');
    constexpr UniCaractere u(u'\u0153');
    VERIFIE(char(c) == 'z' && Caractere::gNbInfosLigature == 4 &&
            UniCaractere::gNbInfosLigature >= 4);
    char16_t lettres[4] = {};
    unsigned long nb = 0;
    VERIFIE(UniCaractere::DecompositionLigature(u, lettres, 4, &nb) && nb == 2 &&
            std::u16string(lettres) == u"oe");
    VERIFIE(UniCaractere::EstTiretLong(u'\u2014') && !UniCaractere::EstTiretLong(u'-'));

    // Expressions régulières : résultats exacts, et un motif invalide lève la base elle-même.
    sdd::ExpressionReguliere const expression(sdd::ChaineN(u"ch\\w+"));
    sdd::ListeC<sdd::Paire<unsigned long, unsigned long>> trouves;
    std::u16string const texte = u"le chat et le chien";
    VERIFIE(expression.TrouveTout(texte.c_str(), texte.size(), 0, &trouves) &&
            trouves.Taille() == 2);
    VERIFIE(trouves.Taille() == 2 && trouves[0].premier == 3 && trouves[0].second == 4 &&
            trouves[1].premier == 14);
    VERIFIE_LEVE(sdd::exceptions::Exception, sdd::ExpressionReguliere mauvaise(sdd::ChaineN(u"(")));

    VerifieConvertisseurs();
}
