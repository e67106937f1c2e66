#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT
"""Prints the hand-written files of a compile_commands.json, each once, NUL after each."""

import json
import os
import sys


def hand_written(commands: list[dict[str, str]], build_folder: str) -> list[str]:
    """What lies outside the build folder; generated code is nobody's to mend."""
    files = {os.path.normpath(os.path.join(c["directory"], c["file"])) for c in commands}
    return sorted(f for f in files if not f.startswith(build_folder + os.sep))


def main() -> None:
    with open(sys.argv[1], encoding="utf-8") as file:
        commands = json.load(file)
    build_folder = os.path.dirname(os.path.abspath(sys.argv[1]))
    for name in hand_written(commands, build_folder):
        sys.stdout.write(name + "\0")


if __name__ == "__main__":
    main()
