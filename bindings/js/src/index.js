// What the package gives: regions, and the error that a failure throws.
export { Region } from './region.js';
export { ZelvanError } from './module.js';
