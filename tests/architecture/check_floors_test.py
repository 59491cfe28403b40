#!/usr/bin/env python3
"""The floor check finds what it is there to find."""
import unittest

from check_floors import problems_in


class FloorCheck(unittest.TestCase):
    def found(self, path, text):
        return list(problems_in(path, text))

    def test_going_down_is_fine(self):
        self.assertEqual(self.found("panel/A.cpp", '#include "capture/ClipboardStore.h"\n#include <QString>\n'), [])

    def test_going_up_is_found(self):
        self.assertEqual(len(self.found("storage/A.cpp", '#include "capture/ClipboardStore.h"\n')), 1)

    def test_going_across_is_found(self):
        self.assertEqual(len(self.found("capture/model/A.cpp", '#include "platform/Clock.h"\n')), 1)

    def test_adapters_know_only_ports(self):
        self.assertEqual(self.found("platform/linux/A.cpp", '#include "platform/Clock.h"\n'), [])
        self.assertEqual(len(self.found("platform/linux/A.cpp", '#include "capture/model/ClipItem.h"\n')), 1)

    def test_adapters_share_what_needs_no_desktop(self):
        for adapters in ("linux", "macos"):
            self.assertEqual(self.found(f"platform/{adapters}/A.cpp", '#include "platform/common/B.h"\n'), [])
        self.assertEqual(self.found("platform/common/A.cpp", '#include "platform/Clock.h"\n'), [])
        self.assertEqual(len(self.found("platform/common/A.cpp", '#include "platform/linux/B.h"\n')), 1)
        self.assertEqual(len(self.found("platform/common/A.cpp", '#include "capture/model/ClipItem.h"\n')), 1)
        self.assertEqual(len(self.found("platform/common/A.cpp", "#ifdef __APPLE__\n")), 1)

    def test_system_tests_are_found_outside_of_platform(self):
        self.assertEqual(len(self.found("panel/A.cpp", "#ifdef Q_OS_LINUX\n")), 1)
        self.assertEqual(self.found("platform/linux/A.cpp", "#ifdef Q_OS_LINUX\n"), [])

    def test_relative_includes_are_found(self):
        self.assertEqual(len(self.found("panel/A.cpp", '#include "ClipRow.h"\n')), 1)


if __name__ == "__main__":
    unittest.main()
