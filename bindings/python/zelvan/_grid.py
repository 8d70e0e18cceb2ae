"""The points that regions have their vertices on, and the rules by which rings bound them."""

from __future__ import annotations

from ctypes import byref
from dataclasses import dataclass
from enum import IntEnum
from typing import Iterable

from ._arrays import POINT_BYTES, Points, flatten
from ._library import LIBRARY, CGrid, check


class Operation(IntEnum):
    """What lies in ... two sets of points."""

    UNITE = 0  #: one or both of
    INTERSECT = 1  #: both of
    SUBTRACT = 2  #: the first alone of
    XOR = 3  #: one alone of


class FillRule(IntEnum):
    """A point is inside where its winding number is ...: the times that rings run around it
    counter-clockwise, less the times clockwise."""

    EVEN_ODD = 0  #: odd
    NON_ZERO = 1  #: not 0
    POSITIVE = 2  #: above 0
    NEGATIVE = 3  #: below 0


def _covering(xy: bytes) -> CGrid:
    grid = CGrid()
    check(LIBRARY.grid_covering(xy, len(xy) // POINT_BYTES, byref(grid)))
    return grid


_AROUND_ZERO = _covering(b"")


@dataclass(frozen=True)
class Grid:
    """The points that regions have their vertices on: 2**31 along each axis, one step apart.

    The step is a power of two from 2**-480 to 2**480; the origin, the lowest, leftmost point,
    has multiples of it as its coordinates, at most 2**52 steps from 0. So each point is a
    pair of floats, without rounding. Raises ValueError where that is no grid.

    >>> Grid()
    Grid(origin=(-1073741824.0, -1073741824.0), step=1.0)
    >>> Grid((0, 0), 0.1)  # doctest: +ELLIPSIS
    Traceback (most recent call last):
    ValueError: this is no grid: its step is no power of two, ...
    """

    origin: tuple[float, float] = (_AROUND_ZERO.x, _AROUND_ZERO.y)
    step: float = 1.0

    def __post_init__(self) -> None:
        x, y = self.origin
        object.__setattr__(self, "origin", (float(x), float(y)))
        object.__setattr__(self, "step", float(self.step))
        check(LIBRARY.grid_check(byref(self._c())))

    @classmethod
    def covering(cls, rings: Iterable[Points]) -> Grid:
        """The grid with the least step that holds all points of some rings, or a box, given
        by two of its corners. Raises ValueError for numbers that are not finite or beyond
        2**500, and for what extends beyond every grid.

        >>> Grid.covering([[(-180, -90), (180, 90)]])
        Grid(origin=(-256.0, -256.0), step=2.384185791015625e-07)
        """
        return cls._covering(flatten(rings).xy)

    @classmethod
    def _covering(cls, xy: bytes) -> Grid:
        return cls._from_c(_covering(xy))

    @classmethod
    def _from_c(cls, grid: CGrid) -> Grid:
        return cls((grid.x, grid.y), grid.step)

    def _c(self) -> CGrid:
        return CGrid(*self.origin, self.step)
