#!/usr/bin/python3
"""Prints what a screen reader finds in the program named on the command line:
a line per widget and row, its role and its name."""
import sys
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402


def find(name, seconds=10):
    end = time.time() + seconds
    while time.time() < end:
        desktop = Atspi.get_desktop(0)
        for k in range(desktop.get_child_count()):
            child = desktop.get_child_at_index(k)
            if child and child.get_name() == name and child.get_child_count() > 0:
                return child
        time.sleep(0.2)
    sys.exit(f"no program {name} to be seen")


def show(thing):
    if thing is None:
        return
    name = thing.get_name()
    if name:
        print(f"{thing.get_role_name()}: {name}")
    for k in range(min(thing.get_child_count(), 200)):
        show(thing.get_child_at_index(k))


show(find(sys.argv[1]))
