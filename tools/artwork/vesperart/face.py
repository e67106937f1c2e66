# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT
"""The layers of the clock face, in units of their 1024 by 1024 view box."""

from .svg import Drawing, crescent, lines, path, polar
from .tones import Family, Tone

CENTRE = (512.0, 512.0)

# Radii, from the outside in. The outline lies a pixel inside the window's round mask at side 320.
OUTLINE = 508.0
BEZEL_FACE = 504.0
BEZEL_LIP = 488.0
FACE = 483.0
TRACK_OUTER = 475.0
TRACK_INNER = 459.0
RING_INNER = 450.0
MARK_OUTER = 442.0
MARK_INNER = 391.0  # leaves the date's line free between the marks at two and ten
QUARTER_INNER = 368.0


LIGHT_FROM = -130.0  # degrees: the light comes from the upper left


def lit(radius: float) -> tuple[float, float]:
    """The point of a circle that faces the light."""
    return polar(radius, LIGHT_FROM)


def shaded(radius: float) -> tuple[float, float]:
    """The point of a circle that turns away from it."""
    return polar(radius, LIGHT_FROM + 180)


def base(tone: Tone) -> str:
    """The plate with its bezel; complete by itself, since the face background may be hidden."""
    family, metal = tone.family, tone.metal
    d = Drawing(1024, 1024)
    body = d.linear(lit(BEZEL_FACE), shaded(BEZEL_FACE),
                    (0, metal(family.bezel_lit)),
                    (0.18, metal((family.bezel_lit + family.bezel_body) / 2)),
                    (0.48, metal(family.bezel_body)),
                    (0.8, metal(family.bezel_shade)),
                    (1, metal((family.bezel_shade + family.bezel_body) / 2)))
    lip = d.linear(lit(BEZEL_LIP), shaded(BEZEL_LIP),
                   (0, metal(family.bezel_shade)),
                   (0.5, metal((family.bezel_shade + family.bezel_body) / 2)),
                   (1, metal(family.bezel_lit)))
    plate = d.linear(lit(FACE), shaded(FACE),
                     (0, tone.face(family.plate + family.glow / 2)),
                     (1, tone.face(family.plate - family.fall / 2)))
    d.circle(CENTRE, OUTLINE, metal(family.bezel_rim))
    d.circle(CENTRE, BEZEL_FACE, body)
    d.fill(crescent(BEZEL_FACE - 1, 3.4, LIGHT_FROM, 80), "#ffffff", family.shine[0])
    d.fill(crescent(BEZEL_FACE - 1, 3, LIGHT_FROM + 180, 60), "#ffffff", family.shine[1])
    d.circle(CENTRE, BEZEL_LIP, lip)
    d.circle(CENTRE, FACE, plate)
    return d.text()


def background(tone: Tone) -> str:
    """The face: a matte disc in a soft light, and the ring that carries the minute track."""
    family = tone.family
    d = Drawing(1024, 1024)
    light = d.radial(polar(250, LIGHT_FROM), 790,
                     (0, tone.face(family.glow)),
                     (0.3, tone.face(family.glow * 0.55)),
                     (0.62, tone.face(-family.fall * 0.15)),
                     (1, tone.face(-family.fall, 0.94)))
    # The bezel's shadow: everything outside of a circle that lies away from the light.
    shadow = d.radial(polar(11, LIGHT_FROM + 180), 498,
                      (0.94, "#000000", 0), (0.972, "#000000", family.inset * 0.3),
                      (1, "#000000", family.inset))
    d.circle(CENTRE, FACE, light)
    d.ring(CENTRE, RING_INNER, FACE, *family.ring)
    d.ring(CENTRE, RING_INNER - 1, RING_INNER + 1, *family.hairline)
    d.circle(CENTRE, FACE, shadow)
    return d.text()


def dial(family: Family) -> str:
    """The minute track and the twelve applied marks."""
    d = Drawing(1024, 1024)
    d.stroke(lines(*(_tick(minute, TRACK_INNER) for minute in range(60) if minute % 5)),
             family.track, 3.6)
    d.stroke(lines(*(_tick(minute, TRACK_INNER - 4) for minute in range(0, 60, 5))),
             family.five, 5.5)
    bars = [bar for hour in range(12) for bar in _bars(hour)]
    d.stroke(path(*(_bar_outline(*bar) for bar in bars)), family.mark_edge[0], 5, family.mark_edge[1])
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
        lx, ly = polar(1.0, LIGHT_FROM, 0.0)
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
    d.stroke(path(whole), family.hand_edge[0], 7, family.hand_edge[1])
    d.fill(path(whole), family.hand[0])
    d.fill(path(upper + [(512 + tip, 512), (512 + tail, 512)]), family.hand[1])
    d.stroke(lines([(512 + tail + 8, 512), (512 + tip - 16, 512)]), family.ridge[0], 1.6,
             family.ridge[1])


def _cap(d: Drawing, family: Family, radius: float) -> None:
    rim, body, light = family.cap
    d.circle(CENTRE, radius + 3.5, family.hand_edge[0], family.hand_edge[1])
    d.circle(CENTRE, radius, rim)
    d.circle(CENTRE, radius - 2.5, d.radial(CENTRE, radius, (0, light), (0.5, body), (1, body)))


def hand_hour(family: Family) -> str:
    """The hour hand, towards three o'clock."""
    d = Drawing(1024, 1024)
    _hand(d, family, [(-66, 7), (34, 19), (240, 12), (284, 0)])
    _cap(d, family, 32)
    return d.text()


def hand_minute(family: Family) -> str:
    """The minute hand, towards three o'clock. Its cap serves when the second hand is hidden."""
    d = Drawing(1024, 1024)
    _hand(d, family, [(-84, 5.5), (34, 13.5), (396, 7.5), (446, 0)])
    _cap(d, family, 26)
    return d.text()


def hand_second(family: Family) -> str:
    """The second hand, towards three o'clock, with its counterweight and the top of the cap."""
    d = Drawing(1024, 1024)
    accent, shade = family.accent
    needle = ("M352 503.5L512 507.8L984 509.6V514.4L512 516.2L352 520.5"
              "A8.5 8.5 0 0 1 352 503.5z")
    d.stroke(needle, family.hand_edge[0], 5, family.hand_edge[1] * 0.5)
    d.fill(needle, accent)
    d.circle(CENTRE, 19, family.hand_edge[0], family.hand_edge[1])
    d.circle(CENTRE, 16.5, shade)
    d.circle(CENTRE, 14.5, accent)
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
