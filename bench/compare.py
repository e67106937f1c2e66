#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT
"""Measures clocks one after the other on the present display. bench/run starts this on a desktop."""

import argparse
import os
import platform
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time
from collections.abc import Iterator
from contextlib import contextmanager, nullcontext, suppress
from dataclasses import dataclass
from pathlib import Path

from measure import (PROC, draws_with_opengl, measure, parent_of, processors_awake, read,
                     tree)
from programs import RESIZE, SHORT, VARIANTS, VESPER, Places, Renderer, State, Variant
from results import Row, Runs, median_rows, result_chart, result_text, write_csv

START_LIMIT_SECONDS = 40
SETTLE_SECONDS = 5  # after the clock stands: caches are written, start-up work ends
END_SECONDS = 10
POLL_SECONDS = 0.05

# What tst_smoothness says of each size.
SMOOTHNESS = re.compile(
    r"side (?P<side>\d+): \d+ steps, (?P<step_ms>[\d.]+) ms of the GUI thread each, "
    r"(?P<frames>[\d.]+) frames a second of (?P<frame_ms>[\d.]+) ms each, "
    r"sharp after (?P<sharp_ms>\d+) ms")


class LeftOut(Exception):
    """Why a row cannot be measured here."""


@dataclass
class Running:
    """A started program and its window."""

    process: subprocess.Popen[bytes]
    window: int
    start_ms: float


def fresh_environment(home: Path, variant: Variant) -> dict[str, str]:
    """The desktop's, without what the caller tells Qt or keeps elsewhere."""
    told = ("QT_", "QSG_", "QML_", "XDG_CONFIG", "XDG_DATA", "XDG_CACHE", "LC_")
    kept = {name: value for name, value in os.environ.items() if not name.startswith(told)}
    return {**kept, "HOME": str(home), "LANG": "C.UTF-8", **variant.environment}


def end(process: subprocess.Popen[bytes]) -> None:
    """Ends a program and what it started."""
    for number in (signal.SIGTERM, signal.SIGKILL):
        try:
            os.killpg(process.pid, number)
            process.wait(END_SECONDS)
        except subprocess.TimeoutExpired:
            continue
        except ProcessLookupError:
            pass
        break
    process.wait()


def processes_with(variable: str) -> list[int]:
    """All that have it in the environment they began with, and may be looked at."""
    found: list[int] = []
    for entry in PROC.glob("[0-9]*"):
        with suppress(OSError):
            if variable.encode() in (entry / "environ").read_bytes().split(b"\0"):
                found.append(int(entry.name))
    return found


@contextmanager
def session(home: Path, environment: dict[str, str]) -> Iterator[dict[str, str]]:
    """The environment with a session bus of its own, which ends with all that it has started.

    What Plasma's clock has started there would live on, and share Qt's libraries with the programs
    that come later.
    """
    name, address = "DBUS_SESSION_BUS_ADDRESS", f"unix:path={home.parent}/bus"
    environment = {**environment, name: address}
    bus = subprocess.Popen(
        ["dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address", "--address", address],
        env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
        start_new_session=True)
    with bus:
        try:
            if not (bus.stdout and bus.stdout.readline()):  # it says where it listens once it does
                raise LeftOut("no session bus")
            yield environment
        finally:
            end(bus)
            # Services lead groups of their own. Until none is left, as one may be starting another.
            while left := processes_with(f"{name}={address}"):
                for pid in left:
                    with suppress(ProcessLookupError):
                        os.kill(pid, signal.SIGKILL)
                time.sleep(POLL_SECONDS)


@contextmanager
def started(variant: Variant, places: Places, home: Path,
            environment: dict[str, str]) -> Iterator[Running]:
    """Starts a program and waits until its clock has been painted."""
    from screen import Screen, painted_at  # needs a display, which --list has not

    screen = Screen()
    begin = time.monotonic()
    with open(home.parent / "output", "wb") as output:
        process = subprocess.Popen(
            variant.arguments(places), env=environment, stdin=subprocess.DEVNULL,
            stdout=output, stderr=output, start_new_session=True)
    try:
        views = screen.watch(START_LIMIT_SECONDS, lambda: process.poll() is None, variant.pixels)
        painted = painted_at(views, screen.wallpaper())
        window = screen.find()
        if painted is None or window is None:
            raise LeftOut(f"no clock within {START_LIMIT_SECONDS} seconds: {last_line(home)}")
        geometry = views[-1].geometry
        if (geometry.width, geometry.height) != (variant.pixels, variant.pixels):
            raise LeftOut(f"its window is {geometry.width}x{geometry.height}")
        yield Running(process, window, (painted - begin) * 1000)
    finally:
        end(process)
        screen.wait_until_empty(END_SECONDS)


def last_line(home: Path) -> str:
    lines = (home.parent / "output").read_text(errors="replace").strip().splitlines()
    return lines[-1] if lines else "it says nothing"


def bring_into(state: State, window: int) -> None:
    from screen import Screen

    screen = Screen()
    if state == State.MINIMISED:
        screen.minimise(window)
    elif state == State.UNMAPPED:
        screen.unmap(window)
    if state != State.SHOWN and not screen.wait_until_gone(window, END_SECONDS):
        raise LeftOut("its window stays")


def check_renderer(variant: Variant, running: Running) -> None:
    has = Renderer.OPENGL if draws_with_opengl(running.process.pid) else Renderer.SOFTWARE
    if variant.renderer not in (None, has):
        raise LeftOut(f"this build draws with {has.value}, whatever it is told")


def helpers() -> dict[str, list[int]]:
    """The X server and the compositor, which with-desktop started beside this script."""
    desktop = parent_of(os.getpid())
    names = {read(PROC / str(pid) / "comm").strip(): pid for pid in tree(desktop)}
    return {key: [names[name]] for key, name in (("server_ms", "Xvfb"), ("compositor_ms", "picom"))
            if name in names}


def measured(variant: Variant, places: Places, seconds: float, awake: bool) -> Row:
    """One row of one run. The second start is the one that counts: the first fills the caches."""
    if not shutil.which(variant.arguments(places)[0]):
        raise LeftOut("it is not installed")
    with tempfile.TemporaryDirectory(prefix="vesper-bench.") as folder:
        home = Path(folder) / "home"
        home.mkdir()
        variant.prepare(home, places, variant)
        with session(home, fresh_environment(home, variant)) as environment:
            with started(variant, places, home, environment):
                pass
            with started(variant, places, home, environment) as running:
                check_renderer(variant, running)
                bring_into(variant.state, running.window)
                with processors_awake() if awake else nullcontext([]) as spinners:
                    time.sleep(SETTLE_SECONDS)
                    return figures_of(running, seconds, spinners)


def figures_of(running: Running, seconds: float, spinners: list[int]) -> Row:
    pid = running.process.pid
    watched = {"clock": [pid], "awake_ms": spinners, **helpers()}
    found = measure(watched, seconds, lambda: running.process.poll() is None)
    clock = found.pop("clock")
    row = {"cpu_ms": clock.use.cpu_ms, "wake_ups": clock.use.wake_ups, "pss_mib": clock.pss_mib,
           "start_ms": running.start_ms}
    row |= {key: figures.use.cpu_ms for key, figures in found.items()}
    known = clock.use.cpu_ms + sum(figures.use.cpu_ms for figures in found.values())
    row["others_ms"] = max(0.0, clock.busy_ms - known)
    for name, use in clock.threads.items():
        row[f"cpu_ms of {name}"] = use.cpu_ms
        row[f"wake_ups of {name}"] = use.wake_ups
    return row


def resize_row(build: Path) -> Row:
    """The figures of the test that resizes the clock; its own limits are of no interest here."""
    program = build / "tests/desktop/tst_smoothness"
    if not program.is_file():
        raise LeftOut(f"{program} is not built")
    done = subprocess.run([program, "isResizedSmoothly"], capture_output=True, text=True, check=False)
    row: Row = {}
    for found in SMOOTHNESS.finditer(done.stdout + done.stderr):
        for key in ("step_ms", "frames", "frame_ms", "sharp_ms"):
            row[f"{key} at {found['side']}"] = float(found[key])
    if not row:
        raise LeftOut("tst_smoothness has told no figures")
    return row


def machine() -> str:
    model = re.search(r"model name\s*: (.*)", read(PROC / "cpuinfo"))
    load = " ".join(read(PROC / "loadavg").split()[:3])
    return (f"{model[1] if model else platform.machine()}, {os.cpu_count()} processors, "
            f"Linux {platform.release()}, load {load}, {time.strftime('%Y-%m-%d %H:%M')}")


def maker_of(build: Path) -> str:
    """The maker's domain, after which the clock names the folder of its settings."""
    cache = read(build / "CMakeCache.txt")
    found = re.search(r"^VESPER_MAKER_DOMAIN:STRING=(.+)$", cache, re.MULTILINE)
    return found[1] if found else "marrowby.example"


def read_arguments(words: list[str]) -> argparse.Namespace:
    parser = argparse.ArgumentParser(prog="bench/run", description=__doc__.splitlines()[0])
    parser.add_argument("--seconds", type=float, help="length of one measurement (60; short: 10)")
    parser.add_argument("--runs", type=int, help="of each, whose medians are told (5; short: 1)")
    parser.add_argument("--only", metavar="NAME,…", help="these rows only")
    parser.add_argument("--short", action="store_true", help="the rows that matter most, once")
    parser.add_argument("--awake", action="store_true",
                        help="let no processor sleep: steadier figures, for comparing two builds")
    parser.add_argument("--list", action="store_true", help="tell the names of the rows")
    parser.add_argument("--output", type=Path, default=Path("build/bench"),
                        help="folder of the results")
    parser.add_argument("--build", type=Path, default=Path("build/linux"),
                        help="folder of a built clock")
    parser.add_argument("--example", type=Path, default=Path("build/bench/example/analogclock_example"),
                        help=argparse.SUPPRESS)
    arguments = parser.parse_args(words)
    arguments.seconds = arguments.seconds or (10 if arguments.short else 60)
    arguments.runs = arguments.runs or (1 if arguments.short else 5)
    return arguments


def chosen_names(arguments: argparse.Namespace) -> list[str]:
    known = [*(variant.name for variant in VARIANTS), RESIZE]
    names = [*SHORT, RESIZE] if arguments.short else known
    if arguments.only:
        names = arguments.only.split(",")
    unknown = set(names) - set(known)
    if unknown:
        sys.exit(f"no row {', '.join(sorted(unknown))}; there are: {', '.join(known)}")
    return [name for name in known if name in names]


def all_runs(names: list[str], places: Places,
             arguments: argparse.Namespace) -> tuple[Runs, dict[str, str]]:
    """Every row once, then every row again, so that a change of the machine's state meets all."""
    runs: Runs = {}
    left_out: dict[str, str] = {}
    variants = {variant.name: variant for variant in VARIANTS}
    for run in range(1, arguments.runs + 1):
        for name in names:
            if name in left_out:
                continue
            try:
                row = (resize_row(places.build) if name == RESIZE
                       else measured(variants[name], places, arguments.seconds, arguments.awake))
                runs.setdefault(name, []).append(row)
                note = f"{row['cpu_ms']:.2f} ms/s" if "cpu_ms" in row else "done"
            except (LeftOut, RuntimeError) as reason:
                left_out[name] = note = f"left out: {reason}"
                runs.pop(name, None)
            print(f"run {run} of {arguments.runs}: {name}: {note}", flush=True)
    return runs, left_out


def main(words: list[str]) -> int:
    arguments = read_arguments(words)
    if arguments.list:
        rows = [(variant.name, variant.title) for variant in VARIANTS]
        print("\n".join(f"{name:20} {title}" for name, title in
                        [*rows, (RESIZE, f"{VESPER.title}, resized by its grip")]))
        return 0
    names = chosen_names(arguments)
    places = Places(arguments.build.resolve(), arguments.example.resolve(),
                    maker_of(arguments.build))
    state = machine()
    runs, left_out = all_runs(names, places, arguments)
    heading = (f"{state}\nmedians of {arguments.runs} runs of {arguments.seconds:g} seconds"
               + (", processors kept awake" if arguments.awake else ""))
    text = result_text(runs, left_out, heading)
    print("\n" + text)

    arguments.output.mkdir(parents=True, exist_ok=True)
    medians = median_rows(runs)
    (arguments.output / "table.txt").write_text(text, encoding="utf-8")
    (arguments.output / "chart.svg").write_text(result_chart(medians, state), encoding="utf-8")
    write_csv(arguments.output / "figures.csv", runs, medians)
    print(f"table.txt, figures.csv and chart.svg are in {arguments.output.resolve()}")
    return 0 if runs else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
