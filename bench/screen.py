# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT
"""Looks at windows as a user does, and tells when a clock was painted."""

import time
from collections.abc import Callable
from dataclasses import dataclass

from Xlib import X, Xatom, display, error
from Xlib.protocol import event

ROWS = 12  # of a window that are looked at, and points in each row
POINTS = 48
POLL_SECONDS = 0.004
STILL_SECONDS = 3
PAINTED = 0.9  # of the points that the clock covers look as they do later; hands go on moving


@dataclass(frozen=True)
class Geometry:
    """A place on the screen, in pixels, without the window manager's frame."""

    x: int
    y: int
    width: int
    height: int


@dataclass(frozen=True)
class View:
    """A part of a window's pixels as they were at one time."""

    when: float
    geometry: Geometry
    points: tuple[bytes, ...]

    def shows_something(self) -> bool:
        """Whether there is more than a plain colour, of the wallpaper or of an empty window."""
        return len(set(self.points)) > 1


class Screen:
    def __init__(self) -> None:
        self._display = display.Display()
        # A window may end between two requests; what that leads to is seen anyway.
        self._display.set_error_handler(lambda *_: None)
        self._root = self._display.screen().root
        self._others = set(self._windows())

    def _atom(self, name: str) -> int:
        return int(self._display.intern_atom(name))

    def _windows(self) -> list[int]:
        clients = self._root.get_full_property(self._atom("_NET_CLIENT_LIST"), Xatom.WINDOW)
        return list(clients.value) if clients else []

    def wallpaper(self) -> bytes:
        """The colour of the screen's last corner, where no window is."""
        width, height = (self._display.screen()[key] for key in ("width_in_pixels", "height_in_pixels"))
        return bytes(self._root.get_image(width - 1, height - 1, 1, 1, X.ZPixmap, 0xFFFFFF).data[:3])

    def wait_until_empty(self, seconds: float) -> None:
        """Until no window is left that came after this object."""
        end = time.monotonic() + seconds
        while set(self._windows()) - self._others and time.monotonic() < end:
            time.sleep(POLL_SECONDS)

    def wait_until_gone(self, number: int, seconds: float) -> bool:
        """Until a window is on the screen no longer."""
        end = time.monotonic() + seconds
        while self.geometry(number) and time.monotonic() < end:
            time.sleep(POLL_SECONDS)
        return not self.geometry(number)

    def find(self) -> int | None:
        """The largest window that came after this object, if one is on the screen."""
        found: list[tuple[int, int]] = []
        for number in set(self._windows()) - self._others:
            geometry = self.geometry(number)
            if geometry:
                found.append((geometry.width * geometry.height, number))
        return max(found)[1] if found else None

    def geometry(self, number: int) -> Geometry | None:
        """Where a window is; None when it is not on the screen."""
        window = self._display.create_resource_object("window", number)
        try:
            if window.get_attributes().map_state != X.IsViewable:
                return None
            size = window.get_geometry()
            place = self._root.translate_coords(window, 0, 0)
            return Geometry(place.x, place.y, size.width, size.height)
        except error.XError:
            return None

    def resize(self, number: int, side: int) -> None:
        window = self._display.create_resource_object("window", number)
        window.configure(width=side, height=side)
        self._display.sync()

    def minimise(self, number: int) -> None:
        window = self._display.create_resource_object("window", number)
        message = event.ClientMessage(window=window, client_type=self._atom("WM_CHANGE_STATE"),
                                      data=(32, [3, 0, 0, 0, 0]))  # ICCCM: IconicState
        self._root.send_event(
            message, event_mask=X.SubstructureRedirectMask | X.SubstructureNotifyMask)
        self._display.sync()

    def unmap(self, number: int) -> None:
        self._display.create_resource_object("window", number).unmap()
        self._display.sync()

    def view(self, geometry: Geometry) -> View | None:
        """Pixels of the screen, so that they have come through the compositor."""
        points: list[bytes] = []
        try:
            for row in range(ROWS):
                y = geometry.y + (2 * row + 1) * geometry.height // (2 * ROWS)
                line = self._root.get_image(
                    geometry.x, y, geometry.width, 1, X.ZPixmap, 0xFFFFFF).data
                step = max(1, geometry.width // POINTS)
                points += [line[4 * x:4 * x + 3] for x in range(step // 2, geometry.width, step)]
        except error.XError:  # a part of it lies outside for a moment
            return None
        return View(time.monotonic(), geometry, tuple(points))

    def watch(self, seconds: float, alive: Callable[[], bool], side: int) -> list[View]:
        """Views of the first window from now until it has looked the same for a while.

        A clock's hand moves, so looking the same means that PAINTED of the points do.
        """
        views: list[View] = []
        end = time.monotonic() + seconds
        still_since = time.monotonic()
        resized: set[int] = set()
        while time.monotonic() < end and alive():
            number = self.find()
            geometry = self.geometry(number) if number else None
            if geometry and number not in resized and (geometry.width, geometry.height) != (side, side):
                self.resize(number, side)
                resized.add(number)
            view = self.view(geometry) if geometry else None
            if view:
                views.append(view)
                # Compared with what was there then: a slow fade is not still.
                then = next(v for v in views if v.when >= still_since)
                if not view.shows_something() or alike(then, view) < PAINTED:
                    still_since = view.when
                if view.when - still_since > STILL_SECONDS:
                    break
            time.sleep(POLL_SECONDS)
        return views


def alike(one: View, other: View) -> float:
    """The share of points that have the same colour."""
    if one.geometry != other.geometry or len(one.points) != len(other.points):
        return 0
    same = sum(a == b for a, b in zip(one.points, other.points))
    return same / len(one.points)


def painted_at(views: list[View], wallpaper: bytes) -> float | None:
    """When the clock was first seen whole: it had its last place, and PAINTED of what it covers
    looked as in the last view. None if it never was."""
    if not views or not views[-1].shows_something():
        return None
    last = views[-1]
    covered = [i for i, point in enumerate(last.points) if point != wallpaper]
    for view in views:
        if view.geometry == last.geometry:
            same = sum(view.points[i] == last.points[i] for i in covered)
            if same >= PAINTED * len(covered):
                return view.when
    return None
