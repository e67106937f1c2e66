#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT
"""Succeeds when a client owns the named X selection; a compositor owns _NET_WM_CM_S0."""

import ctypes
import sys


def has_owner(selection: str) -> bool:
    x11 = ctypes.CDLL("libX11.so.6")
    x11.XOpenDisplay.restype = ctypes.c_void_p
    x11.XInternAtom.restype = ctypes.c_ulong
    x11.XInternAtom.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_int]
    x11.XGetSelectionOwner.restype = ctypes.c_ulong
    x11.XGetSelectionOwner.argtypes = [ctypes.c_void_p, ctypes.c_ulong]
    x11.XCloseDisplay.argtypes = [ctypes.c_void_p]
    display = x11.XOpenDisplay(None)
    if not display:
        return False
    atom = x11.XInternAtom(display, selection.encode(), 0)
    owner = x11.XGetSelectionOwner(display, atom)
    x11.XCloseDisplay(display)
    return owner != 0


if __name__ == "__main__":
    sys.exit(0 if has_owner(sys.argv[1]) else 1)
