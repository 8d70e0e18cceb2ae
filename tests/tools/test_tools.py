"""What the man page promises of the host program, from the outside: exit statuses, refusals,
files. GEOS, by way of shapely, judges what is written."""

import json, os, pathlib, random, re, shlex, subprocess, tempfile, unittest

from shapely import wkt
from shapely.geometry import MultiPolygon, Polygon, box, shape
from shapely.ops import unary_union

WITH_GEOS, WITHOUT_GEOS = os.environ["ZELVAN_TOOL"], os.environ["ZELVAN_TOOL_WITHOUT_GEOS"]
COUNTRIES = os.environ["ZELVAN_DATA"] + "/countries-50m.geojson"


def write(name, text):
    pathlib.Path(name).write_text(text)


def ring(text):
    return "POLYGON ((0 0, 40 0, 40 40, 0 40, 0 0), (%s))" % text


def read(name):
    """A list of polygons for each line, feature or group."""
    text = pathlib.Path(name).read_text()
    if name.endswith(".wkt"):
        found = [wkt.loads(line) for line in text.splitlines()]
    elif name.endswith(".geojson"):
        found = [shape(feature["geometry"]) for feature in json.loads(text)["features"]]
    else:
        lines = [line.split() for line in text.splitlines()]
        vertices = [(float(line[1]), float(line[2])) for line in lines if line[0] == "v"]
        groups = re.split("^g .*$", text, flags=re.M)[1:]
        found = [MultiPolygon([Polygon([vertices[int(i) - 1] for i in face.split()[1:]])
                               for face in re.findall("^f .*$", group, re.M)]) for group in groups]
    return [[part for part in one.geoms] for one in found]


def seen(name):
    """Number of polygons, of holes, area; triangles have to be counter-clockwise."""
    parts = [part for one in read(name) for part in one]
    assert all(part.is_valid and part.exterior.is_ccw for part in parts), name
    return len(parts), sum(len(part.interiors) for part in parts), sum(part.area for part in parts)


class Tool(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.addCleanup(os.chdir, os.getcwd())
        os.chdir(folder.name)
        write("good.wkt", "POLYGON ((0 0, 4 0, 4 4, 0 4, 0 0))")
        write("bowtie.wkt", "POLYGON ((0 0, 2 2, 2 0, 0 2, 0 0))")

    def run_tool(self, arguments, status=0, program=WITH_GEOS, stdin=""):
        done = subprocess.run([program, *shlex.split(arguments)], input=stdin, text=True,
                              capture_output=True)
        self.assertEqual(done.returncode, status, (arguments, done.stdout, done.stderr))
        return done.stdout + done.stderr

    def test_the_exit_status_tells_what_became_of_the_input(self):
        write("huge.wkt", "POLYGON ((0 0, 1 0, 0 1e300, 0 0))")
        write("point.wkt", "POINT (1 2)")
        write("behind.wkt", "POLYGON ((0 0, 1 0, 0 1, 0 0)) x")
        write("broken.geojson", '{"type":"FeatureCollection","features":[')
        write("empty.wkt", "")
        write("deep.wkt", "GEOMETRYCOLLECTION (" * 100000)
        write("quoted.json", json.dumps({"type": "Feature", "id": '"' + "[" * 200, "geometry": {
            "type": "Polygon", "coordinates": [[[0, 0], [1, 0], [0, 1], [0, 0]]]}}))
        cases = {
            0: ["triangulate good.wkt", "triangulate bowtie.wkt --repair", "union quoted.json",
                "union good.wkt --grid 0.125", "--help", "union --help", "--version"],
            1: ["triangulate good.wkt bowtie.wkt", "triangulate huge.wkt", "union huge.wkt good.wkt",
                "union good.wkt huge.wkt", "union bowtie.wkt", "union point.wkt", "union behind.wkt",
                "triangulate point.wkt", "triangulate good.wkt --only nobody"],
            2: ["union good.wkt --grid 0.1", "union good.wkt --grid 1e-10",
                "union good.wkt --repair --fill nowhere", "union good.wkt --fill non-zero",
                "triangulate missing.wkt good.wkt", "triangulate broken.geojson", "union empty.wkt",
                "union -", "union deep.wkt", "union good.wkt -o out.png",
                "union good.wkt -o good.wkt", "union good.wkt -o no/such/folder.svg", "triangulate",
                "subtract good.wkt", "subtract good.wkt missing.wkt -o out.wkt", "", "cut good.wkt"]}
        for status, commands in cases.items():
            for arguments in commands:
                self.run_tool(arguments, status)
        self.run_tool("union bowtie.wkt --repair", program=WITHOUT_GEOS)
        self.assertIn("4 4", pathlib.Path("good.wkt").read_text())
        self.assertFalse(os.path.exists("out.wkt"), "half a combination is none")

    def test_it_names_what_it_refuses_with_what_is_lost_and_goes_on(self):
        polygon = lambda *points: {"type": "Polygon", "coordinates": [points]}
        feature = lambda geometry, **more: {"type": "Feature", "geometry": geometry, **more}
        corner, knot = [[0, 0], [1, 0], [0, 1], [0, 0]], [[0, 0], [2, 2], [2, 0], [0, 2], [0, 0]]
        write("mixed.geojson", json.dumps({"type": "FeatureCollection", "features": [
            feature({"type": "MultiPolygon", "coordinates": [[corner], [knot]]},
                    properties={"name": "knot"}),
            feature(None, properties={}), feature({"type": "Point", "coordinates": [1, 2]}, id=7),
            feature({"type": "MultiPolygon", "coordinates": []}),
            feature(polygon([0, 0], [1, 0], [1, 1]), properties={"name": "open"}),
            feature(polygon([5, 0], [9, 0], [9, 4], [5, 4], [5, 0]))]}))
        write("mixed.wkt",
              "POLYGON ((0 0, 1 0, 2 0, 0 0))\n\nPOLYGON EMPTY\nPOLYGON ((0 0, 1 0, nan 1, 0 0))\n"
              "POLYGON ((0 5, 3 5, 3 8, 0 8, 0 5))\nPOLYGON ((0 0, 1 0\n"
              "POLYGON ((9 9, 8 9, 8 8, 9 9))\nPOLYGON ((0 0, 1e-9 0, 0 1e-9, 0 0))\n")
        for command in ("triangulate", "union"):
            text = self.run_tool(command + " mixed.geojson mixed.wkt -o out.geojson", 1)
            for line in (
                    "geojson: feature 1 (knot), polygon 2: not usable: Self-intersection at (1 1); "
                    "lost: a polygon of area 0\n",
                    "geojson: feature 2: no geometry; lost: nothing\n",
                    "geojson: feature 3 (7): a Point is no polygon; lost: nothing\n",
                    "geojson: feature 4: a MultiPolygon that is empty; lost: nothing\n",
                    "geojson: feature 5 (open): a ring is not closed",
                    "wkt: feature 1: no area on the grid; lost: a polygon of area 0\n",
                    "wkt: feature 2: a Polygon that is empty; lost: nothing\n",
                    "wkt: feature 3: not usable: a coordinate is not finite or too large; "
                    "lost: a polygon of unknown area\n",
                    "wkt: feature 5: "):
                self.assertIn("mixed." + line, text)
            self.assertAlmostEqual(seen("out.geojson")[2], 0.5 + 16 + 9 + 0.5, 4)
            # Each polygon has a grid of its own, a union has one for all.
            lost = "feature 7: no area on the grid; lost: a polygon of area 5e-19" in text
            self.assertEqual(lost, command == "union")
            self.assertRegex(text, "mixed.wkt +%d " % (3 if command == "triangulate" else 5))
        text = self.run_tool("triangulate --repair mixed.geojson good.wkt", 1)
        self.assertIn("mixed.geojson: 1 invalid polygon repaired\n", text)
        self.assertIn("good.wkt: 0 invalid polygons repaired\n", text)

    def test_the_table_and_the_grids(self):
        write("large.wkt", "POLYGON ((0 0, 4e6 0, 4e6 4e6, 0 4e6, 0 0))")
        text = self.run_tool("triangulate good.wkt large.wkt")
        self.assertRegex(text, r"^grids: steps of 3.7\S*e-09 to 0.00195\d*\n")
        self.assertRegex(text, r"good.wkt +1 +4 +2 +16 +16 +\d")
        self.assertRegex(text, r"total +2 +8 +4 +1.6e\+13 +1.6e\+13 +\d")
        text = self.run_tool("union good.wkt --grid 0.5")
        self.assertRegex(text, r"^grid: a step of 0.5\n.*\ngood.wkt +1 +4 +0 +16 +\d")

    def test_an_unusable_hole_is_not_lost_in_silence(self):
        """One without area is left out and the polygon stays; where contours overlap the polygon
        is refused, and mended by the even-odd rule."""
        hole, whole = "hole 1 left out: no area on the grid; lost: a hole", "lost: a polygon of area"
        cases = [  # what is named, the area that goes in, that comes out, and repaired
            ("10 10, 20 20, 30 30, 10 10", hole, 1600, 1600, 1600),
            ("10 10, 10 10, 10 10, 10 10", hole, 1600, 1600, 1600),
            ("10 10, 10.00000001 10, 10.00000001 10.00000001, 10 10", hole, 1600, 1600, 1600),
            ("10 10, 20 10, 20 20, 30 30, 20 20, 10 20, 10 10", "", 1500, 1500, 1500),
            ("0 10, 10 10, 10 20, 0 20, 0 10", "", 1500, 1500, 1500),
            ("10 10, 20 20, 20 10, 10 20, 10 10", whole, 1600, 0, 1550),
            ("20 20, 20 10, 10 20, 10 10, 20 20", whole, 1600, 0, 1550),
            ("0 0, 40 0, 40 40, 0 40, 0 0", whole, 0, 0, 0),
            ("-10 -10, 50 -10, 50 50, -10 50, -10 -10", whole, 2000, 0, 2000),
            ("30 10, 60 10, 60 20, 30 20, 30 10", whole, 1300, 0, 1700),
            # What one overlap adds to the area the other takes away; as many go in as come out.
            ("10 10, 20 20, 20 10, 10 20, 10 10), (50 10, 55 10, 55 15, 50 15, 50 10", whole, 1575,
             0, 1575),
            ("5 5, 6 6, 7 7, 5 5), (10 10, 15 15, 20 10, 20 20, 15 15, 10 20, 10 10", "hole 1 left",
             1550, 1550, 1550)]
        write("block.wkt", "POLYGON ((-99 -99, 99 -99, 99 99, -99 99, -99 -99))")
        write("corner.wkt", "POLYGON ((0 40, 0 30, 10 30, 10 40, 0 40))")
        for text, lost, area_in, area, repaired in cases:
            write("p.wkt", ring(text))
            for program in (WITH_GEOS, WITHOUT_GEOS):
                for arguments, expected in (
                        ("triangulate p.wkt", area), ("union p.wkt", area),
                        ("intersect p.wkt block.wkt", area),
                        ("xor p.wkt corner.wkt", abs(area - 100)),
                        ("subtract p.wkt corner.wkt", max(area - 100, 0))):
                    said = self.run_tool(arguments + " -o o.geojson", 1 if lost else 0, program)
                    self.assertIn(lost, said)
                    self.assertEqual("; lost: " in said, lost != "")
                    self.assertRegex(said, r"p.wkt .* %d " % area_in)
                    self.assertAlmostEqual(seen("o.geojson")[2], expected, 3, (text, arguments))
            for command in ("triangulate", "union"):
                self.run_tool(command + " p.wkt --repair -o o.geojson", 1 if "left" in lost or
                              not repaired else 0)
                self.assertAlmostEqual(seen("o.geojson")[2], repaired, 3, (text, command))

    def test_whole_numbers_stay_a_given_grid_decides_and_pipes_join(self):
        write("frame.wkt", "POLYGON ((0 0, 4 0, 4 4, 0 4, 0 0), (1 1, 2 1, 2 2, 1 2, 1 1))")
        write("fine.wkt", "POLYGON ((0.3 0, 4.7 0, 4.7 3, 0.3 3, 0.3 0))")
        write("wide.wkt", "POLYGON ((0 0, 1048575 0, 1048575 1, 0 1, 0 0))")
        write("twice.wkt", "POLYGON ((0 0, 4 0, 4 4, 0 4, 0 0, 2 0, 2 2, 0 2, 0 0))")
        for arguments, area in (
                ("triangulate frame.wkt", 15), ("union fine.wkt --grid 1", 15),
                ("union wide.wkt --grid 1", 1048575), ("triangulate fine.wkt --grid 2", 16),
                ("union twice.wkt --repair", 12), ("union twice.wkt --repair --fill non-zero", 16)):
            self.run_tool(arguments + " -o out.wkt")
            self.assertEqual(seen("out.wkt")[2], area, arguments)
        for form, command, area in (("", "triangulate -", 15), (" --format wkt", "xor - good.wkt", 1)):
            piped = subprocess.run([WITH_GEOS, *("union frame.wkt -o -" + form).split()], text=True,
                                   capture_output=True)
            self.assertIn("grid: a step", piped.stderr)
            self.run_tool(command + " -o out.wkt", stdin=piped.stdout)
            self.assertEqual(seen("out.wkt")[2], area)
        self.assertRegex(self.run_tool("union frame.wkt -o - --format obj"), r"\nf \d")

    def test_every_shape_of_file_is_read(self):
        square = {"type": "Polygon", "coordinates": [[[0, 0], [1, 0], [1, 1], [0, 1], [0, 0]]]}
        collection = {"type": "GeometryCollection", "geometries": [square]}
        plain = "(0 0, 1 0, 1 1, 0 1, 0 0)"
        for name, text, area in (
                ("geometry.json", json.dumps(square), 1),
                ("feature.GeoJSON", json.dumps({"type": "Feature", "geometry": square}), 1),
                ("deep.geojson", json.dumps({"type": "GeometryCollection",
                                             "geometries": [square, collection]}), 2),
                ("z.wkt", "SRID=4326;POLYGON Z ((0 0 5, 1 0 6, 1 1 7, 0 0 5))\r\n# a (remark\r\n", .5),
                ("lines.wkt", "MULTIPOLYGON (\n  (%s),\n (%s))\nPOLYGON\n(%s)" % (3 * (plain,)), 3)):
            write(name, text)
            self.assertRegex(self.run_tool("triangulate " + name), r"%s .* %s +\d\S+ s" % (name, area))

    def test_the_triangles_are_the_polygons(self):
        for options in ("", " --delaunay"):
            text = self.run_tool("triangulate %s --only Brazil,Norway,Fiji -o t.geojson -o t.obj "
                                 "-o t.wkt%s" % (COUNTRIES, options))
            polygons, triangles, area_in, area = re.findall(
                r"(\d+) +\d+ +(\d+) +(\S+) +(\S+) +\S+ s$", text, re.M)[-1]
            for name in ("t.geojson", "t.obj", "t.wkt"):
                groups = read(name)
                self.assertEqual(len(groups), int(polygons))
                self.assertEqual(seen(name)[0], int(triangles))
                self.assertTrue(all(len(t.exterior.coords) == 4 for g in groups for t in g))
                self.assertAlmostEqual(seen(name)[2], float(area), 5)
                self.assertAlmostEqual(seen(name)[2], float(area_in), 3)
        self.assertIn('"name":"Norway"', pathlib.Path("t.geojson").read_text())
        self.assertRegex(pathlib.Path("t.obj").read_text(), r"(?m)^g Norway_\d+_\d+$")

    def test_the_picture_is_upright(self):
        """From the lower left corner the contour goes right, then up: a step with a negative y."""
        write("house.geojson", json.dumps({"type": "Feature", "id": "A & B", "geometry": {
            "type": "Polygon", "coordinates": [[[0, 0], [10, 0], [10, 6], [5, 9], [0, 6], [0, 0]]]}}))
        for command in ("triangulate", "union --triangles"):
            self.run_tool(command + " house.geojson -o house.svg")
            svg = pathlib.Path("house.svg").read_text()
            self.assertRegex(svg, r'<path class="contour" d="M\d+ \d+l[1-9]\d* 0 0-\d')
            self.assertEqual(re.search('<path class="diagonal"[^>]*>', svg)[0].count("M"), 2)
            self.assertRegex(svg, r'<svg [^>]*width="16\d\d".*(?s:.*)</svg>\n\Z')
        self.run_tool("triangulate house.geojson -o house.svg -o house.obj")
        self.assertIn("<title>A &amp; B</title>", pathlib.Path("house.svg").read_text())
        self.assertIn("\ng A_&_B_1_1\n", pathlib.Path("house.obj").read_text())

    def test_operations_are_those_of_geos(self):
        for seed in range(12):
            rng = random.Random(seed)
            boxes = lambda n: unary_union([box(x, y, x + rng.randint(1, 4), y + rng.randint(1, 4))
                                           for x, y in zip(rng.choices(range(9), k=n),
                                                           rng.choices(range(9), k=n))])
            shapes = [boxes(9).difference(boxes(5)), boxes(6), boxes(4)]
            for name, one in zip("abc", shapes):
                write(name + ".wkt", one.wkt)
            a, b, c = shapes
            for arguments, expected in (
                    ("union a.wkt b.wkt c.wkt", a | b | c), ("subtract a.wkt b.wkt c.wkt", a - b - c),
                    ("intersect a.wkt b.wkt c.wkt", a & b & c), ("xor a.wkt b.wkt c.wkt", a ^ b ^ c)):
                self.run_tool(arguments + " -o o.geojson -o o.wkt -o o.obj")
                parts = getattr(expected, "geoms", [expected])
                holes = sum(len(part.interiors) for part in parts if part.area)
                for name in ("o.geojson", "o.wkt"):  # whole numbers lie on the grid
                    self.assertEqual(seen(name), (sum(part.area > 0 for part in parts), holes,
                                                  expected.area), (seed, arguments))
                self.run_tool(arguments + " --triangles -o o.wkt")
                for name in ("o.obj", "o.wkt"):
                    self.assertAlmostEqual(seen(name)[2], expected.area)

    def test_neighbours_have_one_outline(self):
        only = COUNTRIES + " --only Bolivia,Paraguay,Uruguay,Zambia"
        self.run_tool("triangulate " + only + " -o apart.wkt")
        for program in (WITH_GEOS, WITHOUT_GEOS):
            self.run_tool("union " + only + " -o region.geojson", program=program)
            polygons, holes, area = seen("region.geojson")
            self.assertEqual((polygons, holes), (3, 0))  # Bolivia and Paraguay are one
            self.assertAlmostEqual(area, seen("apart.wkt")[2], 2)


if __name__ == "__main__":
    unittest.main()
