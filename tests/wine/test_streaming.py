"""The way from the program's start to readings on the face, over a real serial line."""

import unittest

import harness

QUERIES = ["B?", "b?", "U?", "W?", "w?", "C?", "I?", "l?", "L?", "M?", "P?", "R?", "S?", "T?", "t?", "V?"]
# The times are those at which the simulated meter read the commands. How late it does that varies by this much
# on a busy machine, in milliseconds.
JITTER = 25


class Streaming(harness.SharedProgramTest):
    def test_meter_is_asked_in_order_and_in_time(self):
        heard = [record for record in self.meter.heard() if record.verdict != "-"]
        self.assertEqual([record.text for record in heard], ["D0", "v?", "D0", *QUERIES, "D1"])
        self.assertEqual({record.verdict for record in heard}, {"accepted", "answered"})
        times = [record.time for record in heard]
        self.assertGreater(times[1] - times[0], 250 - JITTER, "from D0 to v?")
        self.assertGreater(times[2] - times[1], 250 + 50 - JITTER, "from v? to D0")
        gaps = [after - before for before, after in zip(times[2:18], times[3:19])]
        self.assertGreater(min(gaps), 50 - JITTER, "from query to query")
        self.assertGreater(sum(gaps), 50 * len(QUERIES) - JITTER, "all queries")
        self.assertGreater(times[19] - times[18], 250 + 50 - JITTER, "from V? to D1")

    def test_readouts_show_what_the_meter_sent(self):
        # Watts, what the three readouts show, and the numbers under both graphs: the meter's range 100/500/2500.
        table = [
            ((100, 4), ("96", "4", "1.50"), ("0", "50", "100")),
            ((1500, 60), ("1440", "60", "1.50"), ("0", "1250", "2500")),
            ((300, 75), ("225", "75", "3.00"), ("0", "250", "500")),
            ((7, 0), ("7", "0", ""), ("0", "50", "100")),
            ((0, 0), ("0", "0", ""), ("0", "50", "100")),
            ((2400, 1), ("2399", "1", "1.04"), ("0", "1250", "2500")),
        ]
        for watts, readouts, scale in table:
            with self.subTest(watts=watts):
                self.meter.command("power {} {}".format(*watts))
                self.wait_until(lambda: self.program.readouts() == readouts, f"the readouts {readouts}")
                sent = self.meter.last_packet()
                self.assertEqual((sent["fwd"], sent["ref"]), watts)
                vswr = f"{sent['vswr']:.2f}" if sent["vswr"] > 1 else ""
                self.assertEqual(readouts, (f"{sent['fwd'] - sent['ref']:.0f}", f"{sent['ref']:.0f}", vswr))
                for graph in ("forward", "reflected"):
                    self.wait_until(lambda: self.program.scale(graph) == scale, f"the {graph} scale {scale}")

    def test_face_names_port_and_call_sign(self):
        self.assertEqual(self.program.text("port"), "2")
        self.assertEqual(self.program.text("message"), "ORVANE")
        self.assertEqual(self.program.text("status"), "")


if __name__ == "__main__":
    unittest.main()
