"""What a hand does to the program with mouse and keyboard, and what the meter hears of it."""

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

    def commands(self):
        """What the meter was told since the stream began."""
        return self.meter.texts()[self.commands_before:]

    def lit(self, *lamps):
        """Which of these lamps are lit: their middle is bright."""
        screen = self.desktop.screen()
        places = self.program.places()
        middles = {lamp: harness.center(places[lamp]) for lamp in lamps}
        return {lamp for lamp, (x, y) in middles.items() if max(screen.pixel(x, y)) > 128}

    def test_range_buttons_change_scale_and_marker(self):
        markers = {graph: [f"{graph} marker {i}" for i in range(9)] for graph in ("forward", "reflected")}
        self.wait_until(lambda: self.program.scale("forward") == ("0", "50", "100"), "the meter's own scale")
        table = [("forward", 0, ("0", "5.0", "10")), ("forward", 7, ("0", "1500.0", "3000")),
                 ("reflected", 1, ("0", "12.5", "25")), ("reflected", 7, ("0", "375.0", "750")),
                 ("forward", 8, ("0", "50", "100"))]
        chosen = {"forward": 8, "reflected": 8}
        for graph, index, scale in table:
            with self.subTest(graph=graph, index=index):
                self.program.click(self.program.part(f"{graph} range {index}"))
                self.wait_until(lambda: self.program.scale(graph) == scale, f"the {graph} scale {scale}")
                chosen[graph] = index
                expected = {f"{name} marker {i}" for name, i in chosen.items()}
                self.wait_until(lambda: self.lit(*markers["forward"], *markers["reflected"]) == expected,
                                f"the markers {expected}", 5)
        self.assertEqual(self.commands(), [])

    def test_mode_buttons_tell_the_meter_once(self):
        markers = [f"{mode} marker" for mode in face.MODES]
        self.assertEqual(self.lit(*markers), {"fast marker"})
        self.program.click(self.program.part("slow"))
        self.wait_until(lambda: self.lit(*markers) == {"slow marker"}, "the marker of the slow mode", 5)
        self.program.click(self.program.part("slow"))
        self.program.click(self.program.part("fast"))
        self.wait_until(lambda: "0M" in self.commands(), "the way back to the fast mode", 5)
        self.assertEqual(self.commands(), ["2M", "0M"])
        # The other way round: somebody turns the knob on the meter.
        self.meter.command("set M1")
        self.wait_until(lambda: self.lit(*markers) == {"medium marker"}, "the marker of the medium mode", 5)
        self.assertEqual(self.commands(), ["2M", "0M"])

    def test_alarm_is_shown_and_reset(self):
        lamps = ("swr lamp", "power lamp", "reset lamp")
        self.wait_until(lambda: self.program.readouts()[0] == "96", "the readings")
        self.assertEqual(self.lit(*lamps), set())
        for button in ("swr label", "reset"):
            with self.subTest(button=button):
                before = len(self.commands())
                self.meter.command("power 100 49")
                self.wait_until(lambda: self.lit(*lamps) == {"swr lamp", "reset lamp"}, "the alarm", 5)
                # The alarm outlives its cause.
                self.meter.command("power 100 4")
                self.wait_until(lambda: self.program.readouts() == ("96", "4", "1.50"), "the cause to go away", 5)
                self.assertEqual(self.lit(*lamps), {"swr lamp", "reset lamp"})
                self.program.click(self.program.part(button))
                self.wait_until(lambda: not self.lit(*lamps), "the lamps to go out", 5)
                self.assertEqual(self.commands()[before:], ["A"])

    def test_what_is_dark_has_nothing_to_reset(self):
        # That nothing was sent is seen from what comes next.
        for button in ("power label", "swr label", "reset"):
            self.program.click(self.program.part(button))
        self.program.click(self.program.part("medium"))
        self.wait_until(lambda: "1M" in self.commands(), "the next command", 5)
        self.assertEqual(self.commands(), ["1M"])
        # Each label is for its own alarm.
        self.meter.command("power 100 49")
        self.wait_until(lambda: self.lit("swr lamp", "power lamp") == {"swr lamp"}, "the alarm", 5)
        self.program.click(self.program.part("power label"))
        self.program.click(self.program.part("fast"))
        self.wait_until(lambda: "0M" in self.commands(), "the next command", 5)
        self.assertEqual(self.commands(), ["1M", "0M"])

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
        amber = self.desktop.screen().count((left - reach, top - reach, right + reach, bottom + reach), (255, 176, 46))
        return amber >= 2 * (right - left + bottom - top)

    def test_keyboard_reaches_everything(self):
        for stop in (*STOPS, STOPS[0]):
            self.assertEqual(self.step("Tab"), stop)
            self.wait_until(self.marked, f"the mark around {stop}", 3)
        self.assertEqual([self.step("shift+Tab") for _ in range(8)],
                         ["power label", "swr label", "tx light", "rx light", "port", "status", "reset", "fast"])
        self.assertEqual([self.step(key) for key in ("Right", "Down", "Left", "Up", "Up")],
                         ["medium", "slow", "medium", "fast", "dip"])

    def test_view_changes_by_key_and_the_keyboard_stays_in_sight(self):
        # In the short view there is no logo; what has the keyboard goes on to the next that is seen.
        for stop, there, back in (("logo", "message", "message"), ("forward range 8", "status", "status")):
            while self.focused() != stop:
                self.step("Tab")
            for view, expected in ((face.SHORT, there), (face.FULL, back)):
                self.desktop.key("F4")
                self.wait_until(lambda: self.program.view == view, f"the {view} view", 5)
                self.assertEqual(self.focused(), expected, f"{view} view, from {stop}")

    def test_keyboard_comes_back_with_the_window(self):
        WM_RBUTTONUP, WM_LBUTTONDBLCLK = 517, 515
        while self.step("Tab") != "vswr readout":
            pass
        for leave in ("minimize", "another window"):
            with self.subTest(leave=leave):
                if leave == "minimize":
                    self.program.post(WM_RBUTTONUP, 0, WM_LBUTTONDBLCLK)
                    self.wait_until(self.program.minimized, "the window to be minimised", 5)
                    self.program.post(WM_RBUTTONUP, 0, WM_LBUTTONDBLCLK)
                    self.wait_until(lambda: not self.program.minimized(), "the window to come back", 5)
                else:
                    self.start_client("Another window")
                    ask = self.desktop.inspector.ask
                    other = next(w for w in self.desktop.inspector.windows() if w.text == "Another window")
                    ask("front", other.hwnd)
                    self.wait_until(lambda: not self.program.focus(), "another window to have the keyboard", 5)
                    ask("front", self.program.main.hwnd)
                self.wait_until(lambda: self.focused() == "vswr readout", "the keyboard to come back", 5)

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

    def tray_icon(self):
        return next((window for window in self.desktop.inspector.windows()
                     if window.class_name == "__winex11_tray_icon"), None)

    def test_minimize_button_and_back(self):
        WM_RBUTTONUP, WM_LBUTTONDBLCLK = 517, 515
        place = self.program.main.rect
        self.program.click(self.program.part("minimize"))
        self.wait_until(self.program.minimized, "the window to be minimised", 5)
        # What the notification area sends at a double click on the icon.
        self.program.post(WM_RBUTTONUP, 0, WM_LBUTTONDBLCLK)
        self.wait_until(lambda: not self.program.minimized(), "the window to come back", 5)
        self.assertEqual(self.program.main.rect, place)
        self.program.click(self.program.part("minimize"))
        self.wait_until(self.program.minimized, "the window to be minimised", 5)
        # Minimised windows are parked far outside the screen: that is not where the next run shall begin.
        self.assertEqual(self.program.close(), 0)
        user = self.program.settings()["USER-SETTINGS"]
        self.assertEqual((user["FORM-LEFT"], user["FORM-TOP"]), ("3000", "3000"))

    def test_double_click_on_the_tray_icon_minimizes_and_restores(self):
        icon = self.wait_until(self.tray_icon, "the icon in the tray", 5)
        for minimized in (True, False):
            self.desktop.click(*icon.center, repeat=2)
            self.wait_until(lambda: self.program.minimized() == minimized, f"minimised: {minimized}", 5)
            self.assertEqual(self.program.menu(), [])

    def test_tray_icon_has_the_menu_of_the_face(self):
        icon = self.wait_until(self.tray_icon, "the icon in the tray", 5)
        face_point = self.program.on_screen(self.program.bare_face())
        sizes = []
        for place in (face_point, icon.center):
            self.desktop.click(*place, button=3)
            menu = self.wait_until(self.program.menu, "the menu", 5)
            self.assertEqual(len(menu), 1)
            sizes.append(menu[0].size)
            # By the mouse: after a click in the notification area, which is a window in Wine, that has the keyboard.
            self.desktop.click(*face_point)
            self.wait_until(lambda: not self.program.menu(), "the menu to close", 5)
        self.assertEqual(sizes[0], sizes[1])

    def test_every_setting_of_the_menu_by_keyboard(self):
        rows = (("Menu", 1, ("Down", "Down"), ["b2", "b?"]),
                ("shift+F10", 2, ("Down", "Down", "Down", "Down"), ["l4", "l?"]),
                ("Menu", 3, (), ["V0", "V?"]),
                ("shift+F10", 4, ("Right", "Right", "Down", "Down"), ["T3", "T?"]),
                ("Menu", 4, ("Down", "Right", "Down", "Down", "Right"), ["t-1", "t?"]))
        for key, line, steps, commands in rows:
            with self.subTest(commands=commands):
                before = len(self.commands())
                self.desktop.key(key)
                self.wait_until(self.program.menu, "the menu", 5)
                self.desktop.key(*["Down"] * line, "Right", *steps, "Return")
                self.wait_until(lambda: self.commands()[before:] == commands, f"the commands {commands}", 5)
        before = len(self.commands())
        self.desktop.key("Menu")
        self.wait_until(self.program.menu, "the menu", 5)
        self.desktop.key("Escape")
        self.wait_until(lambda: not self.program.menu(), "the menu to close", 5)
        time.sleep(1)
        self.assertEqual(self.commands()[before:], [])

    def test_choice_in_the_menu_reaches_the_meter_and_the_scale(self):
        self.wait_until(lambda: self.program.scale("forward") == ("0", "50", "100"), "the scale of 100 W")
        self.program.click(self.program.bare_face(), button=3)
        self.wait_until(self.program.menu, "the menu", 5)
        self.desktop.key("Down", "Right")
        self.wait_until(lambda: len(self.program.menu()) == 2, "the list of ranges", 5)
        self.desktop.key("Down", "Down", "Return")
        self.wait_until(lambda: self.program.scale("forward") == ("0", "100", "200"), "the scale of 200 W")
        self.assertIn("range 2", self.meter.command("state")[0])


if __name__ == "__main__":
    unittest.main()
