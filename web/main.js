// The page: connects its elements to the state, and paints at most once in a frame.
import { answerFile, forgetPicture, paint, recompute } from './answer.js';
import { showProgress, showResponse, showSource, showWork } from './figures.js';
import { Cancelled, ask, cancel } from './helper.js';
import { listenToKeys, toggleDraft } from './keys.js';
import { fit, resizeTo, zoomBy } from './navigate.js';
import { listenToNotices, showNotice } from './notices.js';
import { listenToPointers } from './pointer.js';
import { SAMPLES } from './samples.js';
import { changed, clear, load, onChange, redo, setActive, state, undo } from './state.js';
import { onThemeChange } from './theme.js';
import { init } from './zelvan/index.js';

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

let shown = null;  // the source that a notice is about

function onMoved(timeStamp) {
  movedAt ??= timeStamp;
}

onChange((what) => {
  isStale ||= what === 'shapes';
  if (what === 'shapes') showSource();
  if (state.source !== shown) showNotice('request', '');
  shown = state.source;
  draw();
});

function resize() {
  const { width, height } = canvas.getBoundingClientRect();
  canvas.width = Math.round(width * devicePixelRatio);
  canvas.height = Math.round(height * devicePixelRatio);
  resizeTo(width, height);
  // A canvas of another size is empty: it is painted before it is shown.
  paint(ctx, draw);
}

// What takes its time, with its failure told in words.
async function inWords(stage, work) {
  showNotice('request', '');
  showWork(stage);
  showProgress(0);
  try {
    return await work();
  } catch (error) {
    if (!(error instanceof Cancelled)) showNotice('request', error.message, true);
    return null;
  } finally {
    showWork(null);
  }
}

let asked = 0;  // of samples and files the one that was asked for last is shown

async function take(stage, work) {
  const number = ++asked;
  const made = await inWords(stage, work);
  if (number !== asked) return;
  if (made) {
    load(made.fields);
    fit();
    showNotice('request', made.notice ?? '');
  }
  showSource();
}

function loadSample(sample) {
  const { make, isLarge } = SAMPLES[sample];
  return take('Making the sample', async () => {
    const { A, B, ...settings } = isLarge ? await ask('sample', { name: sample }) : await make();
    return { fields: { ...settings, shapes: { A, B }, source: { sample } } };
  });
}

function readFiles(list) {
  const files = [...list];
  if (files.length === 0) return;
  const others = files.length === 1 ? '' : ` and ${files.length - 1} more`;
  const title = files[0].name + others;
  take(`Reading ${title}`, async () => {
    const { shapes, leftOut } = await ask('read', { files });
    return { fields: { shapes, source: { files: title } }, notice: leftOut };
  });
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
    const { files } = event.dataTransfer;
    if (files.length > 0) readFiles(files);
    else showNotice('request', 'Only files can be dropped here.', true);
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
  for (const name of ['doublings', 'offset']) {
    byId(name).addEventListener('input', () => {
      state[name] = Number(byId(name).value);
      changed('shapes');
    });
  }
  byId('sample').prepend(...Object.entries(SAMPLES).map(([name, { title }]) => new Option(title, name)));
  byId('sample').addEventListener('change', () => loadSample(byId('sample').value));
  byId('file').addEventListener('change', () => {
    readFiles(byId('file').files);
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
  byId('clear').addEventListener('click', clear);
  byId('undo').addEventListener('click', undo);
  byId('redo').addEventListener('click', redo);
  byId('zoom-in').addEventListener('click', () => zoomBy(1.25));
  byId('zoom-out').addEventListener('click', () => zoomBy(0.8));
  byId('fit').addEventListener('click', fit);
}

await init();
new ResizeObserver(resize).observe(canvas);
onThemeChange(() => {
  forgetPicture();
  draw();
});
resize();
listenToPointers(canvas, onMoved);
listenToKeys(canvas, onMoved);
listenToNotices();
listenToPanel();
listenToBars();
listenToDrops();
loadSample('islands');
