// GeoJSON in and out. Of each polygon its rings are taken as they stand, whichever way they
// run; what is not a polygon is passed over, as a map's points and lines are.
import { BAD_ARGUMENT, ZelvanError } from './module.js';

/** The polygons of an object, each an array of rings. */
export function polygonsOf(object) {
  switch (object?.type) {
    case 'Polygon': return [object.coordinates];
    case 'MultiPolygon': return object.coordinates;
    case 'GeometryCollection': return object.geometries.flatMap(polygonsOf);
    case 'Feature': return object.geometry ? polygonsOf(object.geometry) : [];
    case 'FeatureCollection': return object.features.flatMap(polygonsOf);
    case 'Point': case 'MultiPoint': case 'LineString': case 'MultiLineString': return [];
    default: throw new ZelvanError(BAD_ARGUMENT, 'This is no GeoJSON object.');
  }
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
