#!/usr/bin/env python3
"""Reads a GeoJSON file, cuts its first feature by the others and draws the triangles.

usage: cut.py FILE.geojson PICTURE.svg

Needs the package zelvan, of bindings/python. cut.cpp does the same in C++.
"""
import json
import sys

from zelvan import Region, unite

PIXELS = 900


def frame(region):
    """The picture's height, and what takes a place to one in the picture, as its text."""
    west, south, east, north = region.bounds
    scale = PIXELS / (east - west)
    return (north - south) * scale, lambda x, y: "{:.2f} {:.2f}".format(
        (x - west) * scale, (north - y) * scale)


def triangles(region, place, colour):
    """The triangles as one path of the picture."""
    mesh = region.triangulate()
    places = [place(x, y) for x, y in mesh.vertices.tolist()]
    lines = "\n".join("M{}L{}L{}Z".format(*(places[i] for i in corners))
                      for corners in mesh.triangles.tolist())
    return f'<path fill="{colour}" stroke="white" stroke-width=".6" d="\n{lines}"/>\n'


def outlines(region, place):
    """The contours as one path of the picture."""
    rings = [ring.tolist() for outer, holes in region.polygons for ring in (outer, *holes)]
    lines = "\n".join("M" + "L".join(place(x, y) for x, y in ring) + "Z" for ring in rings)
    return f'<path fill="none" stroke="#444" stroke-width="1.5" d="\n{lines}"/>\n'


def main(file, picture):
    with open(file, encoding="utf-8") as text:
        land, *others = map(Region.from_geojson, json.load(text)["features"])
    knife = unite(others)
    kept, cut = land - knife, land & knife
    print(f"area {land.area:.4f}, of this kept {kept.area:.4f} and cut off {cut.area:.4f}")

    height, place = frame(land | knife)
    with open(picture, "w", encoding="utf-8") as svg:
        svg.write(f'<svg xmlns="http://www.w3.org/2000/svg" '
                  f'viewBox="-5 -5 {PIXELS + 10} {height + 10:.2f}">\n')
        svg.write(triangles(kept, place, "#8fb8a8"))
        svg.write(triangles(cut, place, "#e0b084"))
        svg.write(outlines(land, place))
        svg.write(outlines(knife, place))
        svg.write("</svg>\n")


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__.strip())
    main(*sys.argv[1:])
