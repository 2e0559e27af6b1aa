"""The installer: installs, starts, is installed over, and goes away without a trace. ./test makes it before; started
by hand this takes the one in dist/, or that named by ORVANE_SETUP."""

import contextlib
import hashlib
import os
import pathlib
import shutil
import subprocess
import unittest
import zipfile

import harness

DIST = harness.ROOT / "dist"
ERROR_IN_USE = 3
UNINSTALL_KEY = r"HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\OrvaneLite"
UNINSTALLER = "Uninstall.exe"
BROUGHT = ["Help/OrvaneLite.html", *(f"Images/{name}.ovl" for name in (
    "OVFace", "OVFace120", "OVFaceSm", "OVFaceSm120", "TamskLogo", "TamskLogoBW")),
    "LICENSE-runtime.txt", "LICENSE.txt", "Orvane.exe"]


def the_package(suffix):
    found = sorted(DIST.glob(f"orvane-lite-*{suffix}"))
    if len(found) != 1:
        raise AssertionError(f"./package makes one file *{suffix}; there are {found}")
    return found[0]


SETUP = pathlib.Path(os.environ.get("ORVANE_SETUP") or the_package("-setup.exe"))
VERSION = SETUP.name.split("-")[2]


class Archives(unittest.TestCase):
    def test_one_folder_with_the_program_and_nothing_else(self):
        for system in ("win64", "win32"):
            with self.subTest(system=system), zipfile.ZipFile(the_package(f"-{system}.zip")) as archive:
                self.assertEqual(archive.namelist(), [f"Orvane Lite/{name}" for name in sorted(BROUGHT)])
                exe = archive.read("Orvane Lite/Orvane.exe")
                self.assertEqual(exe, (DIST / system / "Orvane.exe").read_bytes())
                label = "ProductVersion".encode("utf-16-le")
                at = exe.index(label) + len(label)
                self.assertTrue(exe[at:at + 40].decode("utf-16-le", "replace").strip("\0").startswith(VERSION + "\0"))

    def test_sums_are_those_of_the_files(self):
        sums = dict(reversed(line.split()) for line in (DIST / "SHA256SUMS").read_text().splitlines())
        self.assertEqual(sums, {path.name: hashlib.sha256(path.read_bytes()).hexdigest()
                                for path in DIST.glob("orvane-lite-*")})
        self.assertEqual(len(sums), 3)


class Installer(harness.OrvaneTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.users = cls.desktop.prefix.path / "drive_c/users"
        user = next(path for path in cls.users.iterdir() if path.name != "Public")
        cls.folder = user / "AppData/Local/Programs/Orvane Lite"

    def setUp(self):
        self.meter = self.start_meter()
        self.addCleanup(shutil.rmtree, self.folder, ignore_errors=True)
        self.before = self.traces()

    def run_setup(self, program=SETUP, *words):
        return self.desktop.prefix.start(program, *words, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL)

    def install(self):
        self.assertEqual(self.run_setup(SETUP, "/S").wait(60), 0)

    def uninstall(self):
        """Silently. The uninstaller goes on as a copy of itself after its process ended: a file cannot remove itself."""
        self.run_setup(self.folder / UNINSTALLER, "/S").wait(60)
        self.wait_until(lambda: not self.registered(), "the uninstaller's end", 30)

    def installed(self):
        return sorted(path.relative_to(self.folder).as_posix() for path in self.folder.rglob("*") if path.is_file())

    def traces(self):
        """All files of the user, but for what programs put into the folder for temporary ones."""
        return sorted(path.relative_to(self.users).as_posix() for path in self.users.rglob("*")
                      if path.is_file() and "Temp" not in path.parts)

    def registered(self):
        """What the system's list of programs has of it."""
        query = self.desktop.prefix.start("reg", "query", UNINSTALL_KEY, stdin=subprocess.DEVNULL,
                                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        told = query.communicate(timeout=20)[0]
        rows = (line.split(None, 2) for line in told.splitlines() if line.startswith("    "))
        return {row[0]: row[2].rstrip() for row in rows if len(row) == 3}

    def run_once(self, change=None):
        """Starts the installed program, sees it work, and closes it."""
        self.addCleanup(lambda: program._notes.unlink(missing_ok=True))
        program = self.start_program(folder=self.folder)
        self.meter.wait_for_stream()
        self.meter.command("power 120 20")
        self.wait_until(lambda: program.readouts()[0] == "100", "a reading", 10)
        if change:
            change(program)
        self.assertEqual(program.close(), 0)
        program._notes.unlink(missing_ok=True)
        return program.settings()

    def test_install_run_upgrade_uninstall(self):
        self.install()
        self.assertEqual(self.installed(), sorted([*BROUGHT, UNINSTALLER]))
        for name in BROUGHT[:-3]:
            self.assertEqual((self.folder / name).read_bytes(), (harness.ROOT / name).read_bytes(), name)
        entry = self.registered()
        where = "C:" + str(self.folder).split("drive_c")[1].replace("/", "\\")
        self.assertEqual(entry["DisplayName"], "Orvane Lite")
        self.assertEqual(entry["DisplayVersion"], VERSION)
        self.assertEqual(entry["InstallLocation"], where)
        self.assertEqual(entry["QuietUninstallString"], f'"{where}\\{UNINSTALLER}" /S')
        links = [path for path in self.traces() if path.endswith(".lnk") and path not in self.before]
        self.assertEqual([link.rsplit("/", 1)[1] for link in links], ["Orvane Lite.lnk"])
        self.assertIn("/Start Menu/Programs/", links[0])

        kept = self.run_once(lambda program: program.click(program.part("forward range 2")))
        self.assertEqual(kept["USER-SETTINGS"]["F-PWR-INDEX"], "2")

        # A newer version over it: what it brings is fresh, what the user has stays.
        content = (self.folder / harness.SETTINGS).read_bytes()
        (self.folder / "Help/OrvaneLite.html").write_bytes(b"of an older version")
        (self.folder / "station.txt").write_text("the user's own")
        self.install()
        self.assertEqual((self.folder / harness.SETTINGS).read_bytes(), content)
        self.assertEqual((self.folder / BROUGHT[0]).read_bytes(), (harness.ROOT / BROUGHT[0]).read_bytes())
        self.assertEqual(self.run_once()["USER-SETTINGS"]["F-PWR-INDEX"], "2")

        self.uninstall()
        self.assertEqual(self.installed(), [harness.SETTINGS, harness.SETTINGS + ".bak", "station.txt"])
        own = [str((self.folder / name).relative_to(self.users)) for name in self.installed()]
        self.assertEqual([path for path in self.traces() if path not in self.before], own)
        # Whoever installs again finds the settings.
        self.install()
        self.assertEqual((self.folder / harness.SETTINGS).read_bytes(), content)
        (self.folder / "station.txt").unlink()
        self.remove_with_settings()
        self.assertFalse(self.folder.exists())
        self.assertEqual(self.traces(), self.before)

    def remove_with_settings(self):
        """As a person does, who answers that the settings are not to be kept."""
        process = self.run_setup(self.folder / UNINSTALLER)
        self.press("&Uninstall")
        self.press("&No", beside="Keep your settings, Orvane.dat, for a later installation?")
        self.press("&Close")
        process.wait(30)
        self.wait_until(lambda: not self.registered(), "the uninstaller's end", 30)

    def press(self, button, beside=None):
        """Waits for a button of the installer that can be pressed, and presses it."""
        def there():
            windows = [w for w in self.desktop.inspector.windows() if w.visible and w.enabled]
            found = next((w for w in windows if w.class_name == "Button" and w.text == button), None)
            told = beside is None or any(w.text == beside and w.parent == found.parent for w in windows if found)
            return found if told else None
        self.desktop.click(*self.wait_until(there, f"the button {button}", 30).center)

    def test_a_running_program_is_left_alone(self):
        self.install()
        with contextlib.ExitStack() as stack:
            program = self.start_program(folder=self.folder)
            stack.callback(lambda: program._notes.unlink(missing_ok=True))
            stack.callback(program.kill)
            (self.folder / "LICENSE.txt").write_text("as it was")
            self.assertEqual(self.run_setup(SETUP, "/S").wait(60), ERROR_IN_USE)
            # Told its folder in this way, which takes no quotes, it works in place instead of in a copy and has a
            # status.
            where = self.registered()["InstallLocation"]
            script = self._folder / "remove.bat"
            script.write_text(f'@"{where}\\{UNINSTALLER}" /S _?={where}\n@exit %errorlevel%\n')
            self.assertEqual(self.run_setup("cmd", "/c", script).wait(60), ERROR_IN_USE)
            self.assertEqual((self.folder / "LICENSE.txt").read_text(), "as it was")
            self.assertTrue(program.main.visible)
            self.assertEqual(program.close(), 0)
        self.uninstall()
        self.assertEqual(self.installed(), [harness.SETTINGS])
        (self.folder / harness.SETTINGS).unlink()
        self.folder.rmdir()


if __name__ == "__main__":
    unittest.main()
