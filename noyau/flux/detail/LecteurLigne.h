#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <ios>
#include <stdexcept>
#include <string>

// Lecture d'une ligne d'octets, commune à sdd::Fichier et sdd::FichierAvecTampon pour que
// leurs lignes ne puissent plus différer. Les règles sont celles de std::istream::getline :
// arrêt à la fin des données (eofbit), sinon au LF (pris, non gardé), sinon quand le puits
// est plein (failbit) ; rien de pris du tout : failbit aussi.
//
// Une source donne Disponibles(n), les octets lisibles d'un coup (n = 0 : fin des données),
// et Consomme(n). Un puits donne Place() et Ajoute(octets, n).
namespace sdd::detail {

struct LigneLue
{
    std::size_t pris = 0; // octets passés, LF compris
    std::ios::iostate etat = std::ios::goodbit;
};

template <typename Source, typename Puits> LigneLue LisLigne(Source& source, Puits& puits)
{
    LigneLue lue;
    for (;;) {
        std::size_t n = 0;
        char const* const octets = source.Disponibles(n);
        if (n == 0) {
            lue.etat = lue.pris == 0 ? std::ios::eofbit | std::ios::failbit : std::ios::eofbit;
            return lue;
        }
        auto const* const lf = static_cast<char const*>(std::memchr(octets, '\n', n));
        std::size_t const avantLf = lf != nullptr ? std::size_t(lf - octets) : n;
        std::size_t const copies = std::min(avantLf, puits.Place());
        puits.Ajoute(octets, copies);
        source.Consomme(copies);
        lue.pris += copies;
        if (copies < avantLf) {
            // Plein devant un octet qui n'est ni le LF ni la fin.
            lue.etat = std::ios::failbit;
            return lue;
        }
        if (lf != nullptr) {
            source.Consomme(1);
            ++lue.pris;
            return lue;
        }
    }
}

// Puits de DonneLigne(char*, int) : au plus taille - 1 octets, puis le zéro.
class PuitsBorne
{
public:
    PuitsBorne(char* tampon, int taille) noexcept
        : _tampon(tampon), _place(taille > 0 ? std::size_t(taille) - 1 : 0), _avecZero(taille > 0)
    {
    }
    std::size_t Place() const noexcept { return _place - _copies; }
    void Ajoute(char const* octets, std::size_t n) noexcept
    {
        std::memcpy(_tampon + _copies, octets, n);
        _copies += n;
    }
    // Le zéro final, comme getline, même quand rien n'a été lu ; taille 0 ou moins : rien.
    void Termine() noexcept
    {
        if (_avecZero) {
            _tampon[_copies] = 0;
        }
    }

private:
    char* _tampon;
    std::size_t _place;
    std::size_t _copies = 0;
    bool _avecZero;
};

// Puits des lignes décodées ensuite : sans autre borne que celle de la chaîne.
class PuitsChaine
{
public:
    explicit PuitsChaine(std::string& octets) noexcept : _octets(octets) {}
    std::size_t Place() const noexcept { return _octets.max_size() - _octets.size(); }
    void Ajoute(char const* octets, std::size_t n) { _octets.append(octets, n); }

private:
    std::string& _octets;
};

// DonneLigne(char*, int) des deux classes. Un flux qui n'est pas en bon état ne lit rien
// (failbit, comme la sentinelle de getline). Un échec qui n'est pas la fin lève
// std::runtime_error, au premier appel comme aux suivants.
template <typename Source>
bool LisLigneBornee(Source& source, std::ios& flux, char* tampon, int taille)
{
    PuitsBorne puits(tampon, taille);
    LigneLue lue;
    lue.etat = std::ios::failbit;
    if (flux.good()) {
        lue = LisLigne(source, puits);
    }
    puits.Termine();
    flux.setstate(lue.etat);
    if (flux.fail() && !flux.eof()) {
        throw std::runtime_error("### Erreur dans sdd::Fichier::DonneLigne()");
    }
    return lue.pris > 0;
}

// Octets de la ligne suivante pour les lignes décodées. Arriver à la fin laisse eofbit
// seul : la fin n'est pas un échec. Faux quand rien n'a été pris.
template <typename Source> bool LisLigneChaine(Source& source, std::ios& flux, std::string& octets)
{
    octets.clear();
    if (!flux.good()) {
        return false;
    }
    PuitsChaine puits(octets);
    LigneLue const lue = LisLigne(source, puits);
    flux.setstate(lue.etat & std::ios::eofbit);
    return lue.pris > 0;
}

} // namespace sdd::detail
