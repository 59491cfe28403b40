#!/usr/bin/env python3
"""The main job, played with real programs on the desktop that DISPLAY names: demo.py NIMBREL SCREENSHOT_FOLDER"""
import pathlib
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "tests" / "e2e"))
from desktop import Nimbrel, copy, focused, key, run, type_text, until, windows  # noqa: E402

BINARY, SCREENSHOTS = sys.argv[1], pathlib.Path(sys.argv[2])
TEXTS = [
    "Hola mundo",
    "https://docs.example.org/guia/instalacion#requisitos",
    "Hola {nombre}, te escribo el {fecha} por el presupuesto que me pediste la semana pasada.",
    "Reunión el jueves a las 10:30, sala 4",
    "Receta de canción de cuna: acordes y letra completa",
]


def say(text):
    print(f"· {text}", flush=True)


def screenshot(name):
    # What has just changed gets a moment to be painted.
    time.sleep(0.4)
    run("import", "-window", "root", str(SCREENSHOTS / f"{name}.png"))


def copy_image():
    with tempfile.NamedTemporaryFile(suffix=".png") as picture:
        run("convert", "-size", "640x360", "gradient:#7cc0ff-#ffb27c", picture.name)
        # xclip stays behind to serve the selection, so nobody must wait for its output to end.
        subprocess.run(["xclip", "-selection", "clipboard", "-t", "image/png", "-i", picture.name], check=True,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


def main():
    SCREENSHOTS.mkdir(parents=True, exist_ok=True)
    run("xsetroot", "-solid", "#c9d3e0", check=False)
    with tempfile.TemporaryDirectory() as folder:
        nimbrel = Nimbrel(BINARY, pathlib.Path(folder) / "data", pathlib.Path(folder) / "config")
        nimbrel.start()
        say(f"Nimbrel runs; its history is {nimbrel.database.name}, mode {nimbrel.database.stat().st_mode & 0o777:o}.")
        output = pathlib.Path(folder) / "terminal.txt"
        terminal = subprocess.Popen(["xterm", "-geometry", "90x24+120+90", "-e", f"sh -c 'cat > {output}'"],
                                    stderr=subprocess.DEVNULL)
        window = until(lambda: windows("--class", "xterm"), "the terminal")[-1]
        run("xdotool", "windowactivate", "--sync", str(window), check=False)
        until(lambda: focused() > 1, "the terminal's focus")

        for text in TEXTS:
            nimbrel.copied(text)
        say(f"Copied {len(TEXTS)} texts with xclip; the history on disk holds {nimbrel.count()} clips.")
        copy_image()
        time.sleep(1)
        kept = nimbrel.count() - len(TEXTS)
        say("Copied an image; " + ("it is in the history." if kept else "this version reads it but does not keep images yet."))

        run("xdotool", "mousemove", "640", "180")
        nimbrel.show()
        say("Pressed Shift-Super-V: the panel is at the pointer, the terminal still has the focus: "
            + ("yes." if focused() else "no."))
        screenshot("1-panel")
        type_text("cancion")
        screenshot("2-search")
        say("Typed “cancion”, which finds “canción”.")
        key("Return")
        until(lambda: not nimbrel.panel(), "the panel to go")

        def pasted():
            key("Return")
            return output.exists() and "canción" in output.read_text()
        until(pasted, "the paste in the terminal")
        say(f"Pressed Return; the terminal received: {output.read_text().strip()}")
        screenshot("3-pasted")
        terminal.kill()
        terminal.wait()

        say(f"Asked Nimbrel to end: exit status {nimbrel.quit()}.")
        raw = b"".join(path.read_bytes() for path in nimbrel.database.parent.glob("brevin.sqlite*"))
        say("The history's files hold no clear text: " + ("yes." if "canción".encode() not in raw else "NO."))
        nimbrel.start()
        say(f"Started it again: {nimbrel.count()} clips are there.")
        nimbrel.quit()
    print(f"Screenshots: {SCREENSHOTS}")


main()
