#!/bin/sh
# Compare l'interface binaire d'une bibliothèque construite à sa référence (abi/libnoyau.abi,
# écrite depuis la construction « dev »). Seuls les ajouts de fonctions et de variables
# passent ; tout autre changement (fonction retirée ou changée, disposition d'un type, vtable)
# échoue, sauf si le SONAME a changé avec lui.
# Usage : verifie-abi.sh BIBLIOTHEQUE [REFERENCE]
#         verifie-abi.sh --accepte BIBLIOTHEQUE [REFERENCE]   (réécrit la référence)
set -eu
racine=$(cd "$(dirname "$0")/.." && pwd)
accepte=false
if [ "${1:-}" = --accepte ]; then
    accepte=true
    shift
fi
bibliotheque=$1
reference=${2:-$racine/abi/libnoyau.abi}
suppressions=$racine/abi/etrangers.suppr

if [ ! -f "$bibliotheque" ]; then
    echo "bibliothèque introuvable : $bibliotheque" >&2
    exit 1
fi
if $accepte; then
    abidw --suppressions "$suppressions" --drop-undefined-syms --no-corpus-path \
        --no-comp-dir-path --no-show-locs --no-parameter-names --no-elf-needed \
        --out-file "$reference" "$bibliotheque"
    echo "référence réécrite : $reference"
    exit 0
fi

statut=0
abidiff --suppressions "$suppressions" --no-added-syms "$reference" "$bibliotheque" || statut=$?
if [ $((statut & 3)) -ne 0 ]; then
    echo "abidiff a échoué (statut $statut)" >&2
    exit 1
fi
if [ $((statut & 12)) -eq 0 ]; then
    exit 0
fi
soname_reference=$(sed -n "s/.* soname='\([^']*\)'.*/\1/p;q" "$reference")
soname=$(readelf -d "$bibliotheque" | sed -n 's/.*(SONAME).*\[\(.*\)\]/\1/p')
if [ -n "$soname" ] && [ "$soname" != "$soname_reference" ]; then
    echo "SONAME changé ($soname_reference -> $soname) : nouvelle interface, référence à réécrire"
    exit 0
fi
echo "interface binaire changée sans changement de SONAME (voir ci-dessus)" >&2
exit 1
