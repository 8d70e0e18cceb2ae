"""Points into the library, arrays out of it.

Both are buffers of numbers, so that nothing is done point by point where the other side has
buffers, too. With numpy what comes out are its arrays, without it memoryviews of the same
shapes; they hold the same numbers.
"""

from __future__ import annotations

import sys
from array import array
from itertools import accumulate, chain
from typing import Any, Iterable, NamedTuple, Optional, Protocol, Sequence, Union

try:
    import numpy
except ImportError:
    numpy = None  # type: ignore[assignment]

_DOUBLES = ("d", "@d", "=d", "<d" if sys.byteorder == "little" else ">d")
POINT_BYTES = 16


class Array(Protocol):
    """What numpy's arrays and memoryviews have in common. A memoryview of two dimensions is
    indexed by pairs alone, as ``view[i, j]``; ``tolist()`` works on both."""

    @property
    def shape(self) -> tuple[int, ...]: ...
    def __len__(self) -> int: ...
    def __getitem__(self, index: Any) -> Any: ...
    def tolist(self) -> list[Any]: ...


Points = Union[Iterable[Sequence[float]], Array]
"""Pairs of numbers, or a buffer of numbers of the shape (n, 2), such as numpy's arrays."""


class FlatRings(NamedTuple):
    """Rings one behind the other, as the library takes them."""

    xy: bytes
    offsets: array[int]

    @property
    def rings(self) -> int:
        return len(self.offsets) - 1


def flatten(rings: Iterable[Points]) -> FlatRings:
    rings = list(rings)
    return _of_lists(rings) or _one_by_one(rings)


def _of_lists(rings: list[Any]) -> Optional[FlatRings]:
    """All at once, where they are lists of pairs and nothing is wrong."""
    if not all(isinstance(ring, (list, tuple)) for ring in rings):
        return None
    try:
        if set(map(len, chain.from_iterable(rings))) - {2}:
            return None
        numbers = array("d", chain.from_iterable(chain.from_iterable(rings)))
    except TypeError:
        return None
    return FlatRings(numbers.tobytes(), array("I", accumulate(map(len, rings), initial=0)))


def _one_by_one(rings: list[Any]) -> FlatRings:
    parts = [doubles(ring, f"ring {i}") for i, ring in enumerate(rings)]
    ends = accumulate((part.nbytes // POINT_BYTES for part in parts), initial=0)
    return FlatRings(b"".join(parts), array("I", ends))


def doubles(points: Points, name: str) -> memoryview:
    """Points as doubles without gaps, x and y in turn; the name is for what is raised.

    >>> doubles([(1, 2), (3, 4)], "ring 0").tolist()
    [1.0, 2.0, 3.0, 4.0]
    >>> doubles([(1, 2), (3, 4, 5)], "ring 0")
    Traceback (most recent call last):
    ValueError: ring 0, point 1 has 3 coordinates, not 2
    >>> doubles([3, 4], "ring 0")
    Traceback (most recent call last):
    TypeError: ring 0 is no sequence of pairs of numbers: object of type 'int' has no len()
    >>> doubles(memoryview(array("d", range(6))), "ring 0")
    Traceback (most recent call last):
    ValueError: ring 0 has the shape (6,), not (n, 2)
    """
    if numpy is not None and hasattr(points, "__array__"):
        points = numpy.ascontiguousarray(points, dtype=float)
    try:
        view = memoryview(points)  # type: ignore[arg-type]
    except TypeError:
        return memoryview(_from_pairs(points, name))
    if view.nbytes == 0:
        return memoryview(b"")
    if view.ndim != 2 or view.shape is None or view.shape[1] != 2:
        raise ValueError(f"{name} has the shape {view.shape}, not (n, 2)")
    if view.format in _DOUBLES and view.c_contiguous:
        return view
    rows: Any = view.tolist()
    return memoryview(array("d", chain.from_iterable(rows)))


def _from_pairs(points: Any, name: str) -> array[float]:
    try:
        pairs = points if isinstance(points, (list, tuple)) else list(points)
        if set(map(len, pairs)) - {2}:
            i, pair = next((i, pair) for i, pair in enumerate(pairs) if len(pair) != 2)
            raise ValueError(f"{name}, point {i} has {len(pair)} coordinates, not 2")
        return array("d", chain.from_iterable(pairs))
    except TypeError as error:
        raise TypeError(f"{name} is no sequence of pairs of numbers: {error}") from None


def blank(code: str, count: int) -> array[Any]:
    """Room for numbers of one of array's types."""
    return array(code, bytes(count * array(code).itemsize))


def address(room: array[Any]) -> int:
    return room.buffer_info()[0]


def shaped(room: array[Any], columns: int) -> Array:
    """An array over the same memory, with that many columns."""
    if numpy is not None:
        return numpy.asarray(room).reshape(-1, columns)
    if not room:  # a memoryview can have no rows in one dimension alone
        return memoryview(room)
    return memoryview(room).cast("B").cast(room.typecode, (len(room) // columns, columns))


def split(room: array[float], ends: array[int]) -> list[Array]:
    """Arrays over the same memory, of the points between each two offsets."""
    bounds = zip(ends, ends[1:])
    if numpy is not None:
        points = numpy.asarray(room).reshape(-1, 2)
        return [points[a:b] for a, b in bounds]
    view = memoryview(room).cast("B")
    return [view[POINT_BYTES * a:POINT_BYTES * b].cast("d", (b - a, 2)) for a, b in bounds]


def flat(room: array[Any], code: str) -> Array:
    """An array of one dimension over the same memory, its bytes read by another type code."""
    view = memoryview(room).cast("B").cast(code)
    return view if numpy is None else numpy.asarray(view)
