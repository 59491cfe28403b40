#!/usr/bin/env python3
"""Runs the static analyzer over the sources of a Mac's build: check_leaks.py BUILD SOURCE [PART…]

The adapters go through all checks that are on by default; of the portable sources only memory and references that are
lost, or used when they are gone. Only sources whose path holds one of the PARTs, where some are given."""
import sys

import apple_target

ALL = ["--analyze", "-Xclang", "-analyzer-output=text", "-Xclang", "-analyzer-config", "-Xclang",
       "c++-container-inlining=false,max-nodes=50000",
       # Who owns what the toolkit is given, it cannot see.
       "-Xclang", "-analyzer-disable-checker=cplusplus.NewDeleteLeaks"]
LOST_MEMORY = ["-Xclang", "-analyzer-disable-checker=deadcode,optin,security,nullability,core.CallAndMessage,"
               "core.uninitialized,core.UndefinedBinaryOperatorResult,core.DivideZero"]


def main(build, source, *parts):
    sources = apple_target.Sources(build, source)
    prefix = sources.prefix_header()

    def check(path):
        extra = [] if path.suffix == ".mm" else LOST_MEMORY + ["-include-pch", str(prefix)]
        done = apple_target.run(["clang++"] + ALL + [str(path), "-o", "-"] + sources.flags_of(path) + extra)
        return path, done.returncode or "warning:" in done.stderr, done.stderr

    paths = [path for path in sources.portable() + sources.adapters()
             if not parts or any(part in str(path) for part in parts)]
    failures = [(path, text) for path, failed, text in apple_target.in_parallel(check, paths) if failed]
    for path, text in failures:
        print(f"--- {path}\n{text}")
    print(f"{len(paths) - len(failures)} of {len(paths)} sources lose nothing")
    return 1 if failures or not paths else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
