#include "noyau/fils/FileOperationsInterruptible.h"

#include "noyau/fils/detail/EnregistrementFile.h"

namespace sdd {

using detail::FilePartagee;

FileOperationsInterruptible::FileOperationsInterruptible()
    : FileOperationsInterruptible(static_cast<detail::EnregistrementFile*>(nullptr))
{
}

FileOperationsInterruptible::FileOperationsInterruptible(UniChaine const& nom)
    : FileOperationsInterruptible(detail::CreeEnregistrement(nom))
{
}

FileOperationsInterruptible::FileOperationsInterruptible(detail::EnregistrementFile* file)
    : _file(file), _enAttente(std::make_shared<unsigned int>(0))
{
}

FileOperationsInterruptible::~FileOperationsInterruptible()
{
    delete _file;
}

// Sous le verrou, l'ordre des incréments est celui des envois : le dernier envoyé est le
// seul à retrouver 1 en décomptant.
void FileOperationsInterruptible::LanceBlocOperation(std::function<void(unsigned int const&)> bloc)
{
    detail::VerifieBloc(bloc);
    detail::MoteurFile& moteur = detail::DonneMoteur(_file);
    _verrou.Verrouille();
    try {
        __atomic_add_fetch(_enAttente.get(), 1u, __ATOMIC_ACQ_REL);
        moteur.Poste([enAttente = _enAttente, bloc = std::move(bloc)] {
            if (__atomic_fetch_sub(enAttente.get(), 1u, __ATOMIC_ACQ_REL) == 1) {
                bloc(*enAttente);
            }
        });
    } catch (...) {
        __atomic_sub_fetch(_enAttente.get(), 1u, __ATOMIC_ACQ_REL);
        _verrou.Deverrouille();
        throw;
    }
    _verrou.Deverrouille();
}

unsigned int FileOperationsInterruptible::DonneEnAttente(unsigned int const& compte)
{
    return __atomic_load_n(&compte, __ATOMIC_ACQUIRE);
}

FileOperationsInterruptible* FileOperationsInterruptible::Principale()
{
    static auto* const file =
        new FileOperationsInterruptible(CreeEnregistrement(FilePartagee::kPrincipale));
    return file;
}

FileOperationsInterruptible* FileOperationsInterruptible::GlobaleDeDefaut()
{
    static auto* const file =
        new FileOperationsInterruptible(CreeEnregistrement(FilePartagee::kGlobaleDeDefaut));
    return file;
}

FileOperationsInterruptible* FileOperationsInterruptible::GlobalePrioriteHaute()
{
    static auto* const file =
        new FileOperationsInterruptible(CreeEnregistrement(FilePartagee::kGlobaleHaute));
    return file;
}

FileOperationsInterruptible* FileOperationsInterruptible::GlobalePrioriteBasse()
{
    static auto* const file =
        new FileOperationsInterruptible(CreeEnregistrement(FilePartagee::kGlobaleBasse));
    return file;
}

} // namespace sdd
