export * from './cjs/index.js';
