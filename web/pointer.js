// Mouse, pen and fingers on the canvas: a vertex is dragged where one is near, else the
// shape that is edited, else the paper; two fingers pan and zoom. While a ring is drawn, a
// click sets a point. Where the page is narrow and scrolls, the wheel and a finger that goes
// up or down scroll it, unless the finger is on a vertex or draws.
import { panBy, show, zoomBy } from './navigate.js';
import { holds } from './shapes.js';
import {
  activeRings, addRing, changed, choose, chosenPoint, forgetLastStep, insertVertex, isHeavy, moveChosen, placeShape,
  state,
} from './state.js';
import { toPlane, toScreen } from './viewport.js';

const NEAR = 10;
const STILL = 3;  // a press that moves no further is a click

const scrolls = matchMedia('(max-width: 760px)');  // as in style.css

function nearestVertex(sx, sy) {
  let best = null;
  let least = NEAR;
  activeRings().forEach((ring, r) => {
    for (let i = 0; i < ring.length; i += 2) {
      const [vx, vy] = toScreen(state.view, ring[i], ring[i + 1]);
      const distance = Math.hypot(vx - sx, vy - sy);
      if (distance < least) [least, best] = [distance, { ring: r, vertex: i / 2 }];
    }
  });
  return best;
}

// The edge of the active shape next to a point of the screen, as the vertex before it.
function nearestEdge(sx, sy) {
  let best = null;
  let least = NEAR;
  activeRings().forEach((ring, r) => {
    for (let i = 0; i < ring.length; i += 2) {
      const [ax, ay] = toScreen(state.view, ring[i], ring[i + 1]);
      const next = (i + 2) % ring.length;
      const [bx, by] = toScreen(state.view, ring[next], ring[next + 1]);
      const [ex, ey] = [bx - ax, by - ay];
      const t = Math.max(0, Math.min(1, ((sx - ax) * ex + (sy - ay) * ey) / (ex * ex + ey * ey || 1)));
      const distance = Math.hypot(ax + t * ex - sx, ay + t * ey - sy);
      if (distance < least) [least, best] = [distance, { ring: r, vertex: i / 2 }];
    }
  });
  return best;
}

const isInActiveShape = (x, y) => state.shapes[state.active].some((polygon) => holds(polygon, x, y));

/** Closes the ring that is being drawn, if it has enough points. */
export function finishDraft() {
  const { points } = state.draft;
  state.draft = null;
  if (points.length >= 6) addRing(points);
  else changed('picture');
}

/** Adds the pointer's place to the ring that is being drawn; on its first point closes it. */
export function addDraftPoint() {
  const { points, pointer } = state.draft;
  if (points.length >= 6) {
    const [ax, ay] = toScreen(state.view, points[0], points[1]);
    const [bx, by] = toScreen(state.view, ...pointer);
    if (Math.hypot(ax - bx, ay - by) < NEAR) return finishDraft();
  }
  const last = points.length - 2;
  if (last >= 0 && points[last] === pointer[0] && points[last + 1] === pointer[1]) return undefined;
  points.push(...pointer);
  state.draft.taken.length = 0;
  return changed('picture');
}

// Follows a pointer which is (dx, dy) away from where it was pressed, by `move`, and answers
// whether it did. What the pointer moves may be gone meanwhile, by undo or by another sample:
// then the drag is over.
function dragOfShapes(move) {
  let { shapes } = state;
  const { active } = state;
  let isFirst = true;
  const isGone = () => shapes !== state.shapes || active !== state.active;
  return {
    follow(dx, dy) {
      if (isGone() || (isFirst && Math.hypot(dx, dy) < STILL)) return false;
      move(dx / state.view.scale, -dy / state.view.scale, isFirst);
      isFirst = false;
      ({ shapes } = state);
      return true;
    },
    cancel() {
      if (!isFirst && !isGone()) forgetLastStep();
    },
  };
}

// What a press begins: it follows each move of the pointer, told by how much that is away from
// the place of the press, and can be cancelled.
function dragFrom(sx, sy) {
  const vertex = isHeavy() ? null : nearestVertex(sx, sy);
  choose(vertex);
  if (vertex) {
    const [x, y] = chosenPoint();
    return dragOfShapes((dx, dy, isNewStep) => {
      choose(vertex);
      moveChosen(x + dx, y + dy, isNewStep);
    });
  }
  if (!isHeavy() && isInActiveShape(...toPlane(state.view, sx, sy))) {
    const shape = state.shapes[state.active];
    return dragOfShapes((dx, dy, isNewStep) => placeShape(shape, dx, dy, isNewStep));
  }
  const { view } = state;
  let [lastX, lastY] = [0, 0];
  return {
    follow(dx, dy) {
      panBy(dx - lastX, dy - lastY);
      [lastX, lastY] = [dx, dy];
    },
    cancel: () => show(view),
  };
}

function cursorAt(sx, sy) {
  if (state.draft) return 'crosshair';
  if (isHeavy()) return 'grab';
  if (nearestVertex(sx, sy)) return 'pointer';
  return isInActiveShape(...toPlane(state.view, sx, sy)) ? 'move' : 'grab';
}

// Two fingers went from one pair of places to another: what was between them still is.
function pinch([a, b], [c, d]) {
  const middle = (p, q) => [(p[0] + q[0]) / 2, (p[1] + q[1]) / 2];
  const distance = (p, q) => Math.hypot(p[0] - q[0], p[1] - q[1]);
  const [from, to] = [middle(a, b), middle(c, d)];
  panBy(to[0] - from[0], to[1] - from[1]);
  const factor = distance(c, d) / distance(a, b);
  if (factor > 0 && factor < Infinity) zoomBy(factor, ...to);
}

/** @param onMoved is told the time stamp of an event that changed the shapes */
export function listenToPointers(canvas, onMoved) {
  const pointers = new Map();
  let drag = null;
  let pressed = null;
  const place = (event) => [event.offsetX, event.offsetY];

  canvas.addEventListener('pointerdown', (event) => {
    if (event.button !== 0) return;
    canvas.setPointerCapture(event.pointerId);
    pointers.set(event.pointerId, place(event));
    pressed = place(event);
    if (state.draft) {
      state.draft.pointer = toPlane(state.view, ...pressed);
      addDraftPoint();
    } else {
      drag = pointers.size === 1 ? dragFrom(...pressed) : null;
    }
  });

  canvas.addEventListener('pointermove', (event) => {
    const [sx, sy] = place(event);
    const last = pointers.get(event.pointerId);
    if (state.draft) {
      state.draft.pointer = toPlane(state.view, sx, sy);
      changed('picture');
    }
    if (!last) {
      canvas.style.cursor = cursorAt(sx, sy);
      return;
    }
    const before = [...pointers.values()];
    pointers.set(event.pointerId, [sx, sy]);
    if (pointers.size === 2 && !state.draft) {
      pinch(before, [...pointers.values()]);
    } else if (drag?.follow(sx - pressed[0], sy - pressed[1])) {
      onMoved(event.timeStamp);
    }
  });

  // The browser cancels what becomes a scroll of the page.
  for (const end of ['pointerup', 'pointercancel']) {
    canvas.addEventListener(end, (event) => {
      pointers.delete(event.pointerId);
      if (end === 'pointercancel') drag?.cancel();
      drag = null;
    });
  }

  // Keeps the browser from scrolling.
  canvas.addEventListener('touchstart', (event) => {
    const { left, top } = canvas.getBoundingClientRect();
    const [{ clientX, clientY }] = event.touches;
    const isOnVertex = () => !isHeavy() && nearestVertex(clientX - left, clientY - top);
    if (event.touches.length > 1 || state.draft || isOnVertex()) event.preventDefault();
  }, { passive: false });

  canvas.addEventListener('dblclick', (event) => {
    const [sx, sy] = place(event);
    if (state.draft) {
      finishDraft();
    } else if (!isHeavy() && !nearestVertex(sx, sy)) {
      const edge = nearestEdge(sx, sy);
      if (edge) insertVertex(edge.ring, edge.vertex, ...toPlane(state.view, sx, sy));
    }
  });

  canvas.addEventListener('wheel', (event) => {
    if (scrolls.matches && !event.ctrlKey) return;
    event.preventDefault();
    const lines = event.deltaMode === 1 ? 16 : 1;
    zoomBy(Math.exp(-event.deltaY * lines * 0.0015), ...place(event));
  }, { passive: false });
}
