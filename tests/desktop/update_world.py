#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT

"""A world with an update service of its own, to start a clock in.

update_world.py make FOLDER CASE SITE VERSION
    Makes a service in FOLDER that behaves as CASE says, for a program of VERSION. SITE is the
    configuration of the real service.
update_world.py enter FOLDER PROGRAM [ARGUMENT...]
    Becomes PROGRAM, in a network that has only this machine and the web server of FOLDER, with
    FOLDER/hosts in the place of /etc/hosts, FOLDER/authorities in that of the system's and
    FOLDER/srv in that of /srv. PROGRAM keeps the process id, and the servers end with it.
"""

import dataclasses
import fcntl
import os
import pathlib
import re
import signal
import socket
import struct
import subprocess
import sys
import time

import own_namespaces

BACKEND_PORT = 8080
MAKE_ANSWER = pathlib.Path(__file__).resolve().parents[2] / "packaging/update-service/make-answer"
ANSWER = "srv/vesper-update/answers/vesper.json"
HUGE = 1 << 30  # bytes

OWN_SERVER = """
server {{
    listen 443 ssl;
    ssl_certificate /srv/vesper-update/tls/fullchain.pem;
    ssl_certificate_key /srv/vesper-update/tls/privkey.pem;
    {}
}}
"""
PASS_ON = f"location / {{ proxy_pass http://127.0.0.1:{BACKEND_PORT}; proxy_read_timeout 1h; }}"
REDIRECT = f"""
    location / {{ return 301 /moved; }}
    location = /moved {{ default_type application/json; alias /{ANSWER}; }}
"""


@dataclasses.dataclass
class Case:
    """A service: what it answers, and what differs from the real one."""

    release: str = ""  # the version in its answer
    answer: bytes = b""  # or the whole answer
    size: int = 0  # or only how large it is
    server: str = ""  # directives of another server in the place of the site
    backend: str = ""  # what stands behind that
    known_authority: bool = True
    own_name: bool = True


CASES = {
    "newer": Case(release="99.0.0.0"),
    "equal": Case(release="VERSION"),
    "older": Case(release="0.9.0.0"),
    "no release": Case(answer=b'{"result": false, "version": "99.0.0.0"}'),
    "no JSON": Case(answer=b"<html>99.0.0.0</html>"),
    "array": Case(answer=b'[{"result": true, "version": "99.0.0.0"}]'),
    "nothing written": Case(),
    "not there": Case(server="return 404;"),
    "redirect": Case(release="99.0.0.0", server=REDIRECT),
    "another authority": Case(release="99.0.0.0", known_authority=False),
    "another host": Case(release="99.0.0.0", own_name=False),
    "half": Case(server=PASS_ON, backend="half"),
    "huge": Case(size=HUGE),
    "silent": Case(server=PASS_ON, backend="silent"),
}


def openssl(*arguments: object) -> None:
    subprocess.run(["openssl", *map(str, arguments)], check=True, capture_output=True)


def make_authority(folder: pathlib.Path) -> None:
    folder.mkdir()
    openssl(
        *("req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", 2, "-subj", "/CN=Test authority"),
        *("-keyout", folder / "authority.key", "-out", folder / "authority.pem"),
    )


def make_certificate(authority: pathlib.Path, host: str, folder: pathlib.Path) -> None:
    openssl(
        *("req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", 2, "-subj", f"/CN={host}"),
        *("-CA", authority / "authority.pem", "-CAkey", authority / "authority.key"),
        *("-addext", f"subjectAltName=DNS:{host}", "-addext", "basicConstraints=critical,CA:FALSE"),
        *("-keyout", folder / "privkey.pem", "-out", folder / "fullchain.pem"),
    )


def trust(authority: pathlib.Path, folder: pathlib.Path) -> None:
    """In every form in which programs look for authorities."""
    folder.mkdir()
    certificate = (authority / "authority.pem").read_text()
    (folder / "ca-certificates.crt").write_text(certificate)
    (folder / "authority.pem").write_text(certificate)
    openssl("rehash", folder)


def write_answer(case: Case, path: pathlib.Path, version: str) -> None:
    page = "https://www.marrowby.example/vesper/"
    if case.release:
        release = version if case.release == "VERSION" else case.release
        options = ["--site", page, "--url", page + "vesper.exe", "--output", path]
        subprocess.run([MAKE_ANSWER, release, *options], check=True)
    elif case.size:
        path.touch()
        os.truncate(path, case.size)
    elif case.answer:
        path.write_bytes(case.answer)


def make(folder: pathlib.Path, case: Case, site: pathlib.Path, version: str) -> None:
    host = re.search(r"server_name (\S+);", site.read_text())[1]
    (folder / "srv/vesper-update/tls").mkdir(parents=True)
    (folder / ANSWER).parent.mkdir()
    (folder / "hosts").write_text(f"127.0.0.1 localhost {host}\n")
    make_authority(folder / "known")
    make_authority(folder / "unknown")
    make_certificate(
        folder / ("known" if case.known_authority else "unknown"),
        host if case.own_name else "other.example",
        folder / "srv/vesper-update/tls",
    )
    trust(folder / "known", folder / "authorities")
    write_answer(case, folder / ANSWER, version)
    (folder / "backend").write_text(case.backend)
    temporary = "".join(
        f"{kind}_temp_path tmp; " for kind in ("client_body", "proxy", "fastcgi", "uwsgi", "scgi")
    )
    server = OWN_SERVER.format(case.server) if case.server else f"include {site};"
    (folder / "nginx.conf").write_text(
        "user root; daemon off; worker_processes 1; pid nginx.pid; events {}\n"
        f"http {{ access_log off; {temporary}\n{server} }}\n"
    )


def bring_loopback_up() -> None:
    set_flags = 0x8914  # SIOCSIFFLAGS
    up = 1
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as anything:
        fcntl.ioctl(anything, set_flags, struct.pack("16sH14x", b"lo", up))


def end_with_parent() -> None:
    parent_death_signal = 1  # PR_SET_PDEATHSIG
    own_namespaces.call("prctl", parent_death_signal, signal.SIGTERM, 0, 0, 0)


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
    backend = (folder / "backend").read_text()
    if backend:
        command = [sys.executable, __file__, "backend", backend]
        subprocess.Popen(command, preexec_fn=end_with_parent)
        wait_for_port(BACKEND_PORT)
    command = ["/usr/sbin/nginx", "-p", folder, "-c", folder / "nginx.conf", "-e", folder / "error.log"]
    subprocess.Popen(command, preexec_fn=end_with_parent)
    wait_for_port(443)


def enter(folder: pathlib.Path, command: list[str]) -> None:
    own_namespaces.enter(os.CLONE_NEWNET | os.CLONE_NEWNS)
    own_namespaces.bind(folder / "hosts", "/etc/hosts")
    own_namespaces.bind(folder / "authorities", "/etc/ssl/certs")
    own_namespaces.bind(folder / "srv", "/srv")
    bring_loopback_up()
    start_servers(folder)
    os.execv(command[0], command)


def main() -> None:
    match sys.argv[1:]:
        case ["make", folder, name, site, version]:
            make(pathlib.Path(folder), CASES[name], pathlib.Path(site), version)
        case ["enter", folder, *command]:
            enter(pathlib.Path(folder), command)
        case ["backend", kind]:
            answer_as(kind)
        case _:
            sys.exit(__doc__)


main()
