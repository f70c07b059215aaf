# As many keys as the desktop's RemoteDesktop portal takes in order: a client that does nothing
# else, with one call on its way at most.
#
# Usage: portal_raw.py COUNT
import sys

from gi.repository import Gio, GLib

NAME = "org.freedesktop.portal.Desktop"
PATH = "/org/freedesktop/portal/desktop"
count = int(sys.argv[1])
bus = Gio.bus_get_sync(Gio.BusType.SESSION)
loop = GLib.MainLoop()


def call(method, *arguments):
    return (NAME, PATH, "org.freedesktop.portal.RemoteDesktop", method, *arguments)


def ask(method, signature, *values):
    """The results of a request, once its answer has come."""
    token = "raw" + method
    handle = f"{PATH}/request/{bus.get_unique_name()[1:].replace('.', '_')}/{token}"
    answer = []

    def on_answer(_bus, _sender, _path, _interface, _signal, parameters):
        answer.extend(parameters.unpack())
        loop.quit()

    hook = bus.signal_subscribe(
        NAME, "org.freedesktop.portal.Request", "Response", handle, None, 0, on_answer)
    options = {"handle_token": GLib.Variant("s", token)}
    if method == "CreateSession":
        options["session_handle_token"] = GLib.Variant("s", token)
    parameters = GLib.Variant(signature, (*values, options))
    bus.call_sync(*call(method), parameters, None, 0, -1)
    loop.run()
    bus.signal_unsubscribe(hook)
    assert answer[0] == 0, answer
    return answer[1]


session = ask("CreateSession", "(a{sv})")["session_handle"]
ask("SelectDevices", "(oa{sv})", session)
ask("Start", "(osa{sv})", session, "")
sent = taken = 0


def on_reply(connection, result):
    global taken
    connection.call_finish(result)
    taken += 1
    send()


def send():
    global sent
    while sent < 2 * count and sent == taken:
        key = GLib.Variant("(oa{sv}iu)", (session, {}, 97, 1 - sent % 2))
        bus.call(*call("NotifyKeyboardKeysym"), key, None, 0, -1, None, on_reply)
        sent += 1
    if taken == 2 * count:
        loop.quit()


send()
loop.run()
