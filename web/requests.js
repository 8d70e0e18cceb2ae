// What the worker does for the page, since it would take longer than a frame: samples and
// files are read, and large shapes combined, drawn and written.
import { compute } from './compute.js';
import { drawScene } from './draw.js';
import { readPolygons } from './files.js';
import { SAMPLES } from './samples.js';
import { shapeOf } from './shapes.js';
import { boundsOf } from './viewport.js';
import { fileOf } from './writers.js';
import { Region } from './zelvan/index.js';

let scene = null;  // the shapes that were computed last, and their answer

// The first file is shape A, all others are shape B.
async function read({ files }) {
  const contents = [];
  for (const file of files) contents.push(readPolygons(file.name, await file.text()));
  const [first, ...others] = contents.map(({ polygons }) => polygons);
  try {
    Region.gridCovering(boundsOf([...first, ...others.flat()].flat()));
  } catch (error) {
    throw new Error(`${files.map(({ name }) => name).join(', ')} cannot be shown: ${error.message}`);
  }
  return {
    shapes: { A: shapeOf([], first), B: shapeOf([], others.flat()) },
    leftOut: contents.map(({ leftOut }) => leftOut).filter(Boolean).join(' '),
  };
}

export const requests = {
  sample: ({ name }) => SAMPLES[name].make(),
  read,
  compute({ input }, stage) {
    const answer = compute(input, stage);
    scene = { shapes: input.shapes, answer };
    const { counts, area, step, lost, angle, times } = answer;
    return { counts, area, step, lost, angle, times };
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
