#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT
"""Tells whether two pictures of a clock show that its second hand moved and the rest stayed.

ticking.py BEFORE.ppm AFTER.ppm

The pictures, of the same window and a second or more apart, are binary PPM files. A hand that
moved leaves two straight lines of changed pixels from near the centre outwards: where it was and
where it is. What changed beside these lines must be little: a digital time text, no more.
"""

import math
import re
import sys
from dataclasses import dataclass

CHANNEL_SUM = 60  # of 765: fainter changes are another hand's creeping edge, not a moved hand
HAND_RING = (0.25, 0.60)  # of the radius: every second hand reaches across this
HAND_COVER = 0.75  # of that ring's length must have changed along a hand's direction
SLICES = 180  # directions looked at, two degrees each
HAND_SLICES = 2  # to each side of a hand's direction belong to the hand
REST_LIMIT = 0.04  # of the face: changed pixels that no hand explains
HUB = 0.16  # of the radius: around the centre everything belongs to the hands


@dataclass
class Picture:
    width: int
    height: int
    pixels: bytes


def read_ppm(data: bytes) -> Picture:
    """Reads a binary PPM with one byte to a channel; ValueError for anything else."""
    header = re.match(rb"P6\s+(\d+)\s+(\d+)\s+255\s", data)
    if not header:
        raise ValueError("not a binary 8 bit PPM")
    width, height = int(header[1]), int(header[2])
    pixels = data[header.end():]
    if len(pixels) != width * height * 3:
        raise ValueError("the PPM has not as many pixels as it says")
    return Picture(width, height, pixels)


def changed_points(before: Picture, after: Picture) -> list[tuple[float, int]]:
    """The changed pixels inside the face, as (distance in radii, slice of direction)."""
    radius = min(before.width, before.height) / 2
    centre_x, centre_y = (before.width - 1) / 2, (before.height - 1) / 2
    points = []
    one, two = before.pixels, after.pixels
    for y in range(before.height):
        row = y * before.width * 3
        if one[row:row + before.width * 3] == two[row:row + before.width * 3]:
            continue
        for x in range(before.width):
            i = row + 3 * x
            difference = sum(abs(one[i + c] - two[i + c]) for c in range(3))
            if difference < CHANNEL_SUM:
                continue
            dx, dy = x - centre_x, y - centre_y
            distance = math.hypot(dx, dy) / radius
            turn = (math.atan2(dy, dx) / math.tau) % 1
            if distance <= 1:
                points.append((distance, int(turn * SLICES) % SLICES))
    return points


def near(one: int, other: int, reach: int = HAND_SLICES) -> bool:
    apart = abs(one - other) % SLICES
    return min(apart, SLICES - apart) <= reach


def hand_directions(points: list[tuple[float, int]]) -> list[int]:
    """The two slices along which most of the hands' ring changed, if it is enough to be hands."""
    bins = 20
    covered: list[set[int]] = [set() for _ in range(SLICES)]
    inner, outer = HAND_RING
    for distance, direction in points:
        if inner <= distance < outer:
            for step in (-1, 0, 1):
                place = int((distance - inner) / (outer - inner) * bins)
                covered[(direction + step) % SLICES].add(place)
    found: list[int] = []
    for direction in sorted(range(SLICES), key=lambda d: -len(covered[d])):
        if len(covered[direction]) < HAND_COVER * bins or len(found) == 2:
            break
        if all(not near(direction, other) for other in found):
            found.append(direction)
    return found


def verdict(before: Picture, after: Picture) -> str:
    """Empty when the clock ticked, otherwise what speaks against it."""
    if (before.width, before.height) != (after.width, after.height):
        return "the window changed its size"
    points = changed_points(before, after)
    if not points:
        return "nothing moved"
    hands = hand_directions(points)
    if len(hands) < 2:
        return f"{len(points)} pixels changed, but no hand moved"
    rest = sum(
        1 for distance, direction in points
        if distance > HUB
        and not any(near(direction, hand) or near(direction, hand + SLICES // 2) for hand in hands))
    face = math.pi * (min(before.width, before.height) / 2) ** 2
    if rest > REST_LIMIT * face:
        return f"more than a hand moved: {rest} other pixels changed"
    return ""


def main(arguments: list[str]) -> int:
    before, after = (read_ppm(open(name, "rb").read()) for name in arguments)
    reason = verdict(before, after)
    print(reason or "a second hand moved and the rest of the face stayed")
    return 1 if reason else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
