"""The program in a folder where nothing can be written."""

import os
import subprocess
import unittest

import harness


class LockedFolder(harness.OrvaneTest):
    def lock(self, folder):
        """Nothing can be made in the folder from now on. Rights alone do not keep root out."""
        if os.geteuid() != 0:
            folder.chmod(0o555)
            self.addCleanup(folder.chmod, 0o755)
            return
        lock = subprocess.run(["chattr", "+i", str(folder)], capture_output=True)
        if lock.returncode != 0:
            self.skipTest("root cannot be kept from writing on this file system")
        self.addCleanup(subprocess.run, ["chattr", "-i", str(folder)], check=True)

    def test_is_told_at_the_start_and_the_program_goes_on(self):
        meter = self.start_meter()
        folder = self.make_folder()
        files = sorted(path.name for path in folder.iterdir())
        self.lock(folder)
        program = self.start_program(folder=folder)
        self.wait_until(lambda: program.text("status").startswith("Settings cannot be saved here"),
                        "the status line to tell", 4)
        meter.wait_for_stream()
        meter.command("power 120 20")
        self.wait_until(lambda: program.readouts()[0] == "100", "a reading", 5)
        self.assertEqual(program.close(), 0)
        self.assertEqual(sorted(path.name for path in folder.iterdir()), files)


if __name__ == "__main__":
    unittest.main()
