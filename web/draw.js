// The picture: shapes, the answer and its mesh on a 2D context, in the page or in a worker.
// What cannot be seen is left out, so that the time hangs on the pixels and not on the size
// of the shapes: points nearer than half a pixel, edges shorter than one, all that is outside.
import { Pen, drawLine, frameOf, sidesBeyond } from './clip.js';
import { toPlane, toScreen } from './viewport.js';

function traceRing(pen, view, xy, begin, end) {
  for (let i = begin; i < end; ++i) {
    const sx = (xy[2 * i] - view.x) * view.scale;
    const sy = view.height - (xy[2 * i + 1] - view.y) * view.scale;
    if (i === begin) pen.moveTo(sx, sy);
    else pen.lineTo(sx, sy);
  }
  if (begin < end) pen.close();
}

function traceShape(ctx, view, shape) {
  const pen = new Pen(ctx, view);
  ctx.beginPath();
  for (const polygon of shape) for (const ring of polygon) traceRing(pen, view, ring, 0, ring.length / 2);
}

function tracePolygons(ctx, view, { positions, ringOffsets }) {
  const pen = new Pen(ctx, view);
  ctx.beginPath();
  for (let r = 0; r + 1 < ringOffsets.length; ++r) {
    traceRing(pen, view, positions, ringOffsets[r], ringOffsets[r + 1]);
  }
}

// Inner edges, each once, from the triangle with the lower number.
function traceMesh(ctx, view, { positions, indices, neighbours }) {
  const frame = frameOf(view);
  ctx.beginPath();
  const screen = new Float64Array(positions.length);
  for (let i = 0; i < positions.length; i += 2) {
    screen[i] = (positions[i] - view.x) * view.scale;
    screen[i + 1] = view.height - (positions[i + 1] - view.y) * view.scale;
  }
  for (let k = 0; k < indices.length; ++k) {
    const triangle = (k / 3) | 0;
    if (neighbours[k] < triangle) continue;
    const a = 2 * indices[k];
    const b = 2 * indices[k % 3 === 2 ? k - 2 : k + 1];
    const [ax, ay, bx, by] = [screen[a], screen[a + 1], screen[b], screen[b + 1]];
    if (Math.abs(ax - bx) < 1 && Math.abs(ay - by) < 1) continue;
    drawLine(ctx, frame, ax, ay, bx, by);
  }
}

// The points of the grid, where they stand far enough apart to be told from each other.
function drawGrid(ctx, view, step, colour) {
  const gap = step * view.scale;
  if (gap < 9) return;
  ctx.fillStyle = colour;
  const [x0, y0] = toPlane(view, 0, view.height);
  const [firstX, firstY] = toScreen(view, Math.ceil(x0 / step) * step, Math.ceil(y0 / step) * step);
  for (let sx = firstX; sx < view.width; sx += gap) {
    for (let sy = firstY; sy > 0; sy -= gap) ctx.fillRect(sx - 0.75, sy - 0.75, 1.5, 1.5);
  }
}

/** Fills, mesh and outlines. `theme` has the colours of style.css by name. */
export function drawScene(ctx, view, theme, shapes, answer) {
  ctx.lineJoin = 'round';
  if (answer) {
    drawGrid(ctx, view, answer.step, theme.grid);
    tracePolygons(ctx, view, answer.polygons);
    ctx.fillStyle = theme.fill;
    ctx.fill('evenodd');
    if (answer.mesh.indices.length > 0) {
      traceMesh(ctx, view, answer.mesh);
      ctx.lineWidth = 0.75;
      ctx.strokeStyle = theme.mesh;
      ctx.stroke();
    }
  }
  for (const name of ['A', 'B']) {
    traceShape(ctx, view, shapes[name]);
    ctx.lineWidth = 1.25;
    ctx.strokeStyle = theme[name];
    ctx.stroke();
  }
  if (answer) {
    tracePolygons(ctx, view, answer.polygons);
    ctx.lineWidth = 2;
    ctx.strokeStyle = theme.outline;
    ctx.stroke();
  }
}

function disc(ctx, sx, sy, radius) {
  ctx.moveTo(sx + radius, sy);
  ctx.arc(sx, sy, radius, 0, 2 * Math.PI);
}

// The mean length of the edges on the screen, by which handles become smaller.
function meanEdge(view, rings) {
  let length = 0;
  let count = 0;
  for (const ring of rings) {
    count += ring.length / 2;
    for (let i = 2; i < ring.length; i += 2) length += Math.hypot(ring[i] - ring[i - 2], ring[i + 1] - ring[i - 1]);
  }
  return (length * view.scale) / count;
}

/** The vertices of the shape that is edited, and the one that is chosen. */
export function drawHandles(ctx, view, theme, rings, colour, chosen) {
  const radius = Math.max(1.3, Math.min(3, meanEdge(view, rings) / 3));
  const frame = frameOf(view);
  ctx.beginPath();
  for (const ring of rings) {
    for (let i = 0; i < ring.length; i += 2) {
      const [sx, sy] = toScreen(view, ring[i], ring[i + 1]);
      if (!sidesBeyond(frame, sx, sy)) disc(ctx, sx, sy, radius);
    }
  }
  ctx.fillStyle = radius < 2 ? colour : theme.paper;
  ctx.fill();
  ctx.lineWidth = radius < 2 ? 0.5 : 1.25;
  ctx.strokeStyle = colour;
  ctx.stroke();
  if (!chosen) return;
  const ring = rings[chosen.ring];
  const [sx, sy] = toScreen(view, ring[2 * chosen.vertex], ring[2 * chosen.vertex + 1]);
  ctx.beginPath();
  disc(ctx, sx, sy, 5);
  ctx.fillStyle = colour;
  ctx.fill();
  ctx.beginPath();
  disc(ctx, sx, sy, 9);
  ctx.lineWidth = 2;
  ctx.stroke();
}

/** The ring that is being drawn, with a line to the pointer. */
export function drawDraft(ctx, view, theme, points, pointer, colour) {
  const pen = new Pen(ctx, view);
  ctx.beginPath();
  [...points, ...pointer].forEach((x, i, all) => {
    if (i % 2 === 0) pen[i === 0 ? 'moveTo' : 'lineTo'](...toScreen(view, x, all[i + 1]));
  });
  pen.end();
  ctx.lineWidth = 1.5;
  ctx.strokeStyle = colour;
  ctx.setLineDash([5, 4]);
  ctx.stroke();
  ctx.setLineDash([]);
  drawHandles(ctx, view, theme, [points], colour, null);
  const [sx, sy] = toScreen(view, ...pointer);
  ctx.beginPath();
  ctx.moveTo(sx - 8, sy);
  ctx.lineTo(sx + 8, sy);
  ctx.moveTo(sx, sy - 8);
  ctx.lineTo(sx, sy + 8);
  ctx.stroke();
}
