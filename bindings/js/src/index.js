// What the package gives: regions, layers of them, the error that a failure throws, and a way to
// load ahead.
export { Region } from './region.js';
export { checkCoverage, dissolve, overlay } from './overlay.js';
export { ZelvanError, init } from './module.js';
