#!/usr/bin/env bash
# Rebuilds the maps in data/ from the npm package world-atlas (Natural Earth
# 1:50m countries). Needs node and npm; the result is kept in the repository, so
# nothing else needs them.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT

cp "$root/scripts/make-data.js" "$work"
cd "$work"
npm install --silent --no-fund --no-audit world-atlas@2.0.2 topojson-client@3.1.0 >/dev/null
node make-data.js node_modules/world-atlas/countries-50m.json \
  "$root/data/countries-50m.geojson" "$root/data/stitched-50m.geojson"
