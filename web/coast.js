// Coasts of any number of vertices, the same in every run: noise of falling size laid over
// itself. They never cross themselves.

/** Numbers from -1 to 1 in a row that a seed decides (a multiplicative congruential
 * generator, Park and Miller 1988). */
export function numbersFrom(seed) {
  let state = seed;
  return () => {
    state = (state * 48271) % 2147483647;
    return (2 * state) / 2147483647 - 1;
  };
}

/** Heights along a line, or around a circle: the first one follows the last smoothly. */
function heights(count, seed) {
  const next = numbersFrom(seed);
  const sum = new Float64Array(count);
  for (let knots = 4, size = 1; knots <= count; knots *= 2, size *= 0.58) {
    const knot = Float64Array.from({ length: knots }, () => size * next());
    for (let i = 0; i < count; ++i) {
      const at = (i / count) * knots;
      const from = Math.floor(at);
      const t = at - from;
      sum[i] += knot[from] + (knot[(from + 1) % knots] - knot[from]) * t * t * (3 - 2 * t);
    }
  }
  return sum;
}

/** A shore from the left to the right, closed far out at sea: x and y in turn. */
export function shore(count, seed = 2) {
  const height = heights(count - 2, seed);
  const ring = new Float64Array(2 * count);
  height.forEach((h, i) => ring.set([(2e6 * i) / count, 2e5 * h], 2 * i));
  ring.set([2e6, -3e6, 0, -3e6], 2 * (count - 2));
  return ring;
}

/** An island about a centre: x and y in turn. */
export function island(count, { x = 0, y = 0, radius = 1, roughness = 0.28, seed = 7 } = {}) {
  const ring = new Float64Array(2 * count);
  heights(count, seed).forEach((h, i) => {
    const angle = (2 * Math.PI * i) / count;
    const r = radius * Math.exp(roughness * h);
    ring.set([x + r * Math.cos(angle), y + r * Math.sin(angle)], 2 * i);
  });
  return ring;
}
