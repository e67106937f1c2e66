# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT
"""Writes SVG that every renderer draws alike: shapes, strokes, gradients in user space, opacity.

No element refers to another but through a gradient's id, and no opacity is nested in another: some
renderers keep only the innermost one.
"""

from math import cos, radians, sin

HEADER = """<!--
SPDX-FileCopyrightText: 2026 Marrowby Inc.
SPDX-License-Identifier: MIT
Written by tools/artwork/generate.py
-->
"""


def num(value: float) -> str:
    """A number in the fewest characters, to a hundredth."""
    text = f"{value:.2f}".rstrip("0").rstrip(".")
    return "0" if text in ("-0", "") else text


def polar(radius: float, degrees: float, centre: float = 512.0) -> tuple[float, float]:
    """The point at that distance from the centre; 0 degrees is three o'clock, clockwise."""
    angle = radians(degrees)
    return centre + radius * cos(angle), centre + radius * sin(angle)


def path(*polygons) -> str:
    """Path data of closed polygons, each a sequence of points."""
    return "".join(_points(p) + "z" for p in polygons)


def lines(*polylines) -> str:
    """Path data of open lines, each a sequence of points."""
    return "".join(_points(p) for p in polylines)


def _points(points) -> str:
    return "M" + "L".join(f"{num(x)} {num(y)}" for x, y in points)


def crescent(radius: float, thickness: float, degrees: float, spread: float = 90.0) -> str:
    """A sickle along the inside of a circle, thickest at the angle, running out at spread on both sides."""
    x1, y1 = polar(radius, degrees - spread)
    x2, y2 = polar(radius, degrees + spread)
    chord = radius * sin(radians(spread))
    rise = radius * (1 - cos(radians(spread))) - thickness
    inner = (chord * chord + rise * rise) / (2 * rise)
    return (f"M{num(x1)} {num(y1)}A{num(radius)} {num(radius)} 0 0 1 {num(x2)} {num(y2)}"
            f"A{num(inner)} {num(inner)} 0 0 0 {num(x1)} {num(y1)}z")


class Drawing:
    """One SVG file in the making."""

    def __init__(self, width: int, height: int):
        self._width, self._height = width, height
        self._defs: list[str] = []
        self._body: list[str] = []

    def linear(self, start, end, *stops) -> str:
        """Adds a linear gradient; a stop is (offset, colour) or (offset, colour, opacity)."""
        (x1, y1), (x2, y2) = start, end
        at = f'x1="{num(x1)}" y1="{num(y1)}" x2="{num(x2)}" y2="{num(y2)}"'
        return self._gradient("linearGradient", at, stops)

    def radial(self, centre, radius, *stops) -> str:
        """Adds a radial gradient with its focus in its centre."""
        at = f'cx="{num(centre[0])}" cy="{num(centre[1])}" r="{num(radius)}"'
        return self._gradient("radialGradient", at, stops)

    def _gradient(self, kind, at, stops) -> str:
        name = f"g{len(self._defs) + 1}"
        inner = "".join(_stop(*stop) for stop in stops)
        self._defs.append(f'<{kind} id="{name}" gradientUnits="userSpaceOnUse" {at}>{inner}</{kind}>')
        return f"url(#{name})"

    def circle(self, centre, radius, fill, opacity=1.0) -> None:
        """A filled disc."""
        self._shape(f'circle cx="{num(centre[0])}" cy="{num(centre[1])}" r="{num(radius)}"',
                    f'fill="{fill}"', opacity)

    def ring(self, centre, inner, outer, paint, opacity=1.0) -> None:
        """A filled ring: of two circles with opposite turns, since renderers flatten strokes differently."""
        self.fill(_circle(centre, outer, 1) + _circle(centre, inner, 0), paint, opacity)

    def fill(self, data, fill, opacity=1.0) -> None:
        """A filled path."""
        self._shape(f'path d="{data}"', f'fill="{fill}"', opacity)

    def stroke(self, data, paint, width, opacity=1.0, cap="butt", join="round") -> None:
        """A stroked path."""
        ends = "" if cap == "butt" else f' stroke-linecap="{cap}"'
        self._shape(f'path d="{data}"',
                    f'fill="none" stroke="{paint}" stroke-width="{num(width)}" '
                    f'stroke-linejoin="{join}"{ends}', opacity)

    def _shape(self, shape, paint, opacity) -> None:
        alpha = "" if opacity >= 1.0 else f' opacity="{num(opacity)}"'
        self._body.append(f"<{shape} {paint}{alpha}/>")

    def text(self) -> str:
        """The whole file."""
        defs = ["<defs>", *self._defs, "</defs>"] if self._defs else []
        head = (f'<svg xmlns="http://www.w3.org/2000/svg" width="100%" height="100%" '
                f'viewBox="0 0 {self._width} {self._height}">')
        return HEADER + "\n".join([head, *defs, *self._body, "</svg>"]) + "\n"


def _circle(centre, radius, sweep) -> str:
    (x, y), r = centre, num(radius)
    half = f"A{r} {r} 0 1 {sweep} "
    return (f"M{num(x - radius)} {num(y)}{half}{num(x + radius)} {num(y)}"
            f"{half}{num(x - radius)} {num(y)}z")


def _stop(offset, colour, opacity=1.0) -> str:
    alpha = "" if opacity >= 1.0 else f' stop-opacity="{num(opacity)}"'
    return f'<stop offset="{num(offset)}" stop-color="{colour}"{alpha}/>'
