// Polygons out of files: GeoJSON and well-known text become rings, x and y in turn, without
// the point that closes them.

function ringOf(points) {
  const ring = [];
  for (const [x, y] of points) ring.push(x, y);
  const last = ring.length - 2;
  if (last > 0 && ring[0] === ring[last] && ring[1] === ring[last + 1]) ring.length = last;
  return ring;
}

function geoJsonRings(object) {
  switch (object?.type) {
    case 'Polygon': return object.coordinates.map(ringOf);
    case 'MultiPolygon': return object.coordinates.flat().map(ringOf);
    case 'GeometryCollection': return object.geometries.flatMap(geoJsonRings);
    case 'Feature': return object.geometry ? geoJsonRings(object.geometry) : [];
    case 'FeatureCollection': return object.features.flatMap(geoJsonRings);
    default: return [];
  }
}

// Every list of points inside of POLYGON or MULTIPOLYGON; other geometries are passed over.
function wktRings(text) {
  const rings = [];
  for (const { index } of text.matchAll(/POLYGON(?!\s*[ZM]*\s*EMPTY)/gi)) {
    const next = /[()]/g;
    next.lastIndex = index;
    let depth = 0;
    let opened = 0;
    do {
      const bracket = next.exec(text);
      if (!bracket) throw new Error('a bracket is not closed');
      if (bracket[0] === '(') opened = bracket.index + 1;
      else if (opened > 0) rings.push(listRing(text.slice(opened, bracket.index)));
      if (bracket[0] === ')') opened = 0;
      depth += bracket[0] === '(' ? 1 : -1;
    } while (depth > 0);
  }
  return rings;
}

function listRing(list) {
  return ringOf(list.split(',').map((point) => point.trim().split(/\s+/).map(Number)));
}

/** The rings of a file's polygons. Throws an Error that says what is wrong with it. */
export function readRings(name, text) {
  const isJson = /^\s*[[{]/.test(text);
  let rings;
  try {
    rings = isJson ? geoJsonRings(JSON.parse(text)) : wktRings(text);
  } catch (error) {
    const reason = error instanceof TypeError ? 'its coordinates are not those of polygons' : error.message;
    throw new Error(`${name} cannot be read: ${reason}`);
  }
  if (rings.length === 0) {
    throw new Error(`${name} holds no polygons. GeoJSON and WKT files with polygons can be read.`);
  }
  return rings.map((ring) => Float64Array.from(ring));
}
