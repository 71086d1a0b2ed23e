#!/usr/bin/env bash
# CTest's runner for the Windows test programs of the cross build (the
# toolchain's CMAKE_CROSSCOMPILING_EMULATOR): runs one Qt Test program under
# Wine through wine-run.sh and passes its exit code on.
#
#   ctest-wine.sh TEST_EXE [TEST ARGUMENTS...]
#
# Each run gets a Wine prefix of its own, so the Windows user folders the
# program and the application code under test use (AppData\Roaming,
# AppData\Local, Downloads) start empty and are thrown away afterwards, as
# the Linux sandbox's folders are. When KESTREL_WINEPREFIX names a prefix
# (./test.sh --windows makes one for the whole run) it is the template that
# each run copies, which is quicker than starting a new prefix; else the run
# starts a new one.
#
# A Qt Test program's console output does not reach the terminal under Wine:
# the result goes to a file, printed afterwards.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)

work=$(mktemp -d)
cleanup() {
    if [ -d "$work/prefix" ]; then
        WINEPREFIX="$work/prefix" wineserver -k 2>/dev/null || true
    fi
    rm -rf "$work"
}
trap cleanup EXIT

prefix="$work/prefix"
if [ -n "${KESTREL_WINEPREFIX:-}" ]; then
    # Two runs at once (ctest -j) must not both set up the template.
    (
        flock 9
        WINEPREFIX="$KESTREL_WINEPREFIX" "$here/new-wine-prefix.sh"
    ) 9>"$KESTREL_WINEPREFIX/.ctest-wine.lock"
    cp -a "$KESTREL_WINEPREFIX" "$prefix"
else
    WINEPREFIX="$prefix" "$here/new-wine-prefix.sh"
fi
export KESTREL_WINEPREFIX="$prefix"

# Wine links the profile's Desktop, Documents, Downloads, Music, Pictures and
# Videos to the Linux home folder (or its XDG user folders), and links them
# again whenever a program asks for one that is an empty folder. The tests
# write into Downloads and empty the application's files there, so the links
# go to a home folder of this run instead: nothing of a run reaches the home
# folder of the machine.
export HOME="$work/home" XDG_CONFIG_HOME="$work/home/.config"
mkdir -p "$XDG_CONFIG_HOME"
for link in "$prefix"/drive_c/users/*/*; do
    if [ -L "$link" ]; then
        rm "$link"
        mkdir "$link"
    fi
done

# The test support refuses to use the Windows user folders without this: on
# a real Windows machine they would be the user's own.
export KESTREL_TEST_DISPOSABLE_PROFILE=1

test_exe=$1
shift
status=0
"$here/wine-run.sh" "$test_exe" -o "Z:${work//\//\\}\\result.txt,txt" "$@" || status=$?
if [ -f "$work/result.txt" ]; then
    cat "$work/result.txt"
else
    echo "ctest-wine.sh: $test_exe wrote no result (exit code $status)"
fi
exit "$status"
