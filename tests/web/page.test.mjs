// The page of build/web in Debian's Chromium, as a person uses it; what it answers is held
// to the native program's answer to the same shapes, byte for byte.
//   ZELVAN=build/dev/zelvan node --test tests/web/page.test.mjs
// SCREENSHOT=file keeps a picture of the first sample.
import assert from 'node:assert/strict';
import { execFileSync, spawn } from 'node:child_process';
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import test, { after, before } from 'node:test';
import { fileURLToPath } from 'node:url';
import { chromium } from 'playwright-core';

const root = fileURLToPath(new URL('../../', import.meta.url));
const native = join(root, process.env.ZELVAN ?? 'build/dev/zelvan');
const folder = mkdtempSync(join(tmpdir(), 'zelvan-page-'));
const COMMANDS = { unite: 'union', intersect: 'intersect', subtract: 'subtract', xor: 'xor' };
const complaints = [];  // of the browser
let [server, browser, page] = [];

before(async () => {
  server = spawn('timeout', ['180', 'python3', '-u', '-m', 'http.server', '0', '--bind', '127.0.0.1',
    '--directory', join(root, 'build/web')], { stdio: ['ignore', 'pipe', 'ignore'] });
  const [, port] = await new Promise((resolve) => {
    server.stdout.on('data', (text) => /port (\d+)/.test(text) && resolve(/port (\d+)/.exec(text)));
  });
  browser = await chromium.launch({ executablePath: '/usr/bin/chromium', args: ['--no-sandbox'] });
  page = await browser.newPage({ viewport: { width: 1280, height: 800 } });
  page.on('console', (message) => complaints.push(message.text()));
  page.on('pageerror', (error) => complaints.push(error.stack));
  page.on('request', (request) => new URL(request.url()).hostname === '127.0.0.1' ||
    /^(data|blob):/.test(request.url()) || complaints.push(request.url()));
  await page.goto(`http://127.0.0.1:${port}/`);
});

after(async () => {
  await browser?.close();
  server?.kill();
  rmSync(folder, { recursive: true });
});

const text = (id) => page.locator(`#${id}`).textContent();

const shows = (id, words) => page.waitForFunction(([element, pattern]) =>
  new RegExp(pattern).test(document.getElementById(element).textContent), [id, words.source]);

// Until the page has an answer to what it shows now, and no other work to do.
async function settled() {
  await page.evaluate(() => new Promise((done) => { requestAnimationFrame(() => requestAnimationFrame(done)); }));
  await page.waitForFunction(() => document.getElementById('work').hidden);
}

async function press(...keys) {
  for (const key of keys) await page.keyboard.press(key);
  await settled();
}

async function choose(sample) {
  await page.selectOption('#sample', sample);
  await page.waitForFunction(() => document.getElementById('work').hidden);
  await settled();
}

async function download(format) {
  const [file] = await Promise.all([page.waitForEvent('download'), page.click(`[data-format=${format}]`)]);
  return readFileSync(await file.path(), 'utf8');
}

const answer = (format) => page.evaluate(async (name) => (await (await import('./answer.js')).answerFile(name)).text(), format);

// The shapes of the page, and where the first vertex is on the screen.
const shapesOfPage = () => page.evaluate(async () => {
  const [{ state }, { toScreen }] = await Promise.all([import('./state.js'), import('./viewport.js')]);
  const [A, B] = ['A', 'B'].map((name) => state.shapes[name].map((ring) => [...ring]));
  return { A, B, first: A[0] && toScreen(state.view, ...A[0].slice(0, 2)) };
});

const closed = (ring) => Array.from({ length: ring.length / 2 + 1 }, (_, i) => [0, 1].map((k) => ring[(2 * i + k) % ring.length]));

async function pageEqualsNative(operation) {
  const shapes = await shapesOfPage();
  const files = ['A', 'B'].map((name) => {
    writeFileSync(join(folder, `${name}.geojson`), JSON.stringify({ type: 'Polygon', coordinates: shapes[name].map(closed) }));
    return join(folder, `${name}.geojson`);
  });
  const run = (format, ...options) => execFileSync(native,
    [COMMANDS[operation], ...files, '-o', '-', '--format', format, ...options], { encoding: 'utf8', stdio: 'pipe' });
  const polygons = JSON.parse(run('geojson')).features.flatMap(({ geometry: { type, coordinates } }) =>
    (type === 'Polygon' ? [coordinates] : coordinates));
  assert.equal(JSON.stringify(JSON.parse(await answer('geojson')).coordinates), JSON.stringify(polygons));
  const faces = (obj) => obj.match(/^f .*$/gm).join('\n');
  for (const [mesh, ...options] of [['plain'], ['delaunay', '--delaunay']]) {
    await page.check(`input[value=${mesh}]`);
    await settled();
    assert.equal(faces(await answer('obj')), faces(run('obj', ...options)));
  }
}

test('every sample is answered, every operation as the native program does', async () => {
  await choose('islands');
  if (process.env.SCREENSHOT) await page.screenshot({ path: join(root, process.env.SCREENSHOT) });
  for (const sample of ['islands', 'spiral', 'coasts']) {
    await choose(sample);
    for (const operation of Object.keys(COMMANDS)) {
      await page.check(`input[value=${operation}]`);
      await settled();
      await pageEqualsNative(operation);
    }
  }
  for (const sample of ['countries', 'touching', 'bowtie']) {
    await choose(sample);
    assert.match(await text('triangles'), /^[1-9]/);
  }
  const area = await text('area');
  for (const fill of ['non-zero', 'even-odd']) {
    await page.selectOption('#fill', fill);
    await settled();
    assert.equal(await text('area') === area, fill === 'even-odd');
  }
  for (const format of ['svg', 'geojson', 'obj']) assert.equal(await download(format), await answer(format));
});

test('vertices follow the mouse and the keys, rings are drawn, undo brings all back', async () => {
  await choose('coasts');
  const before = await text('area');
  const { first: [x, y] } = await shapesOfPage();
  await page.mouse.move(x, y);
  await page.mouse.down();
  const areas = new Set();
  for (let i = 1; i <= 40; ++i) {
    await page.mouse.move(x - 4 * i, y + (i % 7));
    await settled();
    areas.add(await text('area'));
  }
  await page.mouse.up();
  assert(areas.size > 20, 'the answer follows the vertex');
  const times = await page.evaluate(() => performance.getEntriesByName('move to picture').map((entry) => entry.duration));
  times.sort((a, b) => a - b);
  console.log(`# event to picture: median ${times[20].toFixed(1)} ms, slowest ${times.at(-1).toFixed(1)} ms`);
  await page.click('#undo');
  await settled();
  assert.equal(await text('area'), before);

  await choose('touching');
  const untouched = await text('area');
  await page.focus('#canvas');
  await press('b', 'Tab', 'Tab', 'Shift+ArrowRight', 'ArrowUp', 'Insert', 'Delete', 'Delete');
  assert.match(await text('vertex-words'), /^Shape B, ring 1, vertex 3 of 3/);
  await press('Escape', 'd', ' ', 'Shift+ArrowRight', 'Shift+ArrowRight', ' ', 'Shift+ArrowDown', ' ', 'Enter');
  assert.equal((await shapesOfPage()).B.length, 4);
  await press(...Array(6).fill('Control+z'));
  assert.equal(await text('area'), untouched);
});

test('files are dropped or refused in words; a million vertices never freeze the page', async () => {
  const drop = (name, content) => page.evaluate(([fileName, body]) => {
    const dataTransfer = new DataTransfer();
    dataTransfer.items.add(new File([body], fileName));
    document.body.dispatchEvent(new DragEvent('drop', { dataTransfer, bubbles: true }));
  }, [name, content]);
  await page.check('input[name=active][value=B]');
  await page.click('#clear');
  await page.check('input[name=active][value=A]');
  await drop('lake.wkt', 'MULTIPOLYGON (((0 0, 8 0, 8 8, 0 8, 0 0), (2 2, 4 2, 4 4, 2 4, 2 2)), ((20 20, 22 20, 22 22, 20 20)))');
  await shows('vertices-in', /^11$/);
  assert.deepEqual([await text('area'), await text('polygons'), await text('holes')], ['62', '2', '1']);
  for (const [name, content, words] of [['a.geojson', '{"type":', /cannot be read/], ['b.wkt', 'POINT (1 2)', /no polygons/]]) {
    await drop(name, content);
    await shows('notice', words);
  }
  await page.evaluate(() => {
    window.ticks = [performance.now()];
    setInterval(() => window.ticks.push(performance.now()), 10);
  });
  await choose('million');
  await shows('triangles', /^\d{3},\d{3}$/);
  const ticks = await page.evaluate(() => window.ticks);
  const longest = Math.max(...ticks.slice(1).map((tick, i) => tick - ticks[i]));
  const all = ticks.at(-1) - ticks[0];
  console.log(`# a million vertices in ${all.toFixed(0)} ms: the page stood still for ${longest.toFixed(0)} ms at most`);
  assert(longest < all / 4);
  assert.deepEqual(complaints, []);
});
