#pragma once

#include "noyau/Export.h"
#include "noyau/chaines/ChaineN.h"
#include "noyau/chaines/UniChemin.h"
#include "noyau/flux/Flux.h"

#include <cstdint>
#include <ctime>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

namespace sdd {

// Fichier du système, flux d'entrée et de sortie à la fois, qui connaît le codage de son
// texte (reconnu par sa marque d'ordre des octets à l'ouverture en lecture).
class NOYAU_EXPORT Fichier : public FluxEntree, public FluxSortie
{
public:
    // Bits du mode d'ouverture, essayés dans cet ordre : lecture, ajout (écriture + ajout),
    // écriture (le fichier est vidé).
    enum : int
    {
        kEcriture = 1,
        kLecture = 2,
        kAjout = 4
    };

    Fichier();
    Fichier(UniChemin const& chemin, int mode, UniChaine::Codage codage = UniChaine::kUTF8,
            bool sansBOM = false);
    Fichier(UniChemin const& chemin, int mode, ChaineN::Codage codage, bool sansBOM = false);
    Fichier(Fichier const&) = delete;
    Fichier& operator=(Fichier const&) = delete;
    ~Fichier() override;

    // Flux. Le côté lecture sert au mode 2 exactement, le côté écriture aux autres.
    bool EstALaFin() const override;
    unsigned int DonnePosition() const override;
    // 0 à la fin du fichier.
    unsigned char Donne() override;
    unsigned int Donne(unsigned int n, unsigned char* dest) override;
    void PositionneAuDebut() override;
    void Positionne(unsigned int position) override;
    void PositionneALaFin() override;

    // Ouvre selon le mode ; sans sansBOM et en lecture seule, lit la marque d'ordre des octets
    // et, si appliqueBOM, prend le codage qu'elle désigne. Lire demande un fichier ordinaire,
    // écrire un fichier ordinaire ou absent (un tube nommé bloquerait) : sinon l'ouverture
    // échoue. Lire un fichier de 4 Gio ou plus lève MemoireInsuffisante ; le flux reste en
    // échec.
    virtual void Init(bool sansBOM, bool appliqueBOM);
    // Le codage donné reste : la marque est seulement passée.
    virtual void Ouvre(UniChemin const& chemin, int mode, UniChaine::Codage codage,
                       bool sansBOM = false);
    virtual void Ouvre(UniChemin const& chemin, int mode, ChaineN::Codage codage,
                       bool sansBOM = false);
    // Lecture, codage pris de la marque (UTF-8 sans marque).
    virtual void OuvreEnLectureSeule(UniChemin const& chemin);
    virtual void Ferme();
    virtual bool EstEnBonEtat() const;
    // Au plus n octets ; renvoie le nombre lu.
    virtual unsigned int DonneLePlus(unsigned int n, unsigned char* dest);
    // Rend le dernier octet lu.
    virtual void RetireDonne();
    // Ligne suivante dans le codage du fichier, sans sa fin (LF, CR LF) ; la dernière ligne
    // peut n'avoir pas de fin. Faux, sans toucher à ligne, quand il n'y a plus rien ou que le
    // flux est en échec.
    virtual bool DonneLigne(UniChaine& ligne);
    virtual bool DonneLigne(ChaineN& ligne);
    // Comme std::istream::getline : au plus taille - 1 octets jusqu'au LF (passé, non gardé),
    // puis un zéro ; vrai dès qu'un octet (LF compris) a été pris. Une ligne trop longue met
    // le flux en échec ; un flux en échec autre que la fin lève std::runtime_error. Faux sur
    // un fichier fermé.
    virtual bool DonneLigne(char* tampon, int taille);
    void Mets(unsigned char octet) override;
    // N'écrit rien sur un flux en échec.
    void Mets(unsigned char const* octets, unsigned int n) override;
    // n < 0 : jusqu'au zéro final.
    virtual void Ecris(char const* texte, int n = -1);

    // Le texte après la marque, le texte depuis la position, dans le codage du fichier ;
    // tous les octets du fichier.
    ChaineN DonneToutLeTexte();
    ChaineN DonneToutLeResteDuTexte();
    std::vector<unsigned char> DonneToutLeFichier();
    // Le contenu entier du fichier en chemin, dans un bloc new[] que l'appelant libère
    // (suivi d'un zéro hors taille). OuvertureEchouee si le fichier ne se lit pas (ou n'est
    // pas un fichier ordinaire), MemoireInsuffisante à 4 Gio ou plus.
    static char* DonneToutLeTexte(UniChemin const& chemin, unsigned int& taille);

    UniChemin const& DonneChemin() const noexcept { return _chemin; }
    int DonneMode() const noexcept { return _mode; }
    unsigned int DonneTaille() const noexcept { return _taille; }
    UniChaine::Codage DonneCodage() const noexcept { return _codage; }
    ChaineN::Codage DonneCodageChaineN() const noexcept { return _codageChaineN; }

    // EF BB BF suivis d'un zéro, dans un tableau new[] ; n reçoit 3.
    static char* DonneBOMUTF8(int& n);
    // 0 pour un fichier absent.
    static unsigned long long TailleFichier(UniChemin const& chemin);
    // Date de dernière modification, locale ; faux pour un fichier absent.
    static bool DonneDate(UniChemin const& chemin, int& annee, int& mois, int& jour);
    // Secondes depuis 1970 ; 0 pour un fichier absent.
    static std::time_t DonneDate(UniChemin const& chemin);
    static bool FichierExiste(UniChemin const& chemin, bool* estRepertoire = nullptr);
    // Vrai quand le fichier a été détruit.
    static bool SupprimeFichier(UniChemin const& chemin);

protected:
    // Lit la marque depuis le début ; laisse la position comme le veut la marque trouvée.
    void LisBOM(bool applique);
    void _MetsCodage(UniChaine::Codage codage);
    void _MetsCodage(ChaineN::Codage codage);
    bool _CoteLecture() const noexcept { return _mode == kLecture; }
    // Position du flux standard, sur 64 bits ; 0 sans flux.
    std::uint64_t _PositionSysteme() const;
    // La position sur 32 bits, ou IndexHorsBorne quand elle n'y tient pas.
    static unsigned int _Position32(std::uint64_t position);
    // Octets de la ligne suivante jusqu'au LF (une unité 0x000A en UTF-16), fin non comprise.
    bool _LisLigneBrute(std::string& octets);
    // Octets jusqu'au prochain LF, passé et non gardé ; faux sans aucun octet.
    virtual bool _LisOctetsLigne(std::string& octets);

    unsigned int _taille = 0;
    std::unique_ptr<std::fstream> _flux;
    UniChemin _chemin;
    int _mode = 0;
    UniChaine::Codage _codage = UniChaine::kUTF8;
    ChaineN::Codage _codageChaineN = ChaineN::kUTF8;
    unsigned int _debutTexte = 0; // octets de la marque passée

private:
    // Ce que désigne le chemin convient au mode (fichier ordinaire pour lire, absent ou
    // ordinaire pour écrire) ; MemoireInsuffisante pour lire 4 Gio ou plus.
    bool _CheminOuvrable(char const* chemin) const;
    // Taille en lecture seule ; MemoireInsuffisante, flux fermé, à 4 Gio ou plus.
    void _MesureTaille();
};

} // namespace sdd
