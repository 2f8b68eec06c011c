"""Waits until the tuner's window, read through the desktop's accessibility
bus, shows what is expected; prints what it last read. Exit 0 when found.

    readout.py NOTE SECONDS             the readout names NOTE ("G 3,")
    readout.py --paused LINE SECONDS    LINE is shown and no readout at all
    readout.py --button NAME SECONDS    a button named NAME is shown
"""
import sys
import time

import pyatspi

mode = sys.argv[1] if sys.argv[1].startswith("--") else None
paused = mode == "--paused"
role = "push button" if mode == "--button" else "label"
expected, seconds = sys.argv[-2], float(sys.argv[-1])


def labels(node, depth=0):
    if node is None or depth > 40:
        return
    try:
        if node.getRoleName() == role and node.name:
            yield node.name
        for i in range(node.childCount):
            yield from labels(node.getChildAtIndex(i), depth + 1)
    except Exception:  # an element may go away while it is being read
        return


def shown(names):
    if mode == "--button":
        return expected in names, f"buttons: {names}"
    readouts = [name for name in names if "hertz" in name]
    if paused:
        return expected in names and not readouts, f"lines: {names}"
    return bool(readouts) and readouts[0].startswith(expected), f"readout: {readouts[0] if readouts else '(none)'}"


deadline = time.monotonic() + seconds
last = "(the tuner's window was not found on the accessibility bus)"
while time.monotonic() < deadline:
    for app in pyatspi.Registry.getDesktop(0):
        if app is not None and app.name == "Veltra":
            found, last = shown(list(labels(app)))
            if found:
                print(last)
                sys.exit(0)
    time.sleep(0.1)
print(last)
sys.exit(1)
