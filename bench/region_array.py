"""Times arrays of regions: from shapely and back, beside shapely's own copy of the same
geometries (to well-known binary and back), and what is done to all of them.

    ZELVAN_LIBRARY=build/release/libzelvan.so PYTHONPATH=bindings/python \\
      python3 bench/region_array.py [REGIONS [VERTICES]]

The least of five runs each.
"""

import math, sys, time

import shapely
import shapely.wkb
from shapely.geometry import Polygon

from zelvan import RegionArray

count, vertices = [*map(int, sys.argv[1:]), *(100000, 8)[len(sys.argv) - 1:]]
columns = math.isqrt(count)
turns = [2 * math.pi * k / vertices for k in range(vertices)]
geometries = [Polygon([(3 * (i % columns) + math.cos(t), 3 * (i // columns) + math.sin(t))
                       for t in turns]) for i in range(count)]


def copied():
    if hasattr(shapely, "to_wkb"):
        return shapely.from_wkb(shapely.to_wkb(geometries))
    return [shapely.wkb.loads(one.wkb) for one in geometries]


def least(work):
    def once():
        start = time.perf_counter()
        result = work()
        return time.perf_counter() - start, result

    runs = [once() for _ in range(5)]
    return min(seconds for seconds, _ in runs), runs[0][1]


copy, _ = least(copied)
there, array = least(lambda: RegionArray.from_shapely(geometries))
back, _ = least(array.to_shapely)
print(f"{count} regions of {vertices} vertices, shapely {shapely.__version__}")
print(f"shapely's copy      {1e3 * copy:8.1f} ms")
print(f"from shapely        {1e3 * there:8.1f} ms")
print(f"to shapely          {1e3 * back:8.1f} ms")
print(f"both to the copy    {(there + back) / copy:8.2f}")
records, buffers, moved = array.to_wkb(), array.to_geoarrow(), array[::-1]
for name, work in (
        ("from WKB", lambda: RegionArray.from_wkb(records)), ("to WKB", array.to_wkb),
        ("from GeoArrow", lambda: RegionArray.from_geoarrow(*buffers)),
        ("to GeoArrow", array.to_geoarrow), ("area", lambda: array.area),
        ("bounds", lambda: array.bounds), ("contains", lambda: array.contains((1, 1))),
        ("union_all", array.union_all), ("intersect with one", lambda: array & array[0]),
        ("intersect with another array", lambda: array & moved)):
    print(f"{name:28}{1e3 * least(work)[0]:8.1f} ms")
