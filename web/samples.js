// What the page can start with. Each sample gives shapes A and B, of rings as they are drawn
// by hand or of polygons, and what to do with them.
import { island } from './coast.js';
import { readPolygons } from './files.js';
import { shapeOf } from './shapes.js';

const ring = (...numbers) => Float64Array.from(numbers);

function box(x0, y0, x1, y1) {
  return ring(x0, y0, x1, y0, x1, y1, x0, y1);
}

function polygon(sides, x, y, radius, turn = 0) {
  return Float64Array.from({ length: 2 * sides }, (_, i) => {
    const angle = turn + (Math.PI * 2 * (i >> 1)) / sides;
    return i % 2 === 0 ? x + radius * Math.cos(angle) : y + radius * Math.sin(angle);
  });
}

// A band rolled up: out along one side and back along the other.
function spiral(count) {
  const half = count / 2;
  const at = (i, shift) => {
    const angle = (i / half) * 10 * Math.PI;
    const radius = 6 + 2.6 * angle + shift;
    return [radius * Math.cos(angle), radius * Math.sin(angle)];
  };
  const points = [];
  for (let i = 0; i < half; ++i) points.push(...at(i, 0));
  for (let i = half - 1; i >= 0; --i) points.push(...at(i, 8));
  return Float64Array.from(points);
}

// Every second corner of a pentagon: its middle is wound around twice.
function pentagram(x, y, radius) {
  const corners = polygon(5, x, y, radius, Math.PI / 2);
  return Float64Array.from([0, 2, 4, 1, 3].flatMap((i) => [corners[2 * i], corners[2 * i + 1]]));
}

async function countries() {
  const response = await fetch(new URL('data/south-america.geojson', import.meta.url));
  if (!response.ok) throw new Error(`The map of the sample cannot be loaded (${response.status}).`);
  return {
    A: shapeOf([], readPolygons('The map', await response.text()).polygons),
    B: shapeOf([polygon(72, -59, -13, 13), polygon(72, -59, -13, 8)]),
    operation: 'subtract',
  };
}

export const SAMPLES = {
  islands: {
    title: 'Two islands',
    make: () => ({
      A: shapeOf([island(90, { x: 0, y: 0, radius: 100, seed: 11 }), island(24, { x: -25, y: 10, radius: 28, seed: 5 })]),
      B: shapeOf([island(80, { x: 95, y: 30, radius: 80, seed: 23 }), island(20, { x: 110, y: 42, radius: 22, seed: 9 })]),
      operation: 'unite',
    }),
  },
  countries: { title: 'Countries of South America', make: countries },
  spiral: {
    title: 'A spiral and a beam',
    make: () => ({ A: shapeOf([spiral(360)]), B: shapeOf([box(-110, -14, 110, 14)]), operation: 'xor' }),
  },
  touching: {
    title: 'Touching contours',
    make: () => ({
      A: shapeOf([box(0, 0, 4, 4), box(4, 4, 8, 8), box(4, 0, 8, 4), ring(1, 1, 3, 1, 4, 2, 3, 3, 1, 3, 0, 2)]),
      B: shapeOf([box(8, 2, 11, 6), ring(8, 6, 11, 6, 11, 9), ring(0, 4, 4, 4, 4, 8, 2, 6)]),
      operation: 'unite',
    }),
  },
  bowtie: {
    title: 'A bow-tie and a star',
    make: () => ({
      A: shapeOf([pentagram(0, 0, 10)]),
      B: shapeOf([ring(-12, -8, 12, 4, 12, -8, -12, 4)]),
      operation: 'unite',
      fill: 'even-odd',
    }),
  },
  coasts: {
    title: 'Two coasts of 1,000 vertices',
    make: () => ({
      A: shapeOf([island(1000, { x: 0, y: 0, radius: 100, seed: 3 })]),
      B: shapeOf([island(1000, { x: 70, y: 20, radius: 90, seed: 31 })]),
      operation: 'intersect',
    }),
  },
  million: {
    title: 'A coast of a million vertices',
    isLarge: true,  // made by the worker
    make: () => ({
      A: shapeOf([island(1000000, { x: 0, y: 0, radius: 100, seed: 3 })]),
      B: shapeOf([polygon(6, 120, 30, 70)]),
      operation: 'subtract',
    }),
  },
};
