#!/usr/bin/env bash
# Installe les paquets Debian dont Noyau a besoin pour se construire, se tester
# et se mesurer. Sans effet quand tout est déjà là (aucun apt-get update inutile).
set -euo pipefail

paquets=(
  build-essential cmake ninja-build ccache pkg-config
  qtbase5-dev qtbase5-dev-tools
  libicu-dev
  libboost-dev libboost-locale-dev libboost-thread-dev libboost-chrono-dev libboost-system-dev
  zlib1g-dev uuid-dev
  unicode-data gettext python3
  libgtest-dev libgmock-dev libbenchmark-dev
  libmarisa-dev wfrench
  clang libclang-rt-14-dev abigail-tools
  libxml2-dev libxslt1-dev libogg-dev libvorbis-dev
)

manquants=()
for p in "${paquets[@]}"; do
  etat=$(dpkg-query -W -f='${db:Status-Status}' "$p" 2>/dev/null || true)
  [ "$etat" = installed ] || manquants+=("$p")
done

if [ ${#manquants[@]} -eq 0 ]; then
  exit 0
fi

echo "Paquets à installer : ${manquants[*]}"
sudo_=""
[ "$(id -u)" -eq 0 ] || sudo_=sudo
export DEBIAN_FRONTEND=noninteractive
$sudo_ apt-get update -q
$sudo_ apt-get install -y -q --no-install-recommends "${manquants[@]}"
