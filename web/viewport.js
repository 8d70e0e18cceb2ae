// What part of the plane the canvas shows: sizes in CSS pixels, y up in the plane and down
// on the screen.

export function viewportOf(width, height) {
  return { width, height, scale: 1, x: 0, y: 0 };
}

export const toScreen = (view, x, y) => [(x - view.x) * view.scale, view.height - (y - view.y) * view.scale];
export const toPlane = (view, sx, sy) => [view.x + sx / view.scale, view.y + (view.height - sy) / view.scale];

/** The same middle and scale in a canvas of another size. */
export function resized(view, width, height) {
  const [x, y] = toPlane(view, (view.width - width) / 2, (view.height + height) / 2);
  return { ...view, width, height, x, y };
}

/** A box in the middle, with a margin around it. */
export function fitted(view, [x0, y0, x1, y1]) {
  const margin = Math.min(56, view.width / 8, view.height / 8);
  const [w, h] = [x1 - x0 || 1, y1 - y0 || 1];
  const scale = Math.min((view.width - 2 * margin) / w, (view.height - 2 * margin) / h);
  return { ...view, scale, x: (x0 + x1 - view.width / scale) / 2, y: (y0 + y1 - view.height / scale) / 2 };
}

export function panned(view, dx, dy) {
  return { ...view, x: view.x - dx / view.scale, y: view.y + dy / view.scale };
}

/** Larger by a factor, about a point of the screen that stays where it is. */
export function zoomed(view, factor, sx = view.width / 2, sy = view.height / 2) {
  const [x, y] = toPlane(view, sx, sy);
  const scale = view.scale * factor;
  return { ...view, scale, x: x - sx / scale, y: y - (view.height - sy) / scale };
}

export function boundsOf(rings) {
  const box = [Infinity, Infinity, -Infinity, -Infinity];
  for (const ring of rings) {
    for (let i = 0; i < ring.length; i += 2) {
      box[0] = Math.min(box[0], ring[i]);
      box[1] = Math.min(box[1], ring[i + 1]);
      box[2] = Math.max(box[2], ring[i]);
      box[3] = Math.max(box[3], ring[i + 1]);
    }
  }
  return box[0] <= box[2] ? box : null;
}
