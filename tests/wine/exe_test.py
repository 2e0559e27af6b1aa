"""What the finished exe is: one file for a bare Windows, and hardened. Read from the file, nothing is started."""

import re
import subprocess
import unittest

import harness

# What every Windows from 7 on has, and takes from nowhere else: the libraries that it keeps in memory for all programs
# (KnownDLLs), and comctl32, whose place the manifest names. Any other would be looked for beside the program first.
SYSTEM_LIBRARIES = {
    "advapi32.dll", "comctl32.dll", "gdi32.dll", "kernel32.dll", "msvcrt.dll", "ole32.dll", "oleaut32.dll",
    "setupapi.dll", "shell32.dll", "user32.dll",
}


class FinishedProgram(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        exe = harness.DIST / harness.PROGRAM
        cls.data = exe.read_bytes()
        cls.headers = subprocess.run(["x86_64-w64-mingw32-objdump", "-p", "-h", exe], check=True, capture_output=True,
                                     text=True).stdout
        cls.sections = re.findall(r"^ +[0-9]+ (\S+)", cls.headers, re.MULTILINE)

    def test_needs_only_what_windows_takes_from_nowhere_else(self):
        imported = {name.lower() for name in re.findall(r"DLL Name: (\S+)", self.headers)}
        self.assertIn("kernel32.dll", imported)
        self.assertEqual(imported - SYSTEM_LIBRARIES, set())
        for library in (b"version.dll", b"oleacc.dll", b"SetDefaultDllDirectories"):  # by name, at run time
            wide = library.decode().encode("utf-16-le")
            self.assertTrue(library in self.data or wide in self.data, library)

    def test_is_a_window_program_that_is_loaded_anywhere_and_runs_no_data(self):
        for said in ("pei-x86-64", "(Windows GUI)", "HIGH_ENTROPY_VA", "DYNAMIC_BASE", "NX_COMPAT"):
            self.assertIn(said, self.headers)
        # Random addresses are only as good as the relocations that allow them.
        self.assertIn(".reloc", self.sections)
        self.assertNotRegex(self.headers, r"Entry 5 0+ 0+ Base Relocation Directory")

    def test_stacks_are_watched(self):
        """The run-time's words for a broken stack are there: functions with buffers check before they return."""
        self.assertIn(b"stack smashing detected", self.data)

    def test_is_small(self):
        self.assertLess(len(self.data), 1_000_000)

    def test_carries_no_debug_sections(self):
        self.assertEqual([name for name in self.sections if name.startswith((".debug", "/"))], [])

    def test_pictures_and_help_lie_beside_it(self):
        for folder in ("Images", "Help"):
            source = harness.ROOT / folder
            expected = {path.relative_to(harness.ROOT): path.read_bytes() for path in source.rglob("*") if path.is_file()}
            copied = harness.DIST / folder
            found = {path.relative_to(harness.DIST): path.read_bytes() for path in copied.rglob("*") if path.is_file()}
            with self.subTest(folder=folder):
                self.assertEqual(found, expected)
