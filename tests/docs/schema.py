#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Holds what the workbench prints and writes as JSON against the schemas in docs/schemas.

usage: schema.py TREE BUILD
"""
import json
import subprocess
import sys
import tempfile
from pathlib import Path

TYPES = {"object": dict, "array": list, "string": str, "boolean": bool, "null": type(None)}
NOTES = {"$schema", "title", "$defs"}


def is_type(value, name):
    if name in ("number", "integer"):
        kinds = (int, float) if name == "number" else int
        return isinstance(value, kinds) and not isinstance(value, bool)
    return isinstance(value, TYPES[name])


def problems(value, schema, root, where="it"):
    """What is wrong with a value. A keyword that isn't known here is a problem too: it would go unchecked."""
    for keyword, wanted in schema.items():
        if keyword == "$ref":
            yield from problems(value, root["$defs"][wanted.removeprefix("#/$defs/")], root, where)
        elif keyword == "type":
            names = [wanted] if isinstance(wanted, str) else wanted
            if not any(is_type(value, name) for name in names):
                yield f"{where} is no {' or '.join(names)}: {value!r}"
        elif keyword == "enum":
            if value not in wanted:
                yield f"{where} is {value!r}"
        elif keyword in ("minimum", "maximum"):
            if is_type(value, "number") and (value < wanted if keyword == "minimum" else value > wanted):
                yield f"{where} is {value}"
        elif keyword == "minItems":
            if isinstance(value, list) and len(value) < wanted:
                yield f"{where} has {len(value)} items"
        elif keyword == "items":
            for i, item in enumerate(value if isinstance(value, list) else []):
                yield from problems(item, wanted, root, f"{where}[{i}]")
        elif keyword == "required":
            yield from (f"{where} has no {name}" for name in wanted if name not in value)
        elif keyword == "properties":
            for name in wanted.keys() & (value.keys() if isinstance(value, dict) else set()):
                yield from problems(value[name], wanted[name], root, f"{where}.{name}")
        elif keyword == "additionalProperties":
            known = schema["properties"].keys()
            yield from (f"{where} has {name}" for name in value.keys() - known)
        elif keyword not in NOTES:
            yield f"the schema has {keyword}"


def main(tree, build):
    failed = False
    plan = json.loads((tree / "docs/schemas/plan.schema.json").read_text())
    rules = json.loads((tree / "docs/schemas/shop_rules.schema.json").read_text())
    samples = tree / "samples"
    with tempfile.TemporaryDirectory() as folder:
        printed = [(plan, subprocess.run([build / "bin/brox-workbench", "--data", folder, "--json", *arguments],
                                         cwd=samples, capture_output=True).stdout, arguments)
                   for arguments in (["controller.xml", "--check", "--fewest-tools", "--places"],
                                     ["faults-PTH.drl", "faults-NPTH.drl", "--check", "--units", "inch"],
                                     ["sensor.xml", "--compare", "controller.xml", "--check"],
                                     ["breakout-PTH.drl", "breakout-NPTH.drl", "--places", "--compare",
                                      "breakout-PTH.drl"],
                                     ["breakout-PTH.drl"])]
        printed.append((rules, (Path(folder) / "brox/shop_rules.json").read_bytes(), "the rules"))
    for schema, text, of in printed:
        for problem in problems(json.loads(text), schema, schema):
            print(f"{of}: {problem}")
            failed = True
    # A check that finds nothing wrong in anything would be none.
    assert list(problems({"tolerances": [{}], "checks": {"odd": 1}}, rules, rules))
    return failed


if __name__ == "__main__":
    sys.exit(main(Path(sys.argv[1]), Path(sys.argv[2])))
