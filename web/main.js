// The page: connects its elements to the state, and paints at most once in a frame.
import { answerFile, forgetPicture, paint, recompute } from './answer.js';
import { showNotice, showProgress, showResponse, showWork } from './figures.js';
import { Cancelled, ask, cancel } from './helper.js';
import { listenToKeys, toggleDraft, zoom } from './keys.js';
import { listenToPointers } from './pointer.js';
import { SAMPLES } from './samples.js';
import { changed, onChange, replaceAll, setActive, setRings, state, undo } from './state.js';
import { onThemeChange } from './theme.js';
import { boundsOf, fitted, resized, viewportOf } from './viewport.js';

const byId = (id) => document.getElementById(id);
const canvas = byId('canvas');
const ctx = canvas.getContext('2d');

let isAsked = false;
let isStale = false;
let measured = 0;
let movedAt = null;  // the time stamp of the event that the next picture answers

function frame() {
  isAsked = false;
  if (isStale) recompute(draw);
  paint(ctx, draw);
  if (isStale && movedAt !== null) {
    showResponse(performance.measure('move to picture', { start: movedAt }).duration);
    if (++measured % 1000 === 0) performance.clearMeasures('move to picture');
  }
  isStale = false;
  movedAt = null;
}

function draw() {
  if (isAsked) return;
  isAsked = true;
  requestAnimationFrame(frame);
}

function onMoved(timeStamp) {
  movedAt ??= timeStamp;
}

onChange((what) => {
  isStale ||= what === 'shapes';
  draw();
});

function fit() {
  const box = boundsOf([...state.shapes.A, ...state.shapes.B]);
  if (box) state.view = fitted(state.view, box);
  changed('picture');
}

function resize() {
  const { width, height } = canvas.getBoundingClientRect();
  canvas.width = Math.round(width * devicePixelRatio);
  canvas.height = Math.round(height * devicePixelRatio);
  const isFirst = state.view === null;
  state.view = isFirst ? viewportOf(width, height) : resized(state.view, width, height);
  // A canvas of another size is empty: it is painted before it is shown.
  if (isFirst) fit();
  paint(ctx, draw);
}

// What takes its time, with its failure told in words.
async function inWords(stage, work) {
  showWork(stage);
  showProgress(0);
  try {
    return await work();
  } catch (error) {
    if (!(error instanceof Cancelled)) showNotice(error.message);
    return null;
  } finally {
    showWork(null);
  }
}

async function loadSample(name) {
  const { make, isLarge } = SAMPLES[name];
  const made = await inWords('Making the sample', () => (isLarge ? ask('sample', { name }) : make()));
  if (!made || byId('sample').value !== name) return;
  const { A, B, operation, fill = 'even-odd' } = made;
  Object.assign(state, { operation, fill, doublings: 0, active: 'A' });
  replaceAll({ A, B });
  fit();
}

async function readFile(file) {
  const made = await inWords(`Reading ${file.name}`, () => ask('read', { file }));
  if (!made) return;
  setRings(state.active, made.rings);
  fit();
}

async function download(format) {
  const file = await inWords(`Writing ${format}`, () => answerFile(format));
  if (!file) return;
  const link = document.createElement('a');
  link.href = URL.createObjectURL(file);
  link.download = `zelvan.${format}`;
  link.click();
  setTimeout(() => URL.revokeObjectURL(link.href), 10000);
}

function listenToDrops() {
  const stage = document.body;
  stage.addEventListener('dragover', (event) => {
    event.preventDefault();
    stage.classList.add('dropping');
  });
  stage.addEventListener('dragleave', (event) => {
    if (!event.relatedTarget) stage.classList.remove('dropping');
  });
  stage.addEventListener('drop', (event) => {
    event.preventDefault();
    stage.classList.remove('dropping');
    const [file] = event.dataTransfer.files;
    if (file) readFile(file);
    else showNotice('Only files can be dropped here.');
  });
}

function listenToPanel() {
  for (const name of ['operation', 'mesh']) {
    for (const input of document.querySelectorAll(`input[name="${name}"]`)) {
      input.addEventListener('change', () => {
        state[name] = input.value;
        changed('shapes');
      });
    }
  }
  for (const input of document.querySelectorAll('input[name="active"]')) {
    input.addEventListener('change', () => setActive(input.value));
  }
  byId('fill').addEventListener('change', () => {
    state.fill = byId('fill').value;
    changed('shapes');
  });
  byId('doublings').addEventListener('input', () => {
    state.doublings = Number(byId('doublings').value);
    changed('shapes');
  });
  byId('sample').append(...Object.entries(SAMPLES).map(([name, { title }]) => new Option(title, name)));
  byId('sample').addEventListener('change', () => loadSample(byId('sample').value));
  byId('file').addEventListener('change', () => {
    const [file] = byId('file').files;
    if (file) readFile(file);
    byId('file').value = '';
  });
  for (const button of document.querySelectorAll('.download')) {
    button.addEventListener('click', () => download(button.dataset.format));
  }
  byId('cancel').addEventListener('click', () => {
    cancel();
    draw();
  });
}

function listenToBars() {
  byId('draw').addEventListener('click', () => {
    toggleDraft();
    canvas.focus();
  });
  byId('clear').addEventListener('click', () => setRings(state.active, []));
  byId('undo').addEventListener('click', undo);
  byId('zoom-in').addEventListener('click', () => zoom(1.25));
  byId('zoom-out').addEventListener('click', () => zoom(0.8));
  byId('fit').addEventListener('click', fit);
}

new ResizeObserver(resize).observe(canvas);
onThemeChange(() => {
  forgetPicture();
  draw();
});
resize();
listenToPointers(canvas, onMoved);
listenToKeys(canvas, fit, onMoved);
listenToPanel();
listenToBars();
listenToDrops();
loadSample('islands');
