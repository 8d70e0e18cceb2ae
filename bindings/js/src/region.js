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

// Sets of rings in, a handle out, by any of the functions that make regions of rings. `place`
// is what is known of where the rings come from.
function makeRegion(sets, grid, make, place) {
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
    return wrap(numbersAt(result, 1)[0]);
  });
}

// Regions in the module's memory, as functions of several take them.
function writeHandles(regions, reserve) {
  const handles = Array.from(regions, handleOf);
  const list = reserve(4 * handles.length);
  numbersAt(list, handles.length).set(handles);
  return { list, count: handles.length };
}

// What an operation says; where its grid is too coarse, with the steps.
function checkOperation(status, regions) {
  if (status !== TOO_COARSE) return check(status);
  const { step } = Region.commonGrid(regions);
  const finest = Math.min(...regions.filter((region) => !region.isEmpty).map((region) => region.grid.step));
  return check(status, undefined, `: its step is ${step}, and the finest of the regions' is ${finest}`);
}

const INSIDE = Symbol('made by this module');
const wrap = (handle) => new Region(handle, INSIDE);

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
    return withMemory((reserve) => {
      const at = writeGrid(grid, reserve);
      const result = reserve(4);
      check(wasm.zelvan_region_on_grid(this.#alive(), at, result));
      return wrap(numbersAt(result, 1)[0]);
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

  triangulate({ delaunay = false, neighbours = false, origin = [0, 0], float64 = false } = {}) {
    return withMemory((reserve) => {
      const room = this.#countsInto(reserve);
      const { vertices, triangles } = readCounts(room);
      const xy = reserve(16 * vertices);
      const corners = reserve(12 * triangles);
      const across = neighbours ? reserve(12 * triangles) : 0;
      check(wasm.zelvan_region_read(this.#alive(), room, xy, 0, 0));
      check(wasm.zelvan_region_triangulate(this.#alive(), delaunay ? DELAUNAY : 0, room, corners, across));
      const from = origin === 'grid' ? [this.grid.x, this.grid.y] : origin;
      const mesh = {
        positions: positionsFrom(doublesAt(xy, 2 * vertices), from, float64 ? Float64Array : Float32Array),
        indices: numbersAt(corners, 3 * triangles).slice(),
        origin: [...from],
      };
      if (neighbours) mesh.neighbours = integersAt(across, 3 * triangles).slice();
      return mesh;
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

function positionsFrom(xy, [x, y], Positions) {
  const positions = new Positions(xy.length);
  for (let i = 0; i < xy.length; i += 2) {
    positions[i] = xy[i] - x;
    positions[i + 1] = xy[i + 1] - y;
  }
  return positions;
}
