#pragma once

#include "noyau/Export.h"
#include "noyau/flux/Fichier.h"

#include <memory>

namespace sdd {

// Fichier derrière un tampon de 64 Kio : une seule écriture ou lecture du système par
// tampon. Le tampon est vidé quand on passe de l'écriture à la lecture (ou l'inverse), à la
// fermeture et à la destruction.
class NOYAU_EXPORT FichierAvecTampon : public Fichier
{
public:
    static constexpr unsigned int kTailleTampon = 1u << 16;

    FichierAvecTampon();
    FichierAvecTampon(UniChemin const& chemin, int mode,
                      UniChaine::Codage codage = UniChaine::kUTF8, bool sansBOM = false);
    ~FichierAvecTampon() override;

    bool EstALaFin() const override;
    unsigned int DonnePosition() const override;
    NOYAU_EXPORT unsigned char Donne() override
    {
        if (_etat == kEnLecture && _debut < _fin) {
            return _tampon[_debut++];
        }
        return _DonneLent();
    }
    unsigned int Donne(unsigned int n, unsigned char* dest) override;
    void PositionneAuDebut() override;
    void Positionne(unsigned int position) override;
    void PositionneALaFin() override;

    // Toute ouverture passe par ici : le tampon du fichier précédent est vidé d'abord.
    void Init(bool sansBOM, bool appliqueBOM) override;
    void Ferme() override;
    bool EstEnBonEtat() const override;
    void RetireDonne() override;
    // Les lignes passent par le tampon, avec les règles de Fichier.
    bool DonneLigne(char* tampon, int taille) override;
    using Fichier::DonneLigne;
    NOYAU_EXPORT void Mets(unsigned char octet) override
    {
        if (_etat == kEnEcriture && _fin < kTailleTampon) {
            _tampon[_fin++] = octet;
            return;
        }
        _MetsLent(octet);
    }
    void Mets(unsigned char const* octets, unsigned int n) override;

    // Passe le tampon à la lecture : ce qui attend d'être écrit part d'abord.
    void AjusteTamponPourLecture();
    // Passe le tampon à l'écriture : le fichier revient à la position de lecture logique.
    void AjusteTamponPourEcriture();

protected:
    bool _LisOctetsLigne(std::string& octets) override;

private:
    class SourceLignes;

    enum eEtat : unsigned char
    {
        kLibre,
        kEnLecture,
        kEnEcriture
    };

    unsigned char _DonneLent();
    void _MetsLent(unsigned char octet);
    // Vide le tampon vers le fichier (écriture) ou l'oublie en replaçant le fichier
    // (lecture) ; le tampon est ensuite libre.
    void _Libere();
    // Remplit le tampon de lecture ; faux à la fin du fichier.
    bool _Remplis();

    std::unique_ptr<unsigned char[]> _tampon{new unsigned char[kTailleTampon]};
    unsigned int _debut = 0; // prochain octet à lire
    unsigned int _fin = 0;   // fin des octets lus, ou des octets à écrire
    eEtat _etat = kLibre;
};

} // namespace sdd
