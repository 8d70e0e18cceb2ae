// Shapes as values: nothing here changes what it is given. A shape is the union of polygons;
// a polygon is the list of rings that bound it by the fill rule; a ring is a Float64Array of
// x and y in turn. The first polygon of a shape is the one that is drawn by hand.

/** A shape of rings that are drawn by hand, and of the polygons of a map. */
export const shapeOf = (rings = [], polygons = []) => [rings, ...polygons];

export function countVertices({ A, B }) {
  let count = 0;
  for (const polygon of [...A, ...B]) for (const ring of polygon) count += ring.length / 2;
  return count;
}

/** Does a polygon hold a point, by the even-odd rule? */
export function holds(polygon, x, y) {
  let inside = false;
  for (const ring of polygon) {
    for (let i = 0, j = ring.length - 2; i < ring.length; j = i, i += 2) {
      if (ring[i + 1] > y !== ring[j + 1] > y &&
          x < ring[i] + ((y - ring[i + 1]) / (ring[j + 1] - ring[i + 1])) * (ring[j] - ring[i])) inside = !inside;
    }
  }
  return inside;
}

/** With one more ring: of the polygon that it begins in, else of the one drawn by hand. */
export function withRing(shape, ring) {
  const home = Math.max(0, shape.findIndex((polygon) => holds(polygon, ring[0], ring[1])));
  return shape.map((polygon, i) => (i === home ? [...polygon, ring] : polygon));
}

/** With another ring at the place of ring `at`, all rings counted in a row; null removes it. */
export function withRingAt(shape, at, ring) {
  let number = -1;
  return shape.map((polygon) => polygon.flatMap((old) => {
    if (++number !== at) return [old];
    return ring ? [ring] : [];
  }));
}

export function moved(shape, dx, dy) {
  return shape.map((polygon) => polygon.map((ring) => ring.map((value, i) => value + (i % 2 === 0 ? dx : dy))));
}
