#include "noyau/fils/FileOperations.h"

#include "noyau/fils/detail/Delais.h"
#include "noyau/fils/detail/EnregistrementFile.h"

namespace sdd {

using detail::DonneMoteur;
using detail::FilePartagee;

FileOperations::FileOperations() : _file(nullptr) {}

FileOperations::FileOperations(UniChaine const& nom) : _file(detail::CreeEnregistrement(nom)) {}

FileOperations::FileOperations(detail::EnregistrementFile* file) : _file(file) {}

FileOperations::~FileOperations()
{
    delete _file;
}

void FileOperations::LanceBlocOperation(std::function<void()> bloc)
{
    detail::VerifieBloc(bloc);
    DonneMoteur(_file).Poste(std::move(bloc));
}

void FileOperations::LanceBlocOperationSync(std::function<void()> bloc)
{
    detail::VerifieBloc(bloc);
    DonneMoteur(_file).ExecuteSync(bloc);
}

void FileOperations::LanceBlocOperationApresTemps(double secondes, std::function<void()> bloc)
{
    detail::VerifieBloc(bloc);
    DonneMoteur(_file).PosteApres(detail::DureeDeSecondes(secondes), std::move(bloc));
}

void FileOperations::LanceBlocOperationNFois(unsigned long n,
                                             std::function<void(unsigned int)> bloc)
{
    detail::VerifieBloc(bloc);
    DonneMoteur(_file).ExecuteNFois(n, bloc);
}

FileOperations* FileOperations::Principale()
{
    static auto* const file = new FileOperations(CreeEnregistrement(FilePartagee::kPrincipale));
    return file;
}

FileOperations* FileOperations::GlobaleDeDefaut()
{
    static auto* const file =
        new FileOperations(CreeEnregistrement(FilePartagee::kGlobaleDeDefaut));
    return file;
}

FileOperations* FileOperations::GlobalePrioriteHaute()
{
    static auto* const file = new FileOperations(CreeEnregistrement(FilePartagee::kGlobaleHaute));
    return file;
}

FileOperations* FileOperations::GlobalePrioriteBasse()
{
    static auto* const file = new FileOperations(CreeEnregistrement(FilePartagee::kGlobaleBasse));
    return file;
}

} // namespace sdd
