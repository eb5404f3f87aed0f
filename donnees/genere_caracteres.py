#!/usr/bin/env python3
"""Génère la table des caractères de Noyau et les données qui l'accompagnent.

Sorties (dans l'arbre de construction) :
  noyau/chaines/InfoUniCaractere.h    mots, bits et déclarations des tables ;
  InfoUniCaractere.cpp                 gInfoUniCaractere, ligatures, listes d'équivalence,
                                       ensembles typographiques, symboles Latin-1.

Source : les fichiers de la base de caractères Unicode (UnicodeData.txt, PropList.txt,
DerivedCoreProperties.txt, Scripts.txt) et les codecs de Python pour les codages à un
octet. La version lue est écrite en tête des fichiers produits.

gInfoUniCaractere a une fiche de dix mots de 16 bits par unité UTF-16 :

  mot 0  majuscule (simple, d'UnicodeData) ; l'unité elle-même quand il n'y en a pas.
  mot 1  minuscule (simple) ; U+0000..U+001F et U+00A0 donnent U+0020.
  mot 2  lettre de base : on n'enlève qu'un accent à la fois (premier élément de la
         décomposition canonique : Ǖ → Ü → U) ; les formes de compatibilité d'un seul
         caractère (<noBreak>, <super>, <sub>, <wide>, <narrow>, <font>, <compat>) et
         les fractions (premier chiffre) se replient aussi, sauf dans U+00A1..U+00FF
         où seules les fractions se replient (ª ¹ ² µ ¨ restent eux-mêmes : ce sont des
         caractères à part entière des textes Latin-1 et Mac OS Roman).
  mot 3  casse inversée : la majuscule d'une unité qui en a une, sinon sa minuscule.
  mot 4  repli typographique : les 24 blancs (White_Space sauf U+0020) → U+0020, les 22
         tirets et traits d'union des ensembles typographiques → U+002D, U+0060 U+00B4
         U+2018 U+2019 → U+0027.
  mot 5  repli des seuls blancs du mot 4 → U+0020.
  mot 6  classe de lettre   (bits : CLASSE_LETTRE ci-dessous)
  mot 7  classe de ponctuation (bits : CLASSE_PONCTUATION)
  mot 8  autres propriétés  (bits : PROPRIETES)
  mot 9  marques            (bits : MARQUES ; les bits non nommés valent toujours 0)

Les valeurs imposées qui contredisent les données Unicode sont toutes dans DEROGATIONS.
"""

import argparse
import os
import re
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

import codages  # noqa: E402
import ucd  # noqa: E402
from sortie import ecris_si_change, tableau_cpp  # noqa: E402

# --------------------------------------------------------------------------------------
# Dérogations aux données Unicode, toutes ici.

DEROGATIONS = {
    # µ et ı n'ont pas de majuscule (Unicode : U+039C et I).
    "majuscule": {0x00B5: 0x00B5, 0x0131: 0x0131},
    # Ω n'a pas de minuscule, bien que ω ait Ω pour majuscule.
    "minuscule": {0x03A9: 0x03A9},
    # Le mot 1 envoie les caractères de commande C0 et l'espace insécable sur l'espace.
    "minuscule_espace": list(range(0x0000, 0x0020)) + [0x00A0],
    # ß se décompose délibérément en « sz », pas en « ss ».
    "ligature": {0x00DF: "sz"},
}

LIGATURES = (0x0152, 0x0153, 0x00C6, 0x00E6, 0x00DF)   # Œ œ Æ æ ß, dans cet ordre

# Les six ensembles typographiques, leur caractère canonique, dans l'ordre des tables.
ENSEMBLES_TYPOGRAPHIQUES = (
    ("sFinsDeLigne", 0x000A, (0x0085, 0x2028, 0x2029)),
    ("sEspaces", 0x0020, (0x1680, 0x180E, 0x2000, 0x2001, 0x2002, 0x2003, 0x2004, 0x2005,
                          0x2006, 0x2008, 0x200A, 0x205F, 0x3000)),
    ("sEspacesInsecables", 0x00A0, (0x2007, 0x2009, 0x202F)),
    ("sTraitsDUnion", 0x002D, (0x2010, 0x2011, 0x058A, 0x05BE, 0x1806, 0x2E17, 0x30FB,
                               0xFE63, 0xFF0D, 0xFF65)),
    ("sTiretsLongs", 0x2014, (0x2014, 0x2015, 0x2053, 0x301C, 0x3030, 0x30A0, 0xFE31,
                              0xFE58)),
    ("sTiretsCourts", 0x2013, (0x2012, 0x2013, 0x2212, 0xFE32)),
)
ENSEMBLES_TIRETS = ("sTraitsDUnion", "sTiretsLongs", "sTiretsCourts")
APOSTROPHES = (0x0060, 0x00B4, 0x2018, 0x2019)

# Étiquettes de compatibilité dont la forme d'un seul caractère sert de lettre de base.
ETIQUETTES_REPLIEES = ("<noBreak>", "<super>", "<sub>", "<wide>", "<narrow>", "<font>",
                       "<compat>")
# Lettres latines voyelles dont le nom ne contient pas de voyelle simple.
VOYELLES_NOMMEES = ("SCHWA", "ALPHA", "IOTA", "UPSILON", "OMEGA")

# --------------------------------------------------------------------------------------
# Bits des mots 6 à 9 : (nom C++, valeur, signification). Le prédicat de chaque bit est
# dans la fonction calcule_* correspondante, sous le même nom.

CLASSE_LETTRE = (
    ("kCarPonctuation", 0x0001, "ponctuation (catégories P*)"),
    ("kCarSymbole", 0x0002, "symbole (S*)"),
    ("kCarBlanc", 0x0004, "blanc (propriété White_Space, espace compris)"),
    ("kCarMajuscule", 0x0008, "lettre majuscule (Lu)"),
    ("kCarMinuscule", 0x0010, "lettre minuscule (Ll)"),
    ("kCarConsonne", 0x0020, "consonne latine (Lu, Ll, Lt de l'écriture latine)"),
    ("kCarVoyelle", 0x0040, "voyelle latine, y compris y, æ et œ"),
    ("kCarChiffre", 0x0080, "chiffre décimal (Nd)"),
    ("kCarLettre", 0x0100, "lettre (L*)"),
    ("kCarMarqueCombinante", 0x0200, "marque combinante (M*)"),
    ("kCarCommande", 0x0400, "caractère de commande ou de format (Cc, Cf)"),
    ("kCarAutreNombre", 0x0800, "autre nombre : fraction, exposant, chiffre romain (Nl, No)"),
    ("kCarAccentue", 0x1000, "lettre dont la décomposition canonique porte une marque"),
    ("kCarCasseTitre", 0x2000, "lettre de casse de titre (Lt : ǅ ǈ ǋ ǲ)"),
    ("kCarDiacritiqueSouscrit", 0x4000, "lettre accentuée dont une marque est souscrite "
                                        "(cédille, ogonek, point souscrit : classes 202, 220)"),
    ("kCarExposantOuIndice", 0x8000, "forme en exposant ou en indice (<super>, <sub>)"),
)

CLASSE_PONCTUATION = (
    ("kPoncLatin", 0x0001, "écriture latine hors U+0100..U+024F et U+1E00..U+1EFF, ou ponctuation courante (Po) de U+0000..U+00FF"),
    ("kPoncBlanc", 0x0002, "blanc : espace, tabulation, fins de ligne, espaces insécables "
                           "et typographiques (White_Space)"),
    ("kPoncEspace", 0x0004, "séparateur d'espace (Zs)"),
    ("kPoncFinDePhrase", 0x0008, "termine une phrase : ponctuation finale (Sentence_Terminal),"
                                 " tabulation, fins de ligne"),
    ("kPoncFinDeLigne", 0x0010, "fin de ligne : U+000A..U+000E, U+0011, U+2028, U+2029"),
    ("kPoncOuvrant", 0x0020, "ponctuation ouvrante (Ps, Pi)"),
    ("kPoncFermant", 0x0040, "ponctuation fermante (Pe, Pf)"),
    ("kPoncTiret", 0x0080, "tiret ou trait d'union (propriété Dash)"),
    ("kPoncSeparateurFort", 0x0100, "séparateur de mot qui n'est pas un tiret : coupe aussi "
                                    "les mots composés"),
    ("kPoncSeparateurDeMot", 0x0200, "séparateur de mot : blanc, commande, ponctuation, "
                                     "symbole"),
    ("kPoncFinDeSegment", 0x0400, "termine un segment : fin de phrase, deux-points, "
                                  "point-virgule"),
    ("kPoncGuillemet", 0x0800, "guillemet (Quotation_Mark, apostrophes exceptées)"),
    ("kPoncTexteCourant", 0x1000, "espace ou ponctuation ordinaire (Zs, Po)"),
    ("kPoncLiantLocution", 0x2000, "espace ou tiret, qui lient les mots d'une locution "
                                   "(Zs, Pd)"),
    ("kPoncPoint", 0x4000, "point (les FULL STOP)"),
    ("kPoncApostrophe", 0x8000, "apostrophe : U+0027 et ce que le mot 4 replie sur elle"),
)

PROPRIETES = (
    ("kPropAlphanumerique", 0x0001, "lettre ou chiffre décimal"),
    ("kPropChiffreHexa", 0x0002, "chiffre hexadécimal (Hex_Digit)"),
    ("kPropMonnaie", 0x0004, "symbole monétaire (Sc)"),
    ("kPropMathematique", 0x0008, "symbole mathématique (Sm)"),
    ("kPropIdeogramme", 0x0010, "idéogramme (Ideographic)"),
    ("kPropCompatibilite", 0x0020, "a une décomposition de compatibilité"),
    ("kPropDecomposable", 0x0040, "a une décomposition canonique"),
    ("kPropLettreModificative", 0x0080, "lettre modificative (Lm)"),
    ("kPropMacRoman", 0x0100, "s'écrit en Mac OS Roman"),
    ("kPropLatin9", 0x0200, "s'écrit en ISO 8859-15"),
    ("kPropWinLatin1", 0x0400, "s'écrit en Windows-1252"),
    ("kPropDOS", 0x0800, "s'écrit en IBM 850"),
    ("kPropAttribue", 0x1000, "attribué par Unicode"),
    ("kPropUsagePrive", 0x2000, "zone d'usage privé (Co)"),
    ("kPropDemiCodet", 0x4000, "demi-codet d'une paire UTF-16 (Cs)"),
    ("kPropNonCaractere", 0x8000, "non-caractère (Noncharacter_Code_Point)"),
)

MARQUES = (
    ("kMarqueInsecable", 0x0001, "l'espace insécable U+00A0"),
    ("kMarqueMajusculeAccentuee", 0x0002, "majuscule accentuée"),
    ("kMarqueLigature", 0x0004, "ligature : Œ œ Æ æ ß"),
)

MOTS = (
    ("kInfoMajuscule", "majuscule"),
    ("kInfoMinuscule", "minuscule"),
    ("kInfoSansAccent", "lettre de base, sans un accent"),
    ("kInfoCasseInversee", "casse inversée"),
    ("kInfoTypographie", "repli typographique (blancs, tirets, apostrophes)"),
    ("kInfoEspaces", "repli des blancs"),
    ("kInfoClasseLettre", "bits kCar*"),
    ("kInfoClassePonctuation", "bits kPonc*"),
    ("kInfoProprietes", "bits kProp*"),
    ("kInfoMarques", "bits kMarque*"),
)


def bits(table):
    return {nom: valeur for nom, valeur, _ in table}


B6, B7, B8, B9 = (bits(t) for t in (CLASSE_LETTRE, CLASSE_PONCTUATION, PROPRIETES, MARQUES))


# --------------------------------------------------------------------------------------
# Calcul des mots.

class Generateur:
    def __init__(self, base):
        self.u = base
        self.codages = codages.tables()
        self.blancs = base.proprietes["White_Space"] - {0x20}
        self.tirets = {c for nom, _, membres in ENSEMBLES_TYPOGRAPHIQUES
                       if nom in ENSEMBLES_TIRETS for c in membres}

    def categorie(self, c):
        return self.u.caracteres[c].categorie

    def majuscule(self, c):
        """Majuscule simple, dérogations comprises."""
        m = DEROGATIONS["majuscule"].get(c)
        return m if m is not None else (self.u.caracteres[c].majuscule or c)

    def minuscule(self, c):
        """Minuscule simple, dérogations comprises, hors repli des commandes sur l'espace."""
        m = DEROGATIONS["minuscule"].get(c)
        return m if m is not None else (self.u.caracteres[c].minuscule or c)

    def lettre_de_base(self, c):
        car = self.u.caracteres[c]
        if not car.decomposition:
            return c
        if car.etiquette is None or car.etiquette == "<fraction>":
            return car.decomposition[0]
        if 0x00A1 <= c <= 0x00FF:
            return c
        if car.etiquette in ETIQUETTES_REPLIEES and len(car.decomposition) == 1:
            return car.decomposition[0]
        return c

    def marques(self, c):
        """Classes de combinaison des marques de la décomposition canonique complète."""
        return [self.u.caracteres[m].classe_combinaison
                for m in self.u.decomposition_canonique_complete(c)
                if self.categorie(m).startswith("M")]

    def voyelle_ou_consonne(self, c):
        cat = self.categorie(c)
        if cat not in ("Lu", "Ll", "Lt") or self.u.ecritures.get(c) != "Latin":
            return 0
        m = re.match(r"LATIN (?:CAPITAL |SMALL )?(?:LETTER|LIGATURE) (.*?)(?: WITH .*)?$",
                     self.u.caracteres[c].nom)
        mots = m.group(1).split() if m else []
        if any(mot in VOYELLES_NOMMEES for mot in mots):
            return B6["kCarVoyelle"]
        for mot in mots:
            if re.fullmatch(r"[A-Z]{1,2}", mot):
                return B6["kCarVoyelle"] if set(mot) <= set("AEIOUY") else B6["kCarConsonne"]
        return B6["kCarConsonne"]

    def classe_lettre(self, c):
        cat = self.categorie(c)
        car = self.u.caracteres[c]
        v = 0
        if cat.startswith("P"):
            v |= B6["kCarPonctuation"]
        if cat.startswith("S"):
            v |= B6["kCarSymbole"]
        if self.u.possede("White_Space", c):
            v |= B6["kCarBlanc"]
        if cat == "Lu":
            v |= B6["kCarMajuscule"]
        if cat == "Ll":
            v |= B6["kCarMinuscule"]
        v |= self.voyelle_ou_consonne(c)
        if cat == "Nd":
            v |= B6["kCarChiffre"]
        if cat.startswith("L"):
            v |= B6["kCarLettre"]
        if cat.startswith("M"):
            v |= B6["kCarMarqueCombinante"]
        if cat in ("Cc", "Cf"):
            v |= B6["kCarCommande"]
        if cat in ("Nl", "No"):
            v |= B6["kCarAutreNombre"]
        marques = self.marques(c) if cat.startswith("L") else []
        if marques:
            v |= B6["kCarAccentue"]
            if any(classe in (202, 220) for classe in marques):
                v |= B6["kCarDiacritiqueSouscrit"]
        if cat == "Lt":
            v |= B6["kCarCasseTitre"]
        if car.etiquette in ("<super>", "<sub>"):
            v |= B6["kCarExposantOuIndice"]
        return v

    def fin_de_ligne(self, c):
        return 0x000A <= c <= 0x000E or c in (0x0011, 0x2028, 0x2029)

    def classe_ponctuation(self, c, typographie):
        cat = self.categorie(c)
        nom = self.u.caracteres[c].nom
        blanc = self.u.possede("White_Space", c)
        v = 0
        # Les blocs latins étendus restent hors du bit : EstCaractereLatin ne les prend
        # qu'à la demande (etendu).
        etendu = 0x0100 <= c <= 0x024F or 0x1E00 <= c <= 0x1EFF
        if (self.u.ecritures.get(c) == "Latin" and not etendu) or (cat == "Po" and c <= 0xFF):
            v |= B7["kPoncLatin"]
        if blanc:
            v |= B7["kPoncBlanc"]
        if cat == "Zs":
            v |= B7["kPoncEspace"]
        fin_de_phrase = (self.u.possede("Sentence_Terminal", c) or c == 0x0009
                         or self.fin_de_ligne(c))
        if fin_de_phrase:
            v |= B7["kPoncFinDePhrase"]
        if self.fin_de_ligne(c):
            v |= B7["kPoncFinDeLigne"]
        if cat in ("Ps", "Pi"):
            v |= B7["kPoncOuvrant"]
        if cat in ("Pe", "Pf"):
            v |= B7["kPoncFermant"]
        tiret = self.u.possede("Dash", c)
        if tiret:
            v |= B7["kPoncTiret"]
        separateur = blanc or cat == "Cc" or cat[0] in "PS"
        if separateur and not tiret:
            v |= B7["kPoncSeparateurFort"]
        if separateur:
            v |= B7["kPoncSeparateurDeMot"]
        if fin_de_phrase or (cat == "Po" and re.search(r"\b(SEMI)?COLON$", nom)):
            v |= B7["kPoncFinDeSegment"]
        apostrophe = typographie == 0x0027
        if self.u.possede("Quotation_Mark", c) and not apostrophe:
            v |= B7["kPoncGuillemet"]
        if cat in ("Zs", "Po"):
            v |= B7["kPoncTexteCourant"]
        if cat in ("Zs", "Pd"):
            v |= B7["kPoncLiantLocution"]
        if "FULL STOP" in nom:
            v |= B7["kPoncPoint"]
        if apostrophe:
            v |= B7["kPoncApostrophe"]
        return v

    def proprietes(self, c):
        cat = self.categorie(c)
        car = self.u.caracteres[c]
        v = 0
        if cat.startswith("L") or cat == "Nd":
            v |= B8["kPropAlphanumerique"]
        if self.u.possede("Hex_Digit", c):
            v |= B8["kPropChiffreHexa"]
        if cat == "Sc":
            v |= B8["kPropMonnaie"]
        if cat == "Sm":
            v |= B8["kPropMathematique"]
        if self.u.possede("Ideographic", c):
            v |= B8["kPropIdeogramme"]
        if car.etiquette is not None:
            v |= B8["kPropCompatibilite"]
        if car.decomposition and car.etiquette is None:
            v |= B8["kPropDecomposable"]
        if cat == "Lm":
            v |= B8["kPropLettreModificative"]
        for nom in codages.CODECS:
            if c in self.codages[nom]:
                v |= B8["kProp" + nom]
        if cat != "Cn":
            v |= B8["kPropAttribue"]
        if cat == "Co":
            v |= B8["kPropUsagePrive"]
        if cat == "Cs":
            v |= B8["kPropDemiCodet"]
        if self.u.possede("Noncharacter_Code_Point", c):
            v |= B8["kPropNonCaractere"]
        return v

    def table(self):
        minuscule_espace = set(DEROGATIONS["minuscule_espace"])
        fiches = []
        for c in range(ucd.NB_UNITES):
            majuscule = self.majuscule(c)
            minuscule = self.minuscule(c)
            casse_inversee = majuscule if majuscule != c else minuscule
            if c in minuscule_espace:
                minuscule = 0x0020
            espaces = 0x0020 if c in self.blancs else c
            if c in self.blancs:
                typographie = 0x0020
            elif c in self.tirets:
                typographie = 0x002D
            elif c in APOSTROPHES:
                typographie = 0x0027
            else:
                typographie = c
            classe = self.classe_lettre(c)
            marques = 0
            if c == 0x00A0:
                marques |= B9["kMarqueInsecable"]
            if classe & B6["kCarMajuscule"] and classe & B6["kCarAccentue"]:
                marques |= B9["kMarqueMajusculeAccentuee"]
            if c in LIGATURES:
                marques |= B9["kMarqueLigature"]
            fiches.append((majuscule, minuscule, self.lettre_de_base(c), casse_inversee,
                           typographie, espaces, classe,
                           self.classe_ponctuation(c, typographie), self.proprietes(c),
                           marques))
        return fiches

    # ---------------------------------------------------------------------------------
    def ligatures(self):
        resultat = []
        for c in LIGATURES:
            lettres = DEROGATIONS["ligature"].get(c)
            if lettres is None:
                # « LATIN SMALL LIGATURE OE », « LATIN CAPITAL LETTER AE » ...
                nom = self.u.caracteres[c].nom
                lettres = nom.split()[-1]
                if " SMALL " in nom:
                    lettres = lettres.lower()
            resultat.append((c, [ord(l) for l in lettres]))
        return resultat

    def ligatures_mac_roman(self, ligatures):
        mac = self.codages["MacRoman"]
        # ß n'a pas de ligne : la table Mac OS Roman ne garde que Œ œ Æ æ.
        return [(mac.index(c), [mac.index(l) for l in lettres])
                for c, lettres in ligatures if c not in DEROGATIONS["ligature"]]

    def equivalences(self, fiches):
        """Fiches (unité, début des variantes accentuées, début des variantes de casse)
        et le tableau des listes, chacune terminée par un zéro ; l'indice 0 veut dire
        « aucune liste »."""
        accents = {}
        for c in range(ucd.NB_UNITES):
            base = fiches[c][2]
            if base != c:
                accents.setdefault(base, []).append(c)
        # Classes de casse : composantes connexes des liens majuscule et minuscule.
        parent = list(range(ucd.NB_UNITES))

        def racine(c):
            while parent[c] != c:
                parent[c] = parent[parent[c]]
                c = parent[c]
            return c

        for c in range(ucd.NB_UNITES):
            for autre in (self.majuscule(c), self.minuscule(c)):
                parent[racine(autre)] = racine(c)
        classes = {}
        for c in range(ucd.NB_UNITES):
            classes.setdefault(racine(c), []).append(c)
        casses = {}
        for membres in classes.values():
            if len(membres) > 1:
                for c in membres:
                    casses[c] = [m for m in membres if m != c]

        listes = [0]
        resultat = []
        for c in sorted(set(accents) | set(casses)):
            debuts = []
            for variantes in (accents.get(c), casses.get(c)):
                if variantes:
                    debuts.append(len(listes))
                    listes.extend(variantes + [0])
                else:
                    debuts.append(0)
            resultat.append((c, *debuts))
        return resultat, listes

    def symboles_latin1_non_mac(self):
        mac = set(self.codages["MacRoman"])
        return [c for c in range(0xA0, 0x100)
                if self.categorie(c) in ("No", "Sm") and c not in mac]


# --------------------------------------------------------------------------------------
# Écriture.

def entete_h(version, nb_equivalences, nb_listes):
    lignes = [
        "// Produit par donnees/genere_caracteres.py à partir d'Unicode %s : ne pas modifier." % version,
        "#pragma once",
        "",
        "#include <cstdint>",
        "",
        "#include \"noyau/Export.h\"",
        "",
        "// Les dix mots de la fiche d'une unité UTF-16 dans gInfoUniCaractere.",
        "enum MotInfoUniCaractere : unsigned",
        "{",
    ]
    for i, (nom, doc) in enumerate(MOTS):
        lignes.append("    %s = %d,  // %s" % (nom, i, doc))
    lignes += ["};", ""]
    for titre, table in (("mot 6, classe de lettre", CLASSE_LETTRE),
                         ("mot 7, classe de ponctuation", CLASSE_PONCTUATION),
                         ("mot 8, autres propriétés", PROPRIETES),
                         ("mot 9, marques ; les autres bits valent 0", MARQUES)):
        lignes.append("// Bits du %s." % titre)
        for nom, valeur, doc in table:
            lignes.append("constexpr std::uint16_t %s = 0x%04X;  // %s" % (nom, valeur, doc))
        lignes.append("")
    lignes += [
        "constexpr unsigned long kNbUnitesUTF16 = 0x10000;",
        "constexpr unsigned long kNbMotsInfoUniCaractere = %d;" % len(MOTS),
        "",
        "// Une fiche par unité UTF-16, à lire par gInfoUniCaractere[unite][kInfo...].",
        "extern NOYAU_EXPORT const std::uint16_t gInfoUniCaractere[kNbUnitesUTF16]"
        "[kNbMotsInfoUniCaractere];",
        "",
        "// Listes d'équivalence : pour une unité, le début de la liste de ses variantes",
        "// accentuées et celui de ses variantes de casse dans gListesCaracteresInfoExpansion",
        "// (listes terminées par un zéro ; 0 = pas de liste). Fiches triées par unité.",
        "struct InfoExpansionUniCaractere",
        "{",
        "    char16_t car;",
        "    std::uint16_t accents;",
        "    std::uint16_t casses;",
        "};",
        "",
        "constexpr unsigned long kNbInfoExpansionUniCaractere = %d;" % nb_equivalences,
        "constexpr unsigned long kTailleListesCaracteresInfoExpansion = %d;" % nb_listes,
        "extern NOYAU_EXPORT const InfoExpansionUniCaractere"
        " gInfoExpansionUniCaractere[kNbInfoExpansionUniCaractere];",
        "extern NOYAU_EXPORT const char16_t"
        " gListesCaracteresInfoExpansion[kTailleListesCaracteresInfoExpansion];",
        "",
    ]
    return "\n".join(lignes)


def source_cpp(version, gen):
    fiches = gen.table()
    equivalences, listes = gen.equivalences(fiches)
    ligatures = gen.ligatures()
    ligatures_mac = gen.ligatures_mac_roman(ligatures)
    symboles = gen.symboles_latin1_non_mac()

    def ligne_ligature(c, lettres, forme):
        lettres = (lettres + [0, 0, 0])[:3]
        return "{%s, {%s}}" % (forme(c), ", ".join(forme(l) for l in lettres))

    def unite(c):
        return "0x%04X" % c

    def octet(c):
        return "char(0x%02X)" % c

    parties = [
        "// Produit par donnees/genere_caracteres.py à partir d'Unicode %s : ne pas modifier." % version,
        "#include \"noyau/chaines/InfoUniCaractere.h\"",
        "#include \"noyau/chaines/Caractere.h\"",
        "#include \"noyau/chaines/UniCaractere.h\"",
        "#include \"noyau/chaines/UniChaine.h\"",
        "",
        "const std::uint16_t gInfoUniCaractere[kNbUnitesUTF16][kNbMotsInfoUniCaractere] = {",
    ]
    parties += ["{%s}," % ",".join("%d" % m for m in fiche) for fiche in fiches]
    parties += ["};", ""]
    parties.append("const InfoExpansionUniCaractere gInfoExpansionUniCaractere"
                   "[kNbInfoExpansionUniCaractere] = {")
    parties += ["{0x%04X, %d, %d}," % e for e in equivalences]
    parties += ["};", ""]
    parties.append("const char16_t gListesCaracteresInfoExpansion"
                   "[kTailleListesCaracteresInfoExpansion] = {")
    parties.append(tableau_cpp(listes, "0x%04X"))
    parties += ["};", ""]
    parties.append("const InfoLigature<char16_t> UniCaractere::gInfosLigature[%d] = {"
                   % len(ligatures))
    parties += ["    %s," % ligne_ligature(c, l, unite) for c, l in ligatures]
    parties += ["};", "const unsigned long UniCaractere::gNbInfosLigature = %d;" % len(ligatures), ""]
    parties.append("const InfoLigature<char> Caractere::gInfosLigature[%d] = {"
                   % len(ligatures_mac))
    parties += ["    %s," % ligne_ligature(c, l, octet) for c, l in ligatures_mac]
    parties += ["};", "const unsigned long Caractere::gNbInfosLigature = %d;" % len(ligatures_mac), ""]
    for nom, _, membres in ENSEMBLES_TYPOGRAPHIQUES:
        parties.append("const UniCaractere UniCaractere::%s[%d] = {%s};"
                       % (nom, len(membres), ", ".join(unite(c) for c in membres)))
    parties += [
        "",
        "const UniCaractere* const UniCaractere::sCarsARemplacer[kNbEnsemblesTypographiques] = {%s};"
        % ", ".join(nom for nom, _, _ in ENSEMBLES_TYPOGRAPHIQUES),
        "const unsigned long UniCaractere::sNbCarsARemplacer[kNbEnsemblesTypographiques] = {%s};"
        % ", ".join(str(len(m)) for _, _, m in ENSEMBLES_TYPOGRAPHIQUES),
        "const char16_t UniChaine::sCarsCanoniques[kNbEnsemblesTypographiques] = {%s};"
        % ", ".join(unite(c) for _, c, _ in ENSEMBLES_TYPOGRAPHIQUES),
        "const UniCaractere UniCaractere::sSymbolesLatin1NonMac[%d] = {%s};"
        % (len(symboles), ", ".join(unite(c) for c in symboles)),
        "",
    ]
    return "\n".join(parties), len(equivalences), len(listes)


def main():
    arguments = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    arguments.add_argument("--unicode", default="/usr/share/unicode")
    arguments.add_argument("--entete", required=True)
    arguments.add_argument("--source", required=True)
    options = arguments.parse_args()
    base = ucd.BaseUnicode(options.unicode)
    source, nb_equivalences, nb_listes = source_cpp(base.version, Generateur(base))
    ecris_si_change(options.entete, entete_h(base.version, nb_equivalences, nb_listes))
    ecris_si_change(options.source, source)


if __name__ == "__main__":
    main()
