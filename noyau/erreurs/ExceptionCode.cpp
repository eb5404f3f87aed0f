#include "noyau/erreurs/ExceptionCode.h"

ExceptionCode::ExceptionCode(DAlerteInfo const& alerte)
    : _alerte(alerte), _texte(alerte.DonneChainePourStdException().DonneQString().toStdString())
{
}

ExceptionCode::~ExceptionCode() = default;
