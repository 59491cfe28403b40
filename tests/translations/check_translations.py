#!/usr/bin/env python3
"""Fails when a text of the interface lacks its translation, or does not go through the localisation at all:
check_translations.py LUPDATE ROOT"""
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree

PLACEHOLDER = re.compile(r"%(?:n|L?\d)")
STRING = r'"((?:[^"\\]|\\.)*)"'
# Everything that makes a text, but not what asks for its translation.
MAKERS = r"(?:QStringLiteral\(\s*|QLatin1String(?:View)?\(\s*|QString::from(?:Utf8|Latin1)\(\s*|\bu)"
LITERAL = re.compile(MAKERS + STRING)
# What the user reads or hears whatever it says.
SHOWN = re.compile(r"\b(?:setText|setToolTip|setAccessible(?:Name|Description)|setWindowTitle|setPlaceholderText|"
                   r"add(?:Tab|Section|Row|Switch|Button|Action|Choice))\(([^;]*?)\);", re.S)
# Letters and signs that only prose has, or two words in a row.
PROSE = re.compile(r"[áéíóúñÁÉÍÓÚÑ¿¡«»…]|[A-Za-z]{2,} [a-z]{2,}")
# A style sheet is no prose.
STYLE = re.compile(r"[{};]|^border")
# Called so in every language.
NAME = "Nimbrel"
# Where the user reads what the code says.
VISIBLE = ("app", "panel", "settings/window", "intents")


def updated(lupdate, root, catalogue):
    """A catalogue as it is after another look at the sources."""
    with tempfile.TemporaryDirectory() as folder:
        copy = pathlib.Path(folder) / catalogue.name
        shutil.copy(catalogue, copy)
        options = ["-pluralonly"] if catalogue.stem.endswith("_es") else []
        subprocess.run([lupdate, *options, "-no-obsolete", "-locations", "none", "-source-language", "es",
                        str(root / "src"), "-ts", str(copy)], check=True, capture_output=True)
        return ElementTree.parse(copy).getroot()


def translations_of(message):
    translation = message.find("translation")
    forms = [form.text or "" for form in translation.findall("numerusform")]
    return forms if message.get("numerus") else [translation.text or ""]


def problems_in_catalogue(name, root):
    for context in root.iter("context"):
        for message in context.iter("message"):
            source = message.find("source").text
            where = f"{name}: {context.find('name').text}: {source!r}"
            translations = translations_of(message)
            if message.find("translation").get("type") or not all(translations) or not translations:
                yield f"{where} is not translated"
                continue
            for translation in translations:
                if sorted(PLACEHOLDER.findall(source)) != sorted(PLACEHOLDER.findall(translation)):
                    yield f"{where} has other placeholders than {translation!r}"


def problems_in_source(relative, text):
    def where(position):
        return f"{relative}:{text.count(chr(10), 0, position) + 1}"

    for match in LITERAL.finditer(text):
        literal = match.group(1)
        line = text[text.rfind("\n", 0, match.start()) + 1:match.end()]
        if PROSE.search(literal) and not STYLE.search(literal) and "logFailure" not in line:
            yield f"{where(match.start())}: {literal!r} is not localised"
    for call in SHOWN.finditer(text):
        for match in LITERAL.finditer(call.group(1)):
            is_markup = re.search(r"<\w+>", match.group(1))
            if re.search(r"[A-Za-z]", match.group(1)) and not is_markup and match.group(1) != NAME:
                yield f"{where(call.start())}: {match.group(1)!r} is shown and not localised"


def check(lupdate, root):
    catalogues = sorted((root / "src" / "app" / "translations").glob("*.ts"))
    found = [] if catalogues else ["there are no translations"]
    for catalogue in catalogues:
        found += problems_in_catalogue(catalogue.name, updated(lupdate, root, catalogue))
    for folder in VISIBLE:
        for path in sorted(path for path in (root / "src" / folder).rglob("*") if path.suffix in (".cpp", ".h")):
            found += problems_in_source(path.relative_to(root).as_posix(), path.read_text(encoding="utf-8"))
    return found


if __name__ == "__main__":
    found = check(sys.argv[1], pathlib.Path(sys.argv[2]))
    print("\n".join(found) or "every text is translated")
    sys.exit(1 if found else 0)
