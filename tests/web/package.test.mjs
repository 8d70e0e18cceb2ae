// The npm package as built in build/wasm/npm: installed and used by a stranger, held to
// earcut's conventions and to the identities that regions keep.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { cpSync, mkdtempSync, rmSync, statSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import test from 'node:test';
import { fileURLToPath } from 'node:url';
import peer from 'earcut';
import { numbersFrom } from '../../web/coast.js';

const built = new URL('../../build/wasm/npm/', import.meta.url);
const { Region, ZelvanError } = await import(new URL('index.js', built));
const { wasm, withMemory } = await import(new URL('module.js', built));
const { default: earcut } = await import(new URL('earcut.js', built));

const here = fileURLToPath(new URL('.', import.meta.url));
const seed = Number(process.env.SEED ?? 1 + (Date.now() % 2147483646));
const next = numbersFrom(seed);
const between = (low, high) => low + Math.floor(((next() + 1) / 2) * (high - low + 1));

function twiceArea(xy, triangles, dim = 2) {
  let sum = 0;
  for (let i = 0; i < triangles.length; i += 3) {
    const [a, b, c] = [0, 1, 2].map((k) => [xy[dim * triangles[i + k]], xy[dim * triangles[i + k] + 1]]);
    const area = (b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0]);
    assert(area > 0, 'a triangle runs clockwise or is flat');
    sum += area;
  }
  return sum;
}

// Whole numbers around a centre, so that areas are exact; either way around.
function star(x, y, low, high) {
  const n = between(3, 40);
  const points = Array.from({ length: n }, (_, i) => {
    const [r, angle] = [between(low, high), (2 * Math.PI * i) / n];
    return [x + Math.round(r * Math.cos(angle)), y + Math.round(r * Math.sin(angle)), between(0, 9)];
  });
  return between(0, 1) ? points : points.reverse();
}

// Few places, many crossings, spikes and repeated points.
const tangle = () => Array.from({ length: between(1, 4) }, () =>
  Array.from({ length: between(3, 9) }, () => [between(0, 12), between(0, 12)]));

test('a stranger installs the tarball and uses it', () => {
  const folder = mkdtempSync(join(tmpdir(), 'zelvan-consumer-'));
  const run = (program, ...args) => execFileSync(program, args, { cwd: folder, encoding: 'utf8' });
  try {
    const tarball = run('npm', 'pack', '--silent', fileURLToPath(built)).trim();
    assert(statSync(join(folder, tarball)).size <= 120 * 1024);
    run('npm', 'init', '-y', '--silent');
    run('npm', 'install', '--silent', '--offline', '--no-audit', `./${tarball}`);
    cpSync(join(here, 'consumer/consumer.ts'), join(folder, 'consumer.mts'));
    run(process.execPath, join(here, 'node_modules/typescript/bin/tsc'), 'consumer.mts', '--strict',
      '--module', 'nodenext', '--target', 'es2022', '--lib', 'es2022,esnext.disposable,dom');
    assert.equal(run(process.execPath, 'consumer.mjs').trim(), '72 2 at 0, 2 3 0');
  } finally {
    rmSync(folder, { recursive: true });
  }
});

test(`earcut's conventions, seed ${seed}`, () => {
  for (let round = 0; round < 300; ++round) {
    const rings = [star(0, 0, 600, 1000)];
    if (rings[0].length > 12) rings.push(...[-250, 250].map((x) => star(x, 0, 50, 200)).slice(between(0, 2)));
    const [dim, starts] = [between(2, 3), rings.slice(1).map((_, i) => rings.slice(0, i + 1).flat().length)];
    const vertices = rings.flat().flatMap((point) => point.slice(0, dim));
    const answer = earcut(round % 2 ? vertices : Float32Array.from(vertices), starts.length ? starts : undefined, dim);
    assert(Array.isArray(answer));
    assert.equal(twiceArea(vertices, answer, dim), twiceArea(vertices, peer(vertices, starts, dim), dim), JSON.stringify(rings));
  }
  for (const nothing of [[[]], [[0, 0, 1, 1]], [[0, 0, 5, 5, 9, 9], null], [[3, 3, 3, 3, 3, 3], []]]) {
    assert.deepEqual(earcut(...nothing), peer(...nothing));
  }
});

test(`regions keep their identities, seed ${seed}`, () => {
  const grid = { x: 0, y: 0, step: 2 ** -12 };
  for (let round = 0; round < 300; ++round) {
    const shapes = [tangle(), tangle()];
    const [a, b] = shapes.map((rings) => Region.from(rings, { grid, fill: ['even-odd', 'non-zero'][round % 2] }));
    const [both, common, either] = ['unite', 'intersect', 'xor'].map((name) => a[name](b));
    const story = JSON.stringify(shapes);
    assert.equal(both.area, common.area + either.area, story);
    assert(Region.fromGeoJSON(both.toGeoJSON(), { grid }).equals(both) && Region.from(either.read(), { grid }).equals(either));
    const once = Region.combine('subtract', both.read(), [], { grid, fillA: 'positive' });
    assert(once.equals(both) && Region.combine('xor', a.read(), b.read(), { grid }).equals(either), story);
    const { positions, indices, neighbours } = both.triangulate({ neighbours: true, delaunay: round % 3 === 0 });
    assert.equal(twiceArea(positions, indices) / 2, both.area, story);
    neighbours.forEach((t, k) => assert(t < 0 || neighbours.subarray(3 * t, 3 * t + 3).includes(Math.floor(k / 3)), story));
    for (const region of [a, b, both, common, either]) region.free();
  }
});

test('memory comes back, by hand and by the collector; failures say what they are', async () => {
  const ring = star(0, 0, 600, 1000);
  const make = (count) => { for (let i = 0; i < count; ++i) Region.from([ring]).triangulate(); };
  make(2000);
  globalThis.gc();
  await new Promise((resolve) => setTimeout(resolve, 50));
  const size = wasm.memory.buffer.byteLength;
  for (let i = 0; i < 20000; ++i) Region.from([ring]).free();
  make(1500);
  assert.equal(wasm.memory.buffer.byteLength, size);
  const freed = Region.from([ring]);
  freed.free();
  freed.free();
  const [small, far] = [[[0, 0], [1, 0], [0, 1]], [[0, 0], [9e12, 0], [0, 9e12]]].map((r) => Region.from([r]));
  assert.throws(() => small.xor(far), { message: RegExp(`${far.grid.step}.* ${small.grid.step}$`) });
  const moved = small.onGrid(Region.commonGrid([small, far]));
  assert(moved.isEmpty && moved.lost === 1 && small.lost === 0 && moved.unite(far).equals(far));
  const failures = [
    [() => Region.from([[[0, 0], [Infinity, 1], [2, 2]]]), { status: 2, ring: 0, point: 1 }],
    [() => Region.from([[[0, 0], [5, 1], [9e9, 2]]], { grid: { x: 0, y: 0, step: 1 } }), { status: 3, point: 2 }],
    [() => Region.from([], { grid: { x: 0, y: 0, step: 3 } }), { status: 4 }],
    [() => freed.area, { status: 5 }],
    [() => Region.empty().unite({}), { status: 5 }],
    [() => Region.from([[1, 2, 3]]), { status: 5 }],
    [() => Region.from([], { fill: 'odd' }), { status: 5 }],
    [() => Region.combine('or', [], []), { status: 5 }],
    [() => Region.unite([far, Region.empty(), small]), { status: 8 }],
    [() => Region.fromGeoJSON({}), { status: 5 }],
    [() => earcut([0, 0, 1, 0, 1, 1], [7]), { status: 5 }],
    [() => withMemory((reserve) => reserve(2 ** 31)), { status: 1 }],
  ];
  for (const [fail, expected] of failures) {
    assert.throws(fail, (error) => error instanceof ZelvanError && Object.keys(expected).every((k) => error[k] === expected[k]), String(fail));
  }
});
