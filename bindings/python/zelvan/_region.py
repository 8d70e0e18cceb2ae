"""Regions as values."""

from __future__ import annotations

import warnings
from array import array
from contextlib import contextmanager
from ctypes import POINTER, byref, c_double, c_int32, c_uint32, c_void_p, memmove
from numbers import Real
from typing import Any, Iterable, Iterator, NamedTuple, Optional, Union, overload

from . import _shapely
from ._arrays import (
    POINT_BYTES, Array, FlatRings, Points, address, blank, doubles, flat, flatten, shaped, split)
from ._geojson import polygons_of, to_geometry
from ._grid import FillRule, Grid, Operation
from ._library import LIBRARY, TOO_COARSE, CGrid, CMesh, Counts, Fault, check
from ._svg import picture

_DELAUNAY, _NEIGHBOURS, _BOUNDARY = 1, 2, 1
_JOINS = ("round", "miter", "bevel")
_IN_OR_ON = bytes(code < 128 for code in range(256))  # of sides as bytes: -1 is 255


class LossWarning(UserWarning):
    """Rings with an area are gone below the step of the grid."""


class Polygon(NamedTuple):
    """One connected part of a region. Rings are arrays of the shape (n, 2); the first point is
    not repeated at the end."""

    outer: Array  #: counter-clockwise
    holes: list[Array]  #: clockwise


class Mesh(NamedTuple):
    """The triangles of a region, polygon by polygon."""

    #: (n, 2) floats: the region's, polygon by polygon, the outer ring before the holes
    vertices: Array
    #: (t, 3) numbers of vertices, counter-clockwise
    triangles: Array
    #: (t, 3) numbers of triangles: those across the edges from the first corner to the
    #: second, from there to the third, and from there to the first; -1 on a contour
    neighbours: Array


class Distance(NamedTuple):
    """How far two regions are apart: infinite, and places None, where one is empty."""

    distance: float  #: 0 exactly where they have a point in common
    first: Optional[tuple[float, float]]  #: a place of the first region
    second: Optional[tuple[float, float]]  #: the nearest one of the second


class Nearest(NamedTuple):
    """The nearest places of a region for some points. No numbers, and infinity, of an empty region
    and for points that are not finite."""

    places: Array  #: (n, 2) floats
    distances: Array  #: n floats


class Region:
    """A set of points bounded by rings: polygons with holes on a grid.

    Regions are values: immutable, hashable, pickled, and equal where polygons and grids are. Any
    threads may use the same ones at once, and calls let go of the interpreter's lock.

    >>> frame = Region([[(0, 0), (10, 0), (10, 10), (0, 10)], [(3, 3), (7, 3), (7, 7), (3, 7)]])
    >>> frame
    <zelvan.Region: 1 polygon, 8 vertices, area 84.0>
    >>> bar = Region([[(-5, 4), (15, 4), (15, 6), (-5, 6)]])
    >>> [region.area for region in (frame | bar, frame & bar, frame - bar, frame ^ bar)]
    [112.0, 12.0, 72.0, 100.0]
    >>> frame - bar == frame - (frame & bar)
    True

    Where two regions are on different grids, both go first to the grid of one of them, if its
    step is the coarser one and it holds both; if not, to the grid that covers both, with the
    coarser of the two steps at least. ValueError where there is none, and TooCoarseError, a
    ValueError that names both steps, where one of them would lose a polygon or a hole there, or
    more than 2**-10 of the area of one, or where two would become one. ``on_grid`` moves what
    may be lost.

    >>> far = Region([[(1e12, 1e12), (2e12, 1e12), (1e12, 2e12)]])
    >>> frame | far  # doctest: +ELLIPSIS
    Traceback (most recent call last):
    zelvan._library.TooCoarseError: the coarser grid would lose a polygon ...
    >>> frame.on_grid(common_grid([frame, far])) | far == far
    True
    """

    __slots__ = ("_handle", "__weakref__")
    _handle: Optional[int]

    def __init__(
        self,
        rings: Iterable[Points] = (),
        rule: FillRule = FillRule.EVEN_ODD,
        grid: Optional[Grid] = None,
    ) -> None:
        """The region that rings bound. They may run in any direction and cross, touch and
        repeat themselves and each other.

        rings: each is a sequence of pairs or a buffer of numbers of the shape (n, 2), such as
            numpy's arrays; it need not repeat its first point
        rule: says what is inside
        grid: each point goes to its nearest one, half a step at most along each axis;
            without it, the grid that covers the rings

        Raises ValueError for numbers that are not finite and points outside the grid, which
        it names, TypeError, OverflowError beyond 2**31 - 1 points, MemoryError. Warns of rings
        that are gone below the step of the grid (LossWarning).

        >>> Region([[(0, 0), (4, 4), (4, 0), (0, 4)]]).area
        8.0
        >>> square = [(0, 0), (2, 0), (2, 2), (0, 2)]
        >>> Region([square, square]), Region([square, square], FillRule.NON_ZERO).area
        (<zelvan.Region: empty>, 4.0)
        >>> Region([square, [(0, 0), (float("nan"), 1)]])
        Traceback (most recent call last):
        ValueError: a coordinate is infinite or no number: ring 1, point 1
        >>> Region([square], grid=Grid((0, 0), 2.0**-30))
        Traceback (most recent call last):
        ValueError: a point lies outside the grid, or no grid extends so far: ring 0, point 1
        """
        self._handle = None
        self._handle = _create(flatten(rings), FillRule(rule), grid)
        self._warn_of_losses()

    @classmethod
    def _adopt(cls, handle: Optional[int]) -> Region:
        region = cls.__new__(cls)
        region._handle = handle
        return region

    # Bound here, it is there even when the interpreter takes its modules apart.
    def __del__(self, release: Any = LIBRARY.region_release) -> None:
        release(self._handle)

    # A copy of what never changes is itself; only a second handle would have to be counted.
    def __copy__(self) -> Region:
        return self

    def __deepcopy__(self, memo: Any) -> Region:
        return self

    # A region made again of its rings is that region; what it lost is told no more.
    def __reduce__(self) -> tuple[Any, ...]:
        xy, rings, _ = self._read()
        return _of_rings, (xy.tobytes(), rings.tolist(), self.grid)

    @classmethod
    def from_geojson(cls, source: Any, grid: Optional[Grid] = None) -> Region:
        """The union of all polygons of a GeoJSON object.

        source: its text, the dictionary, or anything with a __geo_interface__, such as the
            geometries of shapely and the frames of geopandas. Polygons, MultiPolygons,
            Features, FeatureCollections and GeometryCollections are taken; the rings of a
            polygon may run either way, and heights are left out. Points and lines bound no
            region: a warning names them.
        grid: as for the constructor, the same for all polygons

        Raises ValueError for what is no GeoJSON, with its place, and as the constructor.

        >>> left = '{"type": "Polygon", "coordinates": [[[0,0], [3,0], [3,2], [0,2], [0,0]]]}'
        >>> right = Region([[(2, 1), (5, 1), (5, 3), (2, 3)]])
        >>> Region.from_geojson(left) | right
        <zelvan.Region: 1 polygon, 8 vertices, area 11.0>
        >>> Region.from_geojson(right) == right
        True
        >>> Region.from_geojson('{"type": "Polygon", "coordinates": [[[0, 0], [null, 0]]]}')
        Traceback (most recent call last):
        ValueError: feature 0, polygon 0, ring 0, point 1: [None, 0] is no pair of numbers
        >>> Region.from_geojson('{"type": "Polygon", "coordinates": [[[0, 0], [NaN, 0]]]}', Grid())
        Traceback (most recent call last):
        ValueError: feature 0, polygon 0: a coordinate is infinite or no number: ring 0, point 1
        """
        found = polygons_of(source)
        for kind, features in found.left_out.items():
            others = f" and {len(features) - 1} more" if len(features) > 1 else ""
            warnings.warn(f"a {kind} bounds no region and is left out: "
                          f"feature {features[0]}{others}", stacklevel=2)
        places = [place for place, _ in found.polygons]
        polygons = []
        for place, rings in found.polygons:
            with _naming(place):
                polygons.append(flatten(rings))
        if grid is None:
            grid = _grid_covering(places, polygons)
        regions = []
        for place, polygon in zip(places, polygons):
            with _naming(place):
                regions.append(cls._adopt(_create(polygon, FillRule.EVEN_ODD, grid)))
        united = regions[0] if len(regions) == 1 else unite(regions)
        united._warn_of_losses()
        return united

    @classmethod
    def from_wkb(cls, record: bytes, grid: Optional[Grid] = None) -> Region:
        """The region of a record of well-known binary, also extended (PostGIS): rings of a polygon
        count by the even-odd rule, polygons are united. Otherwise as ``from_geojson``.

        >>> square = Region([[(0, 0), (4, 0), (4, 4), (0, 4)]])
        >>> Region.from_wkb(square.to_wkb()) == square
        True
        """
        ends, handle, left_out = array("Q", [0, len(record)]), c_void_p(), c_uint32()
        check(LIBRARY.regions_from_wkb(
            bytes(record), address(ends), 1, byref(grid._c()) if grid else None, byref(handle),
            byref(left_out), None))
        if left_out.value:
            warnings.warn(f"{left_out.value} points and lines bound no region and are left out",
                          stacklevel=2)
        region = cls._adopt(handle.value)
        region._warn_of_losses()
        return region

    @classmethod
    def from_wkt(cls, text: str, grid: Optional[Grid] = None) -> Region:
        """The same of a well-known text, which shapely reads."""
        return cls.from_wkb(_shapely.from_wkt([text])[0].wkb, grid)

    def to_wkb(self) -> bytes:
        """A record of well-known binary: a polygon if the region is one, else a multipolygon."""
        ends, one = array("Q", [0, 0]), _handles([self])
        check(LIBRARY.regions_to_wkb(one, 1, address(ends), None))
        room = array("B", bytes(ends[1]))
        check(LIBRARY.regions_to_wkb(one, 1, address(ends), address(room)))
        return room.tobytes()

    def to_shapely(self) -> Any:
        """The region as a geometry of shapely."""
        return _shapely.from_wkb([self.to_wkb()])[0]

    def _repr_svg_(self) -> str:
        rings = [ring.tolist() for p in self.polygons for ring in (p.outer, *p.holes)]
        return picture(rings, self.bounds)

    @property
    def __geo_interface__(self) -> dict[str, Any]:
        """The region as a GeoJSON geometry: a Polygon if it is one, else a MultiPolygon.
        Rings are closed, outer ones counter-clockwise.

        >>> Region([[(0, 0), (0, 1), (1, 0)]]).__geo_interface__
        {'type': 'Polygon', 'coordinates': (((0.0, 0.0), (1.0, 0.0), (0.0, 1.0), (0.0, 0.0)),)}
        """
        return to_geometry([[ring.tolist() for ring in (p.outer, *p.holes)] for p in self.polygons])

    def __or__(self, other: Region) -> Region:
        return self._combined(Operation.UNITE, other)

    def __and__(self, other: Region) -> Region:
        return self._combined(Operation.INTERSECT, other)

    def __sub__(self, other: Region) -> Region:
        return self._combined(Operation.SUBTRACT, other)

    def __xor__(self, other: Region) -> Region:
        return self._combined(Operation.XOR, other)

    def _combined(self, operation: int, other: object) -> Region:
        if not isinstance(other, Region):
            return NotImplemented
        handle = c_void_p()
        _check_operation([self, other], LIBRARY.region_combine(
            operation, self._handle, other._handle, byref(handle)))
        return Region._adopt(handle.value)

    def offset(
        self,
        distance: float,
        join: str = "round",
        miter_limit: float = 2.0,
        tolerance: Optional[float] = None,
    ) -> Region:
        """The region grown by a distance, or shrunk by one below 0. Where ``join`` is "round",
        every point of the result's boundary is at that distance from the region's, within the
        tolerance (a 500th of the distance unless it is given) and a step of the result's grid.
        "miter" goes to where the edges' copies meet, if that is not farther from the corner than
        ``miter_limit`` distances, else straight across, as "bevel" does.

        >>> square = Region([[(0, 0), (10, 0), (10, 10), (0, 10)]])
        >>> square.offset(1, join="miter").bounds, square.offset(-1).area
        ((-1.0, -1.0, 11.0, 11.0), 64.0)
        >>> abs(square.offset(1).area - (140 + 3.14159)) < 0.1
        True

        Raises ValueError for numbers that are not finite, a tolerance that is not above 0, a
        limit below 1, and where no grid holds the result; TooCoarseError as operations do.
        """
        if join not in _JOINS:
            raise ValueError(f"join must be one of {', '.join(_JOINS)}")
        if tolerance is not None and not tolerance > 0:
            raise ValueError("a tolerance is above 0")
        handle = c_void_p()
        check(LIBRARY.region_offset(self._handle, distance, _JOINS.index(join), miter_limit,
                                    tolerance or 0.0, byref(handle)))
        return Region._adopt(handle.value)

    def on_grid(self, grid: Grid) -> Region:
        """The region on a grid that holds it, whatever that costs: points go to the nearest ones
        of the grid, and what encloses nothing there is gone, as ``lost`` says. An empty region
        stays as it is. Raises ValueError where the grid does not hold the region.

        >>> frame = Region([[(0, 0), (9, 0), (0, 9)], [(2, 2), (2.25, 2), (2, 2.25)]])
        >>> coarse = frame.on_grid(Grid())
        >>> coarse, coarse.lost
        (<zelvan.Region: 1 polygon, 3 vertices, area 40.5>, 1)
        """
        return self._made(LIBRARY.region_on_grid, byref(grid._c()))

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, Region):
            return NotImplemented
        return bool(LIBRARY.region_equal(self._handle, other._handle))

    def __hash__(self) -> int:
        return hash((self.bounds, self.area, self.grid))

    def __bool__(self) -> bool:
        """Whether the region has any points."""
        return self._counts().polygons != 0

    def __repr__(self) -> str:
        counts = self._counts()
        if not counts.polygons:
            return "<zelvan.Region: empty>"
        plural = "s" if counts.polygons > 1 else ""
        return (f"<zelvan.Region: {counts.polygons} polygon{plural}, "
                f"{counts.vertices} vertices, area {self.area}>")

    @property
    def area(self) -> float:
        """The area, exact to the last bit that a float has."""
        return float(LIBRARY.region_area(self._handle))

    @property
    def lost(self) -> int:
        """How many rings are gone below the step: those with an area that enclose nothing on the
        grid, among the rings that the region was made of, and its own where ``on_grid`` moved
        it. The result of an operation has lost what its operands have, added up.
        """
        return int(LIBRARY.region_lost(self._handle))

    def _warn_of_losses(self) -> None:
        """For methods that the user calls."""
        if lost := self.lost:
            grid = f"step of {self.grid.step}" if self else "grid's step"
            warnings.warn(f"{lost} ring{'s' if lost > 1 else ''} with an area that lies below "
                          f"the {grid}", LossWarning, stacklevel=3)

    @property
    def bounds(self) -> Optional[tuple[float, float, float, float]]:
        """Least x, least y, greatest x, greatest y; None for an empty region."""
        box = (c_double * 4)()
        if not LIBRARY.region_bounds(self._handle, box):
            return None
        return box[0], box[1], box[2], box[3]

    @property
    def grid(self) -> Grid:
        """The grid of the vertices; Grid() for an empty region."""
        grid = CGrid()
        LIBRARY.region_grid(self._handle, byref(grid))
        return Grid._from_c(grid)

    @property
    def polygons(self) -> list[Polygon]:
        """The polygons, in an order that depends on the region alone: each ring begins with
        its leftmost (of several, lowest) vertex; holes and polygons are sorted by points.
        They are valid simple features.

        >>> [(outer, holes)] = Region([[(0, 0), (9, 0), (0, 9)], [(2, 2), (4, 2), (2, 4)]]).polygons
        >>> outer.tolist(), [hole.tolist() for hole in holes]
        ([[0.0, 0.0], [9.0, 0.0], [0.0, 9.0]], [[[2.0, 2.0], [2.0, 4.0], [4.0, 2.0]]])
        """
        xy, ends, first = self._read()
        rings = split(xy, ends)
        return [Polygon(rings[a], rings[a + 1:b]) for a, b in zip(first, first[1:])]

    def __iter__(self) -> Iterator[Polygon]:
        """Through the polygons, in their order.

        >>> [len(holes) for outer, holes in Region([[(0, 0), (1, 0), (0, 1)]])]
        [0]
        """
        return iter(self.polygons)

    def __len__(self) -> int:
        """The number of polygons."""
        return int(self._counts().polygons)

    def part(self, polygon: int) -> Region:
        """One polygon, with its holes, as a region on the same grid. Negative numbers count from
        the end; IndexError where there are not so many.

        >>> two = Region([[(0, 0), (1, 0), (0, 1)], [(5, 0), (9, 0), (5, 4)]])
        >>> len(two), two.part(0).area, two.part(-1).area
        (2, 0.5, 8.0)
        """
        index = polygon + len(self) if polygon < 0 else polygon
        if not 0 <= index < len(self):
            raise IndexError(f"there is no polygon {polygon} of {len(self)}")
        return self._made(LIBRARY.region_polygon, index)

    def intersects(self, other: Region) -> bool:
        """Whether both have a point in common. Regions have their boundaries, empty ones no point:
        so in all three questions, which are decided exactly on any two grids, make no region and
        end as soon as the answer is known. TooCoarseError where one step is more than 2**200 times
        the other.

        >>> square, beside = (Region([[(x, 0), (x + 2, 0), (x + 2, 2), (x, 2)]]) for x in (0, 2))
        >>> square.intersects(beside), square.touches(beside), square.covers(beside)
        (True, True, False)
        """
        return self._answer(LIBRARY.region_intersects, other)

    def touches(self, other: Region) -> bool:
        """Whether both have points of their boundaries in common, but no inner points."""
        return self._answer(LIBRARY.region_touches, other)

    def covers(self, other: Region) -> bool:
        """Whether this region has every point of the other one; so it covers an empty one."""
        return self._answer(LIBRARY.region_covers, other)

    def distance(self, other: Region) -> Distance:
        """How far another region is, and the places of both that are so near. Errors are those of
        rounding, 2**-48 of the distance where coordinates differ by 2**53 steps at most.

        >>> square, far = (Region([[(x, 0), (x + 2, 0), (x + 2, 2), (x, 2)]]) for x in (0, 5))
        >>> square.distance(far)
        Distance(distance=3.0, first=(2.0, 0.0), second=(5.0, 0.0))
        """
        _only_regions([other])
        distance, places = c_double(), (c_double * 4)()
        check(LIBRARY.region_distance(self._handle, other._handle, byref(distance), places))
        if distance.value == float("inf"):
            return Distance(distance.value, None, None)
        return Distance(distance.value, (places[0], places[1]), (places[2], places[3]))

    def nearest(self, points: Points, boundary: bool = False) -> Nearest:
        """The nearest places of the region for some points, and their distances: inside the region
        the points themselves, and 0.

        boundary: whether the nearest places of the boundary are asked for, inside, too

        >>> square = Region([[(0, 0), (4, 0), (4, 4), (0, 4)]])
        >>> places, distances = square.nearest([(7, 8), (1, 2)])
        >>> places.tolist(), distances.tolist()
        ([[4.0, 4.0], [1.0, 2.0]], [5.0, 0.0])
        >>> square.nearest([(1, 2)], boundary=True).places.tolist()
        [[0.0, 2.0]]
        """
        xy = b"".join([doubles(points, "the sequence of points")])
        count = len(xy) // POINT_BYTES
        places, distances = blank("d", 2 * count), blank("d", count)
        check(LIBRARY.region_nearest(self._handle, _BOUNDARY if boundary else 0, xy, count,
                                     address(places), address(distances)))
        return Nearest(shaped(places, 2), flat(distances, "d"))

    @property
    def length(self) -> float:
        """The length of the boundary, holes included.

        >>> Region([[(0, 0), (4, 0), (4, 3), (0, 3)]]).length
        14.0
        """
        return float(LIBRARY.region_length(self._handle))

    @property
    def centroid(self) -> Optional[tuple[float, float]]:
        """The centroid, exact but for rounding; None for an empty region.

        >>> Region([[(0, 0), (6, 0), (0, 3)]]).centroid
        (2.0, 1.0)
        """
        xy = (c_double * 2)()
        return (xy[0], xy[1]) if LIBRARY.region_centroid(self._handle, xy) else None

    @property
    def hull(self) -> Region:
        """The convex hull, exact, on the same grid.

        >>> Region([[(0, 0), (4, 0), (1, 1), (0, 4)]]).hull.area
        8.0
        """
        return self._made(LIBRARY.region_hull)

    @property
    def least_box(self) -> Optional[Array]:
        """The four corners of the box of least area, in any direction, counter-clockwise; None for
        an empty region.

        >>> Region([[(0, 0), (4, 4), (3, 5), (-1, 1)]]).least_box.tolist()
        [[-1.0, 1.0], [0.0, 0.0], [4.0, 4.0], [3.0, 5.0]]
        """
        corners = blank("d", 8)
        check(LIBRARY.region_least_box(self._handle, address(corners)))
        return shaped(corners, 2) if self else None

    def transformed(self, matrix: Iterable[float], grid: Optional[Grid] = None) -> Region:
        """The region moved, turned, scaled, sheared or mirrored.

        matrix: a, b, c, d, e, f for x' = a x + b y + c and y' = d x + e y + f
        grid: for the result; without it the region's own if that holds the result, else the one
            that covers it

        Moved by whole steps the region stays as it is: on its own grid if that holds the result,
        else on that grid moved along. Else its points are rounded, and the region is made again.
        Raises ValueError for what is not finite or lies outside the grid.

        >>> Region([[(0, 0), (4, 0), (0, 2)]], grid=Grid()).transformed([0, -1, 0, 1, 0, 10]).bounds
        (-2.0, 10.0, 0.0, 14.0)
        """
        numbers = array("d", matrix)
        if len(numbers) != 6:
            raise ValueError(f"a matrix has 6 numbers, not {len(numbers)}")
        return self._made(LIBRARY.region_transform, address(numbers),
                          byref(grid._c()) if grid else None)

    def _answer(self, question: Any, other: Region) -> bool:
        _only_regions([other])
        answer = c_int32()
        check(question(self._handle, other._handle, byref(answer)))
        return answer.value != 0

    def _made(self, make: Any, *arguments: Any) -> Region:
        handle = c_void_p()
        check(make(self._handle, *arguments, byref(handle)))
        return Region._adopt(handle.value)

    @overload
    def contains(self, points: tuple[float, float]) -> bool: ...
    @overload
    def contains(self, points: Points) -> Array: ...

    def contains(self, points: Union[tuple[float, float], Points]) -> Union[bool, Array]:
        """Whether a point lies inside or on the boundary, decided exactly; for a sequence or
        buffer of points an array of bools. Points that are not finite lie outside.

        >>> triangle = Region([[(0, 0), (4, 0), (0, 4)]])
        >>> triangle.contains((2, 2)), triangle.contains((2.0000001, 2))
        (True, False)
        >>> triangle.contains([(1, 1), (0, 3), (3, 3)]).tolist()
        [True, True, False]
        """
        if is_pair(points):
            return self._sides([points])[0] >= 0
        return flat(array("B", self._sides(points).tobytes().translate(_IN_OR_ON)), "?")

    def __contains__(self, point: tuple[float, float]) -> bool:
        """``(x, y) in region``: the same for one point."""
        return self._sides([point])[0] >= 0

    def sides(self, points: Points) -> Array:
        """Where points lie, decided exactly: an array with 1 for each that lies inside, 0 on
        the boundary, -1 outside.

        >>> Region([[(0, 0), (4, 0), (0, 4)]]).sides([(1, 1), (0, 3), (3, 3)]).tolist()
        [1, 0, -1]
        """
        return flat(self._sides(points), "b")

    def prepare(self) -> None:
        """Makes the index that finds where a point lies in O(log n), which else is made after
        some dozens of points. Any thread may call this at any time.

        >>> Region([[(0, 0), (4, 0), (0, 4)]]).prepare()
        """
        check(LIBRARY.region_prepare(self._handle))

    def _sides(self, points: Any) -> array[int]:
        xy = b"".join([doubles(points, "the sequence of points")])
        sides = blank("b", len(xy) // POINT_BYTES)
        check(LIBRARY.region_contains(self._handle, xy, len(sides), address(sides)))
        return sides

    def triangulate(self, delaunay: bool = True) -> Mesh:
        """Cuts the region into triangles of its own vertices.

        delaunay: whether to make the constrained Delaunay triangulation, of all ways the one
            without needless slivers; else the triangles as a sweep cuts them, in half the time

        >>> mesh = Region([[(0, 0), (4, 0), (4, 1), (0, 3)]]).triangulate()
        >>> sorted(sorted(corners) for corners in mesh.triangles.tolist())
        [[0, 1, 2], [0, 2, 3]]
        >>> sorted(sorted(across) for across in mesh.neighbours.tolist())
        [[-1, -1, 0], [-1, -1, 1]]
        """
        counts = self._counts()
        vertices = blank("d", 2 * counts.vertices)
        triangles, neighbours = blank("I", 3 * counts.triangles), blank("i", 3 * counts.triangles)
        check(LIBRARY.region_read(self._handle, byref(counts), address(vertices), None, None))
        check(LIBRARY.region_triangulate(self._handle, _DELAUNAY if delaunay else 0,
                                         byref(counts), address(triangles), address(neighbours)))
        return Mesh(shaped(vertices, 2), shaped(triangles, 3), shaped(neighbours, 3))

    def _counts(self) -> Counts:
        counts = Counts()
        LIBRARY.region_counts(self._handle, byref(counts))
        return counts

    def _read(self) -> tuple[array[float], array[int], array[int]]:
        """Coordinates, where each ring starts in points, and each polygon in rings."""
        counts = self._counts()
        xy = blank("d", 2 * counts.vertices)
        rings, polygons = blank("I", counts.rings + 1), blank("I", counts.polygons + 1)
        check(LIBRARY.region_read(
            self._handle, byref(counts), address(xy), address(rings), address(polygons)))
        return xy, rings, polygons


@contextmanager
def _naming(place: str) -> Iterator[None]:
    try:
        yield
    except (TypeError, ValueError) as error:
        raise type(error)(f"{place}: {error}") from None


def is_pair(points: Any) -> bool:
    return isinstance(points, (tuple, list)) and len(points) == 2 and isinstance(points[0], Real)


def _grid_covering(places: list[str], polygons: list[FlatRings]) -> Grid:
    try:
        return Grid._covering(b"".join(polygon.xy for polygon in polygons))
    except ValueError:
        for place, polygon in zip(places, polygons):
            with _naming(place):
                Region._adopt(_create(polygon, FillRule.EVEN_ODD, None))
        raise


def _only_regions(regions: list[Region]) -> None:
    if not all(isinstance(region, Region) for region in regions):
        raise TypeError("only regions have grids, unions and questions")


def _handles(regions: list[Region]) -> Any:
    _only_regions(regions)
    return (c_void_p * len(regions))(*(region._handle for region in regions))


def _check_operation(regions: list[Region], status: int) -> None:
    steps = ""
    if status == TOO_COARSE:
        finest = min(region.grid.step for region in regions if region)
        steps = (f": its step is {common_grid(regions).step}, "
                 f"and the finest of the regions' is {finest}")
    check(status, more=steps)


def common_grid(regions: Iterable[Region]) -> Grid:
    """The grid that operations on some regions take. Raises ValueError where none holds all.

    >>> common_grid([Region([[(0, 0), (1, 0), (0, 1)]]), Region([[(0, 0), (4, 0), (0, 4)]])]).step
    3.725290298461914e-09
    """
    kept, grid = list(regions), CGrid()
    check(LIBRARY.grid_common(_handles(kept), len(kept), byref(grid)))
    return Grid._from_c(grid)


def _of_rings(xy: bytes, offsets: list[int], grid: Grid) -> Region:
    """What a pickle calls."""
    return Region._adopt(_create(FlatRings(xy, array("I", offsets)), FillRule.EVEN_ODD, grid))


def _create(rings: FlatRings, rule: FillRule, grid: Optional[Grid]) -> Optional[int]:
    handle, fault = c_void_p(), Fault()
    check(LIBRARY.region_create(
        rings.xy, address(rings.offsets), rings.rings, rule,
        byref(grid._c()) if grid else None, byref(handle), byref(fault)), fault)
    return handle.value


def combine(
    operation: Operation, a: Iterable[Points], rule_a: FillRule, b: Iterable[Points],
    rule_b: FillRule, grid: Optional[Grid] = None) -> Region:
    """An operation on the regions that two sets of rings bound, in one sweep: the same as on two
    regions on the grid, by default the one that covers all rings, but that crossings are rounded
    once, not twice. Arguments, errors and warnings as for Region; the rings of b are counted on
    from those of a where a point is refused.

    >>> land, lake = [(0, 0), (9, 0), (9, 9), (0, 9)], [(2, 2), (4, 2), (4, 4), (2, 4)]
    >>> combine(Operation.SUBTRACT, [land], FillRule.NON_ZERO, [lake], FillRule.NON_ZERO).area
    77.0
    """
    first, second, handle, fault = flatten(a), flatten(b), c_void_p(), Fault()
    check(LIBRARY.rings_combine(
        Operation(operation),
        first.xy, address(first.offsets), first.rings, FillRule(rule_a),
        second.xy, address(second.offsets), second.rings, FillRule(rule_b),
        byref(grid._c()) if grid else None, byref(handle), byref(fault)), fault)
    region = Region._adopt(handle.value)
    region._warn_of_losses()
    return region


def triangulate_rings(
    rings: Iterable[Points], rule: FillRule = FillRule.EVEN_ODD, grid: Optional[Grid] = None,
    delaunay: bool = True) -> Mesh:
    """The triangles of the region that rings bound, in one call: as Region(...).triangulate().

    >>> len(triangulate_rings([[(0, 0), (4, 0), (4, 1), (0, 3)]]).triangles)
    2
    """
    joined, made, fault = flatten(rings), POINTER(CMesh)(), Fault()
    check(LIBRARY.rings_triangulate(
        joined.xy, address(joined.offsets), joined.rings, FillRule(rule),
        byref(grid._c()) if grid else None, (_DELAUNAY if delaunay else 0) | _NEIGHBOURS,
        byref(made), byref(fault)), fault)
    try:
        mesh, counts = made.contents, made.contents.counts
        triangles = 3 * counts.triangles
        return Mesh(shaped(_copied("d", mesh.xy, 2 * counts.vertices), 2),
                    shaped(_copied("I", mesh.triangles, triangles), 3),
                    shaped(_copied("i", mesh.neighbours, triangles), 3))
    finally:
        LIBRARY.mesh_release(made)


def _copied(code: str, source: Optional[int], count: int) -> array[Any]:
    room = blank(code, count)
    if count:
        memmove(address(room), source, count * room.itemsize)
    return room


def unite(regions: Iterable[Region]) -> Region:
    """The union of any number of regions, in one sweep.

    >>> unite(Region([[(i, i), (i + 2, i), (i + 2, i + 2), (i, i + 2)]]) for i in range(4))
    <zelvan.Region: 1 polygon, 16 vertices, area 13.0>
    """
    kept, handle = list(regions), c_void_p()  # their handles live as long
    _check_operation(kept, LIBRARY.region_unite(_handles(kept), len(kept), byref(handle)))
    return Region._adopt(handle.value)


def unite_rings(rings: Iterable[Points], grid: Optional[Grid] = None) -> Region:
    """The union of any number of rings, whichever way each runs, in one sweep: all are turned so
    that their areas are not negative, and count by the non-zero rule. That is meant for rings
    that do not cross themselves: one that does may still run clockwise around a part of what it
    encloses, and cancels another ring there. Rings that cross themselves are united as regions,
    each by FillRule.NON_ZERO. Arguments, errors and warnings as for Region.

    >>> unite_rings([[(0, 0), (2, 0), (2, 2), (0, 2)], [(1, 1), (1, 3), (3, 3), (3, 1)]]).area
    7.0
    """
    joined, handle, fault = flatten(rings), c_void_p(), Fault()
    check(LIBRARY.region_unite_rings(
        joined.xy, address(joined.offsets), joined.rings,
        byref(grid._c()) if grid else None, byref(handle), byref(fault)), fault)
    region = Region._adopt(handle.value)
    region._warn_of_losses()
    return region
