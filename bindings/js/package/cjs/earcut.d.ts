/** Triangles as numbers of vertices; none where a coordinate is no number or infinite.
 * @param vertices coordinates in a row
 * @param holes    the vertices at which holes begin
 * @param dim      coordinates a vertex, of which the first two count */
declare function earcut(
  vertices: ArrayLike<number>, holes?: ArrayLike<number> | null, dim?: number): number[];

declare namespace earcut {
  export { earcut as default };

  /** Rings of points, the outer one first, as the arguments of `earcut`. */
  export function flatten(rings: readonly (readonly ArrayLike<number>[])[]): {
    vertices: number[]; holes: number[]; dimensions: number;
  };

  /** By how much the area of triangles differs from the polygon's, as a part of the latter. */
  export function deviation(
    vertices: ArrayLike<number>, holes: ArrayLike<number> | null | undefined, dim: number,
    triangles: ArrayLike<number>): number;

  /** Makes triangles Delaunay in place by flipping edges; the edges that bound them stay.
   * @param triangles as `earcut` gives them: no two overlap */
  export function refine(
    triangles: number[] | Uint32Array | Uint16Array, vertices: ArrayLike<number>, dim?: number): void;
}

export = earcut;
