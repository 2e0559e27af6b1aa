"""The shape of the window, its two views, and where everything stands in them. That nothing overlaps is tested without
a screen."""

import subprocess
import unittest

import face
import harness

PICTURES = {
    96: {face.FULL: "OVFace.ovl", face.SHORT: "OVFaceSm.ovl"},
    120: {face.FULL: "OVFace120.ovl", face.SHORT: "OVFaceSm120.ovl"},
}


def shape_of_picture(picture):
    """The pixels (x, y) that have not the colour of the bottom left one, and the size of the picture. The last column
    is never part of the shape."""
    name = f"png:{picture}"
    told = subprocess.run(["identify", "-format", "%w %h", name], check=True, capture_output=True, text=True).stdout
    width, height = map(int, told.split())
    rgb = subprocess.run(["convert", name, "-alpha", "off", "-depth", "8", "rgb:-"], check=True,
                         capture_output=True).stdout
    pixels = [rgb[i:i + 3] for i in range(0, len(rgb), 3)]
    transparent = pixels[width * (height - 1)]
    return {(x, y) for y in range(height) for x in range(width - 1) if pixels[y * width + x] != transparent}, (width, height)


class ViewTest(harness.OrvaneTest):
    def setUp(self):
        self.meter = self.start_meter()

    def assert_shown_as(self, program, view, layout=None):
        """The window has the view's shape, each control stands where the face has room for it, and nothing else is
        shown."""
        self.wait_until(lambda: program.view == view, f"the {view} view", 5)
        shape, size = shape_of_picture(program.folder / "Images" / PICTURES[self.dpi][view])
        self.assertEqual(program.main.size, size)
        region = {(x, y) for left, top, right, bottom in program.region()
                  for y in range(top, bottom) for x in range(left, right)}
        self.assertEqual(sorted(region ^ shape)[:8], [])
        layout = layout or view
        places = program.places(layout)
        controls = program.controls()
        shown = {control.rect for control in controls}
        for name in face.CONTROLS[layout]:
            with self.subTest(control=name):
                if name.endswith("middle"):  # as wide as its number
                    (left, top, right, bottom), (x0, y0, x1, y1) = program.part(name).rect, places[name]
                    self.assertEqual((top, bottom), (y0, y1))
                    self.assertAlmostEqual((left + right) / 2, (x0 + x1) / 2, delta=1)
                else:
                    self.assertIn(places[name], shown)
        seen = [control for control in controls if control.size != (0, 0)]  # announcements take no room
        self.assertEqual(len(seen), len(face.CONTROLS[layout]))


class Views(ViewTest):
    place = (200, 200)

    def test_each_view_is_shaped_laid_out_and_kept(self):
        program = self.start_program("[USER-SETTINGS]\nFORM-TOP=3000\nFORM-LEFT=3000\n")
        self.meter.wait_for_stream()
        self.wait_until(lambda: program.scale("forward") == ("0", "50", "100"), "the meter's scale")
        for view in (face.FULL, face.SHORT):
            self.assert_shown_as(program, view)
            self.assertEqual(program.main.rect[:2], self.place)
            if view == face.FULL:
                program.click(program.bare_face(), repeat=2)
        self.assertEqual(program.close(), 0)
        user = program.settings()["USER-SETTINGS"]
        self.assertEqual((user["FORM-LEFT"], user["FORM-TOP"], user["FORM-REGION"]), ("3000", "3000", "0"))

        again = self.start_program(folder=program.folder)
        self.meter.wait_for_stream()
        self.assert_shown_as(again, face.SHORT)
        self.meter.command("set M3")
        self.wait_until(lambda: again.view == face.FULL, "room for the VSWR bar", 8)
        self.wait_until(lambda: again.scale("reflected") == ("1.0", "3.0", "5.0"), "the VSWR scale", 8)
        self.assert_shown_as(again, face.FULL, face.DIP)


class LargeViews(Views):
    dpi = 120
    place = (250, 250)


if __name__ == "__main__":
    unittest.main()
