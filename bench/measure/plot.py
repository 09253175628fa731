"""Draws growth curves as SVG, both axes logarithmic."""

import html
import math

WIDTH, HEIGHT = 800, 460
LEFT, RIGHT, TOP, BOTTOM = 80, 230, 40, 60
INKS = ["#0b6fb8", "#c2571a", "#2d8a4e", "#8a4fa8"]
GREY = "#767676"


def words(value, units):
    """1500000 -> "1.5 M" with units of ("", "k", "M")."""
    step = 0
    while value >= 1000 and step < len(units) - 1:
        value, step = value / 1000, step + 1
    return f"{value:g} {units[step]}".strip()


def seconds_in_words(value):
    for limit, factor, unit in ((1e-3, 1e6, "µs"), (1, 1e3, "ms")):
        if value < limit:
            return f"{value * factor:g} {unit}"
    return f"{value:g} s"


class Axis:
    """From the powers of ten around the values to places on the paper."""

    def __init__(self, values, start, end):
        self.low = math.floor(math.log10(min(values)))
        self.high = math.ceil(math.log10(max(values)))
        self.start, self.end = start, end

    def __call__(self, value):
        part = (math.log10(value) - self.low) / (self.high - self.low)
        return self.start + part * (self.end - self.start)

    def marks(self):
        return [10.0 ** power for power in range(self.low, self.high + 1)]


def text(x, y, content, anchor="middle", ink="#222", size=13):
    return (f'<text x="{x:.1f}" y="{y:.1f}" text-anchor="{anchor}" fill="{ink}" '
            f'font-size="{size}">{html.escape(content)}</text>')


def line(x1, y1, x2, y2, ink, width=1.0, dashes=""):
    return (f'<line x1="{x1:.1f}" y1="{y1:.1f}" x2="{x2:.1f}" y2="{y2:.1f}" stroke="{ink}" '
            f'stroke-width="{width}"{dashes}/>')


def grid(x, y):
    for mark in x.marks():
        yield line(x(mark), TOP, x(mark), HEIGHT - BOTTOM, "#e2e2e2")
        yield text(x(mark), HEIGHT - BOTTOM + 20, words(mark, ("B", "kB", "MB", "GB")), ink=GREY)
    for mark in y.marks():
        yield line(LEFT, y(mark), WIDTH - RIGHT, y(mark), "#e2e2e2")
        yield text(LEFT - 8, y(mark) + 4, seconds_in_words(mark), "end", GREY)


def labels(curves, y):
    """Each curve's name beside its end, none over another."""
    last = HEIGHT
    for curve, ink in sorted(curves, key=lambda pair: pair[0].points[-1][1]):
        place = min(y(curve.points[-1][1]) + 4, last - 18)
        last = place
        yield text(WIDTH - RIGHT + 8, place, f"{curve.name} (exponent {curve.exponent:.2f})",
                   "start", ink, 12)


def draw(title, axis_name, curves):
    """The picture's text."""
    x = Axis([size for curve in curves for size, _ in curve.points], LEFT, WIDTH - RIGHT)
    y = Axis([seconds for curve in curves for _, seconds in curve.points], HEIGHT - BOTTOM, TOP)
    inked = list(zip(curves, INKS))
    parts = [f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {HEIGHT}" '
             f'width="{WIDTH}" height="{HEIGHT}" font-family="sans-serif">',
             f'<title>{html.escape(title)}</title>',
             f'<rect width="{WIDTH}" height="{HEIGHT}" fill="#ffffff"/>',
             text(LEFT, 24, title, "start", size=15), *grid(x, y),
             text((LEFT + WIDTH - RIGHT) / 2, HEIGHT - 16, axis_name)]
    for curve, ink in inked:
        places = [(x(size), y(seconds)) for size, seconds in curve.points]
        joined = " ".join(f"{across:.1f},{up:.1f}" for across, up in places)
        parts.append(f'<polyline points="{joined}" fill="none" stroke="{ink}" stroke-width="2"/>')
        parts += [f'<circle cx="{across:.1f}" cy="{up:.1f}" r="3.5" fill="{ink}"/>'
                  for across, up in places]
    return "\n".join([*parts, *labels(inked, y), "</svg>", ""])
