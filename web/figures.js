// What the panel tells in numbers and the page in words.
import { activeRings, canRedo, canUndo, chosenPoint, isHeavy, state, vertexCount } from './state.js';

const byId = (id) => document.getElementById(id);
const whole = new Intl.NumberFormat('en');
const exact = new Intl.NumberFormat('en', { maximumSignificantDigits: 12 });
const rough = new Intl.NumberFormat('en', { maximumSignificantDigits: 6 });

function put(id, text) {
  const element = byId(id);
  if (element.textContent !== text) element.textContent = text;
}

function milliseconds(time) {
  if (time === null) return '–';
  if (time >= 1000) return `${(time / 1000).toFixed(2)} s`;
  return time < 10 ? `${time.toFixed(1)} ms` : `${Math.round(time)} ms`;
}

function angleText(angle) {
  if (angle == null) return '–';
  return angle < 0.01 ? '<0.01°' : `${angle.toFixed(angle < 1 ? 2 : 1)}°`;
}

/** A power of two, as steps are, in writing. */
export function power(step) {
  const digits = String(Math.log2(step)).replaceAll('-', '⁻');
  return `2${digits.replaceAll(/\d/g, (digit) => '⁰¹²³⁴⁵⁶⁷⁸⁹'[digit])}`;
}

export function showFigures({ counts, area, step, distance, angle, times }) {
  put('vertices', whole.format(counts.vertices));
  put('polygons', whole.format(counts.polygons));
  put('holes', whole.format(counts.rings - counts.polygons));
  put('triangles', times.cutting === null ? '–' : whole.format(counts.triangles));
  put('area', exact.format(area));
  put('angle', angleText(angle));
  put('step', power(step));
  put('distance', rough.format(distance));
  put('combining', milliseconds(times.combining));
  put('cutting', milliseconds(times.cutting));
}

export function showNoFigures() {
  for (const id of ['vertices', 'polygons', 'holes', 'triangles', 'area', 'angle', 'combining', 'cutting']) put(id, '–');
}

export const showDrawing = (time) => put('drawing', milliseconds(time));
export const showResponse = (time) => put('response', milliseconds(time));
/** Where the shapes came from, in the box of samples. */
export function showSource() {
  const { sample, files } = state.source ?? {};
  byId('files').hidden = files === undefined;
  put('files', files ?? '');
  byId('sample').value = sample ?? '';
}

/** The buttons and words that hang on the state. */
export function showState(hasAnswer) {
  put('vertices-in', whole.format(vertexCount()));
  byId('draw').setAttribute('aria-pressed', String(state.draft !== null));
  byId('draw').disabled = isHeavy();
  byId('undo').disabled = !canUndo();
  byId('redo').disabled = !canRedo();
  for (const button of document.querySelectorAll('.download')) {
    const { format } = button.dataset;
    button.disabled = !hasAnswer || (format === 'obj' && state.mesh === 'none');
  }
  for (const name of ['active', 'operation', 'mesh']) {
    document.querySelector(`input[name="${name}"][value="${state[name]}"]`).checked = true;
  }
  byId('fill').value = state.fill;
  byId('doublings').value = state.doublings;
  byId('offset').value = state.offset;
  byId('offset').setAttribute('aria-valuetext', byId('distance').textContent);
  byId('doublings').setAttribute('aria-valuetext', byId('step').textContent);
  if (state.chosen) {
    const { ring, vertex } = state.chosen;
    const count = activeRings()[ring].length / 2;
    const [x, y] = chosenPoint().map((value) => rough.format(value));
    put('vertex-words', `Shape ${state.active}, ring ${ring + 1}, vertex ${vertex + 1} of ${count}, at ${x}, ${y}`);
  } else {
    put('vertex-words', state.draft ? `Drawing: ${state.draft.points.length / 2} points` : '');
  }
}

let clock = 0;

/** What is being done in the worker, and for how long; null hides it. */
export function showWork(stage) {
  if (stage !== null && byId('work').hidden) {
    const start = performance.now();
    const tick = () => put('elapsed', `${((performance.now() - start) / 1000).toFixed(1)} s`);
    tick();
    clock = setInterval(tick, 100);
  } else if (stage === null) {
    clearInterval(clock);
  }
  byId('work').hidden = stage === null;
  put('stage-name', stage ?? '');
}

/** How far the work is, from 0 to 1. */
export function showProgress(part) {
  byId('progress').value = part;
}
