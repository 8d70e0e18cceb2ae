#!/usr/bin/env bash
# Measures regions and the host program, and writes the tables into docs/PERFORMANCE.md. The
# maps come from the npm packages us-atlas and world-atlas, so node and npm are needed; they
# stay in build/bench-maps/.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

cmake --preset release -DZELVAN_BUILD_BENCHMARKS=ON >/dev/null
cmake --build --preset release -j2 --target bench_region zelvan_tool

maps=build/bench-maps
mkdir -p "$maps"
[[ -d "$maps/node_modules" ]] || npm install --prefix "$maps" --silent --no-fund --no-audit \
  world-atlas@2.0.2 us-atlas@3.0.1 topojson-client@3.1.0 >/dev/null
(cd "$maps" && node -e '
  const fs = require("fs");
  const topojson = require("topojson-client");
  for (const [source, layer, file] of [
    ["us-atlas/counties-10m.json", "counties", "counties.geojson"],
    ["world-atlas/countries-10m.json", "countries", "countries-10m.geojson"],
  ]) {
    const atlas = JSON.parse(fs.readFileSync("node_modules/" + source));
    fs.writeFileSync(file, JSON.stringify(topojson.feature(atlas, atlas.objects[layer])));
  }')

python3 bench/regions.py build/release "$maps" docs/PERFORMANCE.md
