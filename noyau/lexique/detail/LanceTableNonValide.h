#pragma once

// Le refus d'une forme écrite abîmée, commun aux lecteurs des tables du lexique.
namespace sdd::detail {

// Lève exceptions::TableNonValide avec cette explication (texte UTF-8).
[[noreturn]] void LanceTableNonValide(char const* explication);

} // namespace sdd::detail
