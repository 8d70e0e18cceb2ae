"""The shared library: where it is found, what its functions take, how they fail.

Every function here may run in any threads at once; ctypes lets go of the interpreter's lock
while one works.
"""

from __future__ import annotations

import ctypes
import os
import sys
from ctypes import POINTER, Structure, c_char_p, c_double, c_int32, c_uint32, c_void_p
from typing import Any, NoReturn, Optional

_NAMES = {"win32": "zelvan.dll", "darwin": "libzelvan.1.dylib"}
_INSTALLED = _NAMES.get(sys.platform, "libzelvan.so.1")
NO_PLACE = 0xFFFFFFFF


class CGrid(Structure):
    _fields_ = [("x", c_double), ("y", c_double), ("step", c_double)]


class Counts(Structure):
    _fields_ = [(name, c_uint32) for name in ("polygons", "rings", "vertices", "triangles")]


class PartCounts(Structure):
    _fields_ = [(name, c_uint32) for name in ("parts", "inputs")]


class Fault(Structure):
    """Where a coordinate was refused, if anywhere."""

    _fields_ = [("ring", c_uint32), ("point", c_uint32)]

    def __init__(self) -> None:
        super().__init__(NO_PLACE, NO_PLACE)


class CMesh(Structure):
    """Triangles in arrays of the library."""

    _fields_ = [("counts", Counts), ("xy", c_void_p), ("triangles", c_void_p),
                ("neighbours", c_void_p)]


# Arrays and regions are addresses: whoever calls keeps what lies there.
_GRID, _COUNTS, _FAULT = POINTER(CGrid), POINTER(Counts), POINTER(Fault)
_HANDLE, _MESH = POINTER(c_void_p), POINTER(CMesh)
_PARTS, _NUMBER = POINTER(PartCounts), POINTER(c_uint32)
_SIGNATURES: dict[str, tuple[Any, list[Any]]] = {
    "status_message": (c_char_p, [c_int32]),
    "grid_covering": (c_int32, [c_void_p, c_uint32, _GRID]),
    "grid_check": (c_int32, [_GRID]),
    "grid_common": (c_int32, [c_void_p, c_uint32, _GRID]),
    "region_create": (
        c_int32, [c_void_p, c_void_p, c_uint32, c_int32, _GRID, _HANDLE, _FAULT]),
    "region_unite_rings": (c_int32, [c_void_p, c_void_p, c_uint32, _GRID, _HANDLE, _FAULT]),
    "rings_combine": (
        c_int32, [c_int32, c_void_p, c_void_p, c_uint32, c_int32, c_void_p, c_void_p, c_uint32,
                  c_int32, _GRID, _HANDLE, _FAULT]),
    "region_retain": (c_void_p, [c_void_p]),
    "region_release": (None, [c_void_p]),
    "region_combine": (c_int32, [c_int32, c_void_p, c_void_p, _HANDLE]),
    "region_unite": (c_int32, [c_void_p, c_uint32, _HANDLE]),
    "region_offset": (
        c_int32, [c_void_p, c_double, c_int32, c_double, c_double, _HANDLE]),
    "region_on_grid": (c_int32, [c_void_p, _GRID, _HANDLE]),
    "region_lost": (c_uint32, [c_void_p]),
    "region_equal": (c_int32, [c_void_p, c_void_p]),
    "region_counts": (None, [c_void_p, _COUNTS]),
    "region_grid": (None, [c_void_p, _GRID]),
    "region_area": (c_double, [c_void_p]),
    "region_bounds": (c_int32, [c_void_p, c_void_p]),
    "region_prepare": (c_int32, [c_void_p]),
    "region_contains": (c_int32, [c_void_p, c_void_p, c_uint32, c_void_p]),
    "region_read": (c_int32, [c_void_p, _COUNTS, c_void_p, c_void_p, c_void_p]),
    "region_triangulate": (c_int32, [c_void_p, c_uint32, _COUNTS, c_void_p, c_void_p]),
    "overlay_create": (c_int32, [c_void_p, c_uint32, _HANDLE]),
    "overlay_release": (None, [c_void_p]),
    "overlay_counts": (None, [c_void_p, _PARTS]),
    "overlay_read": (c_int32, [c_void_p, _PARTS, c_void_p, c_void_p]),
    "overlay_region": (c_int32, [c_void_p, c_uint32, _HANDLE]),
    "coverage_check": (c_int32, [c_void_p, c_uint32, c_double, c_double, _HANDLE]),
    "coverage_read": (c_int32, [c_void_p, _PARTS, c_void_p, c_void_p]),
    "region_intersects": (c_int32, [c_void_p, c_void_p, POINTER(c_int32)]),
    "region_touches": (c_int32, [c_void_p, c_void_p, POINTER(c_int32)]),
    "region_covers": (c_int32, [c_void_p, c_void_p, POINTER(c_int32)]),
    "region_distance": (c_int32, [c_void_p, c_void_p, POINTER(c_double), c_void_p]),
    "region_nearest": (c_int32, [c_void_p, c_uint32, c_void_p, c_uint32, c_void_p, c_void_p]),
    "region_length": (c_double, [c_void_p]),
    "region_centroid": (c_int32, [c_void_p, c_void_p]),
    "region_hull": (c_int32, [c_void_p, _HANDLE]),
    "region_least_box": (c_int32, [c_void_p, c_void_p]),
    "region_polygon": (c_int32, [c_void_p, c_uint32, _HANDLE]),
    "region_transform": (c_int32, [c_void_p, c_void_p, _GRID, _HANDLE]),
    "rings_triangulate": (
        c_int32, [c_void_p, c_void_p, c_uint32, c_int32, _GRID, c_uint32, POINTER(_MESH), _FAULT]),
    "mesh_release": (None, [_MESH]),
    "regions_create": (
        c_int32, [c_void_p, c_void_p, c_void_p, c_void_p, c_uint32, _GRID, c_void_p, _NUMBER]),
    "regions_from_wkb": (
        c_int32, [c_void_p, c_void_p, c_uint32, _GRID, c_void_p, _NUMBER, _NUMBER]),
    "regions_to_wkb": (c_int32, [c_void_p, c_uint32, c_void_p, c_void_p]),
    "regions_retain": (None, [c_void_p, c_uint32]),
    "regions_release": (None, [c_void_p, c_uint32]),
    "regions_combine": (
        c_int32, [c_int32, c_void_p, c_uint32, c_void_p, c_uint32, c_void_p, _NUMBER]),
    "regions_measure": (c_int32, [c_void_p, c_uint32, c_void_p, c_void_p, c_void_p]),
    "regions_contains": (c_int32, [c_void_p, c_uint32, c_void_p, c_uint32, c_void_p]),
    "regions_counts": (c_int32, [c_void_p, c_uint32, _COUNTS]),
    "regions_read": (c_int32, [c_void_p, c_uint32, _COUNTS, *4 * [c_void_p]]),
}


class Library:
    """The functions of zelvan/region_c.h, regions_c.h and overlay_c.h, without their prefix."""

    def __init__(self, path: str) -> None:
        library = ctypes.CDLL(path)
        for name, (result, arguments) in _SIGNATURES.items():
            function = getattr(library, "zelvan_" + name)
            function.restype, function.argtypes = result, arguments
            setattr(self, name, function)

    def __getattr__(self, name: str) -> Any:  # for type checkers: all are set above
        raise AttributeError(name)


def _load() -> Library:
    given = os.environ.get("ZELVAN_LIBRARY")
    path = given or _INSTALLED
    origin = "the environment's ZELVAN_LIBRARY" if given else "as it is installed"
    try:
        return Library(path)
    except OSError as error:
        raise ImportError(
            f"zelvan needs its shared library, and cannot load {path!r} ({origin}): {error}. "
            "Install it, or set ZELVAN_LIBRARY to its path."
        ) from error
    except AttributeError as error:
        raise ImportError(f"the library {path!r} ({origin}) is too old: {error}") from error


LIBRARY = _load()


class TooCoarseError(ValueError):
    """An operation would lose a part of a region on the grid that it takes."""


_MEMORY, _TOO_LARGE, _INTERNAL, TOO_COARSE = 1, 6, 7, 8
_EXCEPTIONS: dict[int, type[Exception]] = {
    _MEMORY: MemoryError, _TOO_LARGE: OverflowError, _INTERNAL: RuntimeError,
    TOO_COARSE: TooCoarseError}


def check(status: int, fault: Optional[Fault] = None, more: str = "") -> None:
    """Raises what a status stands for, if it is not ZELVAN_OK."""
    if status:
        _fail(status, fault, more)


def _fail(status: int, fault: Optional[Fault], more: str) -> NoReturn:
    text = LIBRARY.status_message(status).decode() + more
    if fault is not None and fault.ring != NO_PLACE:
        text += f": ring {fault.ring}, point {fault.point}"
    raise _EXCEPTIONS.get(status, ValueError)(text)
