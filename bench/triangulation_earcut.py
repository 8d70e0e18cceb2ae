"""Measures ear cutting on the contours of a file: CONTOURS SECONDS LIMIT.

Runs go on for SECONDS, and until there are five; one that takes two seconds is not
repeated, and half of LIMIT, on the wall's clock, ends them. Prints "ms runs area": the median CPU time, and the triangles' area.
"""
import statistics
import sys
import time

import mapbox_earcut
import numpy


def read_scene(path):
    """The polygons as (points, ends of the contours)."""
    data = open(path, 'rb').read()
    at = 0

    def take(kind, count):
        nonlocal at
        values = numpy.frombuffer(data, kind, count, at).copy()
        at += values.nbytes
        return values

    scene = []
    for _ in range(take('<u4', 1)[0]):
        ends = take('<u4', take('<u4', 1)[0])
        points = take('<f8', 2 * ends[-1])
        scene.append((points.reshape(-1, 2), ends))
    return scene


def triangulate(scene):
    """The seconds of one run, and its answers."""
    start = time.process_time()
    answers = [mapbox_earcut.triangulate_float64(*polygon) for polygon in scene]
    return time.process_time() - start, answers


def area(points, corners):
    a, b, c = (points[corners[i::3]] for i in range(3))
    (ux, uy), (vx, vy) = (b - a).T, (c - a).T
    return numpy.abs(ux * vy - uy * vx).sum() / 2


def main(path, seconds, limit):
    end = time.monotonic() + limit / 2
    scene = read_scene(path)
    first, answers = triangulate(scene)
    total = sum(area(points, corners) for (points, _), corners in zip(scene, answers))
    runs = [first]
    while first < 2 and (len(runs) < 5 or sum(runs) < seconds) and time.monotonic() < end:
        runs.append(triangulate(scene)[0])
    print(1e3 * statistics.median(runs), len(runs), float(total))


main(sys.argv[1], float(sys.argv[2]), float(sys.argv[3]))
