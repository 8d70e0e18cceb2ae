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
