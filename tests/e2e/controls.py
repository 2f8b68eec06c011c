"""Reads the tuner's controls through the desktop's accessibility bus as a
screen reader does, and works them through it: every settings switch, every
sound row and the reference-A wheel, each with its role, name and state.
The names are looked up in the language's translation file.

    controls.py LANGUAGE TRANSLATIONS_DIR

The window starts with the preferences that screen-readers-hear-the-controls.sh
writes; each check prints one line, a failure names what was read instead.
"""
import sys
import time
import xml.etree.ElementTree as ElementTree

import pyatspi

language, translations = sys.argv[1], sys.argv[2]
texts = {}
if language != "en":
    for message in ElementTree.parse(f"{translations}/veltra_{language}.ts").iter("message"):
        translation = message.find("translation")
        if translation is not None and translation.text:
            texts[message.find("source").text] = translation.text


def tr(text):
    return texts.get(text, text)


# The switches as the file that the script wrote sets them, in the screen's order.
SWITCHES = [("Tone Generator", False), ("Green Overlay", True), ("Sharps Only", False),
            ("Continuous Display", True), ("Piano Keyboard", False), ("Clock", True),
            ("Sound Classification", True)]
SOUNDS = [("Guitar", False), ("Violin", True), ("Piano", False), ("Voice", True)]
failures = 0


def check(ok, line):
    global failures
    print(("ok: " if ok else "FAILED: ") + line)
    failures += not ok


def app():
    for candidate in pyatspi.Registry.getDesktop(0):
        if candidate is not None and candidate.name == "Veltra":
            return candidate
    return None


def shown(role):
    """Every element of the role, as (name, element). Qt tells the pages
    below the one in front, and the rows scrolled out of the window, as not
    visible, so visibility cannot tell them apart: the names do."""
    found = []

    def walk(node, depth):
        if node is None or depth > 60:
            return
        try:
            if node.getRoleName() == role:
                found.append((node.name, node))
            for i in range(node.childCount):
                walk(node.getChildAtIndex(i), depth + 1)
        except Exception:  # an element may go away while it is read
            return

    walk(app(), 0)
    return found


def wait_for(role, name, seconds=10, starts=False):
    deadline = time.monotonic() + seconds
    while time.monotonic() < deadline:
        for found, element in shown(role):
            if found == name or (starts and found.startswith(name)):
                return element
        time.sleep(0.1)
    names = [found for found, _ in shown(role)]
    check(False, f"no {role} named {name!r}; there are {names}")
    sys.exit(1)


def act(element, action):
    actions = element.queryAction()
    names = [actions.getName(i) for i in range(actions.nActions)]
    if action not in names:
        check(False, f"{element.name!r} offers {names}, not {action}")
        sys.exit(1)
    actions.doAction(names.index(action))


def checked(element):
    return element.getState().contains(pyatspi.STATE_CHECKED)


def becomes(probe, want, seconds=3):
    deadline = time.monotonic() + seconds
    while probe() != want and time.monotonic() < deadline:
        time.sleep(0.05)
    return probe() == want


def read_rows(rows):
    for name, on in rows:
        element = wait_for("check box", tr(name))
        check(checked(element) == on,
              f"check box {element.name!r} is {'on' if checked(element) else 'off'}, want {'on' if on else 'off'}")


deadline = time.monotonic() + 20
while app() is None and time.monotonic() < deadline:
    time.sleep(0.2)

act(wait_for("push button", tr("Settings")), "Press")
read_rows(SWITCHES)
sharps = wait_for("check box", tr("Sharps Only"))
act(sharps, "Toggle")
check(becomes(lambda: checked(sharps), True), f"{sharps.name!r} is on after a toggle through the bus")

act(wait_for("push button", tr("Select Sounds")), "Press")
read_rows(SOUNDS)
guitar = wait_for("check box", tr("Guitar"))
act(guitar, "Toggle")
check(becomes(lambda: checked(guitar), True), f"{guitar.name!r} is on after a toggle through the bus")

act(wait_for("push button", tr("Back")), "Press")
act(wait_for("push button", tr("Reference A\u2084"), starts=True), "Press")
wheel = wait_for("spin button", tr("Reference A4 in hertz"))
value = wheel.queryValue()
check((value.currentValue, value.minimumValue, value.maximumValue) == (442, 400, 499),
      f"the wheel {wheel.name!r} reads {value.currentValue:g} Hz of {value.minimumValue:g} to {value.maximumValue:g}")
act(wheel, "Increase")
check(becomes(lambda: wheel.queryValue().currentValue, 443), "the wheel reads 443 Hz after an increase")
sys.exit(1 if failures else 0)
