#!/bin/sh
# Construit le projet client tests/consommateurs contre le paquet installé, comme un programme
# de la suite le ferait, puis l'exécute.
# Usage : verifie-consommateurs.sh PREFIXE cmake|pkg-config COMPILATEUR NIVEAU DOSSIER
set -eu
racine=$(cd "$(dirname "$0")/.." && pwd)
prefixe=$1 methode=$2 compilateur=$3 niveau=$4 dossier=$5
source=$racine/tests/consommateurs
lanceur=$(command -v ccache || true)

rm -rf "$dossier"
mkdir -p "$dossier"
case $methode in
cmake)
    cmake -S "$source" -B "$dossier" -G Ninja -DCMAKE_PREFIX_PATH="$prefixe" \
        -DCMAKE_CXX_COMPILER="$compilateur" -DCMAKE_CXX_FLAGS="$niveau" \
        -DCMAKE_CXX_COMPILER_LAUNCHER="$lanceur" >/dev/null
    cmake --build "$dossier"
    ;;
pkg-config)
    PKG_CONFIG_PATH=$(dirname "$(find "$prefixe" -name noyau.pc | head -n 1)")
    export PKG_CONFIG_PATH
    # Un fichier par appel, pour que ccache serve les constructions suivantes.
    for fichier in "$source"/*.cpp; do
        # shellcheck disable=SC2046
        $lanceur "$compilateur" -std=c++17 "$niveau" -Wall -Wextra $(pkg-config --cflags noyau) \
            -c "$fichier" -o "$dossier/$(basename "$fichier" .cpp).o"
    done
    # shellcheck disable=SC2046
    "$compilateur" "$dossier"/*.o $(pkg-config --libs noyau) \
        -Wl,-rpath,"$(pkg-config --variable=libdir noyau)" \
        -o "$dossier/consommateur"
    ;;
*)
    echo "méthode inconnue : $methode" >&2
    exit 2
    ;;
esac
"$dossier/consommateur"
