"""Écriture des sources produites."""

import os


def ecris_si_change(chemin, texte):
    """N'écrit que si le contenu change, pour ne pas relancer la compilation."""
    try:
        with open(chemin, encoding="utf-8") as f:
            if f.read() == texte:
                return
    except FileNotFoundError:
        pass
    os.makedirs(os.path.dirname(os.path.abspath(chemin)), exist_ok=True)
    with open(chemin, "w", encoding="utf-8") as f:
        f.write(texte)


def tableau_cpp(valeurs, forme, par_ligne=12):
    """Les valeurs d'un tableau C++, `par_ligne` par ligne."""
    lignes = []
    for i in range(0, len(valeurs), par_ligne):
        lignes.append("    " + ", ".join(forme % v for v in valeurs[i:i + par_ligne]) + ",")
    return "\n".join(lignes)
