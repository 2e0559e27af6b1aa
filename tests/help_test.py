"""The help page against the program: it is well-formed, complete in itself, and quotes what the sources say.

On the page <samp> marks a text of the program, letter for letter; <samp class="made"> one that is put together
while it runs.
"""

import base64
import re
import struct
import unittest
import xml.etree.ElementTree as ElementTree
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
PAGE = ROOT / "Help" / "OrvaneLite.html"
FOLDERS = ("window", "settings", "link", "outside", "display")

# Sources that hold hardly anything but texts for the operator, and what in them is none.
WHOLE_FILES = ("window/menus.cpp", "settings/meter_setup_panel.cpp", "settings/program_settings_panel.cpp",
               "settings/port_choices.cpp", "window/face_builder.cpp", "outside/about.cpp", "display/range_scales.cpp")
NOT_SHOWN = {"Arial", "/separator/", "COM"}
CALLS = re.compile(r"\b(?:ShowStatus|ShowAlert|ShowError|ShowBox|ShowMessageBox|AskOkCancel)\(")
RETURNED = re.compile(r'\breturn ("[^"\n]*[a-z] [^"\n]*")')  # a sentence, not a word

LITERAL = r'"((?:[^"\\\n]|\\.)*)"'
LITERALS = re.compile(LITERAL + r"(?:\s*" + LITERAL + ")*")


def read(name):
    text = (ROOT / name).read_text(encoding="ascii")
    text = re.sub(r'^#include.*$|(?<![:"])//.*$', "", text, flags=re.MULTILINE)
    return re.sub(r"RuntimeError\([^;]*;", ";", text)  # what a fault says is not shown


def plain(text):
    """As it looks on the page: mnemonics are not marked, and blanks count once."""
    return " ".join(text.replace("&", "").split())


def literals(source):
    """The texts in a piece of source; neighbours make one, as for the compiler."""
    for found in LITERALS.finditer(source):
        whole = "".join(re.findall(LITERAL, found.group()))
        yield plain(re.sub(r"\\(x[0-9A-F]{2}|.)", lambda m: {"n": "\n", '"': '"'}.get(m[1], ""), whole))


def arguments(source):
    """What stands between the parentheses of each call that shows a text."""
    quoted = re.compile(LITERAL)
    for call in CALLS.finditer(source):
        at, depth = call.end(), 1
        while depth > 0:
            skip = quoted.match(source, at)
            depth += {"(": 1, ")": -1}.get(source[at], 0)
            at = skip.end() if skip else at + 1
        yield source[call.end():at]


def shown_texts():
    """Text -> the source that shows it."""
    pieces = [(read(name), name) for name in WHOLE_FILES]
    for folder in FOLDERS:
        for path in sorted((ROOT / folder).glob("*.cpp")) + sorted((ROOT / folder).glob("*.h")):
            name = f"{folder}/{path.name}"
            source = read(name)
            pieces += [(piece, name) for piece in arguments(source)]
            if folder in ("window", "settings"):
                pieces += [(piece, name) for piece in RETURNED.findall(source)]
    return {text: name for piece, name in pieces for text in literals(piece)
            if re.search("[A-Za-z]", text) and text not in NOT_SHOWN}


def all_literals():
    return {text for folder in FOLDERS for path in (ROOT / folder).iterdir() if path.suffix in (".cpp", ".h")
            for text in literals(read(f"{folder}/{path.name}"))}


class HelpPage(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.source = PAGE.read_text(encoding="utf-8")
        cls.page = ElementTree.fromstring(cls.source)
        cls.quoted = {plain("".join(samp.itertext())) for samp in cls.page.iter("samp")}

    def test_anchors(self):
        ids = [element.get("id") for element in self.page.iter() if element.get("id")]
        self.assertEqual(len(ids), len(set(ids)), "an id stands twice")
        targets = {a.get("href")[1:] for a in self.page.iter("a") if a.get("href").startswith("#")}
        self.assertEqual(targets - set(ids), set(), "links that lead nowhere")
        chapters = {h2.get("id") for h2 in self.page.iter("h2")} - {"contents"}
        listed = {a.get("href")[1:] for a in self.page.find(".//nav").iter("a")}
        self.assertEqual(listed, chapters, "the table of contents and the chapters")

    def test_pictures(self):
        pictures = list(self.page.iter("img"))
        self.assertEqual(len(pictures), 2)
        for picture in pictures:
            self.assertGreater(len(picture.get("alt", "")), 40)
            kind, data = picture.get("src").split(",", 1)
            self.assertEqual(kind, "data:image/png;base64")
            data = base64.b64decode(data, validate=True)
            size = struct.unpack(">II", data[16:24])
            self.assertEqual(size, (int(picture.get("width")), int(picture.get("height"))))
            name = {260: "full-view", 124: "short-view"}[size[1]]
            self.assertEqual(data, (ROOT / "docs" / "images" / f"{name}.png").read_bytes(),
                             "scripts/screenshots --documents takes both from the program")

    def test_stands_alone(self):
        addresses = (ROOT / "outside/addresses.h").read_text(encoding="ascii")
        web = re.search(r'kWebSite = "(.*)"', addresses)[1]
        mail = "mailto:" + re.search(r'kSupportAddress = "(.*)"', addresses)[1]
        for element in self.page.iter():
            self.assertNotIn(element.tag, ("script", "link", "iframe", "object", "embed", "base"))
            for name, value in element.attrib.items():
                self.assertFalse(name.startswith("on") or name in ("style", "srcset"), f"{name} of {element.tag}")
                if name in ("href", "src") and not value.startswith(("#", "data:")):
                    self.assertIn(value, (web, mail))
        self.assertNotRegex(self.page.find(".//style").text, r"url\(|@import")
        self.assertRegex(self.source, r'^<!DOCTYPE html>\n<html lang="en">\n<head>\n<meta charset="utf-8"/>')

    def test_every_text_of_the_program_is_told(self):
        texts = shown_texts()
        self.assertGreater(len(texts), 120, "the sources are no longer read as they are written")
        for text, name in texts.items():
            with self.subTest(text=text, source=name):
                self.assertTrue(text in self.quoted, "the page does not tell it")

    def test_every_quoted_text_is_one_of_the_program(self):
        known = all_literals()
        for samp in self.page.iter("samp"):
            text = plain("".join(samp.itertext()))
            with self.subTest(quoted=text):
                self.assertTrue(samp.get("class") == "made" or text in known, "no source has it")

    def test_settings_file(self):
        members = dict(re.findall(r"(?m)^  \S+ (\w+) = (.*);", read("settings/user_settings.h")))
        rows = re.findall(r'SettingRow\{\w+, "([A-Z-]+)", &UserSettings::(\w+)', read("settings/setting_rows.cpp"))
        self.assertGreater(len(rows), 10)
        defaults = {key: members[member].strip('"').capitalize() if members[member] in ("true", "false")
                    else members[member].strip('"') for key, member in rows}
        table = self.page.find(".//table[@id='settings-keys']")
        cells = [[code.text for code in row.iter("code")] for row in table.iter("tr")]
        self.assertEqual(dict(row for row in cells if len(row) == 2), defaults)


if __name__ == "__main__":
    unittest.main()
