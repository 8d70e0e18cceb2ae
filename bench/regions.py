"""Times the host program on maps, and writes what it and bench_region say into
docs/PERFORMANCE.md, between the markers.

regions.py RELEASE-FOLDER MAPS-FOLDER PERFORMANCE.md
"""
import pathlib
import random
import re
import subprocess
import sys
import time

MARKER = re.compile(r'(<!-- regions -->\n).*?(<!-- end of regions -->)', re.S)


def write_holes(path):
    """One block with some 70,000 square holes, a tenth of them over others or outside."""
    draw = random.Random(1)
    n = 265
    rings = [f'(0 0, {4 * n} 0, {4 * n} {4 * n}, 0 {4 * n}, 0 0)']
    for i in range(n * n):
        x, y = 4 * (i // n) + 1, 4 * (i % n) + 1
        fate = draw.random()
        x += draw.randint(1, 3) if fate < 0.05 else 4 * n + 10 if fate < 0.1 else 0
        rings.append(f'({x} {y}, {x} {y + 2}, {x + 2} {y + 2}, {x + 2} {y}, {x} {y})')
    path.write_text(f'POLYGON ({", ".join(rings)})\n')


def best_seconds(command, tries=5):
    seconds = []
    for _ in range(tries):
        start = time.perf_counter()
        status = subprocess.run(command, capture_output=True, check=False).returncode
        seconds.append(time.perf_counter() - start)
        if status not in (0, 1):  # 1: something was named and left out
            sys.exit(f'{command}: status {status}')
    return min(seconds)


def program_table(zelvan, maps):
    (maps / 'rectangle.wkt').write_text('POLYGON ((-180 -90, 180 -90, 180 90, -180 90, -180 -90))\n')
    write_holes(maps / 'holes.wkt')
    world = 'data/countries-50m.geojson'
    out = ['-o', str(maps / 'out.geojson')]
    work = [
        ('union of the countries, 1:50m', 0.4, ['union', world, *out]),
        ('the countries taken from their rectangle', 0.5,
         ['subtract', str(maps / 'rectangle.wkt'), world, *out]),
        ('union of the counties of the United States', 0.4,
         ['union', str(maps / 'counties.geojson'), *out]),
        ('union of the countries, 1:10m, repaired', 3.0,
         ['union', '--repair', str(maps / 'countries-10m.geojson'), *out]),
        ('one polygon of 70,000 holes, repaired and cut', 2.0,
         ['triangulate', '--repair', str(maps / 'holes.wkt'), *out]),
    ]
    lines = ['| `zelvan`, reading and writing included | s | at most |', '|---|---:|---:|']
    for name, most, arguments in work:
        lines.append(f'| {name} | {best_seconds([zelvan, *arguments]):.2f} | {most:g} |')
    return '\n'.join(lines)


def main():
    release, maps, document = map(pathlib.Path, sys.argv[1:])
    measured = subprocess.run([release / 'bench_region'], capture_output=True, text=True,
                              check=True).stdout.strip()
    text = f'{measured}\n\n{program_table(str(release / "zelvan"), maps)}\n'
    print(text)
    document.write_text(MARKER.sub(lambda m: m[1] + '\n' + text + '\n' + m[2],
                                   document.read_text()))


main()
