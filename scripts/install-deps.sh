#!/usr/bin/env bash
# Installs the Debian packages that building and testing need, and only those
# that are missing; further packages may be named as arguments. With nothing missing
# it says nothing and touches no network.
set -euo pipefail

packages=(
  cmake ninja-build g++ pkg-config # build
  libgeos-dev libgdal-dev libcli11-dev nlohmann-json3-dev # host program
  libgtest-dev libeigen3-dev libboost-dev # tests
  libbenchmark-dev                 # benchmarks
  doxygen python3                  # API pages, Python package and examples
  python3-numpy python3-shapely    # what the Python package speaks with, for its tests
  clang-format                     # format check
)

packages+=("$@")

missing=()
for package in "${packages[@]}"; do
  status="$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)"
  [[ "$status" == installed ]] || missing+=("$package")
done
((${#missing[@]})) || exit 0

echo "Installing what is missing: ${missing[*]}"
if ! command -v apt-get >/dev/null; then
  echo "No apt-get here: please install the equivalents of these packages yourself." >&2
  exit 1
fi
as_root=()
((EUID == 0)) || as_root=(sudo)
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
  apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
echo "Installed."
