"""Waits until the tuner's readout, read through the desktop's accessibility
bus, names the expected note; prints what it last read. Exit 0 when found."""
import sys
import time

import pyatspi

expected, seconds = sys.argv[1], float(sys.argv[2])


def labels(node, depth=0):
    if node is None or depth > 40:
        return
    try:
        if node.getRoleName() == "label" and node.name:
            yield node.name
        for i in range(node.childCount):
            yield from labels(node.getChildAtIndex(i), depth + 1)
    except Exception:  # an element may go away while it is being read
        return


deadline = time.monotonic() + seconds
last = "(the tuner's window was not found on the accessibility bus)"
while time.monotonic() < deadline:
    for app in pyatspi.Registry.getDesktop(0):
        if app is not None and app.name == "Veltra":
            readouts = [name for name in labels(app) if "hertz" in name]
            if readouts:
                last = readouts[0]
                if last.startswith(expected):
                    print(last)
                    sys.exit(0)
    time.sleep(0.25)
print("readout: " + last)
sys.exit(1)
