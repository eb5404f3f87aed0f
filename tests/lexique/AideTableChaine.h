#pragma once

// Outils communs aux tests des tables de chaînes.

#include "noyau/chaines/ChaineN.h"
#include "noyau/erreurs/Exceptions.h"
#include "noyau/flux/Flux.h"
#include "noyau/flux/TamponMemoire.h"
#include "noyau/flux/VarElias.h"
#include "noyau/lexique/SerialiseurTableChaine.h"
#include "noyau/lexique/TableChaineNoyau.h"

#include "FluxSequentiel.h"

#include <QFile>
#include <QString>

#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace aide {

using Octets = std::vector<unsigned char>;
using Noeud = sdd::TableChaineNoyau::Noeud;

inline sdd::ChaineN N(std::u16string const& s)
{
    return sdd::ChaineN(s.data(), s.size());
}

inline std::u16string U(sdd::ChaineN const& c)
{
    return std::u16string(c.PreteUniCString() ? c.PreteUniCString() : u"", c.Longueur());
}

// Écrire réécrit les drapeaux des nœuds : la table n'est pas constante (une table temporaire
// est acceptée).
template <typename Table> Octets Ecris(Table&& table)
{
    sdd::TamponMemoire t(16);
    sdd::Serialiseur<sdd::TableChaineNoyau>::Ecris(t, table);
    return Octets(t.DonneDonnees(), t.DonneDonnees() + t.DonneTaille());
}

// Suite d'un nœud en UTF-8, écrite sans la bibliothèque : une paire sur quatre octets, une
// demi-paire seule sur les trois octets de sa valeur.
inline void EcrisSuite(std::u16string_view s, Octets& o)
{
    for (std::size_t i = 0; i < s.size(); ++i) {
        std::uint32_t c = s[i];
        if (c >= 0xD800 && c < 0xDC00 && i + 1 < s.size() && s[i + 1] >= 0xDC00 &&
            s[i + 1] < 0xE000) {
            c = 0x10000 + ((c - 0xD800) << 10) + (s[++i] - 0xDC00);
        }
        if (c < 0x80) {
            o.push_back(static_cast<unsigned char>(c));
        } else if (c < 0x800) {
            o.insert(o.end(), {static_cast<unsigned char>(0xC0 | c >> 6),
                               static_cast<unsigned char>(0x80 | (c & 0x3F))});
        } else if (c < 0x10000) {
            o.insert(o.end(), {static_cast<unsigned char>(0xE0 | c >> 12),
                               static_cast<unsigned char>(0x80 | (c >> 6 & 0x3F)),
                               static_cast<unsigned char>(0x80 | (c & 0x3F))});
        } else {
            o.insert(o.end(), {static_cast<unsigned char>(0xF0 | c >> 18),
                               static_cast<unsigned char>(0x80 | (c >> 12 & 0x3F)),
                               static_cast<unsigned char>(0x80 | (c >> 6 & 0x3F)),
                               static_cast<unsigned char>(0x80 | (c & 0x3F))});
        }
    }
    o.push_back(0);
}

// Tampon qui emprunte les octets (sans les copier).
struct Emprunt
{
    explicit Emprunt(Octets& o)
        : flux(reinterpret_cast<char*>(o.data()), static_cast<int>(o.size()), false)
    {
    }
    sdd::TamponMemoire flux;
};

// Les chaînes dans l'ordre de l'itérateur.
inline std::vector<std::u16string> Chaines(sdd::TableChaineNoyau const& table)
{
    std::vector<std::u16string> chaines;
    sdd::TableChaineNoyau::__Iterateur it(table);
    while (it.Prochain()) {
        chaines.push_back(U(it.Clef()));
    }
    return chaines;
}

// Vérifie les invariants de l'arbre ; renvoie le nombre de nœuds terminaux.
inline unsigned int VerifieArbre(Noeud const* n, bool racine = true)
{
    unsigned int terminaux = 0;
    for (; n != nullptr; n = n->DonneSuivant()) {
        if (!racine) {
            EXPECT_FALSE(n->Cars().empty());
            unsigned int enfants = 0;
            for (Noeud const* e = n->DonnePremierEnfant(); e; e = e->DonneSuivant()) {
                ++enfants;
            }
            EXPECT_TRUE(n->EstTerminal() || enfants >= 2) << "nœud non compressé";
        }
        Noeud const* prec = nullptr;
        for (Noeud const* e = n->DonnePremierEnfant(); e; e = e->DonneSuivant()) {
            if (prec != nullptr && !prec->Cars().empty() && !e->Cars().empty()) {
                EXPECT_LT(prec->Cars()[0], e->Cars()[0]) << "frères mal rangés";
            }
            prec = e;
        }
        terminaux += n->EstTerminal() ? 1 : 0;
        terminaux += VerifieArbre(n->DonnePremierEnfant(), false);
        if (racine) {
            break;
        }
    }
    return terminaux;
}

// Forme version 100 (liens sur quatre octets), écrite indépendamment de la bibliothèque.
inline std::uint32_t EcrisV100(Noeud const& n, Octets& zone)
{
    std::uint32_t enfant = 0, suivant = 0;
    if (n.DonnePremierEnfant()) {
        enfant = EcrisV100(*n.DonnePremierEnfant(), zone);
    }
    if (n.DonneSuivant()) {
        suivant = EcrisV100(*n.DonneSuivant(), zone);
    }
    auto const position = static_cast<std::uint32_t>(zone.size());
    EcrisSuite(n.Cars(), zone);
    zone.push_back(static_cast<unsigned char>(
        (n.EstTerminal() ? 2 : 0) | (n.DonnePremierEnfant() ? 4 : 0) | (n.DonneSuivant() ? 8 : 0)));
    auto const lien = [&zone](std::uint32_t v) {
        for (int i = 0; i < 4; ++i) {
            zone.push_back(static_cast<unsigned char>(v >> (8 * i)));
        }
    };
    if (n.DonnePremierEnfant()) {
        lien(enfant);
    }
    if (n.DonneSuivant()) {
        lien(suivant);
    }
    return position;
}

inline Octets FormeV100(sdd::TableChaineNoyau const& table)
{
    Octets zone;
    std::uint32_t const racine = EcrisV100(*table.DonneRacine(), zone);
    sdd::TamponMemoire t(16);
    Octets entete{0x64, 0};
    for (int i = 0; i < 4; ++i) {
        entete.push_back(static_cast<unsigned char>(table.Taille() >> (8 * i)));
    }
    t.Mets(entete.data(), 6);
    sdd::VarElias::Ecris(t, racine);
    sdd::VarElias::Ecris(t, static_cast<std::uint32_t>(zone.size()));
    t.Mets(zone.data(), static_cast<unsigned int>(zone.size()));
    return Octets(t.DonneDonnees(), t.DonneDonnees() + t.DonneTaille());
}

// Les mots de la liste française, un sur pas.
inline std::vector<std::u16string> MotsFrancais(std::size_t pas)
{
    static std::vector<std::u16string> const tous = [] {
        std::vector<std::u16string> mots;
        QFile fichier(QStringLiteral("/usr/share/dict/french"));
        if (fichier.open(QIODevice::ReadOnly)) {
            for (QString const& mot :
                 QString::fromUtf8(fichier.readAll()).split('\n', Qt::SkipEmptyParts)) {
                mots.push_back(mot.toStdU16String());
            }
        }
        return mots;
    }();
    std::vector<std::u16string> mots;
    for (std::size_t i = 0; i < tous.size(); i += pas) {
        mots.push_back(tous[i]);
    }
    return mots;
}

// Le message complet d'une exception de la bibliothèque (classe et explication), en UTF-8.
inline std::string Refus(sdd::exceptions::Exception const& e)
{
    return QString(e.MessageComplet()).toStdString();
}

// Les refus attendus des lecteurs de la forme écrite.
inline std::string const kVersion = "Table non valide : Version non gérée";
inline std::string const kBoucle = "Table non valide : Boucle dans la structure de chaines";
inline std::string const kAuBout = "L'opération est invalide : "; // suite lue au bout du flux
inline std::string const kTronque =
    "Erreur de désérialisation : Enregistrement tronqué dans la structure de chaines";

} // namespace aide
