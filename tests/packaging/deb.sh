#!/bin/sh
# SPDX-License-Identifier: MIT
# Makes the Debian package of a build and runs the workbench that is in it: deb.sh CPACK BUILD-FOLDER BOARD
set -eu
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
export XDG_RUNTIME_DIR="$folder"
unset LD_LIBRARY_PATH

"$1" --config "$2/CPackConfig.cmake" -G DEB -B "$folder" >/dev/null
dpkg-deb --field "$folder"/brox_*.deb Depends | grep 'libqt6widgets6.*libqt6xml6'
dpkg-deb --extract "$folder"/brox_*.deb "$folder/root"
"$folder/root/usr/bin/brox-workbench" "$3" --table --data "$folder/data" | grep Bit
ls "$folder/root/usr/share/applications/brox-workbench.desktop" "$folder/root/usr/share/doc/brox/copyright"
