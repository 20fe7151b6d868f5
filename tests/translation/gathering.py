# SPDX-License-Identifier: MIT
"""Runs the gatherer, whose path is the argument, on small sources of its own."""
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as xml
from pathlib import Path

FORM = '<ui><string comment="7">Size</string><string notr="true">QLabel {}</string><string/></ui>'
SOURCE = r'''
#define BROX_AMOUNTS_TEXT(text, number) broxText(BROX_KEY("brox_amounts", text, number))
// BROX_KEY("brox_amounts", "comment", "1")
const char* quoted = "BROX_AMOUNTS_TEXT(\"x\", \"2\")";
const char quote = '"';
auto key = BROX_KEY("brox_amounts", "%s" /* and */ "\"gone\"", "31");
auto text = BROX_AMOUNTS_TEXT(
    "Sizes & \\", "8");
'''
BEFORE = '''<TS language="de"><context><name>brox_amounts</name>
<message><source>%s"gone"</source><comment>31</comment><translation type="vanished">Da</translation></message>
<message><source>Old</source><comment>9</comment><translation>Alt</translation></message>
<message><source>New</source><comment>9</comment><translation type="unfinished"/></message>
<message><source>Size</source><comment>7</comment><translation>Größe</translation></message></context></TS>'''
AFTER = [("7", "Size", None, "Größe"), ("8", "Sizes & \\", "unfinished", None),
         ("9", "Old", "vanished", "Alt"), ("31", '%s"gone"', None, "Da")]

with tempfile.TemporaryDirectory() as name:
    folder = Path(name)
    catalogue = folder / "de.ts"
    catalogue.write_text(BEFORE, "utf-8")

    def gather(*options):
        run = subprocess.run([sys.executable, sys.argv[1], "--sources", folder, *options, catalogue],
                             capture_output=True, text=True, check=False)
        return run.returncode, run.stderr

    (folder / "brox_amounts.ui").write_text("<ui><string>Size</string></ui>", "utf-8")
    assert '"Size" has no number' in gather()[1]
    (folder / "a.cpp").write_text("\nBROX_AMOUNTS_TEXT(name, number)", "utf-8")
    assert ":2: a text macro has an argument" in gather()[1]
    (folder / "brox_amounts.ui").write_text(FORM, "utf-8")
    (folder / "a.cpp").write_text(SOURCE, "utf-8")
    status, error = gather("--check")
    assert status == 1 and "not up to date" in error, error
    assert catalogue.read_text("utf-8") == BEFORE
    assert gather() == (0, "")
    assert gather("--check") == (0, "")
    messages = [(each.findtext("comment"), each.findtext("source"), each.find("translation").get("type"),
                 each.find("translation").text) for each in xml.parse(catalogue).iter("message")]
    assert messages == AFTER, messages
