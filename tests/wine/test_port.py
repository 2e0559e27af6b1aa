"""A port that is not there, a meter at another line speed, and a cable that is pulled."""

import time
import unittest

import harness


class Port(harness.OrvaneTest):
    def test_ports_that_do_not_open_are_told_once(self):
        for port in ("7", "2"):  # one that the machine does not have, and one without its device
            with self.subTest(port=port):
                program = self.start_program(f"[METER-SETTINGS]\nCOMM-PORT={port}\n")
                self.assertEqual(program.text("port"), port)
                self.assertEqual(program.wait_for_box()[0], "No Port Selected")
                program.click("OK")
                self.wait_until(lambda: not program.message_box(), "the box to go away", 5)
                time.sleep(1.5)  # the search tries once a second
                self.assertIsNone(program.message_box())
                self.assertEqual(program.close(), 0)

    def test_slow_meter_is_found_and_its_speed_kept(self):
        meter = self.start_meter("--baud", "9600", "--do", "power 100 4")
        program = self.start_program("[METER-SETTINGS]\nBAUD-RATE=19200\n")
        # What the status line tells is what is tried next.
        for speed in ("38400", "19200", "9600"):
            self.wait_until(lambda: program.text("status") == f"{speed},N,8,1", f"the step to {speed}", 6)
        self.wait_until(lambda: program.readouts() == ("96", "4", "1.50"), "the readings")
        self.assertEqual(program.settings()["METER-SETTINGS"], {"COMM-PORT": "2", "BAUD-RATE": "9600"})
        self.assertTrue({"noise", "accepted"} <= {heard.verdict for heard in meter.heard()})

    def test_pulled_cable_is_told_and_found_again(self):
        meter = self.start_meter("--do", "power 100 4")
        program = self.start_program()
        self.wait_until(lambda: program.readouts() == ("96", "4", "1.50"), "the readings")
        for turn in range(20):
            meter.command("unplug")
            self.wait_until(lambda: program.text("status") == "Port Lost", "the status line to tell", 4)
            self.wait_until(lambda: program.readouts() == ("", "", ""), "the old readings to go", 2)
            time.sleep(turn * 0.13)  # the return falls anywhere between two tries
            meter.command(f"power {300 + turn} 75")
            if turn == 0:
                meter.command("reset")  # it lost its power with the cable: it does not stream
            meter.command("plug")
            returned = time.monotonic()
            self.wait_until(lambda: program.readouts()[0] == str(225 + turn), "the readings after the return", 6)
            self.assertLess(time.monotonic() - returned, 6 if turn == 0 else 3.5)
        self.assertIsNone(program.message_box(), "nobody is asked")
        self.assertEqual(program.close(), 0)


if __name__ == "__main__":
    unittest.main()
