#pragma once

#include "noyau/Export.h"
#include "noyau/fils/DMutex.h"

#include <functional>
#include <memory>

class UniChaine;

namespace sdd {

namespace detail {
struct EnregistrementFile;
}

// File qui n'exécute que le plus récent des blocs qu'on lui envoie : un bloc qui arrive à
// son tour alors qu'un plus récent attend est sauté. Le bloc exécuté reçoit le compte des
// blocs en attente (0 au départ) ; s'il le voit passer au-dessus de 0, un plus récent
// attend derrière lui et il peut s'arrêter tôt.
class NOYAU_EXPORT FileOperationsInterruptible
{
public:
    FileOperationsInterruptible();
    explicit FileOperationsInterruptible(UniChaine const& nom);
    // Les blocs déjà envoyés s'exécutent quand même (le compte vit avec eux).
    ~FileOperationsInterruptible();
    FileOperationsInterruptible(FileOperationsInterruptible const&) = delete;
    FileOperationsInterruptible& operator=(FileOperationsInterruptible const&) = delete;

    // Le compte change pendant que le bloc le lit : le bloc le lit par DonneEnAttente.
    void LanceBlocOperation(std::function<void(unsigned int const&)> bloc);
    // Lecture atomique du compte reçu par un bloc.
    static unsigned int DonneEnAttente(unsigned int const& compte);

    static FileOperationsInterruptible* Principale();
    static FileOperationsInterruptible* GlobaleDeDefaut();
    static FileOperationsInterruptible* GlobalePrioriteHaute();
    static FileOperationsInterruptible* GlobalePrioriteBasse();

private:
    explicit FileOperationsInterruptible(detail::EnregistrementFile* file);

    detail::EnregistrementFile* _file;
    std::shared_ptr<unsigned int> _enAttente; // blocs envoyés et pas encore commencés
    DMutex _verrou;                           // ordonne les envois concurrents
};

} // namespace sdd
