#include "noyau/lexique/TableTrieeNoyau.h"

#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

namespace sdd {

using Noeud = TableTrieeNoyau::NoeudRNNoyau;

// ---------------------------------------------------------------- nœuds

// Rien ici ne descend par récursion : un arbre lu peut avoir la profondeur de son nombre de
// nœuds. Les nœuds à détruire forment une pile chaînée par leur mot parent, qui ne sert
// plus : ni allocation ni exception dans un destructeur.
Noeud::~NoeudRNNoyau()
{
    Noeud* pile = nullptr;
    auto const empile = [&pile](Noeud* noeud) noexcept {
        if (noeud != nullptr) {
            noeud->_parentEtCouleur = reinterpret_cast<std::uintptr_t>(pile);
            pile = noeud;
        }
    };
    empile(std::exchange(_gauche, nullptr));
    empile(std::exchange(_droite, nullptr));
    while (pile != nullptr) {
        Noeud* const noeud = pile;
        pile = reinterpret_cast<Noeud*>(noeud->_parentEtCouleur);
        empile(std::exchange(noeud->_gauche, nullptr));
        empile(std::exchange(noeud->_droite, nullptr));
        delete noeud; // sans enfants : son destructeur s'arrête là
    }
}

Noeud* Noeud::GrandParent() noexcept
{
    Noeud* const parent = Parent();
    return parent != nullptr ? parent->Parent() : nullptr;
}

Noeud* Noeud::Oncle() noexcept
{
    Noeud* const grandParent = GrandParent();
    if (grandParent == nullptr) {
        return nullptr;
    }
    return grandParent->_gauche == Parent() ? grandParent->_droite : grandParent->_gauche;
}

Noeud* Noeud::Sibling() noexcept
{
    Noeud* const parent = Parent();
    return parent->_gauche == this ? parent->_droite : parent->_gauche;
}

Noeud* Noeud::DescendantPlusProfondGauche() noexcept
{
    Noeud* noeud = this;
    while (noeud->_gauche != nullptr) {
        noeud = noeud->_gauche;
    }
    return noeud;
}

bool Noeud::EstEnfantGauche() const noexcept
{
    Noeud const* const parent = Parent();
    return parent != nullptr && parent->_gauche == this;
}

bool Noeud::EstEnfantDroite() const noexcept
{
    Noeud const* const parent = Parent();
    return parent != nullptr && parent->_droite == this;
}

Noeud* Noeud::Clone(Noeud* parent) const
{
    struct ACopier
    {
        Noeud const* source;
        Noeud* parent;
        Noeud** lien;
    };
    Noeud* racine = nullptr;
    std::unique_ptr<Noeud> garde;
    // Préordre, comme une copie récursive : un nœud, son sous-arbre gauche, puis le droit.
    std::vector<ACopier> pile{{this, parent, &racine}};
    while (!pile.empty()) {
        auto const [source, parentCopie, lien] = pile.back();
        pile.pop_back();
        Noeud* const copie = source->NouveauNoeud();
        copie->_gauche = nullptr;
        copie->_droite = nullptr;
        // Rattachée avant d'être remplie : une exception la libère avec le reste de la copie.
        *lien = copie;
        if (garde == nullptr) {
            garde.reset(copie);
        }
        copie->_parentEtCouleur = source->_parentEtCouleur;
        copie->MetsParent(parentCopie);
        copie->CopieContenu(*source);
        if (source->_droite != nullptr) {
            pile.push_back({source->_droite, copie, &copie->_droite});
        }
        if (source->_gauche != nullptr) {
            pile.push_back({source->_gauche, copie, &copie->_gauche});
        }
    }
    return garde.release();
}

long Noeud::NbEnfants() const
{
    // Même somme que la descente récursive le long des fils droits : un sous-compte s'ajoute,
    // plus un, à la somme de l'appelant, même quand il porte la marque -300. La pile garde
    // les nœuds dont on explore le fils gauche.
    std::vector<Noeud const*> reprises;
    long total = 0;
    Noeud const* noeud = this;
    Noeud const* debut = this;
    for (;;) {
        // Marque voulue : un arbre bouclé sur lui-même donne un compte visiblement faux
        // plutôt qu'un parcours sans fin. Elle clôt la chaîne en cours.
        bool const boucle = noeud != nullptr && noeud->Parent() == noeud;
        if (noeud == nullptr || boucle) {
            total -= boucle ? 300 : 0;
            if (reprises.empty()) {
                return total;
            }
            ++total;
            noeud = reprises.back()->_droite;
            reprises.pop_back();
            debut = nullptr;
            continue;
        }
        if (noeud != debut) {
            ++total;
        }
        if (noeud->_gauche != nullptr) {
            reprises.push_back(noeud);
            noeud = noeud->_gauche;
            debut = noeud;
        } else {
            noeud = noeud->_droite;
        }
    }
}

namespace {

// Un nœud en cours de validation : ses deux sous-arbres, vus l'un après l'autre. Un
// sous-arbre absent ou en échec garde la hauteur 1, comme une feuille.
struct NoeudAValider
{
    Noeud const* noeud;
    int sousArbresVus = 0;
    bool valide = true;
    unsigned long hauteurs[2] = {1, 1};
};

bool EnfantsDuRougeNoirs(Noeud const* noeud)
{
    if (noeud->EstNoir() || (TableTrieeNoyau::NoeudRNEstNoir(noeud->Gauche()) &&
                             TableTrieeNoyau::NoeudRNEstNoir(noeud->Droite()))) {
        return true;
    }
    std::cerr << "Les enfants d'un noeud rouge (" << static_cast<void const*>(noeud)
              << ") ne sont pas noirs" << '\n';
    return false;
}

// Hauteur noire du nœud dont les deux sous-arbres sont vus, 0 s'il n'est pas valide. Des
// hauteurs inégales sont signalées même sous un sous-arbre en échec, qui compte alors 1.
unsigned long HauteurNoire(NoeudAValider const& cadre)
{
    if (cadre.hauteurs[0] != cadre.hauteurs[1]) {
        // « est différents » : texte d'origine, gardé tel quel.
        std::cerr << "Le nombre de noeuds noirs à gauche (" << cadre.hauteurs[0]
                  << ") et à droite (" << cadre.hauteurs[1] << ") est différents ("
                  << static_cast<void const*>(cadre.noeud) << ")" << '\n';
        return 0;
    }
    if (!cadre.valide) {
        return 0;
    }
    return cadre.hauteurs[0] + (cadre.noeud->EstNoir() ? 1 : 0);
}

} // namespace

// Les messages sortent dans l'ordre de la descente récursive : le rouge à l'entrée d'un
// nœud, les hauteurs à sa sortie ; le sous-arbre droit est vu même si le gauche a échoué.
bool Noeud::EstValide(unsigned long* hauteurNoire) const
{
    if (!EnfantsDuRougeNoirs(this)) {
        return false;
    }
    std::vector<NoeudAValider> pile{{this}};
    unsigned long hauteur = 0;
    while (!pile.empty()) {
        NoeudAValider& cadre = pile.back();
        if (cadre.sousArbresVus < 2) {
            Noeud const* const enfant =
                cadre.sousArbresVus++ == 0 ? cadre.noeud->_gauche : cadre.noeud->_droite;
            if (enfant != nullptr) {
                if (EnfantsDuRougeNoirs(enfant)) {
                    pile.push_back({enfant});
                } else {
                    cadre.valide = false;
                }
            }
            continue;
        }
        hauteur = HauteurNoire(cadre);
        pile.pop_back();
        if (!pile.empty()) {
            NoeudAValider& appelant = pile.back();
            if (hauteur == 0) {
                appelant.valide = false;
            } else {
                appelant.hauteurs[appelant.sousArbresVus - 1] = hauteur;
            }
        }
    }
    if (hauteur != 0 && hauteurNoire != nullptr) {
        *hauteurNoire = hauteur;
    }
    return hauteur != 0;
}

// ---------------------------------------------------------------- itérateur

TableTrieeNoyau::__Iterateur::__Iterateur(TableTrieeNoyau const& table) noexcept
    : _courant(table._racine), _table(&table)
{
}

bool TableTrieeNoyau::__Iterateur::Prochain() noexcept
{
    if (!_commence) {
        if (_courant == nullptr) {
            return false;
        }
        _courant = _courant->DescendantPlusProfondGauche();
        _commence = true;
        return true;
    }
    if (_courant == nullptr) {
        return false;
    }
    if (_courant->_droite != nullptr) {
        _courant = _courant->_droite->DescendantPlusProfondGauche();
        return true;
    }
    // Remonte jusqu'au premier ancêtre dont on vient par la gauche.
    while (!_courant->EstEnfantGauche()) {
        _courant = _courant->Parent();
        if (_courant == nullptr) {
            return false;
        }
    }
    _courant = _courant->Parent();
    return true;
}

// ---------------------------------------------------------------- table

TableTrieeNoyau::TableTrieeNoyau(TableTrieeNoyau const& autre)
    : _racine(autre._racine != nullptr ? autre._racine->Clone(nullptr) : nullptr),
      _nombre(autre._nombre)
{
}

TableTrieeNoyau::TableTrieeNoyau(TableTrieeNoyau&& autre) noexcept
    : _racine(std::exchange(autre._racine, nullptr)), _nombre(std::exchange(autre._nombre, 0))
{
}

TableTrieeNoyau& TableTrieeNoyau::operator=(TableTrieeNoyau const& autre)
{
    // Copie d'abord : un échec laisse la table telle qu'elle était.
    Noeud* const copie = autre._racine != nullptr ? autre._racine->Clone(nullptr) : nullptr;
    delete _racine;
    _racine = copie;
    _nombre = autre._nombre;
    return *this;
}

TableTrieeNoyau& TableTrieeNoyau::operator=(TableTrieeNoyau&& autre) noexcept
{
    if (this == &autre) {
        return *this;
    }
    delete _racine;
    _racine = std::exchange(autre._racine, nullptr);
    _nombre = std::exchange(autre._nombre, 0);
    return *this;
}

TableTrieeNoyau::~TableTrieeNoyau()
{
    delete _racine;
}

void TableTrieeNoyau::Vide() noexcept
{
    delete _racine;
    _racine = nullptr;
    _nombre = 0;
}

long TableTrieeNoyau::NbEnfants() const
{
    return _racine != nullptr ? _racine->NbEnfants() + 1 : 0;
}

Noeud* TableTrieeNoyau::_Possede(ProxyClefNoyau const& clef) const
{
    Noeud* parent = nullptr;
    bool aGauche = false;
    return _TrouveEmplacement(clef, &parent, &aGauche);
}

Noeud* TableTrieeNoyau::_Insere(ProxyClefNoyau const& clef, bool* existait)
{
    return _TrouveEmplacementEtInsere(clef, existait);
}

void TableTrieeNoyau::_Supprime(ProxyClefNoyau const& clef)
{
    _TrouveEmplacementEtSupprime(clef, nullptr);
}

Noeud* TableTrieeNoyau::_TrouveEmplacement(ProxyClefNoyau const& clef, Noeud** parent,
                                           bool* aGauche) const
{
    // L'égalité d'abord, puis l'ordre, à chaque niveau.
    Noeud* noeud = _racine;
    while (noeud != nullptr) {
        // Les deux enfants sont demandés à la mémoire pendant les comparaisons.
        __builtin_prefetch(noeud->_gauche);
        __builtin_prefetch(noeud->_droite);
        if (ClefEgale(clef, noeud)) {
            return noeud;
        }
        *parent = noeud;
        *aGauche = ClefAvant(clef, noeud);
        noeud = *aGauche ? noeud->_gauche : noeud->_droite;
    }
    return nullptr;
}

Noeud* TableTrieeNoyau::_TrouveEmplacementEtInsere(ProxyClefNoyau const& clef, bool* existait)
{
    Noeud* parent = nullptr;
    bool aGauche = false;
    Noeud* const trouve = _TrouveEmplacement(clef, &parent, &aGauche);
    if (existait != nullptr) {
        *existait = trouve != nullptr;
    }
    if (trouve != nullptr) {
        return trouve;
    }
    Noeud* const nouveau = CreeNoeud(clef);
    ++_nombre;
    nouveau->MetsParent(parent);
    if (parent == nullptr) {
        _racine = nouveau;
    } else if (aGauche) {
        parent->_gauche = nouveau;
    } else {
        parent->_droite = nouveau;
    }
    Balance(nouveau);
    return nouveau;
}

void TableTrieeNoyau::_TrouveEmplacementEtSupprime(ProxyClefNoyau const& clef, bool* existait)
{
    Noeud* parent = nullptr;
    bool aGauche = false;
    Noeud* retire = _TrouveEmplacement(clef, &parent, &aGauche);
    if (existait != nullptr) {
        *existait = retire != nullptr;
    }
    if (retire == nullptr) {
        return;
    }
    if (retire->_gauche != nullptr && retire->_droite != nullptr) {
        // Le prédécesseur, pas le successeur, prend la place.
        Noeud* predecesseur = retire->_gauche;
        while (predecesseur->_droite != nullptr) {
            predecesseur = predecesseur->_droite;
        }
        retire->CopieContenu(*predecesseur);
        retire = predecesseur;
    }
    Noeud* const remplacant = retire->_droite != nullptr ? retire->_droite : retire->_gauche;
    if (retire->EstNoir()) {
        if (NoeudRNEstRouge(remplacant)) {
            remplacant->MetsEstNoir();
        } else {
            SupprimeCas1(retire);
        }
    }
    _Remplace(retire, remplacant);
    if (remplacant != nullptr) {
        retire->_gauche = nullptr;
        retire->_droite = nullptr;
    }
    delete retire;
    // Un compte lu trop petit passe sous 0 et revient au maximum : Ecris le refusera plutôt
    // que de perdre en silence les entrées qui restent.
    --_nombre;
}

void TableTrieeNoyau::_Remplace(Noeud* ancien, Noeud* nouveau) noexcept
{
    Noeud* const parent = ancien->Parent();
    if (parent == nullptr) {
        _racine = nouveau;
    } else if (parent->_gauche == ancien) {
        parent->_gauche = nouveau;
    } else {
        parent->_droite = nouveau;
    }
    if (nouveau != nullptr) {
        nouveau->MetsParent(parent);
    }
}

void TableTrieeNoyau::RotationGauche(Noeud* noeud) noexcept
{
    Noeud* const droite = noeud->_droite;
    _Remplace(noeud, droite);
    noeud->_droite = droite->_gauche;
    if (noeud->_droite != nullptr) {
        noeud->_droite->MetsParent(noeud);
    }
    droite->_gauche = noeud;
    noeud->MetsParent(droite);
}

void TableTrieeNoyau::RotationDroite(Noeud* noeud) noexcept
{
    Noeud* const gauche = noeud->_gauche;
    _Remplace(noeud, gauche);
    noeud->_gauche = gauche->_droite;
    if (noeud->_gauche != nullptr) {
        noeud->_gauche->MetsParent(noeud);
    }
    gauche->_droite = noeud;
    noeud->MetsParent(gauche);
}

void TableTrieeNoyau::Balance(Noeud* noeud) noexcept
{
    for (;;) {
        Noeud* parent = noeud->Parent();
        if (parent == nullptr) {
            noeud->MetsEstNoir();
            return;
        }
        if (parent->EstNoir()) {
            return;
        }
        Noeud* grandParent = parent->Parent();
        if (grandParent == nullptr) {
            // Racine rouge, possible dans un arbre lu : la noircir suffit.
            parent->MetsEstNoir();
            return;
        }
        Noeud* const oncle = noeud->Oncle();
        if (NoeudRNEstRouge(oncle)) {
            parent->MetsEstNoir();
            oncle->MetsEstNoir();
            noeud = noeud->GrandParent();
            noeud->MetsEstRouge();
            continue;
        }
        if (noeud == parent->_droite && parent == grandParent->_gauche) {
            RotationGauche(parent);
            noeud = noeud->_gauche;
        } else if (noeud == parent->_gauche && parent == grandParent->_droite) {
            RotationDroite(parent);
            noeud = noeud->_droite;
        }
        parent = noeud->Parent();
        grandParent = parent->Parent();
        parent->MetsEstNoir();
        grandParent->MetsEstRouge();
        if (noeud == parent->_gauche && parent == grandParent->_gauche) {
            RotationDroite(grandParent);
        } else {
            RotationGauche(grandParent);
        }
        return;
    }
}

namespace {

// Un frère absent, possible dans un arbre lu aux couleurs quelconques, compte comme un nœud
// noir à enfants noirs : le cas 3 remonte, le cas 4 s'arrête, les cas 5 et 6 ne le voient
// jamais.
bool NoirANeveuxNoirs(Noeud const* frere) noexcept
{
    return frere == nullptr ||
           (frere->EstNoir() && TableTrieeNoyau::NoeudRNEstNoir(frere->Gauche()) &&
            TableTrieeNoyau::NoeudRNEstNoir(frere->Droite()));
}

} // namespace

// Une boucle, pas une récursion : le noir de trop peut remonter toute la hauteur d'un arbre lu.
void TableTrieeNoyau::SupprimeCas1(Noeud* noeud) noexcept
{
    while (noeud != nullptr && noeud->Parent() != nullptr) {
        noeud = SupprimeCas2(noeud);
    }
}

Noeud* TableTrieeNoyau::SupprimeCas2(Noeud* noeud) noexcept
{
    Noeud* const frere = noeud->Sibling();
    if (NoeudRNEstRouge(frere)) {
        Noeud* const parent = noeud->Parent();
        parent->MetsEstRouge();
        frere->MetsEstNoir();
        if (noeud == parent->_gauche) {
            RotationGauche(parent);
        } else {
            RotationDroite(parent);
        }
    }
    return SupprimeCas3(noeud);
}

Noeud* TableTrieeNoyau::SupprimeCas3(Noeud* noeud) noexcept
{
    Noeud* const frere = noeud->Sibling();
    Noeud* const parent = noeud->Parent();
    if (parent->EstNoir() && NoirANeveuxNoirs(frere)) {
        if (frere != nullptr) {
            frere->MetsEstRouge();
        }
        return parent;
    }
    return SupprimeCas4(noeud);
}

Noeud* TableTrieeNoyau::SupprimeCas4(Noeud* noeud) noexcept
{
    Noeud* const frere = noeud->Sibling();
    Noeud* const parent = noeud->Parent();
    if (parent->EstRouge() && NoirANeveuxNoirs(frere)) {
        if (frere != nullptr) {
            frere->MetsEstRouge();
        }
        parent->MetsEstNoir();
        return nullptr;
    }
    return SupprimeCas5(noeud);
}

Noeud* TableTrieeNoyau::SupprimeCas5(Noeud* noeud) noexcept
{
    Noeud* const frere = noeud->Sibling();
    if (frere->EstNoir()) {
        bool const aGauche = noeud == noeud->Parent()->_gauche;
        if (aGauche && NoeudRNEstNoir(frere->_droite) && NoeudRNEstRouge(frere->_gauche)) {
            frere->MetsEstRouge();
            frere->_gauche->MetsEstNoir();
            RotationDroite(frere);
        } else if (!aGauche && NoeudRNEstNoir(frere->_gauche) && NoeudRNEstRouge(frere->_droite)) {
            frere->MetsEstRouge();
            frere->_droite->MetsEstNoir();
            RotationGauche(frere);
        }
    }
    return SupprimeCas6(noeud);
}

Noeud* TableTrieeNoyau::SupprimeCas6(Noeud* noeud) noexcept
{
    Noeud* const frere = noeud->Sibling();
    Noeud* const parent = noeud->Parent();
    if (parent->EstNoir()) {
        frere->MetsEstNoir();
    } else {
        frere->MetsEstRouge();
    }
    parent->MetsEstNoir();
    if (noeud == parent->_gauche) {
        if (frere->_droite != nullptr) {
            frere->_droite->MetsEstNoir();
        }
        RotationGauche(parent);
    } else {
        if (frere->_gauche != nullptr) {
            frere->_gauche->MetsEstNoir();
        }
        RotationDroite(parent);
    }
    return nullptr;
}

// ---------------------------------------------------------------- diagnostics

bool TableTrieeNoyau::EstArbreValide() const
{
    if (!NoeudRNEstNoir(_racine)) {
        std::cerr << "la racine n'est pas noire" << '\n';
        return false;
    }
    return _racine == nullptr || _racine->EstValide();
}

namespace {

// Les vidages d'un arbre entier passent par ce tampon : la sortie d'erreur n'en a pas, et
// un million de nœuds y feraient des millions d'écritures.
class Vidage
{
public:
    std::ostream& Texte()
    {
        if (_texte.tellp() > 65536) {
            Vide();
        }
        return _texte;
    }
    void Vide()
    {
        std::cerr << _texte.str();
        _texte.str({});
    }

private:
    std::ostringstream _texte;
};

// Une étape de l'impression : imprimer un nœud (peut-être absent) à son retrait, ou le
// retirer du chemin une fois ses deux sous-arbres imprimés.
struct EtapeImpression
{
    Noeud const* noeud;
    unsigned int retrait;
    bool quitte;
};

void ImprimeLigne(std::ostream& sortie, Noeud const* noeud, std::string const& marge, bool boucle)
{
    sortie << marge << (boucle ? "==BOUCLE==" : "") << (noeud->EstRouge() ? "R" : "N") << "("
           << noeud->ChaineClef() << " => " << noeud->ChaineValeur() << ")["
           << static_cast<void const*>(noeud) << "," << static_cast<void const*>(noeud->Parent())
           << "]" << '\n';
}

void ImprimeArbre(Noeud const* racine, Vidage& vidage)
{
    // Le chemin depuis la racine, en ensemble : un arbre lu peut être une chaîne très longue.
    std::unordered_set<Noeud const*> chemin;
    std::vector<EtapeImpression> pile{{racine, 0, false}};
    while (!pile.empty()) {
        EtapeImpression const etape = pile.back();
        pile.pop_back();
        if (etape.quitte) {
            chemin.erase(etape.noeud);
            continue;
        }
        std::string const marge(etape.retrait, ' ');
        if (etape.noeud == nullptr) {
            vidage.Texte() << marge << "---" << '\n';
            continue;
        }
        // Un nœud déjà sur le chemin : l'arbre boucle, on ne redescend pas.
        bool const boucle = !chemin.insert(etape.noeud).second;
        ImprimeLigne(vidage.Texte(), etape.noeud, marge, boucle);
        if (!boucle) {
            pile.push_back({etape.noeud, 0, true});
            pile.push_back({etape.noeud->Droite(), etape.retrait + 2, false});
            pile.push_back({etape.noeud->Gauche(), etape.retrait + 2, false});
        }
    }
}

void ImprimeNoeudDot(std::ostream& sortie, Noeud const* noeud)
{
    void const* const adresse = noeud;
    // Les nœuds noirs sont dessinés en bleu, volontairement.
    sortie << adresse << (noeud->EstRouge() ? "[color=red,label=" : "[color=blue,label=") << '"'
           << noeud->ChaineClef() << '"' << "]" << '\n';
    if (noeud->Gauche() != nullptr) {
        sortie << adresse << " -> " << static_cast<void const*>(noeud->Gauche()) << '\n';
    }
    if (noeud->Droite() != nullptr) {
        sortie << adresse << " -> " << static_cast<void const*>(noeud->Droite()) << '\n';
    }
}

} // namespace

void TableTrieeNoyau::Imprime() const
{
    Vidage vidage;
    vidage.Texte() << "T:" << static_cast<void const*>(this) << " N:" << _nombre << '\n';
    if (_racine == nullptr) {
        vidage.Texte() << "RACINE-NULLE" << '\n';
    } else {
        ImprimeArbre(_racine, vidage);
    }
    vidage.Vide();
}

void TableTrieeNoyau::ImprimeDot() const
{
    Vidage vidage;
    vidage.Texte() << "digraph arbrerougenoir {" << '\n';
    // Préordre : le nœud, son sous-arbre gauche, puis le droit.
    std::vector<Noeud const*> pile;
    if (_racine != nullptr) {
        pile.push_back(_racine);
    }
    while (!pile.empty()) {
        Noeud const* const noeud = pile.back();
        pile.pop_back();
        ImprimeNoeudDot(vidage.Texte(), noeud);
        for (Noeud const* enfant : {noeud->Droite(), noeud->Gauche()}) {
            if (enfant != nullptr) {
                pile.push_back(enfant);
            }
        }
    }
    vidage.Texte() << "}" << '\n';
    vidage.Vide();
}

} // namespace sdd
