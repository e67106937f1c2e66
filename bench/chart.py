# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT
"""Draws the figures as one SVG picture: bars for the clocks, and the cost by the side of Vesper."""

from collections.abc import Mapping, Sequence
from xml.sax.saxutils import escape

WIDTH = 900
MARGIN = 20
LABEL = 190  # for the names beside the bars
PANEL_WIDTH = (WIDTH - 3 * MARGIN) // 2
BAR, GAP, HEAD = 18, 8, 44
SIZES_HEIGHT = 220

PANELS = [
    ("cpu_ms", "Processor time, ms a second", 2),
    ("wake_ups", "Wake-ups a second", 1),
    ("pss_mib", "Proportional memory, MiB", 1),
    ("start_ms", "From start to the painted clock, ms", 0),
]

OURS, OTHER, INK, PALE = "#2f6fb0", "#a8b4c0", "#1d2733", "#d5dbe1"


def text(x: float, y: float, words: str, size: int = 12, anchor: str = "start",
         weight: str = "normal") -> str:
    return (f'<text x="{x:.1f}" y="{y:.1f}" font-size="{size}" text-anchor="{anchor}" '
            f'font-weight="{weight}" fill="{INK}">{escape(words)}</text>')


def bars(x: float, y: float, heading: str, values: Sequence[tuple[str, float]],
         digits: int) -> list[str]:
    parts = [text(x, y + 18, heading, 14, weight="bold")]
    room = PANEL_WIDTH - LABEL - 60
    largest = max((value for _, value in values), default=0) or 1
    for i, (name, value) in enumerate(values):
        top = y + HEAD - 10 + i * (BAR + GAP)
        colour = OURS if name == "Vesper" else OTHER
        parts.append(text(x + LABEL - 8, top + 13, name, anchor="end"))
        length = room * value / largest
        parts.append(f'<rect x="{x + LABEL:.1f}" y="{top:.1f}" width="{max(1.0, length):.1f}" '
                     f'height="{BAR}" fill="{colour}"/>')
        parts.append(text(x + LABEL + length + 6, top + 13, f"{value:.{digits}f}"))
    return parts


def curve(x: float, y: float, points: Sequence[tuple[int, float]]) -> list[str]:
    """Processor time over the side of the window, both from nought."""
    heading = "Vesper's processor time by the side of its window, ms a second"
    parts = [text(x, y + 18, heading, 14, weight="bold")]
    left, bottom = x + 40, y + SIZES_HEIGHT - 24
    room_x, room_y = WIDTH - 2 * MARGIN - 110, SIZES_HEIGHT - HEAD - 34
    widest, highest = max(side for side, _ in points), max(value for _, value in points) or 1
    places = [(left + room_x * side / widest, bottom - room_y * value / highest)
              for side, value in points]
    parts.append(f'<path d="M{left} {bottom - room_y} V{bottom} H{left + room_x}" fill="none" '
                 f'stroke="{PALE}"/>')
    line = " ".join(f"{px:.1f},{py:.1f}" for px, py in places)
    parts.append(f'<polyline points="{line}" fill="none" stroke="{OURS}" stroke-width="2"/>')
    for (px, py), (side, value) in zip(places, points):
        parts.append(f'<circle cx="{px:.1f}" cy="{py:.1f}" r="4" fill="{OURS}"/>')
        parts.append(text(px, py - 10, f"{value:.1f}", anchor="middle"))
        parts.append(text(px, bottom + 16, str(side), anchor="middle"))
    return parts


def draw_chart(compared: Sequence[tuple[str, Mapping[str, float]]],
               sizes: Sequence[tuple[int, float]], state: str) -> str:
    """compared: the name and the figures of each clock; sizes: side and processor time."""
    panel_height = HEAD + len(compared) * (BAR + GAP) + 10
    parts: list[str] = []
    y = MARGIN
    if compared:
        for i, (key, heading, digits) in enumerate(PANELS):
            x = MARGIN + (i % 2) * (PANEL_WIDTH + MARGIN)
            values = [(name, row[key]) for name, row in compared]
            parts += bars(x, y + (i // 2) * panel_height, heading, values, digits)
        y += 2 * panel_height
    if len(sizes) > 1:
        parts += curve(MARGIN, y, sizes)
        y += SIZES_HEIGHT
    parts.append(text(MARGIN, y + 24, state, 11))
    height = y + 24 + MARGIN
    return "\n".join([
        f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{height}" '
        f'viewBox="0 0 {WIDTH} {height}" font-family="DejaVu Sans, sans-serif">',
        f'<rect width="{WIDTH}" height="{height}" fill="white"/>', *parts, "</svg>", ""])
