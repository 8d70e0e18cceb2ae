// The canvas by keyboard: everything that the pointer can do.
import {
  activeRings, changed, choose, chosenPoint, insertVertex, isHeavy, moveChosen, neighbourOfChosen, remember,
  removeChosen, setActive, state, undo,
} from './state.js';
import { addDraftPoint, finishDraft } from './pointer.js';
import { panned, toPlane, zoomed } from './viewport.js';

const ARROWS = { ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, 1], ArrowDown: [0, -1] };

/** Begins a ring at the middle of the canvas, or gives the one that is being drawn up. */
export function toggleDraft() {
  const { width, height } = state.view;
  state.draft = state.draft ? null : { points: [], pointer: toPlane(state.view, width / 2, height / 2) };
  choose(null);
}

function arrow([dx, dy], pixels, isRepeated) {
  const step = pixels / state.view.scale;
  if (state.draft) {
    state.draft.pointer = [state.draft.pointer[0] + dx * step, state.draft.pointer[1] + dy * step];
    changed('picture');
  } else if (state.chosen) {
    if (!isRepeated) remember();
    const [x, y] = chosenPoint();
    moveChosen(x + dx * step, y + dy * step);
  } else {
    state.view = panned(state.view, -8 * dx * pixels, 8 * dy * pixels);
    changed('picture');
  }
}

function insertBehindChosen() {
  const { ring, vertex } = state.chosen;
  const xy = activeRings()[ring];
  const next = (2 * vertex + 2) % xy.length;
  insertVertex(ring, vertex, (xy[2 * vertex] + xy[next]) / 2, (xy[2 * vertex + 1] + xy[next + 1]) / 2);
}

// Past the last vertex Tab goes on to what follows the canvas. @return whether it stayed
function tab(step) {
  if (isHeavy() || state.draft) return false;
  choose(neighbourOfChosen(step));
  return state.chosen !== null;
}

function escape() {
  if (state.draft) state.draft = null;
  choose(null);
}

// What a key does, as a function that may answer false where it does nothing.
function actionOf(event, fit) {
  const { key } = event;
  if (event.ctrlKey || event.metaKey) return key === 'z' ? undo : null;
  if (ARROWS[key]) return () => arrow(ARROWS[key], event.shiftKey ? 10 : 1, event.repeat);
  if (state.draft) {
    const inDraft = { ' ': addDraftPoint, Enter: finishDraft, Escape: escape, d: toggleDraft };
    if (inDraft[key]) return inDraft[key];
  }
  if (state.chosen) {
    const onVertex = { Delete: removeChosen, Backspace: removeChosen, Insert: insertBehindChosen, i: insertBehindChosen };
    if (onVertex[key]) return onVertex[key];
  }
  return {
    Tab: () => tab(event.shiftKey ? -1 : 1),
    Escape: escape,
    a: () => setActive('A'),
    b: () => setActive('B'),
    d: () => !isHeavy() && toggleDraft(),
    '+': () => zoom(1.25),
    '-': () => zoom(0.8),
    0: fit,
  }[key];
}

export function zoom(factor) {
  state.view = zoomed(state.view, factor);
  changed('picture');
}

/** @param onMoved is told the time stamp of each key */
export function listenToKeys(canvas, fit, onMoved) {
  canvas.addEventListener('keydown', (event) => {
    const action = actionOf(event, fit);
    if (!action) return;
    onMoved(event.timeStamp);
    if (action() !== false) event.preventDefault();
  });
}
