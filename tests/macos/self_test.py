#!/usr/bin/env python3
"""The checks for a Mac find what they are there to find: self_test.py BUILD SOURCE"""
import sys
import unittest

import apple_target
import check_facts
import check_leaks
import write_assertions

BUILD, SOURCE = sys.argv.pop(1), sys.argv.pop(1)
SOURCES = apple_target.Sources(BUILD, SOURCE)


def compiled(text, extra=("-fsyntax-only",)):
    file = SOURCES.work / "sample.mm"
    file.write_text("#import <AppKit/AppKit.h>\n" + text, encoding="utf-8")
    return apple_target.run(["clang++", *extra, str(file)] + SOURCES.base + SOURCES.adapter_flags()).stderr


class TypesTest(unittest.TestCase):
    def test_accepts_what_is_right(self):
        self.assertEqual(compiled("long f() { return NSPasteboard.generalPasteboard.changeCount; }"), "")

    def test_minds_what_older_systems_do_not_have(self):
        self.assertIn("is only available on macOS 15.4",
                      compiled("long f() { return (long)NSPasteboard.generalPasteboard.accessBehavior; }"))
        self.assertEqual(compiled("long f() { if (@available(macOS 15.4, *)) return "
                                  "(long)NSPasteboard.generalPasteboard.accessBehavior; return 0; }"), "")

    def test_minds_a_selector_that_nobody_has(self):
        self.assertIn("undeclared selector", compiled("SEL f() { return @selector(noSuchThing:); }"))
        self.assertIn("declares the selector", compiled("void f(NSWindow* w) { [w noSuchThing]; }"))

    def test_minds_another_class(self):
        self.assertIn("cannot initialize a variable of type 'NSString",
                      compiled("void f(NSWindow* w) { NSString* s = w.contentView; (void)s; }"))

    def test_minds_a_cycle(self):
        self.assertIn("retain cycle", compiled(
            "@interface A : NSObject\n@property(copy) void (^done)(void);\n- (void)run;\n@end\n"
            "@implementation A\n- (void)run { self.done = ^{ [self run]; }; }\n@end\n"))

    def test_is_a_mac(self):
        self.assertEqual(compiled("static_assert(TARGET_OS_OSX && sizeof(long) == 8);\n#if !defined(__APPLE__) || "
                                  "!defined(__arm64__)\n#error\n#endif\n"), "")


class LeaksTest(unittest.TestCase):
    def analyzed(self, text):
        return compiled('#include "platform/macos/CoreFoundationRef.h"\n' + text, (*check_leaks.ALL, "-o", "-"))

    def test_finds_a_reference_that_nobody_releases(self):
        self.assertIn("leak", self.analyzed("void f() { CGEventSourceRef s = CGEventSourceCreate("
                                            "kCGEventSourceStateCombinedSessionState); (void)s; }"))

    def test_lets_an_owner_have_it(self):
        self.assertEqual(self.analyzed(
            "bool f() { const nimbrel::macos::CoreFoundationRef<CGEventSourceRef> s(CGEventSourceCreate("
            "kCGEventSourceStateCombinedSessionState)); return bool(s); }"), "")


class PortableLeaksTest(unittest.TestCase):
    def test_finds_memory_that_nobody_frees(self):
        file = SOURCES.work / "sample.cpp"
        file.write_text("#include <cstdlib>\nvoid f() { void* p = std::malloc(1); if (!p) return; }\n")
        done = apple_target.run(["clang++", *check_leaks.ALL, *check_leaks.LOST_MEMORY, str(file), "-o", "-"] + SOURCES.base)
        self.assertIn("leak", done.stderr)


class ExtractionTest(unittest.TestCase):
    def test_takes_every_name_from_the_source(self):
        # In a folder that is named like the adapters', so that it counts as one of them.
        folder = SOURCES.work / check_facts.OURS
        folder.mkdir(parents=True, exist_ok=True)
        file = folder / "sample.mm"
        file.write_text("""#import <AppKit/AppKit.h>
@interface Sample : NSPanel
@end
@implementation Sample
- (void)windowDidResignKey:(NSNotification*)notification {
  NSRunningApplication* const front = NSWorkspace.sharedWorkspace.frontmostApplication;
  self.level = NSModalResponseOK;
  if (front) NSTemporaryDirectory();
}
@end
""")
        classes = {"NSPanel", "NSNotification", "NSRunningApplication", "NSWorkspace", "NSView"}
        self.assertEqual(check_facts.used_by(SOURCES, file, classes), {
            ("class", "NSPanel"), ("class", "NSNotification"), ("class", "NSRunningApplication"),
            ("class", "NSWorkspace"), ("method", "windowDidResignKey:"), ("selector", "sharedWorkspace"),
            ("selector", "frontmostApplication"), ("selector", "setLevel:"), ("constant", "NSModalResponseOK"),
            ("function", "NSTemporaryDirectory")})

    def test_ends_at_a_source_that_does_not_compile(self):
        file = SOURCES.work / "broken.mm"
        file.write_text("#import <AppKit/AppKit.h>\nint f() { return NoSuchThing; }\n")
        with self.assertRaises(SystemExit):
            check_facts.used_by(SOURCES, file, set())


class FactsTest(unittest.TestCase):
    FACTS = [write_assertions.Fact("selector", "changeCount", "10.0", ""),
             write_assertions.Fact("own", "clicked", "", ""),
             write_assertions.Fact("constant", "NSModalResponseOK", "10.6", "1")]
    USED = {("selector", "changeCount"), ("method", "clicked"), ("constant", "NSModalResponseOK")}

    def test_agree_with_what_is_used(self):
        self.assertEqual(list(check_facts.problems(self.FACTS, self.USED)), [])

    def test_miss_a_name(self):
        self.assertEqual(list(check_facts.problems(self.FACTS, self.USED | {("class", "NSFoo")})),
                         ["class NSFoo: used, and not among the facts"])

    def test_hold_a_name_too_many(self):
        self.assertEqual(list(check_facts.problems(self.FACTS, self.USED - {("selector", "changeCount")})),
                         ["selector changeCount: among the facts, and not used"])

    def test_mind_a_delegate_method_with_another_name(self):
        found = list(check_facts.problems(self.FACTS, self.USED | {("method", "windowDidResignKeys:")}))
        self.assertEqual(found, ["method windowDidResignKeys:: used, and not among the facts"])

    def test_mind_a_young_name_that_is_not_marked(self):
        young = write_assertions.Fact("selector", "changeCount", "14.0", "")
        self.assertEqual(len(list(check_facts.unmarked([young]))), 1)
        self.assertEqual(list(check_facts.unmarked(
            [write_assertions.Fact("selector", "accessBehavior", "15.4", "")])), [])
        # One that stands beside a marked name is not marked by that.
        beside = write_assertions.Fact("selector", "writeObjects:", "15.4", "")
        self.assertEqual(len(list(check_facts.unmarked([beside]))), 1)

    def test_mind_a_fact_without_a_version(self):
        self.assertEqual(list(check_facts.unmarked([write_assertions.Fact("class", "NSView", "", "")])),
                         ["class NSView: since which version?"])

    def test_mind_a_selector_that_the_system_does_not_have(self):
        wrong = [write_assertions.Fact("selector", "noSuchThing:", "10.0", "")]
        self.assertIn("undeclared selector", compiled(write_assertions.assertions(wrong)))

    def test_mind_another_value(self):
        wrong = [write_assertions.Fact("constant", "NSModalResponseOK", "10.6", "2")]
        self.assertIn("static_assert failed", compiled(write_assertions.assertions(wrong)).replace("assertion", "assert"))
        self.assertEqual(compiled(write_assertions.assertions(self.FACTS)), "")


if __name__ == "__main__":
    unittest.main()
