#pragma once

#include "noyau/Export.h"

#include <cstdint>

// Texte décimal d'un entier dans le tampon de l'appelant, sans allocation ni locale.
// Le tampon doit avoir 21 octets pour 64 bits, 12 pour 32 bits ; le texte est suivi d'un
// zéro. Renvoie le nombre de caractères écrits (signe compris, zéro final non compris).
NOYAU_EXPORT int mon_itoa(std::int32_t valeur, char* tampon) noexcept;
NOYAU_EXPORT int mon_itoa_ent4ss(std::uint32_t valeur, char* tampon) noexcept;
NOYAU_EXPORT int mon_itoa_ent8(std::int64_t valeur, char* tampon) noexcept;
NOYAU_EXPORT int mon_itoa_ent8ss(std::uint64_t valeur, char* tampon) noexcept;
