// Flux d'octets : la même écriture par sdd::FluxSortie& et la même lecture par
// sdd::FluxEntree& sur chaque sorte de flux, formes sérialisées et compression par blocs.

#include "verif.h"

#include <QByteArray>

#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

// Les octets attendus de EcrisMotif, d'après les formes documentées.
std::vector<unsigned char> const kMotif = {0x41, 1, 2,    3,    0x40, 0xAC, 0x01, 4,
                                           3,    2, 1,    0xC3, 0xA9, 0,    'a',  'b',
                                           0,    4, 0xFF, 0xFF, 0xFF, 7};

void EcrisMotif(sdd::FluxSortie& s)
{
    s.Mets(0x41);
    unsigned char const bloc[] = {1, 2, 3};
    s.Mets(bloc, 3);
    sdd::VarElias::Ecris(s, 300);
    sdd::Serialiseur<bool>::Ecris(s, true);
    sdd::Serialiseur<std::uint32_t>::Ecris(s, 0x01020304);
    sdd::Serialiseur<sdd::ChaineN>::Ecris(s, sdd::ChaineN(u"\u00E9"));
    sdd::Serialiseur<UniChaine>::Ecris(s, UniChaine(u"ab"));
    sdd::Associations a;
    a.Associe(3, 7);
    sdd::Serialiseur<sdd::Associations>::Ecris(s, a);
}

// Relit le motif par la base ; au bout, une lecture de plus doit lever sans rien lire.
bool LisMotif(sdd::FluxEntree& e)
{
    unsigned char bloc[3] = {};
    bool b = false;
    std::uint32_t x = 0;
    sdd::ChaineN n;
    UniChaine u;
    sdd::Associations a;
    bool bon = e.Donne() == 0x41 && e.Donne(3, bloc) == 3 && bloc[0] == 1 && bloc[2] == 3 &&
               sdd::VarElias::Lis(e) == 300;
    sdd::Serialiseur<bool>::Lis(e, &b);
    sdd::Serialiseur<std::uint32_t>::Lis(e, &x);
    sdd::Serialiseur<sdd::ChaineN>::Lis(e, &n);
    sdd::Serialiseur<UniChaine>::Lis(e, &u);
    sdd::Serialiseur<sdd::Associations>::Lis(e, &a);
    bon = bon && b && x == 0x01020304 && n == sdd::ChaineN(u"\u00E9") && u == UniChaine(u"ab");
    bon = bon && a.DonneNombre() == 4 && a.Donne(3) == 7 && a.Donne(0) == -1 && !a.Possede(2);
    sdd::Flux const& flux = e;
    bon = bon && flux.EstALaFin() && flux.DonnePosition() == kMotif.size();
    try {
        sdd::VarElias::Lis(e);
    } catch (sdd::exceptions::Exception const& ex) {
        return bon && typeid(ex) == typeid(sdd::exceptions::ErreurDeserialisation) &&
               flux.DonnePosition() == kMotif.size();
    }
    return false;
}

std::vector<unsigned char> Octets(sdd::TamponMemoire const& t)
{
    return std::vector<unsigned char>(t.DonneDonnees(), t.DonneDonnees() + t.DonneTaille());
}

void VerifieFormes()
{
    // VarElias : les exemples documentés, puis des allers-retours au hasard.
    struct
    {
        std::uint32_t valeur;
        std::vector<unsigned char> code;
    } const exemples[] = {{0, {0x80}},
                          {127, {0xFF}},
                          {128, {0x40, 0x00}},
                          {16511, {0x7F, 0xFF}},
                          {16512, {0x20, 0, 0}},
                          {2113664, {0x10, 0, 0, 0}},
                          {sdd::VarElias::kValeurMax, {0x1F, 0xFF, 0xFF, 0xFF}}};
    for (auto const& ex : exemples) {
        sdd::TamponMemoire t(2);
        sdd::VarElias::Ecris(t, ex.valeur);
        VERIFIE(Octets(t) == ex.code && sdd::VarElias::Longueur(ex.valeur) == ex.code.size());
    }
    std::mt19937 alea(77);
    for (int i = 0; i < 1000; ++i) {
        std::uint32_t const v = alea() % (sdd::VarElias::kValeurMax + 1u) >> (alea() % 28);
        unsigned char code[sdd::VarElias::kLongueurMax];
        std::uint32_t relu = ~v;
        unsigned int const n = sdd::VarElias::Ecris(code, v);
        VERIFIE(sdd::VarElias::Lis(code, code + n, &relu) == n && relu == v);
    }
    sdd::TamponMemoire trop(4);
    VERIFIE_LEVE(sdd::exceptions::IndexHorsBorne,
                 sdd::VarElias::Ecris(trop, sdd::VarElias::kValeurMax + 1));
    VERIFIE(trop.DonneTaille() == 0);
    char zero[] = {0};
    sdd::TamponMemoire invalide(zero, 1, false);
    VERIFIE_LEVE(sdd::exceptions::ErreurDeserialisation, sdd::VarElias::Lis(invalide));
    VERIFIE_LEVE(sdd::exceptions::IndexHorsBorne, sdd::Associations().Associe(255, 1));

    // Base64 face à Qt sur des octets au hasard, et le nombre documenté.
    for (int essai = 0; essai < 100; ++essai) {
        sdd::TamponMemoire source(1), code(1), retour(1);
        for (int n = alea() % 50; n > 0; --n) {
            source.Mets(static_cast<unsigned char>(alea()));
        }
        sdd::Base64::Encode(source, code);
        QByteArray const brut(reinterpret_cast<char const*>(source.DonneDonnees()),
                              int(source.DonneTaille()));
        VERIFIE(QByteArray(reinterpret_cast<char const*>(code.DonneDonnees()),
                           int(code.DonneTaille())) == brut.toBase64());
        code.PositionneAuDebut();
        sdd::Base64::Decode(code, retour);
        VERIFIE(retour == source);
    }
    VERIFIE(sdd::Base64::EncodeNombreSimple(0x1234) == UniChaine(u"NBIAAAAAAAA="));

    // Chaînes comprimées : aller-retour par les bases des flux.
    sdd::TamponMemoire z(16);
    UniChaine const repete =
        UniChaine(u"r\u00E9p\u00E9tition ").Joindre(std::vector<UniChaine>(50, UniChaine(u"x")));
    sdd::TamponMemoire::CompresseUniChaine(z, repete);
    sdd::TamponMemoire::CompresseChaineN(z, sdd::ChaineN(u"court"));
    VERIFIE(z.DonneTaille() < unsigned(repete.Longueur()));
    z.PositionneAuDebut();
    VERIFIE(sdd::TamponMemoire::DecompresseUniChaine(z) == repete);
    VERIFIE(sdd::TamponMemoire::DecompresseChaineN(z) == sdd::ChaineN(u"court") && z.EstALaFin());

    // Blocs comprimés ou non : chaque élément se relit seul, dans le désordre.
    for (sdd::eTypeCompression type : {sdd::kSansCompression, sdd::kCompressionZlib}) {
        sdd::TamponMemoire zone(64);
        std::vector<sdd::_typPositionEncodageBloc> positions;
        std::vector<sdd::ChaineN> textes;
        {
            sdd::EncodageParBlocCompresse encodeur(&zone, 128, type);
            for (int i = 0; i < 300; ++i) {
                textes.push_back(sdd::ChaineN::DepuisNombre(long(alea() % 100000))
                                     .AjouteFin(u"\u00E9l\u00E9ment"));
                positions.push_back(encodeur.EncodeChaine(textes.back(), sdd::ChaineN::kUTF8));
            }
            positions.push_back(encodeur.EncodeOctets("\x01\x02\x03", 3));
            encodeur.TermineEncodage();
        }
        sdd::DecodageParBlocCompresse decodeur(&zone, 0);
        VERIFIE(decodeur.DonneTailleBloc() == 128 && decodeur.DonneType() == type);
        char octets[3] = {};
        decodeur.DecodeOctets(positions.back(), 3, octets);
        VERIFIE(octets[0] == 1 && octets[2] == 3);
        for (int i = 299; i >= 0; i -= 7) {
            sdd::ChaineN relu;
            decodeur.DecodeChaine(positions[i], relu, sdd::ChaineN::kUTF8);
            VERIFIE(relu == textes[i]);
        }
    }
}

// Un tampon du programme : il compte les octets écrits un à un et laisse le reste à la base.
class TamponCompteur : public sdd::TamponMemoire
{
public:
    TamponCompteur() : TamponMemoire(2) {}
    void Mets(unsigned char octet) override
    {
        ++octetsSeuls;
        TamponMemoire::Mets(octet);
    }
    using TamponMemoire::Mets;
    int octetsSeuls = 0;
};

} // namespace

void VerifieFlux(UniChemin const& dossier)
{
    // Dérivé dans le programme, écrit et relu par les bases.
    TamponCompteur compteur;
    EcrisMotif(compteur);
    VERIFIE(Octets(compteur) == kMotif && compteur.octetsSeuls > 0);
    compteur.PositionneAuDebut();
    VERIFIE(LisMotif(compteur));

    // Tampon en mémoire : octets exacts, copie, emprunt, transfert entre flux.
    sdd::TamponMemoire tampon(4);
    EcrisMotif(tampon);
    VERIFIE(Octets(tampon) == kMotif);
    tampon.PositionneAuDebut();
    VERIFIE(LisMotif(tampon));
    sdd::TamponMemoire const copie(tampon);
    VERIFIE(copie == tampon && copie.DonnePosition() == tampon.DonnePosition());
    sdd::FluxEntreeMemoire& memoire = tampon;
    std::unique_ptr<sdd::TamponMemoire> prete(memoire.TamponEnPretantDonnees());
    VERIFIE(*prete == tampon && prete->DonneDonnees() == tampon.DonneDonnees());
    sdd::TamponMemoire transfert(1);
    tampon.PositionneAuDebut();
    VERIFIE(static_cast<sdd::FluxEntree&>(tampon).DonneFluxSortie(transfert) &&
            transfert == tampon);

    // Fichier et fichier à tampon : mêmes octets sur disque, relus par la base.
    UniChemin const chemin = dossier.DonneChaineEnAjoutantComposantChemin(UniChemin("motif.bin"));
    UniChemin const cheminTampon =
        dossier.DonneChaineEnAjoutantComposantChemin(UniChemin("tampon.bin"));
    {
        sdd::Fichier f(chemin, sdd::Fichier::kEcriture, UniChaine::kUTF8, true);
        VERIFIE(f.EstEnBonEtat());
        EcrisMotif(f);
        sdd::FichierAvecTampon ft(cheminTampon, sdd::Fichier::kEcriture, UniChaine::kUTF8, true);
        sdd::Fichier& base = ft; // les virtuelles de la base mènent au tampon
        tampon.PositionneAuDebut();
        VERIFIE(static_cast<sdd::FluxSortie&>(base).MetsFluxEntree(tampon));
        VERIFIE(typeid(base) == typeid(sdd::FichierAvecTampon) &&
                base.DonnePosition() == kMotif.size());
    }
    VERIFIE(sdd::Fichier::TailleFichier(chemin) == kMotif.size() &&
            sdd::Fichier::FichierExiste(chemin));
    VERIFIE(sdd::Fichier::TailleFichier(cheminTampon) == kMotif.size());
    {
        sdd::Fichier f(chemin, sdd::Fichier::kLecture, UniChaine::kUTF8, true);
        VERIFIE(LisMotif(f));
        f.PositionneAuDebut();
        VERIFIE(f.DonneToutLeFichier() == kMotif);
        sdd::FichierAvecTampon ft(cheminTampon, sdd::Fichier::kLecture, UniChaine::kUTF8, true);
        VERIFIE(LisMotif(ft));
    }
    VERIFIE(sdd::TamponMemoire(chemin) == copie);

    // Projection : tout le fichier, puis une tranche ; lectures hors borne refusées.
    {
        sdd::FichierMMap projection(chemin);
        VERIFIE(LisMotif(projection));
        sdd::FluxEntreeMemoire& base = projection;
        base.PositionneAuDebut();
        VERIFIE(base.DonneTaille() == kMotif.size() && base.PtrEtAvance(21)[21] == 7 &&
                base.Ptr()[0] == 7);
        base.Positionne(base.DonneTaille() + 1);
        VERIFIE_LEVE(sdd::exceptions::IndexHorsBorne, base.Donne());
        std::unique_ptr<sdd::TamponMemoire> vue(base.TamponEnPretantDonnees());
        VERIFIE(*vue == copie);
        sdd::FichierMMap tranche(chemin, 4, 2);
        VERIFIE(tranche.DonneTaille() == 2 && sdd::VarElias::Lis(tranche) == 300 &&
                tranche.EstALaFin());
    }
    UniChemin const vide = dossier.DonneChaineEnAjoutantComposantChemin(UniChemin("vide"));
    sdd::Fichier(vide, sdd::Fichier::kEcriture, UniChaine::kUTF8, true).Ferme();
    VERIFIE_LEVE(sdd::exceptions::MemoireInsuffisante, sdd::FichierMMap projection(vide));
    UniChemin const absent = dossier.DonneChaineEnAjoutantComposantChemin(UniChemin("absent"));
    VERIFIE_LEVE(sdd::exceptions::OuvertureEchouee, sdd::FichierMMap projection(absent));
    VERIFIE_LEVE(sdd::exceptions::OuvertureEchouee, sdd::TamponMemoire lu(absent));
    VERIFIE(sdd::Fichier::SupprimeFichier(chemin) && !sdd::Fichier::FichierExiste(chemin));

    VerifieFormes();
}
