# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT
"""The layers of the clock face, in units of their 1024 by 1024 view box."""

from .svg import Drawing, lines, path, polar
from .tones import Family, Tone

CENTRE = (512.0, 512.0)

# Radii, from the outside in. The outline lies a pixel inside the window's round mask at side 320.
OUTLINE = 508.0
BEZEL_FACE = 504.0
BEZEL_LIP = 488.0
FACE = 483.0
TRACK_OUTER = 475.0
TRACK_INNER = 457.0
RING_INNER = 450.0
MARK_OUTER = 441.0
MARK_INNER = 392.0  # leaves the date's line free between the marks at two and ten
QUARTER_INNER = 372.0


def lit(radius: float) -> tuple[float, float]:
    """The point of a circle that faces the light."""
    return polar(radius, -130.0)


def shaded(radius: float) -> tuple[float, float]:
    """The point of a circle that turns away from it."""
    return polar(radius, 50.0)


def base(tone: Tone) -> str:
    """The plate with its bezel; complete by itself, since the face background may be hidden."""
    family = tone.family
    d = Drawing(1024, 1024)
    plate = d.linear(lit(FACE), shaded(FACE),
                     (0, tone.face(family.plate + family.glow / 2)),
                     (1, tone.face(family.plate - family.fall / 2)))
    d.circle(CENTRE, BEZEL_LIP, plate)
    _bezel(d, tone)
    return d.text()


def _bezel(d: Drawing, tone: Tone) -> None:
    family, metal = tone.family, tone.metal
    rim = d.linear(lit(OUTLINE), shaded(OUTLINE),
                   (0, metal((family.bezel_rim + family.bezel_lit) / 2)),
                   (0.35, metal(family.bezel_rim)), (1, metal(family.bezel_rim)))
    body = d.linear(lit(BEZEL_FACE), shaded(BEZEL_FACE),
                    (0, metal(family.bezel_lit)),
                    (0.22, metal((family.bezel_lit + family.bezel_body) / 2)),
                    (0.5, metal(family.bezel_body)),
                    (0.82, metal(family.bezel_shade)),
                    (1, metal((family.bezel_shade + family.bezel_body) / 2)))
    lip = d.linear(lit(BEZEL_LIP), shaded(BEZEL_LIP),
                   (0, metal(family.bezel_shade)),
                   (0.55, metal((family.bezel_shade + family.bezel_body) / 2)),
                   (1, metal(family.bezel_lit)))
    highlight = d.linear(lit(BEZEL_FACE), CENTRE, (0, "#ffffff", 0.95), (0.55, "#ffffff", 0.25),
                         (1, "#ffffff", 0))
    d.ring(CENTRE, BEZEL_LIP - 1, OUTLINE, rim)
    d.ring(CENTRE, BEZEL_LIP - 1, BEZEL_FACE, body)
    d.ring(CENTRE, BEZEL_FACE - 4.5, BEZEL_FACE - 1.5, highlight)
    d.ring(CENTRE, FACE - 1, BEZEL_LIP, lip)


def background(tone: Tone) -> str:
    """The face: a matte disc in a soft light, and the ring that carries the minute track."""
    family = tone.family
    d = Drawing(1024, 1024)
    light = d.radial(polar(230, -128), 780,
                     (0, tone.face(family.glow, 0.95)),
                     (0.45, tone.face(family.glow * 0.18)),
                     (1, tone.face(-family.fall)))
    shadow = d.linear(lit(FACE), shaded(FACE), (0, "#000000", family.inset[0]),
                      (0.5, "#000000", family.inset[0] * 0.25), (1, "#000000", 0))
    reflection = d.linear(CENTRE, shaded(FACE), (0, "#ffffff", 0), (1, "#ffffff", family.inset[1]))
    d.circle(CENTRE, FACE, light)
    d.ring(CENTRE, RING_INNER, FACE, *family.ring)
    d.ring(CENTRE, RING_INNER - 1, RING_INNER + 1, *family.hairline)
    for width, opacity in ((4, 1.0), (10, 0.4), (18, 0.25)):
        d.ring(CENTRE, FACE - width, FACE, shadow, opacity)
    d.ring(CENTRE, FACE - 2, FACE, reflection)
    return d.text()


def dial(family: Family) -> str:
    """The minute track and the twelve applied marks."""
    d = Drawing(1024, 1024)
    d.stroke(lines(*(_tick(minute, TRACK_INNER) for minute in range(60) if minute % 5)),
             family.track, 3.2)
    d.stroke(lines(*(_tick(minute, TRACK_INNER - 3) for minute in range(0, 60, 5))),
             family.five, 7)
    bars = [bar for hour in range(12) for bar in _bars(hour)]
    edges = [[offset_point for offset_point in _bar_outline(*bar)] for bar in bars]
    d.stroke(path(*edges), family.mark_edge[0], 5, family.mark_edge[1])
    for bar in bars:
        for points, light in _facets(*bar):
            d.fill(path(points), _between(family.mark[0], family.mark[1], light))
    return d.text()


def _tick(minute: int, inner: float):
    return polar(TRACK_OUTER, 6 * minute), polar(inner, 6 * minute)


def _bars(hour: int):
    """The bars of a mark as (degrees, sideways offset, inner radius, half width)."""
    degrees = 30.0 * hour - 90.0
    if hour == 0:
        return [(degrees, -14.5, QUARTER_INNER, 9.5), (degrees, 14.5, QUARTER_INNER, 9.5)]
    if hour % 3 == 0:
        return [(degrees, 0.0, QUARTER_INNER, 12.0)]
    return [(degrees, 0.0, MARK_INNER, 6.5)]


def _place(degrees: float, radius: float, sideways: float) -> tuple[float, float]:
    x, y = polar(radius, degrees)
    dx, dy = polar(sideways, degrees + 90, 0.0)
    return x + dx, y + dy


def _bar_outline(degrees, offset, inner, half):
    return [_place(degrees, MARK_OUTER, offset - half), _place(degrees, MARK_OUTER, offset + half),
            _place(degrees, inner, offset + half), _place(degrees, inner, offset - half)]


def _facets(degrees, offset, inner, half):
    """The two long facets of a bar, each with the share of light that falls on it."""
    for side in (-1, 1):
        outer_edge = offset + side * half
        points = [_place(degrees, MARK_OUTER, outer_edge), _place(degrees, MARK_OUTER, offset),
                  _place(degrees, inner, offset), _place(degrees, inner, outer_edge)]
        nx, ny = polar(1.0, degrees + 90 * side, 0.0)
        lx, ly = polar(1.0, -130, 0.0)
        yield points, 0.5 + 0.5 * (nx * lx + ny * ly)


def _between(dark: str, light: str, share: float) -> str:
    pairs = zip(bytes.fromhex(dark[1:]), bytes.fromhex(light[1:]))
    return "#" + "".join(f"{round(a + (b - a) * share):02x}" for a, b in pairs)


def _hand(d: Drawing, family: Family, outline) -> None:
    """A two-facet hand; outline holds (distance, half width) from the tail to the tip."""
    upper = [(512 + x, 512 - w) for x, w in outline]
    lower = [(512 + x, 512 + w) for x, w in outline]
    whole = upper + [p for p in reversed(lower) if p not in upper]
    tail, tip = outline[0][0], outline[-1][0]
    ridge = [(512 + tail, 512), (512 + tip, 512)]
    d.stroke(path(whole), family.hand_edge[0], 7, family.hand_edge[1])
    d.fill(path(whole), family.hand[0])
    d.fill(path(upper + ridge[::-1]), family.hand[1])
    d.stroke(lines([(512 + tail + 10, 512), (512 + tip - 14, 512)]), family.ridge[0], 1.6,
             family.ridge[1])


def _cap(d: Drawing, family: Family, radius: float) -> None:
    rim, body, light = family.cap
    d.circle(CENTRE, radius + 3.5, family.hand_edge[0], family.hand_edge[1])
    d.circle(CENTRE, radius, rim)
    d.circle(CENTRE, radius - 3, d.radial(CENTRE, radius, (0, light), (0.55, body), (1, body)))


def hand_hour(family: Family) -> str:
    """The hour hand, towards three o'clock."""
    d = Drawing(1024, 1024)
    _hand(d, family, [(-62, 12), (30, 20), (236, 12.5), (276, 0)])
    _cap(d, family, 34)
    return d.text()


def hand_minute(family: Family) -> str:
    """The minute hand, towards three o'clock. Its cap serves when the second hand is hidden."""
    d = Drawing(1024, 1024)
    _hand(d, family, [(-76, 9), (30, 14.5), (382, 7.5), (428, 0)])
    _cap(d, family, 27)
    return d.text()


def hand_second(family: Family) -> str:
    """The second hand, towards three o'clock, with its counterweight and the top of the cap."""
    d = Drawing(1024, 1024)
    accent, shade = family.accent
    needle = path([(512 - 132, 509.2), (512 + 466, 510.6), (512 + 466, 513.4), (512 - 132, 514.8)])
    weight = path([(512 - 150, 503), (512 - 72, 506), (512 - 72, 518), (512 - 150, 521)])
    for outline in (needle, weight):
        d.stroke(outline, family.hand_edge[0], 5, family.hand_edge[1] / 2)
    d.fill(needle, accent)
    d.fill(weight, accent)
    d.circle(CENTRE, 18.5, family.hand_edge[0], family.hand_edge[1])
    d.circle(CENTRE, 16, shade)
    d.circle(CENTRE, 14, accent)
    d.circle(CENTRE, 5, family.cap[0])
    return d.text()


def grip(tone: Tone) -> str:
    """The grip for the top-left corner: its inner edge runs along the clock's outline."""
    body, edge = tone.family.grip
    d = Drawing(64, 64)
    shape = "M9 3H52Q58 3 55 7.5A96 96 0 0 0 7.5 55Q3 58 3 52V9Q3 3 9 3z"
    d.stroke(shape, tone.at(1.2 - edge, 0.6) if edge > 0.5 else "#ffffff", 5)
    d.fill(shape, d.linear((3, 3), (36, 36), (0, tone.at(body + 0.14)), (1, tone.at(body - 0.06))))
    d.stroke("M13 27L27 13M13 39L39 13", tone.at(edge, 0.4), 3.2, cap="round")
    return d.text()
