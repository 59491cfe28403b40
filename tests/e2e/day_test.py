#!/usr/bin/env python3
"""A whole day of one user, with several programs, and at its end an exact account of the history: what should be in it,
and what is, read with the key from the key store and without the program."""
import base64
import collections
import json
import os
import pathlib
import sqlite3
import subprocess
import time

from cryptography.hazmat.primitives.ciphers.aead import AESGCM

import desktop
from desktop import focused, key, run, type_text, until, windows
from scenario import NIMBREL, POLKIT_MOCK, QT_ENTRY, PanelScenario, main

TOKEN = "ghp_" + "aB3dE5fG7hJ9kL1mN3pQ5rS7tU9vW1xY3zA5"
CODE_LIFE = 60

Clip = collections.namedtuple("Clip", "what content pinned collection sensitive")


class Account:
    """What should be in the history, newest first."""

    def __init__(self):
        self.clips = []

    def add(self, what, content, sensitive=False):
        self.clips = [clip for clip in self.clips if clip.content != content]
        self.clips.insert(0, Clip(what, content, False, None, sensitive))

    def change(self, content, **values):
        self.clips = [clip._replace(**values) if clip.content == content else clip for clip in self.clips]

    def remove(self, content):
        self.clips = [clip for clip in self.clips if clip.content != content]


class Day(PanelScenario):
    maxDiff = None

    def history_key(self):
        return base64.b64decode(run("secret-tool", "lookup", "service", "Nimbrel.history-key", "account", "history"))

    def opened(self, envelope):
        self.assertEqual(envelope[:5], b"BRVN1")
        return AESGCM(self.history_key()).decrypt(envelope[5:17], envelope[17:], None)

    def stored(self):
        connection = sqlite3.connect(f"file:{self.nimbrel.database}?mode=ro", uri=True)
        try:
            rows = connection.execute("SELECT image_file, pinned, sensitive, payload FROM clips ORDER BY date DESC")
            rows = rows.fetchall()
        finally:
            connection.close()
        return [self.clip_of(*row) for row in rows]

    def clip_of(self, image, pinned, sensitive, envelope):
        payload = json.loads(self.opened(envelope))
        if image:
            what, content = "image", payload.get("ocr", "")
        elif "fileURLString" in payload:
            what, content = "files", payload["fileURLString"]
        else:
            what, content = "text", payload["text"]
        return Clip(what, content, bool(pinned), payload.get("collection"), bool(sensitive))

    def settled(self):
        """Waits until what is on the disk is what should be there; says what differs where it does not get so."""
        deadline = time.monotonic() + desktop.PATIENCE
        while self.stored() != self.account.clips and time.monotonic() < deadline:
            time.sleep(0.05)
        self.assertEqual(self.stored(), self.account.clips)

    def copy(self, text, sensitive=False):
        desktop.copy(text)
        self.account.add("text", text, sensitive)
        self.settled()

    def hot_key_of_queue(self):
        key("shift+super+n")
        time.sleep(0.5)

    def start_day(self):
        self.nimbrel.quit()
        folder = self.nimbrel.config / "Nimbrel"
        (folder / "defaults.json").write_text(json.dumps(
            {"lockMode": "sensitiveOnly", "lockEnabled": True, "softSensitiveExpiry": CODE_LIFE,
             "sensitiveExpiry": -1}))
        self.nimbrel.start()

    def test_a_day(self):
        self.account = Account()
        mock = subprocess.Popen([POLKIT_MOCK, "ask"], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        self.addCleanup(mock.stdout.close)
        self.addCleanup(mock.wait)
        self.addCleanup(mock.kill)
        self.assertEqual(mock.stdout.readline(), "ready\n")
        self.start_day()
        for part in (self.copies, self.copies_from_programs, self.secrets, self.searches_and_pastes, self.organizes,
                     self.queues, self.pauses, self.unlocks, self.previews, self.changes_settings,
                     self.works_with_a_password_manager, self.gets_urls, self.loses_a_window, self.waits_for_expiry,
                     self.restarts, self.crashes, self.quits):
            print(part.__name__, flush=True)
            part()
            self.settled()

    def copies(self):
        self.copy("Buenos días, equipo")
        self.copy("https://example.org/informe?año=2026")
        self.copy("Estimado {{nombre}}: hoy es {{fecha}}.")
        self.copy("línea uno\nlínea dos\n\tcon tabulador y 🙂")
        # The same again comes to the top, once.
        self.copy("Buenos días, equipo")
        for text in ("rápido 1", "rápido 2", "rápido 3"):
            desktop.copy(text)
            self.account.add("text", text)
            time.sleep(0.05)
        self.settled()
        picture = self.picture("factura de marzo")
        desktop.copy_file(picture, "image/png")
        self.account.add("image", "factura de marzo")
        self.settled()
        uri = picture.as_uri()
        desktop.copy_file(self.file("uris", uri + "\r\n"), "text/uri-list")
        self.account.add("files", uri)
        self.settled()
        # What is not captured: nothing but space, too much, and what its source conceals.
        desktop.copy(" \n\t ")
        time.sleep(0.2)
        desktop.copy("x" * 1_000_001)
        time.sleep(0.2)
        self.conceal()

    def file(self, name, text):
        path = self.path / name
        path.write_text(text)
        return path

    def conceal(self):
        source = subprocess.Popen([str(pathlib.Path(QT_ENTRY).resolve().with_name("qt_copy")), "text/plain=oculto",
                                   "x-kde-passwordManagerHint=secret"])
        time.sleep(0.5)
        source.kill()
        source.wait()

    def copies_from_programs(self):
        client = self.open([QT_ENTRY], "--name", "^qt-entry$")
        type_text("escrito en Qt")
        key("ctrl+a", "ctrl+c")
        self.account.add("text", "escrito en Qt")
        self.settled()
        client.close()
        client = self.open(["zenity", "--entry", "--title=gtk-entry"], "--name", "^gtk-entry$")
        type_text("escrito en GTK")
        key("ctrl+a", "ctrl+c")
        self.account.add("text", "escrito en GTK")
        self.settled()
        client.close()
        source = subprocess.Popen([str(pathlib.Path(QT_ENTRY).resolve().with_name("qt_copy")), "text/plain=con formato",
                                   "text/html=<b>con formato</b>"])
        self.account.add("text", "con formato")
        self.settled()
        source.kill()
        source.wait()

    def secrets(self):
        self.copy(TOKEN, sensitive=True)
        self.copy("4111 1111 1111 1111", sensitive=True)
        self.copy("482913", sensitive=True)
        self.code_copied = time.monotonic()
        self.copy("nota cualquiera")
        files = [path.read_bytes() for path in self.nimbrel.database.parent.rglob("*") if path.is_file()]
        for secret in (TOKEN, "4111 1111", "482913", "nota cualquiera"):
            self.assertFalse(any(secret.encode() in content for content in files), secret)

    def searches_and_pastes(self):
        client = self.open([QT_ENTRY], "--name", "^qt-entry$")
        self.paste("dias equ")
        self.finish_field(client, "Buenos días, equipo")
        client = self.open(["zenity", "--entry", "--title=gtk-entry"], "--name", "^gtk-entry$")
        self.paste("rapido 2")
        self.finish_field(client, "rápido 2")
        output, client = self.terminal("xterm", "-e")
        self.paste("escrito en Qt")
        self.expect_in_terminal(output, "escrito en Qt")
        client.close()
        self.paste_text_of_picture("marzo", "factura de marzo")

    def organizes(self):
        self.nimbrel.show()
        type_text("informe")
        key("ctrl+p")
        self.account.change("https://example.org/informe?año=2026", pinned=True)
        self.settled()
        self.nimbrel.hide()
        self.nimbrel.show()
        type_text("estimado")
        key("ctrl+k")
        type_text("Cartas")
        key("Return")
        self.account.change("Estimado {{nombre}}: hoy es {{fecha}}.", pinned=True, collection="Cartas")
        self.settled()
        self.nimbrel.hide()
        self.nimbrel.show()
        type_text("rapido 1")
        key("ctrl+Delete")
        self.account.remove("rápido 1")
        self.settled()
        self.nimbrel.hide()

    def queues(self):
        client = self.open([QT_ENTRY], "--name", "^qt-entry$")
        for query in ("rapido 3", "rapido 2", "escrito en GTK"):
            self.nimbrel.show()
            type_text(query)
            key("ctrl+n")
            self.nimbrel.hide()
        for _ in range(4):
            self.hot_key_of_queue()
        self.finish_field(client, "rápido 3rápido 2escrito en GTK")

    def pauses(self):
        for text, kept in (("en pausa", False), ("otra vez", True)):
            self.nimbrel.show()
            self.open_menu("Tab", "Tab", "Return")
            self.choose(1)
            until(lambda: not self.popups(), "the menu to go")
            self.nimbrel.hide()
            desktop.copy(text)
            time.sleep(0.8)
            if kept:
                self.account.add("text", text)
            self.settled()

    def unlocks(self):
        client = self.open([QT_ENTRY], "--name", "^qt-entry$")
        before = focused()
        self.nimbrel.show()
        # To the first secret.
        steps = next(row for row, clip in enumerate(self.account.clips) if clip.sensitive)
        key(*["Down"] * steps)
        self.open_menu("shift+F10")
        self.choose(3)
        prompt = until(lambda: windows("--name", "^polkit-mock$"), "the prompt")
        until(lambda: focused() in prompt, "the prompt to have the keyboard")
        type_text("nimbrel")
        key("Return")
        def seen():
            key("space")
            time.sleep(0.2)
            return windows("--name", "^Vista r")
        until(seen, "the preview of what was unlocked")
        key("Escape")
        until(lambda: not windows("--name", "^Vista r"), "the preview to go")
        key("Return")
        until(self.closed, "the panel to go")
        until(lambda: focused() == before, "the keyboard to be where it was")
        self.finish_field(client, self.account.clips[steps].content)

    def previews(self):
        self.nimbrel.show()
        key("space")
        until(lambda: windows("--name", "^Vista r"), "the preview")
        key("Down", "Down", "Down", "space")
        until(lambda: not windows("--name", "^Vista r"), "the preview to go")
        self.nimbrel.hide()
        self.assertEqual(list((pathlib.Path(os.environ["XDG_RUNTIME_DIR"]) / "nimbrel-preview").iterdir()), [])

    def settings_window(self):
        return windows("--name", "^Ajustes de Nimbrel$")

    def lock_mode(self):
        return json.loads((self.nimbrel.config / "Nimbrel" / "defaults.json").read_text())["lockMode"]

    def changes_settings(self):
        """Switches the lock off, which takes the password, and on again."""
        self.nimbrel.show()
        key("ctrl+comma")
        window = until(self.settings_window, "the settings")[0]
        until(lambda: f"{window:#x}" in desktop.active() and focused() > 1, "the settings to have the keyboard")
        self.assertTrue(self.closed())
        # To the second tab, and there to the first control.
        key("Left", "Left", "Left", "Right", "Tab", "space")
        def switched_off():
            prompt = windows("--name", "^polkit-mock$")
            if prompt and focused() in prompt:
                type_text("nimbrel")
                key("Return")
                until(lambda: not windows("--name", "^polkit-mock$"), "the prompt to go")
            return self.lock_mode() == "disabled"
        until(switched_off, "the lock to be off")
        run("xdotool", "windowactivate", "--sync", str(window), check=False)
        key("space")
        until(lambda: self.lock_mode() == "sensitiveOnly", "the lock to be on")
        key("Escape")
        until(lambda: not self.settings_window(), "the settings to go")

    def works_with_a_password_manager(self):
        manager = self.open(["xterm", "-class", "keepassxc", "-e", "sleep 600"], "--class", "^keepassxc$")
        desktop.copy("de un gestor de contraseñas")
        time.sleep(0.8)
        self.settled()
        manager.close()

    def gets_urls(self):
        subprocess.run([NIMBREL, "nimbrel://add?text=desde%20el%20m%C3%B3vil&source=iPhone"],
                       env=self.nimbrel.environment, check=True, timeout=desktop.PATIENCE)
        self.account.add("text", "desde el móvil")
        self.settled()

    def loses_a_window(self):
        """The window in front changes between hot key and Return: nothing is pasted anywhere."""
        output, terminal = self.terminal("xterm", "-e")
        other = self.open([QT_ENTRY], "--name", "^qt-entry$")
        self.nimbrel.show()
        run("xdotool", "windowactivate", "--sync", str(terminal.window), check=False)
        key("Return")
        until(self.closed, "the panel to go")
        time.sleep(0.8)
        key("x", "Return")
        until(lambda: "x" in self.read(output), "the terminal's own input")
        self.assertEqual(self.read(output).strip(), "x")
        run("xdotool", "windowactivate", "--sync", str(other.window), check=False)
        self.finish_field(other, "")
        terminal.close()

    def waits_for_expiry(self):
        time.sleep(max(0.0, CODE_LIFE + 2 - (time.monotonic() - self.code_copied)))
        self.account.remove("482913")

    def restarts(self):
        self.assertEqual(self.nimbrel.quit(), 0)
        self.nimbrel.start()
        self.copy("después del reinicio")

    def crashes(self):
        self.copy("justo antes")
        self.nimbrel.kill()
        self.nimbrel.start()

    def quits(self):
        self.assertEqual(self.nimbrel.quit(), 0)
        self.assertNotIn("ERROR", self.nimbrel.log)
        self.assertEqual(self.nimbrel.integrity(), "ok")
        for secret in (TOKEN, "4111", "482913", "equipo"):
            self.assertNotIn(secret, self.nimbrel.log)
        pictures = self.side_files("Images")
        self.assertEqual(len(pictures), 1)
        self.assertTrue(self.opened(pictures[0].read_bytes()).startswith(b"\x89PNG"))
        formats = self.side_files("Rich")
        self.assertEqual([self.opened(path.read_bytes()) for path in formats], [b"<b>con formato</b>"])
        print(f"\n{len(self.account.clips)} clips should be there, and are:")
        for clip in self.stored():
            print("  ", clip.what, repr(clip.content[:40] if not clip.sensitive else "(secret)"),
                  "pinned" if clip.pinned else "", clip.collection or "")


if __name__ == "__main__":
    main()
