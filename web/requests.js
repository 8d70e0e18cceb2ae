// What the worker does for the page, since it would take longer than a frame: samples and
// files are read, and large shapes combined, drawn and written.
import { compute } from './compute.js';
import { drawScene } from './draw.js';
import { readRings } from './files.js';
import { SAMPLES } from './samples.js';
import { boundsOf } from './viewport.js';
import { fileOf } from './writers.js';

let scene = null;  // the shapes that were computed last, and their answer

export const requests = {
  sample: ({ name }) => SAMPLES[name].make(),
  read: async ({ file }) => ({ rings: readRings(file.name, await file.text()) }),
  compute({ input }, stage) {
    const answer = compute(input, stage);
    scene = { shapes: input.shapes, answer };
    const { counts, area, step, angle, times } = answer;
    return { counts, area, step, angle, times };
  },
  draw({ view, theme, ratio }) {
    const start = performance.now();
    const canvas = new OffscreenCanvas(Math.round(view.width * ratio), Math.round(view.height * ratio));
    const ctx = canvas.getContext('2d');
    ctx.scale(ratio, ratio);
    drawScene(ctx, view, theme, scene.shapes, scene.answer);
    return { bitmap: canvas.transferToImageBitmap(), view, time: performance.now() - start };
  },
  write: ({ format }) => ({ file: fileOf(format, scene.answer, boundsOf([scene.answer.polygons.positions])) }),
};
