#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT
"""Tests of tests/soak: what the clock has to show, and that a clock which does otherwise is caught."""

import sys
import unittest
from collections.abc import Iterator
from dataclasses import replace
from pathlib import Path

sys.path.insert(0, str(Path(__file__).parents[1] / "soak"))

import soak  # noqa: E402  (the line above finds them)
from clockface import Settings, Shown, shown  # noqa: E402

JAPANESE = Settings(zone="Asia/Tokyo", language="ja", era=True)
START = soak.at(2026, 11, 15, 10, 8, 42, zone="Asia/Tokyo")
SETTINGS = ("zone Asia/Tokyo\t0\t0", "language ja\t0\t0", "era 1\t0\t0", "twelve 0\t0\t0", "work 1\t0\t0",
            "delays 0\t0\t0")


def face(time: tuple[int, ...], settings: Settings) -> Shown:
    return shown(soak.at(*time, zone=settings.zone), settings)


def tick(second: int, late: int = 2, *, expected: Shown | None = None, settings: Settings = JAPANESE) -> str:
    """As the program tells it. Its own time began with START."""
    what = expected or shown(second, settings)
    now = 1000 * (second - START) + late
    return (f"tick\t{now}\t{1000 * second + late}\t{what.second!r}\t{what.minute!r}\t{what.hour!r}"
            f"\t{what.time}\t{what.marker or 'AM'}\t{what.date}")


def clock(second: int, now: int = 0) -> str:
    return f"clock {1000 * second}\t{now}\t{1000 * second}"


def ran(second: int) -> str:
    return f"run 1\t{1000 * (second - START)}\t{1000 * second}"


def good(seconds: int = 20) -> Iterator[str]:
    yield from (*SETTINGS, clock(START))
    yield from (tick(START + i) for i in range(seconds))
    yield ran(START + seconds)


def faults_of(lines: list[str]) -> str:
    return "\n".join(soak.watch(lines).faults)


class Face(unittest.TestCase):
    def test_angles(self) -> None:
        for time, angles in (((0, 0, 0), (-90, -90, -90)), ((3, 0, 0), (-90, -90, 0)),
                             ((12, 30, 0), (-90, 90, -75)), ((22, 8, 42), (162, -37.8, 214.35))):
            with self.subTest(time=time):
                seen = face((2026, 11, 15, *time), JAPANESE)
                for one, other in zip((seen.second, seen.minute, seen.hour), angles, strict=True):
                    self.assertAlmostEqual(one, other)

    def test_times(self) -> None:
        twelve = replace(JAPANESE, twelve=True)
        for hour, marker in ((0, "AM"), (12, "PM")):
            seen = face((2026, 11, 15, hour, 0, 9), twelve)
            self.assertEqual((seen.time, seen.marker), ("00:00:09", marker))
        self.assertEqual(face((2026, 11, 15, 13, 5, 9), JAPANESE).time, "13:05:09")

    def test_dates(self) -> None:
        for day, with_era, without in (
                ((2019, 4, 30), "平成31年4月30日㈫", "2019年4月30日㈫"),
                ((2019, 5, 1), "令和元年5月1日㈬", "2019年5月1日㈬"),
                ((1868, 3, 4), "慶応4年3月4日㈬", "1868年3月4日㈬"),
                ((1868, 3, 5), "明治元年3月5日㈭", "1868年3月5日㈭"),
                ((2026, 11, 15), "令和8年11月15日㈰", "2026年11月15日㈰")):
            with self.subTest(day=day):
                self.assertEqual(face((*day, 12), JAPANESE).date, with_era)
                self.assertEqual(face((*day, 12), replace(JAPANESE, era=False)).date, without)
        self.assertEqual(face((2026, 11, 5, 12), Settings()).date, "Thu Nov 5 2026")

    def test_what_follows_the_year_9999(self) -> None:
        second = soak.at(9999, 12, 31, 23, 59, 59) + 1
        self.assertEqual(shown(second, Settings()).date, "Sat Jan 1 10000")
        japanese = replace(JAPANESE, zone="UTC")
        self.assertEqual(shown(second - 1, japanese).date, "令和7981年12月31日㈮")
        self.assertEqual(shown(second, japanese).date, "1月1日㈯")

    def test_summer_time(self) -> None:
        berlin = Settings(zone="Europe/Berlin")
        change = soak.at(2026, 10, 25, 1)
        self.assertIn(change, soak.changes_of(2026, "Europe/Berlin"))
        self.assertEqual(shown(change - 1, berlin).time, "02:59:59")
        self.assertEqual(shown(change, berlin).time, "02:00:00")


class Watch(unittest.TestCase):
    def setUp(self) -> None:
        self.lines = list(good())
        self.first = len(SETTINGS) + 1  # of the lines with a tick

    def test_a_good_clock(self) -> None:
        self.assertEqual(faults_of(self.lines), "")
        self.assertEqual(soak.watch(self.lines).ticks, 20)

    def test_a_missing_second(self) -> None:
        del self.lines[self.first + 7]
        self.assertIn("1 missing before", faults_of(self.lines))

    def test_a_missing_last_second(self) -> None:
        del self.lines[-2]
        self.assertIn("nothing since", faults_of(self.lines))

    def test_a_second_that_comes_twice(self) -> None:
        self.lines.insert(self.first + 7, self.lines[self.first + 7])
        self.assertIn("twice", faults_of(self.lines))

    def test_a_late_second(self) -> None:
        self.lines[self.first + 7] = tick(START + 7, 20)
        self.assertIn("20 ms late", faults_of(self.lines))
        self.lines.insert(self.first, "delays 0 20\t0\t0")  # which the program was asked for
        self.assertEqual(faults_of(self.lines), "")

    def test_a_wrong_angle(self) -> None:
        for what in ("second", "minute", "hour"):
            with self.subTest(what=what):
                right = shown(START + 7, JAPANESE)
                wrong = replace(right, **{what: getattr(right, what) + 1e-6})
                lines = list(good())
                lines[self.first + 7] = tick(START + 7, expected=wrong)
                self.assertIn(f"the {what} hand stands at", faults_of(lines))

    def test_an_angle_that_is_no_number(self) -> None:
        self.lines[self.first] = tick(START, expected=replace(shown(START, JAPANESE), hour=float("nan")))
        self.assertIn("the hour hand stands at nan", faults_of(self.lines))

    def test_a_wrong_text(self) -> None:
        right = shown(START + 7, JAPANESE)
        for wrong in (replace(right, time="10:08:48"), replace(right, date="平成38年11月15日㈰"),
                      replace(right, date="令和8年11月15日㈪"), replace(right, date="2026年11月15日㈰")):
            with self.subTest(wrong=wrong):
                self.lines[self.first + 7] = tick(START + 7, expected=wrong)
                self.assertIn("the face says", faults_of(self.lines))

    def test_a_wrong_marker(self) -> None:
        evening = START + 12 * soak.HOUR
        right = shown(evening, replace(JAPANESE, twelve=True))
        for marker, fault in (("PM", False), ("AM", True)):
            lines = [*SETTINGS, "twelve 1\t0\t0", f"clock {1000 * evening}\t{1000 * (evening - START)}\t0",
                     tick(evening, expected=replace(right, marker=marker))]
            self.assertEqual("the face says" in faults_of(lines), fault)

    def test_an_hour_that_stands_still(self) -> None:
        """The hands wait until the hour that comes a second time is over."""
        change = soak.at(2026, 10, 25, 1)
        berlin = replace(JAPANESE, zone="Europe/Berlin")

        def through(pause: int) -> list[str]:
            start = f"clock {1000 * (change - 5)}\t{1000 * (change - 5 - START)}\t0"
            return [*SETTINGS, "zone Europe/Berlin\t0\t0", start,
                    *(tick(second, settings=berlin) for second in range(change - 5, change)),
                    *(tick(second, settings=berlin) for second in range(change + pause, change + pause + 5))]

        self.assertEqual(faults_of(through(0)), "")
        self.assertIn("3600 missing", faults_of(through(soak.HOUR)))

    def test_the_zone_before_a_change(self) -> None:
        """The hands go on in summer time."""
        change = soak.at(2026, 10, 25, 1)
        lines = [*SETTINGS, "zone Europe/Berlin\t0\t0", f"clock {1000 * change}\t{1000 * (change - START)}\t0",
                 tick(change, settings=replace(JAPANESE, zone="Europe/Athens"))]
        self.assertIn("the hour hand stands at", faults_of(lines))

    def test_a_change_of_the_zone_that_is_missed(self) -> None:
        self.lines.insert(self.first + 7, "zone Asia/Kathmandu\t0\t0")
        self.assertIn("the face says", faults_of(self.lines))

    def test_a_step_of_the_clock(self) -> None:
        for step in (-soak.DAY, -1, 1, soak.HOUR):
            for wait, fault in ((400, False), (1400, True)):
                with self.subTest(step=step, wait=wait):
                    wall = 1000 * (START + 20 + step) + 600
                    end = 1000 * 20 + 600
                    there = wall + wait
                    lines = [*good(), f"clock {wall}\t{end}\t{wall}",
                             tick(there // 1000, there % 1000).replace(
                                 f"tick\t{1000 * (there // 1000 - START) + there % 1000}\t",
                                 f"tick\t{end + wait}\t")]
                    self.assertEqual("late after a step" in faults_of(lines), fault)

    def test_a_step_in_the_middle_of_a_tick(self) -> None:
        stepped = f"stepped\t20002\t{1000 * START}"
        self.assertEqual(faults_of([*good(), stepped, f"run 900\t20902\t{1000 * START + 900}"]), "")
        self.assertIn("nothing until", faults_of([*good(), stepped, f"run 1900\t21902\t{1000 * START + 1900}"]))

    def test_no_tick_after_a_step(self) -> None:
        end = 1000 * 20
        lines = [*good(), clock(START + 500, end), f"run 3000\t{end + 3000}\t{1000 * START + 503000}"]
        self.assertIn("nothing until", faults_of(lines))

    def test_a_step_back_to_what_is_shown(self) -> None:
        """The clock shows it already, and goes on with the next second."""
        now = 1000 * 20 + 5
        wall = 1000 * (START + 18) + 100
        step = f"clock {wall}\t{now}\t{wall}"

        def next_tick(late: int) -> str:
            after = 1000 * (START + 20) + late
            line = tick(START + 20, late)
            return line.replace(f"tick\t{after - 1000 * START}\t", f"tick\t{now + after - wall}\t")

        self.assertEqual(faults_of([*good(), step, next_tick(2)]), "")
        self.assertIn("late after a step", faults_of([*good(), step, next_tick(500)]))

    def test_what_is_no_line_of_the_program(self) -> None:
        self.assertIn("unknown", faults_of(["warning: odd\t0\t0"]))


if __name__ == "__main__":
    unittest.main()
