// A coast cut into triangles in Node, beside npm's earcut in the same run:
//   node bench/js/coast.mjs [PACKAGE] [VERTICES]
// PACKAGE is the folder of the built package, by default build/wasm/npm; earcut is that of
// `scripts/setup-wasm.sh --browser`. Each road runs seven times in a row, so that it pays for
// no garbage but its own, and has three such turns; times are medians in milliseconds.
import { createRequire } from 'node:module';
import { resolve } from 'node:path';
import { pathToFileURL } from 'node:url';
import { shore } from '../../web/coast.js';

const root = new URL('../../', import.meta.url);
const folder = pathToFileURL(resolve(process.argv[2] ?? new URL('build/wasm/npm', root).pathname) + '/');
const count = Number(process.argv[3] ?? 1e5);
const peers = createRequire(new URL('tests/web/package.json', root));

const start = performance.now();
const { Region } = await import(new URL('index.js', folder));
const loaded = performance.now() - start;
const { default: drop, deviation } = await import(new URL('earcut.js', folder));
const { default: earcut } = await import(pathToFileURL(peers.resolve('earcut')));

const ring = shore(count);
const region = Region.from([ring]);
const roads = {
  'earcut of npm': () => earcut(ring),
  'zelvan/earcut': () => drop(ring),
  'Region.triangulate': () => region.triangulate(),
  'Region.from and triangulate': () => {
    const made = Region.from([ring]);
    made.triangulate();
    made.free();
  },
};

const times = Object.fromEntries(Object.keys(roads).map((name) => [name, []]));
for (let turn = 0; turn < 3; ++turn) {
  for (const [name, road] of Object.entries(roads)) {
    for (let run = 0; run < 7; ++run) {
      const begin = performance.now();
      road();
      times[name].push(performance.now() - begin);
    }
  }
}
const median = (list) => list.toSorted((a, b) => a - b)[list.length >> 1];
const peer = median(times['earcut of npm']);
console.log(`coast of ${count}; package loaded in ${loaded.toFixed(1)} ms; deviation of the areas: ` +
  `earcut ${deviation(ring, null, 2, earcut(ring)).toExponential(1)}, ` +
  `zelvan/earcut ${deviation(ring, null, 2, drop(ring)).toExponential(1)}`);
for (const [name, list] of Object.entries(times)) {
  console.log(`${name.padEnd(28)} ${median(list).toFixed(1).padStart(8)} ms  ${(median(list) / peer).toFixed(2)}`);
}
