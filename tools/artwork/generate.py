#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT
"""Writes the artwork of themes/basic and images, or with --check proves that it is what it would write."""

import argparse
import sys
from pathlib import Path

sys.dont_write_bytecode = True

from vesperart import face, images  # noqa: E402
from vesperart.tones import TONES, Tone  # noqa: E402

ROOT = Path(__file__).resolve().parents[2]


def theme_files(tone: Tone) -> dict[str, str]:
    """The files of one tone's folder."""
    files = {
        "clock_base.svg": face.base(tone),
        "clock_background.svg": face.background(tone),
        "clock_resize_grip.svg": face.grip(tone),
    }
    if tone.owns_dial:
        files |= {
            "clock_dial.svg": face.dial(tone.family),
            "clock_hand_hour.svg": face.hand_hour(tone.family),
            "clock_hand_minute.svg": face.hand_minute(tone.family),
            "clock_hand_second.svg": face.hand_second(tone.family),
        }
    return files


def all_files() -> dict[Path, str]:
    """Every file by its path below the repository's root."""
    result = {Path("images", name): text for name, text in images.files(TONES[0]).items()}
    for tone in TONES:
        folder = Path("themes", "basic", tone.folder)
        result |= {folder / name: text for name, text in theme_files(tone).items()}
    return result


def differences(root: Path, expected: dict[Path, str]) -> list[str]:
    """What stands in the tree and differs, is missing or is nobody's."""
    found = {p.relative_to(root) for folder in ("images", "themes")
             for p in (root / folder).rglob("*.svg")}
    problems = [f"unknown: {p}" for p in sorted(found - expected.keys())]
    for name, text in expected.items():
        if name not in found:
            problems.append(f"missing: {name}")
        elif (root / name).read_bytes() != text.encode():
            problems.append(f"differs: {name}")
    return problems


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--check", action="store_true", help="write nothing, compare")
    parser.add_argument("--root", type=Path, default=ROOT, help="the tree to write or compare")
    arguments = parser.parse_args()
    expected = all_files()
    if arguments.check:
        problems = differences(arguments.root, expected)
        print("\n".join(problems) or f"{len(expected)} files are as generated")
        return 1 if problems else 0
    for name, text in expected.items():
        target = arguments.root / name
        target.parent.mkdir(parents=True, exist_ok=True)
        target.write_bytes(text.encode())
    return 0


if __name__ == "__main__":
    sys.exit(main())
