// The WebAssembly module: loaded once, when the package is imported. What holds here: all
// memory that `withMemory` reserves is given back when it ends, and views are made anew
// after every call, since the module's memory may have moved.

async function bytes() {
  const url = new URL('./zelvan.wasm', import.meta.url);
  // Asked for in this way no bundler for browsers tries to pack it.
  const fs = url.protocol === 'file:' && globalThis.process?.getBuiltinModule?.('node:fs');
  if (fs) return fs.readFileSync(url);
  const response = await fetch(url);
  if (!response.ok) throw new Error(`${url} cannot be loaded: ${response.status}`);
  return response.arrayBuffer();
}

// What the module asks of its host: to end it, to write the reason somewhere, and to know
// that its memory grew. Only the first is of interest, and never to be seen.
function hostFunctions(module) {
  const functions = {};
  for (const { module: from, name } of WebAssembly.Module.imports(module)) {
    (functions[from] ??= {})[name] = () => {
      if (name === 'proc_exit') throw new Error('Zelvan ended itself: a defect');
      return 0;
    };
  }
  return functions;
}

const compiled = await WebAssembly.compile(await bytes());
const instance = await WebAssembly.instantiate(compiled, hostFunctions(compiled));

/** The functions of the C headers. Pointers that they return may be negative: see `address`. */
export const wasm = instance.exports;
wasm._initialize();

/** A pointer of the module as an address. */
export const address = (pointer) => pointer >>> 0;

export const doublesAt = (at, count) => new Float64Array(wasm.memory.buffer, at, count);
export const numbersAt = (at, count) => new Uint32Array(wasm.memory.buffer, at, count);
export const integersAt = (at, count) => new Int32Array(wasm.memory.buffer, at, count);
export const bytesAt = (at, count) => new Int8Array(wasm.memory.buffer, at, count);

export const NO_MEMORY = 1;
export const BAD_ARGUMENT = 5;

/** A failure of the library, with the status of its C interface. */
export class ZelvanError extends Error {
  name = 'ZelvanError';
  constructor(status, message, place) {
    super(message);
    this.status = status;
    if (place) Object.assign(this, place);
  }
}

function messageOf(status) {
  const start = address(wasm.zelvan_status_message(status));
  const memory = new Uint8Array(wasm.memory.buffer);
  return new TextDecoder().decode(memory.slice(start, memory.indexOf(0, start)));
}

/** Throws what a status other than 0 says. `place` is the ring and point at fault; `more` goes
 * behind the message. */
export function check(status, place, more = '') {
  if (status === 0) return;
  const where = place ? ` (ring ${place.ring}, point ${place.point})` : more;
  throw new ZelvanError(status, messageOf(status) + where, place);
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
