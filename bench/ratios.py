#!/usr/bin/env python3
"""Tableau des rapports temps Noyau / temps du pair, d'après la sortie JSON de Google
Benchmark. Une famille « F » réunit « F/Noyau » et ses pairs « F/<pair> » ; on compare
les médianes quand il y a des répétitions, sinon les temps bruts."""

import json
import sys


def temps(resultats):
    medianes = {}
    bruts = {}
    for r in resultats["benchmarks"]:
        nom = r.get("run_name", r["name"])
        if r.get("aggregate_name") == "median":
            medianes[nom] = r["real_time"]
        elif r.get("run_type", "iteration") == "iteration":
            bruts[nom] = r["real_time"]
    return medianes or bruts


def main(chemin):
    with open(chemin, encoding="utf-8") as f:
        t = temps(json.load(f))
    familles = {}
    for nom, valeur in t.items():
        famille, _, qui = nom.partition("/")
        familles.setdefault(famille, {})[qui] = valeur
    print("%-32s %-28s %12s %12s %8s" % ("famille", "pair", "Noyau (ns)", "pair (ns)", "rapport"))
    for famille, mesures in sorted(familles.items()):
        noyau = mesures.get("Noyau")
        if noyau is None:
            continue
        for pair, valeur in sorted(mesures.items()):
            if pair != "Noyau":
                print("%-32s %-28s %12.0f %12.0f %8.2f"
                      % (famille, pair, noyau, valeur, noyau / valeur))


if __name__ == "__main__":
    main(sys.argv[1])
