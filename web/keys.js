// The page by keyboard: everything that the pointer can do. Keys work wherever the focus is,
// but where an element has a use for them itself.
import { fit, panBy, zoomBy } from './navigate.js';
import { dismissNotices } from './notices.js';
import { addDraftPoint, finishDraft } from './pointer.js';
import {
  activeRings, changed, choose, chosenPoint, insertVertex, isHeavy, moveChosen, neighbourOfChosen, redo, removeChosen,
  setActive, state, undo,
} from './state.js';
import { toPlane } from './viewport.js';

const ARROWS = { ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, 1], ArrowDown: [0, -1] };

/** Begins a ring at the middle of the canvas, or gives the one that is being drawn up. */
export function toggleDraft() {
  const { width, height } = state.view;
  state.draft = state.draft ? null : { points: [], pointer: toPlane(state.view, width / 2, height / 2), taken: [] };
  choose(null);
}

function arrow([dx, dy], pixels, isRepeated) {
  const step = pixels / state.view.scale;
  if (state.draft) {
    state.draft.pointer = [state.draft.pointer[0] + dx * step, state.draft.pointer[1] + dy * step];
    changed('picture');
  } else if (state.chosen) {
    const [x, y] = chosenPoint();
    moveChosen(x + dx * step, y + dy * step, !isRepeated);
  } else {
    panBy(-8 * dx * pixels, 8 * dy * pixels);
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
  else if (!state.chosen) return dismissNotices();
  return choose(null);
}

// Ctrl or Cmd with a letter.
const WITH_CONTROL = { z: undo, Z: redo, y: redo };

// What a key does, as a function that may answer false where it does nothing.
function actionOf({ key, shiftKey, repeat }, canvas) {
  if (ARROWS[key]) return () => arrow(ARROWS[key], shiftKey ? 10 : 1, repeat);
  if (state.draft) {
    const inDraft = { ' ': addDraftPoint, Enter: finishDraft, Backspace: undo, d: toggleDraft };
    if (inDraft[key]) return inDraft[key];
  }
  if (state.chosen) {
    const onVertex = { Delete: removeChosen, Backspace: removeChosen, Insert: insertBehindChosen, i: insertBehindChosen };
    if (onVertex[key]) return onVertex[key];
  }
  return {
    Tab: () => document.activeElement === canvas && tab(shiftKey ? -1 : 1),
    Escape: escape,
    a: () => setActive('A'),
    b: () => setActive('B'),
    d: () => {
      if (isHeavy()) return false;
      canvas.focus();  // for Space and Enter
      return toggleDraft();
    },
    '+': () => zoomBy(1.25),
    '-': () => zoomBy(0.8),
    0: fit,
  }[key];
}

// Fields have a use for every key but Escape, buttons for those that press them.
function isTakenBy(element, key) {
  if (key === 'Escape') return false;
  if (element.matches('input[type=radio]')) return key === ' ' || ARROWS[key] !== undefined;
  if (element.matches('input, select')) return true;
  return element.matches('button, summary') && (key === ' ' || key === 'Enter');
}

/** @param onMoved is told the time stamp of each key */
export function listenToKeys(canvas, onMoved) {
  addEventListener('keydown', (event) => {
    const { key, target, altKey } = event;
    const isCommand = event.ctrlKey || event.metaKey;
    if (altKey || (!isCommand && isTakenBy(target, key))) return;
    const letter = event.shiftKey ? key.toUpperCase() : key.toLowerCase();
    const action = isCommand ? WITH_CONTROL[letter] : actionOf(event, canvas);
    if (!action || action() === false) return;
    onMoved(event.timeStamp);
    event.preventDefault();
  });
}
