#pragma once

#include "noyau/Export.h"

namespace sdd::detail {

// Octet → unité UTF-16 des codages à un octet.
extern NOYAU_EXPORT const char16_t gTableMacRoman[256];
extern NOYAU_EXPORT const char16_t gTableLatin9[256]; // ISO 8859-15
extern NOYAU_EXPORT const char16_t
    gTableWinLatin1[256];                          // Windows-1252, « ? » pour les octets libres
extern NOYAU_EXPORT const char16_t gTableDOS[256]; // IBM 850

} // namespace sdd::detail
