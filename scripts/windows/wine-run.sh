#!/usr/bin/env bash
# Runs a Windows program of the build under Wine, for CTest (the cross
# build's CMAKE_CROSSCOMPILING_EMULATOR) and for the test scripts.
#
# The Wine prefix is KESTREL_WINEPREFIX when set (./test.sh --windows makes
# one for the whole run, as starting a new prefix takes several seconds),
# else a throw-away one. Qt's and the compiler's DLLs are found through WINEPATH; messages of
# Wine itself are left out.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../.." && pwd)
qt_bin="$root/build-windows-deps/qt6-mingw-w64-6.4.2/bin"
# The cross compiler's run-time DLLs (libstdc++, libgcc_s, libwinpthread).
mingw_dlls=("$qt_bin" /usr/lib/gcc/x86_64-w64-mingw32/*-posix /usr/x86_64-w64-mingw32/lib)

export WINEDEBUG=-all
# Wine shows the Linux file system as drive Z:.
WINEPATH=
for folder in "${mingw_dlls[@]}"; do
    WINEPATH+="${WINEPATH:+;}Z:${folder//\//\\}"
done
export WINEPATH
if [ -n "${KESTREL_WINEPREFIX:-}" ]; then
    export WINEPREFIX="$KESTREL_WINEPREFIX"
else
    WINEPREFIX=$(mktemp -d)
    export WINEPREFIX
    trap 'wineserver -k 2>/dev/null || true; rm -rf "$WINEPREFIX"' EXIT
fi
"$here/new-wine-prefix.sh"
status=0
wine "$@" || status=$?
exit "$status"
