"""A screen reader's side of the program: its accessible tree, and the events that it raises."""

import json
import os
import pathlib
import subprocess
import time

import harness

READER = pathlib.Path(os.environ.get("ORVANE_ACC_TREE", harness.INSPECTOR.with_name("acc_tree.exe")))


class Reader:
    """acc_tree.exe, kept running in the prefix of a desktop."""

    def __init__(self, desktop):
        self._process = desktop.prefix.start(READER, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                             stderr=subprocess.DEVNULL, text=True, bufsize=1)
        self._lines = harness.LineReader(self._process.stdout)
        self._events = []

    def ask(self, *words):
        """Gives a command; returns the objects of its answer."""
        self._process.stdin.write(" ".join(map(str, words)) + "\n")
        self._process.stdin.flush()
        answer = []
        while True:
            fields = json.loads(self._lines.next(20))
            if "end" in fields:
                assert fields["ok"], words
                return answer
            (self._events if "event" in fields else answer).append(fields)

    def tree(self, window):
        """What a window holds, outermost first, a line each: role, name, value, states, with blanks by depth."""
        return [line(found) for found in self.ask("tree", window.hwnd)]

    def object(self, window):
        """What a window is told as."""
        return self.ask("object", window.hwnd)[0]

    def watch(self):
        """From now on events are kept."""
        self.ask("watch")

    def events(self, seconds=0):
        """The events since the last call, as (word, window, milliseconds), after waiting for more."""
        time.sleep(seconds)
        self._events += [json.loads(text) for text in self._lines.drain()]
        events, self._events = self._events, []
        return [(event["event"], event["hwnd"], event["tick"]) for event in events]

    def close(self):
        self._process.stdin.close()
        self._process.wait(10)
        self._process.stdout.close()


def line(found):
    """One object as text. That everything which is no decoration has a name is seen at once."""
    states = " ".join(word for word in found["state"].split() if word != "focused")
    said = [found["role"], found["name"] or "-", found["value"] or "-", states]
    while said[-1] in ("", "-"):
        said.pop()
    return "  " * found["level"] + " | ".join(said)
