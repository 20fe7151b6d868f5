#!/bin/sh
# SPDX-License-Identifier: MIT
# Installs a build to a folder, builds a host against what is there, and runs it and the workbench:
# install.sh CMAKE BUILD-FOLDER SOURCE-FOLDER [CMAKE-OPTION...]
set -eu
cmake=$1
build=$2
source=$3
shift 3

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
prefix=$folder/prefix
export XDG_RUNTIME_DIR="$folder" QT_QPA_PLATFORM=offscreen
unset LD_LIBRARY_PATH

fail() {
    echo "$*" >&2
    exit 1
}

"$cmake" --install "$build" --prefix "$prefix" >/dev/null
! grep -rl "$build" "$prefix" --include="*.cmake" || fail "these know the build folder"

"$cmake" -S "$source/examples/host" -B "$folder/host" -DCMAKE_PREFIX_PATH="$prefix" "$@" >/dev/null
"$cmake" --build "$folder/host"
"$folder/host/brox_example_host" "$source/examples/host/data"

# The same table as from the build folder, and no message, such as of icons that are not found.
workbench=$prefix/bin/brox-workbench
set -- "$source/samples/controller.xml" --table --data "$folder/data"
"$build/bin/brox-workbench" "$@" >"$folder/expected"
"$workbench" "$@" --language de >"$folder/table" 2>"$folder/messages"
cmp "$folder/expected" "$folder/table"
[ ! -s "$folder/messages" ] || fail "$(cat "$folder/messages")"

ls "$(PKG_CONFIG_PATH=$(dirname "$prefix"/lib*/pkgconfig/brox.pc) pkg-config --variable=libdir brox)/libbrox.so"

options=$("$workbench" --help | grep -o -e '--[a-z][a-z0-9-]*' | sort -u)
completed=$(bash -c 'PATH=$1/bin:$PATH; . "$1"/share/bash-completion/completions/brox-workbench
    COMP_WORDS=(brox-workbench --) COMP_CWORD=1; _brox_workbench; printf "%s\n" "${COMPREPLY[@]}" | sort -u' \
    bash "$prefix")
[ "$options" = "$completed" ] || fail "bash completes $completed"

for option in $options; do
    gzip -cd "$prefix"/share/man/man1/brox-workbench.1.gz | tr -d '\\' | grep -q -e "$option\>" ||
        fail "the manual page does not describe $option"
done
