#!/usr/bin/env bash
# Installs the Debian packages that tyx builds and tests with, when any is missing.
set -euo pipefail

packages=(flex bison rapidjson-dev libtinyxml2-dev libtbb-dev libgtest-dev libbenchmark-dev
          cmake ninja-build g++ clang libclang-rt-14-dev
          libgdal-dev) # GDAL: the tools in tools/ read and write rasters with it

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
if [ "$(id -u)" -eq 0 ]; then
  sudo=""
else
  sudo="sudo"
fi
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
