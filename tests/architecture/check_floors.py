#!/usr/bin/env python3
"""Fails on an include that goes up a floor or across to another room of the same floor, and on an operating-system
test outside src/platform/."""
import pathlib
import re
import sys

# Folder → (floor, room). The longest matching folder decides.
ROOMS = {
    "memory": (0, "memory"),
    "capture/model": (1, "clips"),
    "platform": (1, "ports"),
    "platform/symbols": (0, "symbols"),
    "platform/common": (2, "common"),
    "platform/linux": (2, "linux"),
    "platform/macos": (2, "macos"),
    "look": (1, "look"),
    "look/icons": (2, "icons"),
    "capture/detection": (2, "detection"),
    "capture/transforms": (2, "detection"),
    "storage": (2, "storage"),
    "app/hotkeys": (2, "hotkeys"),
    "app/permission": (2, "permission"),
    "settings/model": (3, "settings"),
    "panel/lock": (3, "lock"),
    "capture": (4, "capture"),
    "panel": (5, "panel"),
    "settings/window": (5, "settingsui"),
    "intents": (5, "intents"),
    "app": (6, "nimbrel"),
}
# The adapters know the ports, how memory is wiped, what they have in common, and the system, nothing else of the house.
ADAPTERS_MAY_USE = {
    "common": {"ports", "memory"},
    "linux": {"ports", "memory", "common", "symbols"},
    "macos": {"ports", "memory", "common", "symbols"},
}
SYSTEM_TEST = re.compile(r"\b(Q_OS_\w+|__APPLE__|__linux__|__unix__|_WIN32)\b")
INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"')


def room_of(path):
    parts = pathlib.PurePosixPath(path).parts[:-1]
    for length in range(len(parts), 0, -1):
        room = ROOMS.get("/".join(parts[:length]))
        if room:
            return room
    return None


def problems_in(relative, text):
    here = room_of(relative)
    if here is None:
        yield f"{relative}: stands in no room"
        return
    for number, line in enumerate(text.splitlines(), 1):
        if here[1] not in ("ports", "linux", "macos") and SYSTEM_TEST.search(line):
            yield f"{relative}:{number}: operating-system test outside of platform/"
        match = INCLUDE.match(line)
        if not match:
            continue
        there = room_of(match.group(1))
        if there is None:
            yield f"{relative}:{number}: {match.group(1)} is not named from the source root"
        elif here[1] in ADAPTERS_MAY_USE:
            if there != here and there[1] not in ADAPTERS_MAY_USE[here[1]]:
                yield f"{relative}:{number}: an adapter includes {match.group(1)}"
        elif there != here and there[0] >= here[0]:
            yield f"{relative}:{number}: floor {here[0]} includes {match.group(1)} of floor {there[0]}"


def check(root):
    source = pathlib.Path(root) / "src"
    found = []
    for path in sorted(source.rglob("*")):
        if path.suffix in (".h", ".cpp", ".mm"):
            found += problems_in(path.relative_to(source).as_posix(), path.read_text(encoding="utf-8"))
    return found


if __name__ == "__main__":
    found = check(sys.argv[1])
    print("\n".join(found) or "every include goes down")
    sys.exit(1 if found else 0)
