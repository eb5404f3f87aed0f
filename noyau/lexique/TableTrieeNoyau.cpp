#include "noyau/lexique/TableTrieeNoyau.h"

#include "noyau/conteneurs/ListeT.h"

#include <algorithm>
#include <iostream>
#include <memory>
#include <string>
#include <utility>

namespace sdd {

using Noeud = TableTrieeNoyau::NoeudRNNoyau;

// ---------------------------------------------------------------- nœuds

Noeud::~NoeudRNNoyau()
{
    delete _gauche;
    delete _droite;
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
    std::unique_ptr<Noeud> copie(NouveauNoeud());
    copie->_parentEtCouleur = _parentEtCouleur;
    copie->MetsParent(parent);
    copie->CopieContenu(*this);
    // La copie possède déjà ses enfants clonés : une exception plus loin les libère.
    if (_gauche != nullptr) {
        copie->_gauche = _gauche->Clone(copie.get());
    }
    if (_droite != nullptr) {
        copie->_droite = _droite->Clone(copie.get());
    }
    return copie.release();
}

long Noeud::NbEnfants() const noexcept
{
    long total = 0;
    for (Noeud const* noeud = this; noeud != nullptr; noeud = noeud->_droite) {
        // Marque voulue : un arbre bouclé sur lui-même donne un compte visiblement faux
        // plutôt qu'un parcours sans fin.
        if (noeud->Parent() == noeud) {
            return total - 300;
        }
        if (noeud != this) {
            ++total;
        }
        if (noeud->_gauche != nullptr) {
            total += noeud->_gauche->NbEnfants() + 1;
        }
    }
    return total;
}

bool Noeud::EstValide(unsigned long* hauteurNoire) const
{
    if (EstRouge() && !(TableTrieeNoyau::NoeudRNEstNoir(_gauche) &&
                        TableTrieeNoyau::NoeudRNEstNoir(_droite))) {
        std::cerr << "Les enfants d'un noeud rouge (" << static_cast<void const*>(this)
                  << ") ne sont pas noirs" << '\n';
        return false;
    }
    unsigned long hauteurGauche = 1;
    unsigned long hauteurDroite = 1;
    bool const gaucheValide = _gauche == nullptr || _gauche->EstValide(&hauteurGauche);
    bool const droiteValide = _droite == nullptr || _droite->EstValide(&hauteurDroite);
    if (!gaucheValide || !droiteValide) {
        return false;
    }
    if (hauteurGauche != hauteurDroite) {
        // « est différents » : texte d'origine, gardé tel quel.
        std::cerr << "Le nombre de noeuds noirs à gauche (" << hauteurGauche << ") et à droite ("
                  << hauteurDroite << ") est différents (" << static_cast<void const*>(this)
                  << ")" << '\n';
        return false;
    }
    if (hauteurNoire != nullptr) {
        *hauteurNoire = hauteurGauche + (EstNoir() ? 1 : 0);
    }
    return true;
}

// ---------------------------------------------------------------- itérateur

TableTrieeNoyau::__Iterateur::__Iterateur(TableTrieeNoyau const& table) noexcept
    : _courant(table._racine)
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

long TableTrieeNoyau::NbEnfants() const noexcept
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
        Noeud* const oncle = noeud->Oncle();
        if (NoeudRNEstRouge(oncle)) {
            parent->MetsEstNoir();
            oncle->MetsEstNoir();
            noeud = noeud->GrandParent();
            noeud->MetsEstRouge();
            continue;
        }
        Noeud* grandParent = noeud->GrandParent();
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

// Le nœud traité porte un noir de trop ; son frère existe toujours dans un arbre valide.
void TableTrieeNoyau::SupprimeCas1(Noeud* noeud) noexcept
{
    if (noeud->Parent() != nullptr) {
        SupprimeCas2(noeud);
    }
}

void TableTrieeNoyau::SupprimeCas2(Noeud* noeud) noexcept
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
    SupprimeCas3(noeud);
}

void TableTrieeNoyau::SupprimeCas3(Noeud* noeud) noexcept
{
    Noeud* const frere = noeud->Sibling();
    Noeud* const parent = noeud->Parent();
    if (parent->EstNoir() && NoeudRNEstNoir(frere) && NoeudRNEstNoir(frere->_gauche) &&
        NoeudRNEstNoir(frere->_droite)) {
        frere->MetsEstRouge();
        SupprimeCas1(parent);
    } else {
        SupprimeCas4(noeud);
    }
}

void TableTrieeNoyau::SupprimeCas4(Noeud* noeud) noexcept
{
    Noeud* const frere = noeud->Sibling();
    Noeud* const parent = noeud->Parent();
    if (parent->EstRouge() && NoeudRNEstNoir(frere) && NoeudRNEstNoir(frere->_gauche) &&
        NoeudRNEstNoir(frere->_droite)) {
        frere->MetsEstRouge();
        parent->MetsEstNoir();
    } else {
        SupprimeCas5(noeud);
    }
}

void TableTrieeNoyau::SupprimeCas5(Noeud* noeud) noexcept
{
    Noeud* const frere = noeud->Sibling();
    if (frere->EstNoir()) {
        bool const aGauche = noeud == noeud->Parent()->_gauche;
        if (aGauche && NoeudRNEstNoir(frere->_droite) && NoeudRNEstRouge(frere->_gauche)) {
            frere->MetsEstRouge();
            frere->_gauche->MetsEstNoir();
            RotationDroite(frere);
        } else if (!aGauche && NoeudRNEstNoir(frere->_gauche) &&
                   NoeudRNEstRouge(frere->_droite)) {
            frere->MetsEstRouge();
            frere->_droite->MetsEstNoir();
            RotationGauche(frere);
        }
    }
    SupprimeCas6(noeud);
}

void TableTrieeNoyau::SupprimeCas6(Noeud* noeud) noexcept
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

using Chemin = ListeT<Noeud const*, 16, 0>;

void ImprimeNoeud(Noeud const* noeud, unsigned int retrait, Chemin& chemin)
{
    std::string const marge(retrait, ' ');
    if (noeud == nullptr) {
        std::cerr << marge << "---" << '\n';
        return;
    }
    // Un nœud déjà sur le chemin : l'arbre boucle, on ne redescend pas.
    bool const boucle = std::find(chemin.begin(), chemin.end(), noeud) != chemin.end();
    std::cerr << marge << (boucle ? "==BOUCLE==" : "") << (noeud->EstRouge() ? "R" : "N") << "("
              << noeud->ChaineClef() << " => " << noeud->ChaineValeur() << ")["
              << static_cast<void const*>(noeud) << ","
              << static_cast<void const*>(noeud->Parent()) << "]" << '\n';
    if (boucle) {
        return;
    }
    chemin.Ajoute(noeud);
    ImprimeNoeud(noeud->Gauche(), retrait + 2, chemin);
    ImprimeNoeud(noeud->Droite(), retrait + 2, chemin);
    chemin.Enleve(chemin.Taille() - 1);
}

void ImprimeNoeudDot(Noeud const* noeud)
{
    void const* const adresse = noeud;
    // Les nœuds noirs sont dessinés en bleu, volontairement.
    std::cerr << adresse << (noeud->EstRouge() ? "[color=red,label=" : "[color=blue,label=")
              << '"' << noeud->ChaineClef() << '"' << "]" << '\n';
    if (noeud->Gauche() != nullptr) {
        std::cerr << adresse << " -> " << static_cast<void const*>(noeud->Gauche()) << '\n';
    }
    if (noeud->Droite() != nullptr) {
        std::cerr << adresse << " -> " << static_cast<void const*>(noeud->Droite()) << '\n';
    }
    if (noeud->Gauche() != nullptr) {
        ImprimeNoeudDot(noeud->Gauche());
    }
    if (noeud->Droite() != nullptr) {
        ImprimeNoeudDot(noeud->Droite());
    }
}

} // namespace

void TableTrieeNoyau::Imprime() const
{
    std::cerr << "T:" << static_cast<void const*>(this) << " N:" << _nombre << '\n';
    if (_racine == nullptr) {
        std::cerr << "RACINE-NULLE" << '\n';
        return;
    }
    Chemin chemin;
    ImprimeNoeud(_racine, 0, chemin);
}

void TableTrieeNoyau::ImprimeDot() const
{
    std::cerr << "digraph arbrerougenoir {" << '\n';
    if (_racine != nullptr) {
        ImprimeNoeudDot(_racine);
    }
    std::cerr << "}" << '\n';
}

} // namespace sdd
