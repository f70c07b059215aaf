# The user of a GNOME session without a screen: he presses keys and the mouse's button as the
# desktop's own remote control lets somebody do.
#
# Usage: gnome_hand.py FIFO
#   key SYMBOL...     one after another, as numbers of xkbcommon-keysyms.h
#   window TITLE      waits until the window with that title has the focus
#   click X Y
# A line in FIFO each; the file FIFO.done has a line for each that is done.
import sys
import time

from gi.repository import Gio, GLib

MUTTER = "org.gnome.Mutter.RemoteDesktop"
# Only portals are told of windows.
PORTAL = "org.freedesktop.impl.portal.desktop.gtk"
bus = Gio.bus_get_sync(Gio.BusType.SESSION)
bus.call_sync("org.freedesktop.DBus", "/", "org.freedesktop.DBus", "RequestName",
              GLib.Variant("(su)", (PORTAL, 0)), None, 0, -1)


def mutter(path, method, signature=None, *values):
    interface = MUTTER if signature is None and method == "CreateSession" else MUTTER + ".Session"
    arguments = GLib.Variant(signature, values) if signature else None
    return bus.call_sync(MUTTER, path, interface, method, arguments, None, 0, -1)


def press(method, signature, code):
    for down in True, False:
        mutter(session, method, signature, code, down)
        time.sleep(0.05)


def focused(title):
    windows = bus.call_sync("org.gnome.Shell.Introspect", "/org/gnome/Shell/Introspect",
                            "org.gnome.Shell.Introspect", "GetWindows", None, None, 0, -1)
    return any(window.get("has-focus") and window.get("title") == title
               for window in windows.unpack()[0].values())


def leave_overview():
    """It is open in the beginning, and keeps the focus from windows."""
    bus.call_sync("org.gnome.Shell", "/org/gnome/Shell", "org.freedesktop.DBus.Properties", "Set",
                  GLib.Variant("(ssv)", ("org.gnome.Shell", "OverviewActive", GLib.Variant("b", False))),
                  None, 0, -1)


def obey(command, *arguments):
    if command == "key":
        for symbol in arguments:
            press("NotifyKeyboardKeysym", "(ub)", int(symbol, 16))
    elif command == "window":
        while not focused(" ".join(arguments)):
            leave_overview()
            time.sleep(0.1)
        time.sleep(0.3)
    elif command == "click":
        for x, y in (-10000, -10000), map(float, arguments):
            mutter(session, "NotifyPointerMotionRelative", "(dd)", x, y)
        press("NotifyPointerButton", "(ib)", 0x110)


session = mutter("/org/gnome/Mutter/RemoteDesktop", "CreateSession").unpack()[0]
mutter(session, "Start")
press("NotifyKeyboardKeysym", "(ub)", 0xFFE1)  # a keyboard is there from now on
while True:
    with open(sys.argv[1], encoding="utf-8") as commands:
        for line in commands:
            obey(*line.split())
            with open(sys.argv[1] + ".done", "a", encoding="utf-8") as done:
                done.write(line)
