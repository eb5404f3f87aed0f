#include "noyau/fils/detail/NomFil.h"

#include <mutex>
#include <pthread.h>
#include <set>

namespace sdd::detail {

namespace {

thread_local char const* gNomPorte = nullptr;

std::string Coupe(std::string nom)
{
    constexpr std::size_t kMax = 15;
    if (nom.size() > kMax) {
        std::size_t fin = kMax;
        while (fin > 0 && (static_cast<unsigned char>(nom[fin]) & 0xC0) == 0x80) {
            --fin; // octet de suite : on recule jusqu'au début du caractère
        }
        nom.resize(fin);
    }
    return nom;
}

} // namespace

char const* NomDeFil(std::string const& nom)
{
    // Les noms de files sont peu nombreux : ils ne sont jamais rendus.
    static std::mutex verrou;
    static auto* const noms = new std::set<std::string>;
    std::lock_guard<std::mutex> garde(verrou);
    return noms->insert(Coupe(nom)).first->c_str();
}

void NommeFilCourant(char const* nom) noexcept
{
    if (gNomPorte != nom) {
        pthread_setname_np(pthread_self(), nom);
        gNomPorte = nom;
    }
}

NomTemporaire::NomTemporaire(char const* nom) noexcept : _ancien(gNomPorte)
{
    if (_ancien != nullptr) {
        NommeFilCourant(nom);
    }
}

NomTemporaire::~NomTemporaire()
{
    if (_ancien != nullptr) {
        NommeFilCourant(_ancien);
    }
}

} // namespace sdd::detail
