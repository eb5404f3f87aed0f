#pragma once

// Les symboles de la bibliothèque sont cachés par défaut ; seul ce qui porte
// NOYAU_EXPORT fait partie de son interface binaire.
//
// Une classe exportée garde cachées ses fonctions en ligne (un client qui les appelle en
// émet sa propre copie), sauf ses virtuelles : un appel dévirtualisé chez le client peut
// viser la virtuelle ou le thunk qui y mène, que seule la bibliothèque émet. Chaque
// virtuelle en ligne d'une classe exportée porte donc NOYAU_EXPORT, et chaque classe
// exportée polymorphe déclare son destructeur hors ligne. scripts/verifie-symboles.py le
// vérifie sur la bibliothèque installée.
#define NOYAU_EXPORT __attribute__((visibility("default")))
