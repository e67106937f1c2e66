# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT
"""What is measured: each clock, and Vesper in its states, sizes and renderers."""

import json
from collections.abc import Callable, Mapping
from dataclasses import dataclass, field, replace
from enum import Enum
from pathlib import Path

SIDE = 320  # of every window that is compared, in pixels
PLACE = 40  # from the left and from the top of the screen
FAKE_TIME = "/usr/$LIB/faketime/libfaketimeMT.so.1"  # ld.so(8) has the folder of the architecture


class State(Enum):
    SHOWN = "shown"
    MINIMISED = "minimised"
    UNMAPPED = "unmapped"


class Renderer(Enum):
    SOFTWARE = "software"
    OPENGL = "OpenGL"


@dataclass(frozen=True)
class Places:
    """Where the built programs are, and the folder's name that Vesper's settings folder lies in."""

    build: Path
    example: Path
    maker: str


# Puts the settings into a fresh home.
Prepare = Callable[[Path, Places, "Variant"], None]


@dataclass(frozen=True)
class Variant:
    """One row of the table."""

    name: str
    title: str
    command: tuple[str, ...]
    prepare: Prepare = lambda home, places, variant: None
    environment: Mapping[str, str] = field(default_factory=dict)
    settings: Mapping[str, object] = field(default_factory=dict)
    side: int = SIDE  # as the program counts
    scale: int = 1  # pixels of the screen for one of the program's
    state: State = State.SHOWN
    renderer: Renderer | None = None  # asked for; the row is left out when it draws with another

    @property
    def pixels(self) -> int:
        return self.side * self.scale

    def arguments(self, places: Places) -> list[str]:
        words = {"build": places.build, "example": places.example,
                 "empty": places.example.with_name("empty_window"), "side": self.side, "place": PLACE}
        return [word.format(**words) for word in self.command]

    def at_time(self, time: str, **more: str) -> "Variant":
        """The same program at another time, in the words of faketime(1)."""
        return replace(self, environment={**self.environment, "LD_PRELOAD": FAKE_TIME,
                                          "FAKETIME": time, **more})


def prepare_vesper(home: Path, places: Places, variant: Variant) -> None:
    settings = {
        "AutoCheckUpdate": False,  # nobody is asked while we measure
        "Geometry": {"Left": PLACE, "Top": PLACE, "Width": variant.side, "Height": variant.side,
                     "DevicePixelRatio": variant.scale},
        **variant.settings,
    }
    folder = home / ".local/share" / places.maker / "Vesper"
    folder.mkdir(parents=True)
    (folder / "config.json").write_text(json.dumps(settings), encoding="utf-8")


def prepare_plasma(home: Path, places: Places, variant: Variant) -> None:
    """Plasma's clock has no second hand unless it is told to."""
    folder = home / ".config"
    folder.mkdir()
    (folder / "plasmawindowedrc").write_text(
        "[Applets][3]\nimmutability=1\nplugin=org.kde.plasma.analogclock\n\n"
        f"[Applets][3][Configuration]\ngeometry={PLACE},{PLACE},{variant.side},{variant.side}\n\n"
        "[Applets][3][Configuration][General]\nshowSecondHand=true\n", encoding="utf-8")


def vesper(name: str, title: str, **differences: object) -> Variant:
    return Variant(name, title, ("{build}/vesper",), prepare_vesper,
                   **differences)  # type: ignore[arg-type]


def plasma(name: str, title: str, environment: Mapping[str, str]) -> Variant:
    return Variant(name, title, ("plasmawindowed", "org.kde.plasma.analogclock"), prepare_plasma,
                   environment)


XCLOCK = Variant("xclock", "xclock",
                 ("xclock", "-analog", "-update", "1", "-geometry", "{side}x{side}+{place}+{place}"))
EXAMPLE = Variant("qt-example", "Qt's widget example",
                  ("{example}", "-qwindowgeometry", "{side}x{side}+{place}+{place}"))
PLASMA = plasma("plasma", "Plasma's clock", {})
PLASMA_SOFTWARE = plasma("plasma-software", "Plasma's clock, software",
                         {"QT_QUICK_BACKEND": "software"})
VESPER = vesper("vesper", "Vesper")
# Drawn as Vesper draws. Not a clock: what Qt Quick costs before anything is in it.
EMPTY = Variant("qt-quick-empty", "an empty window of Qt Quick",
                ("{empty}", "{side}", "{place}"),
                environment={"QT_QUICK_BACKEND": "software", "QT_NO_GUI_THREADPOOL": "1"})

COMPARED = [XCLOCK, EXAMPLE, EMPTY, PLASMA, PLASMA_SOFTWARE, VESPER]

STATES = [
    vesper("vesper-no-seconds", "Vesper, no second hand", settings={"SecondHand": False}),
    vesper("vesper-minimised", "Vesper, minimised", state=State.MINIMISED),
    vesper("vesper-unmapped", "Vesper, unmapped", state=State.UNMAPPED),
]

SIZES = [vesper(f"vesper-{side}", f"Vesper, {side} pixels", side=side)
         for side in (720, 1080, 2160, 4320, 7680)]

# What a program is told so that it draws with one renderer or the other. A build that does not obey
# loses these rows, not the rest.
RENDERERS: list[tuple[Renderer, dict[str, str]]] = [
    (Renderer.SOFTWARE, {"QT_QUICK_BACKEND": "software"}),
    (Renderer.OPENGL, {"QT_QUICK_BACKEND": "rhi", "QSG_RHI_BACKEND": "opengl"}),
]

RENDERED = [
    vesper(f"vesper-{renderer.value.lower()}-{scale}x", f"Vesper, {renderer.value}, {scale}x",
           renderer=renderer, scale=scale,
           environment={**environment, "QT_SCALE_FACTOR": str(scale)})
    for renderer, environment in RENDERERS
    for scale in (1, 2)
]

VARIANTS = [*COMPARED, *STATES, *SIZES, *RENDERED]

# The row of the resize steps, which come from a test of the clock and have no columns of the table.
RESIZE = "vesper-resize"

SHORT = [XCLOCK.name, EXAMPLE.name, EMPTY.name, PLASMA.name, PLASMA_SOFTWARE.name, VESPER.name,
         "vesper-no-seconds", "vesper-minimised", "vesper-1080"]
