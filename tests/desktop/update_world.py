#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT

"""update_world.py FOLDER PROGRAM [ARGUMENT...]

Becomes PROGRAM, in a world where the update service is a web server of FOLDER: a network that has
only this machine, FOLDER/hosts in the place of /etc/hosts, FOLDER/authorities in that of the
system's, FOLDER/srv in that of /srv, and nginx with FOLDER/nginx.conf. If FOLDER/backend says so, a
server of that kind stands behind it. PROGRAM keeps the process id, and the servers end with it.
"""

import ctypes
import fcntl
import os
import pathlib
import signal
import socket
import struct
import subprocess
import sys
import time

LIBC = ctypes.CDLL(None, use_errno=True)
BACKEND_PORT = 8080


def check(result: int) -> None:
    if result != 0:
        raise OSError(ctypes.get_errno(), os.strerror(ctypes.get_errno()))


def enter_own_namespaces() -> None:
    user, group = os.getuid(), os.getgid()
    os.unshare(os.CLONE_NEWUSER | os.CLONE_NEWNET | os.CLONE_NEWNS)
    pathlib.Path("/proc/self/setgroups").write_text("deny")
    pathlib.Path("/proc/self/uid_map").write_text(f"0 {user} 1")
    pathlib.Path("/proc/self/gid_map").write_text(f"0 {group} 1")


def bind(source: pathlib.Path, target: str) -> None:
    bind_recursively = 4096 | 16384  # MS_BIND, MS_REC
    check(LIBC.mount(os.fsencode(source), target.encode(), None, bind_recursively, None))


def bring_loopback_up() -> None:
    set_flags = 0x8914  # SIOCSIFFLAGS
    up = 1
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as anything:
        fcntl.ioctl(anything, set_flags, struct.pack("16sH14x", b"lo", up))


def end_with_parent() -> None:
    parent_death_signal = 1  # PR_SET_PDEATHSIG
    check(LIBC.prctl(parent_death_signal, signal.SIGTERM, 0, 0, 0))


def wait_for_port(port: int) -> None:
    for _ in range(200):
        with socket.socket() as client:
            if client.connect_ex(("127.0.0.1", port)) == 0:
                return
        time.sleep(0.02)
    sys.exit(f"nothing listens on port {port}")


def answer_as(kind: str) -> None:
    """Half: promises more than it sends. Silent: takes the question and never answers."""
    server = socket.create_server(("127.0.0.1", BACKEND_PORT))
    connections = []
    while True:
        connection, _ = server.accept()
        connections.append(connection)
        if kind == "half":
            connection.recv(4096)
            connection.sendall(
                b"HTTP/1.1 200 OK\r\nContent-Type: application/json\r\nContent-Length: 200\r\n\r\n"
                b'{"result": true, "name": "Vesper", "version": "99.0.0.0"'
            )
            connection.close()


def start_servers(folder: pathlib.Path) -> None:
    backend = folder / "backend"
    if backend.exists():
        command = [sys.executable, __file__, "--backend", backend.read_text().strip()]
        subprocess.Popen(command, preexec_fn=end_with_parent)
        wait_for_port(BACKEND_PORT)
    command = ["/usr/sbin/nginx", "-p", folder, "-c", folder / "nginx.conf", "-e", folder / "error.log"]
    subprocess.Popen(command, preexec_fn=end_with_parent)
    wait_for_port(443)


def main() -> None:
    if sys.argv[1] == "--backend":
        answer_as(sys.argv[2])
    folder = pathlib.Path(sys.argv[1])
    enter_own_namespaces()
    bind(folder / "hosts", "/etc/hosts")
    bind(folder / "authorities", "/etc/ssl/certs")
    bind(folder / "srv", "/srv")
    bring_loopback_up()
    start_servers(folder)
    os.execv(sys.argv[2], sys.argv[2:])


main()
