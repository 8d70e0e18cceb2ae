"""Curves of time over size, a panel for each family, both axes logarithmic: SVG."""
import math

COLORS = {"Triangulate": "#d62728", "points to arrays": "#ff9896", "CGAL": "#1f77b4",
          "earcut": "#2ca02c", "GLU": "#9467bd", "GEOS": "#8c564b"}
WIDTH, HEIGHT = 260, 220  # of a panel's axes
LEFT, TOP, GAP_X, GAP_Y = 60, 40, 60, 70
IN_A_ROW = 3


def superscript(power):
    return "".join("⁻" if c == "-" else "⁰¹²³⁴⁵⁶⁷⁸⁹"[int(c)] for c in str(power))


class Axes:
    """Places sizes and times in a panel."""

    def __init__(self, times):
        sizes = [size for _, size in times]
        spent = [ms for row in times.values() for ms in row.values() if ms]
        self.x = [math.floor(math.log10(min(sizes))), math.ceil(math.log10(max(sizes)))]
        self.y = [math.floor(math.log10(min(spent))), math.ceil(math.log10(max(spent)))]

    def at_x(self, size):
        return WIDTH * (math.log10(size) - self.x[0]) / (self.x[1] - self.x[0])

    def at_y(self, ms):
        return HEIGHT - HEIGHT * (math.log10(ms) - self.y[0]) / (self.y[1] - self.y[0])


def grid(axes):
    out = []
    for power in range(axes.x[0], axes.x[1] + 1):
        x = axes.at_x(10.0**power)
        out.append(f'<path class="grid" d="M{x:.1f} 0V{HEIGHT}"/>'
                   f'<text x="{x:.1f}" y="{HEIGHT + 16}" text-anchor="middle">10{superscript(power)}</text>')
    for power in range(axes.y[0], axes.y[1] + 1):
        y = axes.at_y(10.0**power)
        out.append(f'<path class="grid" d="M0 {y:.1f}H{WIDTH}"/>'
                   f'<text x="-6" y="{y + 4:.1f}" text-anchor="end">10{superscript(power)}</text>')
    return out


def curve(axes, color, points):
    places = [(axes.at_x(size), axes.at_y(ms)) for size, ms in points]
    line = " ".join(f"{x:.1f},{y:.1f}" for x, y in places)
    dots = "".join(f'<circle cx="{x:.1f}" cy="{y:.1f}" r="2.5" fill="{color}"/>' for x, y in places)
    return f'<polyline points="{line}" stroke="{color}"/>{dots}'


def panel(axes, family, rows, left, top):
    out = [f'<g transform="translate({left} {top})">', *grid(axes),
           f'<text class="title" x="{WIDTH / 2}" y="-8" text-anchor="middle">{family}</text>']
    for engine in reversed(COLORS):  # ours on top
        points = [(size, row[engine]) for size, row in rows if row.get(engine)]
        if points:
            out.append(curve(axes, COLORS[engine], points))
    return out + ["</g>"]


def legend(engines, top):
    out = []
    for i, engine in enumerate(engines):
        x = LEFT + 155 * i
        out.append(f'<path d="M{x} {top}h24" stroke="{COLORS[engine]}" stroke-width="2"/>'
                   f'<text x="{x + 30}" y="{top + 4}">{engine}</text>')
    return out


def draw(times):
    """times: {(family, size): {engine: ms or None}}"""
    axes = Axes({key: {e: ms for e, ms in row.items() if e in COLORS} for key, row in times.items()})
    families = list(dict.fromkeys(family for family, _ in times))
    engines = [engine for engine in COLORS if any(row.get(engine) for row in times.values())]
    count = math.ceil(len(families) / IN_A_ROW)
    width = LEFT + IN_A_ROW * (WIDTH + GAP_X)
    height = TOP + count * (HEIGHT + GAP_Y) + 40
    out = [f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" '
           'font-family="sans-serif" font-size="12">',
           "<style>.grid{stroke:#ddd}.title{font-size:14px}polyline{fill:none;stroke-width:1.6}</style>",
           f'<rect width="{width}" height="{height}" fill="#fff"/>']
    for i, family in enumerate(families):
        rows = [(size, row) for (name, size), row in times.items() if name == family]
        left = LEFT + i % IN_A_ROW * (WIDTH + GAP_X)
        out += panel(axes, family, rows, left, TOP + i // IN_A_ROW * (HEIGHT + GAP_Y))
    out += legend(engines, height - 50)
    out.append(f'<text x="{LEFT}" y="{height - 18}">'
               "across: vertices; up: ms of CPU time</text>")
    return "\n".join(out + ["</svg>", ""])
