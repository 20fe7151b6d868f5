#!/bin/sh
# SPDX-License-Identifier: MIT
# Makes the Debian packages of a build, looks at them and runs the workbench that is in them:
# deb.sh CPACK BUILD-FOLDER SOURCE-FOLDER
set -eu
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
export XDG_RUNTIME_DIR="$folder"
unset LD_LIBRARY_PATH

"$1" --config "$2/CPackConfig.cmake" -G DEB -B "$folder" >/dev/null
for package in libbrox1 libbrox-dev brox-workbench; do
    dpkg-deb --extract "$folder/$package"_*.deb "$folder/root"
done
dpkg-deb --field "$folder"/libbrox1_*.deb Depends | grep 'libqt6widgets6.*libqt6xml6'
dpkg-deb --field "$folder"/brox-workbench_*.deb Depends | grep 'libbrox1 (= '
"$folder/root/usr/bin/brox-workbench" "$3/samples/controller.xml" --table --data "$folder/data" | grep Bit
ls "$folder/root/usr/share/applications/brox-workbench.desktop"

# An exported name that comes or goes has to be announced to packages that depend on it.
library=$(find "$folder/root" -name libbrox.so.1)
mkdir "$folder/debian"
printf 'Source: brox\n\nPackage: libbrox1\nArchitecture: any\n' >"$folder/debian/control"
(cd "$folder" && dpkg-gensymbols -plibbrox1 -v1.0.0 -e"$library" -I"$3/packaging/symbols" -O/dev/null -c4)

if command -v lintian >/dev/null; then
    # A build that is not for /usr has its libraries where these two look for public ones.
    lintian --fail-on error,warning "$folder"/*.deb \
        --suppress-tags maintscript-calls-ldconfig,pkg-config-unavailable-for-cross-compilation
else
    echo "lintian is not installed: the packages are not checked by it"
fi
