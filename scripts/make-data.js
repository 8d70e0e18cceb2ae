// Converts world-atlas to GeoJSON; see make-data.sh. Arguments: the TopoJSON
// file, the countries to write, the stitched polygons to write.
const fs = require('fs');
const topojson = require('topojson-client');
const [, , source, countriesFile, stitchedFile] = process.argv;

const world = JSON.parse(fs.readFileSync(source));

// Four decimals are eleven metres at the equator; the source's own step is
// larger. Neighbours that the rounding makes equal become one.
const round = (value) => Number(value.toFixed(4));
const same = (a, b) => a[0] === b[0] && a[1] === b[1];
const distinct = (points) => points.filter((p, i) => i === 0 || !same(p, points[i - 1]));
const roundRing = (ring) => distinct(ring.map((p) => p.map(round)));

// The source stitches rings together across the antimeridian, so that on a plane
// they run right across the world. Every such ring has a vertex on the meridian
// at each crossing. `runs` gives its stretches on one side, from meridian to
// meridian.
const jumps = (a, b) => Math.abs(a[0] - b[0]) > 180;
const isStitched = (ring) => ring.some((p, i) => i > 0 && jumps(ring[i - 1], p));
function runs(ring) {
  const open = ring.slice(1);
  const starts = open.map((p, i) => i).filter((i) => jumps(open.at(i - 1), open[i]));
  return starts.map((start, k) => {
    const end = starts[(k + 1) % starts.length];
    const length = ((end - start + open.length - 1) % open.length) + 1;
    const run = Array.from({ length }, (_, i) => open[(start + i) % open.length]);
    const before = open.at(start - 1);
    const after = open[end];
    if (Math.abs(before[0]) === 180) run.unshift([-before[0], before[1]]);
    if (Math.abs(after[0]) === 180) run.push([-after[0], after[1]]);
    return distinct(run);
  });
}

// A polygon into polygons that stay between -180 and 180. A ring that crosses
// once goes round the pole and is closed over it; what lies on the pole goes.
function cut(polygon) {
  if (!polygon.some(isStitched)) return [polygon];
  return polygon.flatMap((ring) => {
    if (ring.every((p) => Math.abs(p[1]) > 89.9)) return [];
    const parts = runs(ring);
    if (parts.length === 1) {
      const [run] = parts;
      const pole = Math.sign(run[0][1]) * 90;
      run.push([run.at(-1)[0], pole], [run[0][0], pole]);
    }
    return parts.map((run) => [distinct([...run, run[0]])]);
  });
}

const feature = (id, name, polygons) =>
  JSON.stringify({
    type: 'Feature',
    ...(id === undefined ? {} : { id }),
    properties: { name },
    geometry:
      polygons.length === 1
        ? { type: 'Polygon', coordinates: polygons[0] }
        : { type: 'MultiPolygon', coordinates: polygons },
  });

const countries = [];
const stitched = [];
for (const { id, properties, geometry } of topojson.feature(world, world.objects.countries)
  .features) {
  const polygons = (geometry.type === 'Polygon' ? [geometry.coordinates] : geometry.coordinates)
    .map((polygon) => polygon.map(roundRing));
  countries.push(feature(id, properties.name, polygons.flatMap(cut)));
  for (const polygon of polygons) {
    if (polygon.some(isStitched)) stitched.push(feature(id, properties.name, [polygon]));
  }
}

function write(file, lines) {
  fs.writeFileSync(file,
    `{"type":"FeatureCollection","features":[\n${lines.join(',\n')}\n]}\n`);
  console.log(`${file}: ${lines.length} features`);
}
write(countriesFile, countries);
write(stitchedFile, stitched);
