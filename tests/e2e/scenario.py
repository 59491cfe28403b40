"""What the end-to-end tests share. Every one is started as TEST NIMBREL QT_ENTRY QT_COPY KEY_GRAB [TEST…]"""
import json
import pathlib
import sqlite3
import subprocess
import sys
import tempfile
import time
import unittest

import desktop
from desktop import active, focused, key, run, type_text, until, windows

NIMBREL, QT_ENTRY, QT_COPY, KEY_GRAB = sys.argv[1:5]
POLKIT_MOCK = str(pathlib.Path(QT_ENTRY).resolve().with_name("polkit_mock"))


class Client:
    """A program with a text field, in front of all others."""

    def __init__(self, command, window):
        before = set(desktop.windows(*window))
        self.process = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        found = until(lambda: set(desktop.windows(*window)) - before, f"the window of {command[0]}")
        self.window = max(found)
        run("xdotool", "windowactivate", "--sync", str(self.window), check=False)
        until(lambda: f"{self.window:#x}" in active(), f"{command[0]} to be active")
        until(lambda: focused() > 1, f"{command[0]} to have the keyboard")

    def close(self):
        self.process.kill()
        self.process.wait()
        self.process.stdout.close()


class Scenario(unittest.TestCase):
    """The program on a desktop, with folders of its own, and other programs beside it."""

    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.path = pathlib.Path(self.folder.name)
        self.nimbrel = desktop.Nimbrel(NIMBREL, self.path / "data", self.path / "config")
        self.clients = []
        self.addCleanup(self.clean_up)
        self.nimbrel.start()

    def clean_up(self):
        for client in self.clients:
            client.close()
        if self.nimbrel.process.poll() is None:
            self.nimbrel.quit()
        self.folder.cleanup()

    def open(self, command, *window):
        client = Client(command, window)
        self.clients.append(client)
        return client

    def terminal(self, *command):
        """A terminal in which a program writes its input to a file."""
        output = self.path / "terminal.txt"
        return output, self.open([*command, f"sh -c 'cat > {output}'"], "--class", command[0])

    def read(self, output):
        return output.read_text() if output.exists() else ""

    def paste(self, search=None):
        """Opens the panel, searches and presses Return; gives the focus that must come back."""
        before = focused()
        self.nimbrel.show()
        if search:
            type_text(search)
        key("Return")
        until(lambda: not self.nimbrel.panel(), "the panel to go")
        until(lambda: focused() == before, "the focus to come back")

    def expect_in_terminal(self, output, text):
        # The line reaches the file when it is complete; Return is pressed until the paste has arrived.
        def arrived():
            key("Return")
            return text in self.read(output)
        until(arrived, f"{text!r} in the terminal")

    def finish_field(self, client, text):
        # The keystroke follows the panel's going by 60 ms; a field that is confirmed earlier would be empty, and what
        # arrives in it cannot be seen from outside before.
        time.sleep(1)
        key("Return")
        self.assertEqual(client.process.communicate(timeout=desktop.PATIENCE)[0].strip(), text)

    def picture(self, text, name="picture.png"):
        """A picture with a text in it, in the format of its name."""
        path = self.path / name
        run("convert", "-background", "white", "-fill", "black", "-font", "DejaVu-Sans", "-pointsize", "28",
            f"label:{text}", "-bordercolor", "white", "-border", "40", str(path))
        return path

    def copy_picture(self, path, target="image/png"):
        before = self.nimbrel.count()
        desktop.copy_file(path, target)
        until(lambda: self.nimbrel.count() > before, "the capture of a picture")

    def paste_text_of_picture(self, search, text):
        """Finds a picture by the text in it, and pastes that into a field."""
        client = self.open([QT_ENTRY], "--name", "^qt-entry$")
        self.nimbrel.show()
        type_text(search)
        def pasted():
            # Nothing happens before the picture has been read and found.
            key("ctrl+t")
            return not self.nimbrel.panel()
        until(pasted, "the text of the picture")
        self.finish_field(client, text)

    def copy_forms(self, *forms):
        before = self.nimbrel.count()
        source = subprocess.Popen([QT_COPY, *forms])
        self.addCleanup(source.wait)
        self.addCleanup(source.kill)
        until(lambda: self.nimbrel.count() > before, "the capture of several forms")

    def side_files(self, folder):
        return list((self.nimbrel.database.parent / folder).iterdir())

    def only_row(self):
        connection = sqlite3.connect(f"file:{self.nimbrel.database}?mode=ro", uri=True)
        try:
            return connection.execute("SELECT sensitive, expires_at - date, rich_file FROM clips").fetchall()
        finally:
            connection.close()


class PanelScenario(Scenario):
    """What is done in the panel, which opens in the same place."""

    def setUp(self):
        super().setUp()
        run("xdotool", "mousemove", "500", "200")

    def stop(self):
        self.nimbrel.quit()

    def start_with(self, **settings):
        """Starts the program anew with settings of the user's."""
        self.stop()
        folder = self.nimbrel.config / "Nimbrel"
        folder.mkdir(parents=True, exist_ok=True)
        path = folder / "defaults.json"
        values = json.loads(path.read_text()) if path.exists() else {}
        path.write_text(json.dumps(values | settings))
        self.nimbrel.start()

    def authority(self, mode):
        process = subprocess.Popen([POLKIT_MOCK, mode], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        self.assertEqual(process.stdout.readline(), "ready\n")
        def end():
            process.kill()
            process.wait()
            process.stdout.close()
        self.addCleanup(end)
        return process

    def geometry(self, window=None):
        """Of the panel, or of another window; nothing of one that has just gone."""
        shown = window or self.nimbrel.panel()[0]
        words = run("xdotool", "getwindowgeometry", "--shell", str(shown), check=False).split()
        values = dict(word.split("=") for word in words)
        return tuple(int(values.get(name, 0)) for name in ("X", "Y", "WIDTH", "HEIGHT"))

    def rows(self, columns):
        connection = sqlite3.connect(f"file:{self.nimbrel.database}?mode=ro", uri=True)
        try:
            return connection.execute(f"SELECT {columns} FROM clips").fetchall()
        finally:
            connection.close()

    def popups(self):
        """The program's windows that are to be seen, besides the panel and the tray's symbol."""
        found = windows("--class", "^[Nn]imbrel$")
        return [window for window in found if window not in self.nimbrel.panel() and self.geometry(window)[2] > 40]

    def open_menu(self, *keys):
        """Opens a menu with keys, and waits until it can be walked through."""
        before = len(self.popups())
        key(*keys)
        until(lambda: len(self.popups()) > before, "the menu")

    def choose(self, steps):
        key(*["Down"] * steps, "Return")

    def closed(self):
        return not self.nimbrel.panel()

    def frame(self):
        """The shadow around the panel, where there is one."""
        return (self.geometry()[2] - 480) // 2


def main():
    unittest.main(module="__main__", argv=sys.argv[:1] + sys.argv[5:], verbosity=2)
