# A RemoteDesktop portal as desktops have them, as far as a keyboard needs one: what is sent
# to it goes into a file, a line for each event, "down 97" (of a key by its code, "down #16"). As with those, calls that are on
# their way at the same time may be taken in any order.
#
# Usage: small_portal.py FILE MODE [KEYS]
#   MODE  accept  the user agrees
#         refuse  he does not
#         token   he agrees for good: version 2, with a token
#         desktop he agrees; it takes as long for each event as GNOME does, and the event is
#                 followed by the time
#   KEYS  the session is closed after so many keys (a second one is not)
import random
import sys
import time

from gi.repository import Gio, GLib

out = open(sys.argv[1], "a", buffering=1, encoding="ascii")
mode = sys.argv[2]
keys_left = int(sys.argv[3]) if len(sys.argv) > 3 else 0
PATH = "/org/freedesktop/portal/desktop"
XML = """<node><interface name="org.freedesktop.portal.RemoteDesktop">
<method name="CreateSession"><arg type="a{sv}" direction="in"/><arg type="o" direction="out"/></method>
<method name="SelectDevices"><arg type="o" direction="in"/><arg type="a{sv}" direction="in"/>
 <arg type="o" direction="out"/></method>
<method name="Start"><arg type="o" direction="in"/><arg type="s" direction="in"/>
 <arg type="a{sv}" direction="in"/><arg type="o" direction="out"/></method>
<method name="NotifyKeyboardKeysym"><arg type="o" direction="in"/><arg type="a{sv}" direction="in"/>
 <arg type="i" direction="in"/><arg type="u" direction="in"/></method>
<method name="NotifyKeyboardKeycode"><arg type="o" direction="in"/><arg type="a{sv}" direction="in"/>
 <arg type="i" direction="in"/><arg type="u" direction="in"/></method>
<property name="AvailableDeviceTypes" type="u" access="read"/>
<property name="version" type="u" access="read"/>
</interface></node>"""
started = set()


def request(bus, sender, options, code, results):
    handle = f"{PATH}/request/{sender[1:].replace('.', '_')}/{options['handle_token']}"
    answer = GLib.Variant("(ua{sv})", (code, results))
    GLib.timeout_add(100, lambda: bus.emit_signal(
        sender, handle, "org.freedesktop.portal.Request", "Response", answer) and False)
    return GLib.Variant("(o)", (handle,))


def on_call(bus, sender, path, interface, method, parameters, invocation):
    arguments = parameters.unpack()
    if method == "CreateSession":
        session = f"{PATH}/session/{arguments[0]['session_handle_token']}"
        results = {"session_handle": GLib.Variant("s", session)}
        invocation.return_value(request(bus, sender, arguments[0], 0, results))
    elif method == "SelectDevices":
        out.write("token %s\n" % arguments[1].get("restore_token", "none"))
        invocation.return_value(request(bus, sender, arguments[1], 0, {}))
    elif method == "Start":
        results = {"devices": GLib.Variant("u", 1)}
        if mode == "token":
            results["restore_token"] = GLib.Variant("s", "jeton")
        started.add(arguments[0])
        code = 1 if mode == "refuse" else 0
        invocation.return_value(request(bus, sender, arguments[2], code, results))
    elif arguments[0] not in started:
        invocation.return_dbus_error("org.freedesktop.DBus.Error.AccessDenied", "no session")
    else:
        sign = "#" if method == "NotifyKeyboardKeycode" else ""
        key = (bus, sender, sign, arguments, invocation)
        if mode == "desktop":
            time.sleep(0.0006)
            take(*key)
        else:
            GLib.timeout_add(random.randrange(4), take, *key)


def take(bus, sender, sign, arguments, invocation):
    global keys_left
    event = "%s %s%d" % ("down" if arguments[3] else "up", sign, arguments[2])
    out.write(event + (" %.6f" % time.monotonic() if mode == "desktop" else "") + "\n")
    invocation.return_value(None)
    if keys_left > 0:
        keys_left -= 1
        if keys_left == 0:
            started.discard(arguments[0])
            bus.emit_signal(sender, arguments[0], "org.freedesktop.portal.Session", "Closed",
                            GLib.Variant("(a{sv})", ({},)))
    return False


def on_get(bus, sender, path, interface, name):
    return GLib.Variant("u", 2 if name == "version" and mode == "token" else 1)


def on_bus(bus, name):
    node = Gio.DBusNodeInfo.new_for_xml(XML)
    bus.register_object(PATH, node.interfaces[0], on_call, on_get, None)


Gio.bus_own_name(Gio.BusType.SESSION, "org.freedesktop.portal.Desktop", 0, on_bus, None, None)
GLib.MainLoop().run()
