// Triangles made Delaunay in place, by C. L. Lawson's flips (1977). An edge is flipped where
// that is right beyond all rounding, by the error bounds of J. R. Shewchuk's predicates
// (1997): each flip brings the mesh nearer to the Delaunay triangulation, so the flips end,
// and no triangle is ever turned over. Points on one circle within rounding stay as they are.
const EPSILON = 2 ** -53;
const ORIENT_BOUND = (3 + 16 * EPSILON) * EPSILON;
const CIRCLE_BOUND = (10 + 96 * EPSILON) * EPSILON;

// 1 where a, b, c run counter-clockwise, -1 clockwise, 0 where rounding hides which.
function turn(a, b, c) {
  const [left, right] = [(a[0] - c[0]) * (b[1] - c[1]), (a[1] - c[1]) * (b[0] - c[0])];
  const area = left - right;
  return Math.abs(area) > ORIENT_BOUND * (Math.abs(left) + Math.abs(right)) ? Math.sign(area) : 0;
}

// 1 where d lies inside the circle of a, b, c (counter-clockwise), -1 outside, 0 where
// rounding hides which.
function side(a, b, c, d) {
  const [ax, ay, bx, by, cx, cy] = [a[0] - d[0], a[1] - d[1], b[0] - d[0], b[1] - d[1], c[0] - d[0], c[1] - d[1]];
  const [a2, b2, c2] = [ax * ax + ay * ay, bx * bx + by * by, cx * cx + cy * cy];
  const value = a2 * (bx * cy - cx * by) + b2 * (cx * ay - ax * cy) + c2 * (ax * by - bx * ay);
  const size = a2 * (Math.abs(bx * cy) + Math.abs(cx * by)) + b2 * (Math.abs(cx * ay) + Math.abs(ax * cy)) +
    c2 * (Math.abs(ax * by) + Math.abs(bx * ay));
  return Math.abs(value) > CIRCLE_BOUND * size ? Math.sign(value) : 0;
}

const next = (edge) => (edge % 3 === 2 ? edge - 2 : edge + 1);
const previous = (edge) => (edge % 3 === 0 ? edge + 2 : edge - 1);

// Edge e runs from triangles[e] to triangles[next(e)]. For each the one that runs back, -1
// where there is none, or where more than two triangles meet.
function twinsOf(triangles, vertices) {
  const edges = new Map();
  const key = (from, to) => from * vertices.length + to;
  triangles.forEach((from, e) => {
    const name = key(from, triangles[next(e)]);
    edges.set(name, edges.has(name) ? -1 : e);
  });
  return Int32Array.from(triangles, (from, e) => {
    const to = triangles[next(e)];
    return edges.get(key(from, to)) === e ? edges.get(key(to, from)) ?? -1 : -1;
  });
}

/** Makes triangles Delaunay in place, but for the edges that bound them; see refine.d.ts. */
export function refine(triangles, vertices, dim = 2) {
  const twins = twinsOf(triangles, vertices);
  const at = (edge) => [vertices[triangles[edge] * dim], vertices[triangles[edge] * dim + 1]];
  const link = (edge, twin) => {
    twins[edge] = twin;
    if (twin >= 0) twins[twin] = edge;
  };

  function mustFlip(edge, twin) {
    const [a, b, c, d] = [at(edge), at(next(edge)), at(previous(edge)), at(previous(twin))];
    const way = turn(a, b, c);
    return way !== 0 && turn(b, a, d) === way && turn(a, d, c) === way && turn(d, b, c) === way &&
      side(a, b, c, d) === way;
  }

  // From (a, b, c) and (b, a, d) to (a, d, c) and (b, c, d).
  function flip(edge, twin) {
    const [outer, inner] = [next(edge), next(twin)];
    const [bc, ad] = [twins[outer], twins[inner]];
    triangles[outer] = triangles[previous(twin)];
    triangles[inner] = triangles[previous(edge)];
    link(edge, ad);
    link(twin, bc);
    link(outer, inner);
  }

  const stack = Array.from(twins.keys());
  while (stack.length > 0) {
    const edge = stack.pop();
    const twin = twins[edge];
    if (twin < 0 || !mustFlip(edge, twin)) continue;
    flip(edge, twin);
    stack.push(edge, twin, previous(edge), previous(twin));
  }
}
