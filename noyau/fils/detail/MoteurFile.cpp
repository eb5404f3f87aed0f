#include "noyau/fils/detail/MoteurFile.h"

#include "noyau/fils/detail/PoolGlobal.h"

#include <boost/asio/steady_timer.hpp>

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <limits>
#include <mutex>

namespace sdd::detail {

namespace {

// Partagé par l'appelant et les aides d'une exécution répétée ; une aide qui démarre après
// la fin ne trouve plus d'indice et ne touche pas au bloc.
struct Repetition
{
    Repetition(unsigned long n, std::function<void(unsigned int)> const& bloc) : n(n), bloc(bloc) {}

    // Prend des indices jusqu'à épuisement, puis compte ceux qu'on a faits.
    void Travaille()
    {
        unsigned long faits = 0;
        for (unsigned long i; (i = prochain.fetch_add(1)) < n; ++faits) {
            if (echec.load(std::memory_order_relaxed)) {
                continue;
            }
            try {
                bloc(static_cast<unsigned int>(i));
            } catch (...) {
                echec = true; // les autres sautent leurs indices dès maintenant
                std::lock_guard<std::mutex> garde(verrou);
                if (!erreur) {
                    erreur = std::current_exception();
                }
            }
        }
        std::lock_guard<std::mutex> garde(verrou);
        finis += faits;
        if (finis == n) {
            tousFinis.notify_all();
        }
    }

    unsigned long const n;
    std::function<void(unsigned int)> const& bloc;
    std::atomic<unsigned long> prochain{0};
    std::atomic<bool> echec{false};
    std::mutex verrou;
    std::condition_variable tousFinis;
    unsigned long finis = 0;
    std::exception_ptr erreur;
};

// Fin d'un envoi synchrone, partagée avec le bloc posté : l'appelant peut revenir avant que
// la file ne détruise le bloc.
class FinSync
{
public:
    // Le premier signal compte.
    void Signale(std::exception_ptr erreur)
    {
        std::lock_guard<std::mutex> garde(_verrou);
        if (!_finie) {
            _finie = true;
            _erreur = std::move(erreur);
            _signal.notify_one();
        }
    }
    // Le bloc est détruit : s'il n'a pas fini, il ne finira jamais. L'exception n'est faite
    // que dans ce cas (la destruction peut suivre de loin la fin, jusque pendant la sortie du
    // processus).
    void Abandonne()
    {
        std::lock_guard<std::mutex> garde(_verrou);
        if (!_finie) {
            _finie = true;
            _erreur = std::make_exception_ptr(exceptions::OperationInvalide());
            _signal.notify_one();
        }
    }
    void Attends()
    {
        std::unique_lock<std::mutex> attente(_verrou);
        _signal.wait(attente, [this] { return _finie; });
        if (_erreur) {
            std::rethrow_exception(_erreur);
        }
    }

private:
    std::mutex _verrou;
    std::condition_variable _signal;
    bool _finie = false;
    std::exception_ptr _erreur;
};

// Détruit avec le bloc posté : si la file l'abandonne sans l'exécuter (l'application
// détruite avant que sa boucle ne le serve), l'appelant reçoit OperationInvalide au lieu
// d'attendre sans fin.
class JetonSync
{
public:
    explicit JetonSync(std::shared_ptr<FinSync> fin) : _fin(std::move(fin)) {}
    JetonSync(JetonSync const&) = delete;
    JetonSync& operator=(JetonSync const&) = delete;
    ~JetonSync() { _fin->Abandonne(); }

private:
    std::shared_ptr<FinSync> const _fin;
};

} // namespace

void MoteurFile::PosteApres(std::chrono::nanoseconds delai, std::function<void()> bloc)
{
    auto& pool = PoolGlobal::Donne(PoolGlobal::kDefaut)->DonnePool();
    auto minuterie = std::make_shared<boost::asio::steady_timer>(pool.get_executor(), delai);
    minuterie->async_wait([minuterie, moteur = shared_from_this(),
                           bloc = std::move(bloc)](boost::system::error_code const&) mutable {
        moteur->Poste(std::move(bloc));
    });
}

void MoteurFile::ExecuteSync(std::function<void()> const& bloc)
{
    if (!PeutServir()) {
        throw exceptions::OperationInvalide();
    }
    if (ExecuteSurPlace()) {
        bloc();
        return;
    }
    auto const fin = std::make_shared<FinSync>();
    Poste([fin, jeton = std::make_shared<JetonSync>(fin), &bloc] {
        try {
            bloc();
            fin->Signale(nullptr);
        } catch (...) {
            fin->Signale(std::current_exception());
        }
    });
    fin->Attends();
}

void MoteurFile::ExecuteNFois(unsigned long n, std::function<void(unsigned int)> const& bloc)
{
    if (n == 0) {
        return;
    }
    // L'indice est un unsigned int : au-delà, des indices se répéteraient.
    if (n - 1 > std::numeric_limits<unsigned int>::max()) {
        exceptions::LanceIndexHorsBorne(n, 0, std::numeric_limits<unsigned int>::max());
    }
    if (EstSerie()) {
        ExecuteSync([&] {
            for (unsigned long i = 0; i < n; ++i) {
                bloc(static_cast<unsigned int>(i));
            }
        });
        return;
    }
    _ExecuteNFoisEnParallele(n, bloc);
}

// L'appelant travaille aussi : même si tous les fils du pool attendent (répétitions
// imbriquées), chaque indice finit par être pris.
void MoteurFile::_ExecuteNFoisEnParallele(unsigned long n,
                                          std::function<void(unsigned int)> const& bloc)
{
    auto repetition = std::make_shared<Repetition>(n, bloc);
    unsigned long const aides =
        std::min<unsigned long>(n - 1, PoolGlobal::Donne(PoolGlobal::kDefaut)->DonneNbFils());
    for (unsigned long a = 0; a < aides; ++a) {
        try {
            Poste([repetition] { repetition->Travaille(); });
        } catch (...) {
            break; // sans mémoire pour une aide de plus : l'appelant fera sa part
        }
    }
    repetition->Travaille();
    std::unique_lock<std::mutex> attente(repetition->verrou);
    repetition->tousFinis.wait(attente, [&] { return repetition->finis == n; });
    if (repetition->erreur) {
        std::rethrow_exception(repetition->erreur);
    }
}

} // namespace sdd::detail
