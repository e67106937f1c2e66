# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT
"""The program's icon, the glyphs of its controls and the maker's logo."""

from .svg import Drawing, lines, path, polar
from .tones import DARK, Tone


def app_icon(tone: Tone) -> str:
    """The clock in few strokes; every stroke is a pixel or more at side 16."""
    d = Drawing(128, 128)
    centre = (64, 64)
    d.circle(centre, 62, d.linear((24, 16), (104, 112), (0, tone.metal(0.86)), (0.5, tone.metal(0.56)),
                                  (1, tone.metal(0.30))))
    d.circle(centre, 54, d.radial((46, 40), 84, (0, tone.face(0.16)), (1, tone.face(-0.04))))
    quarters = [(polar(48, a, 64), polar(39, a, 64)) for a in (0, 90, 180, 270)]
    d.stroke(lines(*quarters), "#e8ebf0", 7, cap="round")
    d.stroke(lines([(64, 64), polar(26, 210, 64)]), "#ffffff", 12, cap="round")
    d.stroke(lines([(64, 64), polar(38, -54, 64)]), "#ffffff", 9.5, cap="round")
    d.circle(centre, 8.5, DARK.accent[0])
    return d.text()


def app_tray_icon_tmpl() -> str:
    """The icon as a template: black and transparent only, the system tints it."""
    d = Drawing(128, 128)
    d.ring((64, 64), 47, 60, "#000000")
    d.stroke(lines([(64, 64), polar(23, 210, 64)]), "#000000", 12, cap="round")
    d.stroke(lines([(64, 64), polar(32, -54, 64)]), "#000000", 10, cap="round")
    return d.text()


def _glyph(data: str, fill: str) -> str:
    d = Drawing(24, 24)
    d.fill(data, fill)
    return d.text()


# Filled outlines, so that a colour is one attribute. Grid of 24 with 4 free on every side, strokes of 2.
CHECK = "M9.5 18.21L4.29 13L5.71 11.59L9.5 15.38L18.29 6.59L19.71 8z"
TO_RIGHT = "M9 4.59L16.41 12L9 19.41L7.59 18L13.59 12L7.59 6z"
TO_LOWER = "M4.59 9L12 16.41L19.41 9L18 7.59L12 13.59L6 7.59z"
TO_UPPER = "M4.59 15L12 7.59L19.41 15L18 16.41L12 10.41L6 16.41z"
# Three quarters of a turn back to the start, with its arrow head.
RESET = "M12 5A8 8 0 1 1 4 13H6A6 6 0 1 0 12 7V10.5L7 6L12 1.5z"

COLOURS = {"black": "#000000", "white": "#ffffff"}


def glyphs() -> dict[str, str]:
    """The glyphs by file name; the two colours of one glyph differ in their fill only."""
    shapes = {"check": CHECK, "toright": TO_RIGHT, "tolower": TO_LOWER, "toupper": TO_UPPER}
    files = {f"{name}_{colour}.svg": _glyph(data, fill)
             for name, data in shapes.items() for colour, fill in COLOURS.items()}
    # One colour for both schemes: a grey as far from white as from the dark scheme's ground.
    files["reset_to_default.svg"] = _glyph(RESET, "#808080")
    return files


def logo() -> str:
    """The maker's mark: an M of two facets between two tapered hands."""
    d = Drawing(256, 126)
    shade, light = "#70757d", "#969ba3"
    d.fill(path([(78, 57), (78, 63), (8, 63)], [(178, 63), (178, 69), (248, 63)]), shade)
    d.fill(path([(78, 69), (78, 63), (8, 63)], [(178, 63), (178, 57), (248, 63)]), light)
    d.fill(path([(88, 111), (88, 15), (104, 15), (128, 62), (128, 92), (104, 46), (104, 111)]), shade)
    d.fill(path([(168, 111), (168, 15), (152, 15), (128, 62), (128, 92), (152, 46), (152, 111)]), light)
    return d.text()


def files(tone: Tone) -> dict[str, str]:
    """Every file of images/ by its name; the icon wears the given tone."""
    return {
        "app_icon.svg": app_icon(tone),
        "app_tray_icon_tmpl.svg": app_tray_icon_tmpl(),
        "marrowby_logo_gray.svg": logo(),
        **glyphs(),
    }
