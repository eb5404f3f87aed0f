#include "noyau/chaines/detail/CodecsUniChaine.h"

#include <QTextCodec>

#include <array>
#include <limits>
#include <new>

namespace sdd::detail {

namespace {

// Noms des codecs, dans l'ordre des valeurs de UniChaine::Codage.
constexpr char const* kNomsCodecs[] = {"Macintosh", "ISO 8859-15", "windows-1252",
                                       "utf8",      "utf16",       "CP850"};
constexpr std::size_t kNbCodecs = sizeof kNomsCodecs / sizeof kNomsCodecs[0];

// Au plus 3 octets par unité à l'écriture, 1 unité par octet à la lecture : ces bornes
// gardent QString et QByteArray dans leurs tailles permises.
constexpr std::size_t kMaxOctetsLus = std::numeric_limits<int>::max() / 2 - 64;
constexpr std::size_t kMaxUnitesEcrites = std::numeric_limits<int>::max() / 3 - 64;

QTextCodec* Codec(UniChaine::Codage codage)
{
    // Remplie une fois, sous la garde des statiques locales ; les codecs de Qt vivent
    // jusqu'à la fin du processus.
    static std::array<QTextCodec*, kNbCodecs> const codecs = [] {
        std::array<QTextCodec*, kNbCodecs> c{};
        for (std::size_t i = 0; i < kNbCodecs; ++i) {
            c[i] = QTextCodec::codecForName(kNomsCodecs[i]);
        }
        return c;
    }();
    return codage < kNbCodecs ? codecs[codage] : nullptr;
}

} // namespace

QString DecodeOctets(char const* octets, std::size_t n, UniChaine::Codage codage)
{
    if (n > kMaxOctetsLus) {
        throw std::bad_array_new_length();
    }
    QTextCodec* const codec = Codec(codage);
    if (codec == nullptr || octets == nullptr || n == 0) {
        return QString();
    }
    return codec->toUnicode(octets, static_cast<int>(n));
}

QByteArray EncodeUnites(char16_t const* unites, std::size_t n, UniChaine::Codage codage,
                        bool avecEntete)
{
    if (n > kMaxUnitesEcrites) {
        throw std::bad_array_new_length();
    }
    QTextCodec* const codec = Codec(codage);
    if (codec == nullptr) {
        return QByteArray();
    }
    // Sans état, le codec fait ce que fait QTextCodec::fromUnicode(QString) ; un état, même
    // par défaut, lui ferait écrire une marque d'ordre en UTF-8 aussi.
    QTextCodec::ConverterState sansEntete(QTextCodec::IgnoreHeader);
    return codec->fromUnicode(reinterpret_cast<QChar const*>(unites), static_cast<int>(n),
                              avecEntete ? nullptr : &sansEntete);
}

std::size_t TailleTerminateur(UniChaine::Codage codage) noexcept
{
    return codage == UniChaine::kUTF16 ? 2 : 1;
}

std::size_t CoupeSansCouperCaractere(QByteArray const& forme, std::size_t place,
                                     UniChaine::Codage codage) noexcept
{
    std::size_t const taille = static_cast<std::size_t>(forme.size());
    if (place >= taille) {
        return taille;
    }
    auto const octet = [&](std::size_t i) { return static_cast<unsigned char>(forme[int(i)]); };
    std::size_t coupe = place;
    if (codage == UniChaine::kUTF8) {
        while (coupe > 0 && (octet(coupe) & 0xC0) == 0x80) {
            --coupe; // octet de suite : le caractère commence plus tôt
        }
    } else if (codage == UniChaine::kUTF16) {
        coupe &= ~std::size_t(1);
        // Demi-codet haut en dernier : sa paire ne tient pas, il reste dehors. Le codec écrit
        // dans l'ordre de la machine.
        if (coupe >= 2) {
            unsigned const dernier = Q_BYTE_ORDER == Q_LITTLE_ENDIAN
                                         ? octet(coupe - 1) << 8 | octet(coupe - 2)
                                         : octet(coupe - 2) << 8 | octet(coupe - 1);
            if (dernier >= 0xD800 && dernier <= 0xDBFF) {
                coupe -= 2;
            }
        }
    }
    return coupe;
}

} // namespace sdd::detail
