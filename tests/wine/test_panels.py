"""The settings panels, used as a person does by the mouse: with lists, scroll bars and text boxes of the system's. By
the keyboard alone: test_accessibility.py; what is sent and kept: tests/window."""

import unittest

import harness

METER_PANEL, PROGRAM_PANEL = "Orvane Meter Setup", "Program Settings"
WS_EX_TOPMOST = 8


class Panels(harness.OrvaneTest):
    def setUp(self):
        self.meter = self.start_meter()
        self.program = self.start_program("[USER-SETTINGS]\nFORM-TOP=3000\nFORM-LEFT=3000\n")
        self.meter.wait_for_stream()
        self.wait_until(lambda: self.program.readouts()[0], "readings", 5)

    def panel(self, caption):
        """The open panel with this caption, or None."""
        return next((w for w in self.program.controls(text=caption) if w.class_name == "OrvanePanel"), None)

    def open_by_menu(self, menu, steps, caption):
        self.program.choose(menu, steps)
        return self.wait_until(lambda: self.panel(caption), f"the panel {caption}", 8)

    def inside(self, group, class_name):
        """The control of a class in the group with a caption."""
        windows = self.program.windows()
        frame = next(w for w in windows if w.text == group and w.visible and w.class_name != "Button")
        return next(w for w in windows if w.parent == frame.hwnd and w.class_name.lower() == class_name.lower())

    def pick(self, combo, entry):
        """Chooses a line of a list: opened by the mouse, chosen by arrow keys."""
        chosen = self.program.items(combo)[1]
        self.program.click(combo)
        self.desktop.key(*["Down" if entry > chosen else "Up"] * abs(entry - chosen), "Return")
        self.wait_until(lambda: self.program.items(combo)[1] == entry, f"the line {entry}", 5)

    def write(self, edit, text):
        self.program.click(edit)
        self.desktop.key("ctrl+a")
        self.desktop.type(text)

    def test_every_setting_reaches_the_meter_in_order(self):
        program = self.program
        self.open_by_menu("settings menu", 1, METER_PANEL)
        self.wait_until(lambda: self.meter.texts()[-1] == "D1", "the stream to go on", 5)
        self.meter.command("power 321 0")
        self.wait_until(lambda: program.readouts()[0] == "321", "live readings beside the panel", 5)
        for group, entry in (("Operation Mode", 1), ("VSWR Alarm", 2), ("Low Pwr Alarm", 3), ("Display Intensity", 1),
                             ("Bargraph Range Scale", 2), ("Relay Polarity", 1)):
            self.pick(self.inside(group, "ComboBox"), entry)
        for group, at_top, clicks in (("Fwd Pwr Trim", True, 2), ("Ref Pwr Trim", False, 3)):
            left, top, right, bottom = self.inside(group, "ScrollBar").rect
            for _ in range(clicks):
                self.desktop.click((left + right) // 2, top + 6 if at_top else bottom - 6)
        self.assertEqual([self.inside(f"{which} Pwr Trim", "Static").text for which in ("Fwd", "Ref")], ["2", "-3"])
        self.write(self.inside("Callsign / Message", "Edit"), "CQ 10")
        self.wait_until(lambda: self.inside("Callsign / Message", "Edit").text == "CQ 1Ø", "the slashed zero", 5)
        program.click("Display  Message")
        before = len(self.meter.texts())
        program.click("&Apply")
        self.wait_until(lambda: program.text("status") == "Paramater Update Complete", "the update's end", 15)
        self.assertEqual(self.meter.texts()[before:],
                         ["CCQ 1\\xD8", "C?", "T2", "T?", "t-3", "t?", "P1", "P?", "S0", "S?", "b2", "b?", "I1", "I?",
                          "l3", "l?", "V2", "V?", "M1", "M?"])
        program.click("&Close")
        self.wait_until(lambda: not self.panel(METER_PANEL), "the panel to close", 5)
        self.assertEqual(program.focus().hwnd, program.part("settings menu").hwnd, "the keyboard is back")

    def test_client_position_and_speed(self):
        program = self.program
        client = self.start_client(caption="Station Log")
        self.open_by_menu("settings menu", 2, PROGRAM_PANEL)
        port, speed = program.controls(class_name="ComboBox")
        self.assertTrue(program.items(port)[0][program.items(port)[1]].startswith("COM2"), program.items(port))
        self.write(self.inside("Messaging Client", "Edit"), "Station Log")
        self.wait_until(client.messages, "readings at the client, before Apply", 5)
        self.wait_until(lambda: program.control(text="Found: it gets each reading."), "that the client is told", 5)
        program.click("Stay On Top")
        self.pick(speed, 1)
        before = len(self.meter.texts())
        program.click("&Apply")
        self.wait_until(lambda: "D1" in self.meter.texts()[before:], "the meter found again", 15)
        self.assertTrue(program.main.ex_style & WS_EX_TOPMOST)
        self.assertEqual(program.close(), 0)
        kept = program.settings()
        self.assertEqual((kept["METER-SETTINGS"]["BAUD-RATE"], kept["USER-SETTINGS"]["CLIENT-APP"],
                          kept["USER-SETTINGS"]["FORM-ON-TOP"]), ("19200", "Station Log", "True"))


if __name__ == "__main__":
    unittest.main()
