// Moves of the view. No zoom goes beyond what there is to see: inwards a quarter of the canvas
// is one step of the grid, outwards the data is a hundredth of it.
import { changed, state } from './state.js';
import { boundsOf, fitted, panned, resized, viewportOf, zoomed } from './viewport.js';

const OUTWARDS = 100;
const STEPS_SEEN = 4;

let lastFit = null;  // the view that `fit` made
let isUpright = null;

let box = null;
let boxed = null;  // the shapes that `box` is of

function dataBox() {
  if (boxed !== state.shapes) {
    boxed = state.shapes;
    box = boundsOf([...boxed.A, ...boxed.B].flat());
  }
  return box;
}

export function show(view) {
  state.view = view;
  changed('picture');
}

/** Shows all shapes. */
export function fit() {
  if (!dataBox()) return;
  lastFit = fitted(state.view, dataBox());
  show(lastFit);
}

export function panBy(dx, dy) {
  show(panned(state.view, dx, dy));
}

/** Larger by a factor about a point of the screen, by default the middle. */
export function zoomBy(factor, sx, sy) {
  const { view } = state;
  const seen = dataBox() ?? boundsOf([[view.x, view.y, view.x + view.width, view.y + view.height]]);
  const step = state.step ?? Math.max(seen[2] - seen[0], seen[3] - seen[1], Number.MIN_VALUE) / 2 ** 31;
  const least = fitted(view, seen).scale / OUTWARDS;
  const most = Math.min(view.width, view.height) / (STEPS_SEEN * step);
  // What is beyond a limit already, since the shapes or the step changed, is not thrown back.
  const scale = Math.min(Math.max(view.scale * factor, Math.min(least, view.scale)), Math.max(most, view.scale));
  show(zoomed(view, scale / view.scale, sx, sy));
}

/** The canvas has another size. A view that showed everything does so again, and so does any
 * other when the screen was turned. */
export function resizeTo(width, height) {
  const fits = state.view === null || state.view === lastFit;
  const isTurned = isUpright !== null && isUpright !== innerHeight > innerWidth;
  isUpright = innerHeight > innerWidth;
  state.view = state.view ? resized(state.view, width, height) : viewportOf(width, height);
  if (fits || isTurned) fit();
}
