#!/usr/bin/env python3
"""Compares what the adapters use of the system with the table of facts: check_facts.py BUILD SOURCE

facts.tsv says of each name what it is, since which macOS it is there, and its value where it is a number. Everything
that the adapters use must stand in it, and nothing else; names that are younger than the oldest supported macOS must be
marked so in the declarations, so that the compiler minds unguarded uses; and the declarations must agree on the
values."""
import pathlib
import re
import subprocess
import sys

import apple_target
import write_assertions

HERE = pathlib.Path(__file__).resolve().parent
OURS = "src/platform/macos/"
APPLES = "tests/macos/declarations/"
QUERIES = (
    f'match objcMessageExpr(isExpansionInFileMatching("{OURS}"))',
    f'match declRefExpr(isExpansionInFileMatching("{OURS}"), to(decl(isExpansionInFileMatching("{APPLES}"))))',
    f'match objcMethodDecl(isExpansionInFileMatching("{OURS}"))',
    f'match objcInterfaceDecl(isExpansionInFileMatching("{OURS}"))',
    f'match decl(anyOf(varDecl(), fieldDecl(), objcPropertyDecl()), isExpansionInFileMatching("{OURS}"))',
)
KINDS = {"class", "selector", "override", "own", "constant", "function"}


def declarations():
    return "".join(path.read_text(encoding="utf-8") for path in sorted((HERE / "declarations").rglob("*.h")))


def names_in(dump, classes):
    """What one dump of the syntax tree mentions, as pairs of kind and name; of the types of variables, these classes."""
    for match in re.finditer(r"^\S*ObjCMessageExpr 0x.* selector=(\S+)(?: class='([^']+)')?", dump, re.M):
        yield "selector", match[1]
        if match[2]:
            yield "class", re.sub(r"<.*", "", match[2])
    for match in re.finditer(r"^DeclRefExpr 0x.* (Var|EnumConstant|Function) 0x\w+ '(\w+)'", dump, re.M):
        yield ("function" if match[1] == "Function" else "constant"), match[2]
    for match in re.finditer(r"^ObjCMethodDecl 0x\w+ (?:prev 0x\w+ )?(?:parent 0x\w+ )?<[^>]*> (?:\S+ )?(?:implicit )?[-+] (\S+) '",
                             dump, re.M):
        yield "method", match[1]
    for match in re.finditer(r"^(?:Var|ParmVar|Field|ObjCIvar|ObjCProperty)Decl 0x[^\n]*", dump, re.M):
        types = " ".join(re.findall(r"'([^']*)'", match[0]))
        for name in set(re.findall(r"\b(\w+)(?:<[^*]*>)? \*", types)) & classes:
            yield "class", name
    for match in re.finditer(r"-super ObjCInterface 0x\w+ '(\w+)'", dump):
        yield "class", match[1]


def used_by(sources, path, classes):
    commands = [word for query in ("set output dump",) + QUERIES for word in ("-c", query)]
    done = subprocess.run(["clang-query"] + commands + [str(path), "--"] + sources.flags_of(path),
                          capture_output=True, text=True)
    if done.returncode or "error:" in done.stderr:
        raise SystemExit(f"{path}: {done.stderr}")
    return set(names_in(done.stdout, classes))


def problems(facts, used):
    by_name = {}
    for fact in facts:
        by_name.setdefault(fact.name, set()).add(fact.kind)
    unused = {(fact.kind, fact.name) for fact in facts}
    for kind, name in sorted(used):
        fits = {"method": {"override", "own"}, "selector": {"selector", "own", "override"},
                "class": {"class", "own"}}.get(kind, {kind})
        found = by_name.get(name, set()) & fits
        unused -= {(one, name) for one in found}
        if not found:
            yield f"{kind} {name}: used, and not among the facts"
    for kind, name in sorted(unused):
        yield f"{kind} {name}: among the facts, and not used"


def version(text):
    return tuple(int(part) for part in text.split("."))


def unmarked(facts):
    """Names younger than the oldest system whose declaration does not say so."""
    single = re.split(r"[;{}]", re.sub(r"//[^\n]*", "", declarations()))
    oldest = version(re.search(r"macos([\d.]+)$", apple_target.TARGET)[1])
    for fact in facts:
        if fact.kind == "own":
            continue
        if not re.fullmatch(r"\d+(\.\d+)+", fact.since):
            yield f"{fact.kind} {fact.name}: since which version?"
            continue
        if version(fact.since) <= oldest:
            continue
        parts = [re.escape(part) + ":" for part in fact.name.split(":")[:-1]] or [re.escape(fact.name) + r"\b"]
        pattern = r"\b" + r".*".join(parts) + rf".*API_AVAILABLE_SINCE\({re.escape(fact.since)}\)"
        if not any(re.search(pattern, text, re.S) for text in single):
            yield f"{fact.kind} {fact.name}: since {fact.since}, which its declaration does not say"


def main(build, source):
    sources = apple_target.Sources(build, source)
    facts = write_assertions.read_facts(HERE / "facts.tsv")
    strange = [f"{fact.kind} {fact.name}: no such kind" for fact in facts if fact.kind not in KINDS]
    classes = set(re.findall(r"^(?:__attribute__\(\S+\) )?@interface (\w+)", declarations(), re.M))
    used = set().union(*apple_target.in_parallel(lambda path: used_by(sources, path, classes), sources.adapters()))
    found = strange + list(problems(facts, used)) + list(unmarked(facts))
    assertions = sources.work / "facts.mm"
    assertions.write_text(write_assertions.assertions(facts))
    # Several classes may have methods of one name and other types.
    done = apple_target.run(["clang++", "-fsyntax-only", str(assertions)] + sources.base + sources.adapter_flags() +
                            ["-Wno-selector-type-mismatch", "-Wno-strict-selector-match"])
    if done.returncode:
        found.append(done.stderr)
    print("\n".join(found) or f"{len(facts)} facts about {len(used)} names hold")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
