#pragma once

// Les symboles de la bibliothèque sont cachés par défaut ; seul ce qui porte
// NOYAU_EXPORT fait partie de son interface binaire.
#define NOYAU_EXPORT __attribute__((visibility("default")))
