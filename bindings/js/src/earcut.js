// The calls of the earcut package, answered by Zelvan: coordinates in a row, the vertices
// at which holes begin, triangles as numbers of input vertices, counter-clockwise where y
// points up. The triangles are exact on a grid of 2^31 steps across the input. Where
// edges cross there is no vertex to name: such a corner goes to the input vertex nearest to it.
import {
  BAD_ARGUMENT, NOT_FINITE, ZelvanError, check, doublesAt, integersAt, numbersAt, wasm, withMemory,
} from './module.js';

export { refine } from './refine.js';

const EVEN_ODD = 0;
const POSITIVE = 2;
// Corners that were moved may make edges cross again; what is left then is left out.
const ROUNDS = 8;

// Twice the area of the vertices from begin to end, positive counter-clockwise.
function doubleArea(vertices, begin, end, dim) {
  let sum = 0;
  for (let i = begin, last = end - 1; i < end; last = i++) {
    const [a, b] = [last * dim, i * dim];
    sum += vertices[a] * vertices[b + 1] - vertices[b] * vertices[a + 1];
  }
  return sum;
}

function ringStarts(vertices, holes, dim) {
  const starts = [0, ...Array.from(holes ?? []), Math.floor(vertices.length / dim)];
  if (starts.some((start, i) => !(Number.isInteger(start) && start >= (starts[i - 1] ?? 0)))) {
    throw new ZelvanError(BAD_ARGUMENT, 'holes must be ascending numbers of vertices.');
  }
  return starts;
}

// Outer rings go in counter-clockwise, holes clockwise: where holes overlap or leave the
// polygon, the positive rule takes their union away. @return for each point that is written
// the vertex that it was
function writeRings(vertices, starts, dim, xy) {
  const originals = new Uint32Array(starts.at(-1));
  for (let ring = 0; ring + 1 < starts.length; ++ring) {
    const [begin, end] = [starts[ring], starts[ring + 1]];
    const isTurned = starts.length > 2 && doubleArea(vertices, begin, end, dim) > 0 !== (ring === 0);
    for (let i = begin; i < end; ++i) {
      const original = isTurned ? begin + end - 1 - i : i;
      originals[i] = original;
      xy[2 * i] = vertices[dim * original];
      xy[2 * i + 1] = vertices[dim * original + 1];
    }
  }
  return originals;
}

// The region of the points of rings, which is taken back when `use` is done with it.
function withRegion(xy, offsets, rings, rule, grid, reserve, use) {
  const result = reserve(4);
  const status = wasm.zelvan_region_create(xy, offsets, rings, rule, grid, result, 0);
  if (status === NOT_FINITE) return [];
  check(status);
  const region = numbersAt(result, 1)[0];
  try {
    return use(region);
  } finally {
    wasm.zelvan_region_release(region);
  }
}

// The triangles of a region as numbers of the points that it was made of.
function trianglesOf(region, input, reserve, round = 1) {
  const room = reserve(16);
  wasm.zelvan_region_counts(region, room);
  const [, rings, vertices, triangles] = numbersAt(room, 4);
  const [places, offsets, numbers, grid, crossings] =
    [reserve(16 * vertices), reserve(4 * (rings + 1)), reserve(4 * vertices), reserve(24), reserve(4)];
  wasm.zelvan_region_grid(region, grid);
  check(wasm.zelvan_region_read(region, room, places, offsets, 0));
  check(wasm.zelvan_input_vertices(
    input.xy, input.originals.length, grid, places, vertices, numbers, crossings));
  if (numbersAt(crossings, 1)[0] > 0 && round < ROUNDS) {
    moveCrossings(doublesAt(places, 2 * vertices), integersAt(numbers, vertices), doublesAt(input.xy, 2 * input.originals.length));
    return withRegion(places, offsets, rings, POSITIVE, grid, reserve, (next) =>
      trianglesOf(next, input, reserve, round + 1));
  }
  const corners = reserve(12 * triangles);
  check(wasm.zelvan_region_triangulate(region, 0, room, corners, 0));
  return named(numbersAt(corners, 3 * triangles), integersAt(numbers, vertices), input.originals);
}

function moveCrossings(places, numbers, xy) {
  numbers.forEach((number, i) => {
    if (number < 0) places.set(xy.subarray(2 * ~number, 2 * ~number + 2), 2 * i);
  });
}

function named(corners, numbers, originals) {
  const indices = new Array(corners.length);
  let length = 0;
  for (let i = 0; i < corners.length; i += 3) {
    const [a, b, c] = [numbers[corners[i]], numbers[corners[i + 1]], numbers[corners[i + 2]]];
    if (a < 0 || b < 0 || c < 0) continue;
    indices[length++] = originals[a];
    indices[length++] = originals[b];
    indices[length++] = originals[c];
  }
  indices.length = length;
  return indices;
}

export default function earcut(vertices, holes, dim = 2) {
  const starts = ringStarts(vertices, holes, dim);
  return withMemory((reserve) => {
    const xy = reserve(16 * starts.at(-1));
    const offsets = reserve(4 * starts.length);
    const originals = writeRings(vertices, starts, dim, doublesAt(xy, 2 * starts.at(-1)));
    numbersAt(offsets, starts.length).set(starts);
    const rule = starts.length > 2 ? POSITIVE : EVEN_ODD;
    return withRegion(xy, offsets, starts.length - 1, rule, 0, reserve, (region) =>
      trianglesOf(region, { xy, originals }, reserve));
  });
}

/** Rings of points, the outer one first, as the arguments of `earcut`. */
export function flatten(rings) {
  const dimensions = rings[0][0].length;
  const holes = [];
  let count = 0;
  for (const ring of rings) {
    if (count > 0) holes.push(count);
    count += ring.length;
  }
  return { vertices: rings.flat(2), holes, dimensions };
}

/** By how much the area of triangles differs from the polygon's, as a part of the latter. */
export function deviation(vertices, holes, dim, triangles) {
  const starts = ringStarts(vertices, holes, dim);
  let area = 0;
  for (let ring = 0; ring + 1 < starts.length; ++ring) {
    const ringArea = Math.abs(doubleArea(vertices, starts[ring], starts[ring + 1], dim));
    area += ring === 0 ? ringArea : -ringArea;
  }
  let covered = 0;
  for (let i = 0; i < triangles.length; i += 3) {
    const corners = [0, 1, 2].flatMap((k) => [vertices[triangles[i + k] * dim], vertices[triangles[i + k] * dim + 1]]);
    covered += Math.abs(doubleArea(corners, 0, 3, 2));
  }
  return area === 0 && covered === 0 ? 0 : Math.abs((covered - area) / area);
}
