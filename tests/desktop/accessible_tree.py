#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT

"""accessible_tree.py PID SECONDS
Looks at the program PID as a screen reader does, and writes what it finds as JSON: "tree", one
entry for each accessible object with its role, name, depth and actions, and "events", what the
program told by itself in SECONDS after that.
"""

import json
import sys

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402  (the version comes first)

PATIENCE_SECONDS = 10


def find_program(pid):
    desktop = Atspi.get_desktop(0)
    for index in range(desktop.get_child_count()):
        program = desktop.get_child_at_index(index)
        if program and program.get_process_id() == pid:
            return program
    return None


def describe(accessible, depth=0):
    action = accessible.get_action_iface()
    states = accessible.get_state_set().get_states()
    entry = {
        "depth": depth,
        "role": accessible.get_role_name(),
        "name": accessible.get_name(),
        "actions": [action.get_action_name(i) for i in range(action.get_n_actions())] if action else [],
        "states": [state.value_nick for state in states],
    }
    tree = [entry]
    for index in range(accessible.get_child_count()):
        tree += describe(accessible.get_child_at_index(index), depth + 1)
    return tree


def main():
    pid, seconds = int(sys.argv[1]), float(sys.argv[2])
    events = []
    loop = GLib.MainLoop()
    Atspi.init()

    def note(event):
        if event.source and event.source.get_process_id() == pid:
            events.append(event.type)

    listener = Atspi.EventListener.new(note)
    tries = PATIENCE_SECONDS * 10

    def look():
        nonlocal tries
        tries -= 1
        program = find_program(pid)
        if (not program or not program.get_child_count()) and tries > 0:
            return True
        result["tree"] = describe(program) if program else []
        for kind in ("object", "window", "focus"):
            listener.register(kind)
        GLib.timeout_add(int(seconds * 1000), loop.quit)
        return False

    result = {"tree": [], "events": events}
    GLib.timeout_add(100, look)
    loop.run()
    json.dump(result, sys.stdout)


if __name__ == "__main__":
    main()
