#!/usr/bin/env python3
"""The program as scripts and the desktop use it: the commands, the service, and the history taken along."""
import json
import os
import pathlib
import random
import shutil
import subprocess
import time

import desktop
from desktop import copy, focused, key, run, type_text, until, windows
from scenario import NIMBREL, QT_ENTRY, PanelScenario, main

SECRET = "ghp_" + "aB3dE5fG7hJ9kL1mN3pQ5rS7tU9vW1xY3zA5"


class Automation(PanelScenario):
    def command(self, *arguments, home=None, text=None):
        """Runs a command as a script does; gives its exit status, its output and its errors."""
        environment = dict(self.nimbrel.environment, LANG="C.UTF-8", LANGUAGE="es")
        if home:
            environment["XDG_DATA_HOME"] = str(home)
        done = subprocess.run([NIMBREL, *arguments], env=environment, capture_output=True, text=True, input=text,
                              timeout=desktop.PATIENCE)
        return done.returncode, done.stdout, done.stderr

    def collect(self, text, name):
        """Copies a text and puts it into a collection."""
        self.nimbrel.copied(text)
        self.nimbrel.show()
        key("ctrl+k")
        type_text(name)
        key("Return")
        until(lambda: name in self.command("collections")[1].split("\n"), f"the collection {name}")
        self.nimbrel.hide()

    def clipboard(self):
        return run("timeout", "2", "xclip", "-o", "-selection", "clipboard", check=False)

    # The running program

    def test_scripts_search_copy_and_pause(self):
        self.nimbrel.copied("pan de molde")
        self.nimbrel.copied("pan\nde centeno")
        self.nimbrel.copied("leche")
        self.assertEqual(self.command("search", "PÁN"), (0, "pan\nde centeno\npan de molde\n", ""))
        self.assertEqual(json.loads(self.command("search", "pan", "molde", "--json")[1]),
                         {"message": "Se encontraron 1 textos.", "texts": ["pan de molde"]})
        self.assertEqual(self.command("search", "queso"), (0, "", ""))
        copy("otra cosa")
        self.assertEqual(self.command("copy-latest")[0], 0)
        until(lambda: self.clipboard() == "otra cosa", "the latest text on the clipboard")
        self.assertEqual(self.command("toggle-capture"), (0, "Captura pausada.\n", ""))
        before = self.nimbrel.count()
        copy("en pausa")
        time.sleep(1)
        self.assertEqual(self.nimbrel.count(), before)
        self.assertEqual(json.loads(self.command("toggle-capture", "--json")[1]),
                         {"message": "Captura reanudada.", "paused": False})
        self.nimbrel.copied("de nuevo")

    def test_secrets_never_leave(self):
        self.nimbrel.copied("antes del secreto")
        self.nimbrel.copied(SECRET)
        for text in ("ghp", "aB3d", SECRET, "g"):
            self.assertEqual(self.command("search", text), (0, "", ""))
        self.assertEqual(self.command("copy-latest")[0], 0)
        until(lambda: self.clipboard() == "antes del secreto", "what is no secret on the clipboard")

    def test_without_safe_text_each_command_says_so(self):
        self.assertEqual(self.command("copy-latest"), (4, "", "nimbrel: No hay texto seguro en el historial.\n"))
        self.assertEqual(self.command("paste-from", "nada"),
                         (5, "", "nimbrel: La colección no contiene texto seguro.\n"))
        self.assertEqual(self.command("search", "x" * 5000)[0], 1)
        self.assertEqual(self.command("frob")[0], 2)

    def test_a_collection_is_pasted_where_the_user_is(self):
        self.collect("atentamente, Ana", "firmas")
        self.nimbrel.copied("otra cosa")
        self.assertEqual(self.command("collections"), (0, "firmas\n", ""))
        client = self.open([QT_ENTRY], "--name", "^qt-entry$")
        self.assertEqual(self.command("paste-from", "firmas"), (0, "", ""))
        self.finish_field(client, "atentamente, Ana")
        output, _ = self.terminal("xterm", "-e")
        self.assertEqual(self.command("paste-from", "firmas")[0], 0)
        self.expect_in_terminal(output, "atentamente, Ana")

    def test_the_panel_gives_way_to_a_paste(self):
        self.collect("desde la colección", "c")
        client = self.open([QT_ENTRY], "--name", "^qt-entry$")
        self.nimbrel.show()
        self.assertEqual(self.command("paste-from", "c")[0], 0)
        until(lambda: not self.nimbrel.panel(), "the panel to go")
        self.finish_field(client, "desde la colección")

    def test_the_lock_asks_before_any_text_is_given(self):
        self.start_with(lockMode="sensitiveOnly")
        self.nimbrel.copied("pan")
        # Nobody to ask.
        self.assertEqual(self.command("search", "pan"), (6, "", "nimbrel: No se pudo desbloquear Brevin.\n"))
        self.assertEqual(self.command("toggle-capture")[0], 0)
        self.assertEqual(self.command("toggle-capture")[0], 0)
        self.assertEqual(self.command("collections")[0], 0)
        self.stop()
        self.nimbrel.start()
        authority = self.authority("yes")
        self.assertEqual(self.command("search", "pan"), (0, "pan\n", ""))
        self.assertEqual(authority.stdout.readline(), "app.nimbrel.Nimbrel.reveal-history\n")

    def test_a_paste_waits_for_the_password(self):
        self.collect("tras la contraseña", "c")
        self.start_with(lockMode="sensitiveOnly")
        client = self.open([QT_ENTRY], "--name", "^qt-entry$")
        before = focused()
        self.authority("ask")
        asking = subprocess.Popen([NIMBREL, "paste-from", "c"], env=self.nimbrel.environment)
        self.addCleanup(asking.wait)
        prompt = until(lambda: windows("--name", "polkit"), "the prompt")
        until(lambda: focused() in prompt, "the prompt to have the keyboard")
        type_text("nimbrel")
        key("Return")
        self.assertEqual(asking.wait(desktop.PATIENCE), 0)
        until(lambda: focused() == before, "the field to have the keyboard again")
        self.finish_field(client, "tras la contraseña")

    def test_the_panel_is_shown_with_its_collections(self):
        self.collect("uno", "c")
        self.assertEqual(self.command("show")[0], 0)
        until(self.nimbrel.panel, "the panel")
        self.nimbrel.hide()
        self.assertEqual(self.command("show", "--collections")[0], 0)
        until(self.nimbrel.panel, "the panel")
        time.sleep(0.5)
        # The first Escape closes the menu, the second the panel.
        key("Escape")
        time.sleep(0.5)
        self.assertTrue(self.nimbrel.panel())
        self.nimbrel.hide()

    def test_whoever_floods_gets_errors_and_the_user_works_on(self):
        self.nimbrel.copied("pan")
        flood = subprocess.Popen(["/usr/bin/python3", "-c", FLOOD], env=self.nimbrel.environment,
                                 stdout=subprocess.PIPE, text=True)
        self.addCleanup(flood.stdout.close)
        self.assertEqual(flood.stdout.readline(), "flooding\n")
        for number in range(5):
            self.nimbrel.copied(f"durante {number}")
            self.nimbrel.show()
            self.nimbrel.hide()
        self.assertEqual(self.command("copy-latest")[0], 0)
        refused = int(flood.communicate(timeout=desktop.PATIENCE)[0])
        self.assertGreater(refused, 1000)

    def test_quitting_ends_the_program_and_then_there_is_none(self):
        self.assertEqual(self.command("quit"), (0, "", ""))
        self.nimbrel.process.wait(desktop.PATIENCE)
        self.nimbrel.process.stderr.close()
        self.assertEqual(self.command("quit")[0], 0)
        self.assertEqual(self.command("copy-latest"), (3, "", "nimbrel: Nimbrel no está disponible.\n"))

    # The history

    def archive(self, *options):
        path = self.path / f"{random.random()}.nimbrel"
        done = self.command("export", *options, "--passphrase-file", "-", str(path), text="una clave larga\n")
        return path, done

    def imported(self, path, home, passphrase="una clave larga\n"):
        return self.command("import", "--passphrase-file", "-", str(path), home=home, text=passphrase)

    def test_the_history_moves_to_another_home(self):
        self.collect("con colección", "c")
        self.copy_picture(self.picture("foto"))
        self.copy_forms("text/plain=con formato", "text/rtf={\\rtf1 con formato}")
        until(lambda: self.side_files("Rich"), "the formatted text")
        self.nimbrel.copied(SECRET)
        path, done = self.archive()
        self.assertEqual(done, (0, "3 elementos exportados.\n1 secreto queda fuera; --secrets lo incluye.\n", ""))
        self.assertEqual(path.stat().st_mode & 0o777, 0o600)
        everything, done = self.archive("--secrets")
        self.assertEqual(done[0], 0)
        self.assertEqual(self.imported(path, self.path / "otra")[0], 1, "while the program runs")
        self.stop()
        self.assertEqual(self.imported(path, self.path / "otra", "otra clave\n")[0], 1)
        self.assertEqual(self.imported(path, self.path / "otra"), (0, "3 elementos añadidos.\n", ""))
        self.assertEqual(self.imported(path, self.path / "otra")[1], "0 elementos añadidos.\n3 elementos ya estaban.\n")
        self.assertEqual(self.imported(everything, self.path / "otra")[1],
                         "1 elemento añadido.\n3 elementos ya estaban.\n")
        self.nimbrel.database = self.path / "otra" / "Nimbrel" / "brevin.sqlite"
        self.nimbrel.environment["XDG_DATA_HOME"] = str(self.path / "otra")
        self.nimbrel.start()
        self.assertEqual(self.nimbrel.count(), 4)
        self.assertEqual(len(self.side_files("Images")), 1)
        self.assertEqual(len(self.side_files("Rich")), 1)
        self.assertEqual(self.command("search", "colección"), (0, "con colección\n", ""))
        self.assertEqual(self.command("collections"), (0, "c\n", ""))
        client = self.open([QT_ENTRY], "--name", "^qt-entry$")
        self.paste("con formato")
        self.finish_field(client, "con formato")

    def test_an_import_that_is_killed_can_be_repeated(self):
        for number in range(8):
            self.copy_picture(self.picture(f"foto {number}"))
        path, done = self.archive()
        self.assertEqual(done[0], 0)
        self.stop()
        home = self.path / "otra"
        images = home / "Nimbrel" / "Images"
        for attempt in range(4):
            process = subprocess.Popen([NIMBREL, "import", "--passphrase-file", "-", str(path)],
                                       env=dict(self.nimbrel.environment, XDG_DATA_HOME=str(home)),
                                       stdin=subprocess.PIPE, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            process.stdin.write(b"una clave larga\n")
            process.stdin.close()
            # As soon as it stores something.
            before = len(list(images.glob("*"))) if images.exists() else 0
            while process.poll() is None and (len(list(images.glob("*"))) if images.exists() else 0) <= before + attempt:
                pass
            process.kill()
            process.wait()
        self.assertEqual(self.imported(path, home)[0], 0)
        self.nimbrel.database = home / "Nimbrel" / "brevin.sqlite"
        self.assertEqual(self.nimbrel.count(), 8)
        self.assertEqual(self.nimbrel.integrity(), "ok")

    def test_an_archive_cut_short_changes_nothing(self):
        self.nimbrel.copied("uno")
        path, _ = self.archive()
        path.write_bytes(path.read_bytes()[:-1])
        self.stop()
        self.assertEqual(self.imported(path, self.path / "otra")[0], 1)

    def test_the_lock_guards_the_export(self):
        self.nimbrel.copied("uno")
        self.start_with(lockMode="sensitiveOnly")
        path, done = self.archive()
        self.assertEqual((done[0], path.exists()), (6, False))
        self.authority("yes")
        path, done = self.archive()
        self.assertEqual((done[0], path.exists()), (0, True))

    def test_the_doctor_says_what_works(self):
        status, text, _ = self.command("doctor")
        self.assertEqual(status, 0, text)
        self.assertIn("✓ Programa: en marcha", text)
        self.assertIn("✓ Almacén de claves: tiene la clave del historial", text)
        self.assertIn("✓ Pegar: Nimbrel puede pulsar teclas", text)
        environment = {name: value for name, value in self.nimbrel.environment.items() if name != "DISPLAY"}
        blind = subprocess.run([NIMBREL, "doctor"], env=environment, capture_output=True, text=True,
                               timeout=desktop.PATIENCE)
        self.assertEqual(blind.returncode, 1)

    def test_a_damaged_history_is_repaired(self):
        for number in range(40):
            self.nimbrel.copied(f"texto {number} " + "x" * 2000)
        self.assertEqual(self.command("doctor", "--repair")[0], 1, "while the program runs")
        self.stop()
        with open(self.nimbrel.database, "r+b") as file:
            size = file.seek(0, os.SEEK_END)
            file.seek(size // 2 // 4096 * 4096)
            file.write(b"\xa5" * 4096)
        damaged = self.nimbrel.database.read_bytes()
        status, text, _ = self.command("doctor")
        self.assertEqual(status, 1)
        self.assertIn("✗ Historial: la base de datos está dañada", text)
        status, text, _ = self.command("doctor", "--repair")
        self.assertEqual(status, 0)
        salvaged = int(text.split()[0])
        self.assertGreater(salvaged, 30)
        aside = list(self.nimbrel.database.parent.glob("brevin.damaged-*.sqlite"))
        self.assertEqual([path.read_bytes() for path in aside], [damaged])
        self.nimbrel.start()
        self.assertEqual(self.nimbrel.count(), salvaged)
        self.nimbrel.copied("después")

    def test_without_a_display_it_says_so(self):
        self.stop()
        environment = {name: value for name, value in self.nimbrel.environment.items() if name != "DISPLAY"}
        done = subprocess.run([NIMBREL], env=environment, capture_output=True, text=True, timeout=desktop.PATIENCE)
        self.assertEqual(done.returncode, 1)
        self.assertIn("X11", done.stderr)


# Calls as fast as the bus takes them for some seconds, and counts the refusals.
FLOOD = """
import time
from gi.repository import Gio, GLib
bus = Gio.bus_get_sync(Gio.BusType.SESSION)
loop = GLib.MainLoop()
state = {"refused": 0, "open": 0}
end = time.monotonic() + 6
print("flooding", flush=True)
def answered(source, result):
    state["open"] -= 1
    try:
        source.call_finish(result)
    except GLib.Error as error:
        if "LimitsExceeded" in error.message:
            state["refused"] += 1
    if time.monotonic() < end:
        ask()
    elif not state["open"]:
        loop.quit()
def ask():
    state["open"] += 1
    bus.call("app.nimbrel.Nimbrel", "/app/nimbrel/Nimbrel", "app.nimbrel.Nimbrel", "SearchHistory",
             GLib.Variant("(s)", ("p",)), None, Gio.DBusCallFlags.NO_AUTO_START, 20000, None, answered)
for _ in range(64):
    ask()
loop.run()
print(state["refused"])
"""

if __name__ == "__main__":
    main()
