"""The program that gets the readings: the example client, fed by the real program over a real serial line."""

import time
import unittest

import harness
from harness import Message

TIMEOUT_SECONDS = 1.0  # that the program grants a client
FIRST_PAUSE_SECONDS = 5.0  # that it leaves a client alone which did not answer
BUSY_SECONDS = 0.7  # what a busy machine adds


class ClientTest(harness.OrvaneTest):
    def start_streaming(self, settings=None):
        """A program with a meter that sends its readings."""
        self.meter = self.start_meter()
        self.program = self.start_program(settings)
        self.meter.wait_for_stream()

    def wait_for_message(self, client, expected):
        self.wait_until(lambda: client.messages()[-1:] == [expected], f"{expected} at the client", 5)

    def test_numbers_arrive_as_digits_with_a_nul(self):
        self.start_streaming()
        client = self.start_client()
        for forward, reflected, data in ((100, 4, b"96\0"), (1250, 0, b"1250\0"), (7, 0, b"7\0"), (0, 0, b"0\0")):
            with self.subTest(forward=forward, reflected=reflected):
                self.meter.command(f"power {forward} {reflected}")
                self.wait_for_message(client, Message(14300, len(data), data, False))
                self.wait_until(lambda: client.shown() == (str(forward - reflected), "watts forward"), "the window", 2)
        self.meter.command("mute on")
        self.wait_until(lambda: client.shown() == ("0", "no readings"), "the client to see that nothing comes", 8)

    def test_caption_and_tag_come_from_the_settings_file(self):
        self.start_streaming("[USER-SETTINGS]\nCLIENT-APP=Sender \xfc 2\nCLIENT-MSG-ID=-77\n")
        self.meter.command("power 388 0")
        stranger = self.start_client()
        named = self.start_client("--tag", "-77", caption="Sender \xfc 2")
        expected = Message(2**32 - 77, 4, b"388\0", False)
        self.wait_for_message(named, expected)
        self.assertEqual(stranger.shown(), ("\u2013", "no readings"))
        named.kill()
        # The log is shared; from here on it is that of a client which knows no such tag.
        refusing = self.start_client(caption="Sender \xfc 2")
        self.wait_for_message(refusing, expected._replace(refused=True))
        self.assertEqual(refusing.shown(), ("\u2013", "no readings"))

    def test_hanging_client_holds_the_readings_for_its_time_out_only(self):
        self.start_streaming()
        self.meter.command("power 100 0")
        self.wait_until(lambda: self.program.readouts()[0] == "100", "the readout")
        hanging = self.start_client("--hang", "60000")
        self.wait_until(hanging.messages, "the message that it hangs in", interval=0.01)
        held = time.monotonic()
        # This comes while the program waits; said only once, it is lost or shown.
        self.meter.command("say !HELD UP")
        self.wait_until(lambda: self.program.text("status") == "!HELD UP", "the notice that had to wait", interval=0.01)
        self.assertLess(time.monotonic() - held, TIMEOUT_SECONDS + BUSY_SECONDS)
        # Left alone, it costs nothing.
        for forward in (400, 500, 600):
            changed = time.monotonic()
            self.meter.command(f"power {forward} 0")
            self.wait_until(lambda: self.program.readouts()[0] == str(forward), f"{forward} W", interval=0.01)
            self.assertLess(time.monotonic() - changed, BUSY_SECONDS)
        self.assertLess(time.monotonic() - held, FIRST_PAUSE_SECONDS)
        self.assertEqual([message.data for message in hanging.messages()], [b"100\0"])
        # Somebody ends it and starts it again: it need not wait until the pause is over.
        hanging.kill()
        self.wait_for_message(self.start_client(), Message(14300, 4, b"600\0", False))


if __name__ == "__main__":
    unittest.main()
