// The npm package as built in build/wasm/npm: installed, bundled and used by a stranger, held
// to earcut's conventions, to the table of all doors and to the identities that regions keep.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { cpSync, mkdtempSync, readFileSync, readdirSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import test from 'node:test';
import { fileURLToPath } from 'node:url';
import peer from 'earcut';
import { build as bundle } from 'esbuild';
import { chromium } from 'playwright-core';
import { build as vite } from 'vite';
import { numbersFrom } from '../../web/coast.js';

const built = new URL('../../build/wasm/npm/', import.meta.url);
const { Region, ZelvanError, checkCoverage, dissolve, overlay } = await import(new URL('index.js', built));
const { wasm, withMemory } = await import(new URL('module.js', built));
const { default: earcut, refine } = await import(new URL('earcut.js', built));

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

// Triangles by the places of their corners, in an order of their own.
function placesOf(xy, triangles, dim = 2) {
  const places = Array.from(triangles, (v) => `${xy[dim * v]} ${xy[dim * v + 1]}`);
  return places.flatMap((_, i) => (i % 3 ? [] : [places.slice(i, i + 3).sort().join()])).sort();
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

const EXPECTED = '72 true 2 at 0, 2 3 0';

// What the scripts of a folder print in a browser, called by a page of their own.
async function printed(folder, html) {
  const browser = await chromium.launch({ executablePath: '/usr/bin/chromium', args: ['--no-sandbox'] });
  try {
    const page = await browser.newPage();
    await page.route('**/*', (route) => {
      const { pathname } = new URL(route.request().url());
      return route.fulfill(pathname === '/' ? { body: html, contentType: 'text/html' } : { path: join(folder, pathname) });
    });
    const said = page.waitForEvent('console');
    await page.goto('http://consumer.test/');
    return (await said).text();
  } finally {
    await browser.close();
  }
}

test('a stranger installs the tarball and uses it, by any bundler', async () => {
  const folder = mkdtempSync(join(tmpdir(), 'zelvan-consumer-'));
  const run = (program, ...args) => execFileSync(program, args, { cwd: folder, encoding: 'utf8' });
  try {
    const tarball = run('npm', 'pack', '--silent', fileURLToPath(built)).trim();
    run('npm', 'init', '-y', '--silent');
    run('npm', 'install', '--silent', '--offline', '--no-audit', `./${tarball}`);
    for (const type of ['mts', 'cts']) cpSync(join(here, 'consumer/consumer.ts'), join(folder, `consumer.${type}`));
    run(process.execPath, join(here, 'node_modules/typescript/bin/tsc'), 'consumer.mts', 'consumer.cts', '--strict',
      '--module', 'nodenext', '--target', 'es2022', '--lib', 'es2022');
    writeFileSync(join(folder, 'both.mjs'), `import { createRequire } from 'node:module';
      import * as a from 'zelvan'; import earcut from 'zelvan/earcut';
      const require = createRequire(import.meta.url);
      console.log(a.Region === require('zelvan').Region, earcut === require('zelvan/earcut'));`);
    assert.equal(run(process.execPath, 'both.mjs').trim(), 'true true');
    for (const type of ['commonjs', 'module']) {
      run('npm', 'pkg', 'set', `type=${type}`);
      for (const source of ['consumer.mjs', 'consumer.cjs']) {
        assert.equal(run(process.execPath, source).trim(), EXPECTED, source);
        for (const [format, platform, outfile] of [['esm', 'browser', 'out.mjs'], ['cjs', 'node', 'out.cjs'], ['iife', 'browser', 'out.js']]) {
          const { warnings } = await bundle({ absWorkingDir: folder, entryPoints: [source], bundle: true, format, platform, outfile, logLevel: 'silent' });
          assert.deepEqual(warnings, [], `${type} ${source} ${format}`);
          assert.equal(run(process.execPath, outfile).trim(), EXPECTED, `${type} ${source} ${format}`);
        }
      }
    }
    assert.equal(await printed(folder, '<script src="out.js"></script>'), EXPECTED);
    writeFileSync(join(folder, 'index.html'), '<script type="module" src="consumer.mjs"></script>');
    await vite({ root: folder, logLevel: 'error' });
    assert(readdirSync(join(folder, 'dist/assets')).every((name) => name.endsWith('.js')));
    assert.equal(await printed(join(folder, 'dist'), readFileSync(join(folder, 'dist/index.html'), 'utf8')), EXPECTED);
  } finally {
    rmSync(folder, { recursive: true });
  }
});

test('the table of all doors', () => {
  const { cases } = JSON.parse(readFileSync(join(here, '../doors.json'), 'utf8'));
  for (const { name, document, area, refused = {}, leftOut = [] } of cases) {
    const said = [];
    const outcome = () => { try { return Region.fromGeoJSON(document, { warn: (message) => said.push(message) }); } catch (error) { return error; } };
    const found = outcome();
    assert.equal(found.area, area, name);
    for (const [key, value] of Object.entries(refused)) assert(found[key] === value && found.message.includes(`${key} ${value}`), name);
    assert.deepEqual(said.map((message) => /A (\w+) .*feature (\d+)/.exec(message).slice(1)), leftOut.map(([feature, type]) => [type, String(feature)]), name);
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
    const area = twiceArea(vertices, answer, dim);
    assert.equal(area, twiceArea(vertices, peer(vertices, starts, dim), dim), JSON.stringify(rings));
    refine(answer, vertices, dim);
    assert.equal(twiceArea(vertices, answer, dim), area);
    const { positions, indices } = Region.from(rings).triangulate({ delaunay: true });
    assert.deepEqual(placesOf(vertices, answer, dim), placesOf(positions, indices), JSON.stringify(rings));
  }
  for (const nothing of [[[0, 0, NaN, 1, 2, 2]], [[0, 0, 5, 0, 5, Infinity]], [[]], [[0, 0, 1, 1]], [[0, 0, 5, 5, 9, 9], null], [[3, 3, 3, 3, 3, 3], []]]) {
    assert.deepEqual(earcut(...nothing), peer(...nothing));
  }
});

test(`earcut on rings that cross, seed ${seed}`, () => {
  const missing = [earcut, peer].map(() => 0);
  for (let round = 0; round < 100; ++round) {
    const holes = Array.from({ length: between(1, 6) }, () => star(between(-900, 900), between(-900, 900), 50, 200));
    const rings = [star(0, 0, 600, 1000), ...holes];
    const [vertices, starts] = [rings.flatMap((ring) => ring.flat()), holes.map((_, i) => rings.slice(0, i + 1).flat().length)];
    const exact = Region.from([rings[0]]).subtract(Region.uniteRings(holes)).area;
    [earcut, peer].forEach((cut, i) => { missing[i] += Math.abs(twiceArea(vertices, cut(vertices, starts, 3), 3) / 2 / exact - 1) / 100; });
  }
  assert(missing[0] < 0.01 && missing[0] < missing[1], String(missing));
});

test(`regions keep their identities, seed ${seed}`, () => {
  const grid = { x: 0, y: 0, step: 2 ** -12 };
  for (let round = 0; round < 300; ++round) {
    const shapes = [tangle(), tangle()];
    const [a, b] = shapes.map((rings) => Region.from(rings, { grid, fill: ['even-odd', 'non-zero'][round % 2] }));
    const [both, common, either] = ['unite', 'intersect', 'xor'].map((name) => a[name](b));
    const story = JSON.stringify(shapes);
    if (a.isEmpty) continue;  // points of a tangle may cancel
    assert.equal(both.area, common.area + either.area, story);
    assert(Region.fromGeoJSON(both.toGeoJSON(), { grid }).equals(both) && Region.from(either.read(), { grid }).equals(either));
    const once = Region.combine('subtract', both.read(), [], { grid, fillA: 'positive' });
    assert(once.equals(both) && Region.combine('xor', a.read(), b.read(), { grid }).equals(either), story);
    const grown = both.offset(0.5, { join: ['round', 'miter', 'bevel'][round % 3] });
    assert(both.subtract(grown).isEmpty && grown.area >= both.offset(-0.5, { tolerance: 0.01 }).area, story);
    const { positions: [x, y] } = a.read();
    if (round % 2 === 0) a.prepare();
    assert.deepEqual([a.side([x, y]), a.contains([x, y]), ...a.contains(Float64Array.of(x, y, x - 1, y))], [0, true, true, false]);
    assert.deepEqual(JSON.parse(JSON.stringify({ a })), { a: a.toGeoJSON() });
    const { positions, indices, neighbours } = both.triangulate({ neighbours: true, delaunay: round % 3 === 0 });
    assert.equal(twiceArea(positions, indices) / 2, both.area, story);
    neighbours.forEach((t, k) => assert(t < 0 || neighbours.subarray(3 * t, 3 * t + 3).includes(Math.floor(k / 3)), story));
    assert(a.hull.covers(a) && !a.covers(a.hull.transformed([1, 0, 1, 0, 1, 0])) && (!a.touches(b) || common.isEmpty), story);
    assert.deepEqual(Region.triangulateRings(both.read(), { grid, neighbours: true, delaunay: round % 3 === 0, float64: true }),
      both.triangulate({ neighbours: true, delaunay: round % 3 === 0, float64: true }), story);
    assert.equal([...both].reduce((sum, _, i) => sum + both.part(i).area, 0), both.area);
    assert(a.transformed([1, 0, 4, 0, 1, 8]).transformed([1, 0, -4, 0, 1, -8], { grid }).equals(a), story);
    assert(a.distance(b).distance === 0 === a.intersects(b) && a.nearest([x, y], { boundary: true }).distance === 0);
    for (const region of [a, b, both, common, either]) region.free();
  }
});

test(`layers are cut into parts that fit, seed ${seed}`, () => {
  for (let round = 0; round < 30; ++round) {
    const box = () => { const [x, y] = [between(0, 9), between(0, 9)]; return [x, y, x + between(1, 5), y + between(1, 5)]; };
    const layers = Array.from({ length: between(1, 6) }, box).map(([a, b, c, d]) =>
      Region.from([[[a, b], [c, b], [c, d], [a, d]]], { grid: { x: -1024, y: -1024, step: 1 } }));
    const parts = overlay(layers);
    layers.forEach((layer, i) => {
      const own = parts.filter(({ inputs }) => inputs.includes(i)).map(({ region }) => region);
      assert(dissolve(own, own.map(() => 'own')).get('own').equals(layer));
    });
    const faults = checkCoverage(layers, { sliverWidth: Infinity });
    const shared = parts.filter(({ inputs }) => inputs.length > 1);
    const areaOf = (list) => list.reduce((sum, { region }) => sum + region.area, 0);
    assert.equal(areaOf(faults.filter(({ kind }) => kind === 'overlap')), areaOf(shared));
    assert.equal(faults.filter(({ kind }) => kind === 'sliver').length, layers.length);
  }
  assert.throws(() => checkCoverage([], { gapWidth: -1 }), ZelvanError);
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
    [() => Region.from([[[0, 0], [null, 1], [2, 2]]]), { status: 2, ring: 0, point: 1 }],
    [() => Region.from([[1, 2, 3, 4, 5, '6'], [[0, 0], null]]), { status: 2, ring: 0, point: 2 }],
    [() => Region.from(['012345']), { status: 5 }],
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
  const memories = new Set();  // a new buffer whenever it grows
  for (let i = 0; i < 100000; ++i) memories.add(Region.from([ring]) && wasm.memory.buffer);
  assert(memories.size < 40, String(memories.size));
});
