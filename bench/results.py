# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT
"""From the figures of all runs to the table, the CSV file and the chart."""

import csv
import statistics
from pathlib import Path

from chart import draw_chart
from programs import COMPARED, EXAMPLE, RESIZE, SIZES, VARIANTS, VESPER

Row = dict[str, float]  # figures by their key
Runs = dict[str, list[Row]]  # the rows of each program, one to a run

# Figures of a row, in the order of the table: key, heading, digits.
COLUMNS = [
    ("cpu_ms", "CPU ms/s", 2),
    ("wake_ups", "wake-ups/s", 1),
    ("pss_mib", "PSS MiB", 1),
    ("start_ms", "start ms", 0),
    ("server_ms", "X ms/s", 2),
    ("compositor_ms", "compositor ms/s", 2),
    ("others_ms", "others ms/s", 1),
]
RATIOS = ("cpu_ms", "wake_ups", "pss_mib", "start_ms")


def median_rows(runs: Runs) -> dict[str, Row]:
    """Of each figure; a run without it, for a thread that was not there, counts as none."""
    medians: dict[str, Row] = {}
    for name, rows in runs.items():
        keys = list(dict.fromkeys(key for row in rows for key in row))
        medians[name] = {key: statistics.median(row.get(key, 0.0) for row in rows) for key in keys}
    return medians


def ratios(runs: Runs) -> Row:
    """Vesper to Qt's example, each pair out of the same run."""
    pairs = list(zip(runs.get(VESPER.name, []), runs.get(EXAMPLE.name, [])))
    return {key: statistics.median(ours[key] / theirs[key] for ours, theirs in pairs)
            for key in RATIOS if pairs and all(theirs[key] > 0 for _, theirs in pairs)}


def table(headings: list[str], rows: list[list[str]]) -> str:
    widths = [max(len(line[i]) for line in [headings, *rows]) for i in range(len(headings))]
    lines = ["  ".join(word.ljust(width) if i == 0 else word.rjust(width)
                       for i, (word, width) in enumerate(zip(line, widths)))
             for line in [headings, ["-" * width for width in widths], *rows]]
    return "\n".join(line.rstrip() for line in lines)


def main_table(medians: dict[str, Row], ratio: Row) -> str:
    rows = [[variant.title, str(variant.pixels)]
            + [f"{medians[variant.name][key]:.{digits}f}" if key in medians[variant.name] else ""
               for key, _, digits in COLUMNS]
            for variant in VARIANTS if variant.name in medians]
    if ratio:
        rows.append([f"{VESPER.title} / {EXAMPLE.title}", ""]
                    + [f"{ratio[key]:.2f}" if key in ratio else "" for key, _, _ in COLUMNS])
    return table(["", "pixels", *(heading for _, heading, _ in COLUMNS)], rows)


def thread_table(row: Row) -> str:
    names = [key.removeprefix("cpu_ms of ") for key in row if key.startswith("cpu_ms of ")]
    rows = [[name, f"{row[f'cpu_ms of {name}']:.2f}", f"{row[f'wake_ups of {name}']:.1f}"]
            for name in names]
    return table([f"threads of {VESPER.title}", "CPU ms/s", "wake-ups/s"], rows)


def resize_table(row: Row) -> str:
    sides = dict.fromkeys(key.rpartition(" ")[2] for key in row)
    rows = [[f"{side} pixels", *(f"{row[f'{key} at {side}']:g}"
                                 for key in ("step_ms", "frames", "frame_ms", "sharp_ms"))]
            for side in sides]
    return table(["resized by its grip", "step ms", "frames/s", "frame ms", "sharp after ms"], rows)


def write_csv(file: Path, runs: Runs, medians: dict[str, Row]) -> None:
    with open(file, "w", newline="", encoding="utf-8") as output:
        writer = csv.writer(output)
        writer.writerow(["program", "run", "figure", "value"])
        for name, rows in runs.items():
            for run, row in [*enumerate(rows, 1), ("median", medians[name])]:
                writer.writerows([name, run, key, f"{value:.4f}"] for key, value in row.items())


def result_text(runs: Runs, left_out: dict[str, str], heading: str) -> str:
    medians = median_rows(runs)
    texts = [heading, main_table(medians, ratios(runs))]
    if VESPER.name in medians:
        texts.append(thread_table(medians[VESPER.name]))
    if RESIZE in medians:
        texts.append(resize_table(medians[RESIZE]))
    if left_out:
        texts.append("\n".join(f"{name} is left out: {reason}" for name, reason in left_out.items()))
    return "\n\n".join(texts) + "\n"


def result_chart(medians: dict[str, Row], state: str) -> str:
    compared = [(v.title, medians[v.name]) for v in COMPARED if v.name in medians]
    sizes = [(v.pixels, medians[v.name]["cpu_ms"]) for v in [VESPER, *SIZES] if v.name in medians]
    return draw_chart(compared, sizes, state)
