# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT
"""What running programs cost, as Linux counts it in /proc.

A program is a tree of processes: one that was started, and what it started itself. Processor time is
that of every thread in nanoseconds (schedstat), so a clock that works a millisecond a second is told
from one that works two. A wake-up is a voluntary switch: a thread went to sleep, and something woke it.
"""

import os
import signal
import time
from collections.abc import Callable, Iterator
from contextlib import contextmanager
from dataclasses import dataclass, field
from pathlib import Path

PROC = Path("/proc")
TICKS_PER_SECOND = 100  # USER_HZ, the same on every Linux that user programs see
SAMPLE_SECONDS = 5  # a pool's idle thread ends after thirty: it is seen before


@dataclass
class Use:
    """Processor time and wake-ups."""

    cpu_ms: float = 0
    wake_ups: float = 0

    def __sub__(self, other: "Use") -> "Use":
        return Use(self.cpu_ms - other.cpu_ms, self.wake_ups - other.wake_ups)

    def __iadd__(self, other: "Use") -> "Use":
        self.cpu_ms += other.cpu_ms
        self.wake_ups += other.wake_ups
        return self

    def per_second(self, seconds: float) -> "Use":
        return Use(self.cpu_ms / seconds, self.wake_ups / seconds)


@dataclass
class Figures:
    """One measurement of one program. Use is for a second."""

    use: Use = field(default_factory=Use)
    threads: dict[str, Use] = field(default_factory=dict)
    pss_mib: float = 0
    busy_ms: float = 0  # of the whole machine in a second, all processors together


def read(path: Path) -> str:
    """A file of /proc; empty when its process has ended."""
    try:
        return path.read_text()
    except (FileNotFoundError, ProcessLookupError):
        return ""


def parent_of(pid: int) -> int:
    # proc(5): the second field ends with the last ')', the parent is the second one after it.
    fields = read(PROC / str(pid) / "stat").rpartition(")")[2].split()
    return int(fields[1]) if fields else 0


def tree(root: int) -> list[int]:
    """The process and all that it started, directly or not."""
    parents = {int(entry.name): parent_of(int(entry.name)) for entry in PROC.glob("[0-9]*")}
    found = [root]
    for pid in found:
        found += [child for child, parent in parents.items() if parent == pid]
    return found


def thread_folders(pids: list[int]) -> Iterator[Path]:
    for pid in pids:
        yield from (PROC / str(pid) / "task").glob("*")


def thread_use(folder: Path) -> Use | None:
    """What a thread has used since it began; None when it has ended."""
    schedstat = read(folder / "schedstat").split()
    switches = [line for line in read(folder / "status").splitlines()
                if line.startswith("voluntary_ctxt_switches:")]
    if not schedstat or not switches:
        return None
    return Use(int(schedstat[0]) / 1e6, int(switches[0].split()[1]))


class Watch:
    """Adds up what some processes, and all that they start, use from now on."""

    def __init__(self, roots: list[int]) -> None:
        self._roots = roots
        self._first: dict[str, Use] = {}
        self._last: dict[str, Use] = {}
        self._names: dict[str, str] = {}
        self.sample()
        self._first = dict(self._last)
        self._begin = self._end

    def sample(self) -> None:
        """Has to be called now and then, or a thread that ends goes uncounted."""
        self._end = time.monotonic()
        pids = [pid for root in self._roots for pid in tree(root)]
        for folder in thread_folders(pids):
            use = thread_use(folder)
            if use is not None:
                self._last[str(folder)] = use
                self._names[str(folder)] = read(folder / "comm").strip()

    def threads(self) -> dict[str, Use]:
        """By the name of the thread, for a second. Threads of one name are one."""
        seconds = self._end - self._begin
        sums: dict[str, Use] = {}
        for thread, last in self._last.items():
            use = sums.setdefault(self._names[thread], Use())
            use += (last - self._first.get(thread, Use())).per_second(seconds)
        return sums

    def use(self) -> Use:
        total = Use()
        for use in self.threads().values():
            total += use
        return total


def pss_mib(roots: list[int]) -> float:
    """Proportional memory: a page that n processes share counts as the n-th part of one."""
    total = 0
    for pid in [pid for root in roots for pid in tree(root)]:
        for line in read(PROC / str(pid) / "smaps_rollup").splitlines():
            if line.startswith("Pss:"):
                total += int(line.split()[1])
    return total / 1024


def machine_busy_ms() -> float:
    """What all processors together have worked since the machine started."""
    fields = [int(value) for value in read(PROC / "stat").splitlines()[0].split()[1:]]
    user, nice, system, _idle, _waiting, interrupts, soft_interrupts = fields[:7]
    return (user + nice + system + interrupts + soft_interrupts) * 1000 / TICKS_PER_SECOND


@contextmanager
def processors_awake() -> Iterator[list[int]]:
    """Gives every processor work that steps back for any other, and yields who does it.

    A clock works a few milliseconds and sleeps. What these cost depends on how deep the processor
    slept, above all in a virtual machine: the same tick has been seen to cost three times as much on
    a quiet machine as on a busy one.
    """
    spinners = [spin_on(processor) for processor in sorted(os.sched_getaffinity(0))]
    try:
        yield spinners
    finally:
        for pid in spinners:
            os.kill(pid, signal.SIGKILL)
            os.waitpid(pid, 0)


def spin_on(processor: int) -> int:
    parent = os.getpid()
    pid = os.fork()
    if pid == 0:
        try:
            os.sched_setaffinity(0, {processor})
            os.sched_setscheduler(0, os.SCHED_IDLE, os.sched_param(0))
            while os.getppid() == parent:  # and no longer, should this script be killed
                sum(range(100_000))
        finally:
            os._exit(0)  # what the parent has to clean up is not this one's
    return pid


def draws_with_opengl(root: int) -> bool:
    """Whether a driver of OpenGL is loaded, which the software renderer of Qt Quick never needs."""
    drivers = ("libgallium", "_dri.so", "libEGL_nvidia", "libGLX_nvidia")
    return any(name in read(PROC / str(pid) / "maps") for pid in tree(root) for name in drivers)


def measure(programs: dict[str, list[int]], seconds: float,
            alive: Callable[[], bool] = lambda: True) -> dict[str, Figures]:
    """Watches programs, by name and first processes, at the same time for some seconds.

    Raises RuntimeError when they do not live so long.
    """
    watches = {name: Watch(roots) for name, roots in programs.items()}
    busy_before, begin = machine_busy_ms(), time.monotonic()
    while (left := begin + seconds - time.monotonic()) > 0:
        time.sleep(min(left, SAMPLE_SECONDS))
        for watch in watches.values():
            watch.sample()
        if not alive():
            raise RuntimeError("the program has ended while it was measured")
    busy = (machine_busy_ms() - busy_before) / (time.monotonic() - begin)
    # Last, since adding up its pages holds a process up.
    return {name: Figures(watch.use(), watch.threads(), pss_mib(programs[name]), busy)
            for name, watch in watches.items()}
