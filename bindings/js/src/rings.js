// Rings as JavaScript has them, written into the module's memory as the C interface takes
// them: all points in a row, and where each ring begins. What is no number goes in as NaN,
// which the library refuses with its place.
import { BAD_ARGUMENT, ZelvanError, doublesAt, numbersAt } from './module.js';

const numberOf = (value) => (typeof value === 'number' ? value : NaN);
const isFlat = (ring) => ArrayBuffer.isView(ring) || Object(ring[0]) !== ring[0];

function pointCount(ring) {
  const count = typeof ring === 'object' ? ring?.length : undefined;
  if (!Number.isInteger(count)) throw new ZelvanError(BAD_ARGUMENT, 'A ring must be an array of points or of numbers.');
  if (!isFlat(ring)) return count;
  if (count % 2 !== 0) throw new ZelvanError(BAD_ARGUMENT, 'A flat ring must hold x and y in turn.');
  return count / 2;
}

function writeNumbers(numbers, xy, at) {
  if (ArrayBuffer.isView(numbers)) xy.set(numbers, at);
  else for (let i = 0; i < numbers.length; ++i) xy[at + i] = numberOf(numbers[i]);
}

function writePoints(ring, xy, at) {
  if (isFlat(ring)) {
    writeNumbers(ring, xy, 2 * at);
    return at + ring.length / 2;
  }
  for (let i = 0; i < ring.length; ++i, ++at) {
    const point = ring[i];
    xy[2 * at] = numberOf(point?.[0]);
    xy[2 * at + 1] = numberOf(point?.[1]);
  }
  return at;
}

/** Takes rings, or what Region.read gives. @return {{xy: number, offsets: number, count:
 * number, points: number}} addresses and sizes */
export function writeRings(rings, reserve) {
  if (rings?.positions && rings.ringOffsets) {
    const { positions, ringOffsets } = rings;
    const xy = reserve(8 * positions.length);
    const offsets = reserve(4 * ringOffsets.length);
    if (!(ringOffsets.at(-1) <= positions.length / 2)) {
      throw new ZelvanError(BAD_ARGUMENT, 'ringOffsets reach beyond positions.');
    }
    writeNumbers(positions, doublesAt(xy, positions.length), 0);
    numbersAt(offsets, ringOffsets.length).set(ringOffsets);
    return { xy, offsets, count: ringOffsets.length - 1, points: positions.length / 2 };
  }
  if (!Array.isArray(rings)) throw new ZelvanError(BAD_ARGUMENT, 'Rings must be an array.');
  const sizes = rings.map(pointCount);
  const points = sizes.reduce((sum, size) => sum + size, 0);
  const xy = reserve(16 * points);
  const offsets = reserve(4 * (rings.length + 1));
  const coordinates = doublesAt(xy, 2 * points);
  const starts = numbersAt(offsets, rings.length + 1);
  let at = 0;
  rings.forEach((ring, i) => {
    starts[i] = at;
    at = writePoints(ring, coordinates, at);
  });
  starts[rings.length] = at;
  return { xy, offsets, count: rings.length, points };
}
