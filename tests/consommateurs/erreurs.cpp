// Exceptions, alertes, abonnés, receveurs de trace et préférences de développement.

#include "verif.h"

#include <QDBusError>

#include <vector>

namespace {

// Les exceptions qu'aucune fonction exportée ne lance : lancées ici, attrapées par la base.
template <typename E> bool AttrapeeParLaBase(E const& exception)
{
    try {
        throw exception;
    } catch (sdd::exceptions::Exception const& e) {
        return typeid(e) == typeid(E) && dynamic_cast<E const*>(&e) != nullptr;
    }
}

class Abonne : public Abonnay
{
public:
    void RecoisNotification(unsigned int code, void* donnees, Abonnay**) override
    {
        codes.push_back(code + *static_cast<unsigned int*>(donnees));
    }
    std::vector<unsigned int> codes;
};

class Delegue : public DAlerteDeleguay
{
public:
    void AfficheDAlerte(DAlerteInfo const& alerte, void*, int) override
    {
        vue = alerte.DonneExplication();
    }
    int AfficheDAlerteRappel(DAlerteInfo const&, UniChaine const& rappel, void*) override
    {
        return rappel.Longueur();
    }
    UniChaine vue;
};

class Receveur : public ReceveurTrace
{
public:
    void RecoisLigneTrace(sdd::ChaineN const& ligne) override { lignes.push_back(ligne); }
    std::vector<sdd::ChaineN> lignes;
};

// Une exception du programme, dérivée de la base de la bibliothèque.
class ErreurDuProgramme : public sdd::exceptions::Exception
{
public:
    ErreurDuProgramme() : Exception(UniChaine("programme"), UniChaine("détail")) {}
};

} // namespace

void VerifieErreurs()
{
    try {
        throw ErreurDuProgramme();
    } catch (sdd::exceptions::Exception const& e) {
        VERIFIE(dynamic_cast<ErreurDuProgramme const*>(&e) != nullptr &&
                e.Message() == UniChaine("programme"));
    }

    namespace ex = sdd::exceptions;
    ex::ExceptionDBus const dbus(ex::ExceptionDBus::kEnregistrementService, QStringLiteral("o.c"),
                                 QDBusError(QDBusError::AccessDenied, QStringLiteral("refus")));
    VERIFIE(dbus.Nom() == QStringLiteral("o.c") &&
            dbus.Erreur().type() == QDBusError::AccessDenied);
    VERIFIE(AttrapeeParLaBase(dbus) && AttrapeeParLaBase(ex::LiberationObjetImpossible()) &&
            AttrapeeParLaBase(ex::ExceptionX11(3)) &&
            AttrapeeParLaBase(ex::ExceptionApiDBus(QStringLiteral("api"), 5)) &&
            AttrapeeParLaBase(ex::ExceptionModulePelimore(UniChaine(u"a"), UniChaine(u"b"))));
    ex::Exception const nue(UniChaine(u"M"), UniChaine());
    VERIFIE(AttrapeeParLaBase(nue) && nue.MessageComplet() == UniChaine(u"M : "));

    // Lancées par la bibliothèque (les autres le sont dans leurs domaines).
    try {
        ex::LanceIndexHorsBorne(9, 0, 4);
    } catch (ex::Exception const& e) {
        VERIFIE(typeid(e) == typeid(ex::IndexHorsBorne) &&
                e.MessageComplet() == ex::IndexHorsBorne(9, 0, 4).MessageComplet() &&
                e.Explication().Contient(UniChaine(u"9")));
    }
    int code = 0;
    try {
        LanceException(-12);
    } catch (int c) {
        code = c;
    }
    VERIFIE(code == -12);
    VERIFIE_LEVE(ex::OperationInvalide, DonneTempsAbsolu(0));

    // Alertes : typographie, explication d'erreur par la base, copies, exception standard.
    DAlerteInfo const attention(DAlerteInfo::kAttention, UniChaine(u"Il n'y a pas"),
                                UniChaine(u"x\r\ny"), UniChaine(u"Titre"));
    VERIFIE(attention.DonneMessage() == UniChaine(u"Il n\u2019y a pas") &&
            attention.DonneExplication() == UniChaine(u"x\ny"));
    VERIFIE(!attention.EstTitreParDefaut() && DAlerteInfo().EstNULL() && !attention.EstNULL());
    DAlerteInfoErreur const erreur(DAlerteInfo::kAlerte, UniChaine(u"Disque plein"),
                                   UniChaine(u"E"), 12, UniChaine(u"T"), -1, 7);
    DAlerteInfo const& base = erreur;
    VERIFIE(base.DonneExplication() == UniChaine(u"E\n\n Code Erreur: 12; 7;"));
    VERIFIE(base.DonneMessagePourJournalisation() == UniChaine(u"(ALERTE)\tDisque plein\tE\t"));
    DAlerteInfo const figee(base);
    DAlerteInfoErreur const fidele(erreur);
    VERIFIE(typeid(figee) == typeid(DAlerteInfo) &&
            figee.DonneExplication() == base.DonneExplication());
    VERIFIE(fidele.DonneExplication() == base.DonneExplication() && fidele.DonneDetail2() == 7);
    DAlerteInfoAssertionQt const assertion(DAlerteInfo::kAttention, UniChaine(u"a"),
                                           UniChaine(u"b"));
    VERIFIE(assertion.EstTitreParDefaut() &&
            dynamic_cast<DAlerteInfo const*>(&assertion) != nullptr);
    DAlerteInfoErreur const fichier = CreeAlerteErreurFichier(3, 3, 6, 5, -1, -1);
    VERIFIE(fichier.DonneMessage() == DonneTexteErreurFichier(3) &&
            fichier.DonneNumeroErreur() == 5 &&
            fichier.DonneTypeDialogue() == DAlerteInfo::kAlerte);
    try {
        throw ExceptionCode(erreur);
    } catch (std::exception const& e) {
        VERIFIE(typeid(e) == typeid(ExceptionCode) &&
                UniChaine(e.what(), UniChaine::kUTF8) ==
                    UniChaine(u"Disque plein E\n\n Code Erreur: 12; 7;"));
    }

    // Délégué d'alertes installé puis retiré.
    Delegue delegue;
    DAlerteDeleguay::MetsDAlerteDeleguay(&delegue);
    DAlerteDeleguay::DAlerteParDeleguay(erreur);
    VERIFIE(delegue.vue == base.DonneExplication() &&
            DAlerteDeleguay::DAlerteRappelParDeleguay(erreur, UniChaine(u"rappel")) == 6);
    DAlerteDeleguay::MetsDAlerteDeleguay(nullptr);
    VERIFIE(DAlerteDeleguay::DAlerteRappelParDeleguay(erreur, UniChaine(u"rappel")) == 0);

    // Abonnés : ordre, désabonnement, index vérifié.
    Abonne un, deux;
    Abonneur abonneur(1);
    abonneur.Abonne(&un);
    abonneur.Abonne(&deux);
    abonneur.Abonne(&un);
    unsigned int donnee = 100;
    abonneur.PreviensAbonnes(5, &donnee);
    abonneur.Desabonne(&un);
    abonneur.PreviensAbonnes(6, &donnee);
    VERIFIE(un.codes == (std::vector<unsigned int>{105, 105}) &&
            deux.codes == (std::vector<unsigned int>{105, 106}));
    VERIFIE(abonneur.DonneNombre() == 1 && abonneur.DonneCapacite() >= 3 &&
            abonneur.DonneAbonne(0) == &deux);
    VERIFIE_LEVE(ex::IndexHorsBorne, abonneur.DonneAbonne(1));

    // Traces : receveur du fil dérivé ici, canaux selon les préférences installées.
    PrefsDeveloppement prefs;
    gOnTraceProgSpecifique = true;
    MetsPrefsDeveloppement(&prefs);
    prefs.MetsTrace(true);
    prefs.MetsTraceCanal(3, true);
    Receveur receveur;
    MetsReceveurTraceDuFil(&receveur);
    ReceveurTrace* const courant = DonneReceveurTrace();
    VERIFIE(courant == &receveur && DonneReceveurTraceDuFil() == &receveur);
    courant->RecoisTraceFmt("%d-%s", 12, "\xC3\xA9");
    courant->RecoisTraceFmtN(sdd::ChaineN(u"%d/%S"), 3, u"z");
    courant->RecoisTrace(sdd::ChaineN::kMacRoman, "\x8E", 1);
    VERIFIE(receveur.lignes.size() == 3 && receveur.lignes[0] == sdd::ChaineN(u"12-\u00E9") &&
            receveur.lignes[1] == sdd::ChaineN(u"3/z") &&
            receveur.lignes[2] == sdd::ChaineN(u"\u00E9"));
    VERIFIE(courant->VeutRecevoirTrace(3) && !courant->VeutRecevoirTrace(4) &&
            EstCanalTraceOuvert(3));
    VERIFIE_LEVE(ex::IndexHorsBorne, (void)prefs.DonneTraceCanal(32));
    MetsReceveurTraceDuFil(nullptr);
    MetsPrefsDeveloppement(nullptr);
    VERIFIE(!EstCanalTraceOuvert(3) && Devermin_TraceJe(3));
    MetsReceveurDeTracePrincipal(new ReceveurTraceGenerique); // la bibliothèque le possède
    ReceveurTrace const& principal = *DonneReceveurTrace();
    VERIFIE(typeid(principal) == typeid(ReceveurTraceGenerique));
    MetsReceveurDeTracePrincipal(new Receveur);
    VERIFIE(dynamic_cast<Receveur*>(DonneReceveurTrace()) != nullptr);
    LibereReceveurTrace();
    ReceveurTraceGenerique generique;
    generique.RecoisLigneTrace(sdd::ChaineN(u"jetée"));

    // Chronomètre de portée, sans nom : rien n'est imprimé.
    double secondes = -1;
    {
        sdd::Performance chrono(&secondes);
        sdd::DFil::Dors(0.002f);
    }
    VERIFIE(secondes >= 0.001 && secondes < 1.0);
}
