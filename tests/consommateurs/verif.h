#pragma once

// Vérifications partagées : une ligne par échec, le compte décide du code de sortie.

#include <noyau/noyau.h>

#include <cstdio>
#include <typeinfo>

extern int gEchecs;

#define VERIFIE(cond)                                                                              \
    do {                                                                                           \
        if (!(cond)) {                                                                             \
            ++gEchecs;                                                                             \
            std::printf("ÉCHEC %s:%d : %s\n", __FILE__, __LINE__, #cond);                          \
        }                                                                                          \
    } while (0)

// L'instruction doit lever, depuis la bibliothèque, une exception attrapée par la base
// commune et dont le type dynamique est exactement T (typeid et dynamic_cast).
#define VERIFIE_LEVE(T, ...)                                                                       \
    do {                                                                                           \
        bool bon_ = false;                                                                         \
        try {                                                                                      \
            __VA_ARGS__;                                                                           \
        } catch (sdd::exceptions::Exception & e_) {                                                \
            bon_ = typeid(e_) == typeid(T) && dynamic_cast<T*>(&e_) != nullptr &&                  \
                   !e_.Message().EstVide();                                                        \
        } catch (...) {                                                                            \
        }                                                                                          \
        if (!bon_) {                                                                               \
            ++gEchecs;                                                                             \
            std::printf("ÉCHEC %s:%d : %s ne lève pas %s\n", __FILE__, __LINE__, #__VA_ARGS__,     \
                        #T);                                                                       \
        }                                                                                          \
    } while (0)

// Un domaine par fichier ; le dossier est temporaire et propre à l'exécution.
void VerifieDefautThunk();
void VerifieChaines();
void VerifieFlux(UniChemin const& dossier);
void VerifieLexique(UniChemin const& dossier);
void VerifieFils();
void VerifieErreurs();
void VerifiePlateforme(UniChemin const& dossier);
