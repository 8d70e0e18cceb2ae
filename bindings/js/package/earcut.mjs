// For Node, so that `import` and `require` share one WebAssembly module.
export { default, deviation, flatten, refine } from './cjs/earcut.js';
