"""Drives the program and others on a virtual desktop with real keys, and waits on conditions."""
import os
import pathlib
import signal
import sqlite3
import subprocess
import time

PATIENCE = 20.0


def until(condition, what):
    """Waits for a condition to give something true, and gives that."""
    deadline = time.monotonic() + PATIENCE
    while time.monotonic() < deadline:
        value = condition()
        if value:
            return value
        time.sleep(0.01)
    raise AssertionError(f"{what}: not within {PATIENCE} s")


def run(*words, check=True):
    return subprocess.run(words, check=check, capture_output=True, text=True).stdout.strip()


def key(*chords):
    run("xdotool", "key", *chords)


def type_text(text):
    run("xdotool", "type", text)


def copy(text, *options):
    """Copies as another program; returns once that program owns the selection."""
    subprocess.run(["xclip", "-selection", "clipboard", *options], input=text.encode(), check=True,
                   stdout=subprocess.DEVNULL)


def copy_file(path, target):
    """Copies a file's bytes under a target, and waits until they can be had: xclip lets go of its caller before the
    server has heard of the copy."""
    subprocess.run(["xclip", "-selection", "clipboard", "-t", target, "-i", str(path)], check=True,
                   stdout=subprocess.DEVNULL)
    until(lambda: target in run("xclip", "-selection", "clipboard", "-t", "TARGETS", "-o", check=False), "the copy")


def windows(*pattern):
    return [int(word) for word in run("xdotool", "search", "--onlyvisible", *pattern, check=False).split()]


def focused():
    return int(run("xdotool", "getwindowfocus", check=False) or 0)


def active():
    """What the window manager calls the active window, as xprop prints it."""
    return run("xprop", "-root", "_NET_ACTIVE_WINDOW")


class Nimbrel:
    """The program itself, with its history and its settings in folders of its own."""

    def __init__(self, binary, data_home, config_home):
        self.binary = binary
        self.environment = dict(os.environ, XDG_DATA_HOME=str(data_home), XDG_CONFIG_HOME=str(config_home))
        self.config = pathlib.Path(config_home)
        self.database = pathlib.Path(data_home) / "Nimbrel" / "brevin.sqlite"
        self.process = None
        # What the last run that was quit has logged.
        self.log = ""

    def start(self):
        self.process = subprocess.Popen([self.binary], env=self.environment, stderr=subprocess.PIPE, text=True)
        until(self.owns_its_name, "the first instance")
        # A request to show the panel is kept until the panel exists, which is the last thing that comes up.
        subprocess.run([self.binary], env=self.environment, check=True, timeout=PATIENCE)
        until(self.panel, "the first panel")
        self.hide()

    def owns_its_name(self):
        answer = run("dbus-send", "--session", "--print-reply=literal", "--dest=org.freedesktop.DBus", "/",
                     "org.freedesktop.DBus.GetConnectionUnixProcessID", "string:app.nimbrel.Nimbrel", check=False)
        return answer.split()[-1:] == [str(self.process.pid)]

    def panel(self):
        return windows("--name", "^Nimbrel$")

    def show(self):
        """Opens the panel with the hot key. A closing panel refuses to come back for a moment, hence the retries."""
        def attempt():
            if not self.panel():
                key("shift+super+v")
            return self.panel()
        until(attempt, "the panel")

    def hide(self):
        key("Escape")
        until(lambda: not self.panel(), "the panel to go")

    def count(self):
        connection = sqlite3.connect(f"file:{self.database}?mode=ro", uri=True)
        try:
            return connection.execute("SELECT COUNT(*) FROM clips").fetchone()[0]
        except sqlite3.OperationalError:
            return 0
        finally:
            connection.close()

    def integrity(self):
        connection = sqlite3.connect(f"file:{self.database}?mode=ro", uri=True)
        try:
            return connection.execute("PRAGMA integrity_check").fetchone()[0]
        finally:
            connection.close()

    def copied(self, text):
        """Copies elsewhere and waits until the clip is on disk."""
        before = self.count()
        copy(text)
        until(lambda: self.count() > before, f"the capture of {text!r}")

    def copied_over(self, text, count):
        """Copies elsewhere while the history is full, and waits until an older clip has made room."""
        copy(text)
        def newest():
            connection = sqlite3.connect(f"file:{self.database}?mode=ro", uri=True)
            try:
                return connection.execute("SELECT MAX(date), COUNT(*) FROM clips").fetchone()
            finally:
                connection.close()
        before = time.time() - PATIENCE
        until(lambda: newest()[0] > before and newest()[1] == count, f"{text!r} in place of another clip")

    def quit(self):
        self.process.send_signal(signal.SIGTERM)
        code = self.process.wait(PATIENCE)
        self.log = self.process.stderr.read()
        self.process.stderr.close()
        return code

    def kill(self):
        self.process.kill()
        self.process.wait(PATIENCE)
        self.process.stderr.close()
