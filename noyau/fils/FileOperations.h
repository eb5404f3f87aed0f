#pragma once

#include "noyau/Export.h"

#include <functional>

class UniChaine;

namespace sdd {

namespace detail {
struct EnregistrementFile;
}

// File d'opérations : on y envoie des blocs, exécutés plus tard par ses fils. Une file
// nommée est série (un bloc à la fois, dans l'ordre d'envoi) ; les files globales sont
// concurrentes ; la file principale est servie par la boucle d'événements du fil principal.
// Une exception qui sort d'un bloc envoyé sans attente termine le processus.
class NOYAU_EXPORT FileOperations
{
public:
    // Sans file : tout envoi lève sdd::exceptions::OperationInvalide.
    FileOperations();
    // Nouvelle file série ; ses fils portent le nom (15 octets UTF-8 au plus) pendant ses
    // blocs.
    explicit FileOperations(UniChaine const& nom);
    // Les blocs déjà envoyés s'exécutent quand même.
    ~FileOperations();
    FileOperations(FileOperations const&) = delete;
    FileOperations& operator=(FileOperations const&) = delete;

    // Tous les envois lèvent sdd::exceptions::PointeurInvalide pour un bloc vide.
    void LanceBlocOperation(std::function<void()> bloc);
    // Revient quand le bloc a fini ; son exception passe à l'appelant. Appelé depuis la
    // file elle-même, le bloc s'exécute sur place.
    void LanceBlocOperationSync(std::function<void()> bloc);
    // Envoie le bloc quand le délai (en secondes, à partir de maintenant) est écoulé.
    void LanceBlocOperationApresTemps(double secondes, std::function<void()> bloc);
    // bloc(0) ... bloc(n - 1), en parallèle sur une file globale, dans l'ordre sur une file
    // série ; revient quand tous ont fini. n au-delà de 2^32 lève IndexHorsBorne.
    void LanceBlocOperationNFois(unsigned long n, std::function<void(unsigned int)> bloc);

    // Files partagées, créées au premier appel, jamais détruites.
    static FileOperations* Principale();
    static FileOperations* GlobaleDeDefaut();
    static FileOperations* GlobalePrioriteHaute();
    static FileOperations* GlobalePrioriteBasse();

private:
    friend class GroupeOperations;
    explicit FileOperations(detail::EnregistrementFile* file);

    detail::EnregistrementFile* _file;
};

} // namespace sdd
