#!/bin/sh
# SPDX-License-Identifier: MIT
# Makes the Debian package of a build and runs the workbench that is in it: deb.sh CPACK BUILD-FOLDER BOARD
set -eu
cpack=$1
build=$2
board=$3

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
export XDG_RUNTIME_DIR="$folder"
unset LD_LIBRARY_PATH

"$cpack" --config "$build/CPackConfig.cmake" -G DEB -B "$folder" >/dev/null
dpkg-deb --field "$folder"/brox_*.deb Depends | grep 'libqt6widgets6.*libqt6xml6'
dpkg-deb --extract "$folder"/brox_*.deb "$folder/root"
"$folder/root/usr/bin/brox-workbench" "$board" --table --data "$folder/data" | grep Bit
for file in applications/brox-workbench.desktop man/man1/brox-workbench.1.gz doc/brox/copyright; do
    test -s "$folder/root/usr/share/$file"
done
