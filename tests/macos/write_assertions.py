#!/usr/bin/env python3
"""Turns the facts into a source that compiles only where they hold: write_assertions.py FACTS OUTPUT

Compiled against the declarations here, and against the system's own headers on a Mac."""
import collections
import pathlib
import sys

Fact = collections.namedtuple("Fact", "kind name since value")
# What the system's headers define otherwise than as a function.
MACROS = ("os_log_with_type",)
FRAMEWORKS = ("AppKit", "Carbon", "ImageIO", "LocalAuthentication", "Quartz", "Security", "ServiceManagement",
              "UniformTypeIdentifiers", "UserNotifications", "Vision")


def read_facts(path):
    lines = pathlib.Path(path).read_text(encoding="utf-8").splitlines()
    return [Fact(*(line.split("\t") + [""] * 4)[:4]) for line in lines if line and not line.startswith("#")]


def assertions(facts):
    text = "".join(f"#import <{name}/{name}.h>\n" for name in FRAMEWORKS) + \
        "#import <dispatch/dispatch.h>\n#import <os/log.h>\n\n"
    for fact in facts:
        if fact.value:
            text += f"static_assert(static_cast<long long>({fact.name}) == {fact.value}LL);\n"
    for fact in facts:
        if fact.kind == "class":
            text += f"static_assert(sizeof({fact.name}*) == sizeof(void*));\n"
        if fact.kind in ("function", "constant") and not fact.value and fact.name not in MACROS:
            text += f"static_assert(sizeof(decltype(&{fact.name})) == sizeof(void*));\n"
    # A name that is declared nowhere is an error by -Wundeclared-selector.
    selectors = [fact.name for fact in facts if fact.kind in ("selector", "override") and fact.name != "dealloc"]
    return text + "void selectors() {\n" + "".join(f"  (void)@selector({name});\n" for name in selectors) + "}\n"


if __name__ == "__main__":
    pathlib.Path(sys.argv[2]).write_text(assertions(read_facts(sys.argv[1])), encoding="utf-8")
