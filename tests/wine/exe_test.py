"""What the finished exe is: one file for a bare Windows, and hardened. Read from the file, nothing is started."""

import pathlib
import struct
import unittest

import harness

# What every Windows from 7 on has, and takes from nowhere else: the libraries that it keeps in memory for all programs
# (KnownDLLs), and comctl32, whose place the manifest names. Any other would be looked for beside the program first.
SYSTEM_LIBRARIES = {
    "advapi32.dll", "comctl32.dll", "gdi32.dll", "kernel32.dll", "msvcrt.dll", "ole32.dll", "oleaut32.dll",
    "setupapi.dll", "shell32.dll", "user32.dll",
}
SUBSYSTEM_WINDOWS = 2
HIGH_ENTROPY_ADDRESS, RANDOM_ADDRESS, NO_EXECUTION_OF_DATA = 0x20, 0x40, 0x100


class Image:
    """The headers of a 64-bit portable executable."""

    def __init__(self, path):
        self.data = pathlib.Path(path).read_bytes()
        header = self._u32(0x3C)
        if self.data[header:header + 4] != b"PE\0\0":
            raise ValueError("no portable executable")
        self.machine, sections = struct.unpack_from("<HH", self.data, header + 4)
        optional_size = self._u16(header + 20)
        optional = header + 24
        if self._u16(optional) != 0x20B:
            raise ValueError("not a 64-bit image")
        self.subsystem = self._u16(optional + 68)
        self.characteristics = self._u16(optional + 70)
        self._imports = self._u32(optional + 112 + 8)
        self.has_relocations = self._u32(optional + 112 + 5 * 8 + 4) > 0
        table = optional + optional_size
        self._sections = [struct.unpack_from("<8sIIII", self.data, table + 40 * i) for i in range(sections)]
        self.section_names = [section[0].rstrip(b"\0").decode() for section in self._sections]

    def _u16(self, at):
        return struct.unpack_from("<H", self.data, at)[0]

    def _u32(self, at):
        return struct.unpack_from("<I", self.data, at)[0]

    def _offset(self, address):
        for _, size, start, raw_size, raw in self._sections:
            if start <= address < start + max(size, raw_size):
                return address - start + raw
        raise ValueError(f"address {address:#x} is in no section")

    def imported_libraries(self):
        """The names of the libraries that the system loads with the program."""
        names, entry = [], self._offset(self._imports)
        while name := self._u32(entry + 12):
            start = self._offset(name)
            names.append(self.data[start:self.data.index(b"\0", start)].decode().lower())
            entry += 20
        return names


class FinishedProgram(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.image = Image(harness.DIST / harness.PROGRAM)

    def test_needs_only_what_windows_takes_from_nowhere_else(self):
        imported = set(self.image.imported_libraries())
        self.assertIn("kernel32.dll", imported)
        self.assertEqual(imported - SYSTEM_LIBRARIES, set())
        for library in (b"version.dll", b"oleacc.dll", b"SetDefaultDllDirectories"):  # by name, at run time
            wide = library.decode().encode("utf-16-le")
            self.assertTrue(library in self.image.data or wide in self.image.data, library)

    def test_is_a_window_program_without_a_console(self):
        self.assertEqual(self.image.subsystem, SUBSYSTEM_WINDOWS)

    def test_is_loaded_anywhere_and_runs_no_data(self):
        for flag in (HIGH_ENTROPY_ADDRESS, RANDOM_ADDRESS, NO_EXECUTION_OF_DATA):
            with self.subTest(flag=hex(flag)):
                self.assertTrue(self.image.characteristics & flag)
        # Random addresses are only as good as the relocations that allow them.
        self.assertIn(".reloc", self.image.section_names)
        self.assertTrue(self.image.has_relocations)

    def test_stacks_are_watched(self):
        """The run-time's words for a broken stack are there: functions with buffers check before they return."""
        self.assertIn(b"stack smashing detected", self.image.data)

    def test_is_small(self):
        self.assertLess(len(self.image.data), 1_000_000)

    def test_carries_no_debug_sections(self):
        self.assertEqual([name for name in self.image.section_names if name.startswith((".debug", "/"))], [])

    def test_pictures_and_help_lie_beside_it(self):
        for folder in ("Images", "Help"):
            source = harness.ROOT / folder
            expected = {path.relative_to(harness.ROOT): path.read_bytes() for path in source.rglob("*") if path.is_file()}
            copied = harness.DIST / folder
            found = {path.relative_to(harness.DIST): path.read_bytes() for path in copied.rglob("*") if path.is_file()}
            with self.subTest(folder=folder):
                self.assertEqual(found, expected)
