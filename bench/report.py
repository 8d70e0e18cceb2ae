"""Turns the comparison's lines into tables and curves.

    report.py triangulation|booleans LINES.tsv --command TEXT --versions TEXT [--quick]

The part's table in docs/PERFORMANCE.md, between its two marker comments, is written
anew, and for the triangulations docs/triangulation-times.svg as well.
"""
import argparse
import math
import pathlib
import platform
import re
import subprocess

import plot

# What the tables are held against. Ratios are our time over the peer's.
FASTEST_PEER = [(10_000, 0.7), (0, 1.5)]  # from so many vertices: at most so much
TRIANGULATION_OF_CGAL = 0.25
GROWTH = {"SetMainContour": 1.12, "Triangulate": 1.12}
MESH_BYTES = 350  # a vertex, at 10^6 vertices
BOOLEANS = [  # families that open with: at most so much of the peer
    ("coast, shifted", "Clipper", 0.33), ("coast, shifted", "GEOS", 0.15),
    ("two coasts", "Clipper", 0.33), ("two coasts", "GEOS", 0.15),
    ("stars", "CGAL", 0.2), ("k x k holes", "Clipper", 3.0),
    ("k bars", "Clipper", 1.0), ("neighbouring cells", "Clipper", 1.0)]
HOLES_GROWTH = 1.2  # in the number of holes
BOOLEAN_BYTES = 400  # an input vertex

OURS = {"triangulation": ["SetMainContour", "Triangulate", "points to arrays"],
        "booleans": ["operation", "all calls"]}
PEERS = {"triangulation": ["CGAL", "earcut", "GLU", "GEOS"],
         "booleans": ["Clipper", "GEOS", "CGAL"]}
MAIN = {"triangulation": "Triangulate", "booleans": "operation"}  # ratios are to this
COLUMNS = ["part", "family", "size", "vertices", "engine", "status", "ms", "runs", "area",
           "expected", "tolerance", "peak"]
DOCS = pathlib.Path(__file__).resolve().parent.parent / "docs"


def read(path):
    """{(family, size): {engine: entry}}, in the order of the lines."""
    rows = {}
    for line in path.read_text().splitlines():
        entry = dict(zip(COLUMNS, line.split("\t")))
        for name in ("size", "vertices", "runs"):
            entry[name] = int(entry[name])
        for name in ("ms", "area", "expected", "tolerance", "peak"):
            entry[name] = float(entry[name])
        rows.setdefault((entry["family"], entry["size"]), {})[entry["engine"]] = entry
    for row in rows.values():
        mark_wrong(row)
    return rows


def mark_wrong(row):
    """An area that is too far off changes the status from ok to wrong. Where the true
    area is not known, the middle one of the engines stands for it."""
    areas = sorted(entry["area"] for entry in row.values() if entry["status"] == "ok")
    for entry in row.values():
        if entry["status"] != "ok":
            continue
        expected = entry["expected"] or areas[len(areas) // 2]
        # Triangulators that take doubles have no grid to excuse them.
        exact = entry["part"] == "triangulation" and entry["engine"] in PEERS["triangulation"]
        tolerance = 1e-9 * expected if exact else entry["tolerance"]
        if abs(entry["area"] - expected) > tolerance:
            entry["status"] = "wrong"


def time_of(row, engine):
    entry = row.get(engine)
    return entry["ms"] if entry and entry["status"] == "ok" else None


def duration(ms):
    return f"{ms:.3f}" if ms < 0.1 else f"{ms:.3g}" if ms < 100 else f"{ms:.0f}"


def cell(row, engine, main):
    entry = row.get(engine)
    if entry is None:
        return ""
    text = duration(entry["ms"])
    ours = time_of(row, main)
    if engine != main and ours:
        times = entry["ms"] / ours
        text += f" ({times:.2g}x)" if times < 99 else f" ({times:.0f}x)"
    return {"ok": text, "wrong": f"**wrong area**, {text}", "skipped": "too slow",
            "limit": "too slow"}.get(entry["status"], entry["status"])


def held(value, most):
    """A measured value beside the most that it should be."""
    text = f"{value:.0f}" if value >= 100 else f"{value:.3g}"
    return f"{text} {'met' if value <= most else '**missed**'} ({most:g})"


def growth(rows, family, engine, first, last):
    """The exponent p of n^p between two entries, None where one is missing."""
    ends = [rows.get((family, size), {}) for size in (first, last)]
    times = [time_of(row, engine) for row in ends]
    if None in times:
        return None
    vertices = [row[engine]["vertices"] for row in ends]
    return math.log(times[1] / times[0]) / math.log(vertices[1] / vertices[0])


def table(header, rows):
    names = " | ".join(header)
    lines = [f"| {names} |", "|---|" + "---:|" * (len(header) - 1)]
    return lines + ["| " + " | ".join(row) + " |" for row in rows]


def present(part, rows):
    used = {engine for row in rows.values() for engine in row}
    return [engine for engine in OURS[part] + PEERS[part] if engine in used]


def triangulation_targets(row):
    ours = time_of(row, "Triangulate")
    peers = {peer: time_of(row, peer) for peer in PEERS["triangulation"]}
    peers = {peer: ms for peer, ms in peers.items() if ms}
    if not ours or not peers:
        return ["", ""]
    fastest = min(peers, key=peers.get)
    vertices = row["Triangulate"]["vertices"]
    most = next(most for least, most in FASTEST_PEER if vertices >= least)
    cgal = held(ours / peers["CGAL"], TRIANGULATION_OF_CGAL) if "CGAL" in peers else ""
    return [f"{fastest}: {held(ours / peers[fastest], most)}", cgal]


def triangulation_tables(rows):
    engines = present("triangulation", rows)
    body = []
    for (family, size), row in rows.items():
        n = next(iter(row.values()))["vertices"]
        name = f"{family}, k = {size}" if "holes" in family else family
        body.append([name, f"{n:,}"] + [cell(row, engine, "Triangulate") for engine in engines] +
                    triangulation_targets(row))
    lines = table(["work", "vertices"] + engines + ["Triangulate / fastest peer", "/ CGAL"], body)
    families = list(dict.fromkeys(family for family, size in rows if (family, 10_000) in rows))
    body = []
    for family in families:
        line = [family]
        for engine in engines:
            p = growth(rows, family, engine, 10_000, 1_000_000)
            line.append("" if p is None else held(p, GROWTH[engine]) if engine in GROWTH else f"{p:.2f}")
        largest = max(size for name, size in rows if name == family)
        entry = rows[family, largest].get("points to arrays")
        bytes_each = entry["peak"] / entry["vertices"] if entry and entry["status"] == "ok" else 0
        line.append(held(bytes_each, MESH_BYTES) if bytes_each else "")
        body.append(line)
    text = ["", "Growth from 10^4 to 10^6 vertices, as the exponent p of n^p, and the peak memory of",
            "the library on the whole road at the largest size:", ""]
    return lines + text + table(["contour"] + engines + ["bytes a vertex"], body)


def boolean_targets(family, row):
    found = []
    for start, peer, most in BOOLEANS:
        peer_ms = time_of(row, peer) if family.startswith(start) else None
        for engine in OURS["booleans"]:
            ours = time_of(row, engine)
            if peer_ms and ours:
                found.append(f"{engine} / {peer}: {held(ours / peer_ms, most)}")
    return "; ".join(found)


def boolean_tables(rows):
    engines = present("booleans", rows)
    body = []
    for (family, size), row in rows.items():
        entry = row["operation"]
        bytes_each = held(entry["peak"] / entry["vertices"], BOOLEAN_BYTES) if entry["peak"] else ""
        body.append([family, f"{size:,}", f"{entry['vertices']:,}"] +
                    [cell(row, engine, "operation") for engine in engines] +
                    [boolean_targets(family, row), bytes_each])
    lines = table(["work", "n, k or cells", "input vertices"] + engines +
                  ["ours / peer", "bytes an input vertex"], body)
    sizes = [size for family, size in rows if family == "k x k holes"]
    grown = {engine: growth(rows, "k x k holes", engine, sizes[0], sizes[-1]) for engine in engines
             } if len(sizes) > 1 else {}
    parts = [f"{engine} {held(p, HOLES_GROWTH) if engine in OURS['booleans'] else format(p, '.2f')}"
             for engine, p in grown.items() if p is not None]
    if parts:
        lines += ["", f"Growth in the number of holes, from {sizes[0]} x {sizes[0]} to {sizes[-1]} x "
                  f"{sizes[-1]}, as the exponent: " + ", ".join(parts) + "."]
    return lines


def machine():
    cpu = re.search(r"model name\s*: (.*)", pathlib.Path("/proc/cpuinfo").read_text())
    compiler = subprocess.run(["c++", "--version"], capture_output=True, text=True).stdout.splitlines()
    return f"{cpu[1] if cpu else platform.machine()}, {compiler[0] if compiler else 'unknown compiler'}"


def replace(part, lines):
    page = DOCS / "PERFORMANCE.md"
    begin, end = f"<!-- {part}: begin -->", f"<!-- {part}: end -->"
    before, rest = page.read_text().split(begin)
    page.write_text("\n".join([before + begin] + lines) + "\n" + end + rest.split(end)[1])


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("part", choices=OURS)
    parser.add_argument("lines", type=pathlib.Path)
    parser.add_argument("--command", required=True)
    parser.add_argument("--versions", required=True)
    parser.add_argument("--quick", action="store_true")
    options = parser.parse_args()
    rows = read(options.lines)
    lines = [f"Measured with `{options.command}` on {machine()}; {options.versions}.", ""]
    if options.quick:
        lines += ["**A quick run: small sizes only, and perhaps beside other work.**", ""]
    if options.part == "triangulation":
        lines += ["![Times of triangulation](triangulation-times.svg)", ""]
        lines += triangulation_tables(rows)
        times = {(family, size): {engine: time_of(row, engine) for engine in row}
                 for (family, size), row in rows.items() if size >= 100 and "holes" not in family}
        (DOCS / "triangulation-times.svg").write_text(plot.draw(times))
    else:
        lines += boolean_tables(rows)
    replace(options.part, lines)
    print(f"docs/PERFORMANCE.md: {options.part}")


main()
