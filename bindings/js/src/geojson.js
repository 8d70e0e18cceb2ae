// GeoJSON in and out. Of each polygon its rings are taken as they stand, whichever way they
// run. What bounds no region is left out and named; what is wrong is refused with its place.
import { BAD_ARGUMENT, NOT_FINITE, ZelvanError, check } from './module.js';

const WITHOUT_AREA = ['Point', 'MultiPoint', 'LineString', 'MultiLineString'];

function refuse(reason, place) {
  throw new ZelvanError(BAD_ARGUMENT, reason, place);
}

function listOf(value, name, place) {
  if (!Array.isArray(value)) refuse(`${name} must be an array.`, place);
  return value;
}

function checkRings(rings, place) {
  listOf(rings, 'The coordinates of a polygon', place).forEach((ring, r) => {
    listOf(ring, 'A ring', { ...place, ring: r });
    for (let i = 0; i < ring.length; ++i) {
      const isPoint = Number.isFinite(ring[i]?.[0]) && Number.isFinite(ring[i][1]);
      if (!isPoint) check(NOT_FINITE, { ...place, ring: r, point: i });
    }
  });
}

/** The polygons of an object: rings, each with the numbers of its feature and, in that, of
 * its polygon; and what was left out, with the numbers of the features. */
export function polygonsOf(object) {
  const [polygons, leftOut] = [[], []];

  function addGeometry(geometry, feature, polygon = 0) {
    const addPolygon = (rings) => {
      const place = { feature, polygon: polygon++ };
      checkRings(rings, place);
      polygons.push({ rings, place });
    };
    const type = geometry?.type;
    if (WITHOUT_AREA.includes(type)) leftOut.push({ feature, type });
    else if (type === 'Polygon') addPolygon(geometry.coordinates);
    else if (type === 'MultiPolygon') listOf(geometry.coordinates, 'The coordinates', { feature }).forEach(addPolygon);
    else if (type === 'GeometryCollection') {
      for (const part of listOf(geometry.geometries, 'The geometries', { feature })) {
        polygon = addGeometry(part, feature, polygon);
      }
    } else refuse(type ? `"${type}" is no geometry of GeoJSON.` : 'This is no GeoJSON object.', { feature });
    return polygon;
  }

  const features = object?.type === 'FeatureCollection' ? listOf(object.features, 'The features') : [object];
  features.forEach((part, feature) => {
    if (part?.type !== 'Feature') addGeometry(part, feature);
    else if (part.geometry != null) addGeometry(part.geometry, feature);
  });
  return { polygons, leftOut };
}

/** What was left out, in one sentence for each type of geometry. */
export function namesOf(leftOut) {
  const types = [...new Set(leftOut.map(({ type }) => type))];
  return types.map((type) => {
    const features = leftOut.filter((part) => part.type === type).map(({ feature }) => feature);
    const others = features.length > 1 ? ` and ${features.length - 1} more` : '';
    return `A ${type} bounds no region and is left out (feature ${features[0]}${others}).`;
  });
}

function closedRing(positions, begin, end) {
  const ring = [];
  for (let i = begin; i < end; ++i) ring.push([positions[2 * i], positions[2 * i + 1]]);
  ring.push([...ring[0]]);
  return ring;
}

/** A Polygon or a MultiPolygon of what Region.read gives. */
export function toGeometry({ positions, ringOffsets, polygonOffsets }) {
  const polygons = [];
  for (let p = 0; p + 1 < polygonOffsets.length; ++p) {
    const rings = [];
    for (let r = polygonOffsets[p]; r < polygonOffsets[p + 1]; ++r) {
      rings.push(closedRing(positions, ringOffsets[r], ringOffsets[r + 1]));
    }
    polygons.push(rings);
  }
  if (polygons.length === 1) return { type: 'Polygon', coordinates: polygons[0] };
  return { type: 'MultiPolygon', coordinates: polygons };
}
