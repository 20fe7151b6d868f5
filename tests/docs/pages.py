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
RUN_HERE = ("build/release/bin/", "xmllint ", "cat /tmp/")

# Commands that are too long for this test, and the file whose run runs them.
RUN_BY = {"tools/": ".ci/run", "docs/make-images": None, ".ci/run": None}


def broken_links(page):
    for target in re.findall(r"\]\((?![a-z]+:)([^)\s]+)\)", page.read_text(encoding="utf-8")):
        path, _, anchor = target.partition("#")
        file = page.parent / path if path else page
        if not file.exists():
            yield f"{target} leads nowhere"
        elif anchor:
            headings = re.findall("^#+ (.*)$", BLOCK.sub("", file.read_text(encoding="utf-8")), re.MULTILINE)
            if anchor not in (re.sub(r"[^\w\- ]", "", each.lower()).replace(" ", "-") for each in headings):
                yield f"{target}: no such heading"


def run(command, tree, build, home):
    """What a command prints; programs are those of the build folder."""
    words = shlex.split(command.replace("build/release", str(build)))
    if words[0].endswith("brox-workbench"):
        words += ["--data", home]
    environment = {**os.environ, "XDG_RUNTIME_DIR": home, "QT_QPA_PLATFORM": "offscreen"}
    done = subprocess.run(words, cwd=tree, env=environment, capture_output=True, text=True, check=False)
    # 3 is no error: two boards differ.
    return done.stdout if done.returncode in (0, 3) else f"(status {done.returncode}) {done.stderr}"


def wrong_commands(blocks, tree, build):
    commands = [(command, shown if language == "text" else "...\n")
                for (shell, content), (language, shown) in zip(blocks, [*blocks[1:], ("", "")]) if shell == "sh"
                for command in content.splitlines()]
    with tempfile.TemporaryDirectory() as home:
        for command, shown in commands:
            runners = [runner for start, runner in RUN_BY.items() if command.startswith(start)]
            if command.startswith(RUN_HERE):
                printed = run(command, tree, build, home)
                pattern = re.escape(shown).replace(re.escape("...\n"), r"(?:.*\n)*")
                if printed.startswith("(status") or not re.fullmatch(pattern, printed):
                    yield f"{command}\nprints\n{printed}"
            elif not runners:
                yield f"{command}: nobody runs this"
            elif not (tree / command.split()[0]).exists():
                yield f"{command}: no such file"
            elif runners[0] and command not in (tree / runners[0]).read_text(encoding="utf-8"):
                yield f"{command}: {runners[0]} does not run this"


def strange_code(blocks, tree):
    files = [path for path in (tree / "examples/host").iterdir() if path.is_file()]
    for language, content in blocks:
        if language in ("c", "cpp", "cmake") and all(content not in path.read_text("utf-8") for path in files):
            yield f"not in examples/host:\n{content}"


def main():
    tree, build, page = (Path(argument).resolve() for argument in sys.argv[1:])
    blocks = BLOCK.findall(page.read_text(encoding="utf-8"))
    problems = [*broken_links(page), *wrong_commands(blocks, tree, build), *strange_code(blocks, tree)]
    for problem in problems:
        print(f"{page.name}: {problem}")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
