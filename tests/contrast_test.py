"""Whether everything on the face can be seen: texts and digits have a contrast of 4.5:1 and more to their ground, marks
of 3:1, as the web's accessibility guidelines count it. Grounds are the pixels of the shipped pictures, colours those of
the sources."""

import re
import subprocess
import sys
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests" / "wine"))
import face  # noqa: E402

TEXT, MARK = 4.5, 3.0
PICTURES = {("OVFace.ovl", 96): face.FULL, ("OVFace120.ovl", 120): face.FULL,
            ("OVFaceSm.ovl", 96): face.SHORT, ("OVFaceSm120.ovl", 120): face.SHORT}


def colors():
    """Name -> (red, green, blue) of every colour with a name in the sources."""
    found = {}
    for name in ("forms/colors.h", "window/palette.h", "display/indicators.h"):
        for color, numbers in re.findall(r"Color (k\w+) = MakeColor\(([^)]*)\)", (ROOT / name).read_text("ascii")):
            found[color] = tuple(int(number, 0) for number in numbers.split(","))
    return found


def luminance(color):
    linear = [c / 12.92 if c <= 0.04045 else ((c + 0.055) / 1.055) ** 2.4 for c in (part / 255 for part in color)]
    return 0.2126 * linear[0] + 0.7152 * linear[1] + 0.0722 * linear[2]


def contrast(one, other):
    light, dark = sorted((luminance(one), luminance(other)), reverse=True)
    return (light + 0.05) / (dark + 0.05)


class Picture:
    """The pixels of a face."""

    def __init__(self, path):
        size = subprocess.run(["identify", "-format", "%w", f"png:{path}"], check=True, capture_output=True, text=True)
        self.width = int(size.stdout)
        raw = subprocess.run(["convert", f"png:{path}", "-depth", "8", "rgb:-"], check=True, capture_output=True).stdout
        self._rows = [raw[at:at + self.width * 3] for at in range(0, len(raw), self.width * 3)]

    def pixels(self, rect):
        """The colours in a rectangle (left, top, right, bottom)."""
        left, top, right, bottom = rect
        return [tuple(row[x * 3:x * 3 + 3]) for row in self._rows[max(top, 0):bottom]
                for x in range(max(left, 0), min(right, self.width))]


class ContrastTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.color = colors()
        cls.faces = [(name, view, dpi, Picture(ROOT / "Images" / name)) for (name, dpi), view in PICTURES.items()]

    def check(self, least, color, grounds, what):
        with self.subTest(what=what):
            worst = min((contrast(color, ground), ground) for ground in set(grounds))
            self.assertGreaterEqual(round(worst[0], 2), least, f"{what}: {color} on {worst[1]}")

    def each_control(self, names):
        for picture_name, view, dpi, picture in self.faces:
            for name, place in {**face.CONTROLS[view], **face.LAMPS[view]}.items():
                if re.fullmatch(names, name):
                    yield f"{name} in {picture_name}", picture, face.pixels(place, dpi)

    def test_texts_that_lie_on_the_picture(self):
        for names, color in ((".* (left|middle|right)|port|swr label|power label", "kCaption"),
                             ("message", "kMessageText")):
            for what, picture, (left, top, right, bottom) in self.each_control(names):
                # The ends of the ticks reach into the numbers' windows, above the digits.
                digits = (left, top + (bottom - top) // 4, right, bottom)
                self.check(TEXT, self.color[color], picture.pixels(digits), what)

    def test_texts_with_a_ground_of_their_own(self):
        rows = (("kStatusColor", "kStatusGround"), ("kAlertColor", "kAlertGround"), ("kDigit", "kReadoutGround"),
                ("kAlarmDigit", "kReadoutGround"), ("kMarkerLit", "kFace"), ("kButtonText", "kButton"),
                ("kButtonText", "kHotButton"), ("kButtonText", "kPressedButton"))
        for color, ground in rows:
            self.check(TEXT, self.color[color], [self.color[ground]], f"{color} on {ground}")

    def test_captions_that_are_part_of_the_picture(self):
        for what, picture, (left, top, right, bottom) in self.each_control("(forward|reflected|vswr) readout"):
            height = (bottom - top) // 2
            pixels = sorted(picture.pixels((left, top - height, right, top - height // 4)), key=luminance)
            ground, ink = pixels[len(pixels) // 2], pixels[-1]
            self.check(TEXT, ink, [ground], f"caption of {what}")

    def test_marks_lit_and_dark(self):
        rows = (("kCyan", "kDarkForward"), ("kRed", "kDarkReflected"), ("kLampLit", "kLampDark"),
                ("kMarkerLit", "kMarkerDark"), ("kLightOn", "kLightOff"), ("kFocus", "kFocusGround"))
        for lit, dark in rows:
            self.check(MARK, self.color[lit], [self.color[dark]], f"{lit} beside {dark}")
        for graph, color in (("forward", "kCyan"), ("reflected", "kRed")):
            for what, picture, (left, top, right, _) in self.each_control(f"{graph} graph"):
                self.check(MARK, self.color[color], picture.pixels((left, top, right, top + 2)), what)

    def test_lamps_are_seen_lit_and_dark(self):
        for what, picture, (left, top, right, bottom) in self.each_control(".* (lamp|marker.*|light)"):
            around = [*picture.pixels((left, top - 1, right, top)), *picture.pixels((left, bottom, right, bottom + 1))]
            self.check(MARK, self.color["kRing"], around, f"the ring of {what}")

    def test_focus_mark_stands_out_from_what_is_around_it(self):
        for what, picture, (left, top, right, bottom) in self.each_control(
                "(?!.*(ticks|left|middle|right|ranges|panel|range [0-9]|marker|lamp)).*"):
            reach = 4
            around = [*picture.pixels((left, top - reach, right, top - reach + 1)),
                      *picture.pixels((left, bottom + reach - 1, right, bottom + reach))]
            with self.subTest(what=what):
                for ground in set(around):
                    best = max(contrast(self.color[line], ground) for line in ("kFocus", "kFocusGround"))
                    self.assertGreaterEqual(best, MARK, f"the mark around {what} on {ground}")
        # A mark of two lines is seen on any ground when they are this far apart.
        self.assertGreaterEqual(contrast(self.color["kFocus"], self.color["kFocusGround"]), 9)


if __name__ == "__main__":
    unittest.main()
