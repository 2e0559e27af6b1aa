"""The shape of the window, its two views, and where everything stands in them."""

import itertools
import subprocess
import unittest

import face
import harness

PICTURES = {
    96: {face.FULL: "OVFace.ovl", face.SHORT: "OVFaceSm.ovl"},
    120: {face.FULL: "OVFace120.ovl", face.SHORT: "OVFaceSm120.ovl"},
}


class Shape:
    """Which pixels of a window belong to it, row by row."""

    def __init__(self, size, cells=None):
        self.width, self.height = size
        self.cells = bytearray(cells or self.width * self.height)

    @classmethod
    def of_picture(cls, picture):
        """All that have not the colour of the bottom left one. The last column is never part of the shape."""
        name = f"png:{picture}"
        told = subprocess.run(["identify", "-format", "%w %h", name], check=True, capture_output=True, text=True).stdout
        width, height = map(int, told.split())
        rgb = subprocess.run(["convert", name, "-alpha", "off", "-depth", "8", "rgb:-"], check=True,
                             capture_output=True).stdout
        transparent = rgb[3 * width * (height - 1):][:3]
        shape = cls((width, height), (rgb[i:i + 3] != transparent for i in range(0, len(rgb), 3)))
        shape.cells[width - 1::width] = bytes(height)
        return shape

    @classmethod
    def of_region(cls, rects, size):
        shape = cls(size)
        for left, top, right, bottom in rects:
            if not contains((0, 0, *size), (left, top, right, bottom)):
                raise AssertionError(f"the region has {(left, top, right, bottom)}, the window only {size}")
            for y in range(top, bottom):
                shape.cells[y * shape.width + left:y * shape.width + right] = b"\1" * (right - left)
        return shape

    def __contains__(self, rect):
        left, top, right, bottom = rect
        return all(all(self.cells[y * self.width + left:y * self.width + right]) for y in range(top, bottom))

    def differing(self, other):
        """The first pixels (x, y) that belong to one and not to the other."""
        pairs = enumerate(zip(self.cells, other.cells))
        return [(i % self.width, i // self.width) for i, (a, b) in pairs if a != b][:8]


def contains(outer, inner):
    return outer[0] <= inner[0] and outer[1] <= inner[1] and inner[2] <= outer[2] and inner[3] <= outer[3]


def overlap(one, other):
    return one[0] < other[2] and other[0] < one[2] and one[1] < other[3] and other[1] < one[3]


class ViewTest(harness.OrvaneTest):
    def setUp(self):
        self.meter = self.start_meter()

    def assert_shaped_as(self, program, view):
        self.wait_until(lambda: program.view == view, f"the {view} view", 5)
        expected = Shape.of_picture(program.folder / "Images" / PICTURES[self.dpi][view])
        self.assertEqual(program.main.size, (expected.width, expected.height))
        self.assertEqual(Shape.of_region(program.region(), program.main.size).differing(expected), [])

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
        seen = [control for control in controls if control.size != (0, 0)]  # announcements take no room
        self.assertEqual(len(seen), len(face.CONTROLS[view]))

    def assert_inside_and_apart(self, program):
        """No control lies over another or leaves its container, which for the outer ones is the shape."""
        left, top = program.main.rect[:2]
        window = Shape.of_region(program.region(), program.main.size)
        controls = program.controls()
        rects = {control.hwnd: control.rect for control in controls}
        for control in controls:
            with self.subTest(control=control):
                if container := rects.get(control.parent):
                    self.assertTrue(contains(container, control.rect))
                else:
                    x0, y0, x1, y1 = control.rect
                    self.assertIn((x0 - left, y0 - top, x1 - left, y1 - top), window)
        for one, other in itertools.combinations(controls, 2):
            if one.parent == other.parent:
                self.assertFalse(overlap(one.rect, other.rect), f"{one} lies over {other}")


class Views(ViewTest):
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

    def test_shape_follows_any_picture(self):
        # The program's own faces leave the last column free anyway, and have holes nowhere but at their edges.
        folder = self.make_folder()
        cut, nearly, kept = "#00FF01", "#00FF00", "#203040"
        drawing = ["-fill", cut, "-draw", "rectangle 0,250 30,259", "-draw", "rectangle 100,0 500,20", "-draw",
                   "rectangle 300,100 310,110", "-draw", "point 5,5", "-fill", nearly, "-draw", "point 200,10"]
        subprocess.run(["convert", "-size", "640x260", f"xc:{kept}", *drawing,
                        f"png24:{folder / 'Images' / PICTURES[96][face.FULL]}"], check=True)
        program = self.start_program(folder=folder)
        self.assert_shaped_as(program, face.FULL)
        self.assertEqual(max(right for _, _, right, _ in program.region()), 639)

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


class LargeViews(ViewTest):
    dpi = 120

    def test_shape_and_places(self):
        program = self.start_program("[USER-SETTINGS]\nFORM-TOP=3000\nFORM-LEFT=3000\n")
        self.assertEqual(program.main.rect[:2], (250, 250))
        self.wait_until(lambda: program.scale("reflected") == ("0", "50", "100"), "the meter's scale")
        for view in (face.FULL, face.SHORT):
            self.assert_shaped_as(program, view)
            self.assert_laid_out_as(program, view)
            self.assert_inside_and_apart(program)
            if view == face.FULL:
                program.click(program.bare_face(), repeat=2)
        self.assertEqual(program.close(), 0)
        user = program.settings()["USER-SETTINGS"]
        self.assertEqual((user["FORM-LEFT"], user["FORM-TOP"], user["FORM-REGION"]), ("3000", "3000", "0"))


if __name__ == "__main__":
    unittest.main()
