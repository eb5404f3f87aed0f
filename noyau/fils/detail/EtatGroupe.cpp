#include "noyau/fils/detail/EtatGroupe.h"

#include <vector>

namespace sdd::detail {

bool EtatGroupe::_FinisJusque(std::uint64_t jusque) const
{
    return _enCours.empty() || *_enCours.begin() > jusque;
}

std::uint64_t EtatGroupe::Entre()
{
    std::lock_guard<std::mutex> garde(_verrou);
    _enCours.insert(++_dernier);
    return _dernier;
}

void EtatGroupe::Sort(std::uint64_t membre)
{
    std::vector<Avis> dus;
    {
        std::lock_guard<std::mutex> garde(_verrou);
        _enCours.erase(membre);
        while (!_avis.empty() && _FinisJusque(_avis.front().jusque)) {
            dus.push_back(std::move(_avis.front()));
            _avis.pop_front();
        }
        _sortie.notify_all();
    }
    for (Avis& avis : dus) { // hors du verrou : la file peut exécuter sur place
        avis.moteur->Poste(std::move(avis.bloc));
    }
}

void EtatGroupe::Avertis(std::shared_ptr<MoteurFile> moteur, std::function<void()> bloc)
{
    {
        std::lock_guard<std::mutex> garde(_verrou);
        if (!_FinisJusque(_dernier)) {
            _avis.push_back(Avis{_dernier, std::move(moteur), std::move(bloc)});
            return;
        }
    }
    moteur->Poste(std::move(bloc));
}

void EtatGroupe::Attends()
{
    std::unique_lock<std::mutex> attente(_verrou);
    std::uint64_t const jusque = _dernier;
    _sortie.wait(attente, [&] { return _FinisJusque(jusque); });
}

} // namespace sdd::detail
