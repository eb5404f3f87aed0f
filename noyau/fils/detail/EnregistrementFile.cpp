#include "noyau/fils/detail/EnregistrementFile.h"

#include "noyau/chaines/UniChaine.h"
#include "noyau/fils/detail/FilePrincipale.h"
#include "noyau/fils/detail/FileSerie.h"
#include "noyau/fils/detail/PoolGlobal.h"

namespace sdd::detail {

EnregistrementFile* CreeEnregistrement(UniChaine const& nom)
{
    std::string const octets = nom.DonneQString().toUtf8().toStdString();
    return new EnregistrementFile{std::make_shared<FileSerie>(octets), true};
}

EnregistrementFile* CreeEnregistrement(FilePartagee file)
{
    static auto const principale = std::make_shared<FilePrincipale>();
    switch (file) {
    case FilePartagee::kPrincipale:
        return new EnregistrementFile{principale, false};
    case FilePartagee::kGlobaleHaute:
        return new EnregistrementFile{PoolGlobal::Donne(PoolGlobal::kHaute), false};
    case FilePartagee::kGlobaleBasse:
        return new EnregistrementFile{PoolGlobal::Donne(PoolGlobal::kBasse), false};
    default:
        return new EnregistrementFile{PoolGlobal::Donne(PoolGlobal::kDefaut), false};
    }
}

MoteurFile& DonneMoteur(EnregistrementFile const* file)
{
    if (file == nullptr) {
        throw exceptions::OperationInvalide();
    }
    return *file->moteur;
}

} // namespace sdd::detail
