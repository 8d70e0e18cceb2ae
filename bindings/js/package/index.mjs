// For Node, so that `import` and `require` give the same classes.
export { Region, ZelvanError, checkCoverage, dissolve, init, overlay } from './cjs/index.js';
