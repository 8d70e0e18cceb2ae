/// <reference lib="esnext.disposable" />

/** A point: x and y; what follows is ignored. */
export type Point = readonly number[];

/** A ring: points of x and y (what follows is ignored), or x and y in turn. */
export type Ring = readonly ArrayLike<number>[] | ArrayLike<number>;

/** Rings, or what `Region.read` gives. */
export type Rings =
  | readonly Ring[]
  | { readonly positions: Float64Array; readonly ringOffsets: Uint32Array };

/** By which rule rings bound a region: where the winding number is odd, not 0, above 0,
 * below 0. */
export type Fill = 'even-odd' | 'non-zero' | 'positive' | 'negative';

/** What lies in one or both of two sets of points, in both, in the first alone, in one alone. */
export type Operation = 'unite' | 'intersect' | 'subtract' | 'xor';

/** The points that vertices lie on: x + i * step, y + j * step, for i and j from 0 to
 * 2^31 - 1. `step` is a power of two, x and y are multiples of it. */
export interface Grid {
  readonly x: number;
  readonly y: number;
  readonly step: number;
}

export interface Counts {
  polygons: number;
  rings: number;
  vertices: number;
  triangles: number;
}

/** The polygons of a region: ring i owns the points from ringOffsets[i] to
 * ringOffsets[i + 1] - 1, polygon p the rings from polygonOffsets[p] on, the outer one
 * first. */
export interface Polygons {
  positions: Float64Array;
  ringOffsets: Uint32Array;
  polygonOffsets: Uint32Array;
}

export interface MeshOptions {
  /** The constrained Delaunay triangulation. */
  delaunay?: boolean;
  /** Give the triangles across the edges, too. */
  neighbours?: boolean;
  /** What is taken from each position, (0, 0) when left out. With 'grid' a Float32Array
   * holds the positions without rounding wherever they lie. */
  origin?: readonly [number, number] | 'grid';
  /** Positions as a Float64Array. */
  float64?: boolean;
}

export interface OffsetOptions {
  /** Around corners along an arc ('round', when left out), to where the edges' copies meet, or
   * straight across. */
  join?: 'round' | 'miter' | 'bevel';
  /** A miter's tip farther from its corner, in distances, is cut to a bevel; 2 when left out. */
  miterLimit?: number;
  /** How far arcs may be off; a 500th of the distance when left out, or 0. */
  tolerance?: number;
}

/** Triangles, counter-clockwise, ready for vertex and index buffers. The vertices are
 * numbered as `Region.read` gives them. */
export interface Mesh<Positions extends Float32Array | Float64Array = Float32Array> {
  /** x and y in turn, less the origin. */
  positions: Positions;
  indices: Uint32Array;
  /** Across the first, second and third edge of each triangle, -1 on a contour. */
  neighbours?: Int32Array;
  origin: [number, number];
}

export interface PolygonGeometry {
  type: 'Polygon';
  coordinates: number[][][];
}
export interface MultiPolygonGeometry {
  type: 'MultiPolygon';
  coordinates: number[][][][];
}

/** Compiles the WebAssembly module ahead of the first call, aside of this thread. Only
 * where compiling in the page's own thread is forbidden, as in Chromium before version 115,
 * must it be awaited. */
export function init(): Promise<void>;

/** A failed call. The numbers, from 0 on, tell where a coordinate was refused; in GeoJSON
 * `polygon` counts those of the feature. */
export class ZelvanError extends Error {
  readonly status: number;
  readonly feature?: number;
  readonly polygon?: number;
  readonly ring?: number;
  readonly point?: number;
}

/** A set of polygons with holes on a grid; never changed. Its memory lies outside of
 * JavaScript's: `free` or `using` give it back at once, the garbage collector some day. */
export class Region {
  private constructor();

  /** The region that rings bound; they may cross, touch and repeat. Each point goes to
   * the nearest one of the grid, by default the finest that holds all. */
  static from(rings: Rings, options?: { fill?: Fill; grid?: Grid }): Region;
  /** The union of what each ring encloses, whichever way it runs. Meant for rings that do not
   * cross themselves: one that does may cancel another ring where it runs clockwise. */
  static uniteRings(rings: Rings, options?: { grid?: Grid }): Region;
  /** The union of all polygons of a GeoJSON object, each by the even-odd rule. Points and
   * lines bound no region: they are left out, and `warn` (console.warn when left out) is
   * called once for each type of them. */
  static fromGeoJSON(object: object, options?: { grid?: Grid; warn?: (message: string) => void }): Region;
  /** The union of any number of regions, in one go. */
  static unite(regions: Iterable<Region>): Region;
  /** An operation on the regions that two sets of rings bound, in one sweep, on the grid that
   * covers all: the same as on two regions there, but that crossings are rounded once. */
  static combine(operation: Operation, a: Rings, b: Rings,
                 options?: { fillA?: Fill; fillB?: Fill; grid?: Grid }): Region;
  /** The triangles of the region that rings bound, in one call: as from(...).triangulate(...). */
  static triangulateRings(rings: Rings, options: MeshOptions & { fill?: Fill; grid?: Grid; float64: true }): Mesh<Float64Array>;
  static triangulateRings(rings: Rings, options?: MeshOptions & { fill?: Fill; grid?: Grid }): Mesh;
  static empty(): Region;
  /** The finest grid that holds some points. */
  static gridCovering(points: Ring): Grid;
  /** The grid that operations on some regions take: of one of them, if it has the coarsest step
   * and holds all, else one that covers all. */
  static commonGrid(regions: Iterable<Region>): Grid;

  /** Operations throw a ZelvanError of status 8 that names both steps where a region would
   * lose a polygon or a hole on the common grid, or more than 2^-10 of the area of one, or
   * where two would become one. */
  unite(other: Region): Region;
  intersect(other: Region): Region;
  subtract(other: Region): Region;
  xor(other: Region): Region;

  /** The region grown by a distance, or shrunk by one below 0. Where the join is round, every
   * point of the result's boundary is at that distance from the region's, within the tolerance
   * and a step of the result's grid. Throws a ZelvanError for what is not finite, a tolerance
   * below 0, a limit below 1, and as operations do. */
  offset(distance: number, options?: OffsetOptions): Region;

  /** The region on a grid that holds it, whatever is lost there. */
  onGrid(grid: Grid): Region;

  /** One polygon, with its holes, as a region on the same grid. */
  part(polygon: number): Region;
  /** The region moved, turned, scaled, sheared or mirrored: x' = a x + b y + c, y' = d x + e y + f.
   * Moved by whole steps it stays as it is, on its own grid if that holds the result, else on that
   * grid moved along. Else its points are rounded and the region is made again: on the given grid,
   * else on its own if that holds the result, else on the one that covers it. */
  transformed(matrix: readonly [number, number, number, number, number, number] | Float64Array,
              options?: { grid?: Grid }): Region;

  /** Whether both have a point in common. Regions have their boundaries, empty ones no point: so in
   * all three questions, which are decided exactly on any two grids and make no region. */
  intersects(other: Region): boolean;
  /** Whether both have points of their boundaries in common, but no inner points. */
  touches(other: Region): boolean;
  /** Whether this region has every point of the other one; so it covers an empty one. */
  covers(other: Region): boolean;
  /** How far the other region is, 0 exactly where they have a point in common, and the places of
   * both that are so near; Infinity and null where one is empty. */
  distance(other: Region): { distance: number; places: [[number, number], [number, number]] | null };
  /** The nearest place of the region for a point, and its distance: inside it the point itself and
   * 0, unless the boundary is asked for. The same for each of several. NaN and Infinity for an
   * empty region and for points that are not finite. */
  nearest(point: Point, options?: { boundary?: boolean }): { place: [number, number]; distance: number };
  nearest(points: readonly Point[] | Float64Array | Float32Array,
          options?: { boundary?: boolean }): { places: Float64Array; distances: Float64Array };

  /** Whether both have the same polygons and the same grid. */
  equals(other: Region): boolean;
  /** Whether a point lies inside or on the boundary, decided exactly; the same for each of
   * several: an array of points, or x and y in turn in a typed array. */
  contains(point: Point): boolean;
  contains(points: readonly Point[] | Float64Array | Float32Array): boolean[];
  /** 1 inside, 0 on the boundary, -1 outside. */
  side(point: Point): -1 | 0 | 1;
  side(points: readonly Point[] | Float64Array | Float32Array): Int8Array;
  /** Makes the index that finds where a point lies in O(log n), which else is made after some
   * dozens of points. */
  prepare(): void;

  readonly counts: Counts;
  readonly isEmpty: boolean;
  readonly area: number;
  readonly grid: Grid;
  /** How many rings with an area are gone below the step: of those that the region was made
   * of, and its own where onGrid moved it. Operations add up what their operands lost. */
  readonly lost: number;
  /** Least x, least y, greatest x, greatest y; null for an empty region. */
  readonly bounds: [number, number, number, number] | null;
  /** Of the boundary, holes included. */
  readonly length: number;
  /** Null for an empty region. */
  readonly centroid: [number, number] | null;
  /** The convex hull, exact, on the same grid; each time a region of its own. */
  readonly hull: Region;
  /** The corners of the box of least area, in any direction, counter-clockwise; null for an empty
   * region. */
  readonly leastBox: [number, number][] | null;

  /** Through the polygons; rings are x and y in turn. */
  [Symbol.iterator](): IterableIterator<{ outer: Float64Array; holes: Float64Array[] }>;

  read(): Polygons;
  triangulate(options: MeshOptions & { float64: true }): Mesh<Float64Array>;
  triangulate(options?: MeshOptions): Mesh;
  toGeoJSON(): PolygonGeometry | MultiPolygonGeometry;
  /** As toGeoJSON, for JSON.stringify. */
  toJSON(): PolygonGeometry | MultiPolygonGeometry;

  /** Gives the memory back; the region cannot be used any more. */
  free(): void;
  [Symbol.dispose](): void;
}

/** Some ground, and the numbers of the regions that cover it: just these, ascending. */
export interface Part {
  region: Region;
  inputs: number[];
}

/** For each set of regions that covers some ground, the region that just these cover, in one
 * sweep; in the order of the inputs. Parts fit: what two of them share are edges, end for end. So
 * a part has vertices wherever three edges or more meet, on straight edges, too, which count for no
 * comparison and no operation. */
export function overlay(regions: Iterable<Region>): Part[];

/** The union of the regions of each key, in the order in which keys first come: one key a
 * region. */
export function dissolve<Key>(regions: Iterable<Region>, keys: Iterable<Key>): Map<Key, Region>;

/** One polygon of a coverage at which something is wrong: two regions or more, its inputs, cover
 * it; it is bounded and no region covers it, its inputs being next to it; or it is a polygon of
 * one region and too narrow. */
export interface CoverageFault extends Part {
  kind: 'overlap' | 'gap' | 'sliver';
  /** 2 area / perimeter: of a long strip its width. */
  width: number;
}

/** What is wrong with regions that ought to tile: overlaps by their inputs, then gaps no wider than
 * `gapWidth` (by default all of them, lakes, too), then polygons of regions narrower than
 * `sliverWidth` (by default none). */
export function checkCoverage(regions: Iterable<Region>,
                              options?: { gapWidth?: number; sliverWidth?: number }): CoverageFault[];
