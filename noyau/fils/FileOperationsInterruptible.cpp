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

namespace {

// La place d'un bloc envoyé dans le compte des blocs en attente. Un bloc qui ne démarrera
// jamais (file principale sans application, envoi qui échoue) la rend en disparaissant :
// sinon le compte ne redescendrait plus à 1 et la file ne servirait plus rien.
class PlaceEnAttente
{
public:
    explicit PlaceEnAttente(std::shared_ptr<unsigned int> compte) : _compte(std::move(compte))
    {
        __atomic_add_fetch(_compte.get(), 1u, __ATOMIC_ACQ_REL);
    }
    PlaceEnAttente(PlaceEnAttente const&) = delete;
    PlaceEnAttente& operator=(PlaceEnAttente const&) = delete;
    ~PlaceEnAttente()
    {
        if (!_rendue) {
            __atomic_sub_fetch(_compte.get(), 1u, __ATOMIC_ACQ_REL);
        }
    }

    // Au démarrage : rend la place ; vrai pour le dernier bloc envoyé.
    bool EstLeDernier()
    {
        _rendue = true;
        return __atomic_fetch_sub(_compte.get(), 1u, __ATOMIC_ACQ_REL) == 1;
    }
    unsigned int const& Compte() const { return *_compte; }

private:
    std::shared_ptr<unsigned int> _compte;
    bool _rendue = false;
};

} // namespace

// Sous le verrou, l'ordre des incréments est celui des envois : le dernier envoyé est le
// seul à retrouver 1 en décomptant.
void FileOperationsInterruptible::LanceBlocOperation(std::function<void(unsigned int const&)> bloc)
{
    detail::VerifieBloc(bloc);
    detail::MoteurFile& moteur = detail::DonneMoteur(_file);
    _verrou.Verrouille();
    try {
        auto place = std::make_shared<PlaceEnAttente>(_enAttente);
        moteur.Poste([place, bloc = std::move(bloc)] {
            if (place->EstLeDernier()) {
                bloc(place->Compte());
            }
        });
    } catch (...) {
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
