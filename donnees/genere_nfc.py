#!/usr/bin/env python3
"""Génère les tables de la composition canonique (NFC) du plan de base.

Sortie : DonneesNFC.cpp (déclarations dans noyau/chaines/detail/DonneesNFC.h).

Fiches de caractère, triées par unité : l'unité, les deux unités de sa décomposition
canonique d'un pas (une unité sans décomposition se répète dans les deux ; une
décomposition en une seule unité met 0 dans la seconde), sa classe de combinaison et la
réponse du test rapide NFC ('Y', 'N' ou 'M'). Reçoivent une fiche : les unités
décomposables, les marques de classe non nulle, les réponses autres que 'Y', les unités
qui entrent dans une paire de composition et les syllabes hangûl (sans décomposition :
elles ne sont ni décomposées ni composées). Une unité sans fiche vaut elle-même, classe 0,
réponse 'Y'.

Paires de composition, triées par (premier, second) : toute décomposition canonique du plan
de base, le composé, et un drapeau d'exclusion (Full_Composition_Exclusion : singletons,
exclusions de CompositionExclusions.txt, décompositions qui commencent par une marque).
"""

import argparse
import os
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

import ucd  # noqa: E402
from sortie import ecris_si_change  # noqa: E402

HANGUL = range(0xAC00, 0xD7A4)


def paires(base):
    resultat = []
    for c in range(ucd.NB_UNITES):
        d = base.decomposition_canonique(c)
        if d:
            second = d[1] if len(d) > 1 else 0
            resultat.append((d[0], second, c, 1 if c in base.exclusion_totale else 0))
    return sorted(resultat)


def fiches(base, paires_):
    dans_paire = {p[0] for p in paires_} | {p[1] for p in paires_ if p[1]}
    resultat = []
    for c in range(ucd.NB_UNITES):
        d = base.decomposition_canonique(c)
        classe = base.caracteres[c].classe_combinaison
        reponse = base.nfc_qc.get(c, "Y")
        if d or classe or reponse != "Y" or c in dans_paire or c in HANGUL:
            premier, second = (d[0], d[1] if len(d) > 1 else 0) if d else (c, c)
            resultat.append((c, premier, second, classe, reponse))
    return resultat


def source_cpp(base):
    liste_paires = paires(base)
    liste_fiches = fiches(base, liste_paires)
    lignes = [
        "// Produit par donnees/genere_nfc.py à partir d'Unicode %s : ne pas modifier." % base.version,
        "#include \"noyau/chaines/detail/DonneesNFC.h\"",
        "",
        "namespace sdd::detail {",
        "",
        "const unsigned long gNbFichesNFC = %d;" % len(liste_fiches),
        "const FicheNFC gFichesNFC[%d] = {" % len(liste_fiches),
    ]
    lignes += ["{0x%04X, {0x%04X, 0x%04X}, 0, %d, '%s', {}}," % f for f in liste_fiches]
    lignes += ["};", ""]
    lignes.append("const unsigned long gNbPairesCompositionNFC = %d;" % len(liste_paires))
    lignes.append("const PaireCompositionNFC gPairesCompositionNFC[%d] = {" % len(liste_paires))
    lignes += ["{0x%04X, 0x%04X, 0x%04X, %d, 0}," % p for p in liste_paires]
    lignes += ["};", "", "}  // namespace sdd::detail", ""]
    return "\n".join(lignes)


def main():
    arguments = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    arguments.add_argument("--unicode", default="/usr/share/unicode")
    arguments.add_argument("--source", required=True)
    options = arguments.parse_args()
    ecris_si_change(options.source, source_cpp(ucd.BaseUnicode(options.unicode)))


if __name__ == "__main__":
    main()
