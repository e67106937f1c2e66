#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT

"""A disk that fails, to start a clock on.

failing_disk.py read-only FOLDER PROGRAM [ARGUMENT...]
    Becomes PROGRAM, which cannot write into FOLDER nor below it. FOLDER may be /.
failing_disk.py full FOLDER PROGRAM [ARGUMENT...]
    Becomes PROGRAM, for which FOLDER, with what it holds, is a disk of its own that is full.
PROGRAM keeps the process id.
"""

import errno
import os
import pathlib
import shutil
import sys
import tempfile

import own_namespaces

PAGE = 4096
SIZE = 8 * PAGE


def forbid_writing(folder: pathlib.Path) -> None:
    if folder != pathlib.Path("/"):
        own_namespaces.bind(folder, str(folder))
    own_namespaces.forbid_writing(folder)


def fill(folder: pathlib.Path) -> None:
    with open(folder / "rest", "wb", buffering=0) as file:
        try:
            while True:
                file.write(bytes(PAGE))
        except OSError as error:
            if error.errno != errno.ENOSPC:
                raise


def make_full(folder: pathlib.Path) -> None:
    with tempfile.TemporaryDirectory() as copy:
        shutil.copytree(folder, copy, dirs_exist_ok=True)
        own_namespaces.mount_memory(folder, SIZE)
        shutil.copytree(copy, folder, dirs_exist_ok=True)
    fill(folder)


def main() -> None:
    failures = {"read-only": forbid_writing, "full": make_full}
    match sys.argv[1:]:
        case [name, folder, program, *arguments] if name in failures:
            own_namespaces.enter(os.CLONE_NEWNS)
            failures[name](pathlib.Path(folder))
            os.execv(program, [program, *arguments])
        case _:
            sys.exit(__doc__)


main()
