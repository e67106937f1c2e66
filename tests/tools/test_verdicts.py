#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT
"""Tests of race_verdict.py and valgrind_verdict.py, on reports made here."""

import sys
import unittest
import xml.etree.ElementTree as ElementTree
from pathlib import Path

REPOSITORY = Path(__file__).resolve().parents[2]
sys.path[:0] = [str(REPOSITORY / "tests" / "tools"), str(REPOSITORY / "tests" / "long")]

import race_verdict  # noqa: E402  (the line above finds them)
import valgrind_verdict  # noqa: E402

OURS = f"VsUpdateChecker::finish() {REPOSITORY}/update/vsupdatechecker.cpp:12 (tst+0x1)"
GENERATED = f"qt_static_metacall() {REPOSITORY}/build/linux-tsan/update/moc.cpp:3 (tst+0x1)"
QT = "QThread::start() <null> (libQt6Core.so.6+0x1)"
PROGRAM = "/opt/vesper"


def race(first: str, second: str) -> str:
    return (f"data race (pid=1)\n  Write of size 4 at 0x1 by thread T1:\n    #0 {first}\n\n"
            f"  Previous read of size 4 at 0x1 by main thread:\n    #0 {second}\n\n")


def error(kind: str, *functions: tuple[str, str]) -> ElementTree.Element:
    frames = "".join(f"<frame><obj>{obj}</obj><fn>{fn}</fn></frame>" for obj, fn in functions)
    return ElementTree.fromstring(f"<error><kind>{kind}</kind><stack>{frames}</stack></error>")


class RaceVerdict(unittest.TestCase):
    def test_between_our_own_lines(self) -> None:
        self.assertTrue(race_verdict.is_fault(race(OURS, OURS)))

    def test_with_a_library_on_one_side(self) -> None:
        self.assertFalse(race_verdict.is_fault(race(OURS, QT)))
        self.assertFalse(race_verdict.is_fault(race(QT, OURS)))

    def test_in_generated_code(self) -> None:
        self.assertFalse(race_verdict.is_fault(race(GENERATED, GENERATED)))

    def test_another_fault_with_a_line_of_ours(self) -> None:
        report = f"lock-order-inversion (pid=1)\n    #0 {QT}\n    #1 {OURS}\n"
        self.assertTrue(race_verdict.is_fault(report))


class ValgrindVerdict(unittest.TestCase):
    def is_fault(self, kind: str, *functions: tuple[str, str]) -> bool:
        return valgrind_verdict.is_fault(error(kind, *functions), PROGRAM)

    def test_wrong_access_wherever_it_is(self) -> None:
        self.assertTrue(self.is_fault("InvalidRead", ("libQt6Core.so.6", "QObject::event()")))

    def test_what_we_lose(self) -> None:
        self.assertTrue(self.is_fault("Leak_DefinitelyLost", ("libc.so.6", "malloc"),
                                      (PROGRAM, "VsManager::start()")))

    def test_what_others_lose(self) -> None:
        self.assertFalse(self.is_fault("Leak_DefinitelyLost", ("libfontconfig.so.1", "FcInit"),
                                       (PROGRAM, "main")))

    def test_what_was_never_written(self) -> None:
        for kind in "UninitCondition", "UninitValue", "SyscallParam":
            with self.subTest(kind):
                self.assertTrue(self.is_fault(kind, ("libc.so.6", "write"), (PROGRAM, "VsConfig::save()")))
                self.assertFalse(self.is_fault(kind, ("libc.so.6", "write"), (PROGRAM, "main")))

    def test_what_is_still_reachable(self) -> None:
        self.assertFalse(self.is_fault("Leak_StillReachable", (PROGRAM, "VsManager::start()")))


if __name__ == "__main__":
    unittest.main()
