#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT
"""Lets the clock of soak_clock.cpp live through odd times, and compares every tick with clockface.py.

soak.py PROGRAM SCENARIO...

Each second has to be published once and in its time, with the right angles and texts.
"""

import os
import subprocess
import sys
import tempfile
from collections.abc import Iterable, Iterator
from datetime import datetime, timedelta, timezone
from zoneinfo import ZoneInfo

from clockface import EPOCH, Settings, shown

MOST_FAULTS = 20
ANGLE_ERROR = 1e-9
SECOND = 1000  # ms
HOUR = 3600
DAY = 24 * HOUR

# They differ in kind: at one o'clock UTC; half an hour off the others; half an hour of summer time,
# in the south; back in February and forward in March; at midnight, so that a date comes twice.
SUMMER_TIME_ZONES = ("Europe/Berlin", "America/St_Johns", "Australia/Lord_Howe", "Africa/Casablanca",
                     "America/Santiago")
TEXTS = (("language en", "era 0", "twelve 0"), ("language ja", "era 0", "twelve 1"),
         ("language ja", "era 1", "twelve 0"))


class Watch:
    """Follows what the program tells, line by line, and gathers what is wrong."""

    def __init__(self) -> None:
        self.faults: list[str] = []
        self.ticks = 0
        self.commands = 0
        self.settings = Settings()
        self.slowest = 0  # how late the program was made to be, at most
        self.work = 0
        self.last: int | None = None  # the second published last; none after a step of the clock
        self.stale: int | None = None  # the one published before that step
        self.since: int | None = None  # the program's own time of that step

    def fault(self, text: str) -> None:
        self.faults.append(text)

    def latest(self) -> int:
        """How late a tick may be."""
        return self.slowest + 2 * self.work + 1

    def follow(self, line: str) -> None:
        fields = line.rstrip("\n").split("\t")
        if fields[0] == "tick":
            self.tick(int(fields[1]), int(fields[2]), fields[3:])
            return
        command, *values = fields[0].split(" ")
        self.commands += command != "stepped"  # nobody has told it to at that moment
        now, wall = int(fields[1]), int(fields[2])
        match command:
            case "zone":
                self.settings.zone = values[0]
            case "language":
                self.settings.language = values[0]
            case "era":
                self.settings.era = values[0] == "1"
            case "twelve":
                self.settings.twelve = values[0] == "1"
            case "delays":
                self.slowest = max(map(int, values))
            case "work":
                self.work = int(values[0])
            case "step":
                pass
            case "clock" | "stepped":
                self.stale, self.last, self.since = self.last, None, now
            case "run":
                self.nothing_is_due(now, wall)
            case _:
                self.fault(f"unknown: {line}")

    def nothing_is_due(self, now: int, wall: int) -> None:
        due = wall - self.latest()  # what has begun until then must have been published
        if self.last is not None and due > (self.last + 1) * SECOND:
            self.fault(f"nothing since {self.name(self.last)}")
        if self.last is None and not self.is_in_time_after_step(now, wall):
            self.fault(f"nothing until {self.name(wall // SECOND)}, after a step of the clock")

    def is_in_time_after_step(self, now: int, wall: int) -> bool:
        if self.since is None:
            return False
        if now - self.since <= SECOND + self.latest():
            return True
        # A clock that is set back to what it shows already is right without another word.
        return self.stale is not None and 0 <= wall - self.stale * SECOND <= SECOND + self.latest()

    def name(self, second: int) -> str:
        expected = shown(second, self.settings)
        return f"second {second} ({expected.date} {expected.time})"

    def tick(self, now: int, wall: int, face: list[str]) -> None:
        self.ticks += 1
        second = wall // SECOND
        if self.last is None:
            if not self.is_in_time_after_step(now, wall):
                self.fault(f"{self.name(second)} comes late after a step of the clock")
        elif second <= self.last:
            self.fault(f"{self.name(second)} comes twice")
        elif second > self.last + 1:
            self.fault(f"{second - self.last - 1} missing before {self.name(second)}")
        elif wall - second * SECOND > self.latest():
            self.fault(f"{self.name(second)} is {wall - second * SECOND} ms late")
        self.last = second
        self.compare(second, face)

    def compare(self, second: int, face: list[str]) -> None:
        expected = shown(second, self.settings)
        for what, angle in zip(("second", "minute", "hour"), face, strict=False):
            if not abs(float(angle) - getattr(expected, what)) <= ANGLE_ERROR:
                self.fault(f"{self.name(second)}: the {what} hand stands at {angle}")
        time, marker, day = face[3:]
        if (time, day) != (expected.time, expected.date) or expected.marker not in ("", marker):
            self.fault(f"{self.name(second)}: the face says {day} {time} {marker}")


def watch(lines: Iterable[str]) -> Watch:
    result = Watch()
    for line in lines:
        result.follow(line)
        if len(result.faults) >= MOST_FAULTS:
            break
    return result


# The scenarios: each is a row of commands.


def at(*date_and_time: int, zone: str = "UTC") -> int:
    """The seconds from the epoch to a local time."""
    local = datetime(*date_and_time, tzinfo=ZoneInfo(zone))  # type: ignore[misc,arg-type]
    return round((local.astimezone(timezone.utc) - EPOCH).total_seconds())


def clock(second: float) -> str:
    return f"clock {round(second * SECOND)}"


def run(seconds: float) -> str:
    return f"run {round(seconds * SECOND)}"


def stretch(start: int, hours: float, texts: Iterable[str], how: Iterable[str]) -> Iterator[str]:
    yield from (*texts, *how, "zone Europe/Berlin", clock(start - 10.5), run(hours * HOUR + 20))


# A timer may come early; and so late that the work crosses the next second.
BUSY = ("delays 0 3 17 1 0 -1 40 5 940 0", "work 30")
IDLE = ("delays 0", "work 1")
MIDNIGHT = at(2026, 11, 15, zone="Europe/Berlin")


def hours() -> Iterator[str]:
    """Around midnight and noon."""
    for texts in TEXTS:
        for start in (MIDNIGHT - 900, MIDNIGHT + 12 * HOUR - 900):
            yield from stretch(start, 0.5, texts, BUSY)


def day() -> Iterator[str]:
    yield from stretch(MIDNIGHT, 24, TEXTS[0], IDLE)


def days() -> Iterator[str]:
    for texts in TEXTS:
        for how in (IDLE, BUSY):
            yield from stretch(MIDNIGHT, 24, texts, how)


def offset(second: int, zone: ZoneInfo) -> timedelta:
    result = (EPOCH + timedelta(seconds=second)).astimezone(zone).utcoffset()
    assert result is not None
    return result


def changes_of(year: int, name: str) -> list[int]:
    """The seconds at which summer time begins or ends."""
    zone = ZoneInfo(name)
    found = []
    for low in range(at(year, 1, 1), at(year + 1, 1, 1), HOUR):
        high = low + HOUR
        if offset(low, zone) == offset(high, zone):
            continue
        while high - low > 1:
            middle = (low + high) // 2
            if offset(middle, zone) == offset(low, zone):
                low = middle
            else:
                high = middle
        found.append(high)
    return found


def summertime() -> Iterator[str]:
    """Through each change and the whole of an hour that repeats, and with steps across it."""
    yield from IDLE
    for zone in SUMMER_TIME_ZONES:
        found = changes_of(2026, zone)
        assert len(found) >= 2, f"{zone} has {len(found)} changes"
        yield f"zone {zone}"
        for change in found:
            back = offset(change - 1, ZoneInfo(zone)) - offset(change, ZoneInfo(zone))
            around = 120 + max(0, round(back.total_seconds()))
            for texts in (TEXTS[0], TEXTS[2]):
                yield from (*texts, clock(change - around - 0.7), run(2 * around))
            for near in (-3, 3, -3, 2, -HOUR, HOUR, -1, 1):
                yield from (clock(change + near + 0.4), run(4))


STEPS = (1, 2, 59, 3 * 60, HOUR, 12 * HOUR, DAY, 31 * DAY, 365 * DAY, 10 * 365 * DAY, 50 * 365 * DAY)


def steps() -> Iterator[str]:
    """Steps of the clock and changes of the zone, both while it runs."""
    start = at(2026, 11, 15, 10, 8, 42)
    for how in (IDLE, BUSY):
        yield from (*how, "zone Europe/Berlin", *TEXTS[1], clock(start), run(5))
        for step in STEPS:
            for way in (step, -step):
                for place in (0.0, 0.004, 0.5, 0.999):
                    yield from (clock(start + place), run(3.2), clock(start + 3.2 + place + way), run(3.7))
                yield from (clock(start), run(3.2), f"step {way * SECOND}", run(3.7))
        for texts in TEXTS:
            yield from texts
            for zone in ("Asia/Tokyo", "Pacific/Kiritimati", "Pacific/Pago_Pago", "Asia/Kathmandu", "UTC",
                         "Australia/Lord_Howe", "America/St_Johns", "Europe/Berlin"):
                yield from (f"zone {zone}", run(61.3))


LAST_DAYS = (
    (1868, 3, 4), (1868, 12, 31), (1912, 7, 29), (1912, 12, 31), (1926, 12, 25), (1926, 12, 31),
    (1989, 1, 7), (1989, 12, 31), (2019, 4, 30), (2019, 12, 31),  # the eras and their first years
    (2028, 2, 28), (2028, 2, 29), (2000, 2, 28), (2000, 2, 29), (2100, 2, 28), (2026, 2, 28), (2400, 2, 28),
    (1969, 12, 31), (2026, 12, 31), (2099, 12, 31), (9998, 12, 31))


def dates() -> Iterator[str]:
    """The ends of eras, of February, of numbers of seconds, and of the year 9999."""
    yield from IDLE
    ends_of_numbers = [2 ** 31, 2 ** 32]
    for zone in ("UTC", "Asia/Tokyo", "America/St_Johns"):
        ends = [at(*last, 23, 59, 59, zone=zone) + 1 for last in LAST_DAYS]
        # Python cannot name what comes after it.
        end_of_year_9999 = at(9999, 12, 31, 12, zone=zone) + 12 * HOUR
        yield f"zone {zone}"
        for texts in TEXTS:
            yield from texts
            for end in (*ends, *ends_of_numbers, end_of_year_9999):
                yield from (clock(end - 70.6), run(140), clock(end - 2.2), run(4))


SCENARIOS = {scenario.__name__: scenario for scenario in (hours, day, days, summertime, steps, dates)}


def soak(program: str, name: str) -> list[str]:
    """Runs a scenario and tells what is wrong."""
    commands = [f"{command}\n" for command in SCENARIOS[name]()]
    with tempfile.TemporaryFile("w+", encoding="utf-8") as script:
        script.writelines(commands)
        script.seek(0)
        with subprocess.Popen([program], stdin=script, stdout=subprocess.PIPE, encoding="utf-8",
                              env={**os.environ, "QT_QPA_PLATFORM": "offscreen"}) as process:
            assert process.stdout
            result = watch(line for line in process.stdout if line.endswith("\n"))  # it may break off
    if process.returncode != 0 or result.commands < len(commands):
        result.fault(f"the program ended with {process.returncode} after {result.commands} commands")
    print(f"{name}: {result.ticks} ticks, {len(result.faults)} faults", flush=True)
    return result.faults


def main(arguments: list[str]) -> int:
    program, *names = arguments
    faults = [f"{name}: {fault}" for name in names for fault in soak(program, name)]
    print("\n".join(faults))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
