#include "noyau/lexique/TableChaineNoyau.h"

namespace sdd {

TableChaineNoyau::__Iterateur::__Iterateur(TableChaineNoyau const& table) : _table(&table) {}

bool TableChaineNoyau::__Iterateur::Prochain()
{
    if (_courant == nullptr) {
        _prefixe.Vide();
        _ancetres.Vide();
        _courant = _table->DonneRacine();
        if (_courant == nullptr) {
            return false;
        }
        if (_courant->EstTerminal()) { // la chaîne vide
            return true;
        }
    }
    // Ordre préfixe : les enfants d'un nœud avant ses frères suivants.
    do {
        if (_courant->DonnePremierEnfant() != nullptr) {
            _Descends();
        } else if (!_RemonteVersFrere()) {
            return false;
        }
    } while (!_courant->EstTerminal());
    return true;
}

void TableChaineNoyau::__Iterateur::_Descends()
{
    std::u16string_view const cars = _courant->Cars();
    _ancetres.Ajoute(_courant);
    _prefixe.AjouteFin(cars.data(), cars.size());
    _courant = _courant->DonnePremierEnfant();
}

bool TableChaineNoyau::__Iterateur::_RemonteVersFrere()
{
    Noeud const* suivant = _courant->DonneSuivant();
    while (suivant == nullptr && !_ancetres.EstVide()) {
        Noeud const* const ancetre = _ancetres[_ancetres.Taille() - 1];
        _ancetres.Enleve(_ancetres.Taille() - 1);
        _prefixe.EnleveFin(ancetre->Cars().size());
        suivant = ancetre->DonneSuivant();
    }
    _courant = suivant;
    return suivant != nullptr;
}

ChaineN const& TableChaineNoyau::__Iterateur::Clef()
{
    if (_courant == nullptr) {
        _clef.Vide();
    } else {
        std::u16string_view const cars = _courant->Cars();
        _clef = _prefixe;
        _clef.AjouteFin(cars.data(), cars.size());
    }
    return _clef;
}

} // namespace sdd
