#pragma once

#include "noyau/Export.h"

#include <cstdint>
#include <memory>

// Ce qui veut être prévenu par un Abonneur.
class NOYAU_EXPORT Abonnay
{
public:
    virtual ~Abonnay();
    // abonnes : le tableau des abonnés de l'Abonneur qui prévient.
    virtual void RecoisNotification(unsigned int code, void* donnees, Abonnay** abonnes) = 0;
};

// Liste d'abonnés prévenus dans l'ordre d'abonnement. Elle ne possède pas les abonnés et
// n'a pas de verrou.
class NOYAU_EXPORT Abonneur
{
public:
    // Le tableau est réservé au premier abonnement, avec cette capacité.
    explicit Abonneur(std::uint32_t capaciteInitiale = 4) noexcept;
    Abonneur(Abonneur const&) = delete;
    Abonneur& operator=(Abonneur const&) = delete;
    ~Abonneur();

    // Plein, le tableau double (au moins une place de plus).
    void Abonne(Abonnay* abonne);
    // Enlève toutes les occurrences ; l'ordre des autres et la capacité restent.
    void Desabonne(Abonnay* abonne) noexcept;
    // Un abonné peut se désabonner (ou en abonner d'autres) pendant qu'il est prévenu : le
    // nombre est relu à chaque pas. Celui qui prend la place d'un désabonné déjà prévenu
    // n'est pas prévenu cette fois.
    void PreviensAbonnes(unsigned int code, void* donnees);

    std::uint32_t DonneNombre() const noexcept { return _nombre; }
    std::uint32_t DonneCapacite() const noexcept { return _capacite; }
    // Hors de 0..DonneNombre()-1 : sdd::exceptions::IndexHorsBorne.
    Abonnay* DonneAbonne(std::uint32_t i) const;

private:
    void _Realloue(std::uint32_t capacite);

    std::unique_ptr<Abonnay*[]> _abonnes;
    std::uint32_t _nombre = 0;
    std::uint32_t _capacite;
};
