"""What the program keeps between two runs, and how it ends."""

import time
import unittest

import face
import harness

# From the request to the end of the process: five pauses of 250 and 50 ms, and what a busy machine adds.
EXIT_SECONDS = 2
DEFAULTS = {
    "METER-SETTINGS": {"PKTNOTIFY": "False"},
    "USER-SETTINGS": {
        "FORM-ON-TOP": "False", "FORM-TOP": "105", "FORM-LEFT": "105", "FORM-REGION": "1", "F-PWR-INDEX": "8",
        "R-PWR-INDEX": "8", "CLIENT-APP": "OVClient", "CLIENT-MSG-ID": "14300",
    },
}
# The default place, 100 twips from the left and from the top, is no whole number of pixels. The window stands on
# pixel 7, which is 105 twips.
DEFAULT_CORNER = (7, 7)


class Shutdown(harness.OrvaneTest):
    def end(self, program, request):
        """Has the program ended by request(); returns its status. It must not take long."""
        start = time.monotonic()
        request()
        status = program.wait_exit(EXIT_SECONDS + 5)
        self.assertLess(time.monotonic() - start, EXIT_SECONDS)
        return status

    def assert_stream_was_stopped(self, meter):
        self.wait_until(lambda: meter.heard()[-1].text == "port closed", "the port to be closed", 5)
        self.assertEqual(meter.texts()[-1], "D0")

    def test_first_run_writes_the_defaults(self):
        meter = self.start_meter()
        program = self.start_program()
        self.assertEqual(program.main.rect[:2], DEFAULT_CORNER)
        self.assertEqual(program.text("port"), "2")
        meter.wait_for_stream()
        self.assertEqual(program.settings(), {})
        self.assertEqual(self.end(program, lambda: program.post(harness.WM_CLOSE)), 0)
        self.assert_stream_was_stopped(meter)
        self.assertEqual(program.settings(), DEFAULTS)

    def test_next_run_finds_place_and_ranges(self):
        settings = "[METER-SETTINGS]\nCALL-MSG=kept\n[USER-SETTINGS]\nFORM-TOP=1500\nFORM-LEFT=3000\nCLIENT-APP=My Log\n"
        meter = self.start_meter()
        program = self.start_program(settings)
        self.assertEqual(program.main.rect[:2], (200, 100))
        meter.wait_for_stream()
        program.click(program.part("forward range 2"))
        program.click(program.part("reflected range 4"))
        scales = {"forward": ("0", "100.0", "200"), "reflected": ("0", "125.0", "250")}
        for graph, numbers in scales.items():
            self.wait_until(lambda: program.scale(graph) == numbers, f"the {graph} scale {numbers}")
        self.assertEqual(self.end(program, lambda: program.click(program.part("close"))), 0)
        self.assert_stream_was_stopped(meter)
        expected = {
            "METER-SETTINGS": {"CALL-MSG": "kept", "PKTNOTIFY": "False"},
            "USER-SETTINGS": {**DEFAULTS["USER-SETTINGS"], "FORM-TOP": "1500", "FORM-LEFT": "3000",
                              "F-PWR-INDEX": "2", "R-PWR-INDEX": "4", "CLIENT-APP": "My Log"},
        }
        self.assertEqual(program.settings(), expected)

        again = self.start_program(folder=program.folder)
        self.assertEqual(again.main.rect[:2], (200, 100))
        for graph, numbers in scales.items():
            self.wait_until(lambda: again.scale(graph) == numbers, f"the {graph} scale {numbers} of the second run")

    def test_can_be_closed_while_it_searches(self):
        meter = self.start_meter("--do", "mute on")
        program = self.start_program("[USER-SETTINGS]\nF-PWR-INDEX=5\n")
        self.wait_until(lambda: "v?" in meter.texts(), "the search")
        self.assertEqual(self.end(program, lambda: program.post(harness.WM_CLOSE)), 0)
        self.assert_stream_was_stopped(meter)
        self.assertEqual(program.settings()["USER-SETTINGS"]["F-PWR-INDEX"], "5")


class Start(harness.OrvaneTest):
    def setUp(self):
        self.meter = self.start_meter()

    def test_unusable_values_are_told_in_one_box(self):
        program = self.start_program("[USER-SETTINGS]\nFORM-TOP=abc\nFORM-LEFT=3000\nCLIENT-MSG-ID=99999999999\n",
                                     wait_for_window=False)
        title, *texts = program.wait_for_box()
        self.assertEqual(title, "Orvane Lite")
        self.assertIn("FORM-TOP=abc", "\n".join(texts))
        self.assertIn("CLIENT-MSG-ID=99999999999", "\n".join(texts))
        self.assertNotIn("FORM-LEFT", "\n".join(texts))
        program.press_in_box()
        program.wait_for_window()
        self.assertEqual(program.main.rect[:2], (200, DEFAULT_CORNER[1]))
        self.meter.wait_for_stream()
        self.assertIsNone(program.message_box())

    def test_on_top_is_restored(self):
        WS_EX_TOPMOST = 8
        for value, style in (("True", WS_EX_TOPMOST), ("False", 0)):
            with self.subTest(value=value):
                program = self.start_program(f"[USER-SETTINGS]\nFORM-ON-TOP={value}\n")
                self.wait_until(lambda: program.main.ex_style & WS_EX_TOPMOST == style, f"on top: {value}", 3)
                program.kill()

    def test_file_held_by_another_program_is_left_alone(self):
        folder = self.make_folder("[USER-SETTINGS]\nFORM-TOP=1500\nFORM-LEFT=3000\nFORM-REGION=0\n")
        settings = folder / harness.SETTINGS
        before = settings.read_bytes()
        with self.desktop.inspector.file_held(settings):
            program = self.start_program(folder=folder)
            self.assertEqual(program.view, face.FULL)
            self.wait_until(lambda: program.text("status").startswith("Settings file in use: not saved"),
                            "the status line to tell", 4)
            self.assertEqual(program.main.rect[:2], DEFAULT_CORNER)
        # Defaults must not replace what the operator has, though the file is free again.
        self.assertEqual(program.close(), 0)
        self.assertEqual(settings.read_bytes(), before)

    def test_second_copy_goes_away_and_touches_nothing(self):
        first = self.start_program("[USER-SETTINGS]\nFORM-TOP=1500\nFORM-LEFT=3000\n")
        self.meter.wait_for_stream()
        before = first.settings_path.read_bytes(), first.settings_path.stat().st_mtime_ns
        second = self.start_program(folder=first.folder, wait_for_window=False)
        box = second.wait_for_box()
        self.assertEqual(box[0], "Orvane Lite")
        self.assertIn("Orvane Lite is Already Running. Just 1 Instance Is Required.", box)
        self.assertEqual([window.text for window in second.controls(class_name="Button")], ["OK"])
        second.click("OK")
        self.assertEqual(second.wait_exit(5), 0)
        self.assertEqual((first.settings_path.read_bytes(), first.settings_path.stat().st_mtime_ns), before)
        self.meter.command("power 300 75")
        self.wait_until(lambda: first.readouts()[0] == "225", "the first copy to go on")
        self.assertNotIn("port closed", [heard.text for heard in self.meter.heard()])


if __name__ == "__main__":
    unittest.main()
