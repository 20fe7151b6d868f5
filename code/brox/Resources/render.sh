#!/bin/sh
# SPDX-License-Identifier: MIT
# Renders every drawing of this folder to the PNG beside it. The drawings use 16 units for 96 pixels: an edge on a
# whole unit stays sharp at 16 and 32 pixels, one on an even unit at 24 as well.
set -eu
cd "$(dirname "$0")"
for svg in *.svg; do
    rsvg-convert --width=96 --height=96 --output="${svg%.svg}.png" "$svg"
done
