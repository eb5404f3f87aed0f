#include "noyau/fils/GroupeOperations.h"

#include "noyau/fils/FileOperations.h"
#include "noyau/fils/Operation.h"
#include "noyau/fils/detail/EnregistrementFile.h"
#include "noyau/fils/detail/EtatGroupe.h"

namespace sdd {

namespace {

std::shared_ptr<detail::MoteurFile> MoteurDe(FileOperations* file,
                                             detail::EnregistrementFile* enregistrement)
{
    if (file == nullptr) {
        throw exceptions::OperationInvalide();
    }
    return detail::DonneMoteur(enregistrement).shared_from_this();
}

// Un membre sort du groupe quand son bloc a fini, ou quand la file le détruit sans l'avoir
// exécuté (file principale sans application) : le groupe ne l'attend pas sans fin.
class Membre
{
public:
    explicit Membre(std::shared_ptr<detail::EtatGroupe> etat)
        : _etat(std::move(etat)), _numero(_etat->Entre())
    {
    }
    Membre(Membre const&) = delete;
    Membre& operator=(Membre const&) = delete;
    ~Membre() { Sors(); }

    void Sors()
    {
        if (!_sorti) {
            _sorti = true;
            _etat->Sort(_numero);
        }
    }

private:
    std::shared_ptr<detail::EtatGroupe> const _etat;
    std::uint64_t const _numero;
    bool _sorti = false;
};

std::function<void()> BlocDe(Operation* operation)
{
    if (operation == nullptr) {
        throw exceptions::PointeurInvalide();
    }
    return [operation] { operation->run(); };
}

} // namespace

GroupeOperations::GroupeOperations() : _etat(std::make_shared<detail::EtatGroupe>()) {}

GroupeOperations::~GroupeOperations() = default;

void GroupeOperations::AjouteOperation(FileOperations* file, Operation* operation)
{
    AjouteOperationBloc(file, BlocDe(operation));
}

void GroupeOperations::AjouteOperationBloc(FileOperations* file, std::function<void()> bloc)
{
    detail::VerifieBloc(bloc);
    auto const moteur = MoteurDe(file, file ? file->_file : nullptr);
    auto membre = std::make_shared<Membre>(_etat);
    moteur->Poste([membre = std::move(membre), bloc = std::move(bloc)] {
        bloc();
        membre->Sors();
    });
}

void GroupeOperations::AvertirOperationALaFinDesOperations(FileOperations* file,
                                                           Operation* operation)
{
    AvertirOperationBlocALaFinDesOperations(file, BlocDe(operation));
}

void GroupeOperations::AvertirOperationBlocALaFinDesOperations(FileOperations* file,
                                                               std::function<void()> bloc)
{
    detail::VerifieBloc(bloc);
    _etat->Avertis(MoteurDe(file, file ? file->_file : nullptr), std::move(bloc));
}

bool GroupeOperations::AttendreLaFinDesOperations()
{
    _etat->Attends();
    return true;
}

} // namespace sdd
