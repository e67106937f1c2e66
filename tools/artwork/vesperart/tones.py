# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT
"""The ten tones and the two families, as colours in OKLCH (lightness 0..1, chroma, hue in degrees).

A tone is one row; every colour of its three own layers follows from that row. A family is what five
tones share: how far highlights and shadows lie from the face's own lightness, and the colours of the
dial and the hands, which must stand out from all five faces.
"""

from dataclasses import dataclass
from math import cos, radians, sin


@dataclass(frozen=True)
class Family:
    """What the five dark or the five light tones have in common."""

    name: str
    glow: float  # lightness added where the light falls on the face
    fall: float  # lightness taken away at the far edge of the face
    plate: float  # lightness added to the plate below the face
    bezel_lit: float  # lightness of the bezel where it faces the light
    bezel_body: float
    bezel_shade: float  # and where it turns away
    bezel_rim: float  # outermost line, which draws the outline on any wallpaper
    bezel_chroma: float  # share of the tone's chroma that the metal takes on
    ring: tuple[str, float]  # tint of the ring that carries the minute track
    hairline: tuple[str, float]  # fine line along the inside of that ring
    shine: tuple[float, float]  # opacity of the bezel's highlight and of the one across from it
    inset: float  # opacity of the bezel's shadow on the face
    track: str  # minute ticks
    five: str  # every fifth tick
    mark: tuple[str, str]  # applied marks: facet in the shade, facet in the light
    mark_edge: tuple[str, float]
    hand: tuple[str, str]  # facet in the shade, facet in the light
    hand_edge: tuple[str, float]  # soft line around a hand, parts it from what lies below
    ridge: tuple[str, float]  # light along the ridge between the facets
    accent: tuple[str, str]  # second hand: colour, and its own shade
    cap: tuple[str, str, str]  # centre cap: rim, body, light
    grip: tuple[float, float]  # lightness of the grip's body and of its edge


DARK = Family(
    name="dark",
    glow=0.062, fall=0.078, plate=-0.03,
    bezel_lit=0.76, bezel_body=0.40, bezel_shade=0.23, bezel_rim=0.12, bezel_chroma=0.24,
    ring=("#000000", 0.16), hairline=("#ffffff", 0.13), shine=(0.9, 0.3), inset=0.55,
    track="#b4bac4", five="#e8ebf0",
    mark=("#a9b0bb", "#f6f8fb"), mark_edge=("#000000", 0.28),
    hand=("#b3b9c4", "#f7f9fc"), hand_edge=("#000000", 0.4), ridge=("#ffffff", 0.85),
    accent=("#ff9350", "#d96a24"),
    cap=("#59606c", "#c3c9d3", "#f7f9fc"),
    grip=(0.46, 0.90),
)

LIGHT = Family(
    name="light",
    glow=0.052, fall=0.048, plate=-0.03,
    bezel_lit=0.995, bezel_body=0.86, bezel_shade=0.64, bezel_rim=0.52, bezel_chroma=0.5,
    ring=("#ffffff", 0.34), hairline=("#1c222c", 0.16), shine=(0.95, 0.55), inset=0.2,
    track="#59616e", five="#262b34",
    mark=("#1a1e26", "#5b6371"), mark_edge=("#ffffff", 0.45),
    hand=("#171b22", "#4c5461"), hand_edge=("#ffffff", 0.6), ridge=("#8a93a1", 0.8),
    accent=("#ba2d13", "#8a200c"),
    cap=("#0e1116", "#363d48", "#6a7280"),
    grip=(0.80, 0.38),
)


@dataclass(frozen=True)
class Tone:
    """One colour tone: its folder below themes/basic and the colour of its face."""

    folder: str
    family: Family
    lightness: float
    chroma: float
    hue: float

    @property
    def owns_dial(self) -> bool:
        """The grey tone of each family carries the dial and the hands of all five."""
        return self.folder.endswith("_gray")

    def face(self, shift: float = 0.0, chroma: float = 1.0) -> str:
        """The face's colour, lighter by shift, with a share of its chroma."""
        return oklch(self.lightness + shift, self.chroma * chroma, self.hue)

    def metal(self, lightness: float) -> str:
        """A metal of that lightness, tinted by the tone."""
        return oklch(lightness, self.chroma * self.family.bezel_chroma, self.hue)

    def at(self, lightness: float, chroma: float = 1.0) -> str:
        """The tone's hue at another lightness."""
        return oklch(lightness, self.chroma * chroma, self.hue)


TONES = (
    Tone("dark_blue", DARK, 0.287, 0.092, 262.0),
    Tone("dark_red", DARK, 0.298, 0.094, 19.0),
    Tone("dark_green", DARK, 0.310, 0.062, 160.0),
    Tone("dark_yellow", DARK, 0.311, 0.064, 88.0),
    Tone("dark_gray", DARK, 0.290, 0.005, 262.0),
    Tone("light_blue", LIGHT, 0.893, 0.056, 256.0),
    Tone("light_red", LIGHT, 0.897, 0.041, 18.0),
    Tone("light_green", LIGHT, 0.910, 0.044, 152.0),
    Tone("light_yellow", LIGHT, 0.925, 0.053, 94.0),
    Tone("light_gray", LIGHT, 0.925, 0.002, 262.0),
)


def oklch(lightness: float, chroma: float, hue: float) -> str:
    """The sRGB colour as #rrggbb. Outside of the gamut the chroma gives way, so that the hue stays."""
    lightness = min(1.0, max(0.0, lightness))
    while True:
        channels = _linear_srgb(lightness, chroma * cos(radians(hue)), chroma * sin(radians(hue)))
        if chroma <= 0.0 or all(-1e-4 <= c <= 1.0001 for c in channels):
            return "#" + "".join(f"{_encode(c):02x}" for c in channels)
        chroma = max(0.0, chroma - 0.001)


def _linear_srgb(lightness: float, a: float, b: float) -> tuple[float, float, float]:
    # The matrices of OKLab's definition.
    long = (lightness + 0.3963377774 * a + 0.2158037573 * b) ** 3
    medium = (lightness - 0.1055613458 * a - 0.0638541728 * b) ** 3
    short = (lightness - 0.0894841775 * a - 1.2914855480 * b) ** 3
    return (
        4.0767416621 * long - 3.3077115913 * medium + 0.2309699292 * short,
        -1.2684380046 * long + 2.6097574011 * medium - 0.3413193965 * short,
        -0.0041960863 * long - 0.7034186147 * medium + 1.7076147010 * short,
    )


def _encode(channel: float) -> int:
    channel = min(1.0, max(0.0, channel))
    curved = 12.92 * channel if channel <= 0.0031308 else 1.055 * channel ** (1 / 2.4) - 0.055
    return round(255 * curved)
