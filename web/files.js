// Polygons out of files: GeoJSON and well-known text become lists of rings, x and y in turn,
// without the point that closes them. A coordinate that is no finite number is refused with
// its place; what is no polygon is left out, and told.

// An error in a file's content, told by the feature, polygon, ring and point at fault.
class Refusal extends Error {}

const inWords = (value) => (value === undefined ? 'is missing' : `is ${JSON.stringify(value).slice(0, 40)}, which is no number`);

function ringOf(points, place) {
  if (!Array.isArray(points)) throw new Refusal(`${place}: a list of points is expected`);
  const ring = new Float64Array(2 * points.length);
  points.forEach((point, i) => {
    for (const axis of [0, 1]) {
      const value = point?.[axis];
      const at = `${place}, point ${i + 1}: ${'xy'[axis]}`;
      if (typeof value !== 'number') throw new Refusal(`${at} ${inWords(value)}`);
      if (!Number.isFinite(value)) throw new Refusal(`${at} is no finite number`);
      ring[2 * i + axis] = value;
    }
  });
  const last = ring.length - 2;
  return last > 0 && ring[0] === ring[last] && ring[1] === ring[last + 1] ? ring.subarray(0, last) : ring;
}

/** Gathers what the features of one file hold. */
class Gatherer {
  polygons = [];
  leftOut = [];  // { what, feature }

  leave(what, feature) {
    this.leftOut.push({ what, feature });
  }

  polygon(rings, place, feature) {
    if (!Array.isArray(rings)) throw new Refusal(`${place}: a list of rings is expected`);
    if (rings.length === 0) this.leave('empty polygon', feature);
    else this.polygons.push(rings.map((points, i) => ringOf(points, `${place}, ring ${i + 1}`)));
  }

  /** Rings of one polygon or, one list deeper, of many. */
  coordinates(isMany, coordinates, feature) {
    if (!isMany) return this.polygon(coordinates, feature, feature);
    if (!Array.isArray(coordinates)) throw new Refusal(`${feature}: a list of polygons is expected`);
    if (coordinates.length === 0) return this.leave('empty polygon', feature);
    return coordinates.forEach((rings, i) =>
      this.polygon(rings, coordinates.length > 1 ? `${feature}, polygon ${i + 1}` : feature, feature));
  }
}

const WITHOUT_AREA = ['Point', 'MultiPoint', 'LineString', 'MultiLineString'];

function gatherGeometry(gatherer, geometry, feature) {
  const type = geometry?.type;
  if (geometry == null) {
    gatherer.leave('feature without geometry', feature);
  } else if (type === 'Polygon' || type === 'MultiPolygon') {
    gatherer.coordinates(type === 'MultiPolygon', geometry.coordinates, feature);
  } else if (type === 'GeometryCollection' && Array.isArray(geometry.geometries)) {
    for (const part of geometry.geometries) gatherGeometry(gatherer, part, feature);
  } else if (WITHOUT_AREA.includes(type)) {
    gatherer.leave(type, feature);
  } else {
    throw new Refusal(`${feature}: ${JSON.stringify(type)} is no geometry of GeoJSON`);
  }
}

function labelOf(feature, number) {
  const { name, NAME, Name, title, id } = feature?.properties ?? {};
  const called = name ?? NAME ?? Name ?? title ?? id ?? feature?.id;
  return `feature ${number}${called == null || typeof called === 'object' ? '' : ` "${called}"`}`;
}

function gatherGeoJson(gatherer, text) {
  const object = JSON.parse(text);
  if (object?.type === 'Topology') throw new Refusal('it is TopoJSON, not GeoJSON');
  if (typeof object?.type !== 'string') throw new Refusal('it is JSON, but no GeoJSON: it has no type');
  if (object.type === 'FeatureCollection' && !Array.isArray(object.features)) throw new Refusal('its features are missing');
  const alone = object.type === 'Feature' ? object : { geometry: object };
  const features = object.type === 'FeatureCollection' ? object.features : [alone];
  features.forEach((feature, i) => gatherGeometry(gatherer, feature?.geometry, labelOf(feature, i + 1)));
}

// Where the bracket that opens at a place of the text is closed.
function closingBracket(text, from, feature) {
  const brackets = /[()]/g;
  brackets.lastIndex = from;
  let depth = 0;
  do {
    const bracket = brackets.exec(text);
    if (!bracket) throw new Refusal(`${feature}: a bracket is not closed`);
    depth += bracket[0] === '(' ? 1 : -1;
  } while (depth > 0);
  return brackets.lastIndex;
}

// Nested brackets as the arrays that GeoJSON has.
function nestedPoints(text) {
  const isNested = /^\s*\(/.test(text);
  if (!isNested && !/^\s*EMPTY\b/i.test(text)) {
    return text.split(',').map((point) => point.trim().split(/\s+/).map((word) => (word === '' ? undefined : numberOf(word))));
  }
  const parts = [];
  for (let at = text.indexOf('('); at >= 0; at = text.indexOf('(', at)) {
    const end = closingBracket(text, at, '');
    parts.push(nestedPoints(text.slice(at + 1, end - 1)));
    at = end;
  }
  return parts;
}

// What is no number stays a word, which is told.
function numberOf(word) {
  const value = Number(word);
  return Number.isNaN(value) ? word : value;
}

// Every word with a bracket or EMPTY behind it is a geometry, whatever stands between them.
function gatherWkt(gatherer, text, parent) {
  const word = /\b([A-Z]{1,30}?)\s*(?:(?:ZM|Z|M)\s*)?(?:(\()|\bEMPTY\b)/gi;
  let number = 0;
  for (let match = word.exec(text); match; match = word.exec(text)) {
    const feature = parent ?? `feature ${++number}`;
    const type = match[1].toUpperCase();
    const begin = match[2] ? word.lastIndex - 1 : word.lastIndex;
    const end = match[2] ? closingBracket(text, begin, feature) : begin;
    const inside = text.slice(begin + 1, end - 1);
    if (type === 'POLYGON' || type === 'MULTIPOLYGON') {
      gatherer.coordinates(type === 'MULTIPOLYGON', match[2] ? nestedPoints(inside) : [], feature);
    } else if (type === 'GEOMETRYCOLLECTION') {
      gatherWkt(gatherer, inside, feature);
    } else {
      gatherer.leave(type, feature);
    }
    word.lastIndex = end;
  }
}

/** The polygons of a file, each a list of rings, and what was left out. Throws an Error that
 * says what is wrong with it. */
export function readPolygons(name, text) {
  const gatherer = new Gatherer();
  try {
    if (/^\s*[[{]/.test(text)) gatherGeoJson(gatherer, text);
    else gatherWkt(gatherer, text);
  } catch (error) {
    const reason = error instanceof RangeError ? 'it nests too deeply' : error.message;
    throw new Error(`${name} cannot be read: ${reason}`);
  }
  const { polygons, leftOut } = gatherer;
  const losses = lossesInWords(leftOut);
  if (polygons.length === 0) {
    const instead = losses ? ` It has: ${losses}.` : '';
    throw new Error(`${name} holds no polygons.${instead} GeoJSON and WKT files with polygons can be read.`);
  }
  return { polygons, leftOut: losses && `${name}: left out, being no polygons: ${losses}.` };
}

// "2 Point (feature 3, feature 7)"; of many the first are named.
function lossesInWords(leftOut) {
  const places = Map.groupBy(leftOut, ({ what }) => what);
  return [...places].map(([what, of]) => {
    const named = of.slice(0, 3).map(({ feature }) => feature);
    return `${of.length} ${what} (${named.join(', ')}${of.length > 3 ? ', …' : ''})`;
  }).join('; ');
}
