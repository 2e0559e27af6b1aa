"""Which way the help is shown."""

import shutil
import subprocess
import unittest

import harness
from test_client import CLIENT

HELP_FILE, HELP_PAGE = "OrvaneLite.hlp", "OrvaneLite.html"


class Help(harness.OrvaneTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        # A browser of ours: its caption is what it was asked to show.
        reader = f'"{harness.windows_path(CLIENT)}" --caption "%1"'
        for key, value in ((r"HKCR\.html", "TestPage"), (r"HKCR\TestPage\shell\open\command", reader)):
            adding = cls.desktop.prefix.start("reg", "add", key, "/ve", "/d", value, "/f", stdout=subprocess.DEVNULL)
            if adding.wait(30) != 0:
                raise AssertionError(f"the registry took no {key}")

    def start(self):
        self.start_meter()
        folder = self.make_folder()
        return folder, self.start_program(folder=folder)

    def shown_page(self):
        """The caption of the browser, or None."""
        return next((window.text for window in self.desktop.inspector.windows()
                     if window.class_name == "OrvaneExampleClient"), None)

    def viewer(self):
        return [window for window in self.desktop.inspector.windows() if window.program.lower() == "winhlp32.exe"]

    def close_page(self):
        for window in self.desktop.inspector.windows():
            if window.class_name == "OrvaneExampleClient":
                self.desktop.inspector.ask("close", window.hwnd)
        self.wait_until(lambda: not self.shown_page(), "the browser to go away")

    def test_page_is_shown_unless_there_are_help_file_and_viewer(self):
        folder, program = self.start()
        page = harness.windows_path(folder / "Help" / HELP_PAGE)
        program.click(program.part("help"))
        self.wait_until(lambda: self.shown_page() == page, f"{page} in the browser")
        self.close_page()

        shutil.copyfile(folder / "Help" / HELP_PAGE, folder / "Help" / HELP_FILE)
        system = self.desktop.prefix.path / "drive_c/windows/system32"
        viewer = (system / "winhlp32.exe").rename(system / "kept.exe")
        (system / "winhlp32.exe").write_bytes(viewer.read_bytes()[:12000])
        program.click(program.part("help"))
        self.wait_until(lambda: self.shown_page() == page, f"{page} in the browser, as the viewer is a stub")
        self.close_page()
        self.assertEqual(self.viewer(), [])

        viewer.replace(system / "winhlp32.exe")
        program.click(program.part("help"))
        self.wait_until(self.viewer, "the help viewer")
        self.assertIsNone(self.shown_page())

    def test_missing_page_is_told_on_the_status_line(self):
        folder, program = self.start()
        (folder / "Help" / HELP_PAGE).unlink()
        program.click(program.part("help"))
        self.wait_until(lambda: program.text("status") == "The help could not be opened.", "the status line")
        self.assertIsNone(program.message_box())


if __name__ == "__main__":
    unittest.main()
