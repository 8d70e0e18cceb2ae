"""Earcut, which Debian packages as a Python extension. The comparison's program
starts this, sends polygons, and asks for runs:

  stdin    the number of polygons; for each the number of rings, the rings' ends as
           counts of points, and the points' coordinates: 64 bits each, native order;
           then one byte for each request: r runs, a sums the triangles' areas up
  stdout   a line with one number for each request: ms of CPU time, or the area

Only the extension's calls are timed, on arrays that are ready.
"""
import sys
import time

import mapbox_earcut
import numpy

source = sys.stdin.buffer


def numbers(count, kind):
    return numpy.frombuffer(source.read(8 * count), dtype=kind)


polygons = []
for _ in range(int(numbers(1, numpy.int64)[0])):
    ends = numbers(int(numbers(1, numpy.int64)[0]), numpy.int64).astype(numpy.uint32)
    points = numbers(2 * int(ends[-1]), numpy.float64).reshape(-1, 2).copy()
    polygons.append((points, ends))

made = []
while request := source.read(1):
    if request == b"r":
        start = time.process_time()
        made = [mapbox_earcut.triangulate_float64(points, ends) for points, ends in polygons]
        print(1000 * (time.process_time() - start), flush=True)
    else:
        area = 0.0
        for (points, _), corners in zip(polygons, made):
            a, b, c = (points[corners[i::3]] for i in range(3))
            cross = (b[:, 0] - a[:, 0]) * (c[:, 1] - a[:, 1]) - (c[:, 0] - a[:, 0]) * (b[:, 1] - a[:, 1])
            area += numpy.abs(cross).sum() / 2
        print(area, flush=True)
