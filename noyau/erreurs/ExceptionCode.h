#pragma once

#include "noyau/Export.h"
#include "noyau/erreurs/DAlerteInfo.h"

#include <exception>
#include <string>

// Exception standard qui porte une alerte : les programmes qui n'attrapent que
// std::exception en ont au moins le texte.
class NOYAU_EXPORT ExceptionCode : public std::exception
{
public:
    explicit ExceptionCode(DAlerteInfo const& alerte);
    ~ExceptionCode() override;

    // UTF-8 de DonneChainePourStdException(), valable autant que l'exception.
    NOYAU_EXPORT char const* what() const noexcept override { return _texte.c_str(); }
    DAlerteInfo const& DonneAlerte() const noexcept { return _alerte; }

private:
    DAlerteInfo _alerte;
    std::string _texte; // fait à la construction : what() n'alloue rien
};
