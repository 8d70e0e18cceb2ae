"""What the man page promises of the host program, from the outside: exit statuses, refusals,
files. GEOS, by way of shapely, judges what is written."""

import json, os, pathlib, random, re, resource, shlex, shutil, subprocess, tempfile, time, unittest

from shapely import wkt
from shapely.geometry import MultiPolygon, Polygon, box, shape
from shapely.ops import unary_union

FULL, WITH_GEOS, PLAIN = (os.environ["ZELVAN_TOOL" + one] for one in ("", "_JUDGE", "_PLAIN"))
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

    def run_tool(self, arguments, status=0, program=WITH_GEOS, stdin="", **more):
        done = subprocess.run([program, *shlex.split(arguments)], input=stdin, text=True,
                              stderr=subprocess.PIPE, **{"stdout": subprocess.PIPE, **more})
        self.assertEqual(done.returncode, status, (arguments, done.stdout, done.stderr))
        return (done.stdout or "") + done.stderr

    def test_the_exit_status_tells_what_became_of_the_input(self):
        write("huge.wkt", "POLYGON ((%s 0, %s 0, 0 1, %s 0))" % (-2 ** 499, 2 ** 499, -2 ** 499))
        write("point.wkt", "POINT (1 2)")
        write("behind.wkt", "POLYGON ((0 0, 1 0, 0 1, 0 0)) x")
        write("broken.geojson", '{"type":"FeatureCollection","features":[')
        write("empty.wkt", "")
        write("deep.wkt", "POINT (0 0" + ")" * 99999 + "\n" + "GEOMETRYCOLLECTION (" * 99999)
        write("quoted.json", json.dumps({"type": "Feature", "id": '"' + "[" * 200, "geometry": {
            "type": "Polygon", "coordinates": [[[0, 0], [1, 0], [0, 1], [0, 0]]]}}))
        cases = {
            0: ["triangulate good.wkt", "triangulate bowtie.wkt --repair", "union quoted.json",
                "union good.wkt --grid 0.125", "--help", "help union", "--version",
                "union bowtie.wkt --repair --fill positive"],
            1: ["triangulate good.wkt bowtie.wkt", "triangulate huge.wkt", "union huge.wkt good.wkt",
                "union good.wkt huge.wkt", "union bowtie.wkt", "union good.wkt --grid 8", "union point.wkt", "union behind.wkt",
                "union deep.wkt",
                "triangulate point.wkt", "triangulate good.wkt --only nobody"],
            2: ["union good.wkt --grid 0.1", "union good.wkt --grid 1e-10",
                "union good.wkt --repair --fill nowhere", "union good.wkt --fill non-zero",
                "triangulate missing.wkt good.wkt", "triangulate broken.geojson", "union empty.wkt",
                "union -", "union good.wkt -o out.png",
                "union good.wkt -o good.wkt", "union good.wkt -o no/such/folder.svg", "triangulate",
                "subtract good.wkt", "subtract good.wkt missing.wkt -o out.wkt", "", "cut good.wkt"]}
        for status, commands in cases.items():
            for arguments in commands:
                self.run_tool(arguments, status)
        self.run_tool("union bowtie.wkt --repair", program=PLAIN)
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
                    "geojson: feature 1 (knot), polygon 2: not usable: Self-intersection at (1 1) "
                    "(--repair mends it); lost: a polygon of area 2\n",
                    "geojson: feature 2: no geometry; lost: nothing\n",
                    "geojson: feature 3 (7): a Point is no polygon; lost: nothing\n",
                    "geojson: feature 4: a MultiPolygon that is empty; lost: nothing\n",
                    "geojson: feature 5 (open): ring 1 is not closed",
                    "wkt: feature 1: no area on the grid; lost: a polygon of area 0\n",
                    "wkt: feature 2: a Polygon that is empty; lost: nothing\n",
                    "wkt: feature 3: not usable: a coordinate is not finite or too large; "
                    "lost: a polygon of unknown area\n",
                    "wkt: feature 5, line 6: a number is missing; lost: what it holds\n"):
                self.assertIn("mixed." + line, text)
            self.assertAlmostEqual(seen("out.geojson")[2], 0.5 + 16 + 9 + 0.5, 4)
            # Each polygon has a grid of its own, a union has one for all.
            lost = "feature 7: no area on the grid; lost: a polygon of area 5e-19" in text
            self.assertEqual(lost, command == "union")
            self.assertRegex(text, "mixed.wkt +%d " % (3 if command == "triangulate" else 5))
        self.assertIn("no area on the grid; lost: a polygon of area 2\n",
                      self.run_tool("union bowtie.wkt --grid 64", 1))
        text = self.run_tool("triangulate --repair mixed.geojson good.wkt", 1)
        self.assertIn("mixed.geojson: 1 invalid polygon repaired\n", text)
        self.assertIn("good.wkt: 0 invalid polygons repaired\n", text)

    def test_every_complaint_names_file_and_place(self):
        corners = "(0 0, 4 0, 4 4, 0 4, 0 0)"
        square = [[0, 0], [4, 0], [4, 4], [0, 4], [0, 0]]
        polygons = lambda *bad: json.dumps({"type": "MultiPolygon", "coordinates": [
            *([square, [[1, 1], point, [2, 2], [1, 1]]] for point in bad), [square]]})
        ring = "polygon 1: ring 2, point 2: "
        cases = [  # file, text, what is said of it; the square is always read, unless status is 2
            ("n.json", polygons([None, 1]), 1, ring + "a coordinate is null; lost: a polygon of"),
            ("s.json", polygons(["1", 1]), 1, ring + "a coordinate is no number"),
            ("m.json", polygons([1]), 1, ring + "a coordinate is missing"),
            ("o.json", polygons(5), 1, ring + "it is no list"),
            ("t.json", '{"type":"Topology"}', 2, "is TopoJSON: convert it to GeoJSON first"),
            ("e.json", '{"type":\n', 2, "is no JSON: line 2, column 1: it ends too early"),
            ("j.json", '{"a":\n  nul}', 2, "is no JSON: line 2, column 6: this is not what"),
            ("l.json", '{"a": 1e999}', 2, "holds a number beyond all that a double can be"),
            ("u.wkt", "\ufeffPOLYGON " + corners, 2, "is UTF-16, and UTF-8 alone is read"),
            ("x.wkt", "x\ny (\nz\nPOLYGON\n(%s)" % corners, 1, "lines 1 to 3: no geometry that is"),
            ("p.wkt", "POLYGON ((0 0, 1\n0, 2\nPOLYGON (%s)" % corners, 1,
             "feature 1, lines 1 to 2: a number is missing; lost: what it holds"),
            ("c.wkt", "MULTIPOLYGON ((%s), ((1 1, 1 2))) # ok" % corners, 1, "polygon 2: ring 1 has"),
            ("b.wkt", "POLYGON (%s) POINT (0 0)" % corners, 1, "there is text behind the geometry"),
            ("h.wkt", "POLYGON ((9 9, 1e999 9, 9 8, 9 9))\nPOLYGON (%s)" % corners, 1,
             "feature 1: not usable: a coordinate is not finite or too large"),
            ("v.wkt", "\ufeffid;geom\n7;SRID=4326;POLYGON (%s)" % corners, 0,
             "v.wkt: passed over: SRID=4326, a byte order mark, the heading on line 1\n"),
            ("g.wkt", "srid=1;POLYGON (%s);7\n# a (remark" % corners, 0, "passed over: srid=1\n")]
        for name, text, status, words in cases:
            write(name, text)
            if "UTF-16" in words:
                pathlib.Path(name).write_text(text, encoding="utf-16")
            said = self.run_tool("triangulate %s -o out.geojson" % name, status)
            self.assertRegex(said, "(?m)^%s:? .*%s" % (name, re.escape(words.split(": ", 1)[-1]
                             if words.startswith(name) else words)))
            if status < 2:
                self.assertEqual(seen("out.geojson")[2], 16, name)
        self.assertIn('"name":"7"', pathlib.Path("out.geojson").read_text())
        os.mkdir("folder.wkt")
        for arguments, words in (
                ("union folder.wkt", "folder.wkt: is a directory"), ("", "a command is missing"),
                ("frobnicate good.wkt", "there is no command frobnicate, but triangulate, union"),
                ("help frobnicate", "there is no command frobnicate"),
                ("union good.wkt --fill odd", "a rule is even-odd, non-zero, positive or negative"),
                ("union good.wkt -o out", "out: unknown extension"),
                ("union good.wkt -o no/such.wkt", "no/such.wkt: cannot be written")):
            self.assertIn(words, self.run_tool(arguments, 2))
        with open("/dev/full", "w") as full:
            for arguments in ("union good.wkt", "union good.wkt -o -"):
                self.assertIn("standard output: cannot be written",
                              self.run_tool(arguments, 2, stdout=full))
        for arguments in ("--help", "help union", "help triangulate"):
            self.assertNotRegex(self.run_tool(arguments), "TEXT|SUBCOMMAND|->|REQUIRED|x\\)")

    def test_geojson_is_read_as_at_every_door(self):
        table = pathlib.Path(__file__).parents[1] / "doors.json"
        for case in json.loads(table.read_text())["cases"]:
            write("d.json", json.dumps(case["document"]))
            place = [part + " %d" % (number + 1) for part, number in case.get("refused", {}).items()
                     if (part, number) != ("polygon", 0)]  # said where there are several
            words = ["feature %d: a %s is no polygon" % (feature + 1, kind)
                     for feature, kind in case.get("leftOut", [])]
            for repair in (False, True):
                invalid = not repair and "invalid" in case
                said = self.run_tool("union d.json -o o.wkt" + repair * " --repair",
                                     1 if invalid or place or words else 0)
                for one in words + invalid * ["(--repair mends it)"]:
                    self.assertIn(one, said, case["name"])
                self.assertRegex(said, ".*".join(place or ["grid"]))
                if not place:
                    self.assertEqual(seen("o.wkt")[2], 0 if invalid else case["area"], case["name"])

    def test_memory_that_runs_out_is_a_message_and_a_status(self):
        limit = lambda kilobytes: lambda: resource.setrlimit(resource.RLIMIT_AS,
                                                             2 * (kilobytes * 1024,))
        try:
            self.run_tool("--version", preexec_fn=limit(200000))
        except AssertionError:
            self.skipTest("a sanitizer takes more than that at once")
        statuses = []
        for kilobytes in range(14000, 64000, 5000):
            done = subprocess.run([WITH_GEOS, "union", COUNTRIES], capture_output=True, text=True,
                                  preexec_fn=limit(kilobytes))
            if done.returncode == 127:  # the program does not even load
                continue
            self.assertIn(done.returncode, (0, 1, 2), done.stderr)
            self.assertEqual(done.returncode == 2, "zelvan: out of memory\n" in done.stderr)
            statuses.append(done.returncode)
        self.assertIn(2, statuses)
        self.assertNotEqual(statuses[-1], 2)

    def test_names_may_have_commas(self):
        names = ["Congo", "Congo, Dem. Rep.", "Chad", "a,b"]
        write("names.json", json.dumps({"type": "FeatureCollection", "features": [
            {"type": "Feature", "properties": {"name": name}, "geometry": None if name == "Chad" else
             {"type": "Polygon", "coordinates": [[[0, 0], [2 ** i, 0], [2 ** i, 1], [0, 1], [0, 0]]]}}
            for i, name in enumerate(names)]}))
        for arguments, status, area, words in (
                ("--only 'Congo, Dem. Rep.'", 0, 2, ""), ("--only Congo", 0, 1, ""),
                ("--only 'a,b,Congo, Dem. Rep.,Congo'", 0, 11, ""),
                ("--only Congo --only a,b", 0, 9, ""), ("--only 'Congo, a,b'", 0, 9, ""),
                ("--only Congo,Chad", 1, 1, "feature 3 (Chad): no geometry"),
                ("--only 'a,b,Nowhere, Congo'", 1, 9, "no feature is called Nowhere\n")):
            said = self.run_tool("triangulate names.json -o out.wkt " + arguments, status)
            self.assertEqual(seen("out.wkt")[2], area, arguments)
            self.assertIn(words, said)
            self.assertEqual("Chad" in said, "Chad" in arguments)

    def test_what_a_step_does_to_an_input_is_said(self):
        write("parcels.wkt", "".join("POLYGON ((%d 10, %d 10, %d 40, %d 40, %d 10), (%d 20, %d 20, "
              "%d 28, %d 28, %d 20))\n" % tuple(x + d for d in (0, 12, 12, 0, 0, 4, 8, 8, 4, 4))
              for x in (500004, 500036)))
        for arguments, status, moved, words in (
                ("--grid 2", 0, 0, None), ("--grid 0.25", 0, 0, None),
                ("--grid 8", 1, 5.65685425,
                 r"4 rings changed by more than 1/1024 of the area on the grid, from 784 to \d+ in "
                 r"all; most of all feature \d, hole 1 by a step of 8, from 32 to \d+\n")):
            for command in ("union", "triangulate"):
                said = self.run_tool("%s parcels.wkt %s" % (command, arguments), status)
                self.assertRegex(said, r"(?m)^grids?: (a step|steps) of %s in the units of the input; "
                                 "the farthest vertex moved by %s$" % (arguments[7:], moved))
                self.assertEqual("rings changed" in said, words is not None)
                self.assertRegex(said, words or "time")

    def test_slow_steps_show_on_the_terminal_and_in_the_times(self):
        screen, terminal = os.openpty()
        tool = subprocess.Popen([WITH_GEOS, "union", "-", "-o", "out.wkt"], text=True, stderr=terminal,
                                stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        time.sleep(0.7)
        report = tool.communicate("POLYGON ((0 0, 4 0, 4 4, 0 4, 0 0))")[0]
        os.close(terminal)
        shown = os.read(screen, 10000).decode()
        for step in ("checking 0%", "uniting", "writing out.wkt"):
            self.assertIn("\r" + step, "\r" + shown)
        self.assertRegex(report, r"time: reading (0\.[6-9]|[1-9]\.)\d+ s, checking 0\.\d{3} s, uniting")
        self.assertEqual(shown.split("\r")[-1], "")

    def test_the_table_and_the_grids(self):
        write("large.wkt", "POLYGON ((0 0, 4e6 0, 4e6 4e6, 0 4e6, 0 0))")
        outputs = ["o.wkt", "o.geojson", "o.obj", "o.svg"]
        text = self.run_tool("triangulate good.wkt large.wkt -o " + " -o ".join(outputs))
        for name in outputs:  # no exponents where digits will do
            self.assertNotRegex(pathlib.Path(name).read_text(), r"\de[-+]?\d")
        self.assertRegex(text, r"^grids: steps of 3\.7\S*e-09 to 0\.00195\d+ ")
        self.assertRegex(text, r"good.wkt +1 +4 +2 +16 +16 +\d")
        self.assertRegex(text, r"total +2 +8 +4 +16000000000016 +16000000000016 +\d")
        text = self.run_tool("union good.wkt --grid 0.5")
        self.assertRegex(text, r"^grid: a step of 0.5 .*\n.*\ngood.wkt +1 +4 +0 +16 +\d")

    def test_an_unusable_hole_is_not_lost_in_silence(self):
        """One without area is left out and the polygon stays; where contours overlap the polygon
        is refused, and mended by the even-odd rule."""
        hole, whole = "hole 1 left out: no area on the grid; lost: a hole", "lost: a polygon of area"
        cases = [  # what is named, the area that comes out, and repaired, which is what goes in
            ("10 10, 20 20, 30 30, 10 10", hole, 1600, 1600),
            ("10 10, 10 10, 10 10, 10 10", hole, 1600, 1600),
            ("10 10, 10.00000001 10, 10.00000001 10.00000001, 10 10", hole, 1600, 1600),
            ("10 10, 20 10, 20 20, 30 30, 20 20, 10 20, 10 10", "", 1500, 1500),
            ("0 10, 10 10, 10 20, 0 20, 0 10", "", 1500, 1500),
            ("10 10, 20 20, 20 10, 10 20, 10 10", whole, 0, 1550),
            ("20 20, 20 10, 10 20, 10 10, 20 20", whole, 0, 1550),
            ("0 0, 40 0, 40 40, 0 40, 0 0", whole, 0, 0),
            ("-10 -10, 50 -10, 50 50, -10 50, -10 -10", whole, 0, 2000),
            ("30 10, 60 10, 60 20, 30 20, 30 10", whole, 0, 1700),
            # What one overlap adds to the area the other takes away; as many go in as come out.
            ("10 10, 20 20, 20 10, 10 20, 10 10), (50 10, 55 10, 55 15, 50 15, 50 10", whole, 0,
             1575),
            ("5 5, 6 6, 7 7, 5 5), (10 10, 15 15, 20 10, 20 20, 15 15, 10 20, 10 10", "hole 1 left",
             1550, 1550)]
        write("block.wkt", "POLYGON ((-99 -99, 99 -99, 99 99, -99 99, -99 -99))")
        write("corner.wkt", "POLYGON ((0 40, 0 30, 10 30, 10 40, 0 40))")
        for text, lost, area, repaired in cases:
            write("p.wkt", ring(text))
            for program in (WITH_GEOS, PLAIN):
                for arguments, expected in (
                        ("triangulate p.wkt", area), ("union p.wkt", area),
                        ("intersect p.wkt block.wkt", area),
                        ("xor p.wkt corner.wkt", abs(area - 100)),
                        ("subtract p.wkt corner.wkt", max(area - 100, 0))):
                    said = self.run_tool(arguments + " -o o.geojson", 1 if lost else 0, program)
                    self.assertIn(lost, said)
                    self.assertEqual("; lost: " in said, lost != "")
                    self.assertRegex(said, r"p.wkt .* %d " % repaired)
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
                ("union twice.wkt --repair", 12), ("union twice.wkt --repair --fill non-zero", 16),
                ("union bowtie.wkt --repair --fill positive", 1),
                ("union bowtie.wkt --repair --fill negative", 1)):
            self.run_tool(arguments + " -o out.wkt", "fine" in arguments)
            self.assertEqual(seen("out.wkt")[2], area, arguments)
        for form, command, area in (("", "triangulate -", 15), (" --format wkt", "xor - good.wkt", 1)):
            piped = subprocess.run([WITH_GEOS, *("union frame.wkt -o -" + form).split()], text=True,
                                   capture_output=True)
            self.assertIn("grid: a step", piped.stderr)
            self.run_tool(command + " -o out.wkt", stdin=piped.stdout)
            self.assertEqual(seen("out.wkt")[2], area)
        self.assertRegex(self.run_tool("union frame.wkt -o - --format obj"), r"\nf \d")
        for source, form in (("frame.wkt", "geojson"), ("out.geojson", "wkt")):  # the shell's pipes
            command = "'%s' union <(cat %s) -o >(cat > piped; mv piped out.%s) --format %s; wait $!"
            subprocess.run(["bash", "-c", command % (WITH_GEOS, source, form, form)], check=True,
                           stdout=subprocess.DEVNULL)
            self.assertEqual(seen("out." + form)[2], 15)

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

    def test_features_keep_what_they_have(self):
        """Through every command and format, both ways. Shapefiles and FlatGeobuf have no ids of
        the features' own: there an id is a property."""
        one = {"kind": "field", "Größe": 1.5, "count": -3, "open": True, "none": None}
        had = {7: {**one, "name": "a b"}, 8: {**one, "name": "Süd", "count": 2 ** 40, "open": False},
               12: {**one, "name": "c,d", "kind": "wood", "Größe": 0.25}}
        ring = lambda x: [[x, 0], [x + 4, 0], [x + 4, 4], [x, 4], [x, 0]]
        document = {"type": "FeatureCollection", "features": [
            {"type": "Feature", "id": id, "properties": had[id],
             "geometry": {"type": "Polygon", "coordinates": [ring(4 * i)]}}
            for i, id in enumerate(had)]}
        system = lambda code: {"type": "name", "properties": {"name": "urn:ogc:def:crs:EPSG::%d" % code}}
        for name, code in (("a.geojson", 25832), ("b.geojson", 3857)):
            write(name, json.dumps({**document, "crs": system(code)}))
        write("mask.wkt", "POLYGON ((-1 1, 20 1, 20 9, -1 9, -1 1))")

        def part(area, *ids):  # a feature that is made of these
            agreed = {key: value for key, value in had[ids[0]].items()
                      if value is not None and all(had[id][key] == value for id in ids)}
            return [ids[0] if len(ids) == 1 else None, agreed, area]

        def features(name):
            found, read = {}, json.loads(pathlib.Path(name).read_text())
            self.assertEqual(read["crs"], system(25832))
            for feature in read["features"]:
                own = {key: value for key, value in feature["properties"].items() if value is not None}
                id = own.pop("id", feature.get("id"))  # GeoPackage numbers what has none
                entry = found.setdefault(repr(sorted(own.items())), [id if id in had else None, own, 0])
                entry[2] += shape(feature["geometry"]).area
            return [*found.values()]

        whole = [part(16, id) for id in had]
        table = [("triangulate %s", whole), ("union %s --by name", whole), ("union %s --only Süd", whole[1:2]),
                 ("union %s --only 'name=c,d'", whole[2:]), ("xor %s mask.wkt --only Süd", whole[1:2]),
                 ("union %s --by kind", [part(32, 7, 8), whole[2]]),
                 ("union %s --only 'kind=field, wood'", [part(48, 7, 8, 12)]),
                 ("subtract %s mask.wkt", [part(12, 7, 8, 12)]),
                 ("subtract %s mask.wkt --each", [part(4, id) for id in had]),
                 ("intersect %s mask.wkt --each", [part(12, id) for id in had])]
        key = lambda feature: (repr(feature[0]), feature[2])
        for extension in (".geojson", ".gpkg", ".shp", ".fgb"):
            program = WITH_GEOS if extension == ".geojson" else FULL
            self.run_tool("union a.geojson --by name -o in" + extension, program=program)
            for command, expected in table:
                with self.subTest(extension + ": " + command):
                    self.run_tool(command % ("in" + extension) + " -o out" + extension, program=program)
                    self.run_tool("triangulate out%s -o back.geojson" % extension, program=program)
                    self.assertEqual(sorted(features("back.geojson"), key=key), sorted(expected, key=key))
            self.assertRegex(self.run_tool("union in%s b.geojson -o no.wkt" % extension, 2, FULL),
                             "b.geojson is in EPSG:3857, and in.* in EPSG:25832: bring them to one")
        write("t.json", json.dumps({"type": "Topology", "arcs": [ring(0)], "objects": {
            "o": {"type": "Polygon", "arcs": [[0]], "properties": {"name": "x"}}}}))
        for command, area in (("subtract a.geojson mask.wkt -o o.dxf", 12), ("union t.json -o o.dxf", 16)):
            self.run_tool(command, program=FULL)
            self.run_tool("union o.dxf -o o.wkt", program=FULL)
            self.assertEqual(seen("o.wkt")[2], area)
        write("broken.gpkg", "no such file")
        self.assertIn("broken.gpkg: cannot be read: ", self.run_tool("union broken.gpkg", 2, FULL))
        self.assertIn("unknown extension", self.run_tool("union broken.gpkg", 2))
        self.run_tool("union a.geojson -o no/such.gpkg", 2, FULL)

    def test_shells_complete_what_there_is(self):
        commands = re.findall(r"(?m)^  (\w+) ", self.run_tool("--help").split("Commands:")[1])
        self.assertIn("union", commands)
        script = self.run_tool("completion bash")
        for words, expected in [(["zelvan", ""], {*commands, "help", "--help", "--version"}), *(
                (["zelvan", command, "-"], set(re.findall(r"(?<![-\w])--?[a-z][-a-z]*(?=[ ,\n])", "\n".join(
                    re.findall(r"(?m)^  (-[^ ].*?)(?:  |$)", self.run_tool("help " + command))) + " ")))
                for command in commands), (["zelvan", "union", "--fill", "non"], {"non-zero"})]:
            code = script + "COMP_WORDS=(%s); COMP_CWORD=%d; _zelvan; echo \"${COMPREPLY[@]}\"" % (
                " ".join("'%s'" % word for word in words), len(words) - 1)
            said = subprocess.run(["bash", "-c", code], capture_output=True, text=True).stdout
            self.assertEqual({*said.split()}, expected, words)
        for shell in filter(shutil.which, ("zsh", "fish")):
            write("script", self.run_tool("completion " + shell))
            self.assertEqual(subprocess.run([shell, "-n", "script"]).returncode, 0)

    def test_operations_are_those_of_geos(self):
        for seed in range(12):
            rng = random.Random(seed)
            boxes = lambda n: unary_union([box(x, y, x + rng.randint(1, 4), y + rng.randint(1, 4))
                                           for x, y in zip(rng.choices(range(9), k=n),
                                                           rng.choices(range(9), k=n))])
            shapes = [boxes(9).difference(boxes(5)), boxes(6), boxes(4)]
            for name, one in zip("abcd", (*shapes, box(0, 0, 4, 4 + seed))):
                write(name + ".wkt", one.wkt)
            a, b, c = shapes
            for arguments, expected in (
                    ("union a.wkt b.wkt c.wkt", a | b | c), ("subtract a.wkt b.wkt c.wkt", a - b - c),
                    ("intersect a.wkt b.wkt c.wkt", a & b & c), ("xor a.wkt b.wkt c.wkt", a ^ b ^ c),
                    ("offset d.wkt --distance 2 --join miter", box(-2, -2, 6, 6 + seed)),
                    ("offset d.wkt --distance -1", box(1, 1, 3, 3 + seed))):
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
        for program in (WITH_GEOS, PLAIN):
            self.run_tool("union " + only + " -o region.geojson", program=program)
            polygons, holes, area = seen("region.geojson")
            self.assertEqual((polygons, holes), (3, 0))  # Bolivia and Paraguay are one
            self.assertAlmostEqual(area, seen("apart.wkt")[2], 2)


if __name__ == "__main__":
    unittest.main()
