"""The examples in all docstrings, and what examples cannot show."""

import copy, doctest, json, os, pickle, random, re, resource, subprocess, sys, unittest, warnings
from array import array
from itertools import chain
from pathlib import Path

from zelvan import (
    FillRule, Grid, LossWarning, Operation, Region, TooCoarseError, combine, triangulate_rings, unite,
    unite_rings)

try:
    import numpy
    from shapely.geometry import shape as to_shapely
except ImportError:
    numpy = None

ROOT = Path(__file__).resolve().parents[3]


def load_tests(loader, tests, pattern):
    for name in [name for name in sys.modules if name.partition(".")[0] == "zelvan"]:
        tests.addTests(doctest.DocTestSuite(name))
    return tests


def random_ring(rng, size=99):
    return [(rng.randint(-size, size), rng.randint(-size, size)) for _ in range(20)]


def buffer(points):
    return memoryview(array("d", chain(*points))).cast("B").cast("d", (len(points), 2))


def rings_of(region):
    return [ring for outer, holes in region.polygons for ring in (outer, *holes)]


class Binding(unittest.TestCase):
    def test_every_way_out_and_in_gives_the_same_region(self):
        for seed in range(50):
            rng = random.Random(seed)
            region = Region([random_ring(rng), random_ring(rng)], grid=Grid())
            rings = [[[*map(int, point)] for point in ring.tolist()] for ring in rings_of(region)]
            twice = {"type": "GeometryCollection", "geometries": [region.__geo_interface__, region]}
            features = [{"type": "Feature", "geometry": part} for part in (None, twice)]
            nested = {"type": "FeatureCollection", "features": features}
            ways = [Region(rings, grid=Grid()), Region(map(buffer, rings), grid=Grid()),
                    Region([ring[::-1] for ring in rings], FillRule.NEGATIVE, Grid()),
                    Region.from_geojson(json.dumps(region.__geo_interface__), Grid()),
                    Region.from_geojson(nested, Grid()),
                    unite([region, Region(), region - region, copy.deepcopy(region)]),
                    combine(seed % 4, rings, FillRule.EVEN_ODD, [], FillRule.POSITIVE, Grid())
                    if seed % 4 != Operation.INTERSECT else
                    combine(1, rings, FillRule.EVEN_ODD, map(buffer, rings), 1, Grid()),
                    pickle.loads(pickle.dumps(region))]
            if numpy:
                wide = [numpy.array([(x, 7, y) for x, y in ring], "i2") for ring in rings]
                ways += [Region([ring[:, ::2] for ring in wide], grid=Grid()),
                         Region.from_geojson(to_shapely(region), Grid())]
            self.assertEqual({*ways}, {region}, seed)
            points = random_ring(rng) + random_ring(rng, 9) + rings[0]
            sides = [region.sides([point])[0] for point in points]
            region.prepare()
            self.assertEqual(region.sides(buffer(points)).tolist(), sides, seed)
            self.assertEqual([region.contains(p) for p in points], [s >= 0 for s in sides], seed)
            self.assertEqual(unite(region.part(i) for i in range(len([*region]))), region, seed)
            there = region.transformed([0, -1, 5, 1, 0, 8])
            self.assertEqual(there.transformed([0, 1, -8, -1, 0, 5], Grid()), region, seed)
            self.assertEqual(there.intersects(region), there.distance(region).distance == 0, seed)
            self.assertTrue(region.hull.covers(region) and not region.hull.touches(region), seed)
            near = region.nearest(points, boundary=True).distances.tolist()
            self.assertEqual([d == 0 for d in near], [s == 0 for s in sides], seed)
            meshes = region.triangulate(), triangulate_rings(rings, grid=Grid())
            self.assertEqual(*[[part.tolist() for part in mesh] for mesh in meshes], seed)

    def test_nothing_is_lost_without_a_word(self):
        tiny, far = [(0, 0), (.2, 0), (0, .2)], [(1e38, 1e38), (0, 0)]
        shape = {"type": "Polygon", "coordinates": [tiny]}
        for make in (lambda: Region([tiny, far]), lambda: unite_rings([tiny], Grid()),
                     lambda: Region.from_geojson(shape, Grid())):
            with self.assertWarnsRegex(LossWarning, "^1 ring .* below the grid's step$") as caught:
                region = make()
            self.assertEqual((region, region.lost, caught.filename), (Region(), 1, __file__))
            self.assertEqual(unite([region, region | Region([tiny])]).lost, 2 - bool(region))
        small, large = Region([tiny]), Region([[(1e9, 1e9), (2e9, 1e9), (1e9, 2e9)]])
        steps = f"{(large | large).grid.step * 2}, and .* {small.grid.step}$"
        for join in (lambda: small - large, lambda: unite([large, Region(), small])):
            self.assertRaisesRegex(TooCoarseError, steps, join)
        parts = {"type": "MultiPolygon", "coordinates": [[tiny], [tiny + [(0, float("nan"))]]]}
        named = "^feature 0, polygon 1:.* 0, point 3$"
        self.assertRaisesRegex(ValueError, named, Region.from_geojson, parts)

    def test_the_table_of_all_doors(self):
        for case in json.loads((ROOT / "tests/doors.json").read_text())["cases"]:
            with self.subTest(case["name"]), warnings.catch_warnings(record=True) as said:
                warnings.simplefilter("always")
                try:
                    area, error = Region.from_geojson(case["document"]).area, ""
                except ValueError as raised:
                    area, error = None, str(raised)
                self.assertEqual(area, case.get("area"), error)
                for place in case.get("refused", {}).items():
                    self.assertIn("%s %d" % place, error)
                self.assertEqual([warning.filename for warning in said], [__file__] * len(said))
                words = [re.findall(r"a (\w+) bounds .* (\d+)$", str(warning.message)) for warning in said]
                left_out = [[(kind, str(feature))] for feature, kind in case.get("leftOut", ())]
                self.assertEqual(words, left_out)

    def test_a_million_vertices_cross_and_leave_nothing(self):
        half, kibibytes = 500000, []
        ring = buffer([(i, 1 + i % 2) for i in range(half)] +
                      [(i, -(i % 2)) for i in reversed(range(half))])
        for _ in range(8):
            region = Region([ring], grid=Grid((0, -8)))
            self.assertEqual(len(region.polygons[0].outer), 2 * half)
            kibibytes.append(resource.getrusage(resource.RUSAGE_SELF).ru_maxrss)
        self.assertLess(kibibytes[-1] - kibibytes[4], 12000)  # a region has 8000

    def test_the_start_and_the_end_of_a_program(self):
        def errors(code, **more):
            return subprocess.run([sys.executable, "-c", code], env={**os.environ, **more},
                                  capture_output=True, text=True).stderr
        lives_on = "import zelvan; a = [zelvan.Region([[(0, 0), (1, 0), (1, 1)]])]; a.append(a)"
        self.assertEqual(errors(lives_on), "")
        self.assertRegex(errors(lives_on, ZELVAN_LIBRARY="nowhere"), "ImportError: .*nowhere")


if __name__ == "__main__":
    unittest.main()
