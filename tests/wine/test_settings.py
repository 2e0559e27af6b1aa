"""What the program keeps between two runs, and how it ends. What it makes of odd files is tested without a screen."""

import os
import subprocess
import time
import unittest

import harness

# From the request to the end of the process: five pauses of 250 and 50 ms, and what a busy machine adds.
EXIT_SECONDS = 2
# The default place, 100 twips from the left and from the top, is no whole number of pixels. The window stands on
# pixel 7, which is 105 twips.
DEFAULTS = {
    "METER-SETTINGS": {"PKTNOTIFY": "False"},
    "USER-SETTINGS": {
        "FORM-ON-TOP": "False", "FORM-TOP": "105", "FORM-LEFT": "105", "FORM-REGION": "1", "F-PWR-INDEX": "8",
        "R-PWR-INDEX": "8", "CLIENT-APP": "OVClient", "CLIENT-MSG-ID": "14300",
    },
}


class Settings(harness.OrvaneTest):
    def setUp(self):
        self.meter = self.start_meter()

    def end(self, program, request):
        """Has the program ended by request(). It must not take long, nor leave the meter streaming."""
        start = time.monotonic()
        request()
        self.assertEqual(program.wait_exit(EXIT_SECONDS + 5), 0)
        self.assertLess(time.monotonic() - start, EXIT_SECONDS)
        self.wait_until(lambda: self.meter.heard()[-1].text == "port closed", "the port to be closed", 5)
        self.assertEqual(self.meter.texts()[-1], "D0")

    def test_first_run_writes_the_defaults_and_the_next_finds_what_was_chosen(self):
        program = self.start_program()
        self.assertEqual(program.main.rect[:2], (7, 7))
        self.meter.wait_for_stream()
        self.assertEqual(program.settings(), {})
        self.end(program, lambda: program.post(harness.WM_CLOSE))
        self.assertEqual(program.settings(), DEFAULTS)

        program.settings_path.write_text("[METER-SETTINGS]\nCALL-MSG=kept\n[USER-SETTINGS]\nFORM-TOP=1500\nFORM-LEFT=3000\n")
        scale = ("0", "100.0", "200")
        for chosen in (False, True):
            program = self.start_program(folder=program.folder)
            self.assertEqual(program.main.rect[:2], (200, 100))
            if not chosen:
                program.click(program.part("forward range 2"))
            self.wait_until(lambda: program.scale("forward") == scale, f"the scale {scale}")
            self.end(program, lambda: program.click(program.part("close")))
        self.assertEqual(program.settings(), {
            "METER-SETTINGS": {"CALL-MSG": "kept", "PKTNOTIFY": "False"},
            "USER-SETTINGS": {**DEFAULTS["USER-SETTINGS"], "FORM-TOP": "1500", "FORM-LEFT": "3000", "F-PWR-INDEX": "2"}})

    def test_second_copy_goes_away_and_touches_nothing(self):
        WS_EX_TOPMOST = 8
        first = self.start_program("[USER-SETTINGS]\nFORM-TOP=1500\nFORM-ON-TOP=True\n")
        self.wait_until(lambda: first.main.ex_style & WS_EX_TOPMOST, "the window to be on top", 3)
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

    def lock(self, folder):
        """Nothing can be made in the folder from now on. Rights alone do not keep root out."""
        if os.geteuid() != 0:
            folder.chmod(0o555)
            self.addCleanup(folder.chmod, 0o755)
        elif subprocess.run(["chattr", "+i", folder], capture_output=True).returncode == 0:
            self.addCleanup(subprocess.run, ["chattr", "-i", folder], check=True)
        else:
            self.skipTest("root cannot be kept from writing on this file system")

    def test_folder_that_cannot_be_written_is_told_at_the_start_and_the_program_goes_on(self):
        folder = self.make_folder()
        files = sorted(path.name for path in folder.iterdir())
        self.lock(folder)
        program = self.start_program(folder=folder)
        self.wait_until(lambda: program.text("status").startswith("Settings cannot be saved here"),
                        "the status line to tell", 4)
        self.meter.wait_for_stream()
        self.meter.command("power 120 20")
        self.wait_until(lambda: program.readouts()[0] == "100", "a reading", 5)
        self.assertEqual(program.close(), 0)
        self.assertEqual(sorted(path.name for path in folder.iterdir()), files)


if __name__ == "__main__":
    unittest.main()
