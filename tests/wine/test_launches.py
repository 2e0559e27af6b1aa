"""Documents and addresses come to the programs that the system has for them."""

import shutil
import subprocess
import unittest

import harness

HELP_FILE, HELP_PAGE = "OrvaneLite.hlp", "OrvaneLite.html"


class Launches(harness.OrvaneTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        # A browser and mail program of ours: its caption is what it was asked to show.
        reader = f'"{harness.windows_path(harness.CLIENT)}" --caption "%1"'
        cls.change_registry("add", r"HKCR\.html", "/ve", "/d", "TestPage")
        for kind in ("TestPage", "https", "mailto"):
            cls.change_registry("add", rf"HKCR\{kind}\shell\open\command", "/ve", "/d", reader)

    @classmethod
    def change_registry(cls, *words):
        change = cls.desktop.prefix.start("reg", *words, "/f", stdout=subprocess.DEVNULL)
        if change.wait(30) != 0:
            raise AssertionError(f"the registry refused {words}")

    def setUp(self):
        self.start_meter()
        self.folder = self.make_folder()
        self.program = self.start_program(folder=self.folder)

    def opened(self):
        """The captions of the windows of our browser."""
        return [window.text for window in self.desktop.inspector.windows()
                if window.class_name == "OrvaneExampleClient"]

    def wait_and_close(self, *captions):
        """Waits until exactly these documents are open, and closes them."""
        self.wait_until(lambda: self.opened() == [*captions], f"{captions} in the browser")
        for window in self.desktop.inspector.windows():
            if window.class_name == "OrvaneExampleClient":
                self.desktop.inspector.ask("post", window.hwnd, harness.WM_CLOSE, 0, 0)
        self.wait_until(lambda: not self.opened(), "the browser to go away")

    def viewer(self):
        return [window for window in self.desktop.inspector.windows() if window.program.lower() == "winhlp32.exe"]

    def test_page_is_shown_unless_there_are_help_file_and_viewer(self):
        folder, program = self.folder, self.program
        page = harness.windows_path(folder / "Help" / HELP_PAGE)
        # With a help file, but a stub where the viewer was.
        shutil.copyfile(folder / "Help" / HELP_PAGE, folder / "Help" / HELP_FILE)
        system = self.desktop.prefix.path / "drive_c/windows/system32"
        viewer = (system / "winhlp32.exe").rename(system / "kept.exe")
        (system / "winhlp32.exe").write_bytes(viewer.read_bytes()[:12000])
        program.click(program.part("help"))
        self.wait_and_close(page)
        self.assertEqual(self.viewer(), [])

        viewer.replace(system / "winhlp32.exe")
        program.click(program.part("help"))
        self.wait_until(self.viewer, "the help viewer")
        self.assertEqual(self.opened(), [])

    def test_web_site_and_support_mail_of_the_about_box(self):
        program = self.program
        program.choose("help menu", 2)
        self.wait_until(lambda: program.control(text="support@quorran.example"), "the About box", 8)
        program.click("Quorran on the &Web")
        self.wait_and_close("https://www.quorran.example/")
        program.click("support@quorran.example")
        self.wait_until(self.opened, "the mail program")
        self.assertRegex(self.opened()[0], r"^mailto:support@quorran\.example\?subject=Comments%20on%20Orvane%20Lite%2C%20"
                         r"Version%201\.0%2C%20Running%20on%20Windows%20XP%206\.1%20Build%20[0-9]+%20.*&Body=Hello$")


if __name__ == "__main__":
    unittest.main()
