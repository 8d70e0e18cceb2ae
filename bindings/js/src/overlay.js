// Layers: whose is what among any number of regions, and what is wrong with those that ought to
// tile.
import { BAD_ARGUMENT, ZelvanError, check, doublesAt, integersAt, numbersAt, wasm, withMemory } from './module.js';
import { Region, checkOperation, wrap, writeHandles } from './region.js';

const FAULTS = ['overlap', 'gap', 'sliver'];

// Calls `make` for an overlay and gives what `read` finds there, with its counts; the overlay is
// given back.
function withOverlay(regions, make, read) {
  const all = [...regions];
  return withMemory((reserve) => {
    const { list, count } = writeHandles(all, reserve);
    const result = reserve(4);
    checkOperation(make(list, count, result), all);
    const [overlay] = numbersAt(result, 1);
    try {
      const room = reserve(8);
      wasm.zelvan_overlay_counts(overlay, room);
      return read(overlay, room, reserve);
    } finally {
      wasm.zelvan_overlay_release(overlay);
    }
  });
}

function partsOf(overlay, room, reserve) {
  const [parts, members] = numbersAt(room, 2);
  const [offsetsAt, inputsAt, regionAt] = [reserve(4 * (parts + 1)), reserve(4 * members), reserve(4)];
  check(wasm.zelvan_overlay_read(overlay, room, offsetsAt, inputsAt));
  const offsets = numbersAt(offsetsAt, parts + 1).slice();
  const inputs = numbersAt(inputsAt, members).slice();
  return Array.from({ length: parts }, (_, i) => {
    check(wasm.zelvan_overlay_region(overlay, i, regionAt));
    return { region: wrap(numbersAt(regionAt, 1)[0]), inputs: [...inputs.subarray(offsets[i], offsets[i + 1])] };
  });
}

export function overlay(regions) {
  return withOverlay(regions, wasm.zelvan_overlay_create, partsOf);
}

export function checkCoverage(regions, { gapWidth = Infinity, sliverWidth = 0 } = {}) {
  const make = (list, count, result) => wasm.zelvan_coverage_check(list, count, gapWidth, sliverWidth, result);
  return withOverlay(regions, make, (faults, room, reserve) => {
    const parts = partsOf(faults, room, reserve);
    const [kindsAt, widthsAt] = [reserve(4 * parts.length), reserve(8 * parts.length)];
    check(wasm.zelvan_coverage_read(faults, room, kindsAt, widthsAt));
    const [kinds, widths] = [integersAt(kindsAt, parts.length), doublesAt(widthsAt, parts.length)];
    return parts.map((part, i) => ({ kind: FAULTS[kinds[i]], ...part, width: widths[i] }));
  });
}

export function dissolve(regions, keys) {
  const [all, names] = [[...regions], [...keys]];
  if (all.length !== names.length) {
    throw new ZelvanError(BAD_ARGUMENT, `There are ${names.length} keys for ${all.length} regions.`);
  }
  const groups = new Map();
  all.forEach((region, i) => {
    if (!groups.has(names[i])) groups.set(names[i], []);
    groups.get(names[i]).push(region);
  });
  return new Map(Array.from(groups, ([name, group]) => [name, Region.unite(group)]));
}
