// For Node, so that `import` and `require` give the same classes.
export { Region, ZelvanError, init } from './cjs/index.js';
