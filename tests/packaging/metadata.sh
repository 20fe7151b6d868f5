#!/bin/sh
# SPDX-License-Identifier: MIT
# Checks the files by which desktops and services know brox: metadata.sh SOURCE-FOLDER
# It says which tools are missing, and is skipped then.
set -eu
cd "$1"
missing=0

with() {
    if command -v "$1" >/dev/null; then
        "$@"
    else
        echo "$1 is not installed: nothing is checked by it"
        missing=77
    fi
}

with desktop-file-validate packaging/brox-workbench.desktop
with appstreamcli validate --no-net packaging/org.example.Brox.metainfo.xml

# What a double click opens: the types of the desktop file are those that the names of boards have.
data=$(mktemp -d)
trap 'rm -rf "$data"' EXIT
mkdir -p "$data/packages"
cp packaging/brox-workbench.mime.xml "$data/packages"
with update-mime-database "$data"
for glob in ipc2581 cvg drl xln; do
    [ -e "$data/globs2" ] || break
    type=$(sed -n "s/^[0-9]*:\(.*\):\*\.$glob\$/\1/p" "$data/globs2")
    grep -q "^MimeType=.*\b$type;" packaging/brox-workbench.desktop
    grep -q "<mediatype>$type<" packaging/org.example.Brox.metainfo.xml
done

if python3 -c 'import yaml' 2>/dev/null; then
    python3 - <<'PYTHON'
import yaml
ci = yaml.safe_load(open(".github/workflows/ci.yml", encoding="utf-8"))
commands = [step.get("run") for job in ci["jobs"].values() for step in job["steps"]]
assert {"tools/run", "tools/test"} <= set(commands), commands
flatpak = yaml.safe_load(open("packaging/org.example.Brox.yml", encoding="utf-8"))
assert flatpak["command"] == "brox-workbench" and flatpak["modules"][-1]["buildsystem"] == "cmake-ninja"
PYTHON
else
    echo "python3-yaml is not installed: the recipes are not checked"
    missing=77
fi
exit "$missing"
