"""What a screen reader finds: the accessible tree in each view and panel against what is expected, the events, and a
whole session by keyboard alone."""

import unittest

import face
import harness

TITLE_ROW = """
  link | Quorran on the web | - | focusable linked
  text | Message | ORVANE | focusable readonly
  menu button | Window | - | focusable popup
  menu button | Settings | - | focusable popup
  menu button | Help | - | focusable popup
  button | Help | - | focusable
  button | Minimize | - | focusable
  button | Close | - | focusable
  alert | Meter found | - | readonly"""
SCALE = """
    picture
    label | {} | - | readonly
    label | {} | - | readonly
    label | {} | - | readonly"""
STATUS_ROW = """
  text | Status | {status} | focusable readonly
  text | Port | COM2 | focusable readonly
  text | Rx data activity | on | focusable readonly
  text | Tx data activity | off | focusable readonly
  text | SWR alarm | off | focusable readonly
  text | Power alarm | off | focusable readonly"""
FORWARD = (10, 100, 200, 500, 1000, 1500, 2000, 3000)
REFLECTED = (10, 25, 50, 125, 250, 375, 500, 750)


def ranges(name, scales):
    fixed = "".join(f"\n    choice | {watts} Watts Full Scale Fixed | - | focusable" for watts in scales)
    return f"\n  group | {name} range{fixed}\n    choice | Auto Range Scale | - | focusable checked"


def modes(chosen):
    names = ("Fast Display Update 5x/Sec", "Medium Display Update 1x/Sec", "Slow Display Update 1x/2Sec",
             "VSWR Dip Mode Fast Display Update")
    return "\n  group | Display mode" + "".join(
        f"\n    choice | {name} | - | focusable" + (" checked" if i == chosen else "") for i, name in enumerate(names))


RESET = "\n  button | Reset Alarms | - | focusable"
WATTS = SCALE.format(0, 250, 500)
BARS = f"""
  bar | Forward bar | 460 of 500 watts | focusable readonly{WATTS}
  text | Forward power | 460 watts | focusable readonly
  bar | Reflected bar | 40 of 500 watts | focusable readonly{WATTS}
  text | Reflected power | 40 watts | focusable readonly
  text | VSWR | 1.79 | focusable readonly"""
TOP = "client | Orvane Lite | - | focusable"
FULL = TOP + TITLE_ROW + BARS + ranges("Forward", FORWARD) + ranges("Reflected", REFLECTED) + modes(0) + RESET
SHORT = TOP + TITLE_ROW.replace("\n  link | Quorran on the web | - | focusable linked", "") + f"""
  bar | Power bars | forward 460 of 500 watts, reflected 40 of 500 watts | focusable readonly{WATTS}
  text | Forward power | 460 watts | focusable readonly
  text | VSWR | 1.79 | focusable readonly"""
DIP = TOP + TITLE_ROW + f"""
  bar | Forward bar | off in dip mode | focusable readonly{WATTS}
  text | Forward power | 460 watts | focusable readonly
  bar | VSWR bar | 1.79 of 5.0 | focusable readonly{SCALE.format("1.0", "3.0", "5.0")}
  text | VSWR | 1.79 | focusable readonly
  label | BAR: VSWR | - | readonly""" + modes(3) + RESET



def group(caption, *inside):
    """A group in a panel: its window, the system's box around it, and what is in it. For the system's own boxes and
    labels Wine has no better word than client."""
    return [f"client | {caption} | - | focusable", f"  client | {caption}  | - | focusable",
            *(f"  {text} | focusable" for text in inside)]


def chosen(caption, value):
    """A group that holds a list."""
    return [*group(caption)[:2], f"  list | {caption} | {value} | focusable popup"]


METER_PANEL = [
    "client | Orvane Meter Setup  | - | focusable",
    "text | Firmware version | Orvane Meter Version 2.14 | focusable readonly", "button | Updates | - | focusable",
    *chosen("Relay Polarity", "A Closes"), *chosen("Bargraph Range Scale", "100/500/2500"),
    *chosen("Display Intensity", "Level 4"),
    *group("Ref Pwr Trim", "scroll bar | Ref Pwr Trim | 0 percent", "client | 0 | -"),
    "button | Close | - | focusable", "button | Apply | - | focusable",
    *group("Fwd Pwr Trim", "scroll bar | Fwd Pwr Trim | 0 percent", "client | 0 | -"),
    *chosen("Operation Mode", "Fast Reset"), *chosen("Low Pwr Alarm", "0 Off"), *chosen("VSWR Alarm", "3.0 / 1"),
    *group("Callsign / Message", "client | Enter Call / Message | -", "text | Callsign / Message | ORVANE"),
    "check box | Display  Message | - | focusable checked"]
PROGRAM_PANEL = [
    "client | Program Settings  | - | focusable",
    *group("Serial Port", "client | Port | -")[:3], "  list | Port | COM2 | focusable popup",
    "  client | Speed | - | focusable", "  list | Speed | 38400 | focusable popup",
    *group("Messaging Client", "text | Messaging Client | OVClient", "client | No window with this name is open. | -"),
    *group("Program Position", "check box | Stay On Top | -"),
    "button | Apply | - | focusable", "button | Close | - | focusable"]


class AccessibilityTest(harness.OrvaneTest):
    settings = ""

    def setUp(self):
        self.meter = self.start_meter("--do", "power 500 40")
        self.program = self.start_program(self.settings + "[USER-SETTINGS]\nFORM-TOP=3000\nFORM-LEFT=3000\n")
        self.reader = self.desktop.inspector
        if not self.settings:
            self.wait_for_readings()

    def wait_for_readings(self):
        self.meter.wait_for_stream()
        self.wait_until(lambda: self.program.readouts() == ("460", "40", "1.79"), "the readings")

    def panel(self, key, caption):
        """Opens a panel by its key."""
        self.desktop.key(key)
        return self.wait_until(lambda: next((w for w in self.program.controls(text=caption)
                                             if w.class_name == "OrvanePanel"), None), caption, 8)

    def about_box(self):
        """Opens the About box by keys."""
        self.tab_to("help menu")
        self.desktop.key("Return")
        self.wait_until(self.program.menu, "the menu", 5)
        self.desktop.key("Down", "Down", "Return")
        return self.wait_until(lambda: next((w for w in self.program.windows()
                                             if w.text == "About" and w.visible and not w.parent), None), "the box", 5)

    def value(self, part):
        return self.reader.object(self.program.part(part))["value"]

    def step(self, key="Tab"):
        """Presses a key that moves the keyboard on, and waits until it is there."""
        before = self.program.focus().hwnd
        self.desktop.key(key)
        self.wait_until(lambda: self.program.focus().hwnd != before, f"{key} to move on", 3)

    def tab_to(self, part):
        wanted = self.program.part(part).hwnd
        for _ in range(40):
            if self.program.focus().hwnd == wanted:
                return
            self.step()
        raise AssertionError(f"the Tab key does not come to {part}")

    def wait_for_tree(self, expected, what):
        """Waits until the face is told as expected: lights go off a second after the last command."""
        told = []

        def same():
            told[:] = self.reader.tree(self.program.main)
            return told == expected.splitlines()
        try:
            self.wait_until(same, what, 6, 0.3)
        except AssertionError:
            self.assertEqual(told, expected.splitlines(), what)


class Tree(AccessibilityTest):
    maxDiff = None

    def test_views(self):
        status = STATUS_ROW.format(status="no message")
        self.wait_for_tree(FULL + status, "the full view")
        self.desktop.key("F4")
        self.wait_for_tree(SHORT + status, "the short view")
        self.desktop.key("F4")
        self.program.click(self.program.part("dip"))
        self.wait_for_tree(DIP + status, "the dip mode")

    def test_panels(self):
        for key, caption, inside in (("F2", "Orvane Meter Setup", METER_PANEL), ("F3", "Program Settings", PROGRAM_PANEL)):
            with self.subTest(panel=caption):
                told = self.reader.tree(self.panel(key, caption))
                self.assertEqual(told, [f"group | {caption}", *(f"  {text}" for text in inside)])
        client = self.program.control(text="OVClient")
        self.assertEqual(self.reader.object(client)["description"].splitlines(), [
            "No window with this name is open.",
            "Enter the name of the client application to receive data from Orvane Lite"])

    def test_about_box(self):
        box = self.about_box()
        told = self.reader.tree(box)
        lines = self.reader.object(box)["description"].splitlines()
        self.assertEqual(told, [
            "dialog | About", "  client | - | - | focusable", *(f"    client | {line} | - | focusable" for line in lines),
            *(f"    button | {name} | - | focusable" for name in
              ("Quorran on the Web", "support@quorran.example", "System Info...", "Close"))])
        self.assertEqual(len(lines), 4)
        self.assertEqual(lines[2], harness.windows_path(self.program.folder))


class Events(AccessibilityTest):
    def test_a_change_is_told_and_an_alarm_is_announced(self):
        self.tab_to("vswr readout")
        self.reader.ask("watch")
        self.reader.events(1)
        self.meter.command("set V1")
        self.meter.command("power 500 100")
        events = self.reader.events(4)
        changes = [(hwnd, tick) for word, hwnd, tick in events if word in ("value", "name")]
        self.assertEqual({hwnd for hwnd, _ in changes}, {self.program.part("vswr readout").hwnd})
        # The readout holds its peak for nearly a second before it comes to rest.
        self.assertTrue(all(b[1] - a[1] >= 450 for a, b in zip(changes, changes[1:])), "twice a second at most")
        alerts = [hwnd for word, hwnd, _ in events if word == "alert"]
        self.assertEqual(len(alerts), 1)
        voice = self.desktop.inspector.window(alerts[0])
        self.assertEqual(self.reader.tree(voice), ["alert | SWR alarm on | - | readonly"])


class ByKeyboardAlone(AccessibilityTest):
    settings = "[METER-SETTINGS]\nCOMM-PORT=0\n"

    def test_a_session(self):
        # The meter's port. A box asks for it.
        self.assertEqual(self.program.wait_for_box(10)[0], "No Port Selected")
        self.desktop.key("Return")
        self.wait_until(lambda: not self.program.message_box(), "the box to close", 5)
        self.panel("F3", "Program Settings")
        self.wait_until(lambda: self.reader.object(self.program.focus())["name"] == "Port", "the list of ports", 5)
        for _ in range(3):
            if self.reader.object(self.program.focus())["value"] != "COM2":
                self.desktop.key("Down")
                harness.time.sleep(0.3)
        self.desktop.key("alt+a")
        self.wait_until(lambda: self.program.control(text="Meter found"), "the announcement", 20)
        self.wait_for_readings()
        # A range: into the group at the chosen one, five up, and press.
        self.tab_to("forward range 8")
        self.desktop.key(*["Up"] * 4, "space")
        self.wait_until(lambda: self.value("forward graph") == "460 of 1000 watts", "the range", 5)
        # A trim, in the panel.
        self.panel("F2", "Orvane Meter Setup")
        self.wait_until(lambda: self.reader.object(self.program.focus())["name"] == "Firmware version", "its start", 8)
        while self.reader.object(self.program.focus())["name"] != "Fwd Pwr Trim":
            self.step()
        self.desktop.key("Up", "Up")
        self.wait_until(lambda: self.reader.object(self.program.focus())["value"] == "2 percent", "the trim", 5)
        self.desktop.key("alt+a")
        self.wait_until(lambda: self.value("status") == "Paramater Update Complete", "the update", 15)
        self.assertIn("T2", self.meter.texts())
        self.desktop.key("Escape")
        self.wait_until(lambda: not self.program.control(text="Orvane Meter Setup"), "the panel to close", 5)
        self.assertEqual(self.reader.object(self.program.focus())["name"], "1000 Watts Full Scale Fixed")
        # Dip mode, and the ratio in it.
        self.tab_to("fast")
        self.desktop.key("Left", "Return")
        self.wait_until(lambda: self.program.control(text="BAR: VSWR"), "the dip mode", 5)
        self.tab_to("vswr readout")
        before = self.value("vswr readout")
        self.meter.command("power 500 100")
        ratio = self.wait_until(lambda: self.value("vswr readout") != before and self.value("vswr readout"), "a ratio", 5)
        self.wait_until(lambda: self.value("vswr readout") == self.program.text("vswr readout"), "its text", 5)
        self.wait_until(lambda: self.value("reflected graph") == f"{ratio} of 5.0", "the bar of it", 5)
        # The end.
        self.tab_to("close")
        self.desktop.key("space")
        self.assertEqual(self.program.wait_exit(), 0)


class HighContrast(AccessibilityTest):
    registry = harness.wine_lab.HIGH_CONTRAST

    def test_panels_and_about_box_have_the_colours_of_the_theme(self):
        theme = {tuple(map(int, value.split())) for key, _, value in self.registry if key.endswith("Colors")}
        theme |= {tuple(255 - part for part in color) for color in theme}  # dots around what has the keyboard
        black, white = (0, 0, 0), (255, 255, 255)
        shows = {"meter": lambda: self.panel("F2", "Orvane Meter Setup"),
                 "program": lambda: self.panel("F3", "Program Settings"), "about": self.about_box}
        for name, show in shows.items():
            with self.subTest(shown=name):
                window = show()
                found = {}

                def drawn():
                    left, top, right, bottom = self.desktop.inspector.window(window.hwnd).rect
                    # The window manager has the title and the edges of a box.
                    inner = (left + 8, top + 32, right - 8, bottom - 8) if name == "about" else (left, top, right, bottom)
                    found.update(self.desktop.screen().colors(inner))
                    return found.get(white, 0) > 1000
                self.wait_until(drawn, "texts and lines", 5)
                self.assertGreater(found[black], found[white])
                self.assertEqual(set(found) - theme, set(), "colours of no theme")
                self.desktop.key("Escape")
                self.wait_until(lambda: not self.desktop.inspector.window(window.hwnd).visible, "it to close", 5)


if __name__ == "__main__":
    unittest.main()
