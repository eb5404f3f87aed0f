#pragma once

#include "noyau/fils/detail/MoteurFile.h"

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <set>

namespace sdd::detail {

// Les membres d'un groupe sont numérotés dans l'ordre d'envoi ; « tous les membres jusqu'au
// numéro j ont fini » se lit sur le plus petit numéro encore en cours.
class EtatGroupe
{
public:
    // Numéro du nouveau membre.
    std::uint64_t Entre();
    // Le membre a fini ; envoie les avis devenus dus.
    void Sort(std::uint64_t membre);
    // Envoie le bloc à la file quand les membres entrés jusqu'ici auront fini.
    void Avertis(std::shared_ptr<MoteurFile> moteur, std::function<void()> bloc);
    void Attends();

private:
    struct Avis
    {
        std::uint64_t jusque;
        std::shared_ptr<MoteurFile> moteur;
        std::function<void()> bloc;
    };

    bool _FinisJusque(std::uint64_t jusque) const;

    std::mutex _verrou;
    std::condition_variable _sortie;
    std::uint64_t _dernier = 0;
    std::set<std::uint64_t> _enCours;
    std::deque<Avis> _avis; // par « jusque » croissant : dans l'ordre où ils sont demandés
};

} // namespace sdd::detail
