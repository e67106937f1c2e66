#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT
"""Tests of the benchmark's arithmetic, and of its readings with a program whose work is known."""

import os
import signal
import subprocess
import sys
import tempfile
import unittest
import xml.dom.minidom
from pathlib import Path

from beside import complaints, fails
from chart import draw_chart
from compare import SMOOTHNESS, session
from measure import Use, measure, tree
from results import median_rows, ratios, table

# Wakes up in a process of its own, so that only a look at the whole tree finds it.
SLEEPER = "import time\nfor _ in range(3000): time.sleep(0.01)"
PARENT = f"import subprocess, sys; subprocess.run([sys.executable, '-c', {SLEEPER!r}])"


class Readings(unittest.TestCase):
    def setUp(self) -> None:
        self.parent = subprocess.Popen([sys.executable, "-c", PARENT])
        while len(tree(self.parent.pid)) < 2:
            pass

    def tearDown(self) -> None:
        for pid in reversed(tree(self.parent.pid)):
            subprocess.run(["kill", str(pid)], check=False)
        self.parent.wait()

    def test_a_program_is_what_it_started_too(self) -> None:
        figures = measure({"one": [self.parent.pid]}, 1)["one"]
        self.assertGreater(figures.use.wake_ups, 20)  # a hundred, where the machine has the time
        self.assertLess(figures.use.wake_ups, 120)
        self.assertGreater(figures.use.cpu_ms, 0)
        self.assertGreater(figures.pss_mib, 1)

    def test_an_ended_program_is_no_figure(self) -> None:
        with self.assertRaises(RuntimeError):
            measure({"one": [self.parent.pid]}, 0.1, lambda: False)


class Sessions(unittest.TestCase):
    def test_what_a_program_leaves_running_ends_with_its_session(self) -> None:
        sleeper = ["sleep", "100"]
        with (tempfile.TemporaryDirectory() as folder,
              subprocess.Popen(sleeper, start_new_session=True) as another):
            with session(Path(folder) / "home", dict(os.environ)) as environment:
                bus = environment["DBUS_SESSION_BUS_ADDRESS"].removeprefix("unix:path=")
                self.assertTrue(Path(bus).is_socket())
                service = subprocess.Popen(sleeper, env=environment, start_new_session=True)
                self.assertIsNone(service.poll())
            try:
                self.assertEqual(service.wait(10), -signal.SIGKILL)
                self.assertIsNone(another.poll())
            finally:
                service.kill()
                another.kill()


class Results(unittest.TestCase):
    def test_the_median_of_each_figure(self) -> None:
        rows = [{"cpu_ms": 3.0}, {"cpu_ms": 1.0}, {"cpu_ms": 9.0, "cpu_ms of late": 6.0}]
        self.assertEqual(median_rows({"one": rows}), {"one": {"cpu_ms": 3.0, "cpu_ms of late": 0.0}})

    def test_a_ratio_is_of_one_run(self) -> None:
        keys = ("cpu_ms", "wake_ups", "pss_mib", "start_ms")
        ours = [dict.fromkeys(keys, value) for value in (2.0, 30.0, 8.0)]
        theirs = [dict.fromkeys(keys, value) for value in (1.0, 10.0, 2.0)]
        self.assertEqual(ratios({"vesper": ours, "qt-example": theirs}), dict.fromkeys(keys, 3.0))

    def test_no_ratio_of_one_program(self) -> None:
        self.assertEqual(ratios({"vesper": [{"cpu_ms": 1.0}]}), {})

    def test_what_the_resizing_test_says(self) -> None:
        found = SMOOTHNESS.search(
            "QINFO  : TestSmoothness::isResizedSmoothly(320) side 320: 198 steps, 3.8 ms of the GUI "
            "thread each, 38.5 frames a second of 1.7 ms each, sharp after 459 ms")
        self.assertIsNotNone(found)
        self.assertEqual(found and found.groups(), ("320", "3.8", "38.5", "1.7", "459"))

    def test_columns_are_aligned(self) -> None:
        self.assertEqual(table(["a", "b"], [["row", "10"], ["x", ""]]).splitlines(),
                         ["a     b", "---  --", "row  10", "x"])

    def test_the_chart_is_well_formed(self) -> None:
        row = {"cpu_ms": 0.0, "wake_ups": 1.0, "pss_mib": 2.0, "start_ms": 3.0}
        chart = draw_chart([("Vesper", row), ("<other>", row)], [(320, 1.0), (720, 2.0)], "a & b")
        xml.dom.minidom.parseString(chart)
        xml.dom.minidom.parseString(draw_chart([], [], ""))


class Beside(unittest.TestCase):
    """The test of the cost, with figures that it has told."""

    EXAMPLE = Use(cpu_ms=0.6, wake_ups=3.0)
    CLOCK = Use(cpu_ms=1.32, wake_ups=4.0)  # 2.2 times the example's time
    MEMORY = 65.0

    def found(self, cpu: float = 1, wake_ups: float = 1, memory: float = 1) -> dict[str, str]:
        """What is said of a clock that costs so many times as much as it did."""
        clock = Use(self.CLOCK.cpu_ms * cpu, self.CLOCK.wake_ups * wake_ups)
        return complaints(clock, self.EXAMPLE, self.MEMORY * memory)

    def test_the_clock_as_it_is(self) -> None:
        self.assertEqual(self.found(), {})

    def test_half_more_of_anything_is_too_much(self) -> None:
        for figure, name in (("cpu", "CPU"), ("wake_ups", "wake-ups"), ("memory", "memory")):
            self.assertEqual(list(self.found(**{figure: 1.5})), [name])

    def test_too_much_of_anything_fails(self) -> None:
        self.assertFalse(fails(self.found(), expect_too_dear=False))
        self.assertTrue(fails(self.found(cpu=1.5), expect_too_dear=False))

    def test_a_doubled_tick_is_seen_in_time_and_in_wake_ups(self) -> None:
        self.assertFalse(fails(self.found(cpu=2, wake_ups=2), expect_too_dear=True))
        for seen in ({"cpu": 2}, {"wake_ups": 2}, {"memory": 2}, {"wake_ups": 2, "memory": 2}):
            self.assertTrue(fails(self.found(**seen), expect_too_dear=True), seen)


if __name__ == "__main__":
    unittest.main()
