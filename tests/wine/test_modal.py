"""Readings go on while the window is dragged, and while the system holds the program in a loop of its own: a menu.

Message boxes are another. None of them comes up beside a running stream within seconds, so that case is tested
without a screen.
"""

import unittest

import harness

POWERS = [((100, 4), ("96", "4", "1.50")), ((1500, 60), ("1440", "60", "1.50")), ((300, 75), ("225", "75", "3.00"))]


class ModalLoops(harness.SharedProgramTest):
    settings = "[USER-SETTINGS]\nFORM-TOP=3000\nFORM-LEFT=3000\n"

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

    def test_a_panel_is_a_handle_for_the_left_button_only(self):
        program = self.program
        for part in ("mode panel", "forward ranges", "reflected ranges"):
            with self.subTest(part=part):
                left, top = program.main.rect[:2]
                x, y = (edge + 3 for edge in program.part(part).rect[:2])
                self.desktop.drag((x, y), (x - 25, y + 35), button=3)
                self.wait_until(program.menu, "the menu of the right button", 5)
                self.desktop.key("Escape")
                self.wait_until(lambda: not program.menu(), "the menu to close", 5)
                self.desktop.drag((x, y), (x + 30, y - 20))
                self.wait_until(lambda: program.main.rect[:2] == (left + 30, top - 20), "the window to move", 5)


if __name__ == "__main__":
    unittest.main()
