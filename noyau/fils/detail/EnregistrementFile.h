#pragma once

#include "noyau/fils/detail/MoteurFile.h"

class UniChaine;

namespace sdd::detail {

// Ce que tient une file publique : son moteur, partagé avec les blocs en route et avec les
// autres objets qui servent la même file.
struct EnregistrementFile
{
    std::shared_ptr<MoteurFile> moteur;
    bool creeeParNom; // faux pour la file principale et les files globales ; jamais lu
};

enum class FilePartagee
{
    kPrincipale,
    kGlobaleDeDefaut,
    kGlobaleHaute,
    kGlobaleBasse
};

EnregistrementFile* CreeEnregistrement(UniChaine const& nom);
EnregistrementFile* CreeEnregistrement(FilePartagee file);
// Le moteur d'une file ; OperationInvalide pour un objet construit sans file.
MoteurFile& DonneMoteur(EnregistrementFile const* file);

} // namespace sdd::detail
