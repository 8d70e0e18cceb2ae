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
    if numpy:
        tests.addTests(doctest.DocFileSuite(str(ROOT / "docs/ANALYSIS.md"), module_relative=False))
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

    @unittest.skipUnless(numpy, "arrays of regions need numpy")
    def test_many_regions_are_as_each(self):
        from shapely import wkb
        from zelvan import RegionArray
        for seed in range(16):
            rng = random.Random(seed)
            kept = [Region([random_ring(rng), random_ring(rng)], grid=Grid()) for _ in range(9)]
            kept[seed % 8:seed % 8 + 2] = [Region(), Region([random_ring(rng, 1)], grid=Grid())]
            many, other, one = RegionArray(kept), RegionArray(kept[::-1]), kept[seed % 5]
            geometries = many.to_shapely()
            records = [wkb.dumps(shape, big_endian=i % 2 > 0, srid=i % 3 or None)
                       for i, shape in enumerate(geometries)]
            xy, rings, polygons, regions = many.to_geoarrow()
            turned = xy[::-1].copy()[::-1]
            ways = [RegionArray.from_shapely(geometries, Grid()), RegionArray.from_wkb(records, Grid()),
                    RegionArray.from_wkt([shape.wkt for shape in geometries], Grid()),
                    RegionArray.from_geoarrow(turned, rings, polygons, regions, Grid()),
                    pickle.loads(pickle.dumps(many)), many[::-1][numpy.arange(8, -1, -1)],
                    RegionArray(Region.from_wkb(r.to_wkb(), Grid()) for r in many) | Region(),
                    (many | one) - (one - many)]
            for way in ways[:-1]:
                self.assertTrue((way == many).all(), seed)
            pairs = [*zip(kept, kept[::-1])]
            for op in ("__or__", "__and__", "__sub__", "__xor__"):
                each, all_of = [getattr(a, op)(b) for a, b in pairs], getattr(many, op)(other)
                self.assertTrue((all_of == RegionArray(each)).all(), seed)
                with_one = [getattr(a, op)(one) for a in kept]
                self.assertEqual([*getattr(many, op)(one)], with_one)
            self.assertEqual([*(one - many)], [one - a for a in kept])
            self.assertEqual(many.union_all(), unite(kept))
            self.assertEqual(many.area.tolist(), [a.area for a in kept])
            self.assertEqual([None if numpy.isnan(box[0]) else (*box,) for box in many.bounds],
                             [a.bounds for a in kept])
            points = random_ring(rng)[:9]
            self.assertEqual(many.contains(points).tolist(), [p in a for p, a in zip(points, kept)])
            self.assertEqual(many.contains(points[0]).tolist(), [points[0] in a for a in kept])
            for record in records:  # broken ones are refused, or are other regions
                broken = bytearray(record[:rng.choice([len(record), rng.randrange(len(record))])])
                for _ in range(rng.randrange(4)):
                    broken[rng.randrange(len(broken)) if broken else 0:][:1] = [rng.randrange(256)]
                try:
                    Region.from_wkb(broken, Grid())
                except ValueError:
                    continue
        tiny = to_shapely({"type": "Polygon", "coordinates": [[(0, 0), (.2, 0), (0, .2), (0, 0)]]})
        for loss in (lambda: RegionArray.from_shapely([tiny, None], Grid()),
                     lambda: RegionArray.from_wkb([tiny.wkb], Grid()),
                     lambda: Region.from_wkb(tiny.wkb, Grid())):
            with self.assertWarnsRegex(LossWarning, "^1 ring with an area") as caught:
                self.assertFalse(any(map(bool, [*loss()])) if loss() else False)
            self.assertEqual(caught.filename, __file__)

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
        if numpy:
            self.assertEqual(errors(lives_on + "; b = [zelvan.RegionArray(a[:1])]; b.append(b)"), "")
        self.assertRegex(errors(lives_on, ZELVAN_LIBRARY="nowhere"), "ImportError: .*nowhere")


if __name__ == "__main__":
    unittest.main()
