"""Drives the real Orvane.exe in a real window in Wine, with a simulated meter on a real serial line.

A test derives from OrvaneTest. Display and prefix are shared by the tests of a class, because they take a second;
each test gets a fresh copy of the program folder and a fresh meter:

    class Readings(harness.OrvaneTest):
        def test_power_is_shown(self):
            meter = self.start_meter()
            program = self.start_program()
            meter.command("power 100 5")
            self.wait_until(lambda: program.control(text="100"), "the power readout")

ctest says where program, simulator and inspector are (ORVANE_DIST, ORVANE_SIM, ORVANE_INSPECT); started by hand the
build folders of the presets win64 and native are taken.
"""

import collections
import configparser
import contextlib
import json
import os
import pathlib
import queue
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "scripts"))
import face  # noqa: E402
import wine_lab  # noqa: E402

DIST = pathlib.Path(os.environ.get("ORVANE_DIST", ROOT / "dist/win64"))
SIMULATOR = pathlib.Path(os.environ.get("ORVANE_SIM", ROOT / "build/native/orvane-sim"))
INSPECTOR = pathlib.Path(os.environ.get("ORVANE_INSPECT", ROOT / "build/win64/tests/wine/win_inspect.exe"))
# Beside the inspector, in the build folder.
CLIENT = pathlib.Path(os.environ.get("ORVANE_CLIENT", INSPECTOR.parents[2] / "examples/client/ov_client.exe"))
SCREENSHOTS = ROOT / "build" / "screenshots"

CAPTION = "Orvane Lite"
PROGRAM = "Orvane.exe"
SETTINGS = "Orvane.dat"
PORT = "COM2"

WM_CLOSE, WM_RBUTTONUP, WM_LBUTTONDBLCLK = 0x10, 0x205, 0x203


def wait_until(condition, what="the condition", timeout=10.0, interval=0.05):
    """Returns the first true value of condition(); fails after timeout seconds, naming what was waited for."""
    deadline = time.monotonic() + timeout
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > deadline:
            raise AssertionError(f"waited {timeout:g} s in vain for {what}")
        time.sleep(interval)


def center(rect):
    """The middle of a rectangle (left, top, right, bottom)."""
    left, top, right, bottom = rect
    return (left + right) // 2, (top + bottom) // 2


def copy_program(folder, settings=None):
    """Copies the program into a folder; settings is the text of its settings file, None for none."""
    shutil.copytree(DIST, folder, dirs_exist_ok=True, ignore=shutil.ignore_patterns(SETTINGS + "*"))
    folder = pathlib.Path(folder)
    if settings is not None:
        (folder / SETTINGS).write_bytes(settings.replace("\n", "\r\n").encode("cp1252"))
    return folder


def windows_path(path):
    """How Windows programs name a file of this machine."""
    return "Z:" + str(path).replace("/", "\\")


class LineReader:
    """The lines of a pipe, read in the background so that the writer is never held up."""

    def __init__(self, pipe):
        self._new = queue.SimpleQueue()
        self._thread = threading.Thread(target=self._read, args=(pipe,), daemon=True)
        self._thread.start()

    def _read(self, pipe):
        for line in pipe:
            self._new.put(line.rstrip("\r\n"))
        self._new.put(None)

    def next(self, timeout):
        """The next line; None at the end. Raises queue.Empty when none comes in time."""
        line = self._new.get(timeout=timeout)
        if line is None:
            self._new.put(None)
        return line

    def drain(self):
        """All lines that came since the last call."""
        lines = []
        with contextlib.suppress(queue.Empty):
            while (line := self._new.get_nowait()) is not None:
                lines.append(line)
        return lines


Heard = collections.namedtuple("Heard", "time verdict text")


class Meter:
    """The simulated meter, as a process behind a pseudo-terminal that `link` points to."""

    def __init__(self, link, scenario=None, arguments=()):
        self.link = pathlib.Path(link)
        self.log_path = self.link.with_suffix(".log")
        self.log_path.unlink(missing_ok=True)  # of the test before; the simulator would go on in it
        command = [str(SIMULATOR), "--link", str(self.link), "--log", str(self.log_path)]
        if scenario:
            command += ["--scenario", scenario]
        self._process = subprocess.Popen(
            [*command, *arguments], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True, bufsize=1)
        self._output = LineReader(self._process.stdout)
        first = self._output.next(timeout=10)
        if not (first or "").startswith("device "):
            raise AssertionError(f"the simulated meter said {first!r}")
        self.device = first.removeprefix("device ")
        wait_until(self.link.exists, "the meter's line", 5)

    def command(self, text):
        """Gives the simulator a command, as a person at its standard input does; returns what it answered."""
        self._output.drain()
        self._process.stdin.write(text + "\n")
        self._process.stdin.flush()
        answer = [self._output.next(timeout=10), *self._output.drain()]
        if answer[0] is None or answer[0].startswith("error"):
            raise AssertionError(f"the simulated meter answered {text!r} with {answer[0]!r}")
        return answer

    @property
    def log(self):
        """The lines of its log so far."""
        return self.log_path.read_text("latin-1").splitlines() if self.log_path.exists() else []

    def heard(self):
        """The commands so far, each with its time in milliseconds, the verdict and its text; what happened to the
        port has the verdict "-"."""
        records = (line.split(maxsplit=2) for line in self.log)
        return [Heard(int(record[0]), record[1], record[2]) for record in records if len(record) == 3]

    def texts(self):
        """The texts of the commands so far, those that it refused included."""
        return [heard.text for heard in self.heard() if heard.verdict != "-"]

    def wait_for_stream(self, timeout=15):
        """Waits until the program found it and asked for readings."""
        wait_until(lambda: "D1" in self.texts(), "the program to start the stream", timeout)

    def stop(self):
        """Takes the meter away, as when its cable is pulled."""
        if self._process.poll() is None:
            self._process.send_signal(signal.SIGTERM)
            try:
                self._process.wait(5)
            except subprocess.TimeoutExpired:
                self._process.kill()
                self._process.wait()
        for pipe in (self._process.stdin, self._process.stdout):
            with contextlib.suppress(BrokenPipeError):
                pipe.close()


class Window:
    """What the inspector told about one window: hwnd, parent, owner, pid, program, class_name, text, visible, enabled,
    style, ex_style, and rect, which is (left, top, right, bottom) on the screen."""

    def __init__(self, fields):
        vars(self).update(fields, rect=tuple(fields["rect"]))

    @property
    def center(self):
        return center(self.rect)

    @property
    def size(self):
        left, top, right, bottom = self.rect
        return right - left, bottom - top

    def __repr__(self):
        state = ("" if self.visible else " hidden") + ("" if self.enabled else " disabled")
        return f"<{self.class_name} {self.text!r} {self.rect}{state}>"


# By the system's numbers
ROLES = {3: "scroll bar", 8: "alert", 10: "client", 18: "dialog", 20: "group", 30: "link", 40: "picture", 41: "label",
         42: "text", 43: "button", 44: "check box", 45: "choice", 46: "list", 48: "bar", 57: "menu button"}
STATES = {0x100000: "focusable", 0x10: "checked", 0x40: "readonly", 0x40000000: "popup", 0x400000: "linked",
          0x1: "unavailable", 0x8000: "invisible"}


def accessible_line(found):
    """One accessible object as text. That everything which is no decoration has a name is seen at once."""
    states = " ".join(word for bit, word in STATES.items() if found["state"] & bit)
    said = [ROLES.get(found["role"], str(found["role"])), found["name"] or "-", found["value"] or "-", states]
    while said[-1] in ("", "-"):
        said.pop()
    return "  " * found["level"] + " | ".join(said)


class Inspector:
    """win_inspect.exe, kept running: one question costs a millisecond."""

    def __init__(self, prefix):
        self._process = prefix.start(
            INSPECTOR, stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, bufsize=1)
        self._answers = LineReader(self._process.stdout)
        self._events = []

    def ask(self, verb, hwnd=0, *words, timeout=20):
        """Gives a command; returns the answer's objects, or None where it could not be done (no such window)."""
        self._process.stdin.write(" ".join(map(str, (verb, hwnd, *words))) + "\n")
        self._process.stdin.flush()
        answer = []
        while True:
            line = self._answers.next(timeout)
            if line is None:
                raise AssertionError("the inspector ended")
            fields = json.loads(line)
            if "end" in fields:
                return answer if fields["end"] else None
            (self._events if "event" in fields else answer).append(fields)

    def windows(self):
        """All windows of all programs, each top-level window followed by its children."""
        return [Window(fields) for fields in self.ask("list")]

    def window(self, hwnd):
        """One window as it is now; None when it is gone."""
        answer = self.ask("window", hwnd)
        return answer and Window(answer[0])

    # --- as a screen reader

    def tree(self, window):
        """What a window holds, outermost first, a line each: role, name, value, states, with blanks by depth."""
        return [accessible_line(found) for found in self.ask("tree", window.hwnd)]

    def object(self, window):
        """What a window is told as."""
        return self.ask("object", window.hwnd)[0]

    def events(self, seconds=0):
        """The events since the last call, as (word, window, milliseconds), after waiting for more; ask("watch") is
        their begin."""
        time.sleep(seconds)
        events = [*self._events, *map(json.loads, self._answers.drain())]
        self._events = []
        return [(event["event"], event["hwnd"], event["tick"]) for event in events]

    def close(self):
        self._process.stdin.close()
        try:
            self._process.wait(10)
        except subprocess.TimeoutExpired:
            self._process.kill()
            self._process.wait()
        self._process.stdout.close()


Message = collections.namedtuple("Message", "tag count data refused")


class Client:
    """The program that gets readings: ov_client.exe with a log of what came to it."""

    def __init__(self, desktop, folder, caption="OVClient", *arguments):
        self._desktop, self._log = desktop, folder / "client.log"
        self._log.unlink(missing_ok=True)
        before = {window.hwnd for window in desktop.inspector.windows()}
        self.process = desktop.prefix.start(CLIENT, "--caption", caption, "--log", windows_path(self._log), *arguments)
        # Not by its caption: one that hangs already does not tell it.
        self.window = wait_until(
            lambda: next((window for window in desktop.inspector.windows()
                          if window.class_name == "OrvaneExampleClient" and window.hwnd not in before), None),
            "the client's window")

    def messages(self):
        """All messages so far."""
        # The line that is just being written is left out.
        lines = self._log.read_text().split("\n")[:-1] if self._log.exists() else []
        words = [line.split() for line in lines]
        return [Message(int(w[0]), int(w[1]), bytes.fromhex(w[2]), w[3:] == ["refused"]) for w in words]

    def shown(self):
        """The texts of its window: number and note."""
        return tuple(window.text for window in self._desktop.inspector.windows()
                     if window.parent == self.window.hwnd)

    def kill(self):
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()


class Screen:
    """A picture of the whole virtual screen, to look at single pixels."""

    def __init__(self, rgb, width, height):
        self._rgb, self.width, self.height = rgb, width, height

    def pixel(self, x, y):
        """The colour (red, green, blue), 0 to 255 each."""
        at = (y * self.width + x) * 3
        return tuple(self._rgb[at:at + 3])

    def colors(self, rect):
        """How many pixels of a rectangle (left, top, right, bottom) have which colour."""
        left, top, right, bottom = rect
        return collections.Counter(self.pixel(x, y) for y in range(top, bottom) for x in range(left, right))


class Desktop:
    """A virtual display with one Wine prefix, an inspector in it, and mouse and keyboard."""

    def __init__(self, link, dpi=96, registry=()):
        self.dpi = dpi
        with contextlib.ExitStack() as undo:
            self.display = wine_lab.VirtualDisplay()
            undo.callback(self.display.close)
            self.prefix = wine_lab.Prefix({PORT: link}, dpi, self.display.name, registry)
            undo.callback(self.prefix.close)
            if "ORVANE_WINEDEBUG" not in os.environ:
                self.prefix.env["WINEDEBUG"] = "-all,warn+debugstr"  # what programs tell their debugger
            self.inspector = Inspector(self.prefix)
            undo.callback(self.inspector.close)
            self._wait_for_port(link)
            undo.pop_all()
        self._env = {**os.environ, "DISPLAY": self.display.name}

    def _wait_for_port(self, link):
        """Wine makes its ports while it starts, before it answers; no meter comes or goes meanwhile. A prefix
        without the port would fail each test of the class, far away from the reason."""
        self.inspector.windows()
        port = self.prefix.path / "dosdevices" / PORT.lower()
        if not port.is_symlink() or os.readlink(port) != str(link):
            raise AssertionError(f"Wine started without {PORT}: {self.ports()}")

    def ports(self):
        """Wine's serial ports and where they lead: for the tests that fail on it."""
        return {port.name: os.readlink(port) for port in (self.prefix.path / "dosdevices").glob("com*")}

    def xdotool(self, *arguments):
        subprocess.run(["xdotool", *map(str, arguments)], env=self._env, check=True, stdout=subprocess.DEVNULL)

    def click(self, x, y, button=1, repeat=1):
        """Clicks at a place on the screen: button 1 left, 2 middle, 3 right."""
        self.xdotool("mousemove", x, y)
        # X servers drop the enter event of a pointer that is moved and pressed in one go. And the button is held as
        # a hand holds it: a press on the face starts a drag, which must find the button still down.
        press = ("mousedown", button, "sleep", 0.12, "mouseup", button)
        self.xdotool(*press, *(("sleep", 0.06, *press) * (repeat - 1)))

    def move(self, x, y):
        self.xdotool("mousemove", x, y)

    def place_of(self, caption):
        """Where the X server has a window: its left and top edge. The program learns of a drag when it is over."""
        told = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", f"^{caption}$", "getwindowgeometry",
                               "--shell"], env=self._env, check=True, capture_output=True, text=True).stdout
        values = dict(line.split("=") for line in told.splitlines())
        return int(values["X"]), int(values["Y"])

    def key(self, *names):
        """Presses keys by their X names, as in key("Tab", "shift+F10")."""
        self.xdotool("key", "--delay", 30, *names)

    def type(self, text):
        self.xdotool("type", "--delay", 20, text)

    def screen(self):
        """The screen as it is now."""
        picture = subprocess.run(["import", "-silent", "-window", "root", "-depth", "8", "rgb:-"], env=self._env,
                                 check=True, capture_output=True)
        return Screen(picture.stdout, self.display.WIDTH, self.display.HEIGHT)

    def screenshot(self, path, rect=None):
        """Saves a picture (PNG), of a part of the screen when rect is given."""
        path = pathlib.Path(path)
        path.parent.mkdir(parents=True, exist_ok=True)
        crop = []
        if rect:
            left, top, right, bottom = rect
            crop = ["-crop", f"{right - left}x{bottom - top}+{left}+{top}", "+repage"]
        subprocess.run(["import", "-silent", "-window", "root", *crop, str(path)], env=self._env, check=True)
        return path

    def close(self):
        self.inspector.close()
        self.prefix.close()
        self.display.close()


class Program:
    """Orvane.exe, running from a folder of its own."""

    def __init__(self, desktop, folder):
        self.desktop, self.folder = desktop, pathlib.Path(folder)
        self.dpi = desktop.dpi
        self.settings_path = self.folder / SETTINGS
        # Copies that run already: two of them are told apart by their process.
        self._others = {window.pid for window in desktop.inspector.windows() if window.program == PROGRAM}
        self._pid, self._main, self._parts = None, None, {}
        # Beside the folder: in it are the program's own files only. Several runs of one folder follow each other.
        self._notes = self.folder.with_name(self.folder.name + ".notes")
        with open(self._notes, "ab") as notes:
            self.process = desktop.prefix.start(
                self.folder / PROGRAM, cwd=self.folder, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                stderr=notes)

    def wait_for_window(self, timeout=20):
        """Waits for the main window; fails at once when the program ends before."""
        wait_until(self._window_or_end, "the main window", timeout)

    def _window_or_end(self):
        if self.process.poll() is not None:
            raise AssertionError(f"the program ended with status {self.process.returncode} before it had a window")
        window = self.main
        return window and window.visible

    @property
    def notes(self):
        """The lines that the program told its debugger, such as why a port did not open."""
        return self._notes.read_text("latin-1").splitlines()

    # --- what there is to see

    def windows(self):
        """All windows of the program, message boxes and menus included, hidden ones too."""
        windows = [window for window in self.desktop.inspector.windows() if window.program == PROGRAM]
        if self._pid is None:
            self._pid = next((window.pid for window in windows if window.pid not in self._others), None)
        return [window for window in windows if window.pid == self._pid]

    @property
    def main(self):
        """The main window, or None."""
        if self._main and (window := self.desktop.inspector.window(self._main)):
            return window
        boxes = ("#32770",)
        found = next((w for w in self.windows()
                      if not w.parent and not w.owner and w.text == CAPTION and w.class_name not in boxes), None)
        self._main = found and found.hwnd
        return found

    @property
    def view(self):
        """Which view the main window shows, by its size; the layout of dip mode counts as the full view."""
        size = self.main.size
        return next(view for view, twips in face.SIZES.items() if face.pixels((0, 0, *twips), self.dpi)[2:] == size)

    def places(self, view=None):
        """The rectangles on the screen where the controls and lamps of face.py belong in a view, that which is shown
        unless it is given."""
        view = view or self.view
        left, top = self.main.rect[:2]
        pixels = {name: face.pixels(twips, self.dpi)
                  for name, twips in {**face.CONTROLS[view], **face.LAMPS[view]}.items()}
        return {name: (left + x0, top + y0, left + x1, top + y1) for name, (x0, y0, x1, y1) in pixels.items()}

    def part(self, name):
        """The control with a name in face.py: what stands at its place, as it is now."""
        if name not in self._parts:
            place = self.places()[name]
            # The nearest one, because a centred label is as wide as its text.
            distance = {w.hwnd: sum(abs(a - b) for a, b in zip(w.rect, place))
                        for w in self.controls() if w.rect[1] == place[1] and w.rect[3] == place[3]}
            if not distance or min(distance.values()) > place[2] - place[0]:
                raise AssertionError(f"nothing stands where {name} belongs, {place}")
            self._parts[name] = min(distance, key=distance.get)
        return self.desktop.inspector.window(self._parts[name])

    def text(self, name):
        """What a part shows."""
        return self.part(name).text

    def readouts(self):
        """The texts of the three readouts: forward, reflected, VSWR."""
        return tuple(self.text(f"{name} readout") for name in ("forward", "reflected", "vswr"))

    def scale(self, graph):
        """The three numbers under a graph, "forward" or "reflected"."""
        return tuple(self.text(f"{graph} {where}") for where in ("left", "middle", "right"))

    def controls(self, text=None, class_name=None, visible=True):
        """The child windows with this text and class; visible=None for hidden ones too."""
        return [w for w in self.windows()
                if w.parent and (text is None or w.text == text)
                and (class_name is None or w.class_name.lower() == class_name.lower())
                and (visible is None or w.visible == visible)]

    def control(self, text=None, class_name=None, visible=True):
        """The first such control, or None."""
        return next(iter(self.controls(text, class_name, visible)), None)

    def texts(self):
        """What a person can read: the texts of all visible windows."""
        return [window.text for window in self.windows() if window.visible and window.text]

    def message_box(self):
        """The texts of an open message box (its caption first), or None."""
        windows = self.windows()
        box = next((w for w in windows if w.class_name == "#32770" and w.visible and not w.parent), None)
        return box and [box.text, *(w.text for w in windows if w.parent == box.hwnd)]

    def menu(self):
        """The open popup menus, those opened from others first; empty when none is open."""
        return [window for window in self.windows() if window.class_name == "#32768" and window.visible]

    def wait_for_box(self, timeout=15):
        """Waits for a message box; returns its texts as message_box() does."""
        return wait_until(self.message_box, "a message box", timeout)

    def press_in_box(self, button="OK"):
        """Clicks a button of the message box and waits until the box is gone."""
        self.click(button)
        wait_until(lambda: not self.message_box(), "the box to go away", 5)

    def region(self):
        """The main window's shape as a list of rectangles; None when it has no shape."""
        answer = self.desktop.inspector.ask("region", self.main.hwnd)[0]
        return [tuple(rect) for rect in answer["rects"]] if answer["shaped"] else None

    def focus(self):
        """The window that has the keyboard, or None."""
        hwnd = self.desktop.inspector.ask("focus")[0]["focus"]
        return next((window for window in self.windows() if window.hwnd == hwnd), None)

    def minimized(self):
        WS_MINIMIZE = 0x20000000
        return bool(self.main.style & WS_MINIMIZE)

    def items(self, combo):
        """The entries of a combo box and the number of the chosen one (-1 for none)."""
        answer = self.desktop.inspector.ask("items", combo.hwnd)[0]
        return answer["items"], answer["chosen"]

    def settings(self):
        """The settings file by section and key, as text; empty when there is none."""
        parser = configparser.RawConfigParser(strict=False, delimiters=("=",), comment_prefixes=(";",))
        parser.optionxform = str
        if self.settings_path.exists():
            parser.read_string(self.settings_path.read_text("cp1252"))
        return {section: dict(parser.items(section)) for section in parser.sections()}

    # --- what a person can do

    def click(self, target, button=1, repeat=1):
        """Clicks with the mouse: on a control, on the control with a text, or at (x, y) in the main window."""
        if isinstance(target, str):
            text = target
            target = self.control(text=text)
            if target is None:
                raise AssertionError(f"no visible control says {text!r}; there are {self.texts()}")
        self.desktop.click(*(target.center if isinstance(target, Window) else self.on_screen(target)), button, repeat)

    def choose(self, button, steps):
        """Opens the menu of a button on the face and chooses the line that many steps down by the keyboard."""
        self.click(self.part(button))
        wait_until(self.menu, "the menu", 5)
        # A pointer on the menu chooses too, and its last move may be told late: it goes, and that has time to be heard.
        self.desktop.move(2, 2)
        time.sleep(0.3)
        self.desktop.key(*["Down"] * steps, "Return")

    def on_screen(self, point):
        """Where a point (x, y) of the main window, in pixels, is on the screen."""
        left, top = self.main.rect[:2]
        return left + point[0], top + point[1]

    def bare_face(self):
        """A point of the main window with nothing on it, in pixels."""
        return face.pixels((*face.BARE, 0, 0), self.dpi)[:2]

    def post(self, message, wparam=0, lparam=0):
        """Posts a window message to the main window."""
        self.desktop.inspector.ask("post", self.main.hwnd, message, wparam, lparam)

    def close(self, timeout=15):
        """Closes the main window and returns the program's status."""
        if self.main:
            self.post(WM_CLOSE)
        return self.wait_exit(timeout)

    def wait_exit(self, timeout=15):
        """Waits for the program's own end; returns its status."""
        try:
            return self.process.wait(timeout)
        except subprocess.TimeoutExpired:
            raise AssertionError(f"the program still runs after {timeout} s; it shows {self.texts()}") from None

    def kill(self):
        """Ends the program without asking, if it still runs."""
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()


class OrvaneTest(unittest.TestCase):
    """Base of the end-to-end tests. A class may set dpi (what the system reports), registry (further values of the
    user) and scenario (the meter's)."""

    dpi = 96
    registry = ()
    scenario = None

    @classmethod
    def setUpClass(cls):
        cls._folder = pathlib.Path(tempfile.mkdtemp(prefix="orvane-test-"))
        cls.addClassCleanup(shutil.rmtree, cls._folder, ignore_errors=True)
        cls.link = cls._folder / "meter"
        cls.desktop = Desktop(cls.link, cls.dpi, cls.registry)
        cls.addClassCleanup(cls.desktop.close)

    wait_until = staticmethod(wait_until)

    def start_meter(self, *arguments, scenario=None):
        """A meter on COM2, gone after the test.

        Without a meter COM2 is still listed. Wine then lets it be opened, and fails every call on it from
        GetCommState on with error 1, where Windows would not open it."""
        meter = Meter(self.link, scenario or self.scenario, arguments)
        self.addCleanup(meter.stop)
        return meter

    @classmethod
    def make_folder(cls, settings=None):
        """A fresh copy of the program's folder; settings is the text of its settings file."""
        return copy_program(tempfile.mkdtemp(prefix="program-", dir=cls._folder), settings)

    def start_program(self, settings=None, folder=None, wait_for_window=True):
        """Starts the program in a fresh folder (or the given one). It is ended after the test, and what the
        screen showed is kept when the test failed, with what there is of the serial line."""
        program = Program(self.desktop, folder or self.make_folder(settings))
        self.addCleanup(program.kill)
        self.addCleanup(self._tell_of_failure, program)
        if wait_for_window:
            program.wait_for_window()
        return program

    def start_client(self, *arguments, caption="OVClient"):
        """A window that receives readings, gone after the test."""
        client = Client(self.desktop, self._folder, caption, *arguments)
        self.addCleanup(client.kill)
        return client

    def _tell_of_failure(self, program):
        result = self._outcome.result
        problems = getattr(self._outcome, "errors", None) or [*result.failures, *result.errors]
        if any(error for test, error in problems if error and test is self):
            path = self.desktop.screenshot(SCREENSHOTS / f"failed-{self.id()}.png")
            print(f"screen at the failure: {path}", f"ports: {self.desktop.ports()}",
                  "what the program told:", *program.notes[-20:], sep="\n", file=sys.stderr)
