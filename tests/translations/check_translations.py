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
LITERAL = re.compile(r'(?:QStringLiteral\(\s*|\bu)"((?:[^"\\]|\\.)*)"')
# Letters and signs that only prose has, or two words in a row.
PROSE = re.compile(r"[áéíóúñÁÉÍÓÚÑ¿¡«»…]|[A-Za-z]{2,} [a-z]{2,}")
# A style sheet is no prose.
STYLE = re.compile(r"[{};]|^border")
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
    for number, line in enumerate(text.splitlines(), 1):
        for literal in LITERAL.findall(line):
            if PROSE.search(literal) and not STYLE.search(literal) and "logFailure" not in line:
                yield f"{relative}:{number}: {literal!r} is not localised"


def check(lupdate, root):
    catalogues = sorted((root / "src" / "app" / "translations").glob("*.ts"))
    found = [] if catalogues else ["there are no translations"]
    for catalogue in catalogues:
        found += problems_in_catalogue(catalogue.name, updated(lupdate, root, catalogue))
    for folder in VISIBLE:
        for path in sorted((root / "src" / folder).rglob("*.cpp")):
            found += problems_in_source(path.relative_to(root).as_posix(), path.read_text(encoding="utf-8"))
    return found


if __name__ == "__main__":
    found = check(sys.argv[1], pathlib.Path(sys.argv[2]))
    print("\n".join(found) or "every text is translated")
    sys.exit(1 if found else 0)
