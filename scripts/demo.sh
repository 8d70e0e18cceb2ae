#!/usr/bin/env bash
# Installs what is missing, builds the release, and cuts the countries of the
# world into triangles: a picture and a mesh under out/.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/install-deps.sh

echo "== build"
cmake --preset release >/dev/null
cmake --build --preset release -j2 --target zelvan_tool

zelvan=build/release/zelvan
mkdir -p out

# Status 1 says that some input was refused, and named; the rest is there.
run() { "$@" || [[ $? == 1 ]]; }

echo "== the world"
run "$zelvan" triangulate data/countries-50m.geojson --repair \
  -o out/world.svg -o out/world.obj

echo "== polygons that cross themselves, refused"
run "$zelvan" triangulate data/stitched-50m.geojson

echo
echo "Picture: $PWD/out/world.svg"
echo "Mesh:    $PWD/out/world.obj"
