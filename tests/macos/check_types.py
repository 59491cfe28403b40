#!/usr/bin/env python3
"""Compiles every C++ and Objective-C++ source of the program up to the types, for a Mac: check_types.py BUILD SOURCE [PART…]

Only sources whose path holds one of the PARTs, where some are given."""
import sys

import apple_target


def main(build, source, *parts):
    sources = apple_target.Sources(build, source)
    prefix = sources.prefix_header()

    def check(path):
        extra = ["-include-pch", str(prefix)] if path.suffix == ".cpp" else []
        done = apple_target.run(["clang++", "-fsyntax-only", str(path)] + sources.flags_of(path) + extra)
        return path, done.returncode, done.stderr

    paths = [path for path in sources.portable() + sources.adapters()
             if not parts or any(part in str(path) for part in parts)]
    listed = "".join(path.read_text(encoding="utf-8") for path in (sources.source / "src").rglob("CMakeLists.txt"))
    unlisted = [path for path in sources.adapters() if path.name not in listed]
    if unlisted:
        print(f"in no CMakeLists.txt: {', '.join(map(str, unlisted))}")
    failures = [(path, text) for path, status, text in apple_target.in_parallel(check, paths) if status]
    for path, text in failures:
        print(f"--- {path}\n{text}")
    print(f"{len(paths) - len(failures)} of {len(paths)} sources are right for {apple_target.TARGET}")
    return 1 if failures or unlisted or not paths else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
