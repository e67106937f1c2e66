#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 Marrowby Inc.
# SPDX-License-Identifier: MIT

"""accessible_press.py PID NAME
Uses the control NAME of the program PID as a screen reader does, by its first action. Fails when
there is no such control.
"""

import sys
import time

from accessible_tree import PATIENCE_SECONDS, Atspi, find_program


def find_control(accessible, name):
    action = accessible.get_action_iface()
    if accessible.get_name() == name and action and action.get_n_actions():
        return action
    for index in range(accessible.get_child_count()):
        child = accessible.get_child_at_index(index)
        found = find_control(child, name) if child else None
        if found:
            return found
    return None


def main():
    pid, name = int(sys.argv[1]), sys.argv[2]
    Atspi.init()
    end = time.monotonic() + PATIENCE_SECONDS
    while time.monotonic() < end:
        program = find_program(pid)
        control = find_control(program, name) if program else None
        if control:
            return 0 if control.do_action(0) else 1
        time.sleep(0.1)
    return 1


if __name__ == "__main__":
    sys.exit(main())
