"""How clang compiles for a Mac on a machine that is none: declarations of our own in place of Apple's headers, libc++ over
musl's C headers, and the Qt and other libraries' headers that are installed here."""
import collections
import concurrent.futures
import json
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys

TARGET = "arm64-apple-macos13.0"
HERE = pathlib.Path(__file__).resolve().parent
# Headers that both systems have, picked one by one: their folder holds the C library's of this one too.
LIBRARIES = ("openssl", "unicode", "rapidjson", "sqlite3.h")
ERRORS = (
    "-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wimplicit-fallthrough -Wformat=2 "
    "-Wno-missing-field-initializers -Werror -Wunguarded-availability -Wundeclared-selector "
    "-Wincompatible-pointer-types -Wobjc-method-access -Wselector-type-mismatch -Wstrict-selector-match "
    "-Wprotocol -Warc-retain-cycles -Warc-repeated-use-of-weak "
    "-Wnullable-to-nonnull-conversion -Wdeprecated-declarations -Wimplicit-retain-self "
    # The literals of the language are no extensions of Objective-C++, where `-Wpedantic` thinks so.
    "-Wno-gnu -Wno-variadic-macros").split()


def first(*paths):
    for path in paths:
        found = sorted(pathlib.Path("/").glob(path))
        if found:
            return str(found[-1])
    raise SystemExit(f"nothing is installed at {' or '.join('/' + path for path in paths)}")


def libcxx():
    """The library of the compiler's own version."""
    compiler = pathlib.Path(shutil.which("clang++") or "/usr/bin/clang++").resolve()
    own = compiler.parents[1] / "include/c++/v1"
    return str(own) if own.exists() else first("usr/lib/llvm-*/include/c++/v1")


def library_links(work):
    """Folders that hold nothing but links to the headers named above."""
    folders = []
    for number, origin in enumerate(("/usr/include", f"/usr/include/{os.uname().machine}-linux-gnu")):
        folder = work / f"libraries{number}"
        folder.mkdir(parents=True, exist_ok=True)
        for name in LIBRARIES:
            link, there = folder / name, pathlib.Path(origin) / name
            if there.exists() and not link.is_symlink():
                link.symlink_to(there)
        folders.append(str(folder))
    return folders


def base_flags(work):
    system = [str(HERE / "shims"), str(HERE / "declarations"), libcxx(),
              first("usr/include/*-linux-musl")] + library_links(work)
    return ["-target", TARGET, "-std=c++20", "-fblocks", "-D_GNU_SOURCE", "-nostdinc++", "-nostdlibinc"] + \
        [part for folder in system for part in ("-isystem", folder)] + ERRORS


class Sources:
    """What a build compiles, as the compiler for the other system would."""

    def __init__(self, build, source):
        self.source = pathlib.Path(source).resolve()
        self.work = pathlib.Path(build).resolve() / "macos-check"
        self.work.mkdir(exist_ok=True)
        self.base = base_flags(self.work)
        self.commands = {}
        for entry in json.loads((pathlib.Path(build) / "compile_commands.json").read_text()):
            path = pathlib.Path(entry["file"]).resolve()
            if path.is_relative_to(self.source / "src") and not path.is_relative_to(self.source / "src/platform/linux"):
                self.commands[path] = self.portable_flags(shlex.split(entry["command"]))
        missing = {path for path in (self.source / "src").rglob("*.cpp")
                   if not path.is_relative_to(self.source / "src/platform/linux")} - set(self.commands)
        if missing:
            raise SystemExit(f"not in this build: {sorted(map(str, missing))}")
        folders = sorted({flag for flags in self.commands.values() for flag in flags if "/qt6" in flag})
        self.qt = [part for folder in folders for part in ("-isystem", folder)]

    @staticmethod
    def portable_flags(words):
        flags = []
        for word, following in zip(words, words[1:] + [""]):
            if word.startswith(("-I", "-D")):
                flags.append(word)
            elif word == "-isystem" and "/qt6" in following:
                flags += [word, following]
        return [flag for flag in flags if not flag.startswith("-I/usr/include")]

    def portable(self):
        return sorted(self.commands)

    def adapters(self):
        return sorted((self.source / "src/platform/macos").rglob("*.mm"))

    def adapter_flags(self):
        definitions = ["-DQT_NO_KEYWORDS", "-DQT_NO_CAST_FROM_ASCII", "-DQT_NO_CAST_TO_ASCII", "-DQT_NO_FOREACH",
                       # As it is released.
                       "-DNDEBUG", "-DNIMBREL_PROTECTED"]
        return ["-fobjc-arc", f"-I{self.source / 'src'}"] + self.qt + definitions

    def flags_of(self, path):
        return self.base + (self.adapter_flags() if path.suffix == ".mm" else self.commands[path])

    def prefix_header(self):
        """The system's headers that many sources include, compiled once."""
        counts = collections.Counter()
        for path in self.portable():
            for file in (path, path.with_suffix(".h")):
                if file.exists():
                    counts.update(set(re.findall(r"^#include (<[^>]+>)", file.read_text(encoding="utf-8"), re.M)))
        names = sorted(name for name, count in counts.items() if count > 3 and ".h>" not in name)
        header = self.work / f"{pathlib.Path(sys.argv[0]).stem}.h"
        header.write_text("".join(f"#include {name}\n" for name in names))
        output = header.with_suffix(".pch")
        run(["clang++", "-x", "c++-header", str(header), "-o", str(output)] + self.base + self.qt +
            [flag for flag in self.adapter_flags() if flag.startswith("-D")], check=True)
        return output


def run(command, check=False):
    done = subprocess.run(command, capture_output=True, text=True)
    if check and done.returncode:
        raise SystemExit(done.stderr)
    return done


def in_parallel(task, items):
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        return list(pool.map(task, items))
