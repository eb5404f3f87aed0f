#include "noyau/erreurs/ReceveurTrace.h"

#include "noyau/erreurs/Trace.h"
#include "noyau/erreurs/detail/FormatBorne.h"

#include <atomic>

namespace {

std::atomic<ReceveurTrace*> gReceveurPrincipal{nullptr};
thread_local ReceveurTrace* gReceveurDuFil = nullptr;

// Mise en forme bornée des deux variantes à la printf, lue dans le codage donné.
void RecoisFormate(ReceveurTrace& receveur, sdd::ChaineN::Codage codage, char const* format,
                   va_list arguments)
{
    char tampon[sdd::detail::kTailleTamponFormat];
    sdd::detail::FormateBorne(tampon, format, arguments);
    receveur.RecoisTrace(codage, tampon);
}

} // namespace

ReceveurTrace::~ReceveurTrace() = default;
ReceveurTraceGenerique::~ReceveurTraceGenerique() = default;

void ReceveurTrace::RecoisTrace(sdd::ChaineN::Codage codage, char const* texte, int longueur)
{
    unsigned long const nbOctets =
        longueur < 0 ? sdd::ChaineN::kJusquAuZero : static_cast<unsigned long>(longueur);
    RecoisLigneTrace(sdd::ChaineN(texte, codage, nbOctets));
}

void ReceveurTrace::RecoisTraceFmtN(sdd::ChaineN format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    sdd::detail::FinArguments fin{arguments};
    RecoisLigneTrace(sdd::ChaineN::vFormat(format, arguments));
}

void ReceveurTrace::RecoisTraceFmtMac(char const* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    sdd::detail::FinArguments fin{arguments};
    RecoisFormate(*this, sdd::ChaineN::kMacRoman, format, arguments);
}

void ReceveurTrace::RecoisTraceFmt(char const* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    sdd::detail::FinArguments fin{arguments};
    RecoisFormate(*this, sdd::ChaineN::kUTF8, format, arguments);
}

bool ReceveurTrace::VeutRecevoirTrace(short canal)
{
    return EstCanalTraceOuvert(canal);
}

void ReceveurTraceGenerique::RecoisLigneTrace(sdd::ChaineN const& ligne)
{
    // Nettoyée puis jetée : sans receveur de l'application, aucune trace ne sort.
    sdd::ChaineN(ligne).NettoieBlancs();
}

ReceveurTrace* DonneReceveurTrace()
{
    if (gReceveurDuFil != nullptr) {
        return gReceveurDuFil;
    }
    ReceveurTrace* principal = gReceveurPrincipal.load(std::memory_order_acquire);
    if (principal == nullptr) {
        // Deux fils pressés peuvent en créer chacun un : un seul est gardé.
        auto* nouveau = new ReceveurTraceGenerique;
        if (gReceveurPrincipal.compare_exchange_strong(principal, nouveau,
                                                       std::memory_order_acq_rel)) {
            principal = nouveau;
        } else {
            delete nouveau;
        }
    }
    return principal;
}

void MetsReceveurDeTracePrincipal(ReceveurTrace* receveur)
{
    ReceveurTrace* const ancien = gReceveurPrincipal.exchange(receveur, std::memory_order_acq_rel);
    // Réinstaller le même receveur ne doit pas le détruire.
    if (ancien != receveur) {
        delete ancien;
    }
}

void LibereReceveurTrace()
{
    MetsReceveurDeTracePrincipal(nullptr);
}

void MetsReceveurTraceDuFil(ReceveurTrace* receveur) noexcept
{
    gReceveurDuFil = receveur;
}

ReceveurTrace* DonneReceveurTraceDuFil() noexcept
{
    return gReceveurDuFil;
}
