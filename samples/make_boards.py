#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Writes the sample boards beside this script; the same files at each run."""

import math
import pathlib
import random
import xml.etree.ElementTree as ET
from dataclasses import dataclass, field

NAMESPACE = "http://webstds.ipc.org/2581"


@dataclass
class Tool:
    """Holes that are alike; sizes in the board's units."""
    layer: str
    status: str
    diameter: float
    plus: float
    minus: float
    count: int
    pitch: float = 0  # 0: scattered, else a connector's rows of two


@dataclass
class Board:
    job: str
    revision: str
    units: str
    width: float
    height: float
    decimals: int
    copper: list
    drills: dict  # name of a drill layer: the layers that it spans
    tools: list
    slots: list = field(default_factory=list)  # (status, width, length)
    panel: tuple = ()  # (nx, ny, border, gap, tooling hole)
    namespace: bool = True
    tolerances: bool = True


def element(parent, tag, **attributes):
    return ET.SubElement(parent, tag, {k: str(v) for k, v in attributes.items()})


class Writer:
    def __init__(self, board, seed):
        self.board = board
        self.random = random.Random(seed)
        self.holes = 0

    def number(self, value):
        text = f"{value:.{self.board.decimals}f}"
        return text.rstrip("0").rstrip(".") if "." in text else text

    def point(self):
        margin = 0.06
        along = [margin + (1 - 2 * margin) * self.random.random() for _ in range(2)]
        return along[0] * self.board.width, along[1] * self.board.height

    def places(self, tool):
        """Where a tool's holes lie."""
        if not tool.pitch:
            return [self.point() for _ in range(tool.count)]
        x, y = self.point()
        columns = math.ceil(tool.count / 2)
        x = min(x, max(tool.pitch, self.board.width - columns * tool.pitch))
        y = min(y, self.board.height - 2 * tool.pitch)
        return [(x + i // 2 * tool.pitch, y + i % 2 * tool.pitch) for i in range(tool.count)]

    def nets(self):
        """The holes by net, so that tools come mixed as they do from a layout."""
        nets = {}
        for tool in self.board.tools:
            for x, y in self.places(tool):
                unplated = tool.status == "NONPLATED"
                pick = self.random.random()
                name = "" if unplated else "GND" if pick < 0.3 else f"N{int(pick * 60):02d}"
                nets.setdefault((tool.layer, name), []).append((tool, x, y))
        return nets

    def hole(self, parent, tool, x, y):
        self.holes += 1
        tolerances = {}
        if self.board.tolerances or tool.plus or tool.minus:
            tolerances = {"plusTol": self.number(tool.plus), "minusTol": self.number(tool.minus)}
        element(parent, "Hole", name=f"H{self.holes}", diameter=self.number(tool.diameter),
                platingStatus=tool.status, **tolerances, x=self.number(x), y=self.number(y))

    def rectangle(self, parent, width, height):
        polygon = element(parent, "Polygon")
        element(polygon, "PolyBegin", x=0, y=0)
        for x, y in ((width, 0), (width, height), (0, height), (0, 0)):
            element(polygon, "PolyStepSegment", x=self.number(x), y=self.number(y))

    def content(self, root, steps):
        content = element(root, "Content", roleRef="Owner")
        element(content, "FunctionMode", mode="FABRICATION", level=1)
        for step in steps:
            element(content, "StepRef", name=step)
        for layer in [*self.board.copper, *self.board.drills, *self.rout_layers()]:
            element(content, "LayerRef", name=layer)
        lines = element(content, "DictionaryLineDesc", units=self.board.units)
        entry = element(lines, "EntryLineDesc", id="TRACE")
        element(entry, "LineDesc", lineEnd="ROUND", lineWidth=self.number(self.board.width / 500))
        pads = element(content, "DictionaryStandard", units=self.board.units)
        for diameter in sorted({tool.diameter for tool in self.board.tools}):
            entry = element(pads, "EntryStandard", id=self.pad(diameter))
            element(entry, "Circle", diameter=self.number(diameter * 1.8))

    def pad(self, diameter):
        return f"PAD_{self.number(diameter)}"

    def rout_layers(self):
        return ["ROUT"] if self.board.slots else []

    def logistics(self, root):
        header = element(root, "LogisticHeader")
        element(header, "Role", id="Owner", roleFunction="SENDER")
        element(header, "Enterprise", id="Samples", code="NONE")
        element(header, "Person", name="Designer", enterpriseRef="Samples", roleRef="Owner")
        history = element(root, "HistoryRecord", number=1, origination="2024-03-01T08:00:00",
                          software="make_boards", lastChange="2024-03-01T08:00:00")
        element(history, "FileRevision", fileRevisionId=1, comment="", label="")

    def layers(self, data):
        copper = self.board.copper
        for i, name in enumerate(copper):
            side = "TOP" if i == 0 else "BOTTOM" if i == len(copper) - 1 else "INTERNAL"
            element(data, "Layer", name=name, layerFunction="CONDUCTOR", side=side,
                    polarity="POSITIVE")
        for name, (start, end) in self.board.drills.items():
            layer = element(data, "Layer", name=name, layerFunction="DRILL", side="ALL",
                            polarity="POSITIVE")
            element(layer, "Span", fromLayer=start, toLayer=end)
        for name in self.rout_layers():
            layer = element(data, "Layer", name=name, layerFunction="ROUT", side="ALL",
                            polarity="POSITIVE")
            element(layer, "Span", fromLayer=copper[0], toLayer=copper[-1])

    def step(self, data, name):
        attributes = {"type": "BOARD"} if self.board.revision == "C" else {}
        step = element(data, "Step", name=name, **attributes)
        for i, tool in enumerate(self.board.tools):
            stack = element(step, "PadStackDef", name=f"STACK_{i + 1}")
            element(stack, "PadstackHoleDef", name=f"STACK_{i + 1}",
                    diameter=self.number(tool.diameter), platingStatus=tool.status,
                    plusTol=self.number(tool.plus), minusTol=self.number(tool.minus), x=0, y=0)
            pad = element(stack, "PadstackPadDef", layerRef=self.board.copper[0], padUse="REGULAR")
            element(pad, "Location", x=0, y=0)
            element(pad, "StandardPrimitiveRef", id=self.pad(tool.diameter))
        element(step, "Datum", x=0, y=0)
        self.rectangle(element(step, "Profile"), self.board.width, self.board.height)
        nets = self.nets()
        self.copper(step, nets)
        for layer in self.board.drills:
            feature = element(step, "LayerFeature", layerRef=layer)
            for (of_layer, net), holes in nets.items():
                if of_layer == layer:
                    group = element(feature, "Set", **({"net": net} if net else {}))
                    for hole in holes:
                        self.hole(group, *hole)
        self.slots(step)

    def copper(self, step, nets):
        feature = element(step, "LayerFeature", layerRef=self.board.copper[0])
        for (_, net), holes in nets.items():
            if not net:
                continue
            group = element(feature, "Set", net=net, polarity="POSITIVE")
            for tool, x, y in holes:
                pad = element(group, "Pad")
                element(pad, "Location", x=self.number(x), y=self.number(y))
                element(pad, "StandardPrimitiveRef", id=self.pad(tool.diameter))
            if len(holes) > 1:
                line = element(element(group, "Features"), "Polyline")
                for i, (_, x, y) in enumerate(holes[:12]):
                    tag = "PolyStepSegment" if i else "PolyBegin"
                    element(line, tag, x=self.number(x), y=self.number(y))
                element(line, "LineDescRef", id="TRACE")

    def slots(self, step):
        if not self.board.slots:
            return
        feature = element(step, "LayerFeature", layerRef="ROUT")
        for i, (status, width, length) in enumerate(self.board.slots):
            x, y = self.point()
            tag = "Slot" if self.board.revision == "A" else "SlotCavity"
            slot = element(element(feature, "Set"), tag, name=f"S{i + 1}", platingStatus=status,
                           plusTol=self.number(width / 20), minusTol=self.number(width / 20))
            element(slot, "Location", x=self.number(x), y=self.number(y))
            element(slot, "Oval", width=self.number(length), height=self.number(width))

    def panel(self, data):
        nx, ny, border, gap, tooling = self.board.panel
        step = element(data, "Step", name="panel")
        dx, dy = self.board.width + gap, self.board.height + gap
        width, height = nx * dx - gap + 2 * border, ny * dy - gap + 2 * border
        element(step, "Datum", x=0, y=0)
        self.rectangle(element(step, "Profile"), width, height)
        element(step, "StepRepeat", stepRef="board", x=self.number(border), y=self.number(border),
                nx=nx, ny=ny, dx=self.number(dx), dy=self.number(dy), angle=0, mirror="false")
        feature = element(step, "LayerFeature", layerRef=tooling.layer)
        for x in (border / 2, width - border / 2):
            for y in (border / 2, height - border / 2):
                self.hole(element(feature, "Set"), tooling, x, y)

    def write(self, path):
        board = self.board
        namespace = {"xmlns": NAMESPACE} if board.namespace else {}
        root = ET.Element("IPC-2581", {"revision": board.revision, **namespace})
        self.content(root, ["panel", "board"] if board.panel else ["board"])
        self.logistics(root)
        ecad = element(root, "Ecad", name=board.job)
        element(ecad, "CadHeader", units=board.units)
        data = element(ecad, "CadData")
        self.layers(data)
        self.step(data, "board")
        if board.panel:
            self.panel(data)
        ET.indent(root, " ")
        ET.ElementTree(root).write(path, encoding="UTF-8", xml_declaration=True)


def controller():
    """Six layers in millimetres: through, blind and buried vias, connectors, slots."""
    through, blind, back, buried, bare = (
        "DRILL_1-6", "DRILL_1-2", "DRILL_6-5", "DRILL_2-5", "DRILL_NPTH")
    tools = [
        Tool(blind, "VIA", 0.10, 0, 0, 96), Tool(blind, "VIA_CAPPED", 0.15, 0.02, 0.05, 40),
        Tool(back, "VIA", 0.10, 0, 0, 64),
        Tool(buried, "VIA", 0.20, 0.05, 0.05, 72), Tool(buried, "VIA", 0.25, 0.05, 0.05, 24),
        Tool(through, "VIA", 0.25, 0.05, 0.05, 120), Tool(through, "VIA", 0.30, 0.05, 0.10, 90),
        Tool(through, "VIA_CAPPED", 0.30, 0.05, 0.05, 36),
        Tool(through, "VIA", 0.40, 0.08, 0.08, 30),
    ]
    tools += [Tool(through, "PLATED", diameter, plus, 0.05, count, pitch)
              for diameter, plus, count, pitch in (
                  (0.60, 0.10, 24, 1.27), (0.70, 0.10, 18, 2.0), (0.80, 0.10, 16, 2.54),
                  (0.90, 0.10, 20, 2.54), (1.00, 0.10, 40, 2.54), (1.00, 0.05, 8, 2.54),
                  (1.10, 0.10, 12, 3.5), (1.20, 0.10, 10, 3.81), (1.30, 0.10, 12, 5.08),
                  (1.50, 0.10, 4, 5.08), (1.75, 0.10, 4, 0), (2.30, 0.10, 2, 0),
                  (3.20, 0.15, 4, 0))]
    tools += [Tool(bare, "NONPLATED", diameter, 0.05, minus, count)
              for diameter, minus, count in (
                  (0.65, 0.05, 4), (1.00, 0.05, 3), (1.60, 0.05, 4), (2.05, 0.0, 2),
                  (3.20, 0.05, 6), (4.30, 0.10, 2))]
    return Board("controller", "C", "MILLIMETER", 120, 80, 4,
                 ["TOP", "GND1", "SIG1", "SIG2", "PWR", "BOTTOM"],
                 {through: ("TOP", "BOTTOM"), blind: ("TOP", "GND1"), back: ("BOTTOM", "PWR"),
                  buried: ("GND1", "PWR"), bare: ("TOP", "BOTTOM")}, tools,
                 slots=[("PLATED", 0.6, 1.5)] * 4 + [("NONPLATED", 1.0, 12.0)] * 2)


def backplane():
    """Four layers in inches: rows of connector pins, with few tolerances told."""
    through, blind, bare = "drill_1-4", "drill_1-2", "npth"
    tools = [
        Tool(blind, "VIA", 0.006, 0, 0, 48), Tool(blind, "VIA", 0.008, 0.001, 0.002, 32),
        Tool(through, "VIA", 0.010, 0, 0, 140), Tool(through, "VIA", 0.012, 0.003, 0.003, 80),
        Tool(through, "VIA", 0.016, 0.003, 0.003, 40), Tool(through, "VIA", 0.020, 0, 0, 16),
    ]
    tools += [Tool(through, "PLATED", diameter, tolerance, tolerance, count, pitch)
              for diameter, tolerance, count, pitch in (
                  (0.0236, 0.002, 96, 0.0787), (0.0280, 0.003, 48, 0.1), (0.0320, 0.003, 24, 0.1),
                  (0.0360, 0.003, 64, 0.1), (0.0394, 0.003, 40, 0.1), (0.0400, 0.003, 20, 0.1),
                  (0.0430, 0.003, 12, 0.15), (0.0520, 0.003, 8, 0.2), (0.0630, 0.004, 6, 0.2),
                  (0.0750, 0, 4, 0), (0.1250, 0.005, 4, 0))]
    tools += [Tool(bare, "NONPLATED", diameter, 0.002, 0.002, count)
              for diameter, count in ((0.0400, 6), (0.0625, 4), (0.0787, 2), (0.1260, 8),
                                      (0.1560, 4))]
    return Board("backplane", "B", "INCH", 10, 6, 5, ["top", "in1", "in2", "bottom"],
                 {through: ("top", "bottom"), blind: ("top", "in1"), bare: ("top", "bottom")},
                 tools, slots=[("PLATED", 0.030, 0.080)] * 3, tolerances=False)


def sensor():
    """Two layers in microns on a panel of twelve, written without a namespace."""
    through = "Drill"
    tools = [Tool(through, "VIA", 300, 50, 50, 60), Tool(through, "VIA", 350, 50, 50, 14),
             Tool(through, "PLATED", 650, 100, 50, 6, 1270),
             Tool(through, "PLATED", 800, 100, 50, 8, 2540),
             Tool(through, "PLATED", 1000, 100, 50, 10, 2540),
             Tool(through, "PLATED", 1400, 100, 100, 4, 5080),
             Tool(through, "NONPLATED", 1100, 50, 50, 2),
             Tool(through, "NONPLATED", 2700, 50, 50, 2)]
    return Board("sensor", "A", "MICRON", 36000, 24000, 0, ["Top", "Bottom"],
                 {through: ("Top", "Bottom")}, tools, slots=[("NONPLATED", 800, 2400)],
                 panel=(4, 3, 8000, 2000, Tool(through, "NONPLATED", 3175, 25, 25, 4)),
                 namespace=False)


if __name__ == "__main__":
    folder = pathlib.Path(__file__).parent
    for number, sample in enumerate((controller(), backplane(), sensor())):
        Writer(sample, number).write(folder / f"{sample.job}.xml")
