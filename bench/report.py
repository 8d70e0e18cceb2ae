"""Turns the lines of the comparison into tables, targets and a plot.

report.py LINES.tsv PERFORMANCE.md PLOT.svg COMMAND

The tables go between the markers of their work, where LINES has any of it; the rest of
the document stays. The plot is of triangulation, and written only with it.
"""
import math
import os
import platform
import re
import subprocess
import sys

import plot

PEERS = {'triangulation': ['CGAL', 'GLU', 'earcut', 'GEOS'],
         'booleans': ['Clipper', 'GEOS', 'CGAL']}
OURS = {'triangulation': 'Triangulate', 'booleans': 'operation'}
# Whose area is the right one where none is given: the first that has an answer.
EXACT_FIRST = ['CGAL', 'GEOS', 'Clipper']
PACKAGES = {'CGAL': 'libcgal-dev', 'GLU': 'libglu1-mesa-dev', 'earcut': 'python3-mapbox-earcut',
            'GEOS': 'libgeos-dev', 'Clipper': 'libpolyclipping-dev'}

# The whole road in ms at 10^3 to 10^6 vertices before areas were cut by a sweep, measured
# once on that version.
ROAD_BEFORE = {'star': (0.820, 13.8, 244, 4243), 'circle': (0.415, 6.96, 131, 1597),
               'comb': (0.520, 9.26, 157, 1677), 'spiral': (0.755, 14.6, 241, 4175),
               'coast': (0.659, 9.18, 193, 3030)}


class Entry:
    """One line: what one row (engine or call) did on one family at one size."""

    def __init__(self, line):
        (self.work, self.row, self.family, size, vertices, self.status, ms, _, area,
         expected, tolerance, heap) = line.rstrip('\n').split('\t')
        self.size, self.vertices = int(size), int(vertices)
        self.ms, self.area, self.heap = float(ms), float(area), float(heap)
        self.expected, self.tolerance = float(expected), float(tolerance)
        self.wrong = False

    @property
    def ok(self):
        return self.status == 'ok'


class Results:
    """The entries of one work, by row, family and size."""

    def __init__(self, work, entries):
        self.work = work
        self.entries = {(e.row, e.family, e.size): e for e in entries if e.work == work}
        self.cases = list(dict.fromkeys((e.family, e.size) for e in self.entries.values()))
        self.families = list(dict.fromkeys(family for family, _ in self.cases))
        for case in self.cases:
            self.mark_wrong(case)

    def at(self, row, family, size):
        return self.entries.get((row, family, size))

    def mark_wrong(self, case):
        rows = {row: e for (row, *rest), e in self.entries.items() if tuple(rest) == case and e.ok}
        judge = next((rows[row] for row in EXACT_FIRST if row in rows), None)
        for entry in rows.values():
            expected = entry.expected or (judge.area if judge else entry.area)
            entry.wrong = abs(entry.area - expected) > entry.tolerance

    def vertices(self, case):
        return max(e.vertices for (_, *rest), e in self.entries.items() if tuple(rest) == case)

    def growth(self, row, family, first, last):
        """The exponent p of n^p between two sizes, None where one is missing."""
        a, b = self.at(row, family, first), self.at(row, family, last)
        if not (a and b and a.ok and b.ok):
            return None
        return math.log(b.ms / a.ms) / math.log(b.vertices / a.vertices)


# Targets. Each has a text, a bound, and a function that gives (value, where) pairs, all
# of which must be within the bound; value None: no answer within the limit.

def ratios(results, peers, row=None, families=None, vertices=(0, math.inf)):
    """Our time divided by that of the fastest of `peers`."""
    for family, size in results.cases:
        case_vertices = results.vertices((family, size))
        if families and not re.match(families, family):
            continue
        if not vertices[0] <= case_vertices < vertices[1]:
            continue
        ours = results.at(row or OURS[results.work], family, size)
        times = [e.ms for e in (results.at(peer, family, size) for peer in peers) if e and e.ok]
        if ours and times:
            yield (ours.ms / min(times) if ours.ok else None), f'{family}, {size:,}'


def growths(results, row, first, last, families=None):
    for family in results.families:
        if families and not re.match(families, family):
            continue
        if results.at(row, family, first) and results.at(row, family, last):
            yield results.growth(row, family, first, last), family


def heaps(results, row, families=None, sizes=None):
    for family, size in results.cases:
        entry = results.at(row, family, size)
        if families and not re.match(families, family) or sizes and size not in sizes:
            continue
        if entry and entry.ok and entry.heap:
            yield entry.heap / entry.vertices, f'{family}, {size:,}'


def road_ratios(results):
    for family, before in ROAD_BEFORE.items():
        for size, ms in zip((1000, 10_000, 100_000, 1_000_000), before):
            entry = results.at('whole road', family, size)
            if entry:
                yield (entry.ms / ms if entry.ok else None), f'{family}, {size:,}'


CONTOURS = 'coast|star|circle|comb|spiral'
TARGETS = {
    'triangulation': [
        ('`Triangulate` to the fastest peer, from 10,000 vertices', 0.7,
         lambda r: ratios(r, PEERS['triangulation'], vertices=(10_000, math.inf))),
        ('`Triangulate` to the fastest peer, 100 to 9,999 vertices', 1.5,
         lambda r: ratios(r, PEERS['triangulation'], vertices=(100, 10_000))),
        ('`Triangulate` to CGAL', 0.25, lambda r: ratios(r, ['CGAL'])),
        ('"Delaunay" to CGAL, from 10,000 vertices', 0.4,
         lambda r: ratios(r, ['CGAL'], row='Delaunay', vertices=(10_000, math.inf))),
        ('growth of `Triangulate`', 1.12,
         lambda r: growths(r, 'Triangulate', 10_000, 1_000_000)),
        ('growth of `SetMainContour`', 1.12,
         lambda r: growths(r, 'SetMainContour', 10_000, 1_000_000)),
        ('peak heap bytes a vertex', 350, lambda r: heaps(r, 'whole road', CONTOURS)),
        ('whole road to the road before', 0.25, road_ratios),
    ],
    'booleans': [
        ('coasts to Clipper', 0.33, lambda r: ratios(r, ['Clipper'], families='coasts')),
        ('coasts to GEOS', 0.15, lambda r: ratios(r, ['GEOS'], families='coasts')),
        ('stars to CGAL', 0.2, lambda r: ratios(r, ['CGAL'], families='stars')),
        ('holes to Clipper', 3, lambda r: ratios(r, ['Clipper'], families='holes')),
        ('growth of the holes in k x k', 1.2, lambda r: growths(r, 'operation', 10, 100, 'holes')),
        ('bars and cells in one sweep to Clipper', 1,
         lambda r: ratios(r, ['Clipper'], row='one sweep', families='bars|cells')),
        ('peak heap bytes an input vertex', 400,
         lambda r: heaps(r, 'all calls', 'coasts united, few', [100_000])),
    ],
}


def number(value):
    """Three digits, or all of a large whole number."""
    if value >= 100:
        return f'{value:,.0f}'
    return f'{value:.{max(0, 2 - math.floor(math.log10(value)))}f}' if value > 0 else '0'


def cell(entry, ours):
    if entry is None:
        return ''
    if not entry.ok:
        words = {'limit': f'> {entry.ms / 1e3:g} s', 'skipped': '–'}
        return words.get(entry.status, f'**{entry.status}**')
    text = number(entry.ms)
    if ours and ours.ok and ours is not entry:
        text += f' ({number(entry.ms / ours.ms)})'
    return text + (' **wrong**' if entry.wrong else '')


def table(head, rows):
    yield '| ' + ' | '.join(head) + ' |'
    yield '|---|' + '---:|' * (len(head) - 1)
    for row in rows:
        yield '| ' + ' | '.join(row) + ' |'


def time_table(results, columns):
    def row(case):
        ours = results.at(OURS[results.work], *case)
        cells = [cell(results.at(column, *case), ours) for column in columns]
        return [case[0], f'{case[1]:,}', f'{results.vertices(case):,}', *cells]
    head = ['contours', 'n or k', 'vertices', *columns]
    return table(head, [row(case) for case in results.cases])


def growth_table(results):
    rows = []
    for family in results.families:
        powers = [results.growth(row, family, 10_000, 1_000_000)
                  for row in ('SetMainContour', 'Triangulate', 'whole road')]
        peaks = [value for value, _ in heaps(results, 'whole road', re.escape(family) + '$')]
        if peaks and re.match(CONTOURS, family):
            rows.append([family, *(f'{p:.2f}' if p else '–' for p in powers), number(max(peaks))])
    return table(['contour', '`SetMainContour`', '`Triangulate`', 'whole road',
                  'peak heap bytes a vertex'], rows)


def target_table(results):
    rows = []
    for text, bound, values in TARGETS[results.work]:
        found = list(values(results))
        if not found:
            rows.append([text, f'{bound:g}', 'not measured', '', '', ''])
            continue
        value, where = max(found, key=lambda pair: math.inf if pair[0] is None else pair[0])
        met = value is not None and value <= bound
        shown = 'no answer' if value is None else number(value)
        within = sum(v is not None and v <= bound for v, _ in found)
        rows.append([text, f'{bound:g}', shown, where, f'{within} of {len(found)}',
                     'yes' if met else '**no**'])
    return table(['target', 'at most', 'worst', 'where', 'entries within', 'met'], rows)


def setting(work, command):
    """The command, the machine and the peers' versions."""
    with open('/proc/cpuinfo', encoding='utf-8') as info:
        model = next((line.split(':')[1].strip() for line in info if 'model name' in line),
                     platform.machine())
    compiler = subprocess.run(['c++', '-dumpfullversion'], capture_output=True, text=True,
                              check=False).stdout.strip()
    versions = []
    for peer in PEERS[work]:
        version = subprocess.run(['dpkg-query', '-W', '-f', '${Version}', PACKAGES[peer]],
                                 capture_output=True, text=True, check=False).stdout
        versions.append(f'{peer} {version or "missing"}')
    return (f'Measured with `{command}` on {os.cpu_count()} cores of {model}, '
            f'GCC {compiler}; {", ".join(versions)}.')


def section(results, command):
    yield setting(results.work, command)
    yield ''
    ours = OURS[results.work]
    if results.work == 'triangulation':
        yield from time_table(results, ['SetMainContour', 'whole road', ours, 'Delaunay',
                                        *PEERS[results.work]])
        yield ''
        yield 'Growth from 10,000 to 1,000,000 vertices as the exponent p of n^p, and the peak of'
        yield 'memory of the whole road, the worst of all sizes:'
        yield ''
        yield from growth_table(results)
    else:
        yield from time_table(results, ['all calls', ours, 'one sweep', *PEERS[results.work]])
    yield ''
    yield 'What is aimed at, and the entry that is furthest from it (of times: ours divided by the'
    yield 'other):'
    yield ''
    yield from target_table(results)


def replace_between_markers(text, work, lines):
    begin, end = f'<!-- {work}: begin -->', f'<!-- {work}: end -->'
    before, rest = text.split(begin)
    _, after = rest.split(end)
    return before + begin + '\n' + '\n'.join(lines) + '\n' + end + after


def main(lines, document, picture, command):
    with open(lines, encoding='utf-8') as file:
        entries = [Entry(line) for line in file]
    with open(document, encoding='utf-8') as file:
        text = file.read()
    for work in PEERS:
        results = Results(work, entries)
        if not results.cases:
            continue
        made = list(section(results, command))
        print('\n'.join(made))
        text = replace_between_markers(text, work, made)
        if work == 'triangulation':
            plot.write(picture, results, [OURS[work], *PEERS[work]])
    with open(document, 'w', encoding='utf-8') as file:
        file.write(text)


main(*sys.argv[1:])
