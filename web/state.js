// What the user has made and chosen, and the changes that can be made to it. A shape is a
// list of rings; a ring is a Float64Array of x and y in turn. Whoever draws or computes
// listens: to 'shapes' for what changes the answer, to 'picture' for all else that is seen.

export const state = {
  shapes: { A: [], B: [] },
  active: 'A',      // the shape that is edited
  operation: 'unite',
  fill: 'even-odd',
  mesh: 'delaunay',
  doublings: 0,     // of the grid's step above the finest one
  chosen: null,     // a vertex of the active shape: { ring, vertex }
  draft: null,      // a ring that is being drawn: { points, pointer }
  view: null,
};

const listeners = [];
export const onChange = (listener) => listeners.push(listener);
export function changed(what) {
  for (const listener of listeners) listener(what);
}

/** Above this number of vertices the worker computes and draws, and nothing is edited. */
const LIGHT = 20000;
export const vertexCount = () =>
  [...state.shapes.A, ...state.shapes.B].reduce((sum, ring) => sum + ring.length / 2, 0);
export const isHeavy = () => vertexCount() > LIGHT;
export const activeRings = () => state.shapes[state.active];

const past = [];
export const hasPast = () => past.length > 0;

/** Keeps the shapes as they are now, to be brought back by `undo`. */
export function remember() {
  if (isHeavy()) return;
  const { A, B } = state.shapes;
  past.push({ A: A.map((ring) => ring.slice()), B: B.map((ring) => ring.slice()) });
  if (past.length > 100) past.shift();
}

export function undo() {
  if (!hasPast()) return;
  state.shapes = past.pop();
  state.chosen = null;
  changed('shapes');
}

export function replaceAll(shapes) {
  past.length = 0;
  Object.assign(state, { shapes, chosen: null, draft: null });
  changed('shapes');
}

export function setRings(name, rings) {
  remember();
  state.shapes[name] = rings;
  state.chosen = null;
  changed('shapes');
}

export function addRing(points) {
  setRings(state.active, [...activeRings(), Float64Array.from(points)]);
}

export function choose(chosen) {
  state.chosen = chosen;
  changed('picture');
}

export function setActive(name) {
  Object.assign(state, { active: name, chosen: null });
  changed('picture');
}

/** Where the chosen vertex is, or null. */
export function chosenPoint() {
  if (!state.chosen) return null;
  const { ring, vertex } = state.chosen;
  const xy = activeRings()[ring];
  return [xy[2 * vertex], xy[2 * vertex + 1]];
}

export function moveChosen(x, y) {
  const { ring, vertex } = state.chosen;
  activeRings()[ring].set([x, y], 2 * vertex);
  changed('shapes');
}

export function moveShape(dx, dy) {
  for (const ring of activeRings()) {
    for (let i = 0; i < ring.length; i += 2) {
      ring[i] += dx;
      ring[i + 1] += dy;
    }
  }
  changed('shapes');
}

/** Adds a vertex behind another one, and chooses it. */
export function insertVertex(ring, behind, x, y) {
  remember();
  const points = Array.from(activeRings()[ring]);
  points.splice(2 * behind + 2, 0, x, y);
  activeRings()[ring] = Float64Array.from(points);
  state.chosen = { ring, vertex: behind + 1 };
  changed('shapes');
}

/** Removes the chosen vertex, with its ring where that would have less than three. */
export function removeChosen() {
  remember();
  const { ring, vertex } = state.chosen;
  const rings = activeRings();
  if (rings[ring].length <= 6) {
    rings.splice(ring, 1);
    state.chosen = null;
  } else {
    rings[ring] = rings[ring].filter((_, i) => i >> 1 !== vertex);
    state.chosen = { ring, vertex: Math.min(vertex, rings[ring].length / 2 - 1) };
  }
  changed('shapes');
}

/** The vertex after the chosen one, or before it; null behind the last and the first. */
export function neighbourOfChosen(step) {
  const rings = activeRings();
  const all = rings.reduce((sum, ring) => sum + ring.length / 2, 0);
  let at = step > 0 ? 0 : all - 1;
  if (state.chosen) {
    at = state.chosen.vertex + step;
    for (let i = 0; i < state.chosen.ring; ++i) at += rings[i].length / 2;
  }
  if (at < 0 || at >= all) return null;
  let ring = 0;
  for (; at >= rings[ring].length / 2; ++ring) at -= rings[ring].length / 2;
  return { ring, vertex: at };
}
