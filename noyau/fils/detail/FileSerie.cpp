#include "noyau/fils/detail/FileSerie.h"

#include "noyau/fils/detail/NomFil.h"
#include "noyau/fils/detail/PoolGlobal.h"

#include <boost/asio/post.hpp>

namespace sdd::detail {

namespace {

// Files série que le fil courant est en train de servir, de la plus récente à la plus
// ancienne : un envoi synchrone à l'une d'elles s'exécute sur place.
struct Cadre
{
    FileSerie const* file;
    Cadre const* parent;
};
thread_local Cadre const* gCadres = nullptr;

class CadreCourant
{
public:
    explicit CadreCourant(FileSerie const* file) : _cadre{file, gCadres} { gCadres = &_cadre; }
    ~CadreCourant() { gCadres = _cadre.parent; }
    CadreCourant(CadreCourant const&) = delete;
    CadreCourant& operator=(CadreCourant const&) = delete;

private:
    Cadre const _cadre;
};

// Une exception qui sort d'un bloc envoyé sans attente termine le processus, au point de
// lancement.
void Execute(std::function<void()>& bloc) noexcept
{
    bloc();
    bloc = nullptr; // ce que le bloc retient est rendu tout de suite
}

} // namespace

struct FileSerie::Attente
{
    bool finie = false; // sous _verrou
    std::exception_ptr erreur;
};

FileSerie::FileSerie(std::string const& nom)
    : _nom(NomDeFil(nom)),
      _executeur(PoolGlobal::Donne(PoolGlobal::kDefaut)->DonnePool().get_executor())
{
}

void FileSerie::Poste(std::function<void()> bloc)
{
    std::lock_guard<std::mutex> garde(_verrou);
    if (!_servie && !_tourPoste) {
        _PosteTour();
    }
    _blocs.push_back(std::move(bloc)); // sans mémoire : le tour posté trouvera la file vide
}

// Posté sous le verrou : si boost::asio::post échoue, rien n'a changé.
void FileSerie::_PosteTour()
{
    auto moi = std::static_pointer_cast<FileSerie>(shared_from_this());
    boost::asio::post(_executeur, [moi = std::move(moi)] { moi->_Tour(); });
    _tourPoste = true;
}

// Un tour sert les blocs présents à son début, puis rend la main au pool : les autres files
// passent entre deux tours.
void FileSerie::_Tour() noexcept
{
    std::unique_lock<std::mutex> verrou(_verrou);
    _tourPoste = false;
    if (_servie || _blocs.empty()) {
        return; // un envoi synchrone sert la file ; il repostera un tour s'il le faut
    }
    _servie = true;
    std::deque<std::function<void()>> lot;
    lot.swap(_blocs);
    verrou.unlock();
    {
        CadreCourant cadre(this);
        NomTemporaire nom(_nom);
        for (auto& bloc : lot) {
            Execute(bloc);
        }
    }
    lot.clear(); // hors verrou : rendre les blocs ne doit pas bloquer les envois
    verrou.lock();
    _RendLaMain();
}

void FileSerie::_RendLaMain()
{
    _servie = false;
    if (!_blocs.empty() && !_tourPoste) {
        try {
            _PosteTour();
        } catch (...) {
            // Sans mémoire pour poster un tour, les blocs attendent le prochain envoi.
        }
    }
    if (_nbAttentes != 0) {
        _rendue.notify_all();
    }
}

bool FileSerie::ExecuteSurPlace() const
{
    for (Cadre const* cadre = gCadres; cadre != nullptr; cadre = cadre->parent) {
        if (cadre->file == this) {
            return true;
        }
    }
    return false;
}

// Un fil des pools n'attend pas : quand personne ne sert la file, il la sert lui-même
// jusqu'à son bloc. Un autre fil attend que le pool exécute son bloc, sous le nom de la
// file.
void FileSerie::ExecuteSync(std::function<void()> const& bloc)
{
    if (ExecuteSurPlace()) {
        bloc();
        return;
    }
    // Le bloc peut détruire l'objet file, dernier détenteur du moteur : on le garde en vie.
    auto const garde = shared_from_this();
    Attente attente;
    std::unique_lock<std::mutex> verrou(_verrou);
    if (!_servie && !_tourPoste && !EstFilDePool()) {
        _PosteTour();
    }
    _blocs.push_back([this, &bloc, &attente] {
        try {
            bloc();
        } catch (...) {
            attente.erreur = std::current_exception();
        }
        std::lock_guard<std::mutex> garde(_verrou);
        attente.finie = true;
        _rendue.notify_all();
    });
    ++_nbAttentes;
    while (!attente.finie) {
        // Hors du pool, on ne sert la file que si aucun tour n'a pu être posté (mémoire).
        if (!_servie && (EstFilDePool() || !_tourPoste)) {
            _ServsJusqua(verrou, attente);
        } else {
            _rendue.wait(verrou);
        }
    }
    --_nbAttentes;
    verrou.unlock();
    if (attente.erreur) {
        std::rethrow_exception(attente.erreur);
    }
}

void FileSerie::_ServsJusqua(std::unique_lock<std::mutex>& verrou, Attente const& attente)
{
    _servie = true;
    {
        CadreCourant cadre(this);
        NomTemporaire nom(_nom);
        while (!attente.finie) {
            std::function<void()> suivant = std::move(_blocs.front());
            _blocs.pop_front();
            verrou.unlock();
            Execute(suivant);
            verrou.lock();
        }
    }
    _RendLaMain();
}

} // namespace sdd::detail
