// Plate-forme : fichier vu par Qt, journaux, destruction de fichiers, nom d'application,
// temps et interrupteurs globaux.

#include "verif.h"

#include <QCoreApplication>
#include <QFile>

#include <memory>
#include <vector>

namespace {

UniChemin Dans(UniChemin const& dossier, char const* nom)
{
    return dossier.DonneChaineEnAjoutantComposantChemin(UniChemin(nom));
}

// Journal en mémoire : EcrisAlerte, non virtuelle, passe par l'Ecris d'ici.
class JournalMemoire : public JournalAbs
{
public:
    bool Ecris(UniChaine const& texte) override
    {
        lignes.push_back(texte);
        return true;
    }
    UniChemin DonneChemin() const override { return UniChemin(); }
    std::vector<UniChaine> lignes;
};

} // namespace

void VerifiePlateforme(UniChemin const& dossier)
{
    // Fichier Qt : écriture, relecture par une copie, copie sur disque, échec par exception
    // standard attrapée par sa base.
    ::Fichier f(Dans(dossier, "qt.txt"));
    VERIFIE(!f.Existe() && !f.EstOuvert());
    f.OuvreEnEcriture();
    VERIFIE(f.EstOuvert() && f.Ecris("bonjour", 7) == 7);
    f.Purge();
    f.Ferme();
    VERIFIE(f.DonneToutLeContenu() == QByteArray("bonjour") && f.DonneDateModification().isValid());
    ::Fichier copie(f);
    copie.OuvreEnLecture();
    char lu[16] = {};
    VERIFIE(copie.Lis(lu, sizeof lu) == 7 && QByteArray(lu) == "bonjour");
    copie.Ferme();
    VERIFIE(f.CopieVers(Dans(dossier, "qt2.txt")) && !f.CopieVers(Dans(dossier, "qt2.txt")));
    ::Fichier absent(Dans(dossier, "absent"));
    bool attrapee = false;
    try {
        absent.OuvreEnLecture();
    } catch (std::exception const& e) {
        auto const* code = dynamic_cast<ExceptionCode const*>(&e);
        attrapee = typeid(e) == typeid(ExceptionCode) && code != nullptr &&
                   code->DonneAlerte().DonneTypeDialogue() == DAlerteInfo::kAlerte;
    }
    VERIFIE(attrapee);
    int entier = 0;
    try {
        (void)absent.DonneToutLeContenu();
    } catch (int c) {
        entier = c;
    }
    VERIFIE(entier == -1);

    // Destruction selon la nature : le lien seul, jamais sa cible ni un répertoire.
    UniChemin const lien = Dans(dossier, "lien");
    VERIFIE(QFile::link(Dans(dossier, "qt2.txt"), lien));
    VERIFIE(!RoutinesFichier::DetruisFichier(lien, RoutinesFichier::kFichiersOrdinaires));
    VERIFIE(RoutinesFichier::DetruisFichier(lien, RoutinesFichier::kLiensSymboliques));
    VERIFIE(sdd::Fichier::FichierExiste(Dans(dossier, "qt2.txt")) &&
            !sdd::Fichier::FichierExiste(lien));
    VERIFIE(RoutinesFichier::DetruisFichier(Dans(dossier, "qt2.txt"),
                                            RoutinesFichier::kFichiersEtLiens));
    VERIFIE(!RoutinesFichier::DetruisFichier(dossier, RoutinesFichier::kFichiersEtLiens));

    // Journal sur disque : entête, fin de ligne suivie d'une tabulation, alerte.
    DAlerteInfo const alerte(DAlerteInfo::kAlerte, UniChaine(u"Disque plein"), UniChaine(u"E"),
                             UniChaine(u"T"));
    {
        std::unique_ptr<JournalAbs> journal(JournalAbs::CreeJournalAvecPreference(
            dossier, UniChaine(u"j.log"), UniChaine(u"ent\u00EAte"), true));
        VERIFIE(journal->DonneChemin() == Dans(dossier, "j.log"));
        VERIFIE(journal->Ecris(UniChaine(u"un\ndeux")) && journal->EcrisAlerte(alerte));
    }
    QFile disque(Dans(dossier, "j.log"));
    VERIFIE(disque.open(QIODevice::ReadOnly));
    QList<QByteArray> const lignes = disque.readAll().split('\n');
    VERIFIE(lignes.size() == 5 && lignes[4].isEmpty());
    if (lignes.size() == 5) {
        VERIFIE(lignes[0].mid(23) == "\tent\xC3\xAAte" && lignes[1].mid(23) == "\tun" &&
                lignes[2] == "\tdeux");
        VERIFIE(lignes[3].mid(23) == "\t(ALERTE)\tDisque plein\tE\t" && lignes[3][4] == '-');
    }
    JournalMemoire memoire;
    JournalAbs& base = memoire;
    VERIFIE(base.EcrisAlerte(alerte) && memoire.lignes.size() == 1 &&
            memoire.lignes[0] == alerte.DonneMessagePourJournalisation());
    VERIFIE(InitBoiteNoireViaRegistres(dossier, UniChaine(u"noire.log"), UniChaine(), true));
    VERIFIE(PreteBoiteNoire()->DonneChemin() == Dans(dossier, "noire.log"));
    DetruitBoiteNoire();

    // Nom d'application, temps monotone, profilage absent, interrupteurs exportés.
    VERIFIE(RoutinesGeneralesQt::DonneNomApplicationDecoray(UniChaine(u"d\u00E9co")) ==
            UniChaine(QCoreApplication::applicationName() + QStringLiteral(" d\u00E9co")));
    std::int64_t const t0 = DonneTempsAbsolu(1000000);
    sdd::DFil::Dors(0.002f);
    VERIFIE(DonneTempsAbsolu(1000000) - t0 >= 1000);
    DebuteTempsPourProfilage(1);
    VERIFIE(!DonneSiPeutProfiler() && TermineTempsPourProfilage(1) == -1);
    VERIFIE(gOnAsserte && OnAsserte() && TabTrace[32].titre != nullptr &&
            DonneTitreTrace(32).EstVide());
}
