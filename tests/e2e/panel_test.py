#!/usr/bin/env python3
"""What people do in the panel beside pasting, with real keys and a real pointer."""
import json
import os
import time

import desktop
from desktop import key, run, type_text, until
from scenario import QT_ENTRY, PanelScenario, main

# The middle of the first row, from the upper edge of the panel.
FIRST_ROW = 105


class Panel(PanelScenario):
    # Menus

    def test_a_transform_is_chosen_and_pasted_with_the_keyboard(self):
        self.nimbrel.copied("hola mundo")
        client = self.open([QT_ENTRY], "--name", "^qt-entry$")
        self.nimbrel.show()
        self.open_menu("shift+F10")
        key("Down", "Down")
        self.open_menu("Right")
        key("Return")
        until(self.closed, "the panel to go")
        self.finish_field(client, "HOLA MUNDO")

    def test_the_panel_has_the_keyboard_again_after_a_menu(self):
        self.nimbrel.copied("uno")
        self.nimbrel.copied("dos")
        client = self.open([QT_ENTRY], "--name", "^qt-entry$")
        self.nimbrel.show()
        for opening in (["shift+F10"], ["Tab", "Return"], ["Tab", "Return"]):
            self.open_menu(*opening)
            key("Escape")
            until(lambda: not self.popups(), "the menu to go")
        self.assertFalse(self.closed())
        type_text("uno")
        key("Return")
        until(self.closed, "the panel to go")
        self.finish_field(client, "uno")

    def test_a_click_elsewhere_closes_the_menu_and_then_the_panel(self):
        self.nimbrel.copied("uno")
        _, client = self.terminal("xterm", "-e")
        run("xdotool", "mousemove", "900", "300")
        self.nimbrel.show()
        self.open_menu("shift+F10")
        run("xdotool", "mousemove", "--window", str(client.window), "5", "5")
        def gone():
            run("xdotool", "click", "1")
            return self.closed() and not self.popups()
        until(gone, "the menu and the panel to go")

    def test_capture_is_paused_from_the_gear_and_resumed_from_the_banner(self):
        self.nimbrel.copied("antes")
        self.nimbrel.show()
        self.open_menu("Tab", "Tab", "Return")
        self.choose(1)
        until(lambda: not self.popups(), "the menu to go")
        self.nimbrel.hide()
        desktop.copy("en pausa")
        time.sleep(1)
        self.assertEqual(self.nimbrel.count(), 1)
        self.nimbrel.show()
        # Past the filter, the gear and the tabs comes the banner's button.
        key("Tab", "Tab", "Tab", "Tab", "Return")
        self.nimbrel.hide()
        self.nimbrel.copied("después")

    def test_the_history_is_cleared_only_when_that_is_confirmed(self):
        for text in ("uno", "dos", "tres"):
            self.nimbrel.copied(text)
        self.nimbrel.show()
        key("ctrl+p")
        for answer in (["Escape"], ["Tab", "Return"]):
            self.assertEqual(self.nimbrel.count(), 3)
            self.open_menu("Tab", "Tab", "Return")
            # Past pausing.
            self.choose(2)
            until(lambda: not self.popups(), "the menu to go")
            key(*answer)
        until(lambda: self.nimbrel.count() == 1, "the history to be cleared")
        self.assertFalse(self.closed())

    # Organizing

    def test_a_clip_is_put_into_a_collection_and_found_there(self):
        self.nimbrel.copied("receta")
        self.nimbrel.copied("otra cosa")
        client = self.open([QT_ENTRY], "--name", "^qt-entry$")
        self.nimbrel.show()
        key("Down", "ctrl+k")
        type_text("Cocina")
        key("Return")
        until(lambda: sorted(self.rows("pinned")) == [(0,), (1,)], "the clip to be kept")
        self.open_menu("Tab", "Return")
        # The last entry is the only collection.
        key("Up", "Return")
        until(lambda: not self.popups(), "the menu to go")
        key("Return")
        until(self.closed, "the panel to go")
        self.finish_field(client, "receta")

    def test_a_deletion_is_undone(self):
        self.nimbrel.copied("uno")
        self.nimbrel.copied("dos")
        before = self.rows("id, date")
        self.nimbrel.show()
        key("ctrl+Delete")
        until(lambda: self.nimbrel.count() == 1, "the deletion")
        key("ctrl+z")
        until(lambda: sorted(self.rows("id, date")) == sorted(before), "the clip to be back")
        self.nimbrel.hide()

    def test_the_queue_is_filled_in_the_panel_and_pasted_one_by_one(self):
        for text in ("tres", "dos", "uno"):
            self.nimbrel.copied(text)
        client = self.open([QT_ENTRY], "--name", "^qt-entry$")
        self.nimbrel.show()
        key("ctrl+n", "Down", "ctrl+n")
        self.nimbrel.hide()
        for _ in range(2):
            key("shift+super+n")
            time.sleep(0.5)
        self.finish_field(client, "unodos")

    def test_what_was_typed_last_is_what_is_pasted(self):
        for number in range(30):
            self.nimbrel.copied(f"copia número {number}")
        client = self.open([QT_ENTRY], "--name", "^qt-entry$")
        self.nimbrel.show()
        run("xdotool", "type", "--delay", "0", "--args", "1", "numero 17", "key", "--delay", "0", "Return")
        until(self.closed, "the panel to go")
        self.finish_field(client, "copia número 17")

    def test_a_link_is_opened_with_the_desktops_own_program(self):
        self.nimbrel.quit()
        tools = self.path / "bin"
        tools.mkdir()
        opened = self.path / "opened.txt"
        program = tools / "xdg-open"
        program.write_text(f'#!/bin/sh\necho "$1" > {opened}\n')
        program.chmod(0o755)
        self.nimbrel.environment["PATH"] = f"{tools}:{os.environ['PATH']}"
        self.nimbrel.start()
        self.nimbrel.copied("https://example.org/una?dos=tres")
        self.nimbrel.show()
        key("ctrl+o")
        until(lambda: opened.exists() and opened.read_text(), "the link to be opened")
        self.assertEqual(opened.read_text().strip(), "https://example.org/una?dos=tres")
        until(self.closed, "the panel to go")

    # The pointer

    def test_a_double_click_pastes(self):
        self.nimbrel.copied("dos")
        self.nimbrel.copied("uno")
        client = self.open([QT_ENTRY], "--name", "^qt-entry$")
        self.nimbrel.show()
        x, y, _, _ = self.geometry()
        run("xdotool", "mousemove", str(x + 150), str(y + self.frame() + FIRST_ROW + 60))
        run("xdotool", "click", "--repeat", "2", "--delay", "60", "1")
        until(self.closed, "the panel to go")
        self.finish_field(client, "dos")

    def test_a_clip_is_dragged_into_another_program(self):
        self.nimbrel.copied("arrastrada")
        client = self.open([QT_ENTRY], "--name", "^qt-entry$")
        run("xdotool", "windowmove", "--sync", str(client.window), "40", "700", check=False)
        self.nimbrel.show()
        x, y, _, _ = self.geometry()
        run("xdotool", "mousemove", str(x + 150), str(y + self.frame() + FIRST_ROW), "mousedown", "1")
        for step in range(1, 9):
            run("xdotool", "mousemove_relative", "--", "-6", "10")
            time.sleep(0.05)
        run("xdotool", "mousemove", "--window", str(client.window), "20", "10")
        time.sleep(0.3)
        run("xdotool", "mousemove_relative", "4", "2")
        time.sleep(0.3)
        run("xdotool", "mouseup", "1")
        if not self.closed():
            self.nimbrel.hide()
        run("xdotool", "windowactivate", "--sync", str(client.window), check=False)
        self.finish_field(client, "arrastrada")

    def test_the_panel_keeps_the_size_that_the_user_gives_it(self):
        self.nimbrel.show()
        x, y, width, height = self.geometry()
        frame = self.frame()
        run("xdotool", "mousemove", str(x + width - frame - 6), str(y + height - frame - 6), "mousedown", "1")
        for _ in range(4):
            run("xdotool", "mousemove_relative", "20", "10")
            time.sleep(0.02)
        run("xdotool", "mouseup", "1")
        wanted = (width + 80, height + 40)
        until(lambda: self.geometry()[2:] == wanted, "the panel to grow")
        self.nimbrel.hide()
        self.nimbrel.show()
        self.assertEqual(self.geometry()[2:], wanted)
        self.nimbrel.hide()
        self.assertEqual(self.nimbrel.quit(), 0)
        stored = json.loads((self.nimbrel.config / "Nimbrel" / "defaults.json").read_text())
        self.assertIn("panelWidth", stored)
        self.nimbrel.start()
        self.nimbrel.show()
        self.assertEqual(self.geometry()[2:], wanted)
        self.nimbrel.hide()


if __name__ == "__main__":
    main()
