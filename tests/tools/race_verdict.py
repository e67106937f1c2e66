#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT
"""Runs a program that is built with the thread sanitizer, and says whether the project has a data race.

race_verdict.py SUPPRESSIONS PROGRAM ARGS...

Qt is not built with the sanitizer, which therefore sees only some of the ways in which its threads
wait for each other, and takes the end of nearly every object that went through an event for a race.
The suppressions can leave out what happens inside a library, but not what a library makes of our
objects: they know no innermost frame below the sanitizer's own. So a race counts when both of its
accesses are made by the project's own lines.
"""

import os
import re
import subprocess
import sys
from pathlib import Path

REPOSITORY = Path(__file__).resolve().parents[2]
REPORT = re.compile(r"^WARNING: ThreadSanitizer: (.*?)^SUMMARY:[^\n]*\n=+\n", re.MULTILINE | re.DOTALL)
ACCESS = re.compile(r"^  (?:Previous )?(?:atomic )?(?:write|read) of size ", re.IGNORECASE | re.MULTILINE)
FRAME = re.compile(r"^    #\d+ (.*)$", re.MULTILINE)


def innermost(stack: str) -> str:
    """The first frame that is none of the sanitizer's, which stands in for the system's allocator."""
    frames = [f for f in FRAME.findall(stack.split("\n\n")[0]) if "libsanitizer" not in f]
    return frames[0] if frames else ""


def is_ours(frame: str) -> bool:
    """Not what is generated either, which is in build/."""
    path = re.search(r"(/\S+):\d+ ", frame)
    if not path:
        return False
    place = Path(os.path.normpath(path[1]))
    return place.is_relative_to(REPOSITORY) and not place.is_relative_to(REPOSITORY / "build")


def is_fault(report: str) -> bool:
    if not report.startswith("data race"):
        return any(map(is_ours, FRAME.findall(report)))
    return all(is_ours(innermost(stack)) for stack in ACCESS.split(report)[1:])


def main() -> int:
    suppressions, *command = sys.argv[1:]
    options = f"suppressions={suppressions}:exitcode=0:halt_on_error=0"
    run = subprocess.run(command, env={**os.environ, "TSAN_OPTIONS": options}, check=False, text=True,
                         errors="replace", stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    reports = REPORT.findall(run.stdout)
    faults = [r for r in reports if is_fault(r)]
    print(REPORT.sub("", run.stdout))
    for report in faults:
        print(report)
    print(f"{len(reports)} reports of the thread sanitizer, {len(faults)} of them the project's")
    return run.returncode or (1 if faults else 0)


if __name__ == "__main__":
    sys.exit(main())
