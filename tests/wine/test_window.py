"""The shape of the window, its two views, and where everything stands in them."""

import itertools
import subprocess
import unittest

import face
import harness

PICTURES = {face.FULL: "OVFace.ovl", face.SHORT: "OVFaceSm.ovl"}


def opaque_pixels(picture):
    """The pixels (x, y) of a face that belong to the window: all that have not the colour of the bottom left one.
    The last column is never part of the shape."""
    name = f"png:{picture}"
    size = subprocess.run(["identify", "-format", "%w %h", name], check=True, capture_output=True, text=True).stdout
    width, height = map(int, size.split())
    rgb = subprocess.run(["convert", name, "-alpha", "off", "-depth", "8", "rgb:-"], check=True,
                         capture_output=True).stdout
    if len(rgb) != 3 * width * height:
        raise AssertionError(f"{picture} has {len(rgb)} bytes of colour")
    transparent = rgb[3 * width * (height - 1):][:3]
    pixels = {(x, y) for y in range(height) for x in range(width - 1)
              if rgb[3 * (y * width + x):][:3] != transparent}
    return pixels, (width, height)


def covered(rects):
    return {(x, y) for left, top, right, bottom in rects for y in range(top, bottom) for x in range(left, right)}


def contains(outer, inner):
    return outer[0] <= inner[0] and outer[1] <= inner[1] and inner[2] <= outer[2] and inner[3] <= outer[3]


def overlap(one, other):
    return one[0] < other[2] and other[0] < one[2] and one[1] < other[3] and other[1] < one[3]


class Views(harness.OrvaneTest):
    def setUp(self):
        self.meter = self.start_meter()

    def assert_shaped_as(self, program, view):
        self.wait_until(lambda: program.view == view, f"the {view} view", 5)
        pixels, size = opaque_pixels(program.folder / "Images" / PICTURES[view])
        self.assertEqual(program.main.size, size)
        # The picture must have something cut away, or this would not show that shapes are cut at all.
        self.assertLess(len(pixels), (size[0] - 1) * size[1])
        self.assertEqual(covered(program.region()), pixels)

    def assert_laid_out_as(self, program, view):
        """Each control stands where the face has room for it, and nothing else is shown."""
        places = program.places(view)
        controls = program.controls()
        shown = {control.rect for control in controls}
        for name in face.CONTROLS[view]:
            with self.subTest(control=name):
                if name.endswith("middle"):  # as wide as its number
                    (left, top, right, bottom), (x0, y0, x1, y1) = program.part(name).rect, places[name]
                    self.assertEqual((top, bottom), (y0, y1))
                    self.assertAlmostEqual((left + right) / 2, (x0 + x1) / 2, delta=1)
                else:
                    self.assertIn(places[name], shown)
        self.assertEqual(len(controls), len(face.CONTROLS[view]))

    def assert_inside_and_apart(self, program):
        """No control lies over another or leaves its container, which for the outer ones is the shape."""
        left, top = program.main.rect[:2]
        window = covered(program.region())
        controls = program.controls()
        rects = {control.hwnd: control.rect for control in controls}
        for control in controls:
            with self.subTest(control=control):
                if container := rects.get(control.parent):
                    self.assertTrue(contains(container, control.rect))
                else:
                    x0, y0, x1, y1 = control.rect
                    self.assertEqual(covered([(x0 - left, y0 - top, x1 - left, y1 - top)]) - window, set())
        for one, other in itertools.combinations(controls, 2):
            if one.parent == other.parent:
                self.assertFalse(overlap(one.rect, other.rect), f"{one} lies over {other}")

    def test_double_click_changes_the_view_and_it_is_kept(self):
        program = self.start_program("[USER-SETTINGS]\nFORM-TOP=3000\nFORM-LEFT=3000\n")
        self.meter.wait_for_stream()
        self.wait_until(lambda: program.scale("forward") == ("0", "50", "100"), "the meter's scale")
        self.assert_shaped_as(program, face.FULL)
        self.assert_laid_out_as(program, face.FULL)
        self.assert_inside_and_apart(program)

        program.click(program.bare_face(), repeat=2)
        self.assert_shaped_as(program, face.SHORT)
        self.assert_laid_out_as(program, face.SHORT)
        self.assert_inside_and_apart(program)
        self.assertEqual(program.main.rect[:2], (200, 200))
        self.assertEqual(program.close(), 0)
        self.assertEqual(program.settings()["USER-SETTINGS"]["FORM-REGION"], "0")

        again = self.start_program(folder=program.folder)
        self.assert_shaped_as(again, face.SHORT)
        self.assert_laid_out_as(again, face.SHORT)
        again.click(again.part("forward graph"), repeat=2)
        self.assert_shaped_as(again, face.FULL)
        self.assert_laid_out_as(again, face.FULL)
        self.assertEqual(again.close(), 0)
        self.assertEqual(again.settings()["USER-SETTINGS"]["FORM-REGION"], "1")

    def test_dip_mode_has_the_full_view(self):
        program = self.start_program("[USER-SETTINGS]\nFORM-TOP=3000\nFORM-LEFT=3000\nFORM-REGION=0\n")
        self.meter.wait_for_stream()
        self.assertEqual(program.view, face.SHORT)
        self.meter.command("set M3")
        self.wait_until(lambda: program.view == face.FULL, "the full view of dip mode", 5)
        self.wait_until(lambda: program.scale("reflected") == ("1.0", "3.0", "5.0"), "the VSWR scale", 5)
        self.assert_laid_out_as(program, face.DIP)
        self.assert_inside_and_apart(program)
        program.click(program.bare_face(), repeat=2)
        self.meter.command("set M0")
        self.wait_until(lambda: program.view == face.SHORT, "the view from before", 5)
        self.assertEqual(program.close(), 0)
        self.assertEqual(program.settings()["USER-SETTINGS"]["FORM-REGION"], "0")


if __name__ == "__main__":
    unittest.main()
