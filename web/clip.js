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
export function sidesBeyond(frame, x, y) {
  return (x < frame.left ? LEFT : x > frame.right ? RIGHT : 0) | (y < frame.top ? TOP : y > frame.bottom ? BOTTOM : 0);
}

// Where a line crosses the four straight lines that the frame's sides lie on, in its order.
function crossings({ left, top, right, bottom }, ax, ay, bx, by) {
  const places = [(left - ax) / (bx - ax), (right - ax) / (bx - ax), (top - ay) / (by - ay), (bottom - ay) / (by - ay)];
  return places.filter((t) => t > 0 && t < 1).sort((s, t) => s - t);
}

/** Draws one path on a context, clipped; coordinates are pixels of the screen. */
export class Pen {
  // Where the path is, and beyond which sides of the frame.
  #x = 0;
  #y = 0;
  #sides = 0;
  // The last point of what is drawn, which waits for what follows; and the sides of the rim
  // that it and the point before it lie on.
  #waitingX = 0;
  #waitingY = 0;
  #waitingOn = 0;
  #drawnOn = 0;

  constructor(ctx, view) {
    this.ctx = ctx;
    this.frame = frameOf(view);
  }

  moveTo(x, y) {
    [this.startX, this.startY] = [x, y];
    this.isPoint = true;
    this.#stand(x, y, sidesBeyond(this.frame, x, y));
    this.#waitingX = this.#inX(x);
    this.#waitingY = this.#inY(y);
    this.#waitingOn = this.#drawnOn = this.#sides;
    this.ctx.moveTo(this.#waitingX, this.#waitingY);
  }

  lineTo(x, y) {
    const sides = sidesBeyond(this.frame, x, y);
    if ((sides | this.#sides) === 0) this.#add(x, y, 0);
    else this.#addBeyond(x, y, sides);
    this.#stand(x, y, sides);
  }

  /** Draws what waits. A path of one point only becomes a dot. */
  end() {
    this.ctx.lineTo(this.isPoint ? this.#waitingX + NEAR : this.#waitingX, this.#waitingY);
  }

  close() {
    this.lineTo(this.startX, this.startY);
    this.end();
    this.ctx.closePath();
  }

  #stand(x, y, sides) {
    this.#x = x;
    this.#y = y;
    this.#sides = sides;
  }

  #inX(x) {
    return Math.min(Math.max(x, this.frame.left), this.frame.right);
  }

  #inY(y) {
    return Math.min(Math.max(y, this.frame.top), this.frame.bottom);
  }

  // A line that is not all inside.
  #addBeyond(x, y, sides) {
    if ((sides & this.#sides) === 0) {
      for (const t of crossings(this.frame, this.#x, this.#y, x, y)) {
        this.#add(this.#inX(this.#x + t * (x - this.#x)), this.#inY(this.#y + t * (y - this.#y)), 0);
      }
    }
    this.#add(this.#inX(x), this.#inY(y), sides);
  }

  // A point on the canvas, or on some sides of the rim: of those in a row on one side the
  // first and the last stand for all.
  #add(x, y, on) {
    if (Math.abs(x - this.#waitingX) < NEAR && Math.abs(y - this.#waitingY) < NEAR) return;
    if ((on & this.#waitingOn & this.#drawnOn) === 0) {
      this.ctx.lineTo(this.#waitingX, this.#waitingY);
      this.#drawnOn = this.#waitingOn;
    }
    this.#waitingX = x;
    this.#waitingY = y;
    this.#waitingOn = on;
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
