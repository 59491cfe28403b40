#!/usr/bin/env python3
"""What is around the panel: the tray, the lock, the preview, URLs, the end of the program."""
import json
import os
import pathlib
import re
import subprocess
import time

import desktop
from desktop import active, focused, key, run, type_text, until, windows
from scenario import NIMBREL, QT_ENTRY, PanelScenario, main

SESSION_MANAGER = str(pathlib.Path(QT_ENTRY).resolve().with_name("session_manager"))
DATA = pathlib.Path(__file__).resolve().parents[2] / "data"
SECRET = "ghp_" + "aB3dE5fG7hJ9kL1mN3pQ5rS7tU9vW1xY3zA5"
BADGE = "2F6FD6"


class Shell(PanelScenario):
    def previews(self):
        return windows("--name", "^Vista r")

    def preview_files(self):
        folder = pathlib.Path(os.environ["XDG_RUNTIME_DIR"]) / "nimbrel-preview"
        return sorted(folder.iterdir()) if folder.exists() else []

    def open_preview(self):
        key("space")
        until(self.previews, "the preview")

    def previewed(self):
        return [path.read_text() for path in self.preview_files()]

    def call(self, method, *arguments, check=True):
        return run("dbus-send", "--session", "--print-reply", "--dest=app.nimbrel.Nimbrel", "/app/nimbrel/Nimbrel",
                   f"app.nimbrel.Nimbrel.{method}", *arguments, check=check)

    def exit_status(self):
        status = self.nimbrel.process.wait(desktop.PATIENCE)
        self.nimbrel.log = self.nimbrel.process.stderr.read()
        self.nimbrel.process.stderr.close()
        return status

    # The preview

    def test_the_space_bar_previews_the_selected_clip(self):
        self.nimbrel.copied("abajo")
        self.nimbrel.copied("arriba")
        self.nimbrel.show()
        before = (active(), focused())
        self.open_preview()
        self.assertEqual((active(), focused()), before)
        self.assertEqual(self.previewed(), ["arriba"])
        key("Down")
        until(lambda: sorted(self.previewed()) == ["abajo", "arriba"], "the preview to follow the selection")
        for path in self.preview_files():
            self.assertEqual(path.stat().st_mode & 0o777, 0o600)
            self.assertEqual(path.parent.stat().st_mode & 0o777, 0o700)
        key("Escape")
        until(lambda: not self.previews(), "the preview to go")
        self.assertEqual(self.preview_files(), [])
        self.assertFalse(self.closed())
        self.open_preview()
        key("space")
        until(lambda: not self.previews(), "the preview to go")
        self.assertFalse(self.closed())
        self.nimbrel.hide()

    def test_a_picture_is_previewed_and_pasting_closes_the_preview(self):
        self.copy_picture(self.picture("foto"))
        self.nimbrel.show()
        self.open_preview()
        self.assertEqual([path.suffix for path in self.preview_files()], [".png"])
        key("Return")
        until(lambda: not self.previews() and self.closed(), "panel and preview to go")
        self.assertEqual(self.preview_files(), [])

    def test_the_preview_can_be_clicked_and_closed_with_the_mouse(self):
        self.nimbrel.copied("uno")
        self.nimbrel.show()
        self.open_preview()
        x, y, width, _ = self.geometry(self.previews()[0])
        run("xdotool", "mousemove", str(x + width // 2), str(y + 200), "click", "1")
        time.sleep(0.3)
        self.assertTrue(self.previews())
        self.assertFalse(self.closed())
        run("xdotool", "mousemove", str(x + width - 22), str(y + 18), "click", "1")
        until(lambda: not self.previews(), "the preview to go")
        self.assertFalse(self.closed())
        self.nimbrel.hide()

    def test_a_crash_leaves_no_preview_behind_for_long(self):
        self.nimbrel.copied("uno")
        self.nimbrel.show()
        self.open_preview()
        self.nimbrel.kill()
        self.assertEqual(len(self.preview_files()), 1)
        self.nimbrel.start()
        self.assertEqual(self.preview_files(), [])

    # The lock

    def lock(self):
        self.start_with(lockMode="sensitiveOnly", lockEnabled=True, sensitiveExpiry=-1)
        self.nimbrel.copied(SECRET)
        self.nimbrel.show()
        key("space")
        time.sleep(0.3)
        self.assertEqual(self.previews(), [])

    def unlock(self):
        self.open_menu("shift+F10")
        self.choose(3)

    def prompt(self):
        return windows("--name", "^polkit-mock$")

    def test_a_secret_is_seen_after_the_password(self):
        authority = self.authority("ask")
        self.lock()
        before = focused()
        self.unlock()
        until(self.prompt, "the prompt")
        until(lambda: focused() != before, "the prompt to have the keyboard")
        self.assertFalse(self.closed())
        type_text("nimbrel")
        key("Return")
        until(lambda: not self.prompt(), "the prompt to go")
        self.assertEqual(authority.stdout.readline(), "app.nimbrel.Nimbrel.reveal-clip\n")
        def previewed():
            # The panel has the keyboard again when it is the panel's key that works.
            key("space")
            time.sleep(0.1)
            return self.previews()
        until(previewed, "the preview of what was unlocked")
        self.assertEqual(self.previewed(), [SECRET])
        key("Escape")
        self.nimbrel.hide()
        self.nimbrel.show()
        key("space")
        time.sleep(0.3)
        self.assertEqual(self.previews(), [], "masked again")
        # Within the minute nobody is asked again.
        self.unlock()
        time.sleep(0.3)
        self.assertEqual(self.prompt(), [])
        self.open_preview()
        key("Escape", "Escape")

    def test_a_wrong_password_shows_nothing(self):
        self.authority("ask")
        self.lock()
        self.unlock()
        until(self.prompt, "the prompt")
        until(lambda: focused() in self.prompt(), "the prompt to have the keyboard")
        type_text("otra")
        key("Return")
        until(lambda: not self.prompt(), "the prompt to go")
        time.sleep(0.3)
        key("space")
        time.sleep(0.3)
        self.assertEqual(self.previews(), [])
        self.nimbrel.hide()
        self.stop()
        self.assertNotIn("Bloqueo", self.nimbrel.log)

    def test_what_cannot_be_asked_leaves_the_panel_usable(self):
        self.lock()
        for mode in (None, "agentless", "unknown", "dies", "nonsense"):
            authority = self.authority(mode) if mode else None
            self.unlock()
            time.sleep(0.8)
            key("space")
            time.sleep(0.2)
            self.assertEqual(self.previews(), [], mode)
            if authority:
                authority.kill()
                authority.wait()
        self.nimbrel.hide()
        self.stop()
        self.assertEqual(self.nimbrel.log.count("Bloqueo: no se puede autenticar"), 5)

    def test_a_prompt_that_never_comes_leaves_the_panel_usable(self):
        self.authority("mute")
        self.lock()
        self.nimbrel.hide()
        client = self.open([QT_ENTRY], "--name", "^qt-entry$")
        before = focused()
        self.nimbrel.show()
        self.unlock()
        time.sleep(0.5)
        self.nimbrel.hide()
        until(lambda: focused() == before, "the keyboard to be where it was")
        self.nimbrel.show()
        key("Return")
        until(self.closed, "the panel to go")
        self.finish_field(client, SECRET)

    # URLs

    def texts(self):
        self.nimbrel.show()
        self.nimbrel.hide()
        return self.nimbrel.count()

    def start_again(self, *urls):
        return subprocess.run([NIMBREL, *urls], env=self.nimbrel.environment, timeout=desktop.PATIENCE).returncode

    def test_another_start_hands_a_url_over_and_shows_nothing(self):
        self.assertEqual(self.start_again("nimbrel://add?text=hola%20mundo&source=iphone"), 0)
        until(lambda: self.nimbrel.count() == 1, "the text")
        self.assertTrue(self.closed())
        self.assertEqual(self.start_again("NIMBREL://ADD?text=dos", "nimbrel://add?Text=no", "nimbrel://add?text=%20"), 0)
        until(lambda: self.nimbrel.count() == 2, "the second text")
        client = self.open([QT_ENTRY], "--name", "^qt-entry$")
        self.paste("hola")
        self.finish_field(client, "hola mundo")

    def test_a_url_starts_the_program(self):
        self.stop()
        self.nimbrel.process = subprocess.Popen([NIMBREL, "nimbrel://add?text=primero"], env=self.nimbrel.environment,
                                                stderr=subprocess.PIPE, text=True)
        until(lambda: self.nimbrel.count() == 1, "the text")

    def test_the_desktop_opens_the_programs_urls_with_it(self):
        applications = pathlib.Path(self.nimbrel.environment["XDG_DATA_HOME"]) / "applications"
        applications.mkdir(parents=True)
        entry = applications / "app.nimbrel.Nimbrel.desktop"
        text = (DATA / "app.nimbrel.Nimbrel.desktop").read_text()
        entry.write_text(re.sub(r"^(TryExec=|Exec=)nimbrel", rf"\1{NIMBREL}", text, flags=re.MULTILINE))
        run("desktop-file-validate", str(entry))
        run("update-desktop-database", str(applications))
        subprocess.run(["gio", "open", "nimbrel://add?text=del%20navegador"], env=self.nimbrel.environment, check=True,
                       timeout=desktop.PATIENCE)
        until(lambda: self.nimbrel.count() == 1, "the text")

    def test_a_flood_of_urls_neither_fills_the_history_nor_stops_the_panel(self):
        self.nimbrel.copied("mío")
        urls = ",".join(f"nimbrel://add?text=basura{number}" for number in range(2000))
        for _ in range(5):
            self.call("OpenUrls", f"array:string:{urls}")
        self.nimbrel.show()
        self.nimbrel.hide()
        self.assertEqual(self.nimbrel.count(), 21)
        self.stop()
        self.assertEqual(self.nimbrel.log.count("No se añadió lo recibido por URL"), 1)

    def test_an_endless_url_is_refused(self):
        self.nimbrel.copied("mío")
        # Longer than a command line may be: by the bus library itself.
        program = ("from gi.repository import Gio, GLib\n"
                   "bus = Gio.bus_get_sync(Gio.BusType.SESSION)\n"
                   "url = 'nimbrel://add?text=' + 'x' * 50_000_000\n"
                   "bus.call_sync('app.nimbrel.Nimbrel', '/app/nimbrel/Nimbrel', 'app.nimbrel.Nimbrel', 'OpenUrls',"
                   " GLib.Variant('(as)', ([url],)), None, 0, 20000)\n")
        done = subprocess.run(["/usr/bin/python3", "-c", program], capture_output=True, text=True, timeout=60)
        self.assertIn("LimitsExceeded", done.stderr)
        self.nimbrel.show()
        self.nimbrel.hide()
        self.assertEqual(self.nimbrel.count(), 1)

    # The application in front

    def notifications(self):
        """What is asked of a notification server, as text."""
        log = open(self.path / "notifications.txt", "w+")
        monitor = subprocess.Popen(["dbus-monitor", "--session", "interface='org.freedesktop.Notifications'"],
                                   stdout=log, stderr=subprocess.DEVNULL)
        def end():
            monitor.kill()
            monitor.wait()
            log.close()
        self.addCleanup(end)
        time.sleep(0.5)
        return lambda: (self.path / "notifications.txt").read_text()

    def expect_nothing_pasted(self, told):
        key("Return")
        until(self.closed, "the panel to go")
        until(lambda: "No se ha pegado" in told(), "the notification")
        self.assertNotIn("delicado", told())
        self.assertEqual(run("xclip", "-selection", "clipboard", "-o"), "delicado")

    def test_another_window_that_comes_to_the_front_gets_nothing(self):
        self.nimbrel.copied("delicado")
        told = self.notifications()
        output, terminal = self.terminal("xterm", "-e")
        client = self.open([QT_ENTRY], "--name", "^qt-entry$")
        self.nimbrel.show()
        run("xdotool", "windowactivate", "--sync", str(terminal.window), check=False)
        self.expect_nothing_pasted(told)
        key("x", "Return")
        until(lambda: "x" in self.read(output), "the terminal's own input")
        self.assertEqual(self.read(output).strip(), "x")
        run("xdotool", "windowactivate", "--sync", str(client.window), check=False)
        self.finish_field(client, "")

    def test_a_dialog_that_comes_up_gets_nothing(self):
        self.nimbrel.copied("delicado")
        told = self.notifications()
        self.terminal("xterm", "-e")
        self.nimbrel.show()
        dialog = self.open(["zenity", "--entry", "--title=gtk-entry"], "--name", "^gtk-entry$")
        self.assertFalse(self.closed())
        self.expect_nothing_pasted(told)
        self.finish_field(dialog, "")

    def test_a_window_that_has_closed_gets_nothing_and_neither_does_the_next(self):
        self.nimbrel.copied("delicado")
        told = self.notifications()
        output, _ = self.terminal("xterm", "-e")
        victim = self.open([QT_ENTRY], "--name", "^qt-entry$")
        self.nimbrel.show()
        victim.close()
        self.expect_nothing_pasted(told)
        key("x", "Return")
        time.sleep(0.5)
        self.assertNotIn("delicado", self.read(output))

    # The end

    def leave_a_preview_open(self):
        self.nimbrel.copied("primero")
        self.nimbrel.copied("queda")
        self.nimbrel.show()
        self.open_preview()

    def expect_orderly_end(self):
        self.assertEqual(self.preview_files(), [])
        wal = self.nimbrel.database.with_name(self.nimbrel.database.name + "-wal")
        self.assertTrue(not wal.exists() or wal.stat().st_size == 0)
        self.assertEqual(self.nimbrel.integrity(), "ok")
        self.assertEqual(self.nimbrel.count(), 2)

    def test_a_termination_signal_ends_it_in_order(self):
        self.leave_a_preview_open()
        self.assertEqual(self.nimbrel.quit(), 0)
        self.expect_orderly_end()

    def test_the_bus_ends_it_in_order(self):
        self.leave_a_preview_open()
        self.call("Quit")
        self.assertEqual(self.exit_status(), 0)
        self.expect_orderly_end()

    def test_the_session_manager_ends_it_in_order_and_does_not_restart_it(self):
        self.stop()
        manager = subprocess.Popen([SESSION_MANAGER], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        def end():
            manager.kill()
            manager.communicate()
        self.addCleanup(end)
        self.nimbrel.environment["SESSION_MANAGER"] = manager.stdout.readline().strip()
        self.nimbrel.start()
        self.leave_a_preview_open()
        # It was asked to save itself when it joined; 3 is never (SmRestartNever).
        manager.stdin.write("\n")
        manager.stdin.flush()
        self.assertEqual(self.exit_status(), 0)
        self.expect_orderly_end()
        manager.kill()
        self.assertEqual(manager.communicate()[0].split("\n")[-2], "restart 3")

    def test_the_menu_ends_it_in_order(self):
        self.leave_a_preview_open()
        key("Escape")
        until(lambda: not self.previews(), "the preview to go")
        self.open_menu("Tab", "Tab", "Return")
        key("Up", "Return")
        self.assertEqual(self.exit_status(), 0)
        self.expect_orderly_end()

    def test_the_end_of_the_x_server_ends_it_in_order(self):
        self.stop()
        reading, writing = os.pipe()
        server = subprocess.Popen(["Xvfb", "-displayfd", str(writing), "-screen", "0", "800x600x24", "-nolisten", "tcp", "-noreset"],
                                  pass_fds=[writing], stderr=subprocess.DEVNULL)
        self.addCleanup(server.wait)
        self.addCleanup(server.kill)
        # The whole line: the server ends when it cannot write the rest of it.
        with os.fdopen(reading) as answer:
            os.close(writing)
            number = answer.readline().strip()
        outer = os.environ["DISPLAY"]
        os.environ["DISPLAY"] = self.nimbrel.environment["DISPLAY"] = f":{number}"
        try:
            self.nimbrel.start()
            self.leave_a_preview_open()
            server.kill()
            server.wait()
        finally:
            os.environ["DISPLAY"] = outer
        self.assertEqual(self.exit_status(), 1)
        self.expect_orderly_end()

    def test_a_crash_dumps_no_memory(self):
        limits = pathlib.Path(f"/proc/{self.nimbrel.process.pid}/limits").read_text()
        self.assertRegex(limits, r"Max core file size +0 +0 ")

    # The tray

    def badge(self):
        """Where the number beside the status item is on the screen."""
        text = run("sh", "-c", "import -window root -depth 8 txt:- | grep -m1 -i '#" + BADGE + "'", check=False)
        found = re.match(r"(\d+),(\d+):", text)
        return found and (int(found[1]), int(found[2]))

    def expect_status_item(self):
        self.nimbrel.copied("en cola")
        self.nimbrel.show()
        key("ctrl+n")
        self.nimbrel.hide()
        x, y = until(self.badge, "the number in the tray")
        time.sleep(0.3)
        run("xdotool", "mousemove", str(x), str(y), "click", "1")
        until(self.nimbrel.panel, "the panel at a click on the status item")
        # Not a double click, which is one click here.
        time.sleep(0.6)
        run("xdotool", "click", "1")
        until(self.closed, "the panel to go at the next click")

    def tray(self, *command):
        process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)

    def test_is_in_a_tray_that_embeds_windows_and_came_late(self):
        self.tray("trayer", "--edge", "top", "--align", "right", "--widthtype", "request", "--height", "24",
                  "--SetDockType", "true")
        self.expect_status_item()

    def test_is_in_a_tray_of_notifier_items_and_came_late(self):
        self.tray("xfce4-panel", "--disable-wm-check")
        self.expect_status_item()
        names = run("dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus", "/",
                    "org.freedesktop.DBus.ListNames")
        self.assertIn(f"org.kde.StatusNotifierItem-{self.nimbrel.process.pid}-1", names)

    def test_without_a_tray_says_so_once(self):
        time.sleep(6)
        self.stop()
        self.assertEqual(self.nimbrel.log.count("No hay bandeja"), 1)


if __name__ == "__main__":
    main()
