#!/usr/bin/env python3
"""Every setting, changed in the window with real keys, and what comes of it."""
import base64
import json
import subprocess
import time

import desktop
from desktop import key, run, type_text, until, windows
from scenario import KEY_GRAB, QT_ENTRY, Scenario, main

# The controls of each tab, in the order of the Tab key from the tab bar on.
GENERAL = ("hot key", "next hot key", "capacity", "login", "recognition", "formats")
SECURITY = ("lock", "secrets", "codes")
IGNORED = ("list", "add")
TABS = (GENERAL, SECURITY, IGNORED)
EXPIRIES = (0, 60, 300, 900, 3600, -1)
COMMAND = 256
SHIFT = 512


class Settings(Scenario):
    def window(self):
        return windows("--name", "^Ajustes de Nimbrel$")

    def open_settings(self):
        self.nimbrel.show()
        key("ctrl+comma")
        until(self.window, "the settings")
        until(lambda: f"{self.window()[0]:#x}" in desktop.active(), "the settings to be active")
        until(lambda: desktop.focused() > 1, "the settings to have the keyboard")

    def close_settings(self):
        key("Escape")
        until(lambda: not self.window(), "the settings to go")

    def go_to(self, control):
        """Opens the settings and moves to a control with the keyboard alone."""
        self.open_settings()
        tab = next(index for index, controls in enumerate(TABS) if control in controls)
        for _ in TABS:
            key("Left")
        for _ in range(tab):
            key("Right")
        for _ in range(TABS[tab].index(control) + 1):
            key("Tab")

    def press(self, control, *keys):
        """Moves to a control, presses keys, and closes the window."""
        self.go_to(control)
        for name in keys:
            key(name)
        self.close_settings()

    def choose(self, control, row):
        self.press(control, "space", "Home", *["Down"] * row, "Return")

    def stored(self, name):
        path = self.nimbrel.config / "Nimbrel" / "defaults.json"
        value = json.loads(path.read_text()).get(name) if path.exists() else None
        return json.loads(base64.b64decode(value["data"])) if isinstance(value, dict) else value

    def expect_stored(self, name, value):
        until(lambda: self.stored(name) == value, f"{name} to be stored")

    def record(self, control, *chords):
        """Presses keys while a hot key is recorded; the program has given its own back by then."""
        self.go_to(control)
        key("space")
        until(lambda: self.is_free(9, COMMAND + SHIFT) and self.is_free(45, COMMAND + SHIFT), "the recording")
        if chords:
            key(*chords)

    def restart(self):
        self.assertEqual(self.nimbrel.quit(), 0)
        self.nimbrel.start()

    def hold(self, key_code, modifiers):
        """Another program takes a combination, if it can."""
        other = subprocess.Popen([KEY_GRAB, str(key_code), str(modifiers)], stdin=subprocess.PIPE,
                                 stdout=subprocess.PIPE, text=True)
        self.addCleanup(other.communicate)
        return other.stdout.readline().strip()

    def is_free(self, key_code, modifiers):
        return subprocess.run([KEY_GRAB, str(key_code), str(modifiers)], stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, text=True).stdout.strip() == "free"

    def panel_opens_with(self, chord):
        def attempt():
            if not self.nimbrel.panel():
                key(chord)
            return self.nimbrel.panel()
        until(attempt, f"the panel with {chord}")
        self.nimbrel.hide()

    def expect_not_kept(self, text):
        """Copies something that must not be kept, and something harmless that comes after it."""
        before = self.nimbrel.count()
        desktop.copy(text)
        time.sleep(0.1)
        self.nimbrel.copied(f"después {before}")
        self.assertEqual(self.nimbrel.count(), before + 1)

    # Hot keys

    def test_a_recorded_hot_key_opens_the_panel_and_the_old_one_does_not(self):
        self.record("hot key", "ctrl+super+b")
        self.expect_stored("hotKey", {"keyCode": 11, "modifiers": 4096 + COMMAND, "keyLabel": "B"})
        self.assertFalse(self.nimbrel.panel())
        self.close_settings()
        self.panel_opens_with("ctrl+super+b")
        self.assertTrue(self.is_free(9, COMMAND + SHIFT))
        self.nimbrel.quit()
        self.nimbrel.process = subprocess.Popen([self.nimbrel.binary], env=self.nimbrel.environment,
                                                stderr=subprocess.PIPE, text=True)
        until(self.nimbrel.owns_its_name, "the program")
        self.panel_opens_with("ctrl+super+b")

    def test_the_hot_key_of_the_queue_is_another_one_at_once(self):
        self.record("next hot key", "alt+super+space")
        self.expect_stored("nextHotKey", {"keyCode": 49, "modifiers": 2048 + COMMAND, "keyLabel": "Espacio"})
        self.close_settings()
        self.assertTrue(self.is_free(45, COMMAND + SHIFT))
        self.assertFalse(self.is_free(49, COMMAND + 2048))

    def test_while_it_is_recorded_no_hot_key_fires(self):
        self.record("next hot key", "shift+super+v")
        # Recorded, refused as the panel's, and the panel stays away.
        until(lambda: not self.is_free(9, COMMAND + SHIFT), "the end of the recording")
        self.assertFalse(self.nimbrel.panel())
        self.close_settings()
        self.assertIsNone(self.stored("nextHotKey"))
        self.panel_opens_with("shift+super+v")
        self.assertFalse(self.is_free(45, COMMAND + SHIFT))

    def test_a_combination_of_another_program_is_refused_and_the_old_one_stays(self):
        self.assertEqual(self.hold(11, COMMAND), "free")
        self.record("hot key", "super+b")
        until(lambda: not self.is_free(9, COMMAND + SHIFT), "the end of the recording")
        self.close_settings()
        self.assertIsNone(self.stored("hotKey"))
        self.panel_opens_with("shift+super+v")

    def test_escape_and_a_plain_key_record_nothing(self):
        self.record("hot key", "x", "Escape")
        until(lambda: not self.is_free(9, COMMAND + SHIFT), "the end of the recording")
        self.assertTrue(self.window())
        self.close_settings()
        self.assertIsNone(self.stored("hotKey"))
        self.panel_opens_with("shift+super+v")

    # History and capture

    def test_a_smaller_capacity_trims_the_history_at_once(self):
        for number in range(30):
            self.nimbrel.copied(f"copia {number}")
        self.choose("capacity", 0)
        until(lambda: self.nimbrel.count() == 25, "the history to be trimmed")
        self.expect_stored("maxUnpinned", 25)
        self.restart()
        self.nimbrel.copied_over("una más", 25)

    def test_it_starts_with_the_session_when_it_is_told_to(self):
        autostart = self.nimbrel.config / "autostart" / "app.nimbrel.Nimbrel.desktop"
        self.press("login", "space")
        until(autostart.exists, "the file")
        self.assertIn(f'Exec="{self.nimbrel.binary}"', autostart.read_text())
        self.press("login", "space")
        until(lambda: not autostart.exists(), "the file to go")

    def test_pictures_are_read_only_while_that_is_switched_on(self):
        self.press("recognition", "space")
        self.expect_stored("ocrEnabled", False)
        self.copy_picture(self.picture("factura pendiente"))
        self.nimbrel.copied("otra cosa")
        time.sleep(1.5)
        self.nimbrel.show()
        type_text("pendien")
        key("ctrl+t")
        time.sleep(0.3)
        self.assertTrue(self.nimbrel.panel())
        self.nimbrel.hide()
        self.press("recognition", "space")
        self.paste_text_of_picture("pendien", "factura pendiente")

    def test_formats_are_kept_only_while_that_is_switched_on(self):
        self.press("formats", "space")
        self.expect_stored("richEnabled", False)
        self.copy_forms("text/plain=uno", "text/html=<b>uno</b>")
        self.assertEqual(self.side_files("Rich"), [])
        self.press("formats", "space")
        self.copy_forms("text/plain=dos", "text/html=<b>dos</b>")
        until(lambda: self.side_files("Rich"), "the stored formatting")

    # Security

    def test_the_lock_is_switched_and_lasts(self):
        self.press("lock", "space")
        self.expect_stored("lockMode", "sensitiveOnly")
        self.expect_stored("lockEnabled", True)
        self.restart()
        self.press("lock", "space")
        self.expect_stored("lockMode", "disabled")
        self.expect_stored("lockEnabled", False)

    def test_secrets_live_as_long_as_is_chosen(self):
        self.choose("secrets", EXPIRIES.index(3600))
        self.nimbrel.copied("4111 1111 1111 1111")
        self.assertEqual(self.only_row(), [(1, 3600, None)])
        self.choose("secrets", EXPIRIES.index(-1))
        self.nimbrel.copied("5500 0000 0000 0004")
        self.assertIn((1, None, None), self.only_row())
        self.choose("secrets", EXPIRIES.index(0))
        self.expect_not_kept("3400 0000 0000 009")

    def test_codes_are_not_kept_when_that_is_chosen(self):
        self.choose("codes", EXPIRIES.index(60))
        self.nimbrel.copied("482913")
        self.assertEqual(self.only_row(), [(1, 60, None)])
        self.choose("codes", EXPIRIES.index(0))
        self.expect_not_kept("482914")

    # Ignored applications

    def test_what_is_copied_in_an_ignored_program_is_not_kept(self):
        _, client = self.terminal("xterm", "-e")
        self.nimbrel.copied("antes")
        self.go_to("add")
        key("space")
        dialog = until(lambda: windows("--name", "^Añadir aplicación$"), "the chooser")[0]
        # The button with the program in front is the topmost.
        time.sleep(0.2)
        run("xdotool", "mousemove", "--window", str(dialog), "200", "26", "click", "1")
        until(lambda: not windows("--name", "^Añadir aplicación$"), "the chooser to go")
        until(lambda: any("xterm" in app["bundleID"].lower() for app in self.stored("ignoredApps") or []),
              "the terminal in the list")
        self.close_settings()
        run("xdotool", "windowactivate", "--sync", str(client.window), check=False)
        until(lambda: f"{client.window:#x}" in desktop.active(), "the terminal to be active")
        desktop.copy("dentro")
        time.sleep(0.1)
        self.open([QT_ENTRY], "--name", "^qt-entry$")
        self.nimbrel.copied("fuera")
        self.assertEqual(self.nimbrel.count(), 2)

    def test_a_removed_default_stays_away_after_a_restart(self):
        self.press("list", "Down", "Home", "Delete")
        until(lambda: len(self.stored("ignoredApps") or []) == 9, "the shorter list")
        self.restart()
        self.press("list", "Down", "Home", "Delete")
        until(lambda: len(self.stored("ignoredApps")) == 8, "the list without two")
        self.assertEqual(self.stored("ignoredApps")[0]["bundleID"], "com.1password.1password")

    def test_an_installed_application_is_found_by_its_name_and_added(self):
        self.go_to("add")
        key("space")
        until(lambda: windows("--name", "^Añadir aplicación$"), "the chooser")
        type_text("lxterminal")
        def added():
            # Nothing can be added before the list is there.
            key("Return")
            return not windows("--name", "^Añadir aplicación$")
        until(added, "the chooser to go")
        until(lambda: (self.stored("ignoredApps") or [{}])[-1].get("bundleID") == "lxterminal", "the terminal")
        self.close_settings()

    # The window

    def test_the_settings_are_one_window_and_take_the_place_of_the_panel(self):
        self.open_settings()
        self.assertFalse(self.nimbrel.panel())
        self.close_settings()
        self.open_settings()
        # Asked for once more while it is there.
        self.nimbrel.show()
        key("ctrl+comma")
        until(lambda: not self.nimbrel.panel(), "the panel to go")
        self.assertEqual(len(self.window()), 1)
        geometry = run("xdotool", "getwindowgeometry", "--shell", str(self.window()[0]))
        self.assertIn("WIDTH=490", geometry)
        self.assertIn("HEIGHT=390", geometry)
        self.close_settings()

    def test_a_minimised_settings_window_comes_back(self):
        for _ in range(2):
            self.open_settings()
            run("xdotool", "windowminimize", str(self.window()[0]))
            until(lambda: not self.window(), "the settings to be put away")
            self.open_settings()
            self.close_settings()

    def test_the_panel_has_the_keyboard_also_when_it_comes_while_a_hot_key_is_recorded(self):
        self.nimbrel.copied("hola")
        self.record("hot key")
        subprocess.run([self.nimbrel.binary], env=self.nimbrel.environment, check=True, timeout=desktop.PATIENCE)
        until(self.nimbrel.panel, "the panel")
        self.nimbrel.hide()
        self.assertTrue(self.window())
        self.close_settings()
        self.panel_opens_with("shift+super+v")

    def test_it_speaks_english_to_those_whose_language_that_is(self):
        self.nimbrel.quit()
        self.nimbrel.environment.update(LANG="en_US.UTF-8", LANGUAGE="en")
        self.nimbrel.start()
        self.nimbrel.show()
        key("ctrl+comma")
        until(lambda: windows("--name", "^Nimbrel Settings$"), "the settings in English")
        self.assertEqual(self.window(), [])

    def test_the_gear_of_the_panel_opens_the_settings(self):
        self.nimbrel.show()
        panel = self.nimbrel.panel()[0]
        shape = dict(line.split("=") for line in run("xdotool", "getwindowgeometry", "--shell", str(panel)).split())
        # In the corner, within the panel's own margin and its shadow.
        margin = (int(shape["WIDTH"]) - 480) // 2
        before = windows("--class", "^[Nn]imbrel$")
        run("xdotool", "mousemove", "--window", str(panel), str(int(shape["WIDTH"]) - margin - 25), str(margin + 25),
            "click", "1")
        until(lambda: set(windows("--class", "^[Nn]imbrel$")) - set(before), "the menu")
        # The last entry but the one that quits.
        key("Up", "Up", "Return")
        until(self.window, "the settings")
        until(lambda: not self.nimbrel.panel(), "the panel to go")
        self.close_settings()

    def test_a_damaged_settings_file_is_kept_and_the_defaults_hold(self):
        self.nimbrel.quit()
        folder = self.nimbrel.config / "Nimbrel"
        folder.mkdir(parents=True, exist_ok=True)
        (folder / "defaults.json").write_text('{"maxUnpinned": 25, ')
        self.nimbrel.start()
        self.assertEqual((folder / "defaults.json").read_text(), '{"maxUnpinned": 25, ')
        self.press("lock", "space")
        self.expect_stored("lockMode", "sensitiveOnly")
        self.assertEqual(self.stored("maxUnpinned"), 100)
        self.assertEqual((folder / "defaults.json.damaged").read_text(), '{"maxUnpinned": 25, ')
        self.assertEqual((folder / "defaults.json").stat().st_mode & 0o777, 0o600)


if __name__ == "__main__":
    main()
