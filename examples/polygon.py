#!/usr/bin/env python3
"""A square with a hole, from points to triangles, by ctypes.

usage: polygon.py [LIBRARY]

The library is the argument, else the environment's ZELVAN_LIBRARY, else the one
that is installed.
"""
import ctypes
import ctypes.util
import os
import sys

OPERATIONS = "Union Substruct Triangulate GetContourCount".split()


def load():
    """The library, with the functions' types declared."""
    path = (sys.argv[1] if len(sys.argv) > 1 else os.environ.get("ZELVAN_LIBRARY")
            or ctypes.util.find_library("zelvan"))
    if not path:
        sys.exit("there is no library: give its path, or set ZELVAN_LIBRARY")
    library = ctypes.CDLL(path)
    doubles, integers = ctypes.POINTER(ctypes.c_double), ctypes.POINTER(ctypes.c_int)
    library.SetMainContour.argtypes = library.SetHole.argtypes = [ctypes.c_int, doubles]
    library.GetVertices.argtypes = [doubles]
    library.GetEdges.argtypes = library.GetFaces.argtypes = [integers]
    library.GetCounts.argtypes = [integers] * 3
    library.GetContourIndex.argtypes = library.GetContourSize.argtypes = [ctypes.c_int]
    for name in OPERATIONS:
        getattr(library, name).argtypes = []
    return library


def check(result, what):
    if not result:
        sys.exit(f"{what} failed")


def give(function, points):
    """Hands a contour of (x, y) pairs to SetMainContour or SetHole."""
    numbers = [number for x, y in points for number in (x, y, 0.0)]
    check(function(len(numbers), (ctypes.c_double * len(numbers))(*numbers)), function.__name__)


def read(function, kind, count):
    """Reads `count` triples into a list of tuples."""
    buffer = (kind * (3 * count))()
    check(function(buffer), function.__name__)
    numbers = list(buffer)
    return list(zip(numbers[0::3], numbers[1::3], numbers[2::3]))


def triangles(library, outer, holes):
    """The vertices of a region and its triangles, as tuples of vertex numbers."""
    give(library.SetMainContour, outer)
    for hole in holes:
        give(library.SetHole, hole)
    check(library.Substruct(), "Substruct")
    check(library.Triangulate(), "Triangulate")
    counts = [ctypes.c_int() for _ in range(3)]
    check(library.GetCounts(*map(ctypes.byref, counts)), "GetCounts")
    vertices = read(library.GetVertices, ctypes.c_double, counts[0].value)
    edges = read(library.GetEdges, ctypes.c_int, counts[1].value)
    faces = read(library.GetFaces, ctypes.c_int, counts[2].value)
    # An edge is (vertex, vertex, kind); the edges of a face come clockwise, and
    # each shares a corner with the next one.
    corners = [[(set(edges[face[i]][:2]) & set(edges[face[(i + 1) % 3]][:2])).pop()
                for i in (2, 1, 0)] for face in faces]
    return vertices, corners


def area(vertices, corners):
    (ax, ay, _), (bx, by, _), (cx, cy, _) = (vertices[i] for i in corners)
    return ((bx - ax) * (cy - ay) - (by - ay) * (cx - ax)) / 2


def main():
    outer = [(0, 0), (10, 0), (10, 10), (0, 10)]
    hole = [(3, 3), (7, 3), (7, 7), (3, 7)]
    vertices, faces = triangles(load(), outer, [hole])
    for corners in faces:
        print(*("({:.1f} {:.1f})".format(*vertices[i]) for i in corners))
    total = sum(area(vertices, corners) for corners in faces)
    print(f"{len(vertices)} vertices, {len(faces)} triangles, area {total:.3f}")


if __name__ == "__main__":
    main()
