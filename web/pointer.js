// Mouse, pen and fingers on the canvas: a vertex is dragged where one is near, else the
// shape that is edited, else the paper; two fingers zoom. While a ring is drawn, a click
// sets a point.
import {
  activeRings, addRing, changed, choose, insertVertex, isHeavy, moveChosen, moveShape, remember, state,
} from './state.js';
import { panned, toPlane, toScreen, zoomed } from './viewport.js';

const NEAR = 10;

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

function isInActiveShape(x, y) {
  let inside = false;
  for (const ring of activeRings()) {
    for (let i = 0, j = ring.length - 2; i < ring.length; j = i, i += 2) {
      if (ring[i + 1] > y !== ring[j + 1] > y &&
          x < ring[i] + ((y - ring[i + 1]) / (ring[j + 1] - ring[i + 1])) * (ring[j] - ring[i])) inside = !inside;
    }
  }
  return inside;
}

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
  return changed('picture');
}

// What a press begins: a function that follows each move of the pointer by (dx, dy) on the
// screen to (sx, sy).
function dragFrom(sx, sy) {
  const vertex = isHeavy() ? null : nearestVertex(sx, sy);
  if (vertex) {
    choose(vertex);
    remember();
    return (dx, dy, x, y) => moveChosen(...toPlane(state.view, x, y));
  }
  choose(null);
  if (!isHeavy() && isInActiveShape(...toPlane(state.view, sx, sy))) {
    remember();
    return (dx, dy) => moveShape(dx / state.view.scale, -dy / state.view.scale);
  }
  return (dx, dy) => {
    state.view = panned(state.view, dx, dy);
    changed('picture');
  };
}

function cursorAt(sx, sy) {
  if (state.draft) return 'crosshair';
  if (isHeavy()) return 'grab';
  if (nearestVertex(sx, sy)) return 'pointer';
  return isInActiveShape(...toPlane(state.view, sx, sy)) ? 'move' : 'grab';
}

/** @param onMoved is told the time stamp of an event that changed the shapes */
export function listenToPointers(canvas, onMoved) {
  const pointers = new Map();
  let drag = null;
  const place = (event) => [event.offsetX, event.offsetY];

  canvas.addEventListener('pointerdown', (event) => {
    if (event.button !== 0) return;
    canvas.setPointerCapture(event.pointerId);
    pointers.set(event.pointerId, place(event));
    if (state.draft) {
      state.draft.pointer = toPlane(state.view, ...place(event));
      addDraftPoint();
    } else {
      drag = pointers.size === 1 ? dragFrom(...place(event)) : null;
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
    pointers.set(event.pointerId, [sx, sy]);
    if (pointers.size === 2 && !state.draft) {
      const [other] = [...pointers].filter(([id]) => id !== event.pointerId).map(([, at]) => at);
      const factor = Math.hypot(sx - other[0], sy - other[1]) / Math.hypot(last[0] - other[0], last[1] - other[1]);
      if (factor > 0 && factor < Infinity) state.view = zoomed(state.view, factor, ...other);
      changed('picture');
    } else if (drag) {
      onMoved(event.timeStamp);
      drag(sx - last[0], sy - last[1], sx, sy);
    }
  });

  for (const end of ['pointerup', 'pointercancel']) {
    canvas.addEventListener(end, (event) => {
      pointers.delete(event.pointerId);
      drag = null;
    });
  }

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
    event.preventDefault();
    const lines = event.deltaMode === 1 ? 16 : 1;
    state.view = zoomed(state.view, Math.exp(-event.deltaY * lines * 0.0015), ...place(event));
    changed('picture');
  }, { passive: false });
}
