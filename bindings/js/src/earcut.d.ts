/** Triangles as numbers of vertices.
 * @param vertices coordinates in a row
 * @param holes    the vertices at which holes begin
 * @param dim      coordinates a vertex, of which the first two count */
export default function earcut(
  vertices: ArrayLike<number>, holes?: ArrayLike<number> | null, dim?: number): number[];

/** Rings of points, the outer one first, as the arguments of `earcut`. */
export function flatten(rings: readonly (readonly ArrayLike<number>[])[]): {
  vertices: number[]; holes: number[]; dimensions: number;
};

/** By how much the area of triangles differs from the polygon's, as a part of the latter. */
export function deviation(
  vertices: ArrayLike<number>, holes: ArrayLike<number> | null | undefined, dim: number,
  triangles: ArrayLike<number>): number;
