#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Writes the drill files of a sample board beside this script; the same files at each run."""

import pathlib


def rows(x, y, count, pitch, lines=1, spacing=0.0):
    """Places of a connector's pins or of stitching vias."""
    return [(x + i * pitch, y + j * spacing) for j in range(lines) for i in range(count)]


def place(x, y):
    return f"X{x:.3f}Y{y:.3f}"


def drill_file(header, tools):
    """tools: (comments above the definition, diameter, lines of the program)"""
    lines = ["M48", *header, "FMAT,2", "METRIC"]
    for number, (comments, diameter, _) in enumerate(tools, 1):
        lines += [*comments, f"T{number:02}C{diameter:.3f}"]
    lines += ["%", "G90", "G05"]
    for number, (_, _, program) in enumerate(tools, 1):
        lines += [f"T{number:02}", *program]
    return "\n".join([*lines, "T00", "M30", ""])


def plated():
    """Vias, two headers, screw terminals, a press-fit connector and the slots of a power jack."""
    def attribute(function):
        return [f"; #@! TA.AperFunction,Plated,PTH,{function}"]

    def holes(places):
        return [place(*at) for at in places]

    slots = [f"{place(4, y)}G85{place(6.5, y)}" for y in (8.0, 12.5, 17.0)]
    return drill_file(["; #@! TF.FileFunction,Plated,1,4,PTH"], [
        (attribute("ViaDrill"), 0.3, holes(rows(10, 6, 24, 1.8, 4, 7.3))),
        (attribute("ViaDrill"), 0.4, holes(rows(12, 9, 9, 4.5, 2, 14))),
        (attribute("ComponentPressFitDrill"), 0.6, holes(rows(14, 26, 16, 2, 2, 2))),
        (attribute("ComponentDrill"), 0.9, slots + holes(rows(12, 3, 20, 2.54))),
        (attribute("ComponentDrill"), 1.0, holes(rows(12, 33, 20, 2.54))),
        (attribute("ComponentDrill"), 1.3, holes(rows(56, 10, 2, 5.08, 3, 5.08))),
    ])


def unplated():
    """Mounting holes and break-off tabs; only the file's name says that they are not plated."""
    corners = [place(x, y) for x in (3.5, 64.5) for y in (3.5, 32.5)]
    # Seven holes a tab, and the same tab three times more along the edge.
    tabs = ["M25", "X8.000Y0.000", "R06X0.800", "M01", "M02X16.000R3", "M08"]
    return drill_file([], [([], 0.5, tabs), ([], 3.2, corners)])


if __name__ == "__main__":
    folder = pathlib.Path(__file__).parent
    for name, content in (("PTH", plated()), ("NPTH", unplated())):
        (folder / f"breakout-{name}.drl").write_text(content)
