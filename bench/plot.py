"""Times against vertices as an SVG: one panel a family, both axes logarithmic."""
import math

WIDTH, HEIGHT = 300, 220  # of a panel
LEFT, RIGHT, TOP, BOTTOM = 46, 12, 26, 30
COLUMNS = 4
COLOURS = ['#d1242f', '#0969da', '#1a7f37', '#9a6700', '#8250df']


def text(x, y, words, anchor='middle', size=11, colour='#1f2328'):
    return (f'<text x="{x:.1f}" y="{y:.1f}" font-size="{size}" text-anchor="{anchor}" '
            f'fill="{colour}">{words}</text>')


def line(x1, y1, x2, y2, colour='#d8dee4'):
    return f'<path d="M{x1:.1f} {y1:.1f}L{x2:.1f} {y2:.1f}" stroke="{colour}"/>'


def power(exponent):
    names = {-3: '1 µs', 0: '1 ms', 3: '1 s'}
    return names.get(exponent, '')


class Axis:
    """Whole powers of ten that hold the values, over an interval of the picture."""

    def __init__(self, values, start, end):
        self.low = math.floor(math.log10(min(values)) + 1e-9)
        self.high = max(self.low + 1, math.ceil(math.log10(max(values)) - 1e-9))
        self.start, self.end = start, end

    def at(self, value):
        share = (math.log10(value) - self.low) / (self.high - self.low)
        return self.start + share * (self.end - self.start)

    def decades(self):
        return range(self.low, self.high + 1)


def superscript(exponent):
    return '10' + ''.join('⁰¹²³⁴⁵⁶⁷⁸⁹'[int(digit)] for digit in str(exponent))


def panel(x, y, title, curves, times):
    points = [point for curve in curves.values() for point in curve]
    horizontal = Axis([n for n, _ in points], x + LEFT, x + WIDTH - RIGHT)
    vertical = Axis(times, y + HEIGHT - BOTTOM, y + TOP)
    yield text(x + LEFT, y + TOP - 8, title, 'start', 13)
    for exponent in horizontal.decades():
        at = horizontal.at(10 ** exponent)
        yield line(at, vertical.start, at, vertical.end)
        yield text(at, vertical.start + 15, superscript(exponent))
    for exponent in vertical.decades():
        at = vertical.at(10 ** exponent)
        yield line(horizontal.start, at, horizontal.end, at)
        yield text(horizontal.start - 6, at + 4, power(exponent), 'end')
    for curve, colour in zip(curves.values(), COLOURS):
        if not curve:
            continue
        path = 'L'.join(f'{horizontal.at(n):.1f} {vertical.at(ms):.1f}' for n, ms in curve)
        yield f'<path d="M{path}" fill="none" stroke="{colour}" stroke-width="2"/>'
        for n, ms in curve:
            yield (f'<circle cx="{horizontal.at(n):.1f}" cy="{vertical.at(ms):.1f}" r="2.5" '
                   f'fill="{colour}"/>')


def legend(x, y, rows):
    for i, (row, colour) in enumerate(zip(rows, COLOURS)):
        at = y + TOP + 16 + 24 * i
        yield f'<path d="M{x + LEFT} {at}h28" stroke="{colour}" stroke-width="2"/>'
        yield text(x + LEFT + 38, at + 4, row, 'start', 13)
    yield text(x + LEFT, y + TOP + 24 * len(rows) + 24, 'CPU time against vertices', 'start', 12)


def write(path, results, rows):
    def curve(row, family):
        entries = [results.at(row, family, size) for name, size in results.cases if name == family]
        return [(e.vertices, e.ms) for e in entries if e and e.ok]

    families = [family for family in results.families
                if sum(name == family for name, _ in results.cases) > 1]
    curves = {family: {row: curve(row, family) for row in rows} for family in families}
    times = [ms for of_family in curves.values() for c in of_family.values() for _, ms in c]
    lines = math.ceil((len(families) + 1) / COLUMNS)
    parts = [f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {COLUMNS * WIDTH} '
             f'{lines * HEIGHT}" font-family="sans-serif">',
             '<rect width="100%" height="100%" fill="#ffffff"/>']
    for i, family in enumerate([*families, None]):
        x, y = i % COLUMNS * WIDTH, i // COLUMNS * HEIGHT
        parts += panel(x, y, family, curves[family], times) if family else legend(x, y, rows)
    with open(path, 'w', encoding='utf-8') as file:
        file.write('\n'.join([*parts, '</svg>']) + '\n')
