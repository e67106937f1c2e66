#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT
"""Tests of the benchmark's arithmetic, and of its readings with a program whose work is known."""

import subprocess
import sys
import unittest
import xml.dom.minidom

from chart import draw_chart
from compare import SMOOTHNESS
from measure import measure, tree
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


if __name__ == "__main__":
    unittest.main()
