#!/usr/bin/env bash
# Builds the page into build/web and serves it on the loopback address until it is
# stopped: scripts/web.sh [PORT]. With --build it only builds.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
scripts/setup-wasm.sh

echo "== build"
cmake --preset wasm >/dev/null
cmake --build --preset wasm -j2 --target zelvan_npm

site=build/web
mkdir -p "$site/zelvan" "$site/data"
cp web/* "$site"
cp build/wasm/npm/*.js "$site/zelvan"

# The features of some countries; one stands on each line.
{
  echo '{"type":"FeatureCollection","features":['
  grep -E "\"name\":\"($(paste -sd'|' data/south-america.txt))\"" data/countries-50m.geojson |
    sed '$ s/,$//'
  echo ']}'
} >"$site/data/south-america.geojson"

[[ "${1:-}" != --build ]] || exit 0
port="${1:-8080}"
echo "The page: http://127.0.0.1:$port/"
exec python3 -m http.server "$port" --bind 127.0.0.1 --directory "$site"
