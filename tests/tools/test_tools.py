"""What the man page promises of the host program, from the outside: exit statuses, refusals,
files. GEOS, through shapely, is the judge of what is written.

Environment: ZELVAN_TOOL and ZELVAN_TOOL_WITHOUT_GEOS, the programs; ZELVAN_DATA, the maps.
"""

import json
import os
import pathlib
import re
import subprocess
import tempfile
import unittest

import shapely.geometry
import shapely.wkt

TOOL = os.environ["ZELVAN_TOOL"]
WITHOUT_GEOS = os.environ["ZELVAN_TOOL_WITHOUT_GEOS"]
COUNTRIES = os.environ["ZELVAN_DATA"] + "/countries-50m.geojson"
POLYGONS, TRIANGLES, AREA_IN, AREA_OUT = 5, 3, 2, 1  # columns of the table from the right; time is 0


class ToolTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)

    def write(self, **files):
        for name, text in files.items():
            self.path(name.replace("_", ".")).write_text(text)

    def path(self, name):
        return pathlib.Path(self.folder.name, name)

    def run_tool(self, arguments, program=TOOL):
        """Exit status, and standard output and error; "@" stands for the folder."""
        command = f'"{program}" {arguments}'.replace("@", self.folder.name)
        done = subprocess.run(command, shell=True, text=True, stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT)
        return done.returncode, done.stdout

    def cell(self, text, column):
        row = text.rstrip("\n").rsplit("\n", 1)[-1]
        return re.sub(r" (m?s)$", r"\1", row).split()[-1 - column]

    def look(self, name):
        """The polygons of a file, all of them valid."""
        text = self.path(name).read_text()
        if name.endswith(".geojson"):
            geometries = [shapely.geometry.shape(f["geometry"]) for f in json.loads(text)["features"]
                          if f["geometry"]]
        elif name.endswith(".obj"):
            vertices, geometries = [], []
            for words in map(str.split, text.split("\n")):
                if words[:1] == ["v"]:
                    vertices.append((float(words[1]), float(words[2])))
                if words[:1] == ["f"]:
                    corners = [vertices[int(n) - 1] for n in words[1:]]
                    geometries.append(shapely.geometry.Polygon(corners))
        else:
            geometries = [shapely.wkt.loads(line) for line in text.splitlines()]
        polygons = [p for g in geometries for p in getattr(g, "geoms", [g]) if not p.is_empty]
        for polygon in polygons:
            self.assertTrue(polygon.is_valid, name)
        return polygons

    def area(self, name):
        return sum(polygon.area for polygon in self.look(name))

    def test_exit_status_tells_what_became_of_the_input(self):
        good = "POLYGON ((0 0, 4 0, 4 4, 0 4, 0 0))"
        self.write(good_wkt=good, bowtie_wkt="POLYGON ((0 0, 2 2, 2 0, 0 2, 0 0))",
                   huge_wkt="POLYGON ((-1.7e308 0, 1.7e308 -1e308, 0 1.7e308, -1.7e308 0))",
                   broken_geojson='{"type":"FeatureCollection","features":[', empty_geojson="",
                   deep_json="[" * 100000)
        expected = {
            0: ["triangulate @/good.wkt", "triangulate @/bowtie.wkt --repair", "--help", "--version",
                "union @/good.wkt --grid 0.125"],
            1: ["triangulate @/good.wkt @/bowtie.wkt", "triangulate @/huge.wkt",
                "union @/huge.wkt @/good.wkt", "triangulate @/good.wkt --only nobody",
                "union @/bowtie.wkt"],
            2: ["union @/good.wkt --grid 0.1", "union @/good.wkt --grid 1e-10", "", "triangulate",
                "triangulate @/good.wkt --repair --fill nowhere", "cut @/good.wkt",
                "triangulate @/good.wkt --fill non-zero", "triangulate @/missing.wkt @/good.wkt",
                "triangulate @/broken.geojson", "triangulate @/empty.geojson",
                "triangulate @/deep.json", "triangulate @/good.wkt -o @/out.png",
                "triangulate @/good.wkt -o @/good.wkt", "subtract @/good.wkt",
                "triangulate @/good.wkt -o @/no/such/folder.svg",
                "subtract @/good.wkt @/missing.wkt"]}
        for status, lines in expected.items():
            for arguments in lines:
                with self.subTest(arguments):
                    done, text = self.run_tool(arguments)
                    self.assertEqual(done, status, text)
        self.assertEqual(self.run_tool("union @/bowtie.wkt --repair", WITHOUT_GEOS)[0], 0)
        self.assertEqual(self.path("good.wkt").read_text(), good)

    def test_names_what_it_refuses_and_what_is_lost_and_goes_on(self):
        ring = "[[0,0],[1,0],[0,1],[0,0]]"
        knot = "[[0,0],[2,2],[2,0],[0,2],[0,0]]"
        feature = '{"type":"Feature","properties":{"name":"%s"},"geometry":{"type":"%s","coordinates":%s}}'
        self.write(mixed_geojson='{"type":"FeatureCollection","features":[%s]}' % ",".join([
            feature % ("knot", "MultiPolygon", f"[[{ring}],[{knot}]]"),
            '{"type":"Feature","properties":{},"geometry":null}',
            '{"type":"Feature","id":7,"properties":null,"geometry":{"type":"Point","coordinates":[1,2]}}',
            feature % ("open", "Polygon", "[[[0,0],[1,0],[1,1]]]"),
            feature % ("last", "Polygon", "[[[5,0],[9,0],[9,4],[5,4],[5,0]]]")]),
            mixed_wkt="POLYGON ((0 0, 1 0, 2 0, 0 0))\n\nPOLYGON EMPTY\n"
            "POLYGON ((0 0, 1 0, nan 1, 0 0))\nPOLYGON ((0 5, 3 5, 3 8, 0 8, 0 5))\n"
            "POLYGON ((0 0, 1 0\nPOLYGON ((9 9, 8 9, 8 8, 9 9))\n"
            "POLYGON ((0 0, 1e-7 0, 0 1e-7, 0 0))\n")
        named = ["mixed.geojson: feature 1 (knot), polygon 2: not usable: Self-intersection at (1 1); "
                 "lost: a polygon of area 0\n",
                 "mixed.geojson: feature 2: no geometry; lost: nothing\n",
                 "mixed.geojson: feature 3 (7): a Point is no polygon; lost: nothing\n",
                 "mixed.geojson: feature 4 (open): ",
                 "mixed.wkt: feature 1: no area on the grid; lost: a polygon of area 0\n",
                 "mixed.wkt: feature 2: a Polygon that is empty; lost: nothing\n",
                 "mixed.wkt: feature 3: not usable: a coordinate is not finite or too large; "
                 "lost: a polygon of unknown area\n", "mixed.wkt: feature 5: "]
        for command in ("triangulate", "union"):
            status, text = self.run_tool(f"{command} @/mixed.geojson @/mixed.wkt -o @/out.geojson")
            self.assertEqual(status, 1)
            for line in named:
                self.assertIn(line, text)
            self.assertAlmostEqual(self.area("out.geojson"), 0.5 + 16 + 9 + 0.5, 4)
            # Each polygon has a grid of its own, a union has one for all.
            lost = "feature 7: no area on the grid; lost: a polygon of area 5e-15"
            self.assertEqual(lost in text, command == "union")
        text = self.run_tool("triangulate --repair @/mixed.geojson")[1]
        self.assertIn("mixed.geojson: 1 invalid polygon repaired", text)
        self.assertEqual(self.cell(text, POLYGONS), "3")

    def test_loses_nothing_by_an_unusable_hole_in_silence(self):
        """A hole without area is left out; where contours overlap the polygon is refused."""
        hole, polygon = "lost: a hole of area", "lost: a polygon of area"
        cases = [  # hole, what is lost, area in, area, area repaired
            ("10 10, 20 20, 30 30, 10 10", hole, 1600, 1600, 1600),
            ("10 10, 10.0000001 10, 10.0000001 10.0000001, 10 10", hole, 1600, 1600, 1600),
            ("10 10, 20 10, 20 20, 30 30, 20 20, 10 20, 10 10", "", 1500, 1500, 1500),
            ("10 10, 20 20, 20 10, 10 20, 10 10", polygon, 1600, 0, 1550),
            ("0 0, 40 0, 40 40, 0 40, 0 0", polygon, 0, 0, 0),
            ("50 10, 60 10, 60 20, 50 10", polygon, 1550, 0, 1650),
            ("30 10, 60 10, 60 20, 30 20, 30 10", polygon, 1300, 0, 1700),
            ("0 10, 10 10, 10 20, 0 20, 0 10", "", 1500, 1500, 1500),
            # What one overlap adds to the area the other takes away.
            ("10 10, 20 20, 20 10, 10 20, 10 10), (50 10, 55 10, 55 15, 50 15, 50 10", polygon, 1575,
             0, 1575),
            # As many holes go in as come out.
            ("5 5, 6 6, 7 7, 5 5), (10 10, 15 15, 20 10, 20 20, 15 15, 10 20, 10 10", hole, 1550,
             1550, 1550)]
        self.write(block_wkt="POLYGON ((-9 -9, 99 -9, 99 99, -9 99, -9 -9))",
                   corner_wkt="POLYGON ((0 40, 0 30, 10 30, 10 40, 0 40))")
        for rings, lost, area_in, area, repaired in cases:
            self.write(p_wkt=f"POLYGON ((0 0, 40 0, 40 40, 0 40, 0 0), ({rings}))")
            for program in (TOOL, WITHOUT_GEOS):
                for arguments, expected in [
                        ("triangulate @/p.wkt", area), ("union @/p.wkt", area),
                        ("intersect @/p.wkt @/block.wkt", area),
                        ("xor @/p.wkt @/corner.wkt", abs(area - 100)),
                        ("subtract @/p.wkt @/corner.wkt", max(area - 100, 0)),
                        ("union @/p.wkt --repair", repaired)]:
                    with self.subTest(rings=rings, arguments=arguments, program=program):
                        status, text = self.run_tool(arguments + " -o @/out.geojson", program)
                        self.assertAlmostEqual(self.area("out.geojson"), expected, 3)
                        self.assertEqual(status, 1 if "; lost: " in text else 0)
                        if "--repair" not in arguments:
                            self.assertEqual("; lost: " in text, lost != "")
                            self.assertIn(lost, text)
                        if arguments.startswith("triangulate"):
                            self.assertAlmostEqual(float(self.cell(text, AREA_IN)), area_in, 3)

    def test_loses_nothing_by_its_grid(self):
        cases = [("POLYGON ((8.001 50, 8.0005 50.0009, 7.9995 50.0009, 7.999 50, 7.9995 49.9991, "
                  "8.0005 49.9991, 8.001 50))", 2.7e-6),
                 # The grid brings the last corner behind the first edge.
                 ("POLYGON ((-174.49914499144992 -4.690310602754252, -174.51354513545135 "
                  "-4.6768019845951869, -174.52794527945281 -4.6666705209758987, -174.53874538745387 "
                  "-4.6649819437060103, -174.54234542345424 -4.6599162118963591, -174.53874538745387 "
                  "-4.6565390573565963, -174.52434524345244 -4.6649819437060103, -174.50274502745026 "
                  "-4.6869334482144893, -174.49914499144992 -4.690310602754252))", 0.000127657718)]
        for wkt, area in cases:
            self.write(p_wkt=wkt)
            for command in ("triangulate", "union", "triangulate --delaunay"):
                self.run_tool(command + " @/p.wkt -o @/out.wkt")
                self.assertAlmostEqual(self.area("out.wkt") / area, 1, 4)

    def test_keeps_grid_points_and_speaks_through_pipes(self):
        self.write(frame_wkt="POLYGON ((0 0, 4 0, 4 4, 0 4, 0 0), (1 1, 2 1, 2 2, 1 2, 1 1))",
                   fine_wkt="POLYGON ((0.3 0, 4.7 0, 4.7 3, 0.3 3, 0.3 0))",
                   wide_wkt="POLYGON ((0 0, 1048575 0, 1048575 1, 0 1, 0 0))",
                   twice_wkt="POLYGON ((0 0, 4 0, 4 4, 0 4, 0 0, 2 0, 2 2, 0 2, 0 0))")
        pipe = f' -o - 2>/dev/null | "{TOOL}" '
        for arguments, area in {
                "triangulate @/frame.wkt": 15,
                f"union @/frame.wkt{pipe}triangulate -": 15,
                f"union @/frame.wkt --format wkt{pipe}xor - @/frame.wkt": 0,
                "union @/fine.wkt --grid 1": 15, "union @/wide.wkt --grid 1": 1048575,
                "triangulate @/fine.wkt --grid 2": 16, "union @/twice.wkt --repair": 12,
                "union @/twice.wkt --repair --fill non-zero": 16}.items():
            status, text = self.run_tool(arguments + " -o @/out.wkt")
            self.assertEqual((status, self.area("out.wkt")), (0, area), arguments + text)
        self.assertIn("grid: a step of 0.5\n", self.run_tool("union @/fine.wkt --grid 0.5")[1])

    def test_reads_every_shape_of_file(self):
        square = '{"type":"Polygon","coordinates":[[[0,0],[1,0],[1,1],[0,1],[0,0]]]}'
        collection = '{"type":"GeometryCollection","geometries":[%s]}'
        for name, text, area in [
                ("geometry.json", square, "1"),
                ("feature.GeoJSON", '{"type":"Feature","properties":null,"geometry":%s}' % square, "1"),
                ("deep.geojson", collection % (square + "," + collection % square), "2"),
                ("z.wkt", "SRID=4326;POLYGON Z ((0 0 5, 1 0 6, 1 1 7, 0 1 8, 0 0 5))\r\n# a remark\r\n",
                 "1"),
                ("lines.wkt", "MULTIPOLYGON (\n  ((0 0, 1 0, 1 1, 0 1, 0 0)),\n"
                 "  ((2 0, 3 0, 3 1, 2 1, 2 0))\n)\nPOLYGON\n((0 0, 1 0, 1 1, 0 1, 0 0))", "3")]:
            self.path(name).write_text(text)
            status, said = self.run_tool("triangulate @/" + name)
            self.assertEqual((status, self.cell(said, AREA_OUT)), (0, area), said)

    def test_writes_triangles_that_are_the_polygons(self):
        status, text = self.run_tool(f"triangulate {COUNTRIES} --only Brazil,Norway,Fiji "
                                     "-o @/t.geojson -o @/t.obj -o @/t.wkt")
        self.assertEqual(status, 0, text)
        for name in ("t.geojson", "t.obj", "t.wkt"):
            triangles = self.look(name)
            self.assertEqual(str(len(triangles)), self.cell(text, TRIANGLES))
            self.assertTrue(all(len(t.exterior.coords) == 4 and t.exterior.is_ccw for t in triangles))
            # Half a step of the grid along every contour is far below that.
            self.assertAlmostEqual(self.area(name), float(self.cell(text, AREA_IN)), 2)
            self.assertAlmostEqual(self.area(name), float(self.cell(text, AREA_OUT)), 4)
        groups = self.path("t.obj").read_text().count("\ng ")
        self.assertEqual(str(groups), self.cell(text, POLYGONS))
        self.assertEqual(len(self.path("t.wkt").read_text().splitlines()), groups)
        self.assertIn('"name":"Norway"', self.path("t.geojson").read_text())

    def test_draws_the_picture_upright(self):
        """From the lower left corner the contour goes right, then up: a negative y."""
        self.write(house_wkt="POLYGON ((0 0, 10 0, 10 6, 5 9, 0 6, 0 0))")
        for command in ("triangulate", "union --triangles"):
            self.assertEqual(self.run_tool(command + " @/house.wkt -o @/house.svg")[0], 0)
            svg = self.path("house.svg").read_text()
            diagonals = re.search(r'<path class="diagonal[^>]*/>', svg)[0]
            self.assertEqual(diagonals.count("M"), 2)
            self.assertRegex(svg, r'<path class="contour[^>]* d="M\S+ \S+l\d+ 0 0-\d')
            self.assertTrue(svg.endswith("</svg>\n"))

    def test_combines_with_holes_on_both_sides(self):
        # A frame with a block inside, a block apart, and a bridge between them that
        # shares an edge with each; a cover of the left of it all, but for a window.
        self.write(frame_wkt="POLYGON ((0 0, 10 0, 10 10, 0 10, 0 0), (2 2, 2 8, 8 8, 8 2, 2 2))\n"
                   "POLYGON ((3 3, 4 3, 4 4, 3 4, 3 3))\nPOLYGON ((20 0, 30 0, 30 10, 20 10, 20 0))\n"
                   "POLYGON ((10 4, 20 4, 20 6, 10 6, 10 4))\n",
                   window_wkt="POLYGON ((-1 -1, 12 -1, 12 12, -1 12, -1 -1), "
                   "(1 1, 9 1, 9 9, 1 9, 1 1))\n")
        for arguments, polygons, holes, area in [
                ("union @/frame.wkt", 2, 1, 185), ("union @/window.wkt", 1, 1, 105),
                ("union @/frame.wkt @/window.wkt", 2, 1, 250),
                ("subtract @/frame.wkt @/window.wkt", 3, 1, 145),
                ("subtract @/window.wkt @/frame.wkt", 1, 0, 65),
                ("subtract @/frame.wkt @/frame.wkt", 0, 0, 0),
                ("intersect @/frame.wkt @/window.wkt @/frame.wkt", 1, 1, 40),
                ("xor @/window.wkt @/frame.wkt", 4, 1, 210),
                ("xor @/frame.wkt @/window.wkt @/frame.wkt", 1, 1, 105)]:
            with self.subTest(arguments):
                status, text = self.run_tool(
                    arguments + " -o @/region.geojson -o @/region.wkt -o @/region.obj")
                self.assertEqual(status, 0, text)
                for name in ("region.geojson", "region.wkt"):
                    seen = self.look(name)
                    self.assertEqual((len(seen), sum(len(p.interiors) for p in seen), self.area(name)),
                                     (polygons, holes, area))
                self.run_tool(arguments + " --triangles -o @/cut.geojson")
                for name in ("region.obj", "cut.geojson"):
                    self.assertAlmostEqual(self.area(name), area, 9)

    def test_makes_one_outline_of_neighbours(self):
        only = COUNTRIES + " --only Bolivia,Paraguay,Uruguay,Zambia"
        apart = float(self.cell(self.run_tool("triangulate " + only)[1], AREA_OUT))
        for program in (TOOL, WITHOUT_GEOS):
            self.assertEqual(self.run_tool(f"union {only} -o @/region.geojson", program)[0], 0)
            region = self.look("region.geojson")
            self.assertEqual(len(region), 3)  # Bolivia and Paraguay are one
            self.assertEqual(sum(len(p.interiors) for p in region), 0)
            self.assertAlmostEqual(self.area("region.geojson"), apart, 1)


unittest.main()
