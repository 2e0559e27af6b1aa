"""Readings go on while the window is dragged, and while the system holds the program in a loop of its own: a menu.

Message boxes are another. None of them comes up beside a running stream within seconds, so that case is tested
without a screen.
"""

import unittest

import harness

POWERS = [((100, 4), ("96", "4", "1.50")), ((1500, 60), ("1440", "60", "1.50")), ((300, 75), ("225", "75", "3.00"))]


class ModalLoops(harness.OrvaneTest):
    def setUp(self):
        self.meter = self.start_meter()
        self.program = self.start_program("[USER-SETTINGS]\nFORM-TOP=3000\nFORM-LEFT=3000\n")
        self.meter.wait_for_stream()

    def assert_readings_go_on(self, still_there):
        """Readouts, graphs and lights follow the meter as long as still_there() is true."""
        for watts, readouts in POWERS:
            self.meter.command("power {} {}".format(*watts))
            self.wait_until(lambda: self.program.readouts() == readouts, f"the readouts {readouts}", 5)
            self.assertTrue(still_there())

    def test_while_the_window_is_dragged(self):
        program = self.program
        left, top = program.main.rect[:2]
        x, y = program.on_screen(program.bare_face())

        def follows(dx, dy):
            return lambda: self.desktop.place_of(harness.CAPTION) == (left + dx, top + dy)

        self.desktop.xdotool("mousemove", x, y, "mousedown", 1)
        try:
            for step in range(1, 5):
                self.desktop.move(x + 20 * step, y + 10 * step)
            self.wait_until(follows(80, 40), "the window to follow the pointer", 5)
            self.assert_readings_go_on(lambda: program.main.rect[:2] == (left + 80, top + 40))
            self.desktop.move(x + 90, y + 50)
            self.wait_until(follows(90, 50), "the window to follow the pointer", 5)
        finally:
            self.desktop.xdotool("mouseup", 1)
        self.wait_until(lambda: program.main.rect[:2] == (left + 90, top + 50), "the end of the drag", 5)

    def test_while_a_menu_of_its_own_is_open(self):
        self.program.click(self.program.bare_face(), button=3)
        self.wait_until(self.program.menu, "the menu", 5)
        self.assert_readings_go_on(self.program.menu)
        self.desktop.key("Escape")
        self.wait_until(lambda: not self.program.menu(), "the menu to close", 5)

    def test_while_the_system_menu_is_open(self):
        def in_menu():
            return self.desktop.inspector.ask("focus")[0]["menu"]

        self.wait_until(lambda: self.desktop.inspector.ask("focus")[0]["foreground"] == self.program.main.hwnd,
                        "the keyboard", 5)
        self.desktop.key("alt+space")
        self.wait_until(in_menu, "the system menu", 5)
        self.assert_readings_go_on(in_menu)
        # The first takes the choice away, the second the menu.
        self.desktop.key("Escape")
        self.desktop.key("Escape")
        self.wait_until(lambda: not in_menu(), "the menu to close", 5)



if __name__ == "__main__":
    unittest.main()
