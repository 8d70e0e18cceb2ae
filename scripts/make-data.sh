#!/usr/bin/env bash
# Rebuilds data/countries-50m.geojson: the Natural Earth 1:50m countries from
# the npm package world-atlas, one feature per line, four decimals. Needs npm
# and node; the result is kept in the repository, so nothing else needs this.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT

cd "$work"
npm install --silent --no-fund --no-audit world-atlas@2.0.2 topojson-client@3.1.0 >/dev/null

node - "$root/data/countries-50m.geojson" <<'JS'
const fs = require('fs');
const topojson = require('topojson-client');
const world = JSON.parse(fs.readFileSync(require.resolve('world-atlas/countries-50m.json')));

// Four decimals are eleven metres at the equator; the source's own step is
// about five times that. Neighbours that the rounding makes equal become one.
const round = (value) => Number(value.toFixed(4));
const same = (a, b) => a[0] === b[0] && a[1] === b[1];
const ring = (points) =>
  points.map((p) => p.map(round)).filter((p, i, all) => i === 0 || !same(p, all[i - 1]));
const deep = (c, depth) => (depth === 0 ? ring(c) : c.map((inner) => deep(inner, depth - 1)));

const countries = topojson.feature(world, world.objects.countries).features;
const lines = countries.map(({ id, properties, geometry }) =>
  JSON.stringify({
    type: 'Feature',
    ...(id === undefined ? {} : { id }),
    properties: { name: properties.name },
    geometry: {
      type: geometry.type,
      coordinates: deep(geometry.coordinates, geometry.type === 'Polygon' ? 1 : 2),
    },
  }));
fs.writeFileSync(process.argv[2],
  '{"type":"FeatureCollection","features":[\n' + lines.join(',\n') + '\n]}\n');
console.log(`${process.argv[2]}: ${lines.length} countries`);
JS
