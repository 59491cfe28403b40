#!/usr/bin/env python3
"""Kills the history at random moments of its work, again and again: durability_test.py WORKLOAD [ROUNDS]"""
import pathlib
import random
import signal
import sqlite3
import subprocess
import sys
import tempfile
import time
import unittest

WORKLOAD = sys.argv[1]
ROUNDS = int(sys.argv[2]) if len(sys.argv) > 2 else 25

# What has been announced so long before the end must have reached the disk.
GRACE = 1.0


class Durability(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.random = random.Random(20)
        # What must be there, and what must not, from all rounds so far.
        self.present = set()

    def work(self, seed, seconds):
        """Lets the workload run for so long and kills it; gives what it said, and when it died."""
        # A file never keeps the workload waiting, as a full pipe would.
        with tempfile.TemporaryFile("w+") as output:
            process = subprocess.Popen([WORKLOAD, "work", self.folder.name, str(seed)], stdout=output)
            time.sleep(seconds)
            end = time.monotonic()
            process.send_signal(signal.SIGKILL)
            process.wait()
            output.seek(0)
            said = output.read()
        # The last line may have been cut by the kill.
        return [line.split() for line in said.split("\n")[:-1]], end

    def check(self):
        result = subprocess.run([WORKLOAD, "check", self.folder.name], capture_output=True, text=True, timeout=60)
        self.assertEqual(result.returncode, 0, result.stdout[-2000:] + result.stderr[-2000:])
        return {line[2:] for line in result.stdout.splitlines() if line.startswith("= ")}

    def test_what_was_announced_a_second_before_a_kill_is_there(self):
        for number in range(ROUNDS):
            said, end = self.work(number, self.random.uniform(0.2, 2.5))
            events = [(sign, clip, float(moment)) for sign, clip, moment in said]
            settled = [event for event in events if event[2] <= end - GRACE]
            unsettled = {clip for _, clip, moment in events if moment > end - GRACE}
            for sign, clip, _ in settled:
                if sign == "+":
                    self.present.add(clip)
                elif sign == "-":
                    self.present.discard(clip)
            found = self.check()
            missing = self.present - unsettled - found
            self.assertFalse(missing, f"round {number}: {len(missing)} of {len(self.present)} clips are missing")
            gone = {clip for sign, clip, _ in settled if sign == "-"} - unsettled
            self.assertFalse(gone & found, f"round {number}: deleted clips are back")
            self.assertEqual(self.integrity(), "ok")
            self.present = found
        self.assertGreater(len(self.present), 50)

    def integrity(self):
        database = pathlib.Path(self.folder.name) / "Nimbrel" / "brevin.sqlite"
        connection = sqlite3.connect(f"file:{database}?mode=ro", uri=True)
        try:
            return connection.execute("PRAGMA integrity_check").fetchone()[0]
        finally:
            connection.close()


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
