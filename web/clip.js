// Lines of any length, brought to the canvas. A closed path that leaves it goes on along a rim
// that lies a few pixels outside: each point beyond goes to the nearest one of the rim, and
// each line is first cut where it passes from beyond one side to beyond another. So whatever
// is on the canvas keeps its winding number, however far away the rest of the path is, and a
// run outside costs a few points.

const RIM = 8;      // no line is half as wide
const NEAR = 0.45;  // points nearer to the last one are left out

const [LEFT, RIGHT, TOP, BOTTOM] = [1, 2, 4, 8];

/** The canvas with its rim. */
export const frameOf = ({ width, height }) => ({ left: -RIM, top: -RIM, right: width + RIM, bottom: height + RIM });

/** The sides of a frame that a point is beyond, as bits. */
export function sidesBeyond({ left, top, right, bottom }, x, y) {
  return (x < left ? LEFT : x > right ? RIGHT : 0) | (y < top ? TOP : y > bottom ? BOTTOM : 0);
}

function sidesOn({ left, top, right, bottom }, x, y) {
  return (x === left ? LEFT : x === right ? RIGHT : 0) | (y === top ? TOP : y === bottom ? BOTTOM : 0);
}

// Where a line crosses the four straight lines that the frame's sides lie on, in its order.
function crossings({ left, top, right, bottom }, ax, ay, bx, by) {
  const places = [(left - ax) / (bx - ax), (right - ax) / (bx - ax), (top - ay) / (by - ay), (bottom - ay) / (by - ay)];
  return places.filter((t) => t > 0 && t < 1).sort((s, t) => s - t);
}

/** Draws one path on a context, clipped; coordinates are pixels of the screen. */
export class Pen {
  constructor(ctx, view) {
    this.ctx = ctx;
    this.frame = frameOf(view);
  }

  moveTo(x, y) {
    [this.startX, this.startY] = [x, y];
    this.#stand(x, y);
    // The last point of the path, which waits for what follows; and the sides of the rim that
    // it and the point before it lie on.
    this.waitingX = this.#inX(x);
    this.waitingY = this.#inY(y);
    this.waitingOn = this.drawnOn = sidesOn(this.frame, this.waitingX, this.waitingY);
    this.isPoint = true;
    this.ctx.moveTo(this.waitingX, this.waitingY);
  }

  lineTo(x, y) {
    const { x: ax, y: ay, sides, frame } = this;
    const beyond = sidesBeyond(frame, x, y);
    if (sides !== beyond && (sides & beyond) === 0) {
      for (const t of crossings(frame, ax, ay, x, y)) {
        this.#add(this.#inX(ax + t * (x - ax)), this.#inY(ay + t * (y - ay)));
      }
    }
    this.#add(this.#inX(x), this.#inY(y));
    this.#stand(x, y);
  }

  /** Draws what waits. A path of one point only becomes a dot. */
  end() {
    if (this.isPoint) this.waitingX += NEAR;
    this.ctx.lineTo(this.waitingX, this.waitingY);
  }

  close() {
    this.lineTo(this.startX, this.startY);
    this.end();
    this.ctx.closePath();
  }

  #stand(x, y) {
    [this.x, this.y, this.sides] = [x, y, sidesBeyond(this.frame, x, y)];
  }

  #inX(x) {
    return Math.min(Math.max(x, this.frame.left), this.frame.right);
  }

  #inY(y) {
    return Math.min(Math.max(y, this.frame.top), this.frame.bottom);
  }

  // Of points in a row on one side of the rim the first and the last stand for all.
  #add(x, y) {
    if (Math.abs(x - this.waitingX) < NEAR && Math.abs(y - this.waitingY) < NEAR) return;
    const on = sidesOn(this.frame, x, y);
    if ((on & this.waitingOn & this.drawnOn) === 0) {
      this.ctx.lineTo(this.waitingX, this.waitingY);
      this.drawnOn = this.waitingOn;
    }
    [this.waitingX, this.waitingY, this.waitingOn] = [x, y, on];
    this.isPoint = false;
  }
}

/** Draws the part of a line by itself that can be seen. */
export function drawLine(ctx, frame, ax, ay, bx, by) {
  const [from, to] = [sidesBeyond(frame, ax, ay), sidesBeyond(frame, bx, by)];
  if ((from & to) !== 0) return;
  if ((from | to) === 0) {
    ctx.moveTo(ax, ay);
    ctx.lineTo(bx, by);
    return;
  }
  const places = [0, ...crossings(frame, ax, ay, bx, by), 1];
  for (let i = 1; i < places.length; ++i) {
    const middle = (places[i - 1] + places[i]) / 2;
    if (sidesBeyond(frame, ax + middle * (bx - ax), ay + middle * (by - ay)) !== 0) continue;
    ctx.moveTo(ax + places[i - 1] * (bx - ax), ay + places[i - 1] * (by - ay));
    ctx.lineTo(ax + places[i] * (bx - ax), ay + places[i] * (by - ay));
  }
}
