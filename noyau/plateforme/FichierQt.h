#pragma once

#include "noyau/Export.h"
#include "noyau/chaines/UniChemin.h"

#include <QByteArray>
#include <QDateTime>

#include <memory>

class QFile;

// Fichier vu par Qt (à ne pas confondre avec sdd::Fichier, le flux d'octets : sous
// « using namespace sdd », écrire ::Fichier pour celui-ci et sdd::Fichier pour l'autre). Les
// échecs d'ouverture, de création et d'écriture lancent ExceptionCode, avec une alerte
// d'erreur de fichier dont l'explication est toujours le texte du code 0 (volontaire). Un
// chemin qui n'est pas un fichier ordinaire (répertoire, tube nommé...) ne s'ouvre pas ; pour
// écrire, il peut aussi être absent.
class NOYAU_EXPORT Fichier
{
public:
    explicit Fichier(UniChemin const& chemin);
    // Le même chemin, fermé.
    Fichier(Fichier const& autre);
    Fichier& operator=(Fichier const& autre);
    ~Fichier();

    UniChemin const& DonneChemin() const noexcept { return _chemin; }
    bool Existe() const;
    bool EstOuvert() const;
    // Crée le fichier (vide s'il n'existait pas) sans le laisser ouvert.
    void Cree();
    void OuvreEnLecture();
    // Vide le fichier.
    void OuvreEnEcriture();
    // Crée le fichier s'il manque ; le contenu reste.
    void OuvreEnLectureEcriture();
    void Ferme();

    // Au plus n octets ; -1 en cas d'erreur.
    long long Lis(char* dest, long long n);
    // Écrit dans le tampon ; -1 en cas d'erreur.
    long long Ecris(char const* octets, long long n);
    // Envoie le tampon au système.
    void Purge();
    // Tout le contenu, sans ouvrir cet objet ; l'entier -1 si le fichier ne se lit pas.
    QByteArray DonneToutLeContenu() const;
    // Copie le fichier vers destination (qui ne doit pas exister) ; vrai si copié.
    bool CopieVers(UniChemin const& destination) const;
    // Date de dernière modification ; invalide pour un fichier absent.
    QDateTime DonneDateModification() const;

private:
    void _Ouvre(int mode, int codeMessage);

    UniChemin _chemin;
    std::unique_ptr<QFile> _fichier;
};
