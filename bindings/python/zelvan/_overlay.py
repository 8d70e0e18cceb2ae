"""Layers: whose is what, and what is wrong with regions that ought to tile."""

from __future__ import annotations

from ctypes import byref, c_void_p
from enum import IntEnum
from math import inf
from typing import Any, Hashable, Iterable, NamedTuple, TypeVar

from ._arrays import address, blank
from ._library import LIBRARY, PartCounts, check
from ._region import Region, _check_operation, _handles, unite

Key = TypeVar("Key", bound=Hashable)


class Part(NamedTuple):
    """Some ground, and the regions that cover it."""

    region: Region
    inputs: list[int]  #: their numbers, ascending: just these cover it


class FaultKind(IntEnum):
    """What is wrong with a place of a coverage."""

    OVERLAP = 0  #: two regions or more cover it
    GAP = 1  #: no region covers it, and it is bounded
    SLIVER = 2  #: a polygon of a region is too narrow


class CoverageFault(NamedTuple):
    """One polygon of a coverage at which something is wrong."""

    kind: FaultKind
    region: Region  #: the polygon
    inputs: list[int]  #: numbers of its owners, or of those next to a gap; ascending
    width: float  #: 2 area / perimeter: of a long strip its width


def overlay(regions: Iterable[Region]) -> list[Part]:
    """For each set of regions that covers some ground, the region that just these cover, in one
    sweep. Parts come in the order of their inputs; their areas sum to that of the union. Grids
    and errors as for unite.

    Parts fit: what two of them share are edges, end for end. So a part has vertices wherever
    three edges or more of the overlay meet, on straight edges, too, which count for no comparison
    and no operation.

    >>> land = Region([[(0, 0), (4, 0), (4, 4), (0, 4)]])
    >>> flood = Region([[(2, 1), (6, 1), (6, 3), (2, 3)]])
    >>> [(region.area, inputs) for region, inputs in overlay([land, flood])]
    [(12.0, [0]), (4.0, [0, 1]), (4.0, [1])]
    """
    kept, handle = list(regions), c_void_p()
    _check_operation(kept, LIBRARY.overlay_create(_handles(kept), len(kept), byref(handle)))
    return _taken(handle)


def dissolve(regions: Iterable[Region], keys: Iterable[Key]) -> dict[Key, Region]:
    """The union of the regions of each key, in the order in which keys first come. Raises
    ValueError where there are more keys than regions or fewer; else as unite.

    >>> squares = [Region([[(x, 0), (x + 1, 0), (x + 1, 1), (x, 1)]]) for x in range(3)]
    >>> dissolve(squares, ["west", "west", "east"])["west"]
    <zelvan.Region: 1 polygon, 4 vertices, area 2.0>
    """
    kept, names = list(regions), list(keys)
    if len(kept) != len(names):
        raise ValueError(f"there are {len(names)} keys for {len(kept)} regions")
    groups: dict[Key, list[Region]] = {}
    for region, name in zip(kept, names):
        groups.setdefault(name, []).append(region)
    return {name: unite(group) for name, group in groups.items()}


def check_coverage(
    regions: Iterable[Region], gap_width: float = inf, sliver_width: float = 0.0
) -> list[CoverageFault]:
    """What is wrong with regions that ought to tile: every overlap, by its owners, then every
    gap, then every sliver, by its region. A gap is a bounded polygon that no region covers, a
    lake, too; what is open to the outside is none. Grids and errors as for unite; ValueError for
    widths below 0.

    gap_width: wider gaps are no faults
    sliver_width: narrower polygons of regions are slivers

    >>> def box(x, width):
    ...     return Region([[(x, 0), (x + width, 0), (x + width, 4), (x, 4)]])
    >>> for fault in check_coverage([box(0, 4), box(3.875, 4), box(8, 0.25)], sliver_width=1):
    ...     print(fault.kind.name, fault.inputs, fault.region.area, round(fault.width, 3))
    OVERLAP [0, 1] 0.5 0.121
    SLIVER [2] 1.0 0.235
    """
    kept, handle = list(regions), c_void_p()
    _check_operation(kept, LIBRARY.coverage_check(
        _handles(kept), len(kept), gap_width, sliver_width, byref(handle)))
    counts = _counts(handle)
    kinds, widths = blank("i", counts.parts), blank("d", counts.parts)
    try:
        check(LIBRARY.coverage_read(handle, byref(counts), address(kinds), address(widths)))
    finally:
        parts = _taken(handle)
    return [CoverageFault(FaultKind(kind), *part, width)
            for kind, part, width in zip(kinds, parts, widths)]


def _counts(handle: Any) -> PartCounts:
    counts = PartCounts()
    LIBRARY.overlay_counts(handle, byref(counts))
    return counts


def _taken(handle: Any) -> list[Part]:
    """The parts of an overlay, whose handle is given back."""
    try:
        counts = _counts(handle)
        offsets, inputs = blank("I", counts.parts + 1), blank("I", counts.inputs)
        check(LIBRARY.overlay_read(handle, byref(counts), address(offsets), address(inputs)))
        return [Part(_region(handle, i), inputs[offsets[i]:offsets[i + 1]].tolist())
                for i in range(counts.parts)]
    finally:
        LIBRARY.overlay_release(handle)


def _region(handle: Any, part: int) -> Region:
    region = c_void_p()
    check(LIBRARY.overlay_region(handle, part, byref(region)))
    return Region._adopt(region.value)
