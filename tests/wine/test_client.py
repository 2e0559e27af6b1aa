"""The program that gets the readings: the example client, fed by the real program over a real serial line."""

import collections
import itertools
import os
import pathlib
import time
import unittest

import harness

# Beside the inspector, in the build folder.
CLIENT = pathlib.Path(os.environ.get("ORVANE_CLIENT",
                                     harness.INSPECTOR.parents[2] / "examples/client/ov_client.exe"))
TAG = 14300
TIMEOUT_SECONDS = 1.0  # that the program grants a client
FIRST_PAUSE_SECONDS = 5.0  # that it leaves a client alone which did not answer
BUSY_SECONDS = 0.7  # what a busy machine adds

Message = collections.namedtuple("Message", "tag count data refused")


class ExampleClient:
    """ov_client.exe with a log of what came to it."""

    def __init__(self, desktop, folder, caption="OVClient", *arguments):
        self._desktop, self._log = desktop, folder / "client.log"
        self._log.unlink(missing_ok=True)
        before = {window.hwnd for window in desktop.inspector.windows()}
        self.process = desktop.prefix.start(CLIENT, "--caption", caption, "--log", harness.windows_path(self._log),
                                            *arguments)
        # Not by its caption: one that hangs already does not tell it.
        self.window = harness.wait_until(
            lambda: next((window for window in desktop.inspector.windows()
                          if window.class_name == "OrvaneExampleClient" and window.hwnd not in before), None),
            "the client's window")

    def messages(self):
        """All messages so far."""
        # The line that is just being written is left out.
        lines = self._log.read_text().split("\n")[:-1] if self._log.exists() else []
        words = [line.split() for line in lines]
        return [Message(int(w[0]), int(w[1]), bytes.fromhex(w[2]), w[3:] == ["refused"]) for w in words]

    def readings(self):
        """The readings so far, as numbers. Each must be what it has to be, byte for byte."""
        for message in self.messages():
            expected = Message(TAG, len(message.data), b"%d\0" % int(message.data[:-1]), False)
            if message != expected:
                raise AssertionError(f"{message} instead of {expected}")
        return [int(message.data[:-1]) for message in self.messages()]

    def shown(self):
        """The texts of its window: number and note."""
        return tuple(window.text for window in self._desktop.inspector.windows()
                     if window.parent == self.window.hwnd)

    def close(self):
        """Closes it as its user does."""
        if self.process.poll() is None:
            self._desktop.inspector.ask("close", self.window.hwnd)
            self.process.wait(10)

    def kill(self):
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()


class ClientTest(harness.OrvaneTest):
    def start_streaming(self, settings=None, *arguments):
        """A program with a meter that sends its readings."""
        self.meter = self.start_meter(*arguments)
        self.program = self.start_program(settings)
        self.meter.wait_for_stream()

    def start_example(self, *arguments, caption="OVClient"):
        client = ExampleClient(self.desktop, self._folder, caption, *arguments)
        self.addCleanup(client.kill)
        return client

    def assert_power_arrives(self, client, forward, reflected=0, timeout=5.0):
        """Gives the meter a power; the client must be told of it."""
        self.meter.command(f"power {forward} {reflected}")
        wanted = forward - reflected
        self.wait_until(lambda: client.readings()[-1:] == [wanted], f"{wanted} at the client", timeout)


class Readings(ClientTest):
    def test_numbers_arrive_as_digits_with_a_nul(self):
        self.start_streaming()
        client = self.start_example()
        self.wait_until(client.messages, "a first message")
        # Rising and falling.
        for forward, reflected in ((7, 0), (100, 4), (1250, 0), (1000, 0), (7, 0), (0, 0)):
            with self.subTest(forward=forward, reflected=reflected):
                self.assert_power_arrives(client, forward, reflected)
                self.assertEqual(self.program.text("forward readout"), str(forward - reflected))
                self.wait_until(lambda: client.shown() == (str(forward - reflected), "watts forward"), "the window", 2)
        self.meter.command("mute on")
        self.wait_until(lambda: client.shown() == ("0", "no readings"), "the client to see that nothing comes", 8)

    def test_less_than_nothing_is_sent_as_it_is_shown(self):
        self.start_streaming()
        client = self.start_example()
        self.assert_power_arrives(client, 7)
        # More comes back than goes out.
        self.meter.command("power 5 2000")
        self.wait_until(lambda: client.readings()[-1] == 0, "0 at the client")
        sent = self.meter.last_packet()
        self.assertEqual((sent["fwd"], sent["ref"]), (5, 2000))
        self.wait_until(lambda: self.program.readouts()[:2] == ("0", "2000"), "the readouts", 2)
        self.assertEqual(set(client.readings()) - {0, 7}, set())

    def test_client_may_start_and_end_while_readings_flow(self):
        self.start_streaming()
        for forward in (100, 200, 300):
            with self.subTest(forward=forward):
                client = self.start_example()
                self.assert_power_arrives(client, forward)
                client.close()
                self.assertEqual(client.process.returncode, 0)
                # Without a client the meter is read on.
                self.meter.command(f"power {forward + 50} 0")
                self.wait_until(lambda: self.program.readouts()[0] == str(forward + 50), "the readout to go on", 3)
        self.assertIsNone(self.program.message_box())

    def test_caption_and_tag_come_from_the_settings_file(self):
        self.start_streaming("[USER-SETTINGS]\nCLIENT-APP=Sender \xfc 2\nCLIENT-MSG-ID=-77\n")
        self.meter.command("power 388 0")
        stranger = self.start_example()
        named = self.start_example("--tag", "-77", caption="Sender \xfc 2")
        expected = Message(2**32 - 77, 4, b"388\0", False)
        self.wait_until(lambda: named.messages()[-1:] == [expected], "the named client to be told")
        self.wait_until(lambda: named.shown() == ("388", "watts forward"), "the window", 2)
        self.assertEqual(stranger.shown(), ("\u2013", "no readings"))
        named.close()
        # The log is shared; from here on it is that of a client which knows no such tag.
        refusing = self.start_example(caption="Sender \xfc 2")
        self.wait_until(lambda: refusing.messages()[-1:] == [expected._replace(refused=True)], "a refused message")
        self.assertEqual(refusing.shown(), ("\u2013", "no readings"))


class BadClients(ClientTest):
    def test_slow_client_costs_time_but_no_reading(self):
        self.start_streaming()
        client = self.start_example("--hang", "250")
        self.wait_until(client.messages, "a first message")
        # Rising all the time, so that each packet is a new number; five packets a second, of which the program can
        # pass on four.
        self.meter.command("scenario sweep")
        time.sleep(6)
        self.meter.command("mute on")
        sent = [round(fwd) - round(ref) for fwd, ref in self.packets(25)]
        self.assertEqual(sorted(set(sent)), sent)
        self.wait_until(lambda: client.readings()[-1] == sent[-1], "the last reading at the client", 10)
        # A scale row that the meter sends in between has the number before it passed on once more.
        received = [number for number, _ in itertools.groupby(client.readings())]
        self.assertEqual(received[-len(sent):], sent)

    def packets(self, count):
        """Forward and reflected power of the packets that the meter sent last."""
        lines = [line.split() for line in self.meter.command(f"packets {count}")]
        values = [dict(zip(words[1::2], words[2::2])) for words in lines]
        return [(float(packet["fwd"]), float(packet["ref"])) for packet in values]

    def test_hanging_client_holds_the_readings_for_its_time_out_only(self):
        self.start_streaming()
        self.meter.command("power 100 0")
        self.wait_until(lambda: self.program.readouts()[0] == "100", "the readout")
        self.assertEqual(self.program.text("status"), "")
        hanging = self.start_example("--hang", "60000")
        self.wait_until(hanging.messages, "the message that it hangs in", interval=0.01)
        held = time.monotonic()
        # These come while the program waits. The notice is said only once: it is lost or shown.
        self.meter.command("say !HELD UP")
        self.meter.command("power 300 75")
        self.wait_until(lambda: self.program.readouts()[0] == "225", "the reading that had to wait", interval=0.01)
        self.assertLess(time.monotonic() - held, TIMEOUT_SECONDS + BUSY_SECONDS)
        self.assertEqual(self.program.text("status"), "!HELD UP")
        # Left alone, it costs nothing.
        for forward in (400, 500, 600, 700):
            changed = time.monotonic()
            self.meter.command(f"power {forward} 0")
            self.wait_until(lambda: self.program.readouts()[0] == str(forward), f"{forward} W", interval=0.01)
            self.assertLess(time.monotonic() - changed, BUSY_SECONDS)
        self.assertLess(time.monotonic() - held, FIRST_PAUSE_SECONDS)
        self.assertEqual(hanging.readings(), [100])
        # Somebody ends it and starts it again: it need not wait until the pause is over.
        hanging.kill()
        mended = self.start_example()
        self.assert_power_arrives(mended, 800, timeout=2)


if __name__ == "__main__":
    unittest.main()
