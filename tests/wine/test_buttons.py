"""What a hand does to the program with mouse and keyboard, as far as the system has a part in it: the keyboard's way
over the face, menus, the icon in the notification area. What buttons do is tested without a screen."""

import time
import unittest

import face
import harness

# Where the Tab key stops in the full view; at the chosen button of a group.
STOPS = ["logo", "message", "window menu", "settings menu", "help menu", "help", "minimize", "close", "forward graph",
         "forward readout", "reflected graph", "reflected readout", "vswr readout", "forward range 8",
         "reflected range 8", "fast", "reset", "status", "port", "rx light", "tx light", "swr label", "power label"]


class Buttons(harness.OrvaneTest):
    def setUp(self):
        self.meter = self.start_meter("--do", "power 100 4")
        self.program = self.start_program("[USER-SETTINGS]\nFORM-TOP=3000\nFORM-LEFT=3000\n")
        self.meter.wait_for_stream()
        self.commands_before = len(self.meter.texts())

    def wait_for_commands(self, *commands):
        """Waits until the meter was told exactly this since the last call."""
        self.wait_until(lambda: self.meter.texts()[self.commands_before:] == [*commands], f"the commands {commands}", 5)
        self.commands_before += len(commands)

    def wait_for_lit(self, *lamps):
        """Waits until the middle of just these of all lamps and markers is bright."""
        def lit():
            screen = self.desktop.screen()
            middles = {lamp: harness.center(self.program.places()[lamp]) for lamp in face.LAMPS[face.FULL]}
            return {lamp for lamp, (x, y) in middles.items() if max(screen.pixel(x, y)) > 128}
        self.wait_until(lambda: lit() == {*lamps}, f"{lamps} to be lit", 5)

    def test_mouse_reaches_buttons_and_lamps_show_it(self):
        self.wait_for_lit("fast marker", "forward marker 8", "reflected marker 8")
        self.program.click(self.program.part("forward range 7"))
        self.wait_until(lambda: self.program.scale("forward") == ("0", "1500.0", "3000"), "the fixed scale")
        self.program.click(self.program.part("slow"))
        self.wait_for_commands("2M")
        self.wait_for_lit("slow marker", "forward marker 7", "reflected marker 8")
        self.meter.command("power 100 49")
        self.wait_for_lit("swr lamp", "reset lamp", "slow marker", "forward marker 7", "reflected marker 8")
        self.meter.command("power 100 4")
        self.wait_until(lambda: self.program.readouts() == ("96", "4", "1.50"), "the cause to go away", 8)
        self.program.click(self.program.part("swr label"))
        self.wait_for_commands("A")
        self.wait_for_lit("slow marker", "forward marker 7", "reflected marker 8")

    def focused(self):
        """The name in face.py of what has the keyboard."""
        focus = self.program.focus()
        return focus and next((name for name, place in self.program.places().items() if place == focus.rect), None)

    def step(self, key):
        """What has the keyboard after a key that moves it."""
        before = self.focused()
        self.desktop.key(key)
        return self.wait_until(lambda: self.focused() != before and self.focused(), f"{key} to leave {before}", 3)

    def marked(self):
        """Whether a line runs all around what has the keyboard."""
        left, top, right, bottom = self.program.focus().rect
        reach = 4
        around = self.desktop.screen().colors((left - reach, top - reach, right + reach, bottom + reach))
        return around[255, 176, 46] >= 2 * (right - left + bottom - top)

    def test_keyboard_reaches_everything(self):
        for stop in (*STOPS, STOPS[0]):
            self.assertEqual(self.step("Tab"), stop)
            self.wait_until(self.marked, f"the mark around {stop}", 3)
        self.assertEqual([self.step("shift+Tab") for _ in range(8)],
                         ["power label", "swr label", "tx light", "rx light", "port", "status", "reset", "fast"])
        self.assertEqual([self.step(key) for key in ("Right", "Down", "Left", "Up", "Up")],
                         ["medium", "slow", "medium", "fast", "dip"])

    def test_keyboard_stays_in_sight_and_comes_back_with_the_window(self):
        # In the short view there is no logo; what has the keyboard goes on to the next that is seen.
        self.step("Tab")
        self.desktop.key("F4")
        self.wait_until(lambda: self.program.view == face.SHORT, "the short view", 5)
        self.assertEqual(self.focused(), "message")
        # What the notification area sends at a double click on the icon.
        for minimized in (True, False):
            self.program.post(harness.WM_RBUTTONUP, 0, harness.WM_LBUTTONDBLCLK)
            self.wait_until(lambda: self.program.minimized() == minimized, f"minimised: {minimized}", 5)
        self.wait_until(lambda: self.focused() == "message", "the keyboard to come back", 5)
        other = self.start_client(caption="Another window").window
        for window, stop in ((other, None), (self.program.main, "message")):
            self.desktop.inspector.ask("front", window.hwnd)
            self.wait_until(lambda: self.focused() == stop, f"the keyboard at {stop}", 5)

    def test_keys_of_the_system(self):
        self.step("Tab")
        self.desktop.key("alt+space")
        self.wait_until(self.program.menu, "the system's menu of the window", 5)
        self.desktop.key("Escape", "Escape")
        self.wait_until(lambda: not self.program.menu(), "the menu to close", 5)
        while self.step("Tab") != "close":
            pass
        self.desktop.key("space")
        self.assertEqual(self.program.wait_exit(), 0)

    def test_menus_open_where_the_keyboard_is(self):
        for stop, key in (("window menu", "Return"), ("vswr readout", "Menu"), ("port", "shift+F10")):
            with self.subTest(stop=stop):
                while self.focused() != stop:
                    self.step("Tab")
                self.desktop.key(key)
                menu = self.wait_until(self.program.menu, "the menu", 5)[0]
                left, _, _, bottom = self.program.part(stop).rect
                self.assertEqual(menu.rect[:2], (left, bottom))
                self.desktop.key("Escape")
                self.wait_until(lambda: not self.program.menu(), "the menu to close", 5)
                time.sleep(0.7)

    def test_settings_in_the_menu_by_keyboard(self):
        rows = (("Menu", 1, ("Down", "Down"), ("b2", "b?")),
                ("shift+F10", 4, ("Down", "Right", "Down", "Down", "Right"), ("t-1", "t?")))
        for key, line, steps, commands in rows:
            with self.subTest(commands=commands):
                self.desktop.key(key)
                self.wait_until(self.program.menu, "the menu", 5)
                self.desktop.key(*["Down"] * line, "Right", *steps, "Return")
                self.wait_for_commands(*commands)

    def test_minimised_window_keeps_its_place(self):
        self.program.click(self.program.part("minimize"))
        self.wait_until(self.program.minimized, "the window to be minimised", 5)
        # Minimised windows are parked far outside the screen: that is not where the next run shall begin.
        self.assertEqual(self.program.close(), 0)
        user = self.program.settings()["USER-SETTINGS"]
        self.assertEqual((user["FORM-LEFT"], user["FORM-TOP"]), ("3000", "3000"))

    def test_tray_icon(self):
        icon = self.wait_until(lambda: next((window for window in self.desktop.inspector.windows()
                                             if window.class_name == "__winex11_tray_icon"), None), "the icon", 5)
        place = self.program.main.rect
        for minimized in (True, False):
            self.desktop.click(*icon.center, repeat=2)
            self.wait_until(lambda: self.program.minimized() == minimized, f"minimised: {minimized}", 5)
            self.assertEqual(self.program.menu(), [])
        self.assertEqual(self.program.main.rect, place)
        face_point = self.program.on_screen(self.program.bare_face())
        sizes = []
        for place in (face_point, icon.center):
            self.desktop.click(*place, button=3)
            sizes.append(self.wait_until(self.program.menu, "the menu", 5)[0].size)
            # By the mouse: after a click in the notification area, which is a window in Wine, that has the keyboard.
            self.desktop.click(*face_point)
            self.wait_until(lambda: not self.program.menu(), "the menu to close", 5)
        self.assertEqual(sizes[0], sizes[1])


if __name__ == "__main__":
    unittest.main()
