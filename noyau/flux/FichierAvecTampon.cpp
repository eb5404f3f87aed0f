#include "noyau/flux/FichierAvecTampon.h"

#include "noyau/flux/detail/LecteurLigne.h"

#include <algorithm>
#include <cstring>
#include <fstream>

namespace sdd {

FichierAvecTampon::FichierAvecTampon() = default;

FichierAvecTampon::FichierAvecTampon(UniChemin const& chemin, int mode, UniChaine::Codage codage,
                                     bool sansBOM)
{
    // Ouvre appelé ici, et non par Fichier : Init n'y serait pas encore celle de cette classe.
    Ouvre(chemin, mode, codage, sansBOM);
}

FichierAvecTampon::~FichierAvecTampon()
{
    try {
        _Libere();
    } catch (...) {
        // Un destructeur ne lance rien ; l'écriture perdue laisse le flux en échec.
    }
}

void FichierAvecTampon::Init(bool sansBOM, bool appliqueBOM)
{
    _Libere();
    Fichier::Init(sansBOM, appliqueBOM);
}

void FichierAvecTampon::Ferme()
{
    _Libere();
    Fichier::Ferme();
}

bool FichierAvecTampon::EstEnBonEtat() const
{
    // Ce qui reste dans le tampon se lit encore, sauf après un échec (ligne trop longue).
    return Fichier::EstEnBonEtat() ||
           (_flux != nullptr && !_flux->fail() && _etat == kEnLecture && _debut < _fin);
}

// --- Tampon ---

void FichierAvecTampon::_Libere()
{
    if (_etat == kEnEcriture && _fin != 0 && _flux != nullptr) {
        Fichier::Mets(_tampon.get(), _fin);
    } else if (_etat == kEnLecture && _debut < _fin && _flux != nullptr) {
        // Le fichier a lu d'avance : il revient sur l'octet logique suivant.
        _flux->clear();
        _flux->seekg(-std::streamoff(_fin - _debut), std::ios::cur);
    }
    _debut = _fin = 0;
    _etat = kLibre;
}

void FichierAvecTampon::AjusteTamponPourLecture()
{
    if (_etat != kEnLecture) {
        _Libere();
        _etat = kEnLecture;
    }
}

void FichierAvecTampon::AjusteTamponPourEcriture()
{
    if (_etat != kEnEcriture) {
        _Libere();
        _etat = kEnEcriture;
    }
}

bool FichierAvecTampon::_Remplis()
{
    _debut = 0;
    _fin = Fichier::Donne(kTailleTampon, _tampon.get());
    return _fin != 0;
}

// --- Lecture ---

bool FichierAvecTampon::EstALaFin() const
{
    return !(_etat == kEnLecture && _debut < _fin) && Fichier::EstALaFin();
}

unsigned int FichierAvecTampon::DonnePosition() const
{
    std::uint64_t const position = _PositionSysteme();
    if (_etat == kEnLecture) {
        return _Position32(position - (_fin - _debut));
    }
    return _Position32(_etat == kEnEcriture ? position + _fin : position);
}

unsigned char FichierAvecTampon::_DonneLent()
{
    AjusteTamponPourLecture();
    if (_debut == _fin && !_Remplis()) {
        return 0;
    }
    return _tampon[_debut++];
}

unsigned int FichierAvecTampon::Donne(unsigned int n, unsigned char* dest)
{
    AjusteTamponPourLecture();
    unsigned int const deja = std::min(n, _fin - _debut);
    std::memcpy(dest, _tampon.get() + _debut, deja);
    _debut += deja;
    if (deja == n) {
        return n;
    }
    // Une grande lecture va droit au fichier ; une petite passe par le tampon.
    if (n - deja >= kTailleTampon) {
        return deja + Fichier::Donne(n - deja, dest + deja);
    }
    unsigned int lus = deja;
    while (lus < n && _Remplis()) {
        unsigned int const pris = std::min(n - lus, _fin);
        std::memcpy(dest + lus, _tampon.get(), pris);
        _debut = pris;
        lus += pris;
    }
    return lus;
}

void FichierAvecTampon::RetireDonne()
{
    if (_etat == kEnLecture && _debut > 0) {
        _flux->clear(); // comme sans tampon : l'octet rendu efface la fin et l'échec
        --_debut;
        return;
    }
    _Libere();
    Fichier::RetireDonne();
}

void FichierAvecTampon::PositionneAuDebut()
{
    Positionne(0);
}

void FichierAvecTampon::Positionne(unsigned int position)
{
    _Libere();
    Fichier::Positionne(position);
}

void FichierAvecTampon::PositionneALaFin()
{
    _Libere();
    Fichier::PositionneALaFin();
}

// Source de lignes : les octets du tampon, rempli depuis le fichier quand il est vide.
class FichierAvecTampon::SourceLignes
{
public:
    explicit SourceLignes(FichierAvecTampon& fichier) noexcept : _fichier(fichier) {}
    char const* Disponibles(std::size_t& n)
    {
        if (_fichier._debut == _fichier._fin) {
            _fichier._Remplis();
        }
        n = _fichier._fin - _fichier._debut;
        return reinterpret_cast<char const*>(_fichier._tampon.get() + _fichier._debut);
    }
    void Consomme(std::size_t n) noexcept { _fichier._debut += static_cast<unsigned int>(n); }

private:
    FichierAvecTampon& _fichier;
};

bool FichierAvecTampon::_LisOctetsLigne(std::string& octets)
{
    AjusteTamponPourLecture();
    octets.clear();
    if (_flux == nullptr) {
        return false;
    }
    SourceLignes source(*this);
    return detail::LisLigneChaine(source, *_flux, octets);
}

bool FichierAvecTampon::DonneLigne(char* tampon, int taille)
{
    AjusteTamponPourLecture();
    if (_flux == nullptr) {
        return false;
    }
    SourceLignes source(*this);
    try {
        return detail::LisLigneBornee(source, *_flux, tampon, taille);
    } catch (...) {
        // Un flux en échec ne rend plus rien, pas même ce que le tampon a lu d'avance : comme
        // sans tampon, jusqu'au prochain positionnement. Le fichier revient à la position
        // logique, et l'échec demeure.
        std::ios::iostate const etat = _flux->rdstate();
        _Libere();
        _flux->clear(etat);
        throw;
    }
}

// --- Écriture ---

void FichierAvecTampon::_MetsLent(unsigned char octet)
{
    AjusteTamponPourEcriture();
    if (_fin == kTailleTampon) {
        _Libere();
        _etat = kEnEcriture;
    }
    _tampon[_fin++] = octet;
}

void FichierAvecTampon::Mets(unsigned char const* octets, unsigned int n)
{
    AjusteTamponPourEcriture();
    if (_fin + std::uint64_t(n) <= kTailleTampon) {
        std::memcpy(_tampon.get() + _fin, octets, n);
        _fin += n;
        return;
    }
    _Libere();
    _etat = kEnEcriture;
    if (n >= kTailleTampon) {
        Fichier::Mets(octets, n);
    } else {
        std::memcpy(_tampon.get(), octets, n);
        _fin = n;
    }
}

} // namespace sdd
