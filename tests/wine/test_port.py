"""Ports that are not there, and a meter at another line speed."""

import time
import unittest

import harness

NO_PORT = ["No Port Selected", "Comm Port = 0 No Port Selected. Please Select a Comm Port."]
# The search tries once a second; a box that came again would be there by then.
SEARCH_SECONDS = 1.5


class NoPort(harness.OrvaneTest):
    def assert_told_once(self, comm_port):
        program = self.start_program(f"[METER-SETTINGS]\nCOMM-PORT={comm_port}\n")
        self.assertEqual(program.text("port"), comm_port)
        box = program.wait_for_box()
        self.assertEqual([text for text in box if text in NO_PORT], NO_PORT)
        program.press_in_box()
        time.sleep(SEARCH_SECONDS)
        self.assertIsNone(program.message_box())
        self.assertEqual(program.close(), 0)
        self.assertEqual(program.settings()["METER-SETTINGS"], {"COMM-PORT": comm_port, "PKTNOTIFY": "False"})

    def test_no_port_chosen(self):
        self.assert_told_once("0")

    def test_port_that_the_machine_does_not_have(self):
        self.assert_told_once("7")

    def test_port_without_its_device(self):
        self.assert_told_once("2")


class LineSpeed(harness.OrvaneTest):
    def test_slow_meter_is_found_and_its_speed_kept(self):
        meter = self.start_meter("--baud", "9600", "--do", "power 100 4")
        program = self.start_program("[METER-SETTINGS]\nBAUD-RATE=19200\n")
        # What the status line tells is what is tried next.
        for speed in ("38400", "19200", "9600"):
            self.wait_until(lambda: program.text("status") == f"{speed},N,8,1", f"the step to {speed}", 6)
        meter.wait_for_stream()
        self.assertEqual(program.settings()["METER-SETTINGS"], {"COMM-PORT": "2", "BAUD-RATE": "9600"})
        self.wait_until(lambda: program.readouts() == ("96", "4", "1.50"), "the readings")
        self.assertEqual({heard.verdict for heard in meter.heard()} & {"noise", "accepted"}, {"noise", "accepted"})
        self.assertEqual(program.close(), 0)

        heard_before = len(meter.heard())
        again = self.start_program(folder=program.folder)
        self.wait_until(lambda: again.readouts() == ("96", "4", "1.50"), "the readings of the second run")
        self.assertNotIn("noise", [heard.verdict for heard in meter.heard()[heard_before:]])


class Cable(harness.OrvaneTest):
    def test_pulled_cable_is_told_and_found_again(self):
        meter = self.start_meter("--do", "power 100 4")
        program = self.start_program()
        self.wait_until(lambda: program.readouts() == ("96", "4", "1.50"), "the readings")
        meter.command("unplug")
        self.wait_until(lambda: program.text("status") == "Port Lost", "the status line to tell", 4)
        self.wait_until(lambda: program.readouts() == ("", "", ""), "the old readings to go", 2)
        # Nobody is asked, neither now nor later. The meter lost its power with the cable: it does not stream.
        time.sleep(SEARCH_SECONDS)
        self.assertIsNone(program.message_box())
        meter.command("power 300 75")
        meter.command("reset")
        meter.command("plug")
        self.wait_until(lambda: program.readouts() == ("225", "75", "3.00"), "the readings after the return", 6)
        self.assertEqual(meter.texts().count("D1"), 2)
        self.assertIsNone(program.message_box())
        self.assertEqual(program.close(), 0)

    def test_twenty_times_out_and_in(self):
        meter = self.start_meter("--do", "power 100 0")
        program = self.start_program()
        self.wait_until(lambda: program.readouts()[0] == "100", "the readings")
        for turn in range(20):
            watts = 200 + turn
            with self.subTest(turn=turn):
                meter.command("unplug")
                self.wait_until(lambda: program.readouts() == ("", "", ""), "the old readings to go", 4)
                time.sleep(turn * 0.13)  # the return falls anywhere between two tries
                meter.command(f"power {watts} 0")
                meter.command("plug")
                returned = time.monotonic()
                self.wait_until(lambda: program.readouts()[0] == str(watts), "the readings after the return", 6)
                self.assertLess(time.monotonic() - returned, 3.5)
        self.assertIsNone(program.message_box())
        self.assertEqual(program.close(), 0)


if __name__ == "__main__":
    unittest.main()
