// The answer as a file: SVG, GeoJSON or OBJ, as pieces of text for a Blob.

function ringsOf({ positions, ringOffsets }, begin, end) {
  const rings = [];
  for (let r = begin; r < end; ++r) rings.push(positions.subarray(2 * ringOffsets[r], 2 * ringOffsets[r + 1]));
  return rings;
}

function closedPoints(ring) {
  const points = [];
  for (let i = 0; i < ring.length; i += 2) points.push(`[${ring[i]},${ring[i + 1]}]`);
  return `[${points.join(',')},${points[0]}]`;
}

function* geoJson({ polygons }) {
  const { polygonOffsets } = polygons;
  yield '{"type":"MultiPolygon","coordinates":[';
  for (let p = 0; p + 1 < polygonOffsets.length; ++p) {
    const rings = ringsOf(polygons, polygonOffsets[p], polygonOffsets[p + 1]);
    yield `${p === 0 ? '' : ','}\n[${rings.map(closedPoints).join(',')}]`;
  }
  yield ']}\n';
}

function* obj({ mesh }) {
  const { positions, indices } = mesh;
  for (let i = 0; i < positions.length; i += 2) yield `v ${positions[i]} ${positions[i + 1]} 0\n`;
  for (let i = 0; i < indices.length; i += 3) {
    yield `f ${indices[i] + 1} ${indices[i + 1] + 1} ${indices[i + 2] + 1}\n`;
  }
}

// 1000 units wide, with a hundredth of a unit as the finest detail.
function* svg({ polygons, mesh }, [x0, y0, x1, y1]) {
  const scale = 1000 / Math.max(x1 - x0, y1 - y0, Number.MIN_VALUE);
  const at = (xy, i) => `${((xy[i] - x0) * scale).toFixed(2)} ${((y1 - xy[i + 1]) * scale).toFixed(2)}`;
  const [w, h] = [(x1 - x0) * scale, (y1 - y0) * scale].map((size) => size.toFixed(2));
  yield `<svg xmlns="http://www.w3.org/2000/svg" viewBox="-5 -5 ${+w + 10} ${+h + 10}" stroke-linejoin="round">\n`;
  yield '<path fill="#bfe3dc" stroke="#14665a" stroke-width="1.5" fill-rule="evenodd" d="';
  for (const ring of ringsOf(polygons, 0, polygons.ringOffsets.length - 1)) {
    const points = [];
    for (let i = 0; i < ring.length; i += 2) points.push(at(ring, i));
    yield `M${points.join('L')}Z\n`;
  }
  yield '"/>\n<path fill="none" stroke="#14665a" stroke-width="0.4" d="';
  const { positions, indices, neighbours } = mesh;
  for (let k = 0; k < indices.length; ++k) {
    if (neighbours[k] < Math.floor(k / 3)) continue;
    const next = k % 3 === 2 ? k - 2 : k + 1;
    yield `M${at(positions, 2 * indices[k])}L${at(positions, 2 * indices[next])}\n`;
  }
  yield '"/>\n</svg>\n';
}

export const FORMATS = {
  svg: { write: svg, type: 'image/svg+xml' },
  geojson: { write: geoJson, type: 'application/geo+json' },
  obj: { write: obj, type: 'model/obj' },
};

/** The file of an answer; `box` is what the answer lies in. */
export function fileOf(format, answer, box) {
  const { write, type } = FORMATS[format];
  const pieces = [];
  let piece = [];
  for (const text of write(answer, box)) {
    if (piece.push(text) === 10000) {
      pieces.push(piece.join(''));
      piece = [];
    }
  }
  pieces.push(piece.join(''));
  return new Blob(pieces, { type });
}
