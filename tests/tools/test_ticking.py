#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT
"""Tests of tools/desktop/ticking.py, on pictures drawn here."""

import math
import sys
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parents[2] / "tools" / "desktop"))

from ticking import Picture, read_ppm, verdict  # noqa: E402  (the line above finds it)

SIDE = 120


def clock(second: int, *, hand: bool = True, text: int = 0, minute: int = 20) -> Picture:
    """A dark face with a minute hand, a second hand and a text field of the given grey."""
    pixels = bytearray(b"\x20\x20\x60" * SIDE * SIDE)

    def dot(x: float, y: float, colour: bytes) -> None:
        i = 3 * (round(y) * SIDE + round(x))
        pixels[i:i + 3] = colour

    def line(turn: float, length: float, colour: bytes) -> None:
        angle = math.tau * turn - math.tau / 4
        centre = (SIDE - 1) / 2
        for step in range(4 * SIDE):
            reach = length * SIDE / 2 * step / (4 * SIDE)
            dot(centre + reach * math.cos(angle), centre + reach * math.sin(angle), colour)

    for y in range(85, 95):
        for x in range(45, 75):
            dot(x, y, bytes([text] * 3))
    line(minute / 60, 0.8, b"\xff\xff\xff")
    if hand:
        line(second / 60, 0.85, b"\xff\x80\x00")
    return Picture(SIDE, SIDE, bytes(pixels))


def filled(colour: bytes) -> Picture:
    return Picture(SIDE, SIDE, colour * SIDE * SIDE)


class Verdict(unittest.TestCase):
    def test_a_moved_second_hand_passes(self) -> None:
        for second in range(60):
            with self.subTest(second=second):
                self.assertEqual(verdict(clock(second), clock((second + 1) % 60, text=10)), "")

    def test_a_still_clock_fails(self) -> None:
        self.assertEqual(verdict(clock(7), clock(7)), "nothing moved")

    def test_a_changing_text_alone_fails(self) -> None:
        self.assertIn("no hand moved", verdict(clock(7, text=0), clock(7, text=255)))

    def test_a_hand_that_only_appears_fails(self) -> None:
        self.assertIn("no hand moved", verdict(clock(7, hand=False), clock(8)))

    def test_another_face_fails(self) -> None:
        other = clock(8)
        bright = Picture(SIDE, SIDE, bytes(min(255, 100 + v) for v in other.pixels))
        self.assertIn("more than a hand moved", verdict(clock(7), bright))

    def test_an_appearing_window_fails(self) -> None:
        self.assertNotEqual(verdict(filled(b"\0\0\0"), clock(8)), "")

    def test_a_faint_change_is_none(self) -> None:
        self.assertEqual(verdict(filled(b"\x40\x40\x40"), filled(b"\x48\x48\x48")), "nothing moved")

    def test_another_size_fails(self) -> None:
        self.assertIn("size", verdict(clock(7), Picture(1, 1, b"\0\0\0")))


class ReadPpm(unittest.TestCase):
    def test_reads_the_pixels(self) -> None:
        picture = read_ppm(b"P6\n2 1\n255\n\x01\x02\x03\x0a\x20\x0d")
        self.assertEqual((picture.width, picture.height), (2, 1))
        self.assertEqual(picture.pixels, b"\x01\x02\x03\x0a\x20\x0d")

    def test_refuses_what_is_none(self) -> None:
        for data in (b"", b"P5\n1 1\n255\n\0", b"P6\n1 1\n65535\n\0\0\0\0\0\0", b"P6\n2 2\n255\n\0\0\0"):
            with self.subTest(data=data), self.assertRaises(ValueError):
                read_ppm(data)


if __name__ == "__main__":
    unittest.main()
