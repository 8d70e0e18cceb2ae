// What the user has made and chosen, the changes that can be made to it, and the way back.
// Shapes (shapes.js) are replaced and never changed in place, so that a step back is a
// reference. Whoever draws or computes listens: to 'shapes' for what changes the answer, to
// 'picture' for all else that is seen.
import { countVertices, moved, shapeOf, withRing, withRingAt } from './shapes.js';
import { resized } from './viewport.js';

export const state = {
  shapes: { A: shapeOf(), B: shapeOf() },
  source: null,     // where they came from: { sample }, a key of SAMPLES, or { files }, words
  active: 'A',      // the shape that is edited
  operation: 'unite',
  fill: 'even-odd',
  mesh: 'delaunay',
  doublings: 0,     // of the grid's step above the finest one
  offset: 0,        // of the answer, in thousandths of the shapes' longer extent
  step: null,       // of the grid of the answer, while there is one
  chosen: null,     // a vertex of the active shape: { ring, vertex }
  draft: null,      // a ring that is being drawn: { points, pointer, taken }, taken: by undo
  view: null,
};

const listeners = [];
export const onChange = (listener) => listeners.push(listener);
export function changed(what) {
  for (const listener of listeners) listener(what);
}

const counts = new WeakMap();
function countOf(shapes) {
  if (!counts.has(shapes)) counts.set(shapes, countVertices(shapes));
  return counts.get(shapes);
}

/** Above this number of vertices the worker computes and draws, and nothing is edited. */
const LIGHT = 20000;
export const vertexCount = () => countOf(state.shapes);
export const isHeavy = () => vertexCount() > LIGHT;
/** The rings of the active shape in a row. */
export const activeRings = () => state.shapes[state.active].flat();

// Steps back and forth: some fields of the state, as they were. The last step is kept whatever
// its size; those before it while all have no more vertices than this.
const MOST_STEPS = 100;
const MOST_VERTICES = 1e7;
const LOADED = ['shapes', 'source', 'operation', 'fill', 'doublings', 'offset', 'active', 'view'];
const past = [];
const future = [];
export const canUndo = () => state.draft !== null || past.length > 0;
export const canRedo = () => (state.draft ? state.draft.taken : future).length > 0;

const fieldsOf = (names) => Object.fromEntries(names.map((name) => [name, state[name]]));

function remember(names = ['shapes']) {
  future.length = 0;
  past.push(fieldsOf(names));
  let vertices = past.reduce((sum, { shapes }) => sum + countOf(shapes), 0);
  while (past.length > 1 && (past.length > MOST_STEPS || vertices > MOST_VERTICES)) {
    vertices -= countOf(past.shift().shapes);
  }
}

function travel(from, to) {
  if (from.length === 0) return;
  const step = from.pop();
  to.push(fieldsOf(Object.keys(step)));
  if (step.view) step.view = resized(step.view, state.view.width, state.view.height);
  Object.assign(state, step, { chosen: null });
  changed('shapes');
}

/** Takes the last change back; while a ring is drawn its last point, and without one the
 * drawing. */
export function undo() {
  if (!state.draft) {
    travel(past, future);
    return;
  }
  const { points, taken } = state.draft;
  if (points.length === 0) state.draft = null;
  else taken.push(points.splice(-2));
  changed('picture');
}

export function redo() {
  if (!state.draft) {
    travel(future, past);
    return;
  }
  state.draft.points.push(...state.draft.taken.pop() ?? []);
  changed('picture');
}

/** As if the last step had never been made. */
export function forgetLastStep() {
  travel(past, []);
}

/** Takes other shapes and settings for all that was there. */
export function load(fields) {
  if (state.source) remember(LOADED);
  Object.assign(state, { operation: 'unite', fill: 'even-odd', doublings: 0, offset: 0, active: 'A', chosen: null, draft: null }, fields);
  changed('shapes');
}

// Another shape for the active one.
function replace(shape) {
  state.shapes = { ...state.shapes, [state.active]: shape };
  changed('shapes');
}

export function clear() {
  Object.assign(state, { chosen: null, draft: null });
  changed('picture');
  if (activeRings().length === 0) return;
  remember();
  replace(shapeOf());
}

export function addRing(points) {
  remember();
  state.chosen = null;
  replace(withRing(state.shapes[state.active], Float64Array.from(points)));
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

function replaceChosenRing(ring) {
  replace(withRingAt(state.shapes[state.active], state.chosen.ring, ring));
}

/** @param isNewStep whether this is a change of its own, for `undo` */
export function moveChosen(x, y, isNewStep) {
  if (isNewStep) remember();
  const ring = activeRings()[state.chosen.ring].slice();
  ring.set([x, y], 2 * state.chosen.vertex);
  replaceChosenRing(ring);
}

/** Puts a shape in the place of the active one, moved by (dx, dy). */
export function placeShape(shape, dx, dy, isNewStep) {
  if (isNewStep) remember();
  replace(moved(shape, dx, dy));
}

/** Adds a vertex behind another one, and chooses it. */
export function insertVertex(ring, behind, x, y) {
  remember();
  const points = Array.from(activeRings()[ring]);
  points.splice(2 * behind + 2, 0, x, y);
  state.chosen = { ring, vertex: behind + 1 };
  replaceChosenRing(Float64Array.from(points));
}

/** Removes the chosen vertex, with its ring where that would have less than three. */
export function removeChosen() {
  remember();
  const { ring, vertex } = state.chosen;
  const xy = activeRings()[ring];
  if (xy.length <= 6) {
    replaceChosenRing(null);
    choose(null);
  } else {
    replaceChosenRing(xy.filter((_, i) => i >> 1 !== vertex));
    choose({ ring, vertex: Math.min(vertex, xy.length / 2 - 2) });
  }
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
