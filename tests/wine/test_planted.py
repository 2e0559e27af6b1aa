"""Libraries that lie beside the program under names of the system's: none of them is loaded."""

import os
import pathlib
import shutil
import subprocess
import unittest

import harness

PLANT = pathlib.Path(os.environ.get("ORVANE_PLANT", harness.INSPECTOR.with_name("planted.dll")))
# What the program uses and what the system's libraries load by name at some time. Not those that Windows takes from
# nowhere else whatever lies beside a program, with all that they need: Wine has no such list (its setupapi wants
# version). Nor uxtheme and with it msimg32, which Wine's comctl32 asks for while it is loaded itself, before a line of
# ours runs.
NAMES = ("comctl32", "cryptbase", "dwmapi", "mpr", "netapi32", "oleacc", "profapi", "propsys",
         "windowscodecs", "windowscodecsext", "winmm", "wintrust", "wtsapi32")


def plant(folder):
    for name in NAMES:
        shutil.copyfile(PLANT, folder / f"{name}.dll")


def loaded(folder):
    return sorted(path.name.lower() for path in folder.glob("*.loaded"))


class Planted(harness.OrvaneTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        # As Windows does, and Wine for some libraries only: what lies beside the program comes first.
        cls.desktop.prefix.env["WINEDLLOVERRIDES"] += f";{','.join(NAMES)}=n,b"

    def test_is_loaded_by_a_program_that_takes_what_it_finds(self):
        folder = self.make_folder()
        plant(folder)
        shutil.copy(harness.INSPECTOR, folder)
        process = self.desktop.prefix.start(folder / harness.INSPECTOR.name, stdin=subprocess.DEVNULL,
                                            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        process.wait(20)
        self.assertIn("oleacc.dll.loaded", loaded(folder))

    def test_is_not_loaded_by_ours(self):
        meter = self.start_meter()
        folder = self.make_folder()
        plant(folder)
        program = self.start_program(folder=folder)
        meter.wait_for_stream()
        self.assertTrue(self.desktop.inspector.tree(program.main))
        for key in ("F3", "Escape"):
            self.desktop.key(key)
        self.assertEqual(program.close(), 0)
        self.assertEqual(loaded(folder), [])


if __name__ == "__main__":
    unittest.main()
