#include "noyau/chaines/UniChaine.h"

#include "noyau/chaines/ConvertisseurChaineN.h"
#include "noyau/erreurs/Exceptions.h"

#include <QHash>

#include <cstring>

const UniChaine kUniChaineNulle;

namespace {

// Codage de sdd::ChaineN de même sens, ou -1.
int CodageChaineN(UniChaine::Codage codage)
{
    switch (codage) {
    case UniChaine::kMacRoman:
        return 0;
    case UniChaine::kLatin9:
        return 1;
    case UniChaine::kWinLatin1:
        return 2;
    case UniChaine::kDOS:
        return 3;
    case UniChaine::kUTF8:
        return 4;
    case UniChaine::kUTF16:
        return Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? 5 : 6;
    default:
        return -1;
    }
}

QString Decode(char const* octets, std::size_t n, UniChaine::Codage codage)
{
    int const codageChaineN = CodageChaineN(codage);
    if (octets == nullptr || n == 0 || codageChaineN < 0) {
        return QString();
    }
    auto const& convertisseur = sdd::ConvertisseurChaineN::DonnePourCodage(codageChaineN);
    QString texte(static_cast<int>(convertisseur.MaxUnitesPourOctets(n)), Qt::Uninitialized);
    auto const dest = reinterpret_cast<char16_t*>(texte.data());
    texte.resize(static_cast<int>(convertisseur.VersUTF16(octets, n, dest)));
    return texte;
}

} // namespace

UniChaine::UniChaine(UniChaine const& autre) : _texte(autre._texte) {}

UniChaine::UniChaine(UniChaine&& autre) noexcept : _texte(std::move(autre._texte)) {}

UniChaine::UniChaine(QString const& texte) : _texte(texte) {}

UniChaine::UniChaine(char16_t const* texte, int longueur)
{
    if (texte != nullptr) {
        _texte = longueur < 0 ? QString::fromUtf16(texte)
                              : QString(reinterpret_cast<QChar const*>(texte), longueur);
    }
}

UniChaine::UniChaine(char const* texte, Codage codage, int longueur)
    : _texte(Decode(texte, texte == nullptr ? 0 : longueur < 0 ? std::strlen(texte) : longueur,
                    codage))
{
}

UniChaine::UniChaine(std::string const& texte, Codage codage)
    : _texte(Decode(texte.data(), texte.size(), codage))
{
}

UniChaine::~UniChaine() { _LibereTampon(); }

UniChaine& UniChaine::operator=(UniChaine const& autre)
{
    _texte = autre._texte;
    return *this;
}

UniChaine& UniChaine::operator=(UniChaine&& autre) noexcept
{
    _texte = std::move(autre._texte);
    return *this;
}

UniChaine& UniChaine::operator=(QString const& texte)
{
    _texte = texte;
    return *this;
}

char16_t UniChaine::operator[](int i) const
{
    if (i < 0 || i >= _texte.size()) {
        sdd::exceptions::LanceIndexHorsBorne(static_cast<unsigned long>(i), 0,
                                             static_cast<unsigned long>(_texte.size()));
    }
    return _texte[i].unicode();
}

char16_t const* UniChaine::PreteUniCString() const noexcept
{
    return reinterpret_cast<char16_t const*>(_texte.utf16());
}

UniChaine& UniChaine::AjouteFin(UniChaine const& autre)
{
    _texte += autre._texte;
    return *this;
}

UniChaine UniChaine::AjouteFin(UniChaine const& autre) const
{
    return UniChaine(*this).AjouteFin(autre);
}

UniChaine operator+(UniChaine const& a, UniChaine const& b) { return a.AjouteFin(b); }

UniChaine UniChaine::DepuisNombre(int n, int base, int largeur, bool zeros, bool aGauche)
{
    QChar const remplissage = zeros ? QLatin1Char('0') : QLatin1Char(' ');
    return UniChaine(QStringLiteral("%1").arg(n, aGauche ? -largeur : largeur, base, remplissage));
}

UniChaine UniChaine::DepuisNombre(unsigned int n, int base, int largeur, bool zeros, bool aGauche)
{
    QChar const remplissage = zeros ? QLatin1Char('0') : QLatin1Char(' ');
    return UniChaine(QStringLiteral("%1").arg(n, aGauche ? -largeur : largeur, base, remplissage));
}

unsigned int UniChaine::hash() const noexcept { return qHash(_texte, 0); }

void UniChaine::_LibereTampon() noexcept
{
    delete[] _tampon;
    _tampon = nullptr;
    _longueurTampon = 0;
    _codageTampon = kAucunCodage;
}
