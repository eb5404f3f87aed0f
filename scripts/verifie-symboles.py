#!/usr/bin/env python3
"""Vérifie qu'une bibliothèque installée ne cache rien de ses classes exportées.

Un programme client peut atteindre directement la vtable, le typeinfo, une virtuelle en
ligne ou le thunk qui y mène d'une classe exportée : chacun de ces symboles, quand la
bibliothèque l'émet, doit être dans sa table dynamique. Les autres fonctions en ligne restent
cachées : un client qui les appelle en émet sa propre copie.
Usage : verifie-symboles.py LIB DOSSIER_DES_EN_TETES
"""
import pathlib
import re
import subprocess
import sys

MACRO = "NOYAU_EXPORT"


def sans_commentaires(texte):
    texte = re.sub(r"/\*.*?\*/", " ", texte, flags=re.S)
    texte = re.sub(r"//[^\n]*", " ", texte)
    texte = re.sub(r"'(\\.|[^'\\])'", "''", texte)  # une accolade entre apostrophes
    return re.sub(r'"(\\.|[^"\\])*"', '""', texte)


def classes_exportees(en_tetes):
    """Noms qualifiés des classes marquées NOYAU_EXPORT dans les en-têtes installés."""
    attributs = r"(?:(?:__attribute__\s*\(\(.*?\)\)|alignas\s*\([^)]*\))\s*)*"
    jeton = re.compile(r"\bnamespace\s+([\w:]+)\s*\{|\b(?:class|struct)\s+" + MACRO +
                       r"\s+" + attributs + r"([\w:]+)[^;{]*\{|[{}]")
    classes = set()
    for chemin in sorted(pathlib.Path(en_tetes).rglob("*.h")):
        portees = []  # un nom qualifiant par accolade ouverte, None pour les autres
        for m in jeton.finditer(sans_commentaires(chemin.read_text(encoding="utf-8"))):
            if m.group(0) == "}":
                if portees:
                    portees.pop()
            elif m.group(0) == "{":
                portees.append(None)
            else:
                nom = m.group(1) or m.group(2)
                if m.group(2):
                    classes.add("::".join([p for p in portees if p] + [nom]))
                portees.append(nom)
    return classes


def symboles(bibliotheque, dynamiques):
    """(adresse, taille, genre, nom démangé) des symboles définis."""
    options = ["nm", "-C", "-S", "--defined-only"] + (["-D"] if dynamiques else [])
    sortie = subprocess.run(options + [bibliotheque], check=True, capture_output=True,
                            text=True).stdout
    for ligne in sortie.splitlines():
        m = re.match(r"([0-9a-f]+) (?:([0-9a-f]+) )?(\S) (.*)", ligne)
        if m:
            yield int(m.group(1), 16), int(m.group(2) or "0", 16), m.group(3), m.group(4)


def cibles_relatives(bibliotheque):
    """Emplacement -> adresse visée, pour les relocations relatives (pointeurs internes)."""
    sortie = subprocess.run(["readelf", "-rW", bibliotheque], check=True, capture_output=True,
                            text=True).stdout
    cibles = {}
    for ligne in sortie.splitlines():
        champs = ligne.split()
        if len(champs) == 4 and champs[2] == "R_X86_64_RELATIVE":
            cibles[int(champs[0], 16)] = int(champs[3], 16)
    return cibles


CLONE = re.compile(r" \[clone [^]]*\]$")
OBJETS_DE_CLASSE = ("vtable for ", "typeinfo for ", "typeinfo name for ", "VTT for ")
THUNKS = ("non-virtual thunk to ", "virtual thunk to ", "covariant return thunk to ")


def proprietaire(nom):
    """La classe d'une méthode, d'un thunk, d'une vtable ou d'un typeinfo."""
    for prefixe in OBJETS_DE_CLASSE:
        if nom.startswith(prefixe):
            return nom[len(prefixe):]
    for prefixe in THUNKS:
        if nom.startswith(prefixe):
            nom = nom[len(prefixe):]
    profondeur, fin = 0, len(nom)
    for i, c in enumerate(nom):  # le nom s'arrête à la première parenthèse hors gabarit
        profondeur += c == "<"
        profondeur -= c == ">"
        if c == "(" and profondeur == 0:
            fin = i
            break
    qualifie = nom[:fin]
    return qualifie.rsplit("::", 1)[0] if "::" in qualifie else ""


def sans_gabarit(nom):
    """sdd::Serialiseur<sdd::TableChaine> devient sdd::Serialiseur (spécialisations exportées)."""
    while True:
        court = re.sub(r"<[^<>]*>", "", nom)
        if court == nom:
            return nom
        nom = court


def virtuelles(tous, cibles):
    """Adresses des fonctions qu'une vtable de la bibliothèque désigne."""
    adresses = set()
    for adresse, taille, _, nom in tous:
        if "vtable for " in nom:
            adresses.update(cible for emplacement, cible in cibles.items()
                            if adresse <= emplacement < adresse + taille)
    return adresses


def caches(bibliotheque, classes):
    """Ce qu'un client peut atteindre d'une classe exportée et que la bibliothèque cache :
    vtable, typeinfo, thunk, fonction virtuelle (désignée par une vtable)."""
    tous = list(symboles(bibliotheque, False))
    if not any(genre.islower() for _, _, genre, _ in tous):
        sys.exit(f"{bibliotheque} : pas de table des symboles locaux (bibliothèque dépouillée ?)")
    exportes = {nom for _, _, _, nom in symboles(bibliotheque, True)}
    visibles = {adresse for adresse, _, genre, _ in tous if not genre.islower()}
    pointees = virtuelles(tous, cibles_relatives(bibliotheque))
    for adresse, _, genre, nom in tous:
        if not genre.islower() or nom in exportes or adresse in visibles:
            continue  # exporté, ou alias local d'un symbole exporté
        if CLONE.search(nom) or sans_gabarit(proprietaire(nom)) not in classes:
            continue
        if nom.startswith(OBJETS_DE_CLASSE + THUNKS) or adresse in pointees:
            yield nom


def main():
    bibliotheque, en_tetes = sys.argv[1:3]
    classes = classes_exportees(en_tetes)
    if not classes:
        sys.exit(f"aucune classe {MACRO} trouvée sous {en_tetes}")
    fautes = sorted(set(caches(bibliotheque, classes)))
    for nom in fautes:
        print(f"caché : {nom}")
    print(f"{len(classes)} classes exportées, {len(fautes)} symbole(s) caché(s)")
    sys.exit(1 if fautes else 0)


if __name__ == "__main__":
    main()
