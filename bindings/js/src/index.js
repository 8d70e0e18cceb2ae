// What the package gives: regions, the error that a failure throws, and a way to load ahead.
export { Region } from './region.js';
export { ZelvanError, init } from './module.js';
