// Tables de chaînes et tables triées : celles de la bibliothèque, des dérivées écrites ici,
// formes écrites exactes et comparaison à la bibliothèque standard sur des clés au hasard.

#include "verif.h"

#include <cstdint>
#include <initializer_list>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace {

std::vector<unsigned char> Octets(sdd::TamponMemoire const& t)
{
    return std::vector<unsigned char>(t.DonneDonnees(), t.DonneDonnees() + t.DonneTaille());
}

// Forme propre d'une table typée : la clé en texte, lue par les virtuelles de la base du nœud.
struct EcrivainTexte final : sdd::SerialiseurNoeudRNNoyau
{
    void EcrisNoeud(sdd::TableTrieeNoyau::NoeudRNNoyau const* n, sdd::FluxSortie& flux) override
    {
        sdd::Serialiseur<sdd::ChaineN>::Ecris(flux, n->ChaineClef());
    }
};
struct LecteurTexte final : sdd::DeserialiseurNoeudRNNoyau
{
    std::vector<sdd::ChaineN> lus;
    void LisNoeud(sdd::TableTrieeNoyau::NoeudRNNoyau*, sdd::FluxEntree& flux) override
    {
        lus.emplace_back();
        sdd::Serialiseur<sdd::ChaineN>::Lis(flux, &lus.back());
    }
};

std::u16string MotAuHasard(std::mt19937& alea)
{
    std::u16string mot;
    for (int n = 1 + alea() % 6; n > 0; --n) {
        mot += alea() % 10 == 0 ? char16_t(0xE9) : char16_t(u'a' + alea() % 4);
    }
    return mot;
}

void VerifieTablesTriees()
{
    // Forme documentée, puis la même table écrite et relue par un écrivain et un lecteur
    // dérivés ici (les clés relues restent celles par défaut : seul le texte compte).
    sdd::TableTriee<std::int32_t, std::int32_t> typee;
    for (std::int32_t k : {2, 1, 3}) {
        typee.Insere(k, 16 * k);
    }
    sdd::TamponMemoire tt(4);
    typee.Ecris(tt);
    VERIFIE(Octets(tt) == (std::vector<unsigned char>{0x64, 0, 0x83, 0x07, 0x00, 1, 0,  0, 0,  16,
                                                      0,    0, 0,    0x00, 3,    0, 0,  0, 48, 0,
                                                      0,    0, 2,    0,    0,    0, 32, 0, 0,  0}));
    sdd::TamponMemoire texte(4);
    EcrivainTexte ecrivain;
    sdd::Serialiseur<sdd::TableTrieeNoyau>::Ecris(texte, typee, &ecrivain);
    VERIFIE(Octets(texte) ==
            (std::vector<unsigned char>{0x64, 0, 0x83, 0x07, 0x00, '1', 0, 0x00, '3', 0, '2', 0}));
    sdd::TableTriee<std::int32_t, std::int32_t> sansCles;
    LecteurTexte lecteur;
    texte.PositionneAuDebut();
    sdd::Serialiseur<sdd::TableTrieeNoyau>::Lis(texte, &sansCles, &lecteur);
    sdd::TableTrieeNoyau const& base = sansCles;
    VERIFIE(base.Taille() == 3 && base.NbEnfants() == 3 && base.EstArbreValide() &&
            texte.EstALaFin());
    VERIFIE(lecteur.lus.size() == 3 && lecteur.lus[0] == sdd::ChaineN(u"1") &&
            lecteur.lus[2] == sdd::ChaineN(u"2"));
    sdd::TableTrieeNoyau::__Iterateur it(typee);
    VERIFIE(it.Prochain() && it.DonneNoeud()->ChaineValeur() == sdd::ChaineN(u"16"));
    unsigned char const mauvaise[] = {0x63, 0x00, 0x80};
    sdd::TamponMemoire fausse(const_cast<unsigned char*>(mauvaise), 3u, false);
    VERIFIE_LEVE(sdd::exceptions::TableNonValide, typee.Lis(fausse));
    VERIFIE(typee.EstVide());

    // Table typée face à std::map, copie, aller-retour par les flux.
    using Table = sdd::TableTriee<UniChaine, std::int32_t>;
    std::mt19937 alea(42);
    Table table;
    std::map<UniChaine, std::int32_t> temoin;
    for (int i = 0; i < 400; ++i) {
        UniChaine const mot(MotAuHasard(alea).c_str());
        if (alea() % 4 == 0) {
            VERIFIE(table.Supprime(mot) == (temoin.erase(mot) == 1));
        } else {
            table.Insere(mot, i);
            temoin.emplace(mot, i); // une clé présente garde sa valeur, des deux côtés
        }
    }
    Table const copie(table);
    sdd::TamponMemoire forme(16);
    copie.Ecris(forme);
    Table relu;
    forme.PositionneAuDebut();
    relu.Lis(forme);
    for (Table const* t2 : std::initializer_list<Table const*>{&table, &copie, &relu}) {
        VERIFIE(t2->Taille() == temoin.size() && t2->EstArbreValide());
        Table::Iterateur iter(*t2);
        auto attendu = temoin.begin();
        while (iter.Prochain() && attendu != temoin.end()) {
            VERIFIE(iter.Clef() == attendu->first && iter.Valeur() == attendu->second);
            ++attendu;
        }
        VERIFIE(attendu == temoin.end());
    }
    Table::Iterateur avant(table);
    VERIFIE_LEVE(sdd::exceptions::ValeurIndefinieIterateur, (void)avant.Clef());
}

} // namespace

void VerifieLexique(UniChemin const& dossier)
{
    // Formes documentées de la table de chaînes, avec et sans donnée.
    sdd::TableChaine ab;
    ab.TrouveEmplacementEtInsere(sdd::ChaineN(u"b"));
    ab.TrouveEmplacementEtInsere(sdd::ChaineN(u"a"));
    sdd::TamponMemoire t(4);
    sdd::Serialiseur<sdd::TableChaineNoyau>::Ecris(t, ab);
    VERIFIE(Octets(t) == (std::vector<unsigned char>{0x6E, 0, 2, 0, 0, 0, 0x87, 0x8A, 0x62, 0, 2,
                                                     0x61, 0, 0x0A, 0x80, 0, 4, 0x83}));
    sdd::TableChaineT<std::uint16_t> donnees;
    donnees.Insere(sdd::ChaineN(u"\u00E9"), 0x1234);
    sdd::TamponMemoire td(4);
    sdd::Serialiseur<sdd::TableChaineNoyau>::Ecris(td, donnees);
    VERIFIE(Octets(td) == (std::vector<unsigned char>{0x6E, 0, 1, 0, 0, 0, 0x86, 0x89, 0xC3, 0xA9,
                                                      0, 2, 0x34, 0x12, 0, 4, 0x80}));
    VERIFIE_LEVE(sdd::exceptions::OperationInvalide,
                 ab.TrouveEmplacementEtInsere(sdd::ChaineN(u"x\0y", 3)));

    // Table face à std::set : insertions et suppressions au hasard, parcours ordonné.
    std::mt19937 alea(7);
    sdd::TableChaine table;
    std::set<std::u16string> temoin;
    for (int i = 0; i < 600; ++i) {
        std::u16string const mot = MotAuHasard(alea);
        sdd::ChaineN const clef(mot.c_str(), mot.size());
        if (alea() % 3 == 0) {
            VERIFIE(table.Supprime(clef) == (temoin.erase(mot) == 1));
        } else {
            bool deja = false;
            table.TrouveEmplacementEtInsere(clef, &deja);
            VERIFIE(deja == !temoin.insert(mot).second);
        }
    }
    sdd::TableChaineNoyau& base = table;
    VERIFIE(base.Taille() == temoin.size() && base.DonneRacine() != nullptr);
    sdd::TableChaineNoyau::__Iterateur it(base);
    auto attendu = temoin.begin();
    while (it.Prochain() && attendu != temoin.end()) {
        VERIFIE(std::u16string(it.Clef().PreteUniCString(), it.Clef().Longueur()) == *attendu);
        VERIFIE(it.DonneNoeud()->EstTerminal());
        ++attendu;
    }
    VERIFIE(attendu == temoin.end());
    // Clone par la base du nœud : même type dynamique (celui, privé, de la table).
    sdd::TableChaineNoyau::Noeud const& racine = *base.DonneRacine();
    std::unique_ptr<sdd::TableChaineNoyau::Noeud> clone(racine.Clone());
    sdd::TableChaineNoyau::Noeud const& copieRacine = *clone;
    VERIFIE(typeid(copieRacine) == typeid(racine) && clone->DonnePremierEnfant() != nullptr);

    // Forme écrite dans un fichier par sa base, relue en table, consultée en place en
    // mémoire et par projection.
    UniChemin const chemin = dossier.DonneChaineEnAjoutantComposantChemin(UniChemin("table.bin"));
    {
        sdd::FichierAvecTampon f(chemin, sdd::Fichier::kEcriture, UniChaine::kUTF8, true);
        f.Mets(0xAA); // la table ne commence pas au début du flux
        sdd::Serialiseur<sdd::TableChaineNoyau>::Ecris(f, table);
    }
    sdd::TamponMemoire memoire(chemin);
    sdd::FichierMMap projection(chemin);
    memoire.Positionne(1);
    sdd::TableChaine relue;
    sdd::Serialiseur<sdd::TableChaineNoyau>::Lis(memoire, &relue);
    sdd::TableChaineSurDisqueNoyau surTampon(&memoire, 1);
    sdd::TableChaineSurDisqueNoyau surProjection;
    surProjection.Init(&projection, 1);
    VERIFIE(relue.Taille() == temoin.size() && surTampon.Taille() == temoin.size() &&
            surProjection.Taille() == temoin.size());
    for (int i = 0; i < 300; ++i) {
        std::u16string const mot = MotAuHasard(alea);
        sdd::ChaineN const clef(mot.c_str(), mot.size());
        bool const present = temoin.count(mot) == 1;
        VERIFIE(relue.Possede(clef) == present && surTampon.Possede(clef) == present &&
                surProjection.Possede(clef) == present);
    }
    sdd::TableChaine copie(relue);
    copie.Supprime(sdd::ChaineN(temoin.begin()->c_str()));
    VERIFIE(copie.Taille() + 1 == relue.Taille());

    VerifieTablesTriees();
}
