// From two shapes and the settings to the answer. Runs in the page for shapes of ordinary
// size and in a worker for large ones; `stage` is told what is being done.
import { Region } from './zelvan/index.js';

/** The corners of the boxes of all rings, x and y in turn. */
function cornersOf(shapes) {
  const corners = [];
  for (const ring of [...shapes.A, ...shapes.B].flat()) {
    // The corners of each ring's box stand for it; what is not a number stays one.
    let [x0, y0, x1, y1] = [ring[0], ring[1], ring[0], ring[1]];
    for (let i = 0; i < ring.length; i += 2) {
      x0 = Math.min(x0, ring[i]);
      y0 = Math.min(y0, ring[i + 1]);
      x1 = Math.max(x1, ring[i]);
      y1 = Math.max(y1, ring[i + 1]);
    }
    if (ring.length > 0) corners.push(x0, y0, x1, y1);
  }
  return corners;
}

/** The grid of both shapes, `doublings` times coarser by two than it must be. */
function gridOf(shapes, doublings) {
  const { x, y, step } = Region.gridCovering(cornersOf(shapes));
  const coarse = step * 2 ** doublings;
  return { x: Math.floor(x / coarse) * coarse, y: Math.floor(y / coarse) * coarse, step: coarse };
}

/** By how much thousandths of the shapes' longer extent grow or shrink the answer. */
export function distanceOf({ shapes, offset }) {
  if (offset === 0) return 0;
  const [low, high] = [[Infinity, Infinity], [-Infinity, -Infinity]];
  cornersOf(shapes).forEach((value, i) => {
    low[i % 2] = Math.min(low[i % 2], value);
    high[i % 2] = Math.max(high[i % 2], value);
  });
  return (Math.max(0, high[0] - low[0], high[1] - low[1]) * offset) / 1000;
}

/** The smallest angle of all triangles in degrees, which lies between the two longer sides. */
function smallestAngle({ positions, indices }) {
  let least = Infinity;
  for (let t = 0; t < indices.length; t += 3) {
    const [a, b, c] = [2 * indices[t], 2 * indices[t + 1], 2 * indices[t + 2]];
    const [ux, uy] = [positions[b] - positions[a], positions[b + 1] - positions[a + 1]];
    const [vx, vy] = [positions[c] - positions[a], positions[c + 1] - positions[a + 1]];
    const [wx, wy] = [vx - ux, vy - uy];
    const sides = [ux * ux + uy * uy, vx * vx + vy * vy, wx * wx + wy * wy];
    const shortest = Math.min(...sides);
    const dot = (sides[0] + sides[1] + sides[2]) / 2 - shortest;
    least = Math.min(least, Math.atan2(Math.abs(ux * vy - uy * vx), dot));
  }
  return least === Infinity ? null : (least * 180) / Math.PI;
}

/** The region of a shape: each polygon's by the fill rule, united. */
function regionOf(shape, options) {
  const regions = [];
  try {
    for (const rings of shape) regions.push(Region.from(rings, options));
    return Region.unite(regions);
  } finally {
    for (const region of regions) region.free();
  }
}

const NO_MESH = { positions: new Float64Array(0), indices: new Uint32Array(0), neighbours: new Int32Array(0) };

export function compute({ shapes, operation, fill, mesh, doublings, offset }, stage = () => {}) {
  const start = performance.now();
  const grid = gridOf(shapes, doublings);
  const regions = [];
  const keep = (region) => (regions.push(region), region);
  try {
    stage('Reading shape A');
    const a = keep(regionOf(shapes.A, { fill, grid }));
    stage('Reading shape B');
    const b = keep(regionOf(shapes.B, { fill, grid }));
    stage('Combining');
    let result = keep(a[operation](b));
    const distance = distanceOf({ shapes, offset });
    if (distance !== 0) {
      stage('Offsetting');
      result = keep(result.offset(distance));
    }
    const { step } = result.isEmpty ? grid : result.grid;
    const answer = { polygons: result.read(), counts: result.counts, area: result.area, step, distance, lost: result.lost };
    const combined = performance.now();
    const times = { combining: combined - start, cutting: null };
    if (mesh === 'none') return { ...answer, mesh: NO_MESH, angle: null, times };
    stage('Cutting into triangles');
    const triangles = result.triangulate({ delaunay: mesh === 'delaunay', neighbours: true, float64: true });
    times.cutting = performance.now() - combined;
    stage('Measuring');
    return { ...answer, mesh: triangles, angle: smallestAngle(triangles), times };
  } finally {
    for (const region of regions) region.free();
  }
}
