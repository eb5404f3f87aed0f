#!/bin/sh
# Compare l'interface binaire de la bibliothèque installée à la référence abi/libnoyau.abi.
# Un ajout passe ; un changement incompatible échoue, sauf si le SONAME a changé avec lui.
# Usage : verifie-abi.sh PREFIXE          (vérifie)
#         verifie-abi.sh PREFIXE --accepte (réécrit la référence, à valider avec le changement)
set -eu
racine=$(cd "$(dirname "$0")/.." && pwd)
prefixe=$1
bibliotheque=$prefixe/lib/libnoyau.so.1
reference=$racine/abi/libnoyau.abi
suppressions=$racine/abi/etrangers.suppr
options="--suppressions $suppressions --drop-private-types"

if [ "${2:-}" = --accepte ]; then
    # shellcheck disable=SC2086
    abidw $options --headers-dir "$prefixe/include" --drop-undefined-syms --no-corpus-path \
        --no-comp-dir-path --no-show-locs --no-parameter-names --no-elf-needed \
        --out-file "$reference" "$bibliotheque"
    echo "référence réécrite : $reference"
    exit 0
fi

soname_reference=$(sed -n "s/.* soname='\([^']*\)'.*/\1/p;q" "$reference")
soname=$(readelf -d "$bibliotheque" | sed -n 's/.*(SONAME).*\[\(.*\)\]/\1/p')
if [ "$soname" != "$soname_reference" ]; then
    echo "SONAME changé ($soname_reference -> $soname) : nouvelle interface, la référence est à réécrire"
    exit 0
fi

statut=0
# shellcheck disable=SC2086
abidiff $options --headers-dir2 "$prefixe/include" "$reference" "$bibliotheque" || statut=$?
if [ $((statut & 8)) -ne 0 ]; then
    echo "changement incompatible de l'interface binaire sans changement de SONAME" >&2
    exit 1
fi
if [ $((statut & 3)) -ne 0 ]; then
    echo "abidiff a échoué (statut $statut)" >&2
    exit 1
fi
[ $((statut & 4)) -eq 0 ] || echo "interface changée de façon compatible (ajouts)"
exit 0
