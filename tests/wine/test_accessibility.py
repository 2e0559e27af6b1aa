"""What a screen reader finds: the accessible tree in each view and panel against what is expected, the events, and a
whole session by keyboard alone."""

import itertools
import re
import unittest

import acc_reader
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


class AccessibilityTest(harness.OrvaneTest):
    def setUp(self):
        self.meter = self.start_meter("--do", "power 500 40")
        self.program = self.start_program("[USER-SETTINGS]\nFORM-TOP=3000\nFORM-LEFT=3000\n")
        self.reader = acc_reader.Reader(self.desktop)
        self.addCleanup(self.reader.close)
        self.meter.wait_for_stream()
        self.wait_until(lambda: self.program.readouts() == ("460", "40", "1.79"), "the readings")

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

    def panel(self, key, caption):
        self.desktop.key(key)
        frame = self.wait_until(lambda: next((w for w in self.program.controls(text=caption)
                                              if w.class_name == "OrvanePanel"), None), caption, 8)
        return self.reader.tree(frame)

    def test_meter_panel(self):
        told = self.panel("F2", "Orvane Meter Setup")
        self.assertEqual(told[0], "group | Orvane Meter Setup")
        # The system's own boxes and labels are told differently by each system; what is used is ours.
        used = [text.strip() for text in told if re.match(r" +(text|button|list|scroll bar|check box) ", text)]
        self.assertEqual(used, [
            "text | Firmware version | Orvane Meter Version 2.14 | focusable readonly", "button | Updates | - | focusable",
            "list | Relay Polarity | A Closes | focusable popup",
            "list | Bargraph Range Scale | 100/500/2500 | focusable popup",
            "list | Display Intensity | Level 4 | focusable popup", "scroll bar | Ref Pwr Trim | 0 percent | focusable",
            "button | Close | - | focusable", "button | Apply | - | focusable",
            "scroll bar | Fwd Pwr Trim | 0 percent | focusable", "list | Operation Mode | Fast Reset | focusable popup",
            "list | Low Pwr Alarm | 0 Off | focusable popup", "list | VSWR Alarm | 3.0 / 1 | focusable popup",
            "text | Callsign / Message | ORVANE | focusable", "check box | Display  Message | - | focusable checked"])

    def test_program_panel(self):
        told = self.panel("F3", "Program Settings")
        self.assertEqual(told[0], "group | Program Settings")
        used = [text.strip() for text in told if re.match(r" +(text|button|list|scroll bar|check box) ", text)]
        self.assertEqual(used, [
            "list | Port | COM2 | focusable popup", "list | Speed | 38400 | focusable popup",
            "text | Messaging Client | OVClient | focusable", "check box | Stay On Top | - | focusable",
            "button | Apply | - | focusable", "button | Close | - | focusable"])

    def test_about_box(self):
        self.tab_to("help menu")
        self.desktop.key("Return")
        self.wait_until(self.program.menu, "the menu", 5)
        self.desktop.key("Down", "Down", "Return")
        box = self.wait_until(lambda: next((w for w in self.program.windows()
                                            if w.text == "About" and w.visible and not w.parent), None), "the box", 5)
        told = self.reader.tree(box)
        names = [text.strip().split(" | ") for text in told]
        self.assertEqual([text[1] for text in names if text[0] == "button"],
                         ["Quorran on the Web", "support@quorran.example", "System Info...", "Close"])
        self.assertTrue(any(text[1].startswith("Orvane Lite, Version 1.0") for text in names), told)


class Events(AccessibilityTest):
    def test_only_what_has_the_keyboard_tells_its_changes(self):
        self.reader.watch()
        ratio = self.program.part("vswr readout")
        self.tab_to("vswr readout")
        self.reader.events(1)
        for reflected in itertools.chain(range(40, 100, 4), range(100, 40, -4)):
            self.meter.command(f"power 500 {reflected}")
            harness.time.sleep(0.2)
        # The readout holds its peak for nearly a second before it comes to rest.
        told = [event for event in self.reader.events(3) if event[0] in ("value", "name")]
        self.assertEqual({hwnd for _, hwnd, _ in told}, {ratio.hwnd})
        ticks = [tick for _, _, tick in told]
        self.assertGreaterEqual(len(ticks), 4)
        self.assertGreaterEqual(min(b - a for a, b in zip(ticks, ticks[1:])), 450, "twice a second at most")
        self.assertEqual([event for event in self.reader.events(3) if event[0] == "value"], [], "at rest")

    def test_an_alarm_is_announced_once(self):
        self.meter.command("set V1")
        self.reader.watch()
        self.meter.command("power 500 100")
        self.wait_until(lambda: self.value("swr label") == "on", "the alarm", 5)
        alerts = [event for event in self.reader.events(2) if event[0] == "alert"]
        self.assertEqual(len(alerts), 1)
        voice = self.desktop.inspector.window(alerts[0][1])
        self.assertEqual((voice.text, self.reader.object(voice)["role"]), ("SWR alarm on", "alert"))

    def test_a_reader_presses_a_button(self):
        before = len(self.meter.texts())
        self.reader.ask("act", self.program.part("slow").hwnd)
        self.wait_until(lambda: self.meter.texts()[before:] == ["2M"], "the meter to be told", 5)


class ByKeyboardAlone(AccessibilityTest):

    def test_a_session(self):
        self.assertEqual(self.program.control(text="Meter found").text, "Meter found")
        # A range: into the group at the chosen one, five up, and press.
        self.tab_to("forward range 8")
        self.desktop.key(*["Up"] * 4, "space")
        self.wait_until(lambda: self.value("forward graph") == "460 of 1000 watts", "the range", 5)
        # A trim, in the panel.
        self.desktop.key("F2")
        self.wait_until(lambda: self.program.control(text="Orvane Meter Setup"), "the panel", 8)
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


if __name__ == "__main__":
    unittest.main()
