"""Entries of Ledrix in the menus of Nautilus."""

import locale
import subprocess

from gi.repository import GObject, Nautilus

PROGRAM = "/usr/share/ledrix/ledrix-files"
# Command, how many files it takes, English and Japanese caption.
ENTRIES = [
    ("compare", 2, "Compare with Ledrix", "Ledrix で比較"),
    ("remember", 1, "Remember to compare with", "比較相手に指定"),
    ("with", 1, "Compare with the remembered one", "指定した相手と Ledrix で比較"),
]


class LedrixMenu(GObject.GObject, Nautilus.MenuProvider):
    def get_file_items(self, *arguments):
        # The window, too, comes first in older versions.
        paths = [file.get_location().get_path() for file in arguments[-1]]
        if None in paths:
            return []
        is_japanese = (locale.getlocale(locale.LC_MESSAGES)[0] or "").startswith("ja")
        items = []
        for command, count, english, japanese in ENTRIES:
            if count != len(paths):
                continue
            item = Nautilus.MenuItem(
                name="Ledrix::" + command, label=japanese if is_japanese else english
            )
            item.connect("activate", lambda _, c=command: subprocess.Popen([PROGRAM, c, *paths]))
            items.append(item)
        return items
