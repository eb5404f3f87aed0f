#include "noyau/lexique/TableChaineNoyau.h"

#include "noyau/erreurs/Exceptions.h"

#include <algorithm>
#include <cstring>
#include <memory>

namespace sdd {

using Noeud = TableChaineNoyau::Noeud;

namespace {

// La clef vue depuis pos (vide au-delà de sa fin).
std::u16string_view Reste(ChaineN const& clef, unsigned long pos) noexcept
{
    unsigned long const n = clef.Longueur();
    return pos < n ? std::u16string_view(clef.PreteUniCString() + pos, n - pos)
                   : std::u16string_view();
}

bool Avant(std::u16string_view cars, std::u16string_view reste) noexcept
{
    auto const [c, r] = std::mismatch(cars.begin(), cars.end(), reste.begin(), reste.end());
    if (c != cars.end() && r != reste.end()) {
        return *c < *r;
    }
    // La clef finit alors que la suite continue : la suite passe avant, volontairement, pour
    // que l'insertion la coupe comme frère précédent.
    return c != cars.end();
}

unsigned long PrefixeCommun(std::u16string_view a, std::u16string_view b) noexcept
{
    return static_cast<unsigned long>(std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first -
                                      a.begin());
}

} // namespace

TableChaineNoyau::TableChaineNoyau(TableChaineNoyau const& autre)
    : _nombre(autre._nombre), _racine(autre._racine ? autre._racine->Clone() : nullptr)
{
}

TableChaineNoyau& TableChaineNoyau::operator=(TableChaineNoyau const& autre)
{
    if (this != &autre) {
        Noeud* const copie = autre._racine ? autre._racine->Clone() : nullptr;
        delete _racine;
        _racine = copie;
        _nombre = autre._nombre;
    }
    return *this;
}

TableChaineNoyau::~TableChaineNoyau()
{
    delete _racine;
}

void TableChaineNoyau::Vide()
{
    Noeud* const racine = CreeNoeud(kChaineNNulle);
    delete _racine;
    _racine = racine;
    _nombre = 0;
}

Noeud* TableChaineNoyau::_Racine()
{
    if (_racine == nullptr) { // garde : une table dérivée qui n'a pas encore appelé Vide
        Vide();
    }
    return _racine;
}

Noeud* TableChaineNoyau::_NouveauNoeud(std::u16string_view cars) const
{
    return CreeNoeud(ChaineN(cars.data(), cars.size()));
}

bool TableChaineNoyau::EstAvant(std::u16string_view cars, ChaineN const& clef,
                                unsigned long pos) noexcept
{
    return Avant(cars, Reste(clef, pos));
}

bool TableChaineNoyau::TrouveMeilleurEmplacement(ChaineN const& clef, unsigned long* pos,
                                                 Noeud** precedent, Noeud** noeud,
                                                 Noeud** parent) const
{
    *pos = 0;
    *precedent = nullptr;
    *parent = _racine;
    if (clef.EstVide()) {
        *noeud = _racine;
        *parent = nullptr;
        return true;
    }
    *noeud = nullptr;
    if (_racine == nullptr) {
        return false;
    }
    std::u16string_view const k(clef.PreteUniCString(), clef.Longueur());
    while (*pos < k.size()) {
        std::u16string_view const reste = k.substr(*pos);
        Noeud* prec = nullptr;
        Noeud* n = (*parent)->_premierEnfant;
        while (n != nullptr) {
            // Le frère suivant et l'enfant sont demandés à la mémoire pendant la comparaison :
            // l'un des deux sera le prochain nœud lu.
            __builtin_prefetch(n->_suivant);
            __builtin_prefetch(n->_premierEnfant);
            if (!Avant(n->Cars(), reste)) {
                break;
            }
            prec = n;
            n = n->_suivant;
        }
        *precedent = prec;
        *noeud = n;
        if (n == nullptr || reste.compare(0, n->_longueur, n->Cars()) != 0) {
            return false;
        }
        *pos += n->_longueur;
        if (*pos < k.size()) {
            *parent = n;
        }
    }
    return true;
}

Noeud* TableChaineNoyau::TrouveEmplacement(ChaineN const& clef) const
{
    unsigned long pos;
    Noeud *precedent, *noeud, *parent;
    if (TrouveMeilleurEmplacement(clef, &pos, &precedent, &noeud, &parent) && noeud != nullptr &&
        noeud->EstTerminal()) {
        return noeud;
    }
    return nullptr;
}

Noeud* TableChaineNoyau::TrouveEmplacementEtInsere(ChaineN const& clef, bool* dejaPresente)
{
    return _Insere(clef, dejaPresente, nullptr);
}

Noeud* TableChaineNoyau::TrouveEmplacementEtInsere(ChaineN const& clef, bool* dejaPresente,
                                                   Preparation const& prepare)
{
    return _Insere(clef, dejaPresente, &prepare);
}

Noeud* TableChaineNoyau::_Insere(ChaineN const& clef, bool* dejaPresente,
                                 Preparation const* prepare)
{
    // La forme écrite termine chaque suite par un zéro : une clef qui en porte un n'y tiendrait
    // pas. Refusée avant tout changement.
    std::u16string_view const k = Reste(clef, 0);
    if (std::find(k.begin(), k.end(), u'\0') != k.end()) {
        throw exceptions::OperationInvalide();
    }
    if (dejaPresente != nullptr) {
        *dejaPresente = true;
    }
    _Racine();
    unsigned long pos;
    Noeud *precedent, *noeud, *parent;
    if (!TrouveMeilleurEmplacement(clef, &pos, &precedent, &noeud, &parent)) {
        noeud = InsereNouveauNoeud(clef, pos, precedent, noeud, parent, prepare);
    } else if (noeud != nullptr && !noeud->EstTerminal() && prepare != nullptr) {
        (*prepare)(*noeud); // la donnée d'un nœud non terminal ne se voit pas
    }
    if (noeud == nullptr || noeud->EstTerminal()) {
        return noeud;
    }
    noeud->_drapeaux |= Noeud::kTerminal;
    ++_nombre;
    if (dejaPresente != nullptr) {
        *dejaPresente = false;
    }
    return noeud;
}

Noeud* TableChaineNoyau::InsereNouveauNoeud(ChaineN const& clef, unsigned long pos,
                                            Noeud* precedent, Noeud* suivant, Noeud* parent,
                                            Preparation const* prepare)
{
    std::u16string_view const s = Reste(clef, pos);
    // Deux frères ne commencent pas par la même unité : a et b ne sont jamais tous deux non nuls.
    unsigned long const a = precedent ? PrefixeCommun(precedent->Cars(), s) : 0;
    if (a > 0) {
        return _Scinde(*precedent, a, s.substr(a), false, prepare);
    }
    unsigned long const b = suivant ? PrefixeCommun(suivant->Cars(), s) : 0;
    if (b > 0) {
        return _Scinde(*suivant, b, s.substr(b), true, prepare);
    }
    std::unique_ptr<Noeud> nouveau(_NouveauNoeud(s));
    if (prepare != nullptr) {
        (*prepare)(*nouveau);
    }
    Noeud* const n = nouveau.release();
    n->_suivant = suivant;
    if (precedent != nullptr) {
        precedent->_suivant = n;
    } else {
        parent->_premierEnfant = n;
    }
    return n;
}

// Le nœud garde ses a premières unités ; m (le reste de sa suite) reprend ses enfants, son
// drapeau et sa donnée ; f (le reste de la clef, s'il y en a) devient frère de m, avant lui
// quand le nœud coupé suivait la clef, après lui quand il la précédait : l'ordre reste trié.
// La donnée de la clef (f, ou n quand la clef s'arrête à la coupe) est posée avant de relier.
Noeud* TableChaineNoyau::_Scinde(Noeud& n, unsigned long a, std::u16string_view reste,
                                 bool enfantAvant, Preparation const* prepare)
{
    std::unique_ptr<Noeud> m(_NouveauNoeud(n.Cars().substr(a)));
    std::unique_ptr<Noeud> f(reste.empty() ? nullptr : _NouveauNoeud(reste));
    m->PrendsDonnees(n);
    if (prepare != nullptr) {
        (*prepare)(f ? *f : n); // n garde sa donnée tant que prepare peut échouer
    }
    if (f != nullptr || prepare == nullptr) {
        n.VideDonnees(); // m en a la copie
    }
    // Plus rien ne peut échouer : on relie.
    m->_drapeaux = n._drapeaux;
    n._drapeaux = 0;
    Noeud* const nm = m.release();
    Noeud* const nf = f.release();
    nm->_premierEnfant = n._premierEnfant;
    if (nf == nullptr) {
        n._premierEnfant = nm;
    } else if (enfantAvant) {
        n._premierEnfant = nf;
        nf->_suivant = nm;
    } else {
        n._premierEnfant = nm;
        nm->_suivant = nf;
    }
    n._CoupeCars(a);
    return nf ? nf : &n;
}

bool TableChaineNoyau::TrouveEmplacementEtSupprime(ChaineN const& clef)
{
    unsigned long pos;
    Noeud *precedent, *noeud, *parent;
    if (!TrouveMeilleurEmplacement(clef, &pos, &precedent, &noeud, &parent) || noeud == nullptr ||
        !noeud->EstTerminal()) {
        return false;
    }
    if (noeud == _racine || noeud->APlusDUnEnfant()) {
        noeud->_drapeaux &= ~Noeud::kTerminal; // la donnée reste en place
        --_nombre;
        return true;
    }
    if (noeud->AUnSeulEnfant()) {
        noeud->RappatrieEnfant();
        --_nombre;
        return true;
    }
    // La feuille est détachée, puis son parent fusionné avec l'enfant qui lui reste (jamais la
    // racine) ; si la fusion échoue, la feuille reprend sa place et la table est intacte.
    Noeud*& lien = precedent ? precedent->_suivant : parent->_premierEnfant;
    lien = noeud->_suivant;
    if (parent != _racine && parent->AUnSeulEnfant() && !parent->EstTerminal()) {
        try {
            parent->RappatrieEnfant();
        } catch (...) {
            lien = noeud;
            throw;
        }
    }
    noeud->_suivant = nullptr;
    delete noeud;
    --_nombre;
    return true;
}

} // namespace sdd
