#!/ usr / bin / python3
"""Prints what a screen reader finds in the program named on the command line:
a line per widget and row, its role and its name. With "--places", each line
begins with "left top width height" on the screen and "*" or "-" for selected or
not; a text is followed by its runs ("run FROM TO ATTRIBUTES", from 0) and, for
"--at N", by the place of that character ("at left top width height")."""
import sys
import time
import warnings

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402


warnings.simplefilter("ignore", DeprecationWarning)  # the names of older libraries


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


def place(extents):
    return f"{extents.x} {extents.y} {extents.width} {extents.height}"


def show_text(text):
    count = text.get_character_count()
    print("text:", text.get_text(0, count))
    at = 0
    while at < count:
        found, start, end = text.get_attribute_run(at, False)
        print("run", start, end, sorted(found.items()))
        at = max(end, at + 1)
    if AT is not None:
        print("at", place(text.get_character_extents(AT, Atspi.CoordType.SCREEN)))


def show(thing):
    if thing is None:
        return
    name = thing.get_name()
    if name:
        before = ""
        if PLACES:
            component = thing.get_component_iface()
            extents = component.get_extents(Atspi.CoordType.SCREEN) if component else Atspi.Rect()
            chosen = thing.get_state_set().contains(Atspi.StateType.SELECTED)
            before = f"{place(extents)} {'*' if chosen else '-'} "
        print(f"{before}{thing.get_role_name()}: {name}")
    text = thing.get_text_iface() if PLACES else None
    if text:
        show_text(text)
    for k in range(min(thing.get_child_count(), 200)):
        show(thing.get_child_at_index(k))


PLACES = "--places" in sys.argv
AT = int(sys.argv[sys.argv.index("--at") + 1]) if "--at" in sys.argv else None
show(find(sys.argv[1]))
