# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT

"""Namespaces of this process alone, in which it may mount what it likes without being root."""

import ctypes
import os
import pathlib
import struct

LIBC = ctypes.CDLL(None, use_errno=True)


def call(function: str, *arguments: object) -> None:
    """A function of the C library; an error becomes an exception."""
    if LIBC[function](*arguments) != 0:
        raise OSError(ctypes.get_errno(), os.strerror(ctypes.get_errno()))


def enter(kinds: int) -> None:
    """KINDS are the flags of the namespaces beside that of the users."""
    user, group = os.getuid(), os.getgid()
    os.unshare(os.CLONE_NEWUSER | kinds)
    pathlib.Path("/proc/self/setgroups").write_text("deny")
    pathlib.Path("/proc/self/uid_map").write_text(f"0 {user} 1")
    pathlib.Path("/proc/self/gid_map").write_text(f"0 {group} 1")


def bind(source: pathlib.Path, target: str) -> None:
    bind_recursively = 4096 | 16384  # MS_BIND, MS_REC
    call("mount", os.fsencode(source), target.encode(), None, bind_recursively, None)


def forbid_writing(mount_point: pathlib.Path) -> None:
    """There and in all that is mounted below."""
    mount_setattr = 442
    present_folder, recursively, read_only = -100, 0x8000, 1
    attributes = struct.pack("QQQQ", read_only, 0, 0, 0)
    path = os.fsencode(mount_point)
    call("syscall", mount_setattr, present_folder, path, recursively, attributes, len(attributes))


def mount_memory(target: pathlib.Path, size: int) -> None:
    """An empty file system with room for SIZE bytes."""
    call("mount", b"none", os.fsencode(target), b"tmpfs", 0, f"size={size}".encode())
