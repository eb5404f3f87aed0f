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
    std::uint64_t const membre = _etat->Entre();
    try {
        moteur->Poste([etat = _etat, membre, bloc = std::move(bloc)] {
            bloc();
            etat->Sort(membre);
        });
    } catch (...) {
        _etat->Sort(membre);
        throw;
    }
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
