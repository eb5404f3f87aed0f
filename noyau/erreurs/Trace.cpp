#include "noyau/erreurs/Trace.h"

#include "noyau/reglages/PrefsDeveloppement.h"

const InfoTrace TabTrace[33] = {
    {"LNG", true},
    {"Phrase", true},
    {"Hypothèses", true},
    {"Analyse lexicale", true},
    {"Numéro de mots", true},
    {"Correction", false},
    {"Régimes", false},
    {"Arbres partiels", true},
    {"Arbres complets", true},
    {"Arbres corrigés", false},
    {"Numéros", true},
    {"Rangs des coocs", false},
    {"Règles testées", true},
    {"Diminue poids", true},
    {"Figés", false},
    {"Anaphores", false},
    {"Ngrams", false},
    {"Langue", false},
    {"LangueIdent", false},
    {"Synchro", false},
    // Un canal personnel par développeur.
    {"Personnel 1", false},
    {"Personnel 2", false},
    {"Personnel 3", false},
    {"Personnel 4", false},
    {"Personnel 5", false},
    {"Personnel 6", false},
    {"Développeurs Qt", false},
    {"Développeurs Win", false},
    {"Développeurs Mac", false},
    {"Développeurs Linux", false},
    {"Stats compilation dicos", false},
    {"Dico perso", false},
    {"", false},
};

bool gOnTraceProgSpecifique = true;
bool gOnTraceGenerale = true;

namespace {

bool EstCanalNumerote(short canal)
{
    return canal >= 0 && canal < PrefsDeveloppement::kNbCanaux;
}

} // namespace

UniChaine DonneTitreTrace(typTrace canal)
{
    return UniChaine(TabTrace[canal].titre);
}

bool EstTraceAnalyse(typTrace canal)
{
    return TabTrace[canal].analyse;
}

bool EstCanalTraceOuvert(short canal)
{
    PrefsDeveloppement const* const prefs = DonnePrefsDeveloppement();
    if (prefs == nullptr || !prefs->DonneTrace()) {
        return false;
    }
    if (gOnTraceProgSpecifique && EstCanalNumerote(canal)) {
        return prefs->DonneTraceCanal(canal);
    }
    return canal == -1 && gOnTraceGenerale;
}

void Devermin_JeTrace(bool actif, short canal)
{
    PrefsDeveloppement* const prefs = DonnePrefsDeveloppement();
    if (prefs != nullptr && EstCanalNumerote(canal)) {
        prefs->MetsTraceCanal(canal, actif);
    }
}

bool Devermin_TraceJe(short canal)
{
    return DonnePrefsDeveloppement() == nullptr || EstCanalTraceOuvert(canal);
}
