# A text widget as GTK applications have them; what is in it is kept in a file.
#
# Usage: gtk_target.py FILE
import sys

import gi

gi.require_version("Gtk", "3.0")
from gi.repository import GLib, Gtk

GLib.set_prgname("gtk_target")
view = Gtk.TextView()
text = view.get_buffer()


def keep(_):
    with open(sys.argv[1], "w", encoding="utf-8") as file:
        file.write(text.get_text(text.get_start_iter(), text.get_end_iter(), True))


text.connect("changed", keep)
window = Gtk.Window(title="KALVO cible")
window.add(view)
window.connect("destroy", Gtk.main_quit)
window.show_all()
Gtk.main()
