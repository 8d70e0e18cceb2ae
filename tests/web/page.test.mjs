// The page of build/web in Debian's Chromium, as a person uses it; what it answers is held
// to the native program's answer to the same shapes, byte for byte.
//   ZELVAN=build/dev/zelvan node --test tests/web/page.test.mjs
// SCREENSHOT=file keeps a picture of the first sample.
import assert from 'node:assert/strict';
import { spawn, spawnSync } from 'node:child_process';
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
let [server, browser, page, address] = [];

before(async () => {
  server = spawn('timeout', ['180', 'python3', '-u', '-m', 'http.server', '0', '--bind', '127.0.0.1',
    '--directory', join(root, 'build/web')], { stdio: ['ignore', 'pipe', 'ignore'] });
  const [, port] = await new Promise((resolve) => {
    server.stdout.on('data', (text) => /port (\d+)/.test(text) && resolve(/port (\d+)/.exec(text)));
  });
  browser = await chromium.launch({ executablePath: '/usr/bin/chromium', args: ['--no-sandbox'] });
  page = await browser.newPage({ viewport: { width: 1280, height: 800 } });
  address = `http://127.0.0.1:${port}/`;
  page.on('console', (message) => complaints.push(message.text()));
  page.on('pageerror', (error) => complaints.push(error.stack));
  page.on('request', (request) => new URL(request.url()).hostname === '127.0.0.1' ||
    /^(data|blob):/.test(request.url()) || complaints.push(request.url()));
  await page.goto(address);
});

after(async () => {
  await browser?.close();
  server?.kill();
  rmSync(folder, { recursive: true });
});

const text = (id) => page.locator(`#${id}`).textContent();

const shows = (id, words) => page.waitForFunction(([element, pattern]) =>
  new RegExp(pattern).test(document.getElementById(element).textContent), [id, words.source], { timeout: 10000 });

const drop = (...files) => page.evaluate((list) => {
  const dataTransfer = new DataTransfer();
  for (const [name, content] of list) dataTransfer.items.add(new File([content], name));
  document.body.dispatchEvent(new DragEvent('drop', { dataTransfer, bubbles: true }));
}, files);

const sampleBox = () => page.$eval('#sample', (box) => box.selectedOptions[0].text);

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
  const [A, B] = ['A', 'B'].map((name) => state.shapes[name].flat().map((ring) => [...ring]));
  return { A, B, view: state.view, step: state.step, first: A[0] && toScreen(state.view, ...A[0].slice(0, 2)) };
});

const closed = (ring) => Array.from({ length: ring.length / 2 + 1 }, (_, i) => [0, 1].map((k) => ring[(2 * i + k) % ring.length]));

// By the arguments of a command; the operation's own unless it is given.
async function pageEqualsNative(operation, command = [COMMANDS[operation]]) {
  const shapes = await shapesOfPage();
  const files = ['A', 'B'].map((name) => {
    writeFileSync(join(folder, `${name}.geojson`), JSON.stringify({ type: 'Polygon', coordinates: shapes[name].map(closed) }));
    return join(folder, `${name}.geojson`);
  });
  const run = (format, ...options) => {  // with status 1 where the step changes a ring, as the page says, too
    const { status, stdout, stderr } =
      spawnSync(native, [...command, ...files, '-o', '-', '--format', format, ...options], { encoding: 'utf8', maxBuffer: 1e8 });
    assert(status === 0 || (status === 1 && !/not usable/.test(stderr)), stderr);
    return stdout;
  };
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
  await choose('coasts');
  await page.check('input[value=unite]');
  for (const offset of [-40, -3, 25]) {
    await page.locator('#offset').fill(String(offset));
    await settled();
    const distance = await page.evaluate(async () => {
      const [{ state }, { distanceOf }] = await Promise.all([import('./state.js'), import('./compute.js')]);
      return distanceOf(state);
    });
    await pageEqualsNative('unite', ['offset', '--distance', String(distance)]);
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
  const times = (await page.evaluate(() => performance.getEntriesByName('move to picture').map((entry) => entry.duration))).sort((a, b) => a - b);
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

test('every view shows what an unclipped drawing does; zooms end', async () => {
  for (const sample of ['countries', 'spiral', 'islands']) {
    await choose(sample);
    const worst = await page.evaluate(async () => {
      const modules = ['state', 'draw', 'compute', 'viewport', 'theme'].map((name) => import(`./${name}.js`));
      const [{ state }, { drawScene }, { compute }, { panned, zoomed }, { theme }] = await Promise.all(modules);
      const answer = { ...compute({ ...state, mesh: 'plain' }), step: 0 };
      const { width, height } = state.view;
      // On paper that reaches as far beyond the canvas as this nothing is clipped.
      const picture = (view, beyond) => {
        const ctx = new OffscreenCanvas(width, height).getContext('2d', { willReadFrequently: true });
        const [x, y] = [view.x - beyond / view.scale, view.y - beyond / view.scale];
        ctx.translate(-beyond, -beyond);
        drawScene(ctx, { ...view, x, y, width: width + 2 * beyond, height: height + 2 * beyond }, theme, state.shapes, answer);
        return ctx.getImageData(0, 0, width, height).data;
      };
      return Math.max(...[1, 1.25 ** 3, 9, 30].flatMap((zoom) => [[0, 0], [310, 20], [40, -330], [-700, -500]].map(([dx, dy]) => {
        const view = panned(zoomed(state.view, zoom, (width + dx) / 2, (height + dy) / 2), dx / 2, dy / 2);
        const expected = picture(view, 3e4);
        return picture(view, 0).filter((shade, i) => Math.abs(shade - expected[i]) > 64).length;
      })));
    });
    console.log(`# ${sample}: ${worst} shades differ at most`);
    assert(worst <= 150, sample);  // of three million
  }
  const { view } = await shapesOfPage();
  const clickOften = (id) => page.evaluate((name) => { for (let i = 0; i < 200; ++i) document.getElementById(name).click(); }, id);
  await clickOften('zoom-in');
  const inner = await shapesOfPage();
  assert(Math.abs(inner.view.scale * inner.step * 4 - Math.min(view.width, view.height)) < 1);
  await clickOften('zoom-out');
  assert(Math.abs((await shapesOfPage()).view.scale * 100 / view.scale - 1) < 1e-9);
  await press('0');
  assert.deepEqual((await shapesOfPage()).view, view);
});

test('a change is a step back and forth, whatever its size; a click is none', async () => {
  await choose('touching');
  const seen = async () => [await sampleBox(), await text('area')];
  const draft = () => page.evaluate(async () => (await import('./state.js')).state.draft?.points.length / 2);
  const before = await seen();
  const { first: [x, y] } = await shapesOfPage();
  for (const away of [2, 40]) await page.mouse.click(x + away, y - away);
  await page.focus('#sample');
  await press('Control+z', 'd');  // no click was a step, but the sample was; d is the field's own
  assert.deepEqual([(await seen())[0], await draft()], ['Two islands', NaN]);
  await press('Control+Shift+Z');
  assert.deepEqual([await seen(), await page.isDisabled('#redo')], [before, true]);
  await page.focus('#fit');
  await press('d', ' ', 'ArrowRight', ' ', 'ArrowUp', ' ', 'Control+z', 'Control+z', 'Control+y');
  assert.deepEqual([await draft(), await seen()], [2, before]);
  await press('Control+z', 'Control+z', 'Control+z');
  assert.deepEqual([await draft(), await seen()], [NaN, before]);
  await choose('million');
  const large = await seen();
  for (const id of ['clear', 'undo']) {
    await page.click(`#${id}`);
    await settled();
    assert.equal(large[1] === await text('area'), id === 'undo');
  }
  await press('Control+z');
  assert.deepEqual(await seen(), before);
});

test('files replace what was there, are united, or refused in words', async () => {
  const square = (at) => `POLYGON ((${at} ${at}, ${at + 10} ${at}, ${at + 10} ${at + 10}, ${at} ${at + 10}))`;
  await page.fill('#doublings', '9');
  await drop(['lake.wkt', 'id;geom\nMULTIPOLYGON (((0 0, 8 0, 8 8, 0 8, 0 0), (2 2, 4 2, 4 4, 2 4, 2 2)), ((20 20, 22 20, 22 22, 20 20)))\n' +
    'POINT Z (1 2 3)\nSRID=4326;GEOMETRYCOLLECTION (POLYGON EMPTY, POLYGON Z ((30 0 1, 34 0 1, 34 2 1, 30 0 1)))']);
  await shows('vertices-in', /^14$/);
  assert.deepEqual([await text('area'), await text('polygons'), await text('holes'), await sampleBox()], ['66', '3', '1', 'lake.wkt']);
  assert.match(await text('request-notice'), /left out.* 1 POINT \(feature 2\).* 1 empty polygon \(feature 3\)/);
  await drop(['a.wkt', square(0)], ['b.wkt', square(5)], ['c.wkt', `\ufeff${square(7)}`]);
  await shows('vertices-in', /^12$/);
  assert.equal(await text('area'), '211');

  const { cases } = JSON.parse(readFileSync(join(root, 'tests/doors.json'), 'utf8'));
  const others = [['a', '{"type":', /^a cannot be read/], ['b', 'POINT (1 2)', /no polygons.*1 POINT/], ['c', 'POLYGON ((0 0, 1 1', /not closed/],
    ['d', `${square(0)}\nPOLYGON ((0 0, 1 x, 2 2))`, /feature 2, ring 1, point 2: y is "x"/],
    ['e', '{"type":"Polygon","coordinates":[[[0,0],[1e300,0],[1,1]]]}', /outside/]];
  const before = await shapesOfPage();
  const refused = cases.filter(({ area }) => !area).map(({ name, refused: place, document }) => {
    const parts = Object.entries(place ?? {}).filter(([part, number]) => part !== 'polygon' || number > 0);
    const words = place ? parts.map(([part, number]) => `${part} ${number + 1}`).join('.*') : 'no polygons';
    return [name, JSON.stringify(document), new RegExp(words)];
  });
  for (const [name, content, words] of [...refused, ...others]) {
    await drop([name, content]);
    await shows('request-notice', words);
    await press('Escape');
    assert.deepEqual([await page.isVisible('#request-notice'), await shapesOfPage()], [false, before], name);
  }
  for (const { area, name, document, leftOut = [] } of cases.filter((one) => one.area > 0)) {
    await drop([name, JSON.stringify(document)]);
    await shows('files', new RegExp(name));
    await settled();
    assert.equal(await text('area'), String(area), name);
    for (const [feature, type] of leftOut) assert.match(await text('request-notice'), new RegExp(`${type} \\(.*feature ${feature + 1}`));
  }
});

test('what the step loses is said; no mesh is made where none is wanted', async () => {
  await drop(['small.wkt', 'POLYGON ((0 0, 100 0, 100 100, 0 0)) POLYGON ((200 0, 201 0, 201 1, 200 0))']);
  await shows('triangles', /^2$/);
  assert.equal(await page.isVisible('#answer-notice'), false);
  await page.fill('#doublings', '27');
  await shows('answer-notice', /^1 ring is smaller than the grid's step of 2⁴/);
  await page.click('#answer-notice button');
  await page.check('input[value=none]');
  await page.evaluate(async () => { (await import('./zelvan/index.js')).Region.prototype.triangulate = () => { throw new Error('a mesh'); }; });
  await page.check('input[value=subtract]');
  await settled();
  assert.deepEqual([await text('triangles'), await page.isVisible('#answer-notice'), await page.isDisabled('[data-format=obj]')], ['–', false, true]);
  await page.reload();
});

test('on a phone a swipe scrolls past the canvas, a vertex can be dragged, turning fits', async () => {
  const desktop = page;
  page = await browser.newPage({ viewport: { width: 390, height: 844 }, hasTouch: true, isMobile: true });
  await page.goto(address);
  await shows('triangles', /^166$/);
  const session = await page.context().newCDPSession(page);
  const touch = (type, ...at) => session.send('Input.dispatchTouchEvent', { type, touchPoints: at.map(([x, y]) => ({ x, y })) });
  const drag = async ([x, y], dy) => {
    await touch('touchStart', [x, y]);
    for (let i = 1; i <= 8; ++i) await touch('touchMove', [x, y + (i * dy) / 8]);
    await page.waitForTimeout(200);  // no fling
    await touch('touchMove', [x, y + dy]);
    await touch('touchEnd');
    await settled();
  };
  const before = await shapesOfPage();
  await drag([200, 300], -200);  // on the shape, but on no vertex
  await page.waitForFunction(() => scrollY > 100);
  assert.deepEqual([await shapesOfPage(), await page.isDisabled('#undo')], [before, true]);
  await page.evaluate(() => scrollTo(0, 0));
  await drag(before.first, -60);
  assert.deepEqual(await page.evaluate(() => [scrollY, document.documentElement.scrollWidth]), [0, 390]);
  assert.notDeepEqual((await shapesOfPage()).A, before.A);
  await page.click('#zoom-in');
  await page.setViewportSize({ width: 844, height: 390 });
  await settled();
  const turned = (await shapesOfPage()).view;
  await press('0');
  assert.deepEqual((await shapesOfPage()).view, turned);
  await page.close();
  page = desktop;
});

test('a million vertices never freeze the page', async () => {
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
