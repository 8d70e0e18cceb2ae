// The WebAssembly module, whose bytes lie inlined in bytes.js: started by the first call, or
// by `init`. What holds here: all memory that `withMemory` reserves is given back when it
// ends, and views are made anew after every call, since the module's memory may have moved.
import { base64 } from './bytes.js';

const bytes = () => Uint8Array.from(atob(base64), (letter) => letter.charCodeAt(0));

/** The functions of the C headers. Pointers that they return may be negative: see `address`. */
export let wasm = new Proxy({}, {
  get(_, name) {
    if (!isStarted) start(new WebAssembly.Module(bytes()));
    return wasm[name];
  },
});
let isStarted = false;

function start(module) {
  wasm = new WebAssembly.Instance(module, hostFunctions(module)).exports;
  isStarted = true;
  wasm._initialize();
}

/** Compiles the module aside, so that no call waits for it. Optional, but where compiling
 * in the page's own thread is forbidden, as in Chromium before version 115. */
export async function init() {
  if (isStarted) return;
  const module = await WebAssembly.compile(bytes());
  if (!isStarted) start(module);
}

// What the module asks of its host: to end it, to write the reason somewhere, and to know
// that its memory grew. The first is never to be seen.
function hostFunctions(module) {
  const functions = {};
  for (const { module: from, name } of WebAssembly.Module.imports(module)) {
    (functions[from] ??= {})[name] = () => {
      if (name === 'proc_exit') throw new Error('Zelvan ended itself: a defect');
      if (name === 'emscripten_notify_memory_growth') growFurther();
      return 0;
    };
  }
  return functions;
}

// The allocator asks for the pages that it needs now, and engines take a time for each growth
// that goes with the memory's size: a quarter more each time makes the sum linear.
function growFurther() {
  try {
    wasm.memory.grow(Math.floor(wasm.memory.buffer.byteLength / 2 ** 18));
  } catch {
    // What was asked for is there.
  }
}

/** A pointer of the module as an address. */
export const address = (pointer) => pointer >>> 0;

export const doublesAt = (at, count) => new Float64Array(wasm.memory.buffer, at, count);
export const numbersAt = (at, count) => new Uint32Array(wasm.memory.buffer, at, count);
export const integersAt = (at, count) => new Int32Array(wasm.memory.buffer, at, count);
export const bytesAt = (at, count) => new Int8Array(wasm.memory.buffer, at, count);

export const NO_MEMORY = 1;
export const NOT_FINITE = 2;
export const OUTSIDE_GRID = 3;
export const BAD_ARGUMENT = 5;

/** A failure of the library, with the status of its C interface. `place` has the numbers of
 * the feature, polygon, ring and point at fault, as far as they are known. */
export class ZelvanError extends Error {
  name = 'ZelvanError';
  constructor(status, message, place = {}) {
    const where = Object.entries(place).map((entry) => entry.join(' ')).join(', ');
    super(where ? `${message} (${where})` : message);
    this.status = status;
    Object.assign(this, place);
  }
}

function messageOf(status) {
  const start = address(wasm.zelvan_status_message(status));
  const memory = new Uint8Array(wasm.memory.buffer);
  return new TextDecoder().decode(memory.slice(start, memory.indexOf(0, start)));
}

/** Throws what a status other than 0 says; `more` goes behind the message. */
export function check(status, place, more = '') {
  if (status !== 0) throw new ZelvanError(status, messageOf(status) + more, place);
}

/** Calls `work` with a function that reserves bytes of the module's memory until it ends. */
export function withMemory(work) {
  const blocks = [];
  try {
    return work((size) => {
      const block = size < 2 ** 32 ? address(wasm.malloc(size || 1)) : 0;
      if (block === 0) check(NO_MEMORY);
      blocks.push(block);
      return block;
    });
  } finally {
    for (const block of blocks) wasm.free(block);
  }
}
