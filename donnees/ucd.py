"""Lecture des fichiers de la base de caractères Unicode (paquet Debian unicode-data).

Seul le plan multilingue de base (U+0000..U+FFFF) nous intéresse : les tables de
la bibliothèque sont indexées par unité de code UTF-16.
"""

import os
import re

NB_UNITES = 0x10000


class Caractere:
    """Ce que UnicodeData.txt dit d'une unité de code."""

    __slots__ = ("code", "nom", "categorie", "classe_combinaison", "decomposition",
                 "etiquette", "majuscule", "minuscule")

    def __init__(self, code, nom="", categorie="Cn"):
        self.code = code
        self.nom = nom
        self.categorie = categorie
        self.classe_combinaison = 0
        self.decomposition = ()      # unités de la décomposition (canonique ou de compatibilité)
        self.etiquette = None        # None pour une décomposition canonique, sinon "<super>", ...
        self.majuscule = None
        self.minuscule = None


class BaseUnicode:
    def __init__(self, repertoire):
        self.repertoire = repertoire
        self.version = self._lis_version()
        self.caracteres = [Caractere(c) for c in range(NB_UNITES)]
        self._lis_unicode_data()
        self.proprietes = self._lis_proprietes("PropList.txt")
        self.proprietes.update(self._lis_proprietes("DerivedCoreProperties.txt"))
        self.ecritures = self._lis_valeurs("Scripts.txt")
        normalisation = self._lis_lignes("DerivedNormalizationProps.txt")
        self.nfc_qc = {}
        self.exclusion_totale = set()
        for debut, fin, champs in normalisation:
            if champs[0] == "NFC_QC":
                for c in range(debut, fin + 1):
                    self.nfc_qc[c] = champs[1]
            elif champs[0] == "Full_Composition_Exclusion":
                self.exclusion_totale.update(range(debut, fin + 1))

    # -- lecture ------------------------------------------------------------
    def _chemin(self, nom):
        return os.path.join(self.repertoire, nom)

    def _lis_version(self):
        # La version figure dans l'en-tête de DerivedAge.txt : « DerivedAge-15.0.0.txt ».
        with open(self._chemin("DerivedAge.txt"), encoding="utf-8") as f:
            for ligne in f:
                m = re.search(r"DerivedAge-(\d+\.\d+\.\d+)\.txt", ligne)
                if m:
                    return m.group(1)
        raise SystemExit("version Unicode introuvable dans DerivedAge.txt")

    def _lis_lignes(self, nom):
        """Lignes « début..fin ; champ ; champ » limitées au plan de base."""
        resultat = []
        with open(self._chemin(nom), encoding="utf-8") as f:
            for ligne in f:
                ligne = ligne.split("#", 1)[0].strip()
                if not ligne:
                    continue
                champs = [c.strip() for c in ligne.split(";")]
                bornes = champs[0].split("..")
                debut = int(bornes[0], 16)
                fin = int(bornes[-1], 16)
                if debut >= NB_UNITES:
                    continue
                resultat.append((debut, min(fin, NB_UNITES - 1), champs[1:]))
        return resultat

    def _lis_proprietes(self, nom):
        proprietes = {}
        for debut, fin, champs in self._lis_lignes(nom):
            proprietes.setdefault(champs[0], set()).update(range(debut, fin + 1))
        return proprietes

    def _lis_valeurs(self, nom):
        valeurs = {}
        for debut, fin, champs in self._lis_lignes(nom):
            for c in range(debut, fin + 1):
                valeurs[c] = champs[0]
        return valeurs

    def _lis_unicode_data(self):
        debut_plage = None
        with open(self._chemin("UnicodeData.txt"), encoding="utf-8") as f:
            for ligne in f:
                champs = ligne.rstrip("\n").split(";")
                code = int(champs[0], 16)
                if code >= NB_UNITES:
                    break
                nom = champs[1]
                if nom.endswith(", First>"):
                    debut_plage = code
                    continue
                if nom.endswith(", Last>"):
                    # Plage (idéogrammes, syllabes hangûl, demi-codets, usage privé).
                    for c in range(debut_plage, code + 1):
                        self.caracteres[c] = self._caractere(c, champs, nom[1:-7])
                    continue
                self.caracteres[code] = self._caractere(code, champs, nom)

    @staticmethod
    def _caractere(code, champs, nom):
        car = Caractere(code, nom, champs[2])
        car.classe_combinaison = int(champs[3])
        decomposition = champs[5].split()
        if decomposition and decomposition[0].startswith("<"):
            car.etiquette = decomposition.pop(0)
        car.decomposition = tuple(int(u, 16) for u in decomposition)
        if any(u >= NB_UNITES for u in car.decomposition):
            car.decomposition, car.etiquette = (), None
        if champs[12]:
            car.majuscule = int(champs[12], 16)
        if champs[13]:
            car.minuscule = int(champs[13], 16)
        return car

    # -- questions ----------------------------------------------------------
    def possede(self, propriete, code):
        return code in self.proprietes.get(propriete, ())

    def decomposition_canonique(self, code):
        """Décomposition canonique d'un pas, vide quand elle sort du plan de base
        (quelques idéogrammes de compatibilité) : nos tables ne la représentent pas."""
        car = self.caracteres[code]
        if car.etiquette is not None or any(u >= NB_UNITES for u in car.decomposition):
            return ()
        return car.decomposition

    def decomposition_canonique_complete(self, code):
        etape = self.decomposition_canonique(code)
        if not etape:
            return (code,)
        return self.decomposition_canonique_complete(etape[0]) + etape[1:]

