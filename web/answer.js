// Keeps the answer and its picture up to date with the state: within the frame for shapes of
// ordinary size, by the worker for large ones, where the last picture stays until the next
// one is there.
import { compute } from './compute.js';
import { drawDraft, drawHandles, drawScene } from './draw.js';
import { power, showDrawing, showFigures, showNoFigures, showProgress, showState, showWork } from './figures.js';
import { Cancelled, ask, onEnd } from './helper.js';
import { showNotice } from './notices.js';
import { activeRings, isHeavy, state, vertexCount } from './state.js';
import { theme } from './theme.js';
import { boundsOf, toScreen } from './viewport.js';
import { fileOf } from './writers.js';

const STAGES = ['Reading shape A', 'Reading shape B', 'Combining', 'Offsetting', 'Cutting into triangles', 'Measuring', 'Drawing'];
const HANDLES = 3000;  // more would hide the shape

let answer = null;     // of light shapes
let isReady = false;   // the worker has the answer of heavy ones
let picture = null;    // of the worker: { bitmap, view }
let computing = false;
let drawing = false;
let drawsAgain = false;
let computesAgain = false;

const inputOf = () => {
  const { shapes, operation, fill, mesh, doublings, offset } = state;
  return { shapes, operation, fill, mesh, doublings, offset };
};

onEnd(() => {
  isReady = false;
});

export const hasAnswer = () => (isHeavy() ? isReady : answer !== null);

// Takes what was computed: the figures, the step, and what the step has cost.
function accept(figures) {
  state.step = figures.step;
  showFigures(figures);
  const { lost, step } = figures;
  const [rings, are] = lost === 1 ? ['1 ring', 'is'] : [`${lost} rings`, 'are'];
  showNotice('answer', lost > 0 ? `${rings} ${are} smaller than the grid's step of ${power(step)} and ${are} left out.` : '');
}

function forget() {
  answer = null;
  isReady = false;
  state.step = null;
  showNoFigures();
}

function fail(error) {
  forget();
  if (error instanceof Cancelled) showNotice('answer', 'Stopped. Any setting starts again.');
  else showNotice('answer', error.message, true);
}

function computeHere() {
  picture = null;
  if (vertexCount() === 0) {
    forget();
    showNotice('answer', '');
    return;
  }
  try {
    answer = compute(inputOf());
    isReady = false;
    accept(answer);
  } catch (error) {
    fail(error);
  }
}

function showStage(stage) {
  showWork(stage);
  showProgress(STAGES.indexOf(stage) / STAGES.length);
}

async function computeInWorker(draw) {
  forget();
  if (computing) {
    computesAgain = true;
    return;
  }
  computing = true;
  showNotice('answer', '');
  showStage(STAGES[0]);
  try {
    const figures = await ask('compute', { input: inputOf() }, showStage);
    if (isHeavy() && !computesAgain) {
      isReady = true;
      accept(figures);
      showStage('Drawing');
      await drawInWorker(draw);
    }
  } catch (error) {
    if (error instanceof Cancelled) computesAgain = false;
    if (isHeavy() && !computesAgain) fail(error);
  } finally {
    computing = false;
    showWork(null);
    if (computesAgain && isHeavy()) queueMicrotask(() => computeInWorker(draw));
    computesAgain = false;
    draw();
  }
}

async function drawInWorker(draw) {
  if (drawing) {
    drawsAgain = true;
    return;
  }
  drawing = true;
  try {
    const made = await ask('draw', { view: state.view, theme, ratio: devicePixelRatio });
    picture?.bitmap.close();
    picture = made;
    showDrawing(made.time);
    draw();
  } catch (error) {
    if (!(error instanceof Cancelled)) fail(error);
  } finally {
    drawing = false;
    if (drawsAgain) drawInWorker(draw);
    drawsAgain = false;
  }
}

/** @param draw asks for a frame */
export function recompute(draw) {
  if (isHeavy()) computeInWorker(draw);
  else computeHere();
}

function paintPicture(ctx) {
  const { bitmap, view } = picture;
  const [left, top] = toScreen(state.view, view.x, view.y + view.height / view.scale);
  const factor = state.view.scale / view.scale;
  ctx.drawImage(bitmap, left, top, view.width * factor, view.height * factor);
}

/** Paints the state on the canvas. */
export function paint(ctx, draw) {
  const start = performance.now();
  const { view } = state;
  ctx.setTransform(devicePixelRatio, 0, 0, devicePixelRatio, 0, 0);
  ctx.clearRect(0, 0, view.width, view.height);
  if (isHeavy()) {
    if (picture) paintPicture(ctx);
    else drawScene(ctx, view, theme, state.shapes, null);
    if (isReady && picture?.view !== view) drawInWorker(draw);
  } else {
    drawScene(ctx, view, theme, state.shapes, answer);
    const rings = activeRings();
    const vertices = rings.reduce((sum, ring) => sum + ring.length / 2, 0);
    if (vertices <= HANDLES) drawHandles(ctx, view, theme, rings, theme[state.active], state.chosen);
    if (state.draft) drawDraft(ctx, view, theme, state.draft.points, state.draft.pointer, theme[state.active]);
    showDrawing(performance.now() - start);
  }
  showState(hasAnswer());
}

/** The theme changed: the worker's picture is not right any more. */
export function forgetPicture() {
  picture = null;
}

/** A Blob of the answer. */
export async function answerFile(format) {
  if (isHeavy()) return (await ask('write', { format })).file;
  return fileOf(format, answer, boundsOf([answer.polygons.positions]) ?? [0, 0, 0, 0]);
}
