export { default, deviation, flatten, refine } from './cjs/earcut.js';
