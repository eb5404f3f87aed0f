#include "noyau/flux/FichierMMap.h"

#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/TamponMemoire.h"
#include "noyau/flux/detail/NatureChemin.h"

#include <QFile>

#include <cstring>
#include <limits>

namespace sdd {

FichierMMap::FichierMMap() {}

FichierMMap::FichierMMap(UniChemin const& chemin)
{
    Ouvrir(chemin, 0, 0);
}

FichierMMap::FichierMMap(UniChemin const& chemin, unsigned long decalage, unsigned long longueur)
{
    Ouvrir(chemin, decalage, longueur);
}

FichierMMap::~FichierMMap()
{
    if (_donnees != nullptr && _fichier != nullptr) {
        _fichier->unmap(_donnees);
        _donnees = nullptr;
    }
    // _fichier, détruit ensuite, ferme le fichier.
}

void FichierMMap::Ouvrir(UniChemin const& chemin, unsigned long decalage, unsigned long longueur)
{
    if (chemin.EstVide()) {
        return;
    }
    // Tenu par _fichier dès sa création : un constructeur qui échoue le libère.
    _fichier = std::make_unique<QFile>(QString(chemin));
    // Seul un fichier ordinaire se projette ; ouvrir un tube nommé bloquerait.
    bool const ordinaire = detail::DonneNatureChemin(_fichier->fileName()).EstOrdinaire();
    if (!ordinaire || !_fichier->open(QIODevice::ReadOnly)) {
        throw exceptions::OuvertureEchouee(chemin);
    }
    std::uint64_t const tailleFichier = static_cast<std::uint64_t>(_fichier->size());
    std::uint64_t const aProjeter = longueur != 0 ? longueur : tailleFichier;
    // La position et la taille tiennent sur 32 bits : au-delà, on refuse plutôt que de
    // tronquer. Une tranche qui déborde du fichier ferait fauter ses dernières pages.
    if (aProjeter == 0 || aProjeter > std::numeric_limits<unsigned int>::max() ||
        decalage > tailleFichier || aProjeter > tailleFichier - decalage) {
        throw exceptions::MemoireInsuffisante(UniChaine());
    }
    // Privée : un tampon prêté qui écrit (DonneCString pose un zéro) ne touche pas au fichier.
    _donnees = _fichier->map(static_cast<qint64>(decalage), static_cast<qint64>(aProjeter),
                             QFileDevice::MapPrivateOption);
    if (_donnees == nullptr) {
        throw exceptions::MemoireInsuffisante(UniChaine());
    }
    _taille = static_cast<unsigned int>(aProjeter);
}

unsigned char FichierMMap::_DonneAuBout()
{
    if (_position > _taille) {
        exceptions::LanceIndexHorsBorne(_position, 0, _taille);
    }
    ++_position;
    return 0;
}

unsigned int FichierMMap::Donne(unsigned int n, unsigned char* dest)
{
    std::uint64_t const fin = std::uint64_t(_position) + n;
    if (fin > _taille) {
        exceptions::LanceIndexHorsBorne(static_cast<unsigned long>(fin), 0, _taille);
    }
    if (n != 0) {
        std::memcpy(dest, _donnees + _position, n);
    }
    _position += n;
    return n;
}

void FichierMMap::_VerifiePosition() const
{
    if (_position > _taille) {
        exceptions::LanceIndexHorsBorne(_position, 0, _taille);
    }
}

unsigned char const* FichierMMap::Ptr() const
{
    _VerifiePosition();
    return _donnees + _position;
}

unsigned char const* FichierMMap::PtrEtAvance(unsigned int n)
{
    _VerifiePosition();
    unsigned char const* const p = _donnees + _position;
    _position += n;
    return p;
}

TamponMemoire* FichierMMap::TamponEnPretantDonnees()
{
    return new TamponMemoire(_donnees, _taille, false);
}

} // namespace sdd
