// UniChaine : construction, affectation et modifications.

#include "noyau/chaines/UniChaine.h"

#include "noyau/chaines/ChaineN.h"
#include "noyau/chaines/ConvertisseurChaineN.h"
#include "noyau/chaines/detail/Bornes.h"
#include "noyau/chaines/detail/CodecsUniChaine.h"
#include "noyau/chaines/detail/Recherches.h"
#include "noyau/chaines/detail/Retouches.h"
#include "noyau/chaines/detail/UnitesQString.h"

#include <cstring>
#include <cwchar>
#include <string>

const UniChaine kUniChaineNulle;

namespace {

QString Decode(char const* octets, int longueur, UniChaine::Codage codage)
{
    int const codageChaineN = UniChaine::DonneCodageChaineN(codage);
    std::size_t n = octets == nullptr ? 0 : std::size_t(longueur);
    if (octets != nullptr && longueur < 0) {
        // Jusqu'au zéro final : une unité nulle entière en UTF-16.
        n = codageChaineN < 0 ? 0
                              : sdd::ConvertisseurChaineN::DonnePourCodage(codageChaineN)
                                    .OctetsAvantLeZero(octets);
    }
    return sdd::detail::DecodeOctets(octets, n, codage);
}

// Caractère large (UTF-32 sous Linux) en unités UTF-16 ; ce qui n'est pas un caractère
// (demi-codet, au-delà de U+10FFFF) devient U+FFFD.
void AjouteCaractereLarge(QString& texte, wchar_t w)
{
    auto const c = static_cast<std::uint32_t>(w);
    if (c >= 0x10000 && c <= 0x10FFFF) {
        texte += QChar(QChar::highSurrogate(c));
        texte += QChar(QChar::lowSurrogate(c));
    } else if (c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) {
        texte += QChar(QChar::ReplacementCharacter);
    } else {
        texte += QChar(static_cast<char16_t>(c));
    }
}

} // namespace

int UniChaine::DonneCodageChaineN(Codage codage) noexcept
{
    switch (codage) {
    case kMacRoman:
        return sdd::ChaineN::kMacRoman;
    case kLatin9:
        return sdd::ChaineN::kLatin9;
    case kWinLatin1:
        return sdd::ChaineN::kWinLatin1;
    case kDOS:
        return sdd::ChaineN::kDOS;
    case kUTF8:
        return sdd::ChaineN::kUTF8;
    case kUTF16:
        return Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? sdd::ChaineN::kUTF16LE : sdd::ChaineN::kUTF16BE;
    default:
        return -1;
    }
}

// --- Construction et affectation ---

UniChaine::UniChaine() noexcept = default;

UniChaine::UniChaine(UniChaine const& autre) : _texte(autre._texte) {}

UniChaine::UniChaine(UniChaine&& autre) noexcept : _texte(std::move(autre._texte)) {}

UniChaine::UniChaine(QString const& texte) : _texte(texte) {}

UniChaine::UniChaine(char16_t const* texte, int longueur)
{
    // Les unités sont prises telles quelles : une marque d'ordre reste une unité du texte.
    if (texte != nullptr) {
        std::size_t const n =
            longueur < 0 ? std::char_traits<char16_t>::length(texte) : std::size_t(longueur);
        _texte = sdd::detail::EnQString({texte, n});
    }
}

UniChaine::UniChaine(wchar_t const* texte, int longueur)
{
    if (texte == nullptr) {
        return;
    }
    std::size_t const n = longueur < 0 ? std::wcslen(texte) : std::size_t(longueur);
    sdd::detail::VerifieTailleQString(2 * n);
    _texte.reserve(static_cast<int>(n));
    for (std::size_t i = 0; i < n; ++i) {
        AjouteCaractereLarge(_texte, texte[i]);
    }
}

UniChaine::UniChaine(char16_t c) : _texte(QChar(c)) {}

UniChaine::UniChaine(char const* texte, Codage codage, int longueur)
    : _texte(Decode(texte, longueur, codage))
{
}

UniChaine::UniChaine(std::string const& texte, Codage codage)
    : _texte(sdd::detail::DecodeOctets(texte.data(), texte.size(), codage))
{
}

UniChaine::~UniChaine()
{
    _LibereTampon();
}

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

UniChaine& UniChaine::Mets(UniChaine const& autre)
{
    return *this = autre;
}

UniChaine& UniChaine::Mets(char const* texte, Codage codage, int longueur)
{
    _texte = Decode(texte, longueur, codage);
    return *this;
}

UniChaine& UniChaine::Mets(std::string const& texte, Codage codage)
{
    _texte = sdd::detail::DecodeOctets(texte.data(), texte.size(), codage);
    return *this;
}

UniChaine& UniChaine::Init(bool libereConversion)
{
    _texte.clear();
    if (libereConversion) {
        _LibereTampon();
    }
    return *this;
}

UniChaine& UniChaine::Vide()
{
    _texte.clear();
    return *this;
}

// --- Ajouts et modifications ---

UniChaine& UniChaine::AjouteFin(UniChaine const& autre)
{
    _texte += autre._texte;
    return *this;
}

UniChaine& UniChaine::AjouteFin(char16_t c)
{
    _texte += QChar(c);
    return *this;
}

UniChaine& UniChaine::AjouteFin(char const* texte, Codage codage)
{
    _texte += Decode(texte, -1, codage);
    return *this;
}

UniChaine& UniChaine::AjouteDebut(UniChaine const& autre)
{
    _texte.prepend(autre._texte);
    return *this;
}

UniChaine& UniChaine::AjouteDebut(char16_t c)
{
    _texte.prepend(QChar(c));
    return *this;
}

UniChaine& UniChaine::AjouteDebut(char const* texte, Codage codage)
{
    _texte.prepend(Decode(texte, -1, codage));
    return *this;
}

UniChaine operator+(UniChaine const& a, UniChaine const& b)
{
    return a.AjouteFin(b);
}

void UniChaine::_VerifieIntervalle(int pos, int n) const
{
    sdd::detail::VerifieIntervalle(static_cast<unsigned long>(pos), static_cast<unsigned long>(n),
                                   static_cast<unsigned long>(_texte.size()));
}

void UniChaine::_VerifiePosition(int pos) const
{
    sdd::detail::VerifiePosition(static_cast<unsigned long>(pos),
                                 static_cast<unsigned long>(_texte.size()));
}

UniChaine& UniChaine::MetsCarAIndex(char16_t c, int index)
{
    sdd::detail::VerifieIndex(static_cast<unsigned long>(index),
                              static_cast<unsigned long>(_texte.size()));
    if (_texte[index].unicode() != c) {
        _texte[index] = QChar(c);
    }
    return *this;
}

UniChaine& UniChaine::Remplace(int pos, int n, UniChaine const& par)
{
    _VerifieIntervalle(pos, n);
    _texte.replace(pos, n, par._texte);
    return *this;
}

UniChaine& UniChaine::Remplace(char16_t ancien, char16_t nouveau, Malgray m)
{
    sdd::detail::TransformeUnites(
        _texte, [=](char16_t c) { return sdd::detail::UnitesEgales(c, ancien, m) ? nouveau : c; });
    return *this;
}

UniChaine& UniChaine::_RemplaceOccurrences(UniChaine const& ancien, UniChaine const& nouveau,
                                           Malgray m, bool motEntier)
{
    std::u16string resultat;
    if (sdd::detail::RemplaceOccurrences(
            sdd::detail::EtendueDe(_texte), 0, sdd::detail::EtendueDe(ancien._texte),
            sdd::detail::EtendueDe(nouveau._texte), m, motEntier, &resultat)) {
        _texte = sdd::detail::EnQString(resultat);
    }
    return *this;
}

UniChaine& UniChaine::Remplace(UniChaine const& ancien, UniChaine const& nouveau, Malgray m)
{
    return _RemplaceOccurrences(ancien, nouveau, m, false);
}

UniChaine& UniChaine::RemplaceMotEntier(UniChaine const& ancien, UniChaine const& nouveau,
                                        Malgray m)
{
    return _RemplaceOccurrences(ancien, nouveau, m, true);
}

UniChaine& UniChaine::EnleveDebut(int n)
{
    _VerifieIntervalle(0, n);
    _texte.remove(0, n);
    return *this;
}

UniChaine& UniChaine::EnleveFin(int n)
{
    _VerifieIntervalle(0, n);
    _texte.chop(n);
    return *this;
}

UniChaine& UniChaine::EnleveIntervalle(int pos, int n)
{
    _VerifieIntervalle(pos, n);
    _texte.remove(pos, n);
    return *this;
}

UniChaine& UniChaine::SousChaine(int pos, int n)
{
    if (n < 0) {
        _VerifiePosition(pos);
        n = _texte.size() - pos;
    } else {
        _VerifieIntervalle(pos, n);
    }
    if (pos != 0 || n != _texte.size()) {
        _texte = _texte.mid(pos, n);
    }
    return *this;
}

UniChaine& UniChaine::CoupeAuPremierRC()
{
    char16_t const* u = PreteUniCString();
    for (int i = 0; i < _texte.size(); ++i) {
        if (sdd::detail::Mot(u[i], kInfoClassePonctuation) & kPoncFinDeLigne) {
            _texte.truncate(i);
            break;
        }
    }
    return *this;
}

UniChaine& UniChaine::CoupeAuDernierRC()
{
    char16_t const* u = PreteUniCString();
    for (int i = _texte.size() - 1; i >= 0; --i) {
        if (sdd::detail::Mot(u[i], kInfoClassePonctuation) & kPoncFinDeLigne) {
            // « \r\n » est une seule fin de ligne.
            _texte.truncate(u[i] == u'\n' && i > 0 && u[i - 1] == u'\r' ? i - 1 : i);
            break;
        }
    }
    return *this;
}
