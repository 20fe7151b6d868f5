#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Checks a page against the project: pages.py TREE BUILD-FOLDER PAGE

Links lead somewhere. Commands run, here or where RUN_BY says, and print the text block that follows them; a line
"..." there stands for any lines. Code is an excerpt of the example host.
"""
import os
import re
import shlex
import subprocess
import sys
import tempfile
from pathlib import Path

BLOCK = re.compile(r"^```(\w*)\n(.*?)^```$", re.DOTALL | re.MULTILINE)
LINK = re.compile(r"\]\(([^)\s]+)\)")
HEADING = re.compile(r"^#+ (.*)$", re.MULTILINE)

RUN_HERE = ("build/release/bin/", "xmllint ")

# Commands that are too long for this test, and the file whose run runs them.
RUN_BY = {"tools/": ".ci/run", "docs/make-images": None}


def anchors(page):
    text = BLOCK.sub("", page.read_text(encoding="utf-8"))
    return {re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in HEADING.findall(text)}


def broken_links(page, text):
    for target in LINK.findall(text):
        if re.match("[a-z]+:", target):
            continue
        path, _, anchor = target.partition("#")
        file = (page.parent / path).resolve() if path else page
        if not file.exists():
            yield f"{target} leads nowhere"
        elif anchor and anchor not in anchors(file):
            yield f"{target}: no such heading"


def run(command, tree, build, home):
    """What a command prints; programs are those of the build folder."""
    words = shlex.split(command)
    if words[0].startswith("build/"):
        words[0] = str(build / Path(words[0]).relative_to("build/release"))
    if words[0].endswith("brox-workbench") and "--data" not in words:
        words += ["--data", home]
    environment = {**os.environ, "XDG_RUNTIME_DIR": home, "QT_QPA_PLATFORM": "offscreen"}
    done = subprocess.run(words, cwd=tree, env=environment, capture_output=True, text=True, check=False)
    if done.returncode != 0:
        return f"(status {done.returncode}) {done.stderr}"
    return done.stdout


def wrong_output(command, shown, printed):
    pattern = re.escape(shown).replace(re.escape("...\n"), r"(?:.*\n)*")
    if not re.fullmatch(pattern, printed):
        yield f"{command}\nprints\n{printed}"


def wrong_commands(text, tree, build):
    blocks = BLOCK.findall(text)
    with tempfile.TemporaryDirectory() as home:
        for (language, content), (next_language, shown) in zip(blocks, blocks[1:] + [("", "")]):
            commands = content.splitlines() if language == "sh" else []
            for command in commands:
                if command.startswith(RUN_HERE):
                    printed = run(command, tree, build, home)
                    if next_language == "text":
                        yield from wrong_output(command, shown, printed)
                    elif printed.startswith("(status"):
                        yield f"{command}: {printed}"
                    continue
                runners = [runner for start, runner in RUN_BY.items() if command.startswith(start)]
                first = command.split()[0]
                if not runners:
                    yield f"{command}: nobody runs this"
                elif not (tree / first).exists() and "/" in first:
                    yield f"{command}: no such file"
                elif runners[0] and command not in (tree / runners[0]).read_text(encoding="utf-8"):
                    yield f"{command}: {runners[0]} does not run this"


def strange_code(text, tree):
    example = "".join(path.read_text(encoding="utf-8")
                      for path in sorted((tree / "examples/host").glob("*")) if path.is_file())
    for language, content in BLOCK.findall(text):
        if language in ("c", "cpp", "cmake") and content not in example:
            yield f"not in examples/host:\n{content}"


def main():
    tree, build, page = (Path(argument).resolve() for argument in sys.argv[1:])
    text = page.read_text(encoding="utf-8")
    problems = [*broken_links(page, text), *wrong_commands(text, tree, build), *strange_code(text, tree)]
    for problem in problems:
        print(f"{page.name}: {problem}")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
