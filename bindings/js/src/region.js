// Regions: sets of polygons with holes on a grid, immutable. Each object holds one handle
// of the module, which is given back by free(), by `using`, or by the garbage collector.
import {
  BAD_ARGUMENT, NOT_FINITE, OUTSIDE_GRID, ZelvanError, bytesAt, check, doublesAt, integersAt, numbersAt, wasm,
  withMemory,
} from './module.js';
import { writeRings } from './rings.js';
import { namesOf, polygonsOf, toGeometry } from './geojson.js';

const FILLS = ['even-odd', 'non-zero', 'positive', 'negative'];
const OPERATIONS = { unite: 0, intersect: 1, subtract: 2, xor: 3 };
const JOINS = ['round', 'miter', 'bevel'];
const DELAUNAY = 1;
const NEIGHBOURS = 2;
const BOUNDARY = 1;
const TOO_COARSE = 8;

const forgotten = new FinalizationRegistry((handle) => wasm.zelvan_region_release(handle));

function ruleOf(fill) {
  const rule = FILLS.indexOf(fill);
  if (rule < 0) throw new ZelvanError(BAD_ARGUMENT, `fill must be one of ${FILLS.join(', ')}.`);
  return rule;
}

// The default grid is that of the C interface, and stands for no grid at all.
function writeGrid(grid, reserve) {
  if (grid == null) return 0;
  const at = reserve(24);
  doublesAt(at, 3).set([grid.x, grid.y, grid.step]);
  return at;
}

function readGrid(at) {
  const [x, y, step] = doublesAt(at, 3);
  return { x, y, step };
}

function readCounts(at) {
  const [polygons, rings, vertices, triangles] = numbersAt(at, 4);
  return { polygons, rings, vertices, triangles };
}

function isCoordinateFault(status) {
  return status === NOT_FINITE || status === OUTSIDE_GRID;
}

// Sets of rings in, a pointer out, by any of the functions that take rings. `place` is what is
// known of where the rings come from.
function takeRings(sets, grid, make, place) {
  return withMemory((reserve) => {
    const written = sets.map((rings) => writeRings(rings, reserve));
    const gridAt = writeGrid(grid, reserve);
    const [result, fault] = [reserve(4), reserve(8)];
    const status = make(...written.flatMap(({ xy, offsets, count }) => [xy, offsets, count]), gridAt, result, fault);
    if (isCoordinateFault(status)) {
      const [ring, point] = numbersAt(fault, 2);
      check(status, { ...place, ring, point });
    }
    check(status);
    return numbersAt(result, 1)[0];
  });
}

function makeRegion(sets, grid, make, place) {
  return wrap(takeRings(sets, grid, make, place));
}

// Regions in the module's memory, as functions of several take them.
export function writeHandles(regions, reserve) {
  const handles = Array.from(regions, handleOf);
  const list = reserve(4 * handles.length);
  numbersAt(list, handles.length).set(handles);
  return { list, count: handles.length };
}

// What an operation says; where its grid is too coarse, with the steps.
export function checkOperation(status, regions) {
  if (status !== TOO_COARSE) return check(status);
  const { step } = Region.commonGrid(regions);
  const finest = Math.min(...regions.filter((region) => !region.isEmpty).map((region) => region.grid.step));
  return check(status, undefined, `: its step is ${step}, and the finest of the regions' is ${finest}`);
}

const INSIDE = Symbol('made by this module');
export const wrap = (handle) => new Region(handle, INSIDE);

let handleOf;  // of any argument; set inside the class, where handles can be seen

export class Region {
  #handle;

  constructor(handle, maker) {
    if (maker !== INSIDE) throw new TypeError('Make regions with Region.from and its like.');
    this.#handle = handle;
    forgotten.register(this, handle, this);
  }

  static from(rings, options) {
    return Region.#filled(rings, options);
  }

  static #filled(rings, { fill = 'even-odd', grid } = {}, place) {
    const rule = ruleOf(fill);
    return makeRegion([rings], grid, (xy, offsets, count, gridAt, result, fault) =>
      wasm.zelvan_region_create(xy, offsets, count, rule, gridAt, result, fault), place);
  }

  static uniteRings(rings, { grid } = {}) {
    return makeRegion([rings], grid, wasm.zelvan_region_unite_rings);
  }

  static combine(operation, a, b, { fillA = 'even-odd', fillB = 'even-odd', grid } = {}) {
    if (!Object.hasOwn(OPERATIONS, operation)) {
      throw new ZelvanError(BAD_ARGUMENT, `operation must be one of ${Object.keys(OPERATIONS).join(', ')}.`);
    }
    const [ruleA, ruleB] = [ruleOf(fillA), ruleOf(fillB)];
    return makeRegion([a, b], grid, (xyA, offsetsA, countA, xyB, offsetsB, countB, gridAt, result, fault) =>
      wasm.zelvan_rings_combine(OPERATIONS[operation], xyA, offsetsA, countA, ruleA, xyB, offsetsB, countB, ruleB,
        gridAt, result, fault));
  }

  static triangulateRings(rings, { fill = 'even-odd', grid, ...options } = {}) {
    const rule = ruleOf(fill);
    const wanted = (options.delaunay ? DELAUNAY : 0) | (options.neighbours ? NEIGHBOURS : 0);
    const mesh = takeRings([rings], grid, (xy, offsets, count, gridAt, result, fault) =>
      wasm.zelvan_rings_triangulate(xy, offsets, count, rule, gridAt, wanted, result, fault));
    try {
      const { vertices, triangles } = readCounts(mesh);
      const [xy, corners, across] = numbersAt(mesh + 16, 3);
      // Without a grid of its own, `origin: 'grid'` stands for the one that covers the rings.
      const own = () => grid ?? Region.gridCovering(Array.from(doublesAt(xy, 2 * vertices)));
      return meshFrom(doublesAt(xy, 2 * vertices), numbersAt(corners, 3 * triangles),
        options.neighbours && integersAt(across, 3 * triangles), options, own);
    } finally {
      wasm.zelvan_mesh_release(mesh);
    }
  }

  static empty() {
    return wrap(0);
  }

  static unite(regions) {
    const all = [...regions];
    return withMemory((reserve) => {
      const { list, count } = writeHandles(all, reserve);
      const result = reserve(4);
      checkOperation(wasm.zelvan_region_unite(list, count, result), all);
      return wrap(numbersAt(result, 1)[0]);
    });
  }

  static commonGrid(regions) {
    return withMemory((reserve) => {
      const { list, count } = writeHandles(regions, reserve);
      const grid = reserve(24);
      check(wasm.zelvan_grid_common(list, count, grid));
      return readGrid(grid);
    });
  }

  static fromGeoJSON(object, { grid, warn = console.warn } = {}) {
    const { polygons, leftOut } = polygonsOf(object);
    for (const name of namesOf(leftOut)) warn(name);
    const common = grid ?? Region.gridCovering(polygons.flatMap(({ rings }) => rings.flat()));
    const regions = [];
    try {
      for (const { rings, place } of polygons) regions.push(Region.#filled(rings, { grid: common }, place));
      return Region.unite(regions);
    } finally {
      for (const region of regions) region.free();
    }
  }

  static gridCovering(points) {
    return withMemory((reserve) => {
      const { xy, points: count } = writeRings([points], reserve);
      const grid = reserve(24);
      check(wasm.zelvan_grid_covering(xy, count, grid));
      return readGrid(grid);
    });
  }

  unite(other) { return this.#combined('unite', other); }
  intersect(other) { return this.#combined('intersect', other); }
  subtract(other) { return this.#combined('subtract', other); }
  xor(other) { return this.#combined('xor', other); }

  #combined(operation, other) {
    return withMemory((reserve) => {
      const result = reserve(4);
      const status =
        wasm.zelvan_region_combine(OPERATIONS[operation], this.#alive(), handleOf(other), result);
      checkOperation(status, [this, other]);
      return wrap(numbersAt(result, 1)[0]);
    });
  }

  offset(distance, { join = 'round', miterLimit = 2, tolerance = 0 } = {}) {
    if (!JOINS.includes(join)) throw new ZelvanError(BAD_ARGUMENT, `join must be one of ${JOINS.join(', ')}.`);
    return withMemory((reserve) => {
      const result = reserve(4);
      check(wasm.zelvan_region_offset(this.#alive(), distance, JOINS.indexOf(join), miterLimit, tolerance, result));
      return wrap(numbersAt(result, 1)[0]);
    });
  }

  onGrid(grid) {
    return this.#made((reserve, result) =>
      wasm.zelvan_region_on_grid(this.#alive(), writeGrid(grid, reserve), result));
  }

  part(polygon) {
    if (!Number.isInteger(polygon)) throw new ZelvanError(BAD_ARGUMENT, 'A polygon has a whole number.');
    return this.#made((_, result) => wasm.zelvan_region_polygon(this.#alive(), polygon, result));
  }

  get hull() {
    return this.#made((_, result) => wasm.zelvan_region_hull(this.#alive(), result));
  }

  transformed(matrix, { grid } = {}) {
    if (matrix.length !== 6) throw new ZelvanError(BAD_ARGUMENT, 'A matrix has 6 numbers.');
    return this.#made((reserve, result) => {
      const numbers = reserve(48);
      doublesAt(numbers, 6).set(matrix);
      return wasm.zelvan_region_transform(this.#alive(), numbers, writeGrid(grid, reserve), result);
    });
  }

  #made(make) {
    return withMemory((reserve) => {
      const result = reserve(4);
      check(make(reserve, result));
      return wrap(numbersAt(result, 1)[0]);
    });
  }

  intersects(other) { return this.#answers(wasm.zelvan_region_intersects, other); }
  touches(other) { return this.#answers(wasm.zelvan_region_touches, other); }
  covers(other) { return this.#answers(wasm.zelvan_region_covers, other); }

  #answers(question, other) {
    return withMemory((reserve) => {
      const answer = reserve(4);
      check(question(this.#alive(), handleOf(other), answer));
      return numbersAt(answer, 1)[0] === 1;
    });
  }

  distance(other) {
    return withMemory((reserve) => {
      const at = reserve(40);
      check(wasm.zelvan_region_distance(this.#alive(), handleOf(other), at, at + 8));
      const [distance, ax, ay, bx, by] = doublesAt(at, 5);
      return distance < Infinity ? { distance, places: [[ax, ay], [bx, by]] } : { distance, places: null };
    });
  }

  nearest(points, { boundary = false } = {}) {
    return withMemory((reserve) => {
      const isOne = Array.isArray(points) && typeof points[0] === 'number';
      const { xy, points: count } = writeRings([isOne ? [points] : points], reserve);
      const [places, distances] = [reserve(16 * count), reserve(8 * count)];
      const options = boundary ? BOUNDARY : 0;
      check(wasm.zelvan_region_nearest(this.#alive(), options, xy, count, places, distances));
      if (isOne) return { place: [...doublesAt(places, 2)], distance: doublesAt(distances, 1)[0] };
      return { places: doublesAt(places, 2 * count).slice(), distances: doublesAt(distances, count).slice() };
    });
  }

  get lost() {
    return wasm.zelvan_region_lost(this.#alive()) >>> 0;
  }

  equals(other) {
    return wasm.zelvan_region_equal(this.#alive(), handleOf(other)) === 1;
  }

  get counts() {
    return withMemory((reserve) => readCounts(this.#countsInto(reserve)));
  }

  get isEmpty() {
    return this.counts.polygons === 0;
  }

  get area() {
    return wasm.zelvan_region_area(this.#alive());
  }

  get grid() {
    return withMemory((reserve) => {
      const grid = reserve(24);
      wasm.zelvan_region_grid(this.#alive(), grid);
      return readGrid(grid);
    });
  }

  get bounds() {
    return withMemory((reserve) => {
      const box = reserve(32);
      return wasm.zelvan_region_bounds(this.#alive(), box) === 1 ? [...doublesAt(box, 4)] : null;
    });
  }

  get length() {
    return wasm.zelvan_region_length(this.#alive());
  }

  get centroid() {
    return withMemory((reserve) => {
      const xy = reserve(16);
      return wasm.zelvan_region_centroid(this.#alive(), xy) === 1 ? [...doublesAt(xy, 2)] : null;
    });
  }

  get leastBox() {
    return withMemory((reserve) => {
      const corners = reserve(64);
      check(wasm.zelvan_region_least_box(this.#alive(), corners));
      const xy = doublesAt(corners, 8);
      return this.isEmpty ? null : [0, 2, 4, 6].map((i) => [xy[i], xy[i + 1]]);
    });
  }

  *[Symbol.iterator]() {
    const { positions, ringOffsets, polygonOffsets } = this.read();
    const ring = (i) => positions.subarray(2 * ringOffsets[i], 2 * ringOffsets[i + 1]);
    for (let p = 0; p + 1 < polygonOffsets.length; ++p) {
      const holes = [];
      for (let i = polygonOffsets[p] + 1; i < polygonOffsets[p + 1]; ++i) holes.push(ring(i));
      yield { outer: ring(polygonOffsets[p]), holes };
    }
  }

  contains(points) {
    const side = this.side(points);
    return typeof side === 'number' ? side >= 0 : Array.from(side, (one) => one >= 0);
  }

  prepare() {
    check(wasm.zelvan_region_prepare(this.#alive()));
  }

  side(points) {
    return withMemory((reserve) => {
      const isOne = Array.isArray(points) && typeof points[0] === 'number';
      const { xy, points: count } = writeRings([isOne ? [points] : points], reserve);
      const sides = reserve(count);
      check(wasm.zelvan_region_contains(this.#alive(), xy, count, sides));
      return isOne ? bytesAt(sides, 1)[0] : bytesAt(sides, count).slice();
    });
  }

  read() {
    return withMemory((reserve) => {
      const room = this.#countsInto(reserve);
      const { polygons, rings, vertices } = readCounts(room);
      const [xy, ringOffsets, polygonOffsets] =
        [reserve(16 * vertices), reserve(4 * (rings + 1)), reserve(4 * (polygons + 1))];
      check(wasm.zelvan_region_read(this.#alive(), room, xy, ringOffsets, polygonOffsets));
      return {
        positions: doublesAt(xy, 2 * vertices).slice(),
        ringOffsets: numbersAt(ringOffsets, rings + 1).slice(),
        polygonOffsets: numbersAt(polygonOffsets, polygons + 1).slice(),
      };
    });
  }

  triangulate(options = {}) {
    return withMemory((reserve) => {
      const room = this.#countsInto(reserve);
      const { vertices, triangles } = readCounts(room);
      const xy = reserve(16 * vertices);
      const corners = reserve(12 * triangles);
      const across = options.neighbours ? reserve(12 * triangles) : 0;
      check(wasm.zelvan_region_read(this.#alive(), room, xy, 0, 0));
      check(wasm.zelvan_region_triangulate(this.#alive(), options.delaunay ? DELAUNAY : 0, room, corners, across));
      return meshFrom(doublesAt(xy, 2 * vertices), numbersAt(corners, 3 * triangles),
        options.neighbours && integersAt(across, 3 * triangles), options, () => this.grid);
    });
  }

  toGeoJSON() {
    return toGeometry(this.read());
  }

  toJSON() {
    return this.toGeoJSON();
  }

  free() {
    if (this.#handle === undefined) return;
    forgotten.unregister(this);
    wasm.zelvan_region_release(this.#handle);
    this.#handle = undefined;
  }

  #countsInto(reserve) {
    const room = reserve(16);
    wasm.zelvan_region_counts(this.#alive(), room);
    return room;
  }

  #alive() {
    if (this.#handle === undefined) throw new ZelvanError(BAD_ARGUMENT, 'The region has been freed.');
    return this.#handle;
  }

  static {
    handleOf = (region) => {
      if (!(#handle in Object(region))) throw new ZelvanError(BAD_ARGUMENT, 'A Region is expected.');
      return region.#alive();
    };
  }
}

// `using` looks this up; where the language does not know it yet, nothing is lost.
if (Symbol.dispose) Region.prototype[Symbol.dispose] = Region.prototype.free;

// A mesh of its own, from views into the module's memory, which asking for the grid may move.
function meshFrom(xy, corners, across, { origin = [0, 0], float64 = false }, grid) {
  const [positions, indices, neighbours] = [xy.slice(), corners.slice(), across && across.slice()];
  const { x, y } = origin === 'grid' ? grid() : { x: origin[0], y: origin[1] };
  const mesh = { positions: positionsFrom(positions, [x, y], float64 ? Float64Array : Float32Array), indices, origin: [x, y] };
  if (neighbours) mesh.neighbours = neighbours;
  return mesh;
}

function positionsFrom(xy, [x, y], Positions) {
  const positions = new Positions(xy.length);
  for (let i = 0; i < xy.length; i += 2) {
    positions[i] = xy[i] - x;
    positions[i + 1] = xy[i + 1] - y;
  }
  return positions;
}
