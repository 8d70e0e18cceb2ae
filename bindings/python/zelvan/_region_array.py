"""Many regions at once, at the speed of C. Needs numpy."""

from __future__ import annotations

import warnings
from ctypes import byref, c_uint32, c_void_p
from typing import Any, Iterable, Iterator, NamedTuple, Optional, Union, overload

import numpy

from . import _shapely
from ._arrays import Points, address
from ._grid import Grid, Operation
from ._library import LIBRARY, NO_PLACE, CGrid, Counts, check
from ._region import LossWarning, Region, is_pair
from ._svg import picture

_Array = Any  # numpy.ndarray, whose types differ from version to version


class Buffers(NamedTuple):
    """Many regions as flat arrays: GeoArrow's layout of multipolygons, with x and y in turn."""

    xy: _Array  #: (n, 2) floats: the points of all rings, each closed by its first point
    rings: _Array  #: int32: where each ring starts in points, and the end
    polygons: _Array  #: where each polygon starts in rings, and the end
    regions: _Array  #: where each region starts in polygons, and the end


class RegionArray:
    """Regions by the hundred thousand: a sequence that is worked on as a whole.

    >>> squares = RegionArray(Region([[(i, 0), (i + 2, 0), (i + 2, 2), (i, 2)]]) for i in range(3))
    >>> squares
    <zelvan.RegionArray: 3 regions>
    >>> (squares & squares[0]).area.tolist(), squares[1:].union_all().area
    ([4.0, 2.0, 0.0], 6.0)
    >>> squares.contains((1, 1)).tolist(), squares.bounds[2].tolist()
    ([True, True, False], [2.0, 0.0, 4.0, 2.0])

    Arrays never change; an element is a Region. All that ``from_...`` makes at once lies on one
    grid, so that no operation among its regions moves a point. Operators combine pair by pair,
    or one region with each of an array; they fail as those of regions do, and name the number of
    the pair.
    """

    __slots__ = ("_handles", "_c", "__weakref__")
    _handles: _Array
    _c: tuple[int, int]  # their address and number

    def __init__(self, regions: Iterable[Region] = ()) -> None:
        kept = list(regions)
        if not all(isinstance(region, Region) for region in kept):
            raise TypeError("a RegionArray is made of regions")
        self._hold(_retained(numpy.array([region._handle or 0 for region in kept], numpy.uintp)))

    @classmethod
    def _adopt(cls, handles: _Array) -> RegionArray:
        array = cls.__new__(cls)
        array._hold(handles)
        return array

    def _hold(self, handles: _Array) -> None:
        self._handles, self._c = handles, (handles.ctypes.data, len(handles))

    # Bound here, it is there even when the interpreter takes its modules apart.
    def __del__(self, release: Any = LIBRARY.regions_release) -> None:
        if hasattr(self, "_c"):
            release(*self._c)

    @classmethod
    def from_wkb(cls, records: Iterable[Optional[bytes]], grid: Optional[Grid] = None) -> RegionArray:
        """A region of each record of well-known binary, also extended (PostGIS); None, as an empty
        record, is an empty region. Rings of a polygon count by the even-odd rule, polygons are
        united. A warning says how many points and lines are left out, and how many rings are gone
        below the step.

        grid: of all regions; without it, the one that covers them

        Raises ValueError with the number of the record that is none, or that is outside the grid.

        >>> RegionArray.from_wkb([None, bytes(9)])
        Traceback (most recent call last):
        ValueError: an argument is not valid: region 1
        """
        parts = [record or b"" for record in records]
        offsets = numpy.zeros(len(parts) + 1, numpy.uint64)
        numpy.cumsum(numpy.fromiter(map(len, parts), numpy.uint64, len(parts)), out=offsets[1:])
        left_out = c_uint32()
        array = _made(len(parts), lambda handles, failed: LIBRARY.regions_from_wkb(
            b"".join(parts), offsets.ctypes.data, len(parts), byref(grid._c()) if grid else None,
            handles, byref(left_out), failed))
        if left_out.value:
            warnings.warn(f"{left_out.value} points and lines bound no region and are left out",
                          stacklevel=2)
        return array

    @classmethod
    def from_shapely(cls, geometries: Any, grid: Optional[Grid] = None) -> RegionArray:
        """A region of each geometry of shapely, or of a series or frame of geopandas; else as
        ``from_wkb``. One call of shapely 2 takes all."""
        return cls.from_wkb(_shapely.to_wkb(getattr(geometries, "geometry", geometries)), grid)

    @classmethod
    def from_wkt(cls, texts: Iterable[Optional[str]], grid: Optional[Grid] = None) -> RegionArray:
        """A region of each well-known text, which shapely reads; else as ``from_wkb``."""
        return cls.from_wkb(_shapely.to_wkb(_shapely.from_wkt(texts)), grid)

    @classmethod
    def from_geoarrow(
        cls, xy: Points, rings: Any, polygons: Any, regions: Any = None,
        grid: Optional[Grid] = None) -> RegionArray:
        """A region of each entry of GeoArrow's arrays of multipolygons, or of polygons where
        ``regions`` is left out: coordinates x and y in turn, and offsets, innermost first, as
        ``shapely.to_ragged_array`` gives them, too. Rings may be closed or not.

        >>> RegionArray.from_geoarrow([(0, 0), (4, 0), (0, 4)], [0, 3], [0, 1]).area.tolist()
        [8.0]
        """
        points = numpy.ascontiguousarray(xy, float).reshape(-1, 2)
        levels = [_offsets(level) for level in (rings, polygons)]
        levels.append(_offsets(numpy.arange(len(levels[1])) if regions is None else regions))
        for inner, outer in zip([range(len(points) + 1), *levels], levels):
            if outer[-1] >= len(inner):
                raise ValueError("offsets extend beyond what they are offsets into")
        return _made(len(levels[2]) - 1, lambda handles, failed: LIBRARY.regions_create(
            points.ctypes.data, *(level.ctypes.data for level in levels), len(levels[2]) - 1,
            byref(grid._c()) if grid else None, handles, failed))

    def to_wkb(self) -> list[bytes]:
        """A record of each region: a polygon where it is one, else a multipolygon."""
        offsets = numpy.zeros(len(self) + 1, numpy.uint64)
        check(LIBRARY.regions_to_wkb(*self._c, offsets.ctypes.data, None))
        room = bytearray(int(offsets[-1]) or 1)
        at = numpy.frombuffer(room, numpy.uint8).ctypes.data
        check(LIBRARY.regions_to_wkb(*self._c, offsets.ctypes.data, at))
        whole, ends = bytes(room), offsets.tolist()
        return [whole[a:b] for a, b in zip(ends, ends[1:])]

    def to_shapely(self) -> _Array:
        """An array of shapely's geometries; one call of shapely 2 makes all. A series of
        geopandas is ``geopandas.GeoSeries(array.to_shapely())``."""
        found = numpy.empty(len(self), object)
        for i, geometry in enumerate(_shapely.from_wkb(self.to_wkb())):
            found[i] = geometry
        return found

    def to_geoarrow(self) -> Buffers:
        """The polygons of all regions as flat arrays; each as ``Region.polygons`` has it, but
        that rings are closed."""
        xy, rings, polygons, regions = self._read()
        if len(rings) == 1:
            return Buffers(xy, rings, polygons, regions)
        ends = rings[1:] + numpy.arange(len(rings) - 1, dtype="i4")  # where first points go
        closed = numpy.empty((len(xy) + len(ends), 2))
        given = numpy.ones(len(closed), bool)
        given[ends] = False
        closed[given], closed[ends] = xy, xy[rings[:-1]]
        return Buffers(closed, rings + numpy.arange(len(rings), dtype="i4"), polygons, regions)

    def _read(self) -> Buffers:
        counts = Counts()
        check(LIBRARY.regions_counts(*self._c, byref(counts)))
        xy = numpy.empty((counts.vertices, 2))
        offsets = [numpy.empty(n + 1, numpy.int32)
                   for n in (counts.rings, counts.polygons, len(self))]
        check(LIBRARY.regions_read(*self._c, byref(counts), xy.ctypes.data,
                                   *(level.ctypes.data for level in offsets)))
        return Buffers(xy, *offsets)

    def __len__(self) -> int:
        return len(self._handles)

    @overload
    def __getitem__(self, index: int) -> Region: ...
    @overload
    def __getitem__(self, index: Union[slice, Iterable[Any]]) -> RegionArray: ...

    def __getitem__(self, index: Any) -> Union[Region, RegionArray]:
        """A region, or by a slice, a mask or numbers, an array of some."""
        picked = self._handles[index]
        if picked.ndim == 0:
            return Region._adopt(LIBRARY.region_retain(int(picked)))
        return RegionArray._adopt(_retained(numpy.array(picked)))

    def __iter__(self) -> Iterator[Region]:
        return (self[i] for i in range(len(self)))

    def __reduce__(self) -> tuple[Any, ...]:
        grids = {region.grid for region in self if region}
        if len(grids) > 1:
            return RegionArray, (list(self),)
        return RegionArray.from_geoarrow, (*self._read(), *grids)

    def __eq__(self, other: object) -> Any:
        """An array that says of each pair whether its regions are equal."""
        if not isinstance(other, RegionArray) or len(other) != len(self):
            return NotImplemented
        pairs = zip(self._handles.tolist(), other._handles.tolist())
        return numpy.array([LIBRARY.region_equal(a, b) != 0 for a, b in pairs], bool)

    __hash__ = None  # type: ignore[assignment]

    def __or__(self, other: Union[Region, RegionArray]) -> RegionArray:
        return self._combined(Operation.UNITE, other)

    def __and__(self, other: Union[Region, RegionArray]) -> RegionArray:
        return self._combined(Operation.INTERSECT, other)

    def __sub__(self, other: Union[Region, RegionArray]) -> RegionArray:
        return self._combined(Operation.SUBTRACT, other)

    def __xor__(self, other: Union[Region, RegionArray]) -> RegionArray:
        return self._combined(Operation.XOR, other)

    __ror__, __rand__, __rxor__ = __or__, __and__, __xor__

    def __rsub__(self, other: Region) -> RegionArray:
        return RegionArray([other])._combined(Operation.SUBTRACT, self)

    def _combined(self, operation: Operation, other: Any) -> RegionArray:
        if isinstance(other, Region):
            other = RegionArray([other])
        if not isinstance(other, RegionArray):
            return NotImplemented
        if len(self) != len(other) and 1 not in (len(self), len(other)):
            raise ValueError(f"there are {len(self)} regions and {len(other)}")
        count = len(other) if len(self) == 1 else len(self)
        return _made(count, lambda handles, failed: LIBRARY.regions_combine(
            operation, *self._c, *other._c, handles, failed), warn=False)

    def union_all(self) -> Region:
        """The union of all, in one sweep."""
        handle = c_void_p()
        check(LIBRARY.region_unite(*self._c, byref(handle)))
        return Region._adopt(handle.value)

    @property
    def grid(self) -> Grid:
        """The grid that an operation on all takes."""
        grid = CGrid()
        check(LIBRARY.grid_common(*self._c, byref(grid)))
        return Grid._from_c(grid)

    @property
    def area(self) -> _Array:
        """The areas."""
        areas = numpy.empty(len(self))
        check(LIBRARY.regions_measure(*self._c, areas.ctypes.data, None, None))
        return areas

    @property
    def bounds(self) -> _Array:
        """(n, 4) floats: least x, least y, greatest x, greatest y; NaNs for empty regions."""
        boxes = numpy.empty((len(self), 4))
        check(LIBRARY.regions_measure(*self._c, None, boxes.ctypes.data, None))
        return boxes

    @property
    def lost(self) -> _Array:
        """How many rings of each are gone below the step."""
        lost = numpy.empty(len(self), numpy.uint32)
        check(LIBRARY.regions_measure(*self._c, None, None, lost.ctypes.data))
        return lost

    def contains(self, points: Points) -> _Array:
        """Whether each region holds a point, inside or on the boundary: the same for all, or one
        for each; decided exactly."""
        xy = numpy.ascontiguousarray([points] if is_pair(points) else points, float).reshape(-1, 2)
        if not is_pair(points) and len(xy) != len(self):
            raise ValueError(f"there are {len(self)} regions and {len(xy)} points")
        sides = numpy.empty(len(self), numpy.int8)
        check(LIBRARY.regions_contains(*self._c, xy.ctypes.data, len(xy), sides.ctypes.data))
        return sides >= 0

    def __repr__(self) -> str:
        return f"<zelvan.RegionArray: {len(self)} region{'s' * (len(self) != 1)}>"

    def _repr_svg_(self) -> str:
        xy, ends, _, _ = self._read()
        if not len(xy):
            return picture([], None)
        bounds = (*xy.min(axis=0), *xy.max(axis=0))
        return picture([xy[a:b] for a, b in zip(ends, ends[1:])], bounds)


def _retained(handles: _Array) -> _Array:
    LIBRARY.regions_retain(handles.ctypes.data, len(handles))
    return handles


def _offsets(level: Any) -> _Array:
    """Offsets as the library takes them."""
    given = numpy.asarray(level)
    if given.ndim != 1 or not len(given) or given.min() < 0 or given.max() >= 2**32:
        raise ValueError("offsets are a list of numbers that begins with 0")
    return numpy.ascontiguousarray(given, numpy.uint32)


def _made(count: int, make: Any, warn: bool = True) -> RegionArray:
    """An array of what a function of the library makes."""
    handles, failed = numpy.zeros(count, numpy.uintp), c_uint32(NO_PLACE)
    status = make(handles.ctypes.data, byref(failed))
    check(status, more=f": region {failed.value}" if failed.value != NO_PLACE else "")
    array = RegionArray._adopt(handles)
    if warn and (lost := int(array.lost.sum())):
        warnings.warn(f"{lost} ring{'s' if lost > 1 else ''} with an area that lies below "
                      f"the step of {array.grid.step}", LossWarning, stacklevel=4)
    return array
