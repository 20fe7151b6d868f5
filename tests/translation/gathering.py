# SPDX-License-Identifier: MIT
"""Runs the gatherer, whose path is the argument, on small sources of its own."""
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

FORM = '<ui><string comment="7">Size</string><string notr="true">QLabel {}</string><string/></ui>'
SOURCE = r'''
#define BROX_AMOUNTS_TEXT(text, number) broxText(BROX_KEY("brox_amounts", number, text))
// BROX_KEY("brox_amounts", "1", "comment")
const char* quoted = "BROX_AMOUNTS_TEXT(\"x\", \"2\")";
const char quote = '"';
auto key = BROX_KEY("brox_amounts", "31", "%s\n" /* and */ "\"gone\"");
auto text = BROX_AMOUNTS_TEXT(
    "Sizes & \\", "8");
'''
UP_TO_DATE = '''<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>brox_amounts</name>
    <message>
        <source>Size</source>
        <comment>7</comment>
        <translatorcomment>A remark</translatorcomment>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Sizes &amp; \\</source>
        <comment>8</comment>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Old</source>
        <comment>9</comment>
        <translation type="vanished">Alt</translation>
    </message>
    <message>
        <source>%s
&quot;gone&quot;</source>
        <comment>31</comment>
        <translation>Wieder da</translation>
    </message>
</context>
</TS>
'''
BEFORE = '''<TS version="2.1" language="de"><context><name>brox_amounts</name>
<message><source>%s
"gone"</source><comment>31</comment><translation type="vanished">Wieder da</translation></message>
<message><source>Old</source><comment>9</comment><translation>Alt</translation></message>
<message><source>New</source><comment>9</comment><translation type="unfinished"/></message>
<message><source>Size</source><comment>7</comment><translatorcomment>A remark</translatorcomment>
<translation>Größe</translation></message></context></TS>'''


class Gathering(unittest.TestCase):
    def gather(self, *options, **files):
        with tempfile.TemporaryDirectory() as name:
            folder = Path(name)
            for file, content in files.items():
                (folder / file.replace("_", ".").replace("amounts", "brox_amounts")).write_text(content, "utf-8")
            run = subprocess.run(
                [sys.executable, sys.argv[1], "--sources", folder, *options, folder / "de.ts"],
                capture_output=True, text=True, check=False)
            return run.returncode, run.stderr, (folder / "de.ts").read_text("utf-8")

    def test_updates(self):
        files = {"amounts_ui": FORM, "amounts_cpp": SOURCE}
        self.assertEqual(self.gather(**files, de_ts=BEFORE), (0, "", UP_TO_DATE))
        self.assertEqual(self.gather("--check", **files, de_ts=UP_TO_DATE), (0, "", UP_TO_DATE))
        status, error, content = self.gather("--check", **files, de_ts=BEFORE)
        self.assertEqual((status, content), (1, BEFORE))
        self.assertIn("not up to date", error)

    def test_refuses(self):
        for file, content, expected in (
                ("amounts_ui", "<ui><string>Size</string></ui>", '"Size" has no number'),
                ("amounts_ui", "<ui>", "no element found"),
                ("amounts_cpp", "\nBROX_AMOUNTS_TEXT(name, number)", ":2: a text macro has an argument"),
                ("amounts_cpp", 'BROX_AMOUNTS_TEXT("Size", "x")', ":1: a text macro has no"),
                ("amounts_cpp", 'BROX_KEY("Size", "1")', ":1: "),
                ("amounts_cpp", r'BROX_AMOUNTS_TEXT("\x41", "1")', r"escape \x"),
                ("amounts_cpp", 'BROX_AMOUNTS_TEXT("Size"', "does not end")):
            with self.subTest(content):
                status, error, catalogue = self.gather(**{file: content}, de_ts=BEFORE)
                self.assertEqual((status, catalogue), (1, BEFORE))
                self.assertIn(expected, error)
                self.assertNotIn("Traceback", error)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
