// A user's program: compiled against the package's types and run in a folder of its own.
import { Region, ZelvanError, init, type Mesh } from 'zelvan';
import earcut, { deviation, flatten, refine } from 'zelvan/earcut';

declare const console: { log(...data: unknown[]): void };

function areaOfFrame(): string {
  using frame = Region.from([[[0, 0], [10, 0], [10, 10], [0, 10]], [[3, 3], [7, 3], [7, 7], [3, 7]]]);
  using bar = Region.from([Float64Array.of(-2, 4, 12, 4, 12, 6, -2, 6)], { grid: frame.grid });
  using cut = frame.subtract(bar);
  const mesh: Mesh = cut.triangulate({ delaunay: true, neighbours: true, origin: 'grid' });
  const exact: Mesh<Float64Array> = cut.triangulate({ float64: true });
  if (mesh.indices.length !== exact.indices.length) throw new Error('two meshes of one region');
  const isOut: boolean = cut.contains([5, 5]) || cut.side([[1, 1], [2, 2]])[1] !== 1;
  return `${cut.area} ${!isOut}`;
}

let refused = '';
try {
  Region.from([[[0, 0], [1, 1], [NaN, 2]]]);
} catch (error) {
  if (error instanceof ZelvanError) refused = `${error.status} at ${error.ring}, ${error.point}`;
}
const { vertices, holes, dimensions } = flatten([[[0, 0, 5], [9, 0, 5], [9, 9, 5]]]);
const triangles = earcut(vertices, holes, dimensions);
refine(triangles, vertices, dimensions);
void init().then(() => console.log(areaOfFrame(), refused, triangles.length, deviation(vertices, holes, dimensions, triangles)));
