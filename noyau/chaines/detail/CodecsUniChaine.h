#pragma once

#include "noyau/chaines/UniChaine.h"

#include <QByteArray>
#include <QString>

#include <cstddef>

// Les conversions de UniChaine passent par les codecs de Qt qui portent les noms de ses
// codages : leurs octets sont ceux du codec, à l'octet près.
namespace sdd::detail {

// Octets décodés ; un codage inconnu donne le texte vide. Au-delà de ce qu'un QString
// tient : std::bad_array_new_length, avant toute allocation.
QString DecodeOctets(char const* octets, std::size_t n, UniChaine::Codage codage);

// Forme en octets, sans zéro final ; avecEntete : la marque d'ordre que le codec UTF-16
// écrit en tête. Vide pour un codage inconnu.
QByteArray EncodeUnites(char16_t const* unites, std::size_t n, UniChaine::Codage codage,
                        bool avecEntete = true);

// Octets du zéro final : deux en UTF-16, un sinon.
std::size_t TailleTerminateur(UniChaine::Codage codage) noexcept;

// Plus longue tête des octets de forme (sans zéro final) qui tient en place octets sans
// couper un caractère.
std::size_t CoupeSansCouperCaractere(QByteArray const& forme, std::size_t place,
                                     UniChaine::Codage codage) noexcept;

} // namespace sdd::detail
