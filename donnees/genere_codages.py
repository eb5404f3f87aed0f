#!/usr/bin/env python3
"""Génère les tables octet → UTF-16 des codages à un octet : Mac OS Roman, ISO 8859-15,
Windows-1252 (les cinq octets non attribués y valent « ? ») et IBM 850.

Sortie : TablesCodages.cpp (déclarations dans noyau/chaines/detail/TablesCodages.h).
"""

import argparse
import os
import sys

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

import codages  # noqa: E402
from sortie import ecris_si_change, tableau_cpp  # noqa: E402


def source_cpp():
    lignes = [
        "// Produit par donnees/genere_codages.py à partir des codecs de Python %d.%d : "
        "ne pas modifier." % sys.version_info[:2],
        "#include \"noyau/chaines/detail/TablesCodages.h\"",
        "",
        "namespace sdd::detail {",
        "",
    ]
    for nom, table in codages.tables().items():
        lignes.append("const char16_t gTable%s[256] = {" % nom)
        lignes.append(tableau_cpp(table, "0x%04X", 8))
        lignes += ["};", ""]
    lignes += ["}  // namespace sdd::detail", ""]
    return "\n".join(lignes)


def main():
    arguments = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    arguments.add_argument("--source", required=True)
    ecris_si_change(arguments.parse_args().source, source_cpp())


if __name__ == "__main__":
    main()
