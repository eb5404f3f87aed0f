#pragma once

#include "noyau/erreurs/Exceptions.h"

#include <chrono>
#include <functional>
#include <memory>

namespace sdd::detail {

// Ce qui sert une file d'opérations : un pool global, un brin sur le pool par défaut (file
// série) ou la boucle d'événements du fil principal.
class MoteurFile : public std::enable_shared_from_this<MoteurFile>
{
public:
    virtual ~MoteurFile() = default;
    // Exécute le bloc plus tard ; une exception qui en sort termine le processus.
    virtual void Poste(std::function<void()> bloc) = 0;
    // Un bloc à la fois, dans l'ordre d'envoi.
    virtual bool EstSerie() const = 0;
    // Faux quand rien ne servira la file (boucle principale sans application).
    virtual bool PeutServir() const { return true; }

    void PosteApres(std::chrono::nanoseconds delai, std::function<void()> bloc);
    // Revient quand le bloc a fini ; son exception passe à l'appelant.
    virtual void ExecuteSync(std::function<void()> const& bloc);
    // bloc(0) ... bloc(n - 1), en parallèle sur une file concurrente ; revient quand tous
    // ont fini. La première exception passe à l'appelant ; les indices pas encore commencés
    // sont alors sautés.
    void ExecuteNFois(unsigned long n, std::function<void(unsigned int)> const& bloc);

private:
    // Vrai quand un envoi synchrone doit s'exécuter sur le fil appelant : attendre un autre
    // fil bloquerait sans fin (le fil appelant sert déjà la file) ou priverait le pool d'un
    // fil.
    virtual bool ExecuteSurPlace() const = 0;
    void _ExecuteNFoisEnParallele(unsigned long n, std::function<void(unsigned int)> const& bloc);
};

// Un bloc vide lèverait std::bad_function_call sur un fil de la file : refusé à l'envoi.
template <typename Bloc> void VerifieBloc(Bloc const& bloc)
{
    if (!bloc) {
        throw exceptions::PointeurInvalide();
    }
}

} // namespace sdd::detail
