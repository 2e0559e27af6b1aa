"""Two minutes of all that wears a program out: a saturated line, menus and panels opened thousands of times, a client
that comes and goes. What it holds of the system at the end is what it held after the first seconds.

ORVANE_SOAK_SECONDS and ORVANE_SOAK_OPENINGS make it longer; it ends when both are reached."""

import os
import pathlib
import time
import unittest

import harness

SECONDS = float(os.environ.get("ORVANE_SOAK_SECONDS", "120"))
OPENINGS = int(os.environ.get("ORVANE_SOAK_OPENINGS", "2000"))
ROUND = 250
WARM_UP_SECONDS, WARM_UP_ROUNDS = 10, 4
# What the allocator's pages come to at rest, however the same blocks lie in them: half a kilobyte an opening, at most.
MEMORY_SLACK_KB = 1024
# The system keeps as many device contexts as were ever in use at once, with six objects each; two more in thousands of
# openings are chance, what is lost at each opening is thousands.
DRAWING_SLACK = 12


def private_kilobytes(pid):
    text = pathlib.Path(f"/proc/{pid}/smaps_rollup").read_text()
    return sum(int(line.split()[1]) for line in text.splitlines() if line.startswith("Private_"))


class Soak(harness.OrvaneTest):
    def open(self, count):
        """Opens menus and panels; returns how many came up and went."""
        return self.desktop.inspector.ask("open", self.main, count, *self.buttons, timeout=600)[0]["opened"]

    def count(self):
        return self.desktop.inspector.ask("count", self.main)[0]

    def holdings(self):
        """What the program holds at rest. Twice the same, so that nothing is on its way."""
        def look():
            first = self.count()
            time.sleep(0.3)
            return first if first == self.count() else None
        return {**self.wait_until(look, "counts that stand", 10),
                "memory": private_kilobytes(self.program.process.pid)}

    def wear(self, until):
        """One round: openings, a client for half of them, and readings that go on. Returns the openings."""
        opened = self.open(ROUND // 2)
        client = harness.Client(self.desktop, self._folder)
        try:
            opened += self.open(ROUND // 2)
            self.wait_until(client.messages, "readings at the client", 10)
        finally:
            client.kill()
        watts = str(100 + int(until) % 800)
        self.meter.command(f"power {watts} 0")
        self.wait_until(lambda: self.program.readouts()[0] == watts, "the reading of the moment", 5)
        return opened

    def test_what_it_holds_does_not_grow(self):
        self.meter = self.start_meter("--do", "power 100 0")
        self.program = self.start_program()
        self.meter.wait_for_stream()
        self.meter.command("rate 187")
        self.main = self.program.main.hwnd
        self.buttons = [self.program.part(name).hwnd for name in ("window menu", "settings menu", "help menu")]
        start, warm_up = time.monotonic(), 0
        while time.monotonic() - start < WARM_UP_SECONDS or warm_up < WARM_UP_ROUNDS:
            self.wear(time.monotonic())
            warm_up += 1
        before, openings, rounds = self.holdings(), 0, 0
        self.assertGreater(min(before.values()), 0, before)
        while time.monotonic() - start < SECONDS or openings < OPENINGS:
            openings += self.wear(time.monotonic())
            rounds += 1
            self.assertEqual(openings, rounds * 2 * (ROUND // 2), "a menu or a panel did not open or close")
        after = self.holdings()
        print(f"{openings} openings in {time.monotonic() - start:.0f} s; {before} before, {after} after")
        self.assertLess(after.pop("memory"), before.pop("memory") + MEMORY_SLACK_KB)
        self.assertLessEqual(after.pop("drawing"), before.pop("drawing") + DRAWING_SLACK)
        self.assertEqual(after, before)
        self.assertIsNone(self.program.message_box())
        self.assertEqual(self.program.close(), 0)


if __name__ == "__main__":
    unittest.main()
