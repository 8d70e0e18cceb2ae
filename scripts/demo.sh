#!/usr/bin/env bash
# Installs what is missing, builds the release, and cuts the countries of the
# world into triangles, and the countries of one continent united: pictures and
# meshes under out/.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/install-deps.sh

echo "== build"
cmake --preset release >/dev/null
cmake --build --preset release -j2 --target zelvan_tool

zelvan=build/release/zelvan
mkdir -p out

# Status 1 says that some input was refused or changed by the grid, and named; the rest is there.
run() { "$@" || [[ $? == 1 ]]; }

echo "== the world"
run "$zelvan" triangulate data/countries-50m.geojson --repair \
  -o out/world.svg -o out/world.obj

echo "== polygons that cross themselves, refused"
run "$zelvan" triangulate data/stitched-50m.geojson

echo "== the same, repaired"
run "$zelvan" triangulate data/stitched-50m.geojson --repair

echo "== the countries of South America as one outline"
run "$zelvan" union data/countries-50m.geojson --only "$(paste -sd, data/south-america.txt)" \
  -o out/south-america.svg -o out/south-america.geojson -o out/south-america.obj

echo
echo "The world, a picture: $PWD/out/world.svg"
echo "           a mesh:    $PWD/out/world.obj"
echo "South America:        $PWD/out/south-america.svg (.geojson, .obj)"
