#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT
"""Reads Valgrind's report (XML) of a program and says whether anything in it is the program's fault.

valgrind_verdict.py REPORT PROGRAM
"""

import sys
import xml.etree.ElementTree as ElementTree

WRONG_ACCESS = {"InvalidRead", "InvalidWrite", "InvalidFree", "MismatchedFree", "InvalidJump", "Overlap"}
# These are the program's fault only when they come from its own code: drawing libraries make use of
# memory that nobody has written yet, and mask what they get.
OURS_ONLY = {"Leak_DefinitelyLost", "UninitCondition", "UninitValue", "SyscallParam"}
# Everything that the main thread does is below these, whoever does it.
ROOTS = {"main", "runVesper(int&, char**)"}


def frames(error: ElementTree.Element) -> list[ElementTree.Element]:
    return error.findall("stack/frame")


def is_ours(error: ElementTree.Element, program: str) -> bool:
    return any(f.findtext("obj") == program and f.findtext("fn") not in ROOTS
               and not (f.findtext("fn") or "").startswith("(below main)") for f in frames(error))


def is_fault(error: ElementTree.Element, program: str) -> bool:
    kind = error.findtext("kind", "")
    return kind in WRONG_ACCESS or kind in OURS_ONLY and is_ours(error, program)


def text(error: ElementTree.Element) -> str:
    lines = [error.findtext("what") or error.findtext("xwhat/text") or error.findtext("kind", "")]
    for frame in frames(error)[:30]:
        place = frame.findtext("file")
        lines.append(f"    {frame.findtext('fn', '?')} "
                     + (f"({place}:{frame.findtext('line')})" if place else f"({frame.findtext('obj')})"))
    return "\n".join(lines)


def main() -> int:
    report, program = sys.argv[1:]
    errors = ElementTree.parse(report).getroot().findall("error")
    faults = [e for e in errors if is_fault(e, program)]
    for error in faults:
        print(text(error), end="\n\n")
    leaks = sum(e.findtext("kind") == "Leak_DefinitelyLost" for e in errors)
    print(f"{len(errors)} reports, {leaks} of them definite leaks; {len(faults)} faults of ours")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
