// A user's program: compiled against the package's types and run in a folder of its own.
import { Region, ZelvanError, type Mesh } from 'zelvan';
import earcut, { deviation, flatten } from 'zelvan/earcut';

function areaOfFrame(): number {
  using frame = Region.from([[[0, 0], [10, 0], [10, 10], [0, 10]], [[3, 3], [7, 3], [7, 7], [3, 7]]]);
  using bar = Region.from([Float64Array.of(-2, 4, 12, 4, 12, 6, -2, 6)], { grid: frame.grid });
  using cut = frame.subtract(bar);
  const mesh: Mesh = cut.triangulate({ delaunay: true, neighbours: true, origin: 'grid' });
  const exact: Mesh<Float64Array> = cut.triangulate({ float64: true });
  if (mesh.indices.length !== exact.indices.length) throw new Error('two meshes of one region');
  return cut.area;
}

let refused = '';
try {
  Region.from([[[0, 0], [1, 1], [NaN, 2]]]);
} catch (error) {
  if (error instanceof ZelvanError) refused = `${error.status} at ${error.ring}, ${error.point}`;
}
const { vertices, holes, dimensions } = flatten([[[0, 0, 5], [9, 0, 5], [9, 9, 5]]]);
const triangles = earcut(vertices, holes, dimensions);
console.log(areaOfFrame(), refused, triangles.length, deviation(vertices, holes, dimensions, triangles));
