#pragma once

#include "noyau/Export.h"
#include "noyau/chaines/UniChaine.h"

// Canal de trace : 0 à 31 ; -1 désigne la trace générale.
using typTrace = short;

struct InfoTrace
{
    char const* titre; // UTF-8
    bool analyse;      // canal de l'analyse de la langue
};

// Une ligne par canal, puis une ligne finale vide (titre "", faux).
extern NOYAU_EXPORT const InfoTrace TabTrace[33];

// Sans vérification : canal doit être dans 0..32.
NOYAU_EXPORT UniChaine DonneTitreTrace(typTrace canal);
NOYAU_EXPORT bool EstTraceAnalyse(typTrace canal);

// Traces propres à un canal permises ; trace générale (canal -1) permise.
extern NOYAU_EXPORT bool gOnTraceProgSpecifique;
extern NOYAU_EXPORT bool gOnTraceGenerale;

// Le canal doit-il tracer ? Faux sans préférences de développement ou quand leur trace est
// éteinte ; pour 0..31, l'interrupteur du canal (si gOnTraceProgSpecifique) ; pour -1,
// gOnTraceGenerale.
NOYAU_EXPORT bool EstCanalTraceOuvert(short canal);
// Allume ou éteint un canal dans les préférences de développement ; sans elles, ou hors
// de 0..31, rien.
NOYAU_EXPORT void Devermin_JeTrace(bool actif, short canal);
// Comme EstCanalTraceOuvert, mais vrai sans préférences de développement.
NOYAU_EXPORT bool Devermin_TraceJe(short canal);
